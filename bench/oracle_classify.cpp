// The classification of one plain SI cone data file (10 title lines) by the tests'
// scalar oracle, read by the program's own reader and written as `pemlo-cli classify`
// writes it: the process the command line is timed against (bench_processes).
//   pemlo-oracle-classify FILE > intervals.csv
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>

#include "cli/ResultFormat.h"
#include "core/Declarations.h"
#include "input/Module_FileData.h"
#include "oracle/Oracle.h"
#include "runtime/FileChannels.h"

namespace {

void CopyInto(pemlo::IntervalArray& to, const std::vector<float>& from)
{
    to.Allocate(static_cast<int>(from.size()));
    std::copy(from.begin(), from.end(), to.data());
}

}  // namespace

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    const auto d = std::make_unique<pemlo::Declarations>();
    d->DataFileName = argv[1];
    d->NumTitleLines = 10;
    d->DataUnits = pemlo::DataSI;
    pemlo::FileChannels files;
    d->FileNum = files.FreeFile();
    if (pemlo::LoadDataFile(*d, files).outcome != pemlo::ReadOutcome::Loaded) return 3;

    pemlo::oracle::Record r;
    r.DataUnits = pemlo::DataSI;
    r.NumLines = d->NumLines;
    std::copy_n(d->Depth.data(), d->NumLines, r.Depth.begin());
    std::copy_n(d->Q_Tip.data(), d->NumLines, r.Q_Tip.begin());
    std::copy_n(d->Q_Sleeve.data(), d->NumLines, r.Q_Sleeve.begin());
    try {
        pemlo::oracle::ConvertReadings(r, pemlo::GraphSI, 50.0f, 0.5f);
        pemlo::oracle::CleanReadings(r);
        pemlo::oracle::RunClassificationPipeline(r);
    } catch (const pemlo::oracle::Fault& fault) {
        std::fprintf(stderr, "run-time error %d\n", fault.number);
        return 4;
    }
    d->NumIntervals = r.NumIntervals;
    d->GraphUnits = pemlo::GraphSI;
    CopyInto(d->IntDepth, r.IntDepth);
    CopyInto(d->IntQTip, r.IntQTip);
    CopyInto(d->IntQSleeve, r.IntQSleeve);
    CopyInto(d->IntRatio, r.IntRatio);
    CopyInto(d->IntU, r.IntU);
    CopyInto(d->IntV, r.IntV);
    CopyInto(d->IntProb1, r.IntProb1);
    CopyInto(d->IntProb2, r.IntProb2);
    CopyInto(d->IntProb3, r.IntProb3);
    const pemlo::cli::RunFacts facts{argv[1], pemlo::DataSI, pemlo::GraphSI, d->NumLines, nullptr, {}};
    pemlo::cli::WriteIntervals(std::cout, *d, facts, pemlo::cli::OutputFormat::Csv);
    return 0;
}
