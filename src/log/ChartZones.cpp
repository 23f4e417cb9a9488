#include "log/ChartZones.h"

#include <algorithm>
#include <cmath>

#include "sbtn/Sbtn.h"

namespace pemlo::log {

namespace {

constexpr int Steps = 600;  // points along the chart's width per line
constexpr double ZoneBounds[] = {1.31, 2.05, 2.60, 2.95, 3.60};
constexpr double SplitFr = 4.5;  // zones 8 and 9 part here

int ZoneOf(const ChartPoint& p) { return sbtn::Zone(p.qtn, p.fr, sbtn::BehaviourIndex(p.qtn, p.fr)); }

double FrAt(int i)
{
    const double lo = std::log10(ChartFrLow), hi = std::log10(ChartFrHigh);
    return std::pow(10.0, lo + (hi - lo) * i / Steps);
}

bool InChart(const ChartPoint& p) { return p.qtn >= ChartQtnLow && p.qtn <= ChartQtnHigh; }

// Adds the points of a curve that the rule keeps as a boundary, in runs: `keep` says
// whether a point of the curve parts the zones it was drawn for.
template <class Curve, class Keep>
void Trace(std::vector<std::vector<ChartPoint>>& lines, Curve curve, Keep keep)
{
    std::vector<ChartPoint> run;
    for (int i = 0; i <= Steps; ++i) {
        const auto p = curve(FrAt(i));
        if (p && InChart(*p) && keep(*p)) {
            run.push_back(*p);
        } else if (!run.empty()) {
            if (run.size() > 1) lines.push_back(run);
            run.clear();
        }
    }
    if (run.size() > 1) lines.push_back(run);
}

struct MaybePoint {
    bool ok = false;
    ChartPoint p;
    explicit operator bool() const { return ok; }
    const ChartPoint& operator*() const { return p; }
};

// The zones on either side of a point of a line, a little below and above it in Qtn.
bool Parts(const ChartPoint& p)
{
    const ChartPoint below{p.fr, p.qtn * 0.995}, above{p.fr, p.qtn * 1.005};
    return ZoneOf(below) != ZoneOf(above);
}

}  // namespace

ChartPoint OnChart(const ChartPoint& c)
{
    return {std::clamp(c.fr, ChartFrLow, ChartFrHigh), std::clamp(c.qtn, ChartQtnLow, ChartQtnHigh)};
}

bool BeyondChart(const ChartPoint& c)
{
    const ChartPoint on = OnChart(c);
    return on.fr != c.fr || on.qtn != c.qtn;
}

std::vector<std::vector<ChartPoint>> ZoneBoundaries()
{
    std::vector<std::vector<ChartPoint>> lines;
    for (const double ic : ZoneBounds) {
        Trace(lines, [ic](double fr) {
            const double y = std::log10(fr) + 1.22;
            if (y * y > ic * ic) return MaybePoint{};
            return MaybePoint{true, {fr, std::pow(10.0, 3.47 - std::sqrt(ic * ic - y * y))}};
        }, Parts);
    }
    Trace(lines, [](double fr) { return MaybePoint{true, {fr, 12.0 * std::exp(-1.4 * fr)}}; }, Parts);
    Trace(lines, [](double fr) {
        const double f = 0.005 * (fr - 1.0) - 0.0003 * ((fr - 1.0) * (fr - 1.0)) - 0.002;
        return f > 0.0 ? MaybePoint{true, {fr, 1.0 / f}} : MaybePoint{};
    }, Parts);
    // Zones 8 and 9 part at Fr = 4.5, from their lower curve up.
    const double f = 0.005 * (SplitFr - 1.0) - 0.0003 * ((SplitFr - 1.0) * (SplitFr - 1.0)) - 0.002;
    lines.push_back({{SplitFr, 1.0 / f}, {SplitFr, ChartQtnHigh}});
    return lines;
}

std::array<ChartPoint, 9> ZoneLabelPoints()
{
    // The middle (in the logarithms) of each zone's cells on a grid over the chart,
    // moved to the nearest cell of the zone when the middle lies outside it.
    constexpr int N = 120;
    std::array<double, 9> sx{}, sy{};
    std::array<int, 9> n{};
    const auto cell = [](int i, int j) {
        return ChartPoint{std::pow(10.0, -1.0 + 2.0 * (i + 0.5) / N), std::pow(10.0, 3.0 * (j + 0.5) / N)};
    };
    for (int i = 0; i < N; ++i)
        for (int j = 0; j < N; ++j) {
            const ChartPoint p = cell(i, j);
            const int z = ZoneOf(p) - 1;
            sx[z] += std::log10(p.fr), sy[z] += std::log10(p.qtn), ++n[z];
        }
    std::array<ChartPoint, 9> points{};
    for (int z = 0; z < 9; ++z) {
        if (n[z] == 0) continue;
        const double x = sx[z] / n[z], y = sy[z] / n[z];
        ChartPoint best{std::pow(10.0, x), std::pow(10.0, y)};
        if (ZoneOf(best) != z + 1) {
            double nearest = 1e300;
            for (int i = 0; i < N; ++i)
                for (int j = 0; j < N; ++j) {
                    const ChartPoint p = cell(i, j);
                    const double d = std::pow(std::log10(p.fr) - x, 2) + std::pow(std::log10(p.qtn) - y, 2);
                    if (ZoneOf(p) == z + 1 && d < nearest) nearest = d, best = p;
                }
        }
        points[z] = best;
    }
    return points;
}

}  // namespace pemlo::log
