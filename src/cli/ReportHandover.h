// The report and log commands draw with Qt, which classifying never needs: they live
// in an executable of its own, pemlo-report, installed beside pemlo-cli, and pemlo-cli
// hands a "report" or "log" command line over to it unchanged. pemlo-cli itself links no Qt library,
// so that it starts in about a millisecond.
#pragma once

#include <CLI/CLI.hpp>

namespace pemlo::cli {

// Whether the command line asks for the report or the log command.
bool AsksForReport(int argc, char** argv);

// Runs pemlo-report with the same arguments in place of this process; returns only
// when it cannot, with the exit status after saying why.
int HandOverToReport(char** argv);

// List "report" and "log" among the commands of pemlo-cli's help.
void AddReportEntry(CLI::App& app);
void AddLogEntry(CLI::App& app);

}  // namespace pemlo::cli
