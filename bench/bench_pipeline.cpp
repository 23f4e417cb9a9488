// Times the classification pipeline (grid, means, ratio, classification) against the
// oracle's plain scan of every reading for every interval, on a 4000-reading SI
// sounding at 5 mm and on the deepest grid the program allows (4000 readings down to
// 3276 m, some 32,760 intervals), and once more with the file reader in front.
// Prints Google Benchmark's rows, then the figures side by side.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <unistd.h>

#include "classify/ReadingSteps.h"
#include "core/Declarations.h"
#include "input/Module_FileData.h"
#include "oracle/Oracle.h"
#include "oracle/SoundingGenerator.h"
#include "runtime/FileChannels.h"

namespace {

using pemlo::oracle::Sounding;

struct Case {
    const char* name;
    Sounding sounding;
};

const std::vector<Case>& Cases()
{
    static const std::vector<Case> cases = {
        {"4000 readings at 5 mm (SI)", pemlo::oracle::SoundingGenerator::Regular(4000, 0.005f, 0.005f, 2)},
        {"4000 readings to 3276 m (SI)", pemlo::oracle::SoundingGenerator::Regular(4000, 0.819f, 0.819f, 2)},
    };
    return cases;
}

void Load(pemlo::Declarations& d, const Sounding& s)
{
    d.DataUnits = s.dataUnits;
    d.NumLines = s.numLines;
    for (int k = 1; k <= s.numLines; ++k) {
        d.Depth[k] = s.depth[static_cast<std::size_t>(k - 1)];
        d.Q_Tip[k] = s.tip[static_cast<std::size_t>(k - 1)];
        d.Q_Sleeve[k] = s.sleeve[static_cast<std::size_t>(k - 1)];
    }
}

std::string WriteFile(const Sounding& s, int index)
{
    const auto path = std::filesystem::temp_directory_path() /
                      ("pemlo_bench_" + std::to_string(index) + "_" + std::to_string(::getpid()) + ".txt");
    std::ofstream out(path);
    for (int t = 1; t <= 10; ++t) out << "Title line " << t << "\n";
    char line[96];
    for (int k = 0; k < s.numLines; ++k) {
        const auto i = static_cast<std::size_t>(k);
        std::snprintf(line, sizeof line, "%.3f,%.3f,%.4f\n", s.depth[i], s.tip[i], s.sleeve[i]);
        out << line;
    }
    return path.string();
}

void Oracle(benchmark::State& state, int index)
{
    const Sounding& s = Cases()[static_cast<std::size_t>(index)].sounding;
    pemlo::oracle::Record r;
    r.DataUnits = s.dataUnits;
    r.NumLines = s.numLines;
    std::copy(s.depth.begin(), s.depth.end(), r.Depth.begin());
    std::copy(s.tip.begin(), s.tip.end(), r.Q_Tip.begin());
    std::copy(s.sleeve.begin(), s.sleeve.end(), r.Q_Sleeve.begin());
    for (auto _ : state) {
        pemlo::oracle::RunClassificationPipeline(r);
        benchmark::DoNotOptimize(r.IntProb1.data());
    }
    state.counters["intervals"] = r.NumIntervals;
}

void Pipeline(benchmark::State& state, int index)
{
    pemlo::Declarations d;
    Load(d, Cases()[static_cast<std::size_t>(index)].sounding);
    for (auto _ : state) {
        pemlo::RunClassificationPipeline(d);
        benchmark::DoNotOptimize(d.IntProb1.data());
    }
    state.counters["intervals"] = d.NumIntervals;
}

void ReaderAndPipeline(benchmark::State& state, int index)
{
    const std::string path = WriteFile(Cases()[static_cast<std::size_t>(index)].sounding, index);
    for (auto _ : state) {
        pemlo::Declarations d;
        pemlo::FileChannels files;
        d.DataFileName = path;
        d.NumTitleLines = 10;
        d.DataUnits = pemlo::DataSI;
        d.FileNum = files.FreeFile();
        const pemlo::ReadReport report = pemlo::LoadDataFile(d, files);
        if (report.outcome != pemlo::ReadOutcome::Loaded || d.NumLines != 4000) {
            state.SkipWithError("the reader did not load the sounding");
            break;
        }
        pemlo::RunClassificationPipeline(d);
        benchmark::DoNotOptimize(d.IntProb1.data());
    }
    std::filesystem::remove(path);
}

// Collects the CPU time of every row for the table printed at the end: on a shared
// machine it is steadier than the wall clock.
class TableReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (!run.error_occurred) seconds[run.benchmark_name()] = run.GetAdjustedCPUTime() / 1e3;
        ConsoleReporter::ReportRuns(runs);
    }
    std::map<std::string, double> seconds;  // in milliseconds, as registered below
};

}  // namespace

int main(int argc, char** argv)
{
    for (int i = 0; i < static_cast<int>(Cases().size()); ++i) {
        const std::string n = std::to_string(i);
        benchmark::RegisterBenchmark(("oracle/" + n).c_str(), Oracle, i)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("pipeline/" + n).c_str(), Pipeline, i)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("reader+pipeline/" + n).c_str(), ReaderAndPipeline, i)
            ->Unit(benchmark::kMicrosecond);
    }
    benchmark::Initialize(&argc, argv);
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\nCPU time per run\n%-30s %12s %12s %9s %18s\n", "sounding", "oracle ms", "pipeline ms",
                "speed-up", "reader+pipeline ms");
    for (int i = 0; i < static_cast<int>(Cases().size()); ++i) {
        const std::string n = std::to_string(i);
        const double oracle = reporter.seconds["oracle/" + n];
        const double pipeline = reporter.seconds["pipeline/" + n];
        const double reader = reporter.seconds["reader+pipeline/" + n];
        std::printf("%-30s %12.3f %12.3f %8.0fx %18.3f\n", Cases()[static_cast<std::size_t>(i)].name, oracle,
                    pipeline, pipeline > 0 ? oracle / pipeline : 0.0, reader);
    }
    benchmark::Shutdown();
    return 0;
}
