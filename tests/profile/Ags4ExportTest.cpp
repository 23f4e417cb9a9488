// The AGS4 export: which push a layer belongs to, the checker catching each rule it
// holds a file to, project information that must reach the file without breaking it,
// and real soundings written, checked and read back to their layers. (The reader and
// the type checks are seen through the rules they enforce.)
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>

#include "road/ProgramRoad.h"
#include "profile/Ags4Export.h"
#include "profile/Ags4Rules.h"

namespace pemlo::profile {
namespace {

TEST(Ags4Export, PutsEachLayerInThePushHoldingItsTop)
{
    const std::vector<PushRange> pushes{{"A", 10, 20, {}}, {"B", 22, 30, {}}, {"C", 30, 40, {}}};
    const struct {
        double top;
        const char* push;
        const char* fault;
    } cases[] = {
        {15, "A", "misses a top inside a push"},
        {21, "A", "gives a top between pushes to the push below, not the nearest above"},
        {22, "B", "gives a top at a push's first reading to the push above"},
        {30, "C", "gives a top where one push ends and the next starts to the one that ends"},
        {5, "A", "finds no push for a top above the first push"},
        {45, "C", "finds no push for a top below the last push"},
    };
    for (const auto& c : cases) EXPECT_EQ(pushes[PushOfTop(pushes, c.top)].id, c.push) << c.fault;
    const std::vector<PushRange> unsorted{{"B", 22, 30, {}}, {"A", 10, 20, {}}};
    EXPECT_EQ(unsorted[PushOfTop(unsorted, 5)].id, "A") << "takes the first listed push, not the shallowest";
}

// Where the layers go back: an AGS4 sounding under its own location and pushes, any
// other under its id, a plain file under its name.
TEST(Ags4Export, NamesEachSoundingAfterWhereItComesFrom)
{
    formats::ImportedSounding ags;
    ags.locaId = "BH-1";
    ags.id = "BH-1";
    ags.pushes = {{"CPT01", 10, 10.06f, 12.0f, {}}, {"CPT02", 10, 12.5f, 14.0f, {}}};
    formats::ImportedSounding gef;
    gef.id = "CPT000000003688";
    gef.depth = {0.12f, 24.46f};
    formats::ImportedSounding unnamed = gef;
    unnamed.id.clear();
    const struct {
        const char* fault;
        ProfileSource source;
        const char* locaId;
        std::vector<std::string> pushes;
    } cases[] = {
        {"loses the project's location and pushes", SourceOfSounding("a.ags#BH-1", "a.ags", ags), "BH-1",
         {"CPT01", "CPT02"}},
        {"names a GEF sounding after its file, not its test id", SourceOfSounding("s.gef", "dir/s.gef", gef),
         "CPT000000003688", {"CPT000000003688"}},
        {"leaves a sounding without an id unnamed", SourceOfSounding("s.gef", "dir/s.gef", unnamed), "s", {"s"}},
        {"keeps the folder or the extension of a plain file", SourceOfDataFile("site/b003688.txt", 0.12, 24.46),
         "b003688", {"b003688"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.source.locaId, c.locaId) << c.fault;
        std::vector<std::string> pushes;
        for (const PushRange& push : c.source.pushes) pushes.push_back(push.id);
        EXPECT_EQ(pushes, c.pushes) << c.fault;
    }
    EXPECT_EQ(cases[1].source.pushes[0].top, 0.12f) << "the push covers the readings";
}

std::string Sample()
{
    const SoilLayer sand{0, 5, 0.0, 0.5, Soil::Sand, {9.1, 0.05, 0.55, 2.61, 2.3, 80, 15, 5}};
    const SoilLayer clay{5, 7, 0.5, 1.2, Soil::Clay, {0.6, 0.03, 5.0, -0.2, 2.1, 2, 20, 78}};
    AgsSounding s{SourceOfDataFile("dir/cpt1.txt", 0.02, 1.2), {sand, clay}, 1.2};
    s.source.project = {"P-17", "Quay wall", "2024-05-06", "Harbour", "1.5", "C10"};
    return WriteAgs4({s}, {"3.0", "2024-06-01", "", 0.5, 5});
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// The whole line holding `part`, with its CR LF.
std::string LineWith(const std::string& text, const std::string& part)
{
    const auto at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    if (at == std::string::npos) return {};
    const auto start = text.rfind('\n', at) + 1;
    return text.substr(start, text.find('\n', at) + 1 - start);
}

struct BrokenRule {
    const char* fault;  // what a checker without this rule would let through
    AgsRule rule;
    std::function<std::string(const std::string&)> breakIt;
};

const BrokenRule Broken[] = {
    {"a character beyond ASCII", AgsRule::Ascii, [](auto t) { return Replaced(t, "Quay wall", "Quay w\xE4ll"); }},
    {"a line ending LF only", AgsRule::LineEnds, [](auto t) { return Replaced(t, "\"TRAN\"\r\n", "\"TRAN\"\n"); }},
    {"a field without quotes", AgsRule::Quoting, [](auto t) { return Replaced(t, "\"GROUP\",\"TRAN\"", "\"GROUP\",TRAN"); }},
    {"a group without its UNIT row", AgsRule::GroupRows,
     [](auto t) { return Replaced(t, "\"UNIT\",\"\",\"\",\"m\",\"yyyy-mm-dd\"\r\n", ""); }},
    {"a DATA row with a field too many", AgsRule::FieldCount,
     [](auto t) { return Replaced(t, "\"80.0\",\"15.0\",\"5.0\"", "\"80.0\",\"15.0\",\"5.0\",\"\""); }},
    {"a heading of 10 characters", AgsRule::Names, [](auto t) {
         return Replaced(Replaced(t, "\"SCPP_PCLY\"", "\"SCPP_PCLAY\""), "\"SCPP_PCLY\"", "\"SCPP_PCLAY\"");
     }},
    {"two PROJ rows", AgsRule::RequiredGroups,
     [](auto t) { return Replaced(t, "\"GROUP\",\"TRAN\"", LineWith(t, "\"P-17\"") + "\"GROUP\",\"TRAN\""); }},
    {"PROJ after the other groups", AgsRule::GroupOrder, [](auto t) {
         const auto end = t.find("\r\n\r\n") + 4;
         return t.substr(end) + t.substr(0, end);
     }},
    {"a heading of our own not declared", AgsRule::Dictionary,
     [](auto t) { return Replaced(t, LineWith(t, "\"SCPP_PCLY\",\"OTHER\""), ""); }},
    {"standard headings out of order", AgsRule::HeadingOrder,
     [](auto t) { return Replaced(t, "\"SCPP_TOP\",\"SCPP_BASE\"", "\"SCPP_BASE\",\"SCPP_TOP\""); }},
    {"a layer written twice", AgsRule::Keys, [](auto t) {
         const std::string row = LineWith(t, "\"SAND\"");
         return Replaced(t, row, row + row);
     }},
    {"an empty required field", AgsRule::RequiredData, [](auto t) { return Replaced(t, "\"Not stated\",\"|\"", "\"\",\"|\""); }},
    {"a layer of a push without an SCPG row", AgsRule::Parents,
     [](auto t) { return Replaced(t, "\"cpt1\",\"cpt1\",\"0.50\"", "\"cpt1\",\"2\",\"0.50\""); }},
    {"a unit not listed in UNIT", AgsRule::UnitsListed, [](auto t) { return Replaced(t, LineWith(t, "\"percent\""), ""); }},
    {"a type not listed in TYPE", AgsRule::TypesListed,
     [](auto t) { return Replaced(t, LineWith(t, "\"DATA\",\"3DP\""), ""); }},
    {"one decimal under 2DP", AgsRule::DataTypes, [](auto t) { return Replaced(t, "\"0.50\",\"1.20\"", "\"0.5\",\"1.20\""); }},
    {"a date not written yyyy-mm-dd", AgsRule::DataTypes, [](auto t) { return Replaced(t, "\"2024-05-06\"", "\"2024-5-06\""); }},
};

TEST(Ags4Rules, CatchEveryRuleTheExportIsHeldTo)
{
    const std::string good = Sample();
    EXPECT_TRUE(CheckAgs4(good).empty()) << Describe(CheckAgs4(good).front());
    for (const BrokenRule& b : Broken) {
        const auto findings = CheckAgs4(b.breakIt(good));
        EXPECT_TRUE(std::any_of(findings.begin(), findings.end(), [&](const auto& f) { return f.rule == b.rule; }))
            << b.fault << ": not caught as \"" << RuleText(b.rule) << "\"";
    }
}

TEST(Ags4Export, ProjectInformationReachesTheFileWithoutBreakingIt)
{
    const struct {
        const char* fault;
        formats::ProjectInfo project;  // number, title, date, location, gwt, cone number
        const char* written;  // must appear in the file
    } cases[] = {
        {"a title beyond ASCII makes the file unwritable", {"P1", "Kai S\xFC""d", "", "", "", ""}, "\"Kai S?d\""},
        {"a project number with a quote breaks the quoting", {"P\"1", "", "", "", "", ""}, "\"P\"\"1\""},
        {"a date that is not yyyy-mm-dd is lost", {"", "", "10 May 2015", "", "", ""}, "; sounding date 10 May 2015\""},
        {"a date with its time is not a start date", {"", "", "2015-05-10 14:30", "", "", ""}, "\"2015-05-10\""},
        {"a ground water table in words is lost", {"", "", "", "", "dry", ""}, "; ground water table dry\""},
        {"no project number leaves the required PROJ_ID empty", {}, "\"DATA\",\"Not stated\""},
    };
    for (const auto& c : cases) {
        AgsSounding s{SourceOfDataFile("cpt1.txt", 0.0, 1.0), {{0, 10, 0.0, 1.0, Soil::Silt, {}}}, 1.0};
        s.source.project = c.project;
        s.source.project.coneNo = "C10";
        const std::string text = WriteAgs4({s}, {"3.0", "2024-06-01", "", 0.5, 5});
        EXPECT_NE(text.find(c.written), std::string::npos) << c.fault;
        const auto findings = CheckAgs4(text);
        EXPECT_TRUE(findings.empty()) << c.fault << ": " << Describe(findings.front());
    }
}

double Number(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

TEST(Ags4Export, RealSoundingsPassTheRulesAndReadBackToTheirLayers)
{
    if (std::string(PEMLO_SOUNDINGS_DIR).empty()) GTEST_SKIP() << "no real soundings";
    std::vector<AgsSounding> soundings;
    for (const auto& entry : std::filesystem::directory_iterator(PEMLO_SOUNDINGS_DIR)) {
        if (entry.path().extension() != ".txt") continue;
        const auto d = std::make_unique<Declarations>();
        ASSERT_EQ(RunRoad({entry.path().string(), DataSI, GraphSI, 10, 50.0f, 0.5f, true}, *d).status, RoadStatus::Done);
        const double last = d->Depth[d->NumLines];
        soundings.push_back({SourceOfDataFile(entry.path().string(), d->Depth[1], last),
                             GroupIntoLayers(IntervalsOf(*d), d->IntervalSize, 0.5), last});
    }
    const std::string text = WriteAgs4(soundings, {"3.0", "2024-06-01", "", 0.5, 5});
    const auto findings = CheckAgs4(text);
    EXPECT_TRUE(findings.empty()) << Describe(findings.front());

    std::vector<AgsFinding> unread;
    const AgsFile file = ReadAgsGroups(text, unread);
    const AgsGroup* scpp = file.Find("SCPP");
    ASSERT_NE(scpp, nullptr);
    std::size_t row = 0;
    for (const AgsSounding& s : soundings) {
        for (std::size_t k = 0; k < s.layers.size(); ++k, ++row) {
            ASSERT_LT(row, scpp->rows.size());
            const AgsRow& r = scpp->rows[row];
            const SoilLayer& l = s.layers[k];
            SCOPED_TRACE(s.source.locaId + " layer " + std::to_string(k + 1));
            EXPECT_EQ(scpp->Value(r, "LOCA_ID"), std::filesystem::path(s.source.name).stem().string());
            EXPECT_NEAR(Number(scpp->Value(r, "SCPP_TOP")), l.top, 0.005 + 1e-9);
            EXPECT_NEAR(Number(scpp->Value(r, "SCPP_BASE")), l.bottom, 0.005 + 1e-5);
            EXPECT_EQ(scpp->Value(r, "SCPP_CSBT"), SoilDescription(l.soil));
            EXPECT_NEAR(Number(scpp->Value(r, "SCPP_UIDX")), l.means.u, 0.0005 + 1e-9);
            EXPECT_NEAR(Number(scpp->Value(r, "SCPP_PSND")), l.means.sand, 0.05 + 1e-9);
            EXPECT_NEAR(Number(scpp->Value(r, "SCPP_PCLY")), l.means.clay, 0.05 + 1e-9);
        }
    }
    EXPECT_EQ(row, scpp->rows.size());
}

}  // namespace
}  // namespace pemlo::profile
