#include "ReportTestSupport.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>

namespace pemlo::test {

namespace {

std::string Fixed(double v) { return QString::number(v, 'f', 2).toStdString(); }

// A Letter page (portrait twips) that writes every call into the log.
class RecordingPrinter : public Printer {
public:
    RecordingPrinter(std::shared_ptr<PrinterLog> log, double twipsPerPixel) : log_(std::move(log)), twipsPerPixel_(twipsPerPixel) {}

    void SetOrientation(Integer code) override { landscape_ = code == OrientationLandscape; Log("Orientation " + std::to_string(code)); }
    std::int32_t Width() override { Log("Width"); return landscape_ ? 15840 : 12240; }
    std::int32_t Height() override { Log("Height"); return landscape_ ? 12240 : 15840; }
    double TwipsPerPixelX() override { Log("TwipsPerPixelX"); return twipsPerPixel_; }
    double TwipsPerPixelY() override { Log("TwipsPerPixelY"); return twipsPerPixel_; }
    void SetFontName(const QString& name) override { Log("FontName " + name.toStdString()); }
    void SetFontSize(double points) override { Log("FontSize " + Fixed(points)); }
    void SetFontBold(bool bold) override { Log(bold ? "Bold" : "Normal"); }
    void SetCurrentX(double twips) override { x_ = twips; Log("X " + Fixed(twips)); }
    void SetCurrentY(double twips) override { y_ = twips; Log("Y " + Fixed(twips)); }
    double CurrentX() const override { return x_; }
    double CurrentY() const override { return y_; }
    void EndDoc() override { Log("EndDoc"); }
    void Box(double x1, double y1, double x2, double y2) override
    {
        Log("Box " + Fixed(x1) + " " + Fixed(y1) + " " + Fixed(x2) + " " + Fixed(y2));
    }
    // ";" runs on, "," moves to the next print zone.
    void Print(const std::vector<PrintItem>& items) override
    {
        std::string line = "Print ";
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (i > 0) line += items[i].before == PrintSeparator::Join ? ';' : ',';
            line += items[i].text.toStdString();
        }
        Log(line);
    }
    QPaintDevice* hDC() override
    {
        Log("hDC");
        if (log_->deviceFails) return nullptr;
        if (log_->page.isNull()) {
            log_->page = QImage(6600, 5100, QImage::Format_RGB16);   // landscape Letter at 600 dpi
            log_->page.fill(Qt::white);
        }
        return &log_->page;
    }

private:
    void Log(std::string call) { log_->calls.push_back(std::move(call)); }

    std::shared_ptr<PrinterLog> log_;
    double twipsPerPixel_;
    bool landscape_ = false;
    double x_ = 0.0, y_ = 0.0;
};

}  // namespace

std::shared_ptr<PrinterLog> UseRecordingPrinter(double twipsPerPixel)
{
    auto log = std::make_shared<PrinterLog>();
    SetPrinterFactory([=] { return std::make_unique<RecordingPrinter>(log, twipsPerPixel); });
    return log;
}

void FillLineChart(ChartSurface& chart, QColor colour)
{
    chart.BeginData(Values, 1, 40);   // one series of 40 points
    chart.BeginData(XValues, 1, 40);
    for (Integer i = 0; i < 40; ++i) {
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
            const int r = qRed(line[x]), g = qGreen(line[x]), b = qBlue(line[x]);
            count += colour ? std::abs(r - colour->red()) <= tolerance && std::abs(g - colour->green()) <= tolerance &&
                                  std::abs(b - colour->blue()) <= tolerance
                            : r < 200 || g < 200 || b < 200;
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
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput());
}

QImage RenderPdf(const QString& pdf, int dotsPerInch)
{
    QTemporaryDir dir;
    const QString stem = dir.filePath(QStringLiteral("page"));
    if (!RunTool(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QString::number(dotsPerInch), QStringLiteral("-png"),
                                              QStringLiteral("-singlefile"), pdf, stem}))
        return {};
    return QImage(stem + QStringLiteral(".png")).convertToFormat(QImage::Format_RGB32);
}

}  // namespace pemlo::test
