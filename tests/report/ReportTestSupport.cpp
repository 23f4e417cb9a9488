#include "ReportTestSupport.h"

#include <algorithm>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>

namespace pemlo::test {

namespace {

std::string Fixed(double v)
{
    return QString::number(v, 'f', 2).toStdString();
}

}  // namespace

bool PrinterLog::Called(const std::string& call) const
{
    return std::find(calls.begin(), calls.end(), call) != calls.end();
}

std::vector<std::string> PrinterLog::From(const std::string& from) const
{
    return {std::find(calls.begin(), calls.end(), from), calls.end()};
}

std::shared_ptr<PrinterLog> UseRecordingPrinter(std::int32_t portraitWidth, std::int32_t portraitHeight,
                                                double twipsPerPixel)
{
    auto log = std::make_shared<PrinterLog>();
    SetPrinterFactory([=]() -> std::unique_ptr<Printer> {
        ++log->opened;
        return std::make_unique<RecordingPrinter>(log, portraitWidth, portraitHeight, twipsPerPixel);
    });
    return log;
}

RecordingPrinter::RecordingPrinter(std::shared_ptr<PrinterLog> log, std::int32_t portraitWidth,
                                   std::int32_t portraitHeight, double twipsPerPixel)
    : log_(std::move(log)), portraitWidth_(portraitWidth), portraitHeight_(portraitHeight), twipsPerPixel_(twipsPerPixel)
{
}

void RecordingPrinter::SetOrientation(Integer code)
{
    orientation_ = code;
    log_->calls.push_back("Orientation " + std::to_string(code));
}

std::int32_t RecordingPrinter::Width()
{
    log_->calls.push_back("Width");
    return orientation_ == OrientationLandscape ? portraitHeight_ : portraitWidth_;
}

std::int32_t RecordingPrinter::Height()
{
    log_->calls.push_back("Height");
    return orientation_ == OrientationLandscape ? portraitWidth_ : portraitHeight_;
}

double RecordingPrinter::TwipsPerPixelX()
{
    log_->calls.push_back("TwipsPerPixelX");
    return twipsPerPixel_;
}

double RecordingPrinter::TwipsPerPixelY()
{
    log_->calls.push_back("TwipsPerPixelY");
    return twipsPerPixel_;
}

void RecordingPrinter::SetFontName(const QString& name) { log_->calls.push_back("FontName " + name.toStdString()); }
void RecordingPrinter::SetFontSize(double points) { log_->calls.push_back("FontSize " + Fixed(points)); }
void RecordingPrinter::SetFontBold(bool bold) { log_->calls.push_back(bold ? "Bold" : "Normal"); }

void RecordingPrinter::SetCurrentX(double twips)
{
    x_ = twips;
    log_->calls.push_back("X " + Fixed(twips));
}

void RecordingPrinter::SetCurrentY(double twips)
{
    y_ = twips;
    log_->calls.push_back("Y " + Fixed(twips));
}

void RecordingPrinter::Print(const std::vector<PrintItem>& items)
{
    std::string line = "Print ";
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0) line += items[i].before == PrintSeparator::Join ? ";" : ",";
        line += items[i].text.toStdString();
    }
    log_->calls.push_back(line);
}

void RecordingPrinter::Box(double x1, double y1, double x2, double y2)
{
    log_->calls.push_back("Box " + Fixed(x1) + " " + Fixed(y1) + " " + Fixed(x2) + " " + Fixed(y2));
}

QPaintDevice* RecordingPrinter::hDC()
{
    log_->calls.push_back("hDC");
    if (log_->deviceFails) return nullptr;
    QImage& page = log_->page;
    if (page.isNull()) {
        const double wide = std::max(portraitWidth_, portraitHeight_) / twipsPerPixel_;
        const double high = std::min(portraitWidth_, portraitHeight_) / twipsPerPixel_;
        page = QImage(static_cast<int>(wide), static_cast<int>(high), QImage::Format_RGB16);
        page.fill(Qt::white);
    }
    return &page;
}

void RecordingPrinter::EndDoc() { log_->calls.push_back("EndDoc"); }

void FillLineChart(ChartSurface& chart, QColor colour)
{
    constexpr Integer points = 40;
    chart.BeginData(Values, 1, points);
    chart.BeginData(XValues, 1, points);
    for (Integer i = 0; i < points; ++i) {
        chart.SetValue(0, i, 0.5 * i);                    // depth
        chart.SetXValue(0, i, 5.0 + 4.0 * std::sin(i));   // the plotted quantity
    }
    chart.SetPlotSettingD(2);
    chart.SetSeriesColor(0, static_cast<ColorRef>(colour.red() | (colour.green() << 8) | (colour.blue() << 16)));
    chart.SetAxisMax(ValueAxis, 0.0);
    chart.SetAxisMin(ValueAxis, 19.5);
    chart.Refresh();
    chart.EndData(Values);
    chart.EndData(XValues);
}

long CountInk(const QImage& image, const QRect& area, std::optional<QColor> colour, int tolerance)
{
    const QRect box = area.intersected(image.rect());
    if (box.isEmpty()) return 0;
    const QImage part = image.copy(box).convertToFormat(QImage::Format_RGB32);
    long count = 0;
    for (int y = 0; y < part.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(part.constScanLine(y));
        for (int x = 0; x < part.width(); ++x) {
            const QRgb c = line[x];
            if (colour) {
                count += std::abs(qRed(c) - colour->red()) <= tolerance &&
                         std::abs(qGreen(c) - colour->green()) <= tolerance &&
                         std::abs(qBlue(c) - colour->blue()) <= tolerance;
            } else {
                count += qRed(c) < 200 || qGreen(c) < 200 || qBlue(c) < 200;
            }
        }
    }
    return count;
}

bool HaveTool(const QString& program) { return !QStandardPaths::findExecutable(program).isEmpty(); }

std::optional<QString> RunTool(const QString& program, const QStringList& arguments)
{
    if (!HaveTool(program)) return std::nullopt;
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput());
}

QImage RenderPdf(const QString& pdf, int dotsPerInch)
{
    QTemporaryDir dir;
    const QString stem = dir.filePath(QStringLiteral("page"));
    if (!RunTool(QStringLiteral("pdftoppm"),
                 {QStringLiteral("-r"), QString::number(dotsPerInch), QStringLiteral("-png"),
                  QStringLiteral("-singlefile"), pdf, stem}))
        return {};
    return QImage(stem + QStringLiteral(".png")).convertToFormat(QImage::Format_RGB32);
}

std::vector<PdfWord> PdfWords(const QString& pdf)
{
    std::vector<PdfWord> words;
    const auto html = RunTool(QStringLiteral("pdftotext"),
                              {QStringLiteral("-bbox"), QStringLiteral("-f"), QStringLiteral("1"),
                               QStringLiteral("-l"), QStringLiteral("1"), pdf, QStringLiteral("-")});
    if (!html) return words;
    // One <word xMin=".." yMin=".." xMax=".." yMax="..">text</word> per word.
    static const QRegularExpression word(QStringLiteral(
        R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    for (auto it = word.globalMatch(*html); it.hasNext();) {
        const auto m = it.next();
        words.push_back({m.captured(5), m.captured(1).toDouble(), m.captured(2).toDouble(),
                         m.captured(3).toDouble(), m.captured(4).toDouble()});
    }
    return words;
}

const PdfWord* FindWord(const std::vector<PdfWord>& words, const QString& text)
{
    for (const PdfWord& w : words)
        if (w.text == text) return &w;
    return nullptr;
}

}  // namespace pemlo::test
