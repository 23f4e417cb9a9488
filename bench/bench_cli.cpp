// The command line's work for one file of 4000 readings, from the file on disk to its
// CSV text in memory: reading, routing, cleaning, grid, averaging, ratio,
// classification and formatting. The aim is under 5 ms per file.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "cli/ResultFormat.h"
#include "core/ProgramRoad.h"

namespace {

namespace fs = std::filesystem;

// 4000 readings every 5 mm (SI) or every 0.05 ft (English), 10 title lines, with
// resistances that wander through sand, silt and clay.
std::string WriteSounding(pemlo::Integer dataUnits)
{
    const fs::path path = fs::temp_directory_path() /
                          ("pemlo-bench-cli-" + std::to_string(getpid()) + "-" + std::to_string(dataUnits) + ".txt");
    std::ofstream out(path, std::ios::binary);
    for (int i = 1; i <= 10; ++i) out << "# title line " << i << "\r\n";
    const double step = dataUnits == pemlo::DataSI ? 0.005 : 0.05;
    for (int i = 1; i <= 4000; ++i) {
        const double qc = 2.0 + 15.0 * ((i * 37) % 101) / 101.0;
        const double fs = 0.01 + 0.2 * ((i * 53) % 97) / 97.0;
        out << step * i << ',' << qc << ',' << fs << "\r\n";
    }
    return path.string();
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
        pemlo::cli::RunFacts facts{options.path, dataUnits, d->GraphUnits, d->NumLines};
        const std::string csv = pemlo::cli::FormatIntervals(*d, facts, pemlo::cli::OutputFormat::Csv);
        bytes = csv.size();
        benchmark::DoNotOptimize(csv.data());
    }
    state.counters["intervals"] = d->NumIntervals;
    state.counters["csv_bytes"] = static_cast<double>(bytes);
    fs::remove(options.path);
}

}  // namespace

BENCHMARK(FileToCsv)->Arg(pemlo::DataSI)->Arg(pemlo::DataEnglish)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
