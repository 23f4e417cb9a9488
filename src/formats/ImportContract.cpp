#include "formats/ImportContract.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/Declarations.h"
#include "formats/TextDecoding.h"

namespace pemlo::formats {

namespace {

constexpr std::size_t MaxVoidRuns = 100000;

struct UnitName {
    const char* name;
    Dimension dimension;
    double divisor;
};

// Metres and MPa as they are; kPa and kN/m2 divided by 1000, in double.
constexpr UnitName Units[] = {
    {"m", Dimension::Length, 1},        {"cm", Dimension::Length, 100},     {"mm", Dimension::Length, 1000},
    {"mpa", Dimension::Stress, 1},      {"mn/m2", Dimension::Stress, 1},    {"mn/m^2", Dimension::Stress, 1},
    {"mn/m\xC2\xB2", Dimension::Stress, 1}, {"n/mm2", Dimension::Stress, 1}, {"n/mm\xC2\xB2", Dimension::Stress, 1},
    {"kpa", Dimension::Stress, 1000},   {"kn/m2", Dimension::Stress, 1000}, {"kn/m^2", Dimension::Stress, 1000},
    {"kn/m\xC2\xB2", Dimension::Stress, 1000},
};

// "m (meter)" and "MPa (megaPascal)" name their unit before the parenthesis.
std::string UnitKey(std::string_view unit)
{
    const std::size_t open = unit.find('(');
    if (open != std::string_view::npos && open > 0) unit = unit.substr(0, open);
    std::string key;
    for (char c : Lower(TrimBlanks(unit)))
        if (c != ' ') key += c;
    return key;
}

// The runs in depth order, runs with no kept reading between them joined into one;
// runs whose depths were void come last.
void MergeVoidRuns(std::vector<VoidRun>& runs, const std::vector<float>& kept)
{
    std::stable_sort(runs.begin(), runs.end(), [](const VoidRun& a, const VoidRun& b) {
        return a.top && (!b.top || *a.top < *b.top);
    });
    std::vector<VoidRun> merged;
    for (const VoidRun& run : runs) {
        if (!merged.empty() && run.top && merged.back().top) {
            VoidRun& last = merged.back();
            const auto between = std::upper_bound(kept.begin(), kept.end(), *last.bottom);
            if (between == kept.end() || !(*between < *run.top)) {
                last = {last.rows + run.rows, last.top, std::max(*last.bottom, *run.bottom)};
                continue;
            }
        }
        merged.push_back(run);
    }
    runs = std::move(merged);
}

}  // namespace

void Refuse(const std::string& message) { throw ImportRefusal(message); }

std::optional<double> FindDivisor(std::string_view unit, Dimension dimension)
{
    const std::string key = UnitKey(unit);
    for (const UnitName& u : Units)
        if (key == u.name && u.dimension == dimension) return u.divisor;
    return std::nullopt;
}

double UnitDivisor(std::string_view unit, Dimension dimension, const std::string& column)
{
    if (const auto divisor = FindDivisor(unit, dimension)) return *divisor;
    const std::string wanted = dimension == Dimension::Length ? "a length in m, cm or mm"
                                                              : "a stress in MPa, MN/m2, N/mm2, kPa or kN/m2";
    if (TrimBlanks(unit).empty()) Refuse(column + " has no unit; the import needs " + wanted);
    Refuse(column + " is in " + Quoted(unit) + ", which is not " + wanted);
}

SoundingBuilder::SoundingBuilder(std::array<ColumnUse, 3> columns, std::string place)
    : columns_(std::move(columns)), place_(std::move(place))
{
    record_.columns.assign(columns_.begin(), columns_.end());
}

void SoundingBuilder::TakeU2(ColumnUse column) { u2Column_ = std::move(column); }

void SoundingBuilder::AddRow(long long at, const RowValues& values, int push, std::optional<double> u2)
{
    ++record_.rowsRead;
    const std::optional<double> depth =
        values[0] ? std::optional<double>(*values[0] / columns_[0].divisor) : std::nullopt;
    if (!values[0] || !values[1] || !values[2]) {
        // A run of void rows in file order, broken where the depth turns back upwards
        // (rows out of order), so that each run covers one stretch of the sounding.
        ++record_.voidRows;
        const bool breaks = !inVoidRun_ || (depth && lastVoidDepth_ && *depth < *lastVoidDepth_) ||
                            depth.has_value() != record_.voidRuns.back().top.has_value();
        // Past this many runs the last one takes all further rows: the record stays small.
        if (breaks && (record_.voidRuns.empty() || record_.voidRuns.size() < MaxVoidRuns))
            record_.voidRuns.emplace_back();
        inVoidRun_ = true;
        VoidRun& run = record_.voidRuns.back();
        ++run.rows;
        if (depth) {
            run.top = run.top ? std::min(*run.top, *depth) : *depth;
            run.bottom = run.bottom ? std::max(*run.bottom, *depth) : *depth;
            lastVoidDepth_ = depth;
        }
        return;
    }
    inVoidRun_ = false;
    if (depth_.size() >= static_cast<std::size_t>(MaxImportedReadings))
        Refuse(place_ + " " + std::to_string(at) + ": more than " + std::to_string(MaxImportedReadings) +
               " readings, the most a sounding can hold");
    float stored[3];
    for (int k = 0; k < 3; ++k) {
        const double scaled = *values[static_cast<std::size_t>(k)] / columns_[static_cast<std::size_t>(k)].divisor;
        stored[k] = static_cast<float>(scaled);
        if (!std::isfinite(stored[k]))
            Refuse(place_ + " " + std::to_string(at) + ": the " + columns_[static_cast<std::size_t>(k)].role +
                   " value is too large to store");
    }
    depth_.push_back(stored[0]);
    qc_.push_back(stored[1]);
    fs_.push_back(stored[2]);
    push_.push_back(push);
    if (!u2Column_) return;
    // Too large to store is as good as void here: u2 must not refuse a file the
    // program has always read.
    const auto stored2 = u2 ? static_cast<float>(*u2 / u2Column_->divisor) : 0.0f;
    u2_.push_back(u2 && std::isfinite(stored2) ? std::optional<float>(stored2) : std::nullopt);
}

ImportedSounding SoundingBuilder::Finish(std::vector<Push> pushes)
{
    ImportedSounding s;
    // Depths written as heights (every one 0 or less, some below 0) are turned downwards.
    const bool allAbove = std::all_of(depth_.begin(), depth_.end(), [](float d) { return d <= 0.0f; });
    if (allAbove && std::any_of(depth_.begin(), depth_.end(), [](float d) { return d < 0.0f; })) {
        record_.negated = true;
        for (float& d : depth_) d = 0.0f - d;  // 0 - d: a depth of 0 stays +0
        for (VoidRun& run : record_.voidRuns) {
            if (!run.top) continue;
            run = {run.rows, 0.0 - *run.bottom, 0.0 - *run.top};
        }
    }
    std::vector<std::size_t> order(depth_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (!std::is_sorted(depth_.begin(), depth_.end())) {
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return depth_[a] < depth_[b]; });
        for (std::size_t i = 0; i < order.size(); ++i) record_.sortMoved += order[i] != i ? 1 : 0;
    }
    for (const std::size_t i : order) {
        s.depth.push_back(depth_[i]);
        s.qc.push_back(qc_[i]);
        s.fs.push_back(fs_[i]);
        if (u2Column_) s.u2.push_back(u2_[i]);
        if (!pushes.empty()) s.readingPush.push_back(push_[i]);
        if (push_[i] < 0 || static_cast<std::size_t>(push_[i]) >= pushes.size()) continue;
        Push& p = pushes[static_cast<std::size_t>(push_[i])];
        if (p.readings++ == 0) p.top = p.bottom = depth_[i];
        p.top = std::min(p.top, depth_[i]);
        p.bottom = std::max(p.bottom, depth_[i]);
    }
    record_.kept = static_cast<int>(s.depth.size());
    MergeVoidRuns(record_.voidRuns, s.depth);
    s.record = record_;
    s.pushes = std::move(pushes);
    if (u2Column_) s.u2Column = *u2Column_;
    return s;
}

}  // namespace pemlo::formats
