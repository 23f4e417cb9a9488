#include "log/ui/LogDocument.h"

#include <QBuffer>
#include <QDateTime>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include "log/ui/LogPages.h"
#include "log/PdfStamp.h"

namespace pemlo::log {

namespace {

// Lines and text are vectors whatever the resolution; this only sets how finely
// coordinates are written.
constexpr int Resolution = 1200;

LogLayout LayoutOf(const LogSounding& s, const LogOptions& options)
{
    return MakeLayout(options.paper, s.hasU2, DeepestOf(s), options.scale);
}

// The document's metadata, written by us so that it holds nothing random.
QByteArray Metadata(const QString& producer, std::int64_t seconds)
{
    const QString date = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(Qt::ISODate);
    return QStringLiteral(
               "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n"
               "<x:xmpmeta xmlns:x='adobe:ns:meta/'>\n"
               "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>\n"
               "<rdf:Description rdf:about='' xmlns:xmp='http://ns.adobe.com/xap/1.0/' "
               "xmlns:pdf='http://ns.adobe.com/pdf/1.3/'>\n"
               "<xmp:CreateDate>%1</xmp:CreateDate>\n<xmp:CreatorTool>%2</xmp:CreatorTool>\n"
               "<pdf:Producer>%2</pdf:Producer>\n"
               "</rdf:Description>\n</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end='w'?>")
        .arg(date, producer.toHtmlEscaped())
        .toUtf8();
}

}  // namespace

int PageCount(const LogSounding& s, const LogOptions& options)
{
    return static_cast<int>(LayoutOf(s, options).pages.size()) + 1;
}

std::string DrawLogs(const std::vector<const LogSounding*>& soundings, const LogOptions& options)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const std::int64_t seconds = options.creation.value_or(QDateTime::currentSecsSinceEpoch());
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(Resolution);
        writer.setPageSize(QPageSize(options.paper == Paper::A4 ? QPageSize::A4 : QPageSize::Letter));
        writer.setPageOrientation(QPageLayout::Portrait);
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setCreator(QString::fromStdString(options.program));
        writer.setTitle(soundings.size() == 1 ? QStringLiteral("CPT log ") + QString::fromStdString(soundings[0]->name)
                                              : QStringLiteral("CPT logs"));
        writer.setDocumentXmpMetadata(Metadata(QString::fromStdString(options.program), seconds));
        QPainter painter;
        if (!painter.begin(&writer)) return {};
        painter.setRenderHint(QPainter::Antialiasing);
        PagePainter page(painter, writer.resolution());
        bool first = true;
        for (const LogSounding* s : soundings) {
            const LogLayout layout = LayoutOf(*s, options);
            const int pages = static_cast<int>(layout.pages.size()) + 1;
            for (int i = 0; i < pages; ++i) {
                if (!first) writer.newPage();
                first = false;
                DrawTitleBlock(page, layout.titleBlock, *s, i + 1, pages);
                if (i + 1 < pages) DrawLogPage(page, layout, layout.pages[static_cast<std::size_t>(i)], *s);
                else DrawChartPage(page, layout, *s);
            }
        }
        if (!painter.end()) return {};
    }
    std::string bytes = buffer.data().toStdString();
    if (!StampPdf(bytes, seconds)) return {};
    return bytes;
}

}  // namespace pemlo::log
