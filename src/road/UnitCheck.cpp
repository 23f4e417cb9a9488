#include "road/UnitCheck.h"

#include <algorithm>
#include <cstdio>

namespace pemlo::formats {

namespace {

struct Limits {
    double qc, fs, depth;
    const char* stress;
    const char* length;
};
// The same limits in both graph units: 100 MPa, 2 MPa and 200 m.
constexpr Limits SiLimits{100, 2, 200, "MPa", "m"};
constexpr Limits EnglishLimits{1044, 20.9, 656, "tsf", "ft"};
constexpr double RatioLimit = 20;  // percent

double Median(std::vector<double> values)
{
    const std::size_t half = values.size() / 2;
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(half), values.end());
    const double upper = values[half];
    if (values.size() % 2 == 1) return upper;
    const double lower = *std::max_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(half));
    return (lower + upper) / 2;
}

std::string Number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", value);
    return text;
}

}  // namespace

std::vector<std::string> CheckUnits(const Declarations& d, bool depthOrder)
{
    const int n = d.NumLines;
    if (n < 1) return {};
    const bool english = d.DataUnits == DataEnglish;
    const Limits& limit = english ? EnglishLimits : SiLimits;
    const std::string stress = limit.stress;
    const std::string usual = english ? "tsf" : "MPa";
    std::vector<double> qc, fs, ratio;
    double deepest = d.Depth.data()[0];
    for (int i = 0; i < n; ++i) {
        qc.push_back(d.Q_Tip.data()[i]);
        fs.push_back(d.Q_Sleeve.data()[i]);
        // The ratio before the cleaning: no cap of 20, and no reading without a qc.
        if (d.Q_Tip.data()[i] > 0) ratio.push_back(fs.back() / qc.back() * 100);
        deepest = std::max(deepest, static_cast<double>(d.Depth.data()[i]));
    }
    std::vector<std::string> warnings;
    if (const double m = Median(qc); m > limit.qc)
        warnings.push_back("median qc " + Number(m) + " " + stress + " exceeds " + Number(limit.qc) + " " + stress +
                           ": qc looks like kPa rather than " + usual);
    if (const double m = Median(fs); m > limit.fs)
        warnings.push_back("median fs " + Number(m) + " " + stress + " exceeds " + Number(limit.fs) + " " + stress +
                           ": fs looks like kPa rather than " + usual + ", or the qc and fs columns are swapped");
    if (!ratio.empty())
        if (const double m = Median(ratio); m > RatioLimit)
            warnings.push_back("median friction ratio " + Number(m) + " % exceeds 20 %: the qc and fs columns look "
                               "swapped, or fs is in a unit 1000 times smaller than qc's (kPa against MPa)");
    if (deepest > limit.depth)
        warnings.push_back("the deepest reading lies at " + Number(deepest) + " " + limit.length + ", deeper than " +
                           Number(limit.depth) + " " + limit.length + ": depth looks like " +
                           (english ? "inches rather than feet" : "centimetres or millimetres rather than metres"));
    if (depthOrder) {
        for (int i = 1; i < n; ++i) {
            if (d.Depth.data()[i] >= d.Depth.data()[i - 1]) continue;
            warnings.push_back("the depths are not in increasing order (reading " + std::to_string(i + 1) +
                               " lies above reading " + std::to_string(i) +
                               "): the grid is sized from the last reading, which is then not "
                               "the deepest; check the depth column or sort the readings");
            break;
        }
    }
    return warnings;
}

}  // namespace pemlo::formats
