// pemlo-cli: the sounding's road from its file to its classification, without the
// screens, for scripts and for checking results. Each command lives in a file of its
// own and adds itself to the application here.
#include <CLI/CLI.hpp>

#include <exception>

#include "cli/ClassifyCommand.h"
#include "cli/ExitCodes.h"
#include "cli/ReadingsCommand.h"
#include "cli/StandardStreams.h"
#ifdef PEMLO_CLI_HAS_REPORT
#include "cli/ReportCommand.h"
#endif

namespace {

constexpr const char* ExitStatusHelp =
    "Exit status: 0 done; 1 a result file could not be written; 2 wrong usage; 3 a file could not "
    "be read; 4 a run-time error in the computation. With several files, the others go on after a "
    "failure and the status is that of the first file that failed.";

int Run(int argc, char** argv)
{
    CLI::App app{"Pemlo CPT on the command line: reads cone penetration soundings and classifies "
                 "their soil as the desktop program does.",
                 "pemlo-cli"};
    app.set_version_flag("--version", "pemlo-cli " PEMLO_VERSION);
    app.require_subcommand(1);
    app.footer(ExitStatusHelp);

    pemlo::cli::AddClassifyCommand(app);
    pemlo::cli::AddReadingsCommand(app);
#ifdef PEMLO_CLI_HAS_REPORT
    pemlo::cli::AddReportCommand(app);
#endif

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& e) {  // --help, --version
        return app.exit(e);
    } catch (const CLI::RuntimeError& e) {  // a command failed and said why
        return e.get_exit_code();
    } catch (const CLI::ParseError& e) {
        app.exit(e);
        return pemlo::cli::ExitUsage;
    }
    return pemlo::cli::ExitOk;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return Run(argc, argv);
    } catch (const std::exception& e) {
        pemlo::cli::WriteErr(std::string("pemlo-cli: unexpected failure: ") + e.what() + "\n");
    } catch (...) {
        pemlo::cli::WriteErr("pemlo-cli: unexpected failure\n");
    }
    return pemlo::cli::ExitWriteFailed;
}
