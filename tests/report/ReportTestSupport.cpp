#include "ReportTestSupport.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>

namespace pemlo::test {

namespace {

// A Letter page (portrait twips) that writes every call into the log.
class RecordingPrinter : public Printer {
public:
    RecordingPrinter(std::shared_ptr<PrinterLog> log, double twipsPerPixel) : log_(std::move(log)), twipsPerPixel_(twipsPerPixel) {}

    // Where the header goes is the layout's (ReportLayout); the log keeps what the
    // tests look for: the texts, each chart's device and the end of the page.
    void SetOrientation(Integer code) override { landscape_ = code == OrientationLandscape; }
    std::int32_t Width() override { return landscape_ ? 15840 : 12240; }
    std::int32_t Height() override { return landscape_ ? 12240 : 15840; }
    double TwipsPerPixelX() override { return twipsPerPixel_; }
    double TwipsPerPixelY() override { return twipsPerPixel_; }
    void SetFontName(const QString&) override {}
    void SetFontSize(double) override {}
    void SetFontBold(bool) override {}
    void SetCurrentX(double twips) override { x_ = twips; }
    void SetCurrentY(double twips) override { y_ = twips; }
    double CurrentX() const override { return x_; }
    double CurrentY() const override { return y_; }
    void EndDoc() override { Log("EndDoc"); }
    void Box(double, double, double, double) override {}
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
    // A page is large: only the area is converted, and only when it must be.
    const QImage part = image.format() == QImage::Format_RGB32 ? image : image.copy(box).convertToFormat(QImage::Format_RGB32);
    const QPoint origin = image.format() == QImage::Format_RGB32 ? box.topLeft() : QPoint(0, 0);
    long count = 0;
    for (int y = 0; y < box.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(part.constScanLine(origin.y() + y)) + origin.x();
        for (int x = 0; x < box.width(); ++x) {
            const int r = qRed(line[x]), g = qGreen(line[x]), b = qBlue(line[x]);
            count += colour ? std::abs(r - colour->red()) <= tolerance && std::abs(g - colour->green()) <= tolerance &&
                                  std::abs(b - colour->blue()) <= tolerance
                            : r < 200 || g < 200 || b < 200;
        }
    }
    return count;
}

namespace {

// Black or grey, as an antialiased axis line comes out; no chart colour.
bool AxisInk(QRgb px)
{
    const int r = qRed(px), g = qGreen(px), b = qBlue(px);
    return r < 170 && std::abs(r - g) < 20 && std::abs(g - b) < 20;
}

// The longest run of axis ink along one line of the image: its start and length.
template <class At> std::pair<int, int> LongestRun(int length, At at)
{
    std::pair<int, int> longest{0, 0};
    int start = -1;
    for (int i = 0; i <= length; ++i) {
        const bool ink = i < length && AxisInk(at(i));
        if (ink && start < 0) start = i;
        if (!ink && start >= 0) {
            if (i - start > longest.second) longest = {start, i - start};
            start = -1;
        }
    }
    return longest;
}

}  // namespace

std::pair<int, int> DepthAxisRows(const QImage& image, const QRect& area)
{
    const QImage part = image.copy(area.intersected(image.rect())).convertToFormat(QImage::Format_RGB32);
    std::pair<int, int> vertical{0, 0};   // start row, length
    for (int x = 0; x < part.width(); ++x) {
        const auto run = LongestRun(part.height(), [&](int y) { return part.pixel(x, y); });
        if (run.second > vertical.second) vertical = run;
    }
    int bottomRow = 0, widest = 0;   // the horizontal axis closes the plot at the bottom
    for (int y = 0; y < part.height(); ++y) {
        const int run = LongestRun(part.width(), [&](int x) { return part.pixel(x, y); }).second;
        if (run > widest) widest = run, bottomRow = y;
    }
    return {vertical.first + area.top(), bottomRow + area.top()};
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
