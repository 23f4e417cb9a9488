// The probabilistic classification against the published figures: one interval at a
// time in kg/cm2, and a short English sounding through the whole pipeline.
#include <gtest/gtest.h>

#include <string>

#include "classify/Classify_Pemlo01.h"
#include "classify/PrintedDigits.h"
#include "classify/ReadingSteps.h"
#include "core/Declarations.h"
#include "runtime/RunTimeError.h"

namespace pemlo {
namespace {

struct Published {
    std::string U, V, sand, silt, clay;
};

void ExpectPublished(Declarations& d, int i, const Published& p)
{
    EXPECT_PRINTS_AS(d.IntU[i], p.U);
    EXPECT_PRINTS_AS(d.IntV[i], p.V);
    EXPECT_PRINTS_AS(d.IntProb1[i], p.sand);
    EXPECT_PRINTS_AS(d.IntProb2[i], p.silt);
    EXPECT_PRINTS_AS(d.IntProb3[i], p.clay);
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
// and the guard of a zero tip resistance.
TEST(ClassifyInterval, PublishedSingleIntervals)
{
    struct Case {
        float qc, R;
        Published expected;
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
        ExpectPublished(d, 1, c.expected);
        EXPECT_EQ(d.IntQTip[1], c.qc > 0 ? c.qc : 1.0f);  // the guard's 1.0 stays
        EXPECT_EQ(d.IntQSleeve[1], 0.0f);
    }
}

// Outside the polynomial range the fixed triples are exact: they already sum to 1.
TEST(ClassifyInterval, FixedTriplesOutsideThePolynomials)
{
    struct Case {
        float qc, R, sand, silt, clay;
    } const cases[] = {
        {5.0f, 6.0f, 0.35f, 1.84f, 97.81f},
        {2.0f, 12.0f, 0.35f, 1.84f, 97.81f},
        {100.0f, 0.5f, 97.71f, 2.29f, 0.0f},
        {400.0f, 0.2f, 97.71f, 2.29f, 0.0f},
    };
    for (const Case& c : cases) {
        Declarations d;
        AllocateGrid(d, 1);
        d.IntQTip[1] = c.qc;
        d.IntRatio[1] = c.R;
        ClassifyInterval(d, 1);
        EXPECT_FLOAT_EQ(d.IntProb1[1], c.sand);
        EXPECT_FLOAT_EQ(d.IntProb2[1], c.silt);
        EXPECT_FLOAT_EQ(d.IntProb3[1], c.clay);
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
    for (int k = 1; k <= 10; ++k) {
        d.Depth[k] = static_cast<float>(0.2 * k);
        d.Q_Tip[k] = tips[k - 1];
        d.Q_Sleeve[k] = sleeves[k - 1];
    }
    RunClassificationPipeline(d);
    ASSERT_EQ(d.NumIntervals, 6);
    struct Row {
        std::string depth, tip, sleeve, ratio;
        Published p;
    } const rows[] = {
        {"0.164", "57.5", "0.45", "0.7826", {"2.5383", "2.1381", "78.61", "21.26", "0.13"}},
        {"0.492", "57.5", "0.45", "0.7826", {"2.5383", "2.1381", "78.61", "21.26", "0.13"}},
        {"0.820", "40", "0.6", "1.5", {"1.9328", "2.2710", "49.33", "46.96", "3.71"}},
        {"1.148", "25", "0.55", "2.2", {"1.3219", "2.2913", "25.48", "59.78", "14.74"}},
        {"1.476", "13.5", "0.4", "2.963", {"0.6709", "2.2289", "8.86", "52.56", "38.58"}},
        {"1.804", "10", "0.35", "3.5", {"0.3125", "2.2485", "3.25", "37.15", "59.60"}},
    };
    for (int i = 1; i <= 6; ++i) {
        SCOPED_TRACE(testing::Message() << "interval " << i);
        const Row& r = rows[i - 1];
        EXPECT_PRINTS_AS(d.IntDepth[i], r.depth);
        EXPECT_PRINTS_AS(d.IntQTip[i], r.tip);
        EXPECT_PRINTS_AS(d.IntQSleeve[i], r.sleeve);
        EXPECT_PRINTS_AS(d.IntRatio[i], r.ratio);
        ExpectPublished(d, i, r.p);
    }
    EXPECT_EQ(d.ClassifyIndex, 7);
}

// The arrays go to metres and kg/cm2 and come back: SI means return to within the
// last bits of the round trip, a guarded tip resistance as 1 kg/cm2 in MPa.
TEST(ClassifySoil, ConvertsThereAndBack)
{
    for (const Integer units : {DataSI, DataEnglish}) {
        Declarations d;
        d.DataUnits = units;
        AllocateGrid(d, 2);
        d.IntDepth[1] = 1.5f;
        d.IntQTip[1] = 1.0f;
        d.IntQSleeve[1] = 0.02f;
        d.IntRatio[1] = 2.0f;
        d.IntQTip[2] = 0.0f;
        ClassifySoil(d);
        EXPECT_NEAR(d.IntDepth[1], 1.5f, 1e-6);
        EXPECT_NEAR(d.IntQTip[1], 1.0f, 1e-6);
        EXPECT_NEAR(d.IntQSleeve[1], 0.02f, 1e-8);
        EXPECT_NEAR(d.IntQTip[2], units == DataSI ? 0.0981 : 1.02408, units == DataSI ? 1e-4 : 1e-5);
        EXPECT_EQ(d.ClassifyIndex, 3);
    }
}

// 32767 intervals: the 16-bit index of the entry conversion overflows once every
// interval is in metres, before any interval is classified.
TEST(ClassifySoil, ThirtyTwoThousandIntervalsStopAtTheEntryConversion)
{
    Declarations d;
    d.DataUnits = DataEnglish;
    AllocateGrid(d, 32767);
    d.IntDepth[32767] = 10.0f;
    d.IntQTip[32767] = 100.0f;
    try {
        ClassifySoil(d);
        ADD_FAILURE() << "no overflow";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrOverflow);
    }
    EXPECT_EQ(d.UnitIndex, 32767);
    EXPECT_EQ(d.ClassifyIndex, 0);
    EXPECT_FLOAT_EQ(d.IntDepth[32767], 3.048f);
    EXPECT_EQ(d.IntProb1[32767], 0.0f);
}

}  // namespace
}  // namespace pemlo
