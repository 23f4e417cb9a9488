// The probabilistic classification against the published figures: one interval at a
// time in kg/cm2, and a short English sounding through the whole pipeline.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "classify/Classify_Pemlo01.h"
#include "classify/PrintedDigits.h"
#include "classify/ReadingSteps.h"
#include "core/Declarations.h"

namespace pemlo {
namespace {

using Figures = std::vector<std::string>;

// Interval i of the arrays reads as the figures, and the three percentages make 100.
void ExpectFigures(Declarations& d, int i, std::vector<IntervalArray*> arrays, const Figures& figures)
{
    for (std::size_t k = 0; k < figures.size(); ++k) EXPECT_PRINTS_AS((*arrays[k])[i], figures[k]) << k;
    EXPECT_NEAR(static_cast<double>(d.IntProb1[i]) + d.IntProb2[i] + d.IntProb3[i], 100.0, 1e-4);
}

void AllocateGrid(Declarations& d, int n)
{
    d.NumIntervals = static_cast<Integer>(n);
    for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve, &d.IntRatio, &d.IntReserve,
                             &d.IntProb1, &d.IntProb2, &d.IntProb3, &d.IntU, &d.IntV})
        a->Allocate(n);
}

// Every branch of the method: above 2.91, the polynomials with each floor, below -0.14,
// and the guards of a zero tip resistance and a negative sleeve friction.
TEST(ClassifyInterval, PublishedSingleIntervals)
{
    struct Case {
        float qc, R;
        Figures UVSandSiltClay;
    } const cases[] = {
        {100.0f, 0.5f, {"3.1276", "2.3798", "97.71", "2.29", "0.00"}},
        {94.9f, 1.0f, {"2.8000", "2.6320", "91.24", "8.76", "0.00"}},
        {50.0f, 1.0f, {"2.3458", "2.1791", "69.04", "30.28", "0.68"}},
        {30.0f, 2.0f, {"1.5313", "2.3328", "32.77", "57.30", "9.93"}},
        {15.0f, 3.0f, {"0.7152", "2.3148", "9.72", "53.84", "36.44"}},
        {10.0f, 4.0f, {"0.1154", "2.4173", "1.10", "24.22", "74.69"}},
        {265.4f, 6.1f, {"-0.0500", "5.1511", "0.35", "10.21", "89.44"}},
        {5.0f, 6.0f, {"-0.9034", "2.5615", "0.35", "1.84", "97.81"}},
        {0.0f, 0.0f, {"0.2716", "0.0046", "2.75", "34.76", "62.50"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "qc " << c.qc << ", R " << c.R);
        Declarations d;
        AllocateGrid(d, 1);
        d.IntQTip[1] = c.qc;
        d.IntQSleeve[1] = -1.0f;
        d.IntRatio[1] = c.R;
        ClassifyInterval(d, 1);
        ExpectFigures(d, 1, {&d.IntU, &d.IntV, &d.IntProb1, &d.IntProb2, &d.IntProb3}, c.UVSandSiltClay);
        EXPECT_EQ(d.IntQTip[1], c.qc > 0 ? c.qc : 1.0f);  // the guard's 1.0 stays
        EXPECT_EQ(d.IntQSleeve[1], 0.0f);
    }
}

// Ten English readings through grid, means, ratio and classification.
TEST(ClassificationPipeline, PublishedEnglishSounding)
{
    const float tips[] = {50, 60, 55, 40, 30, 20, 15, 12, 10, 10};
    const float sleeves[] = {0.3f, 0.4f, 0.5f, 0.6f, 0.6f, 0.5f, 0.4f, 0.4f, 0.35f, 0.3f};
    Declarations d;
    d.DataUnits = DataEnglish;
    d.NumLines = 10;
    for (int k = 1; k <= 10; ++k)
        d.Depth[k] = static_cast<float>(0.2 * k), d.Q_Tip[k] = tips[k - 1], d.Q_Sleeve[k] = sleeves[k - 1];
    RunClassificationPipeline(d);
    ASSERT_EQ(d.NumIntervals, 6);
    // depth, qc, fs, ratio, U, V, sand, silt, clay
    const Figures rows[] = {
        {"0.164", "57.5", "0.45", "0.7826", "2.5383", "2.1381", "78.61", "21.26", "0.13"},
        {"0.492", "57.5", "0.45", "0.7826", "2.5383", "2.1381", "78.61", "21.26", "0.13"},
        {"0.820", "40", "0.6", "1.5", "1.9328", "2.2710", "49.33", "46.96", "3.71"},
        {"1.148", "25", "0.55", "2.2", "1.3219", "2.2913", "25.48", "59.78", "14.74"},
        {"1.476", "13.5", "0.4", "2.963", "0.6709", "2.2289", "8.86", "52.56", "38.58"},
        {"1.804", "10", "0.35", "3.5", "0.3125", "2.2485", "3.25", "37.15", "59.60"},
    };
    for (int i = 1; i <= 6; ++i) {
        SCOPED_TRACE(testing::Message() << "interval " << i);
        ExpectFigures(d, i, {&d.IntDepth, &d.IntQTip, &d.IntQSleeve, &d.IntRatio, &d.IntU, &d.IntV, &d.IntProb1,
                             &d.IntProb2, &d.IntProb3}, rows[i - 1]);
    }
    EXPECT_EQ(d.ClassifyIndex, 7);
}

}  // namespace
}  // namespace pemlo
