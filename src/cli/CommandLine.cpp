#include "cli/CommandLine.h"

#include <exception>
#include <sstream>

#include "cli/ExitCodes.h"
#include "cli/StandardStreams.h"

namespace pemlo::cli {

namespace {

constexpr const char* ExitStatusHelp =
    "Exit status: 0 done; 1 a result file could not be written; 2 wrong usage; 3 a file could not "
    "be read or imported (or --strict refused it); 4 a run-time error in the computation. With several "
    "files, the others go on after a failure and the status is that of the first file that failed.";

}  // namespace

void SetUpApp(CLI::App& app)
{
    app.description("Pemlo CPT on the command line: reads cone penetration soundings and classifies "
                    "their soil as the desktop program does.");
    app.name("pemlo-cli");
    app.set_version_flag("--version", "pemlo-cli " PEMLO_VERSION);
    app.require_subcommand(1);
    app.footer(ExitStatusHelp);
}

namespace {

// CLI11's own output (help, the reason for a wrong call) through our streams, so that
// the file names it repeats reach the terminal as safely as ours.
int ExitOf(CLI::App& app, const CLI::Error& e)
{
    std::ostringstream out, err;
    const int code = app.exit(e, out, err);
    WriteOut(out.str());
    WriteErr(err.str());
    return code;
}

int Run(CLI::App& app, int argc, char** argv)
{
    try {
        app.parse(argc, argv);
        return ExitOk;
    } catch (const CLI::Success& e) {  // --help, --version
        return ExitOf(app, e);
    } catch (const CLI::RuntimeError& e) {  // a command failed and said why
        return e.get_exit_code();
    } catch (const CLI::ParseError& e) {
        ExitOf(app, e);
        return ExitUsage;
    } catch (const std::exception& e) {
        WriteErr(std::string("pemlo-cli: unexpected failure: ") + e.what() + "\n");
    } catch (...) {
        WriteErr("pemlo-cli: unexpected failure\n");
    }
    return ExitWriteFailed;
}

}  // namespace

int RunApp(CLI::App& app, int argc, char** argv)
{
    const int exitCode = Run(app, argc, argv);
    // Results lost on their way out fail a run that had gone well; a run that had
    // failed already keeps its status (the message says both).
    if (!FlushOut() && exitCode == ExitOk) return ExitWriteFailed;
    return exitCode;
}

}  // namespace pemlo::cli
