// The unit warnings: each limit in both graph units, at and beyond it, and the plain
// file's depth order.
#include <gtest/gtest.h>

#include "road/UnitCheck.h"

namespace pemlo::formats {
namespace {

TEST(UnitCheck, WarnsBeyondEachLimitInTheUnitsOfTheReadings)
{
    const struct {
        const char* catches;
        Integer units;
        std::vector<float> depth, qc, fs;
        const char* warning;  // "" for none
        bool plainFile = false;  // only a plain file's depths are checked for their order
    } cases[] = {
        {"a median of exactly 100 MPa is no warning", DataSI, {1, 2, 3}, {1, 100, 500}, {0.1f, 0.1f, 0.1f}, ""},
        {"the median, not the largest qc", DataSI, {1, 2, 3}, {1, 101, 500}, {0.1f, 0.1f, 0.1f},
         "qc looks like kPa rather than MPa"},
        {"the median of an even count lies between the middle two", DataSI, {1, 2, 3, 4}, {1, 150, 60, 500},
         {1, 1, 1, 1}, "median qc 105 MPa"},
        {"English limits for English readings", DataEnglish, {1, 2}, {1000, 1100}, {10, 10}, "median qc 1050 tsf exceeds 1044 tsf"},
        {"an English qc that is fine in tsf", DataEnglish, {1, 2}, {500, 600}, {5, 5}, ""},
        {"fs beyond 2 MPa", DataSI, {1, 2}, {50, 60}, {2.5f, 2.5f}, "fs looks like kPa"},
        {"the ratio before its cap of 20, readings without qc left out", DataSI, {1, 2, 3}, {0, 1, 1}, {0.3f, 0.3f, 0.3f},
         "median friction ratio 30 % exceeds 20 %"},
        {"a deepest reading beyond 200 m, wherever it stands", DataSI, {1, 250, 3}, {1, 1, 1}, {0, 0, 0}, "lies at 250 m"},
        {"656 ft is still within reach", DataEnglish, {1, 656}, {10, 10}, {0.1f, 0.1f}, ""},
        {"depths out of order in a plain file", DataSI, {1, 2, 1.5f}, {5, 5, 5}, {0.1f, 0.1f, 0.1f},
         "reading 3 lies above reading 2", true},
        {"depths out of order in an import, which sorts them", DataSI, {1, 2, 1.5f}, {5, 5, 5}, {0.1f, 0.1f, 0.1f}, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.catches);
        Declarations d;
        d.DataUnits = c.units;
        d.NumLines = static_cast<Integer>(c.depth.size());
        for (std::size_t i = 0; i < c.depth.size(); ++i)
            d.Depth.data()[i] = c.depth[i], d.Q_Tip.data()[i] = c.qc[i], d.Q_Sleeve.data()[i] = c.fs[i];
        const std::vector<std::string> warnings = CheckUnits(d, c.plainFile);
        if (std::string(c.warning).empty()) {
            EXPECT_TRUE(warnings.empty()) << warnings.front();
        } else {
            ASSERT_EQ(warnings.size(), 1u);
            EXPECT_NE(warnings[0].find(c.warning), std::string::npos) << warnings[0];
        }
    }
}

}  // namespace
}  // namespace pemlo::formats
