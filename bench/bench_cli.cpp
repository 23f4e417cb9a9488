// The command line's work for one file of 4000 readings, from the file on disk to its
// CSV text in memory: reading, routing, cleaning, grid, averaging, ratio,
// classification and formatting. The aim is under 5 ms per file, and for a GEF file
// and an AGS4 sounding of 4000 readings (imported, then the same road) within twice
// the plain file's time.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "cli/ResultFormat.h"
#include "road/ProgramRoad.h"
#include "formats/FileImport.h"

namespace {

namespace fs = std::filesystem;

double Qc(int i) { return 2.0 + 15.0 * ((i * 37) % 101) / 101.0; }
double Fs(int i) { return 0.01 + 0.2 * ((i * 53) % 97) / 97.0; }

// 4000 readings every 5 mm (SI) or every 0.05 ft (English), 10 title lines, with
// resistances that wander through sand, silt and clay.
std::string WriteSounding(pemlo::Integer dataUnits)
{
    const fs::path path = fs::temp_directory_path() /
                          ("pemlo-bench-cli-" + std::to_string(getpid()) + "-" + std::to_string(dataUnits) + ".txt");
    std::ofstream out(path, std::ios::binary);
    for (int i = 1; i <= 10; ++i) out << "# title line " << i << "\r\n";
    const double step = dataUnits == pemlo::DataSI ? 0.005 : 0.05;
    for (int i = 1; i <= 4000; ++i) out << step * i << ',' << Qc(i) << ',' << Fs(i) << "\r\n";
    return path.string();
}

std::string TempPath(const char* name)
{
    return (fs::temp_directory_path() / ("pemlo-bench-cli-" + std::to_string(getpid()) + "-" + name)).string();
}

// The same 4000 readings as a GEF file with a header as real files have it, and as
// one AGS4 location (fs in kN/m2), each with the quantities a cone records besides.
std::string WriteImported(bool gef)
{
    const std::string path = TempPath(gef ? "4000.gef" : "4000.ags");
    std::ofstream out(path, std::ios::binary);
    if (gef) {
        out << "#GEFID= 1, 1, 0\r\n#COLUMN= 5\r\n#COLUMNINFO= 1, m, penetration length, 1\r\n"
               "#COLUMNINFO= 2, MPa, cone resistance, 2\r\n#COLUMNINFO= 3, MPa, local friction, 3\r\n"
               "#COLUMNINFO= 4, %, friction ratio, 4\r\n#COLUMNINFO= 5, m, depth, 11\r\n"
               "#COLUMNSEPARATOR= ;\r\n#RECORDSEPARATOR= !\r\n#COLUMNVOID= 2, -999999\r\n#COLUMNVOID= 3, -999999\r\n"
               "#TESTID= B1\r\n#REPORTCODE= GEF-CPT-Report, 1, 1, 2\r\n#EOH=\r\n";
    } else {
        out << "\"GROUP\",\"SCPT\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPG_TESN\",\"SCPT_DPTH\",\"SCPT_RES\",\"SCPT_FRES\","
               "\"SCPT_FRR\"\r\n\"UNIT\",\"\",\"\",\"m\",\"MN/m2\",\"kN/m2\",\"%\"\r\n"
               "\"TYPE\",\"ID\",\"X\",\"3DP\",\"3DP\",\"3DP\",\"2DP\"\r\n";
    }
    for (int i = 1; i <= 4000; ++i) {
        const double ratio = Fs(i) / Qc(i) * 100;
        if (gef) out << 0.005 * i << ';' << Qc(i) << ';' << Fs(i) << ';' << ratio << ';' << 0.005 * i << ";!\r\n";
        else
            out << "\"DATA\",\"B1\",\"1\",\"" << 0.005 * i << "\",\"" << Qc(i) << "\",\"" << Fs(i) * 1000 << "\",\""
                << ratio << "\"\r\n";
    }
    return path;
}

// Import, road and CSV: what classify does for each imported file.
void ImportedToCsv(benchmark::State& state)
{
    const std::string path = WriteImported(state.range(0) == 0);
    const auto d = std::make_unique<pemlo::Declarations>();
    for (auto _ : state) {
        pemlo::formats::FileImport file = pemlo::formats::ImportFile(path, pemlo::formats::DepthChoice::Penetration);
        if (file.soundings.size() != 1 || file.soundings[0].depth.size() != 4000) {
            state.SkipWithError(("not imported: " + file.refusal).c_str());
            break;
        }
        pemlo::RoadOptions options;
        options.path = path;
        options.imported = std::make_shared<const pemlo::formats::ImportedSounding>(std::move(file.soundings[0]));
        const pemlo::RoadResult result = pemlo::RunRoad(options, *d);
        if (result.status != pemlo::RoadStatus::Done) {
            state.SkipWithError(pemlo::DescribeRoadFailure(result, options, *d).c_str());
            break;
        }
        pemlo::cli::RunFacts facts{path,        pemlo::DataSI,          d->GraphUnits,
                                   d->NumLines, options.imported.get(), result.warnings};
        std::ostringstream csv;
        pemlo::cli::WriteIntervals(csv, *d, facts, pemlo::cli::OutputFormat::Csv);
        benchmark::DoNotOptimize(csv.view().data());
    }
    state.counters["intervals"] = d->NumIntervals;
    fs::remove(path);
}

void FileToCsv(benchmark::State& state)
{
    const auto dataUnits = static_cast<pemlo::Integer>(state.range(0));
    pemlo::RoadOptions options;
    options.path = WriteSounding(dataUnits);
    options.dataUnits = dataUnits;
    const auto d = std::make_unique<pemlo::Declarations>();
    std::size_t bytes = 0;
    for (auto _ : state) {
        const pemlo::RoadResult result = pemlo::RunRoad(options, *d);
        if (result.status != pemlo::RoadStatus::Done) {
            state.SkipWithError(pemlo::DescribeRoadFailure(result, options, *d).c_str());
            break;
        }
        pemlo::cli::RunFacts facts{options.path, dataUnits, d->GraphUnits, d->NumLines, nullptr, result.warnings};
        std::ostringstream csv;
        pemlo::cli::WriteIntervals(csv, *d, facts, pemlo::cli::OutputFormat::Csv);
        bytes = csv.view().size();
        benchmark::DoNotOptimize(csv.view().data());
    }
    state.counters["intervals"] = d->NumIntervals;
    state.counters["csv_bytes"] = static_cast<double>(bytes);
    fs::remove(options.path);
}

}  // namespace

BENCHMARK(FileToCsv)->Arg(pemlo::DataSI)->Arg(pemlo::DataEnglish)->Unit(benchmark::kMillisecond);
BENCHMARK(ImportedToCsv)->Arg(0)->Arg(1)->ArgName("ags4")->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
