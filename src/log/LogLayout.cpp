#include "log/LogLayout.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace pemlo::log {

namespace {

constexpr double Margin = 10.0;
constexpr double TitleHeight = 33.0;
constexpr double HeaderHeight = 11.0;  // column titles and value labels
constexpr double LegendHeight = 17.0;
constexpr double Gap = 2.0;

struct ColumnShare {
    ColumnKind kind;
    double weight;  // of the page's width
};

// The widths in proportion; the labels of the layers need the widest column.
constexpr ColumnShare Shares[] = {
    {ColumnKind::Depth, 8},   {ColumnKind::Cone, 24}, {ColumnKind::Sleeve, 17},   {ColumnKind::Ratio, 15},
    {ColumnKind::PorePressure, 18}, {ColumnKind::Ic, 18}, {ColumnKind::Zone, 7}, {ColumnKind::Soil, 15},
    {ColumnKind::Layers, 42},
};

constexpr double ColumnGap = 2.5;

}  // namespace

Box PageOf(Paper paper) { return paper == Paper::A4 ? Box{0, 0, 210.0, 297.0} : Box{0, 0, 215.9, 279.4}; }

LogLayout MakeLayout(Paper paper, bool withPorePressure, double deepest, int scale)
{
    LogLayout layout;
    const Box page = PageOf(paper);
    layout.pageWidth = page.width;
    layout.pageHeight = page.height;
    const double width = page.width - 2 * Margin;
    layout.titleBlock = {Margin, Margin, width, TitleHeight};
    layout.headerTop = layout.titleBlock.Bottom() + Gap;
    const double plotTop = layout.headerTop + HeaderHeight;
    const double plotBottom = page.height - Margin - LegendHeight - Gap;
    layout.legend = {Margin, plotBottom + Gap, width, LegendHeight};

    double weights = 0.0;
    int count = 0;
    for (const ColumnShare& s : Shares)
        if (withPorePressure || s.kind != ColumnKind::PorePressure) weights += s.weight, ++count;
    const double unit = (width - ColumnGap * (count - 1)) / weights;
    double left = Margin;
    for (const ColumnShare& s : Shares) {
        if (!withPorePressure && s.kind == ColumnKind::PorePressure) continue;
        layout.columns.push_back({s.kind, {left, plotTop, s.weight * unit, plotBottom - plotTop}});
        left += s.weight * unit + ColumnGap;
    }

    const double bottom = std::max(1.0, std::ceil(deepest));
    if (scale <= 0) {
        layout.pages.push_back({0.0, bottom, plotTop, plotBottom});
        return layout;
    }
    // 1:N: a millimetre of paper is N/1000 metres of depth.
    const double pageDepth = (plotBottom - plotTop) * scale / 1000.0;
    const auto pages = static_cast<int>(std::ceil(deepest / pageDepth - 1e-9));
    for (int p = 0; p < std::max(1, pages); ++p)
        layout.pages.push_back({p * pageDepth, (p + 1) * pageDepth, plotTop, plotBottom});
    return layout;
}

std::vector<Point> FlowIntoColumns(const std::vector<Box>& boxes, double columnWidth, double rowHeight,
                                   std::size_t count)
{
    std::vector<Point> at;
    for (const Box& b : boxes) {
        const auto columns = static_cast<int>(std::floor(b.width / columnWidth + 1e-9));
        const auto rows = static_cast<int>(std::floor(b.height / rowHeight + 1e-9));
        for (int c = 0; c < columns; ++c)
            for (int r = 0; r < rows && at.size() < count; ++r)
                at.push_back({b.left + c * columnWidth, b.top + r * rowHeight});
    }
    return at;
}

Ticks RoundTicks(double low, double high, int maxTicks)
{
    if (!(high > low)) high = low + 1.0;
    const double rough = (high - low) / maxTicks;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    double step = 10.0 * power;
    for (const double m : {1.0, 2.0, 2.5, 5.0})
        if (m * power >= rough * (1 - 1e-9)) {
            step = m * power;
            break;
        }
    return {std::floor(low / step + 1e-9) * step, std::ceil(high / step - 1e-9) * step, step};
}

namespace {

int Intervals(const Ticks& t) { return static_cast<int>(std::lround((t.high - t.low) / t.step)); }

int ZeroIndex(const Ticks& t)
{
    return t.low <= 0.0 && t.high >= 0.0 ? static_cast<int>(std::lround(-t.low / t.step)) : -1;
}

// Whether the labels of the ticks, in order, stand at least `gap` apart.
bool Clear(const Ticks& t, const std::vector<int>& ticks, double width, const LabelWidth& labelWidth, double gap)
{
    const int n = Intervals(t);
    double right = -1e300;
    for (const int i : ticks) {
        const double w = labelWidth(TickText(t.low + i * t.step, t.step)), x = i * width / n;
        const double left = i == 0 ? 0.0 : i == n ? width - w : x - w / 2;
        if (left < right + gap) return false;
        right = left + w;
    }
    return true;
}

}  // namespace

std::vector<int> LabelledTicks(const Ticks& t, double width, const LabelWidth& labelWidth, double gap)
{
    const int n = Intervals(t), origin = std::max(ZeroIndex(t), 0);
    for (int k = 1; k <= n; ++k) {
        std::vector<int> labelled;
        for (int i = 0; i <= n; ++i)
            if (i == 0 || i == n || (i - origin) % k == 0) labelled.push_back(i);
        if (Clear(t, labelled, width, labelWidth, gap)) return labelled;
    }
    return {0, n};
}

Ticks AxisTicks(double low, double high, int maxTicks, double width, const LabelWidth& labelWidth, double gap)
{
    Ticks best;
    double bestFill = -1.0;
    for (int m = maxTicks; m >= 1; --m) {
        Ticks t = RoundTicks(low, high, m);
        for (int widened = 0; widened < 10 && t.low < 0.0 && t.high > 0.0 &&
                              !Clear(t, {0, ZeroIndex(t)}, width, labelWidth, gap);
             ++widened)
            t.low -= t.step;
        // A single step would leave the column without a grid line to read by.
        const double fill = Intervals(t) < 2 ? 0.0 : (high - low) / (t.high - t.low);
        if (fill > bestFill * (1 + 1e-9)) best = t, bestFill = fill;
    }
    return best;
}

double DepthStep(const DepthAxis& axis, double minSpacing)
{
    const double metresPerMm = (axis.bottomDepth - axis.topDepth) / (axis.plotBottom - axis.plotTop);
    const double rough = minSpacing * metresPerMm;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double m : {1.0, 2.0, 5.0})
        if (m * power >= rough) return m * power;
    return 10.0 * power;
}

std::string TickText(double value, double step)
{
    int decimals = 0;
    while (decimals < 4 && std::abs(step * std::pow(10.0, decimals) - std::round(step * std::pow(10.0, decimals))) > 1e-6)
        ++decimals;
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, std::abs(value) < step * 1e-9 ? 0.0 : value);
    return text;
}

}  // namespace pemlo::log
