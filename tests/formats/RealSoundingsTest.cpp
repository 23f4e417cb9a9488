// The real GEF, AGS4 and BRO-XML files beside the repository: each imports to the
// readings its sources state, and an imported sounding classifies bit for bit as the
// plain SI cone data file of the same single-precision readings, which is what
// convert writes for the desktop program.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "classify/ReadingSteps.h"
#include "road/ProgramRoad.h"
#include "formats/ConeDataFileWriter.h"
#include "formats/FileImport.h"

namespace pemlo::formats {
namespace {

namespace fs = std::filesystem;

const std::string FormatsDir = PEMLO_FORMATS_DIR;
const std::string SoundingsDir = PEMLO_SOUNDINGS_DIR;

struct RealFile {
    const char* path;
    int readings;
    float first, last;
    int voids;
    bool negated, sorted;
    const char* sameReadingsAs;  // the plain file whose readings the import starts with, bit for bit
    DepthChoice depth;
};

constexpr DepthChoice Length = DepthChoice::Penetration;

const RealFile Files[] = {
    {"gef/mos_inclination.gef", 999, 0.01f, 19.97f, 5, false, false, "pg_vp178.txt", Length},
    {"gef/bam_predrilled.gef", 1183, 6.02f, 29.66f, 301, false, false, nullptr, Length},
    {"gef/omegam_gef100_negative_depth.gef", 5939, 0.005f, 29.695f, 0, true, false, "pg_a011.txt", Length},
    {"gef/bro_CPT000000003688.gef", 1218, 0.12f, 24.46f, 11, false, false, "b003688.txt", Length},
    {"bro-xml/CPT000000003688.xml", 1218, 0.12f, 24.46f, 11, false, true, "b003688.txt", Length},
    {"bro-xml/CPT000000155283.xml", 296, 0.58f, 6.48f, 9, false, true, "b155283.txt", Length},
    {"ags/borssele_WFS1-2A.ags", 1623, 10.06f, 64.3f, 142, false, false, nullptr, Length},
    // The corrected depth, written negative, turned downwards.
    {"gef/bam_predrilled.gef", 1183, 6.019f, 29.481f, 301, true, false, nullptr, DepthChoice::Corrected},
};

ImportedSounding ImportOne(const RealFile& file)
{
    const FileImport f = ImportFile(FormatsDir + "/" + file.path, file.depth);
    EXPECT_EQ(f.refusal, "");
    EXPECT_EQ(f.soundings.size(), 1u);
    return f.soundings.empty() ? ImportedSounding{} : f.soundings[0];
}

// A plain cone data file through the desktop program's reader, on a record as wide as needed.
std::unique_ptr<Declarations> ReadPlain(const std::string& path, int bound)
{
    auto d = std::make_unique<Declarations>();
    FileChannels files;
    d->SetReadingBound(bound);
    d->DataFileName = path;
    d->NumTitleLines = 10;
    d->DataUnits = DataSI;
    d->FileNum = files.FreeFile();
    EXPECT_EQ(LoadDataFile(*d, files).outcome, ReadOutcome::Loaded) << path;
    return d;
}

bool SameBits(const float* a, const float* b, int n)
{
    return n >= 0 && std::memcmp(a, b, sizeof(float) * static_cast<std::size_t>(n)) == 0;
}

TEST(RealSoundings, ImportToTheReadingsTheirSourcesState)
{
    if (FormatsDir.empty()) GTEST_SKIP() << "no formats directory";
    for (const RealFile& file : Files) {
        SCOPED_TRACE(file.path);
        const ImportedSounding s = ImportOne(file);
        ASSERT_EQ(static_cast<int>(s.depth.size()), file.readings);
        EXPECT_EQ(s.depth.front(), file.first);
        EXPECT_EQ(s.depth.back(), file.last);
        EXPECT_EQ(s.record.voidRows, file.voids);
        EXPECT_EQ(s.record.negated, file.negated);
        EXPECT_EQ(s.record.sortMoved > 0, file.sorted);
        if (!file.sameReadingsAs || SoundingsDir.empty()) continue;
        const auto plain = ReadPlain(SoundingsDir + "/" + file.sameReadingsAs, MaxReadings);
        const int n = plain->NumLines;
        EXPECT_TRUE(SameBits(plain->Depth.data(), s.depth.data(), n) && SameBits(plain->Q_Tip.data(), s.qc.data(), n) &&
                    SameBits(plain->Q_Sleeve.data(), s.fs.data(), n));
    }
}

void ExpectSameIntervals(const Declarations& a, const Declarations& b)
{
    ASSERT_EQ(a.NumIntervals, b.NumIntervals);
    for (const auto array : {&Declarations::IntDepth, &Declarations::IntQTip, &Declarations::IntQSleeve,
                             &Declarations::IntRatio, &Declarations::IntU, &Declarations::IntV,
                             &Declarations::IntProb1, &Declarations::IntProb2, &Declarations::IntProb3})
        EXPECT_TRUE(SameBits((a.*array).data(), (b.*array).data(), a.NumIntervals));
}

// The imported road against the plain SI road on the same readings, in both graph
// units. Up to 4000 readings the plain file is convert's own output, read back by the
// plain road exactly as the desktop program loads it; beyond, convert refuses and the
// same reader takes the readings on a widened record, followed by the screens' steps.
TEST(RealSoundings, ClassifyBitForBitAsTheirPlainSiFileInBothGraphUnits)
{
    if (FormatsDir.empty()) GTEST_SKIP() << "no formats directory";
    const fs::path plainPath = fs::temp_directory_path() / ("pemlo-real-" + std::to_string(getpid()) + ".txt");
    for (const RealFile& file : Files) {
        const auto s = std::make_shared<const ImportedSounding>(ImportOne(file));
        const ConeDataFile converted = ConeDataFileOf(*s, s->project, file.path, {}, {});
        std::ostringstream written;
        WriteConeDataFile(written, converted);
        std::string text = written.str();
        if (file.readings > MaxReadings) {
            EXPECT_NE(converted.refusal.find("--from 0.005 --to 20"), std::string::npos) << converted.refusal;
            text = std::string(10, '\n');
            for (std::size_t i = 0; i < s->depth.size(); ++i)
                text += RoundTripText(s->depth[i]) + "," + RoundTripText(s->qc[i]) + "," + RoundTripText(s->fs[i]) + "\r\n";
        }
        std::ofstream(plainPath, std::ios::binary) << text;
        for (const Integer graphUnits : {GraphSI, GraphEnglish}) {
            SCOPED_TRACE(std::string(file.path) + (graphUnits == GraphSI ? " in SI" : " in English units"));
            Declarations imported;
            RoadOptions road{.path = file.path, .graphUnits = graphUnits, .imported = s};
            ASSERT_EQ(RunRoad(road, imported).status, RoadStatus::Done);
            auto plain = std::make_unique<Declarations>();
            if (file.readings <= MaxReadings) {
                road = {.path = plainPath.string(), .dataUnits = DataSI, .graphUnits = graphUnits, .titleLines = 10};
                ASSERT_EQ(RunRoad(road, *plain).status, RoadStatus::Done);
            } else {
                plain = ReadPlain(plainPath.string(), MaxImportedReadings);
                plain->GraphUnits = graphUnits;
                ConvertToGraphUnits(*plain);
                CleanReadings(*plain);
                RunClassificationPipeline(*plain);
            }
            ExpectSameIntervals(imported, *plain);
        }
    }
    fs::remove(plainPath);
}

}  // namespace
}  // namespace pemlo::formats
