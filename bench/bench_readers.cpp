// The readers on files built to be slow, as large as the readers' limits allow:
// one AGS4 location of 10,000 pushes, each with a cone reference of 50 characters
// (1.1 MB), and 10,000 BRO-XML CPT objects under a root element of 1.8 million
// attributes (24 MB), and an AGS4 group of 9,990 headings over a million rows
// (8 MB). A reader that does per push, object or row what it could do once per file
// took 12 s, 48 s and 46 s on these; the aim is well under a second.
#include <benchmark/benchmark.h>

#include <string>

#include "formats/FileImport.h"
#include "formats/HostileFiles.h"

namespace {

void Read(benchmark::State& state, const std::string& text, std::size_t soundings)
{
    for (auto _ : state) {
        const pemlo::formats::FileImport file =
            pemlo::formats::ImportBytes(text, pemlo::formats::DepthChoice::Penetration);
        if (file.soundings.size() != soundings) {
            state.SkipWithError(("not imported: " + file.refusal).c_str());
            break;
        }
        benchmark::DoNotOptimize(file.soundings.data());
    }
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
}

void Ags4ManyPushes(benchmark::State& state) { Read(state, pemlo::formats::test::ManyPushesAgs4(10000), 1); }

void Ags4WideGroup(benchmark::State& state) { Read(state, pemlo::formats::test::WideGroupAgs4(9990, 1000000), 1); }

void BroXmlManyRootAttributes(benchmark::State& state)
{
    Read(state, pemlo::formats::test::ManyRootAttributesBroXml(10000, 1800000), 10000);
}

}  // namespace

BENCHMARK(Ags4ManyPushes)->Unit(benchmark::kMillisecond);
BENCHMARK(BroXmlManyRootAttributes)->Unit(benchmark::kMillisecond);
BENCHMARK(Ags4WideGroup)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
