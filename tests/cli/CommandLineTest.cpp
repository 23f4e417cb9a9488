// The command line as a user meets it: pemlo-cli run on files, what it prints, the
// files it writes and the status it ends with. One table for every command; each row
// says what fault it would catch.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CliRun.h"
#include "cli/Inputs.h"
#include "cli/RemovedOnSignal.h"
#include "formats/HostileFiles.h"
#include "formats/SafeText.h"
#include "formats/TextDecoding.h"

namespace pemlo::cli::test {
namespace {

namespace fs = std::filesystem;

// Ten readings every 0.2 down to 2.0: six intervals in English units.
std::vector<std::string> TenReadings()
{
    std::vector<std::string> lines;
    for (int i = 1; i <= 10; ++i) lines.push_back(std::to_string(0.2 * i) + "," + std::to_string(60 - 5 * i) + ",0.4");
    return lines;
}

std::string Sounding(const char* name) { return std::string(PEMLO_SOUNDINGS_DIR) + "/" + name; }
std::string Format(const char* path) { return std::string(PEMLO_FORMATS_DIR) + "/" + path; }

// The small files the rows read, in the scratch folder: plain files with 10 title lines,
// a symbolic-link loop and a sparse file far too large to be a cone data file.
void WriteFixtures(const ScratchDir& scratch)
{
    const std::pair<const char*, std::vector<std::string>> plain[] = {
        {"two.txt", {"1.0,2.0", "1.2,3.0"}},
        {"shallow.txt", {"0.1,1,0.1", "0.2,1,0.1", "0.5,1,0.1"}},
        {"shallower.txt", {"0.1,1,0.1", "0.2,1,0.1"}},
        {"gap.txt", {"0.05,10,0.1", "1.35,10,0.1", "1.45,12,0.1"}},
        {"ten.txt", TenReadings()},
    };
    for (const auto& [name, lines] : plain) WriteDataFile(scratch.File(name), 10, lines);
    std::vector<std::string> kpa;  // SI, qc written in kPa
    for (int i = 1; i <= 30; ++i) kpa.push_back(std::to_string(i * 0.05) + "," + std::to_string(2000 + i * 100) + ",0.05");
    WriteDataFile(scratch.File("kpa.txt"), 10, kpa);
    // Hostile text: control characters in a GEF id, bytes that are no UTF-8 in a BRO id.
    std::ofstream(scratch.File("esc.gef"), std::ios::binary) << "#GEFID= 1,1,0\n#TESTID= A\x1B[31mB\x07\n#COLUMNINFO= 1, m, "
        "l, 1\n#COLUMNINFO= 2, MPa, qc, 2\n#COLUMNINFO= 3, MPa, fs, 3\n#EOH=\n1 1 0.01\n2 2 0.02\n";
    // ... a line end in another, and a file named to drive the terminal.
    for (const auto& [name, id] : {std::pair{"id.xml", "X\xFF\xFEY\x1B"}, {"nl.xml", "A&#10;pemlo-cli: B"}})
        std::ofstream(scratch.File(name), std::ios::binary)
            << "<r><CPT_O><broId>" << id << "</broId><cptResult><values>1,1,0.01;2,2,0.02</values></cptResult>"
               "<parameters><localFriction>ja</localFriction><penetrationLength>ja</penetrationLength>"
               "<coneResistance>ja</coneResistance></parameters></CPT_O></r>";
    fs::copy_file(scratch.File("esc.gef"), scratch.File("e\x1B[31m.gef"));
    std::ofstream(scratch.File("pushes.ags"), std::ios::binary) << formats::test::ManyPushesAgs4(2000);
    for (const char* folder : {"adir", "taken/ten.csv"}) fs::create_directories(scratch.Path() / folder);
    fs::create_symlink("loop", scratch.Path() / "loop");
    std::ofstream(scratch.File("big.txt")).close();
    fs::resize_file(scratch.File("big.txt"), 600ull << 20);  // sparse: costs no disk
}

struct CommandCase {
    const char* catches;
    std::vector<std::string> args;
    int exitCode;
    std::vector<std::string> err, out;  // each must appear
    std::vector<std::string> ags = {};  // each must appear in out.ags; none: no out.ags is written
    std::string stdoutTo = {};          // where standard output goes instead of `out`
};


TEST(CommandLine, DoesWhatItSaysWithTheRightStatus)
{
    if (std::string(PEMLO_SOUNDINGS_DIR).empty() || std::string(PEMLO_FORMATS_DIR).empty())
        GTEST_SKIP() << "no real files beside the repository";
    const std::string b155283 = Sounding("b155283.txt"), b099543 = Sounding("b099543.txt");
    const std::string ags = Format("ags/borssele_WFS1-2A.ags"), bam = Format("gef/bam_predrilled.gef");
    const std::string mos = Format("gef/mos_inclination.gef");
    const CommandCase cases[] = {
        // Plain files and the run-time errors of the road.
        {"a missing file taken for an empty result", {"classify", "missing.txt"}, 3,
         {"Could not read data from file: the file does not exist"}, {}},
        {"a mistyped option not stopping before any file is read", {"classify", "ten.txt", "--units", "si"}, 2, {"--units"}, {}},
        {"a title line count out of range taken", {"classify", "ten.txt", "--title-lines", "16"}, 2, {"--title-lines"}, {}},
        {"two columns waited on forever, as the desktop program does", {"classify", "two.txt"}, 3, {"(line 11) has 2 columns"}, {}},
        {"the averaging's error without its step", {"classify", "shallow.txt"}, 4,
         {"Run-time error '9': Subscript out of range in the averaging step"}, {}},
        {"the grid's error without its step", {"classify", "shallower.txt"}, 4,
         {"Run-time error '9': Subscript out of range in the grid step"}, {}},
        {"error 11 without the intervals that hold no mean", {"classify", "gap.txt"}, 4,
         {"Division by zero in the interval ratio step: intervals 1 to 4 hold no mean"}, {}},
        {"a symbolic-link loop called a missing file", {"classify", "loop"}, 3, {"its path goes round a loop of symbolic links"}, {}},
        {"a huge file read before it is refused", {"classify", "big.txt"}, 3,
         {"too large to be a cone data file (600 MB); it was not read"}, {}},
        {"a name too long called a missing file", {"classify", std::string(300, 'a') + ".txt"}, 3,
         {"its name is too long for the system"}, {}},
        // Imports: refusals, --strict, unit warnings, names, the record.
        {"--strict letting dropped voids through", {"classify", "--strict", bam}, 3,
         {"void rows dropped 301: 0-6 m (301)", "--strict: the import dropped 301 void rows"}, {}},
        {"--strict letting a reorder through", {"readings", "--strict", Format("bro-xml/CPT000000155283.xml")}, 3,
         {"moved 4 readings into depth order"}, {}},
        {"qc in kPa in a plain file unremarked", {"classify", "kpa.txt", "--data-units", "si"}, 0,
         {"warning: kpa.txt: median qc 3550 MPa exceeds 100 MPa: qc looks like kPa"}, {"interval,"}},
        {"--strict letting a warning through", {"classify", "--strict", "kpa.txt", "--data-units", "si"}, 3, {"--strict: 1 unit warning"}, {}},
        {"soundings not named FILE#ID in one table, or a GEF named so", {"classify", ags, mos}, 0,
         {"imported " + ags + "#BH-WFS1-2A\n", "pushes 18 (CPT01 to CPT18)", "imported " + mos + "\n"},
         {"file,interval,", "borssele_WFS1-2A.ags#BH-WFS1-2A,1,", "mos_inclination.gef,1,"}},
        {"FILE#ID not naming one sounding", {"readings", ags + "#BH-WFS1-2A"}, 0, {}, {"index,depth"}},
        {"an id the file does not hold", {"readings", ags + "#X"}, 3, {"no sounding X in the file; it holds BH-WFS1-2A"}, {}},
        {"the record and warnings missing from JSON", {"classify", bam, "--format", "json"}, 0, {},
         {"\"import\": {", "\"voidRuns\": [{\"rows\": 301, \"top\": 0, \"bottom\": 6}]", "\"predrilled\": 6", "\"warnings\": []"}},
        {"JSON of a plain file without its import and warnings", {"readings", "kpa.txt", "--data-units", "si", "--format", "json"},
         0, {}, {"\"import\": null", "\"warnings\": [\"median qc"}},
        {"the --out-dir summary without the record", {"classify", ags, "--out-dir", "res"}, 0, {},
         {"res/borssele_WFS1-2A#BH-WFS1-2A.csv (", "  rows read 1765;"}},
        {"convert naming a sounding's file without its id", {"convert", ags, mos, "--out-dir", "conv"}, 0, {},
         {"conv/borssele_WFS1-2A#BH-WFS1-2A.txt (1623 readings)", "conv/mos_inclination.txt (999 readings)"}},
        {"convert writing more than 4000 readings, or suggesting no range",
         {"convert", Format("gef/omegam_gef100_negative_depth.gef")}, 3, {"5939 readings", "(--from 0.005 --to 20)"}, {}},
        {"plain-file options given to an import not noted", {"classify", mos, "--title-lines", "3"}, 0,
         {"note: " + mos + ": --title-lines applies to plain ASCII files only"}, {}},
        // Layers and AGS4.
        {"a layers summary counting intervals instead of layers", {"layers", b155283, "--data-units", "si", "--out-dir", "lay"},
         0, {}, {"(4 layers)\n1 of 1 files written to lay"}},
        {"SI units or the SI minimum thickness in English graphs",
         {"layers", b155283, "--data-units", "si", "--graph-units", "english", "--format", "table"}, 0, {},
         {"(minimum thickness 1.64 ft, 5 intervals) in English units\nLayer  Top (ft)"}},
        {"a layer's top not its first interval's depth - t/2 in double",
         {"layers", b155283, b099543, "--data-units", "si", "--format", "json"}, 0, {},
         {"\"minIntervals\": 5,\n  \"layers\": [\n    {\"layer\": 1, \"top\": 0.5799999944865704, "}},
        {"a negative minimum thickness taken", {"layers", b155283, "--min-thickness", "-1"}, 2, {"--min-thickness"}, {}},
        {"AGS4 depths written in feet", {"ags", b155283, "--data-units", "si", "--graph-units", "english", "-o", "out.ags"}, 2,
         {"metres"}, {}},
        {"a file breaking the AGS4 rules written anyway (one location twice)",
         {"ags", b155283, b155283, "--data-units", "si", "-o", "out.ags"}, 1,
         {"key headings present and unique: LOCA: key LOCA_ID = b155283 repeats"}, {}},
        {"every push given the cones of all pushes", {"ags", ags, "-o", "out.ags"}, 0, {}, {},
         {"\"BH-WFS1-2A\",\"CPT01\",\"CP10-CF50PB10 1706-1876\",", "\"BH-WFS1-2A\",\"CPT18\",\"CP5-CF80 1721-1964\","}},
        {"each push's row repeating all cones (226 MB)", {"ags", "pushes.ags", "-o", "out.ags"}, 0, {}, {}, {"\"T1999\",\"R01999xxx"}},
        {"a date that is no calendar day taken for LOCA_STAR",
         {"ags", b155283, "--data-units", "si", "-o", "out.ags", "--date", "2024-13-45"}, 2, {"not a calendar date"}, {}},
        {"a time that is none dropped without a word", {"ags", b155283, "-o", "o.ags", "--date", "2024-12-31 25:99"}, 2, {"--date"}, {}},
        {"a time not after a blank taken", {"ags", b155283, "-o", "o.ags", "--date", "2024-12-31T10:30"}, 2, {"--date"}, {}},
        {"a depth of nan taken", {"convert", mos, "--from", "nan"}, 2, {"--from: 'nan' is not a finite number"}, {}},
        // Output paths: only a regular file that is no input is written over.
        {"convert writing over its input", {"convert", "esc.gef", "-o", "esc.gef"}, 2, {"esc.gef is the input esc.gef"}, {}},
        {"convert removing a directory", {"convert", "esc.gef", "-o", "adir"}, 2, {"adir is a directory"}, {}},
        {"convert writing over a device", {"convert", "esc.gef", "-o", "/dev/null"}, 2, {"/dev/null is a device"}, {}},
        {"--out-dir removing a folder named as a result", {"classify", "ten.txt", "--out-dir", "taken"}, 2, {"taken/ten.csv is a"}, {}},
        {"--out-dir through a regular file called a write failure", {"classify", "ten.txt", "--out-dir", "two.txt/r"}, 2,
         {"--out-dir: two.txt is not a directory"}, {}},
        {"a 255-byte name refused for its longer hidden name", {"convert", "esc.gef", "-o", std::string(251, 'n') + ".txt"}, 0, {}, {}},
        {"results lost on a full disk without a word", {"classify", "ten.txt"}, 1,
         {"could not write the results to standard output: No space left on device"}, {}, {}, "/dev/full"},
        // Text from the files: escaped on the terminal, valid in JSON and in file names.
        {"a GEF id driving the terminal", {"readings", "esc.gef"}, 0, {"id A\\x1B[31mB\\x07,"}, {}},
        {"a BRO id that is no UTF-8 in JSON or on the terminal", {"readings", "id.xml", "--format", "json"}, 0,
         {"imported id.xml#X\\xFF\\xFEY\\x1B\n"}, {"\"id\": \"X\xEF\xBF\xBD\xEF\xBF\xBDY\\u001B\""}},
        {"a line end in an id forging a line of the program", {"classify", "nl.xml", "--out-dir", "nl"}, 0,
         {"warning: nl.xml#A\\x0Apemlo-cli: B: "}, {"nl.xml#A\\x0Apemlo-cli: B -> nl/nl#A_pemlo-cli__B.csv"}},
        {"a summary driving the terminal", {"classify", "e\x1B[31m.gef", "--out-dir", "esc"}, 0, {}, {"-> esc/e\\x1B[31m.csv ("}},
        {"the project fields or the water table not written",
         {"ags", b155283, "--data-units", "si", "-o", "out.ags", "--number", "P-17", "--gwt", "1.5", "--cone-no", "C10"}, 0,
         {}, {}, {"\"DATA\",\"P-17\"", "\"b155283\",\"b155283\",\"C10\",\"1.50\""}},
        {"a water table with its unit left out of the depth D",
         {"ags", b155283, "--data-units", "si", "-o", "out.ags", "--gwt", "2.5 m", "--cone-no", "C10"}, 0, {}, {},
         {"\"b155283\",\"b155283\",\"C10\",\"2.50\","}},
        {"a groundwater nothing stated passed off as measured (0.00)",
         {"ags", b155283, "--data-units", "si", "-o", "out.ags", "--cone-no", "C10"}, 0, {"groundwater not stated"}, {},
         {"\"b155283\",\"b155283\",\"C10\",\"\","}},
    };
    ScratchDir scratch;
    WriteFixtures(scratch);
    for (const CommandCase& c : cases) {
        SCOPED_TRACE(c.catches);
        fs::remove(scratch.Path() / "out.ags");
        const CliRun run = RunCli(c.args, scratch, c.stdoutTo);
        EXPECT_EQ(run.exitCode, c.exitCode) << run.err;
        // Standard error as TerminalText leaves it (valid UTF-8, no control but the line end).
        EXPECT_TRUE(formats::TerminalText(run.err) == run.err && formats::IsValidUtf8(run.out)) << "raw bytes shown";
        for (const std::string& text : c.err) EXPECT_NE(run.err.find(text), std::string::npos) << text << "\n" << run.err;
        for (const std::string& text : c.out) EXPECT_NE(run.out.find(text), std::string::npos) << text;
        EXPECT_EQ(fs::exists(scratch.Path() / "out.ags"), !c.ags.empty());
        EXPECT_LT(c.ags.empty() ? 0 : fs::file_size(scratch.Path() / "out.ags"), 2u << 20) << "an AGS4 file out of all measure";
        for (const std::string& text : c.ags) EXPECT_NE(ReadAll(scratch.Path() / "out.ags").find(text), std::string::npos) << text;
    }
    EXPECT_TRUE(fs::is_directory(scratch.Path() / "adir") && fs::is_character_file("/dev/null") &&
                ReadAll(scratch.Path() / "esc.gef").starts_with("#GEFID= 1,1,0\n")) << "an input or a folder written over";
}

// A batch goes on after a failed input, keeps its input order, and ends with the status
// of the failure; the good soundings of a failed AGS4 batch still reach the file.
TEST(CommandLine, GoesOnAfterAFailedInputAndSaysSoInItsStatus)
{
    ScratchDir scratch;
    WriteDataFile(scratch.File("a.txt"), 10, TenReadings());
    WriteDataFile(scratch.File("c.txt"), 10, TenReadings());
    const CliRun run = RunCli({"classify", "a.txt", "b.txt", "c.txt"}, scratch);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_NE(run.err.find("b.txt: Could not read data from file"), std::string::npos) << run.err;
    const auto lines = Lines(run.out);
    ASSERT_EQ(lines.size(), 13u) << run.out;  // one header, six intervals of each good file
    EXPECT_EQ(lines[0], "file,interval,depth,qc,fs,ratio,u,v,sand,silt,clay");
    EXPECT_EQ(lines[1].rfind("a.txt,1,", 0), 0u);
    EXPECT_EQ(lines[12].rfind("c.txt,6,", 0), 0u);

    const CliRun ags = RunCli({"ags", "a.txt", "b.txt", "--data-units", "si", "-o", "out.ags"}, scratch);
    EXPECT_EQ(ags.exitCode, 3);
    EXPECT_NE(ags.out.find("1 of 2 soundings"), std::string::npos) << ags.out;
    EXPECT_NE(ReadAll(scratch.Path() / "out.ags").find("\"DATA\",\"a\""), std::string::npos);
}

TEST(CommandLine, WritesOneResultFilePerInputIntoTheOutputDirectory)
{
    ScratchDir scratch;
    fs::create_directories(scratch.Path() / "x");
    for (const char* name : {"a.txt", "b.txt", "x/a.txt"}) WriteDataFile(scratch.File(name), 10, TenReadings());
    const CliRun single = RunCli({"classify", "a.txt"}, scratch);
    const CliRun run = RunCli({"classify", "a.txt", "b.txt", "--out-dir", "results"}, scratch);
    ASSERT_EQ(run.exitCode, 0) << run.err;
    for (const char* name : {"a.csv", "b.csv"})
        EXPECT_EQ(ReadAll(scratch.Path() / "results" / name), single.out) << name;  // the very output of a single run
    EXPECT_NE(run.out.find("2 of 2 files written to results"), std::string::npos) << run.out;

    // Two inputs that would write the same result file, and an output that is an input,
    // are refused before anything is written.
    const CliRun clash = RunCli({"classify", "a.txt", "x/a.txt", "--out-dir", "clash"}, scratch);
    EXPECT_EQ(clash.exitCode, 2);
    EXPECT_FALSE(fs::exists(scratch.Path() / "clash" / "a.csv"));
    const CliRun over = RunCli({"ags", "a.txt", "--data-units", "si", "-o", "a.txt"}, scratch);
    EXPECT_EQ(over.exitCode, 2) << over.err;
    EXPECT_EQ(ReadAll(scratch.Path() / "a.txt").substr(0, 12), "title line 1");

    // An id never leaves the output folder, and a GEF file's one sounding is named
    // after the file alone.
    formats::ImportedSounding s;
    s.id = "../B 1/2";
    const auto sounding = std::make_shared<const formats::ImportedSounding>(s);
    EXPECT_EQ(ResultStem({"d/x.ags#../B 1/2", "d/x.ags", formats::FileFormat::Ags4, sounding, {}}), "x#.._B_1_2");
    EXPECT_EQ(ResultStem({"d/x.gef", "d/x.gef", formats::FileFormat::Gef, sounding, {}}), "x");
}

// A hidden file being written by a process that a signal stops goes with it, and the
// process still ends by that signal: a Ctrl-C, a timeout's TERM or a closed terminal
// leaving the file behind, or ending the program some other way.
TEST(CommandLine, LeavesNoHiddenFileWhenStoppedBySignal)
{
    const ScratchDir scratch;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::ofstream(scratch.File(".hidden")) << "half a file";
        const pid_t child = ::fork();
        if (child == 0) {
            const RemovedOnSignal guard(scratch.File(".hidden"));
            std::raise(signal);
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) : -1, signal);
        EXPECT_FALSE(fs::remove(scratch.Path() / ".hidden")) << "signal " << signal;
    }
}

}  // namespace
}  // namespace pemlo::cli::test
