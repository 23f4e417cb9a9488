#include "cli/ReportHandover.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "cli/ExitCodes.h"
#include "cli/StandardStreams.h"

namespace pemlo::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* ReportName = "pemlo-report";

// Beside pemlo-cli in a build, in the program's private folder once installed
// (bin/pemlo-cli, libexec/pemlo-cpt/pemlo-report).
fs::path FindReportExecutable()
{
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return {};
    for (const fs::path& candidate :
         {self.parent_path() / ReportName, self.parent_path().parent_path() / "libexec" / "pemlo-cpt" / ReportName}) {
        if (fs::is_regular_file(candidate, ec) && ::access(candidate.c_str(), X_OK) == 0) return candidate;
    }
    return {};
}

}  // namespace

bool AsksForReport(int argc, char** argv)
{
    return argc > 1 && (std::string_view(argv[1]) == "report" || std::string_view(argv[1]) == "log");
}

int HandOverToReport(char** argv)
{
    const fs::path report = FindReportExecutable();
    if (report.empty()) {
        WriteErr("pemlo-cli: the " + std::string(argv[1]) +
                 " command needs pemlo-report, which is not installed beside pemlo-cli\n");
        return ExitWriteFailed;
    }
    Out().flush();
    ::execv(report.c_str(), argv);
    WriteErr("pemlo-cli: could not start " + report.string() + ": " + std::strerror(errno) + "\n");
    return ExitWriteFailed;
}

void AddReportEntry(CLI::App& app)
{
    app.add_subcommand("report", "Print the report page of one screen (cpt, results or uv) of a sounding into a "
                                 "PDF file, as the screen's Print command prints it (pemlo-cli report --help)")
        ->allow_extras()
        ->prefix_command();
}

void AddLogEntry(CLI::App& app)
{
    app.add_subcommand("log", "Draw the CPT log of one or more soundings as PDF pages: the measured and derived "
                              "columns, the soils and the layers on one depth axis, and the soil behaviour type "
                              "chart (pemlo-cli log --help)")
        ->allow_extras()
        ->prefix_command();
}

}  // namespace pemlo::cli
