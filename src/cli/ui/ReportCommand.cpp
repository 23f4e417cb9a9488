// The "report" command: the printed report of one screen as a PDF file. The sounding
// takes the same road as "classify"; the chosen screen is then built offscreen from
// the record, exactly as the desktop program builds it, and the report prints the
// charts its Print command would hand over onto a PDF printer.
#include "cli/ui/ReportCommand.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include <QApplication>
#include <cerrno>
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>

#include "cli/ExitCodes.h"
#include "cli/OutputFiles.h"
#include "cli/OutputPath.h"
#include "cli/RoadCommandOptions.h"
#include "cli/RunInput.h"
#include "cli/StandardStreams.h"
#include "core/Declarations.h"
#include "core/ui/Screens.h"
#include "formats/SafeText.h"
#include "report/Module_output.h"
#include "runtime/ui/Printer.h"
#include "runtime/RunTimeError.h"
#include "views/Frm_CPTData.h"
#include "views/Frm_Pemlo01.h"
#include "views/Frm_UandV.h"
#include "views/ResultScreen.h"

namespace pemlo::cli {

namespace {

struct ReportState {
    RoadCommandOptions options;
    std::string file;
    std::string view = "results";
    std::string pdf;
    std::string paper = "letter";
    int dotsPerInch = 600;
    // The project information the screens show and the report prints: the file's
    // own (GEF, AGS4, BRO-XML) where these leave a field empty.
    formats::ProjectInfo project;
};

// The option takes the names in any case.
ScreenId ViewScreen(const std::string& view)
{
    const std::string name = CLI::detail::to_lower(view);
    if (name == "cpt") return ScreenId::Frm_CPTData;
    if (name == "uv") return ScreenId::Frm_UandV;
    return ScreenId::Frm_Pemlo01;
}

// Qt's own lines ("QStandardPaths: XDG_RUNTIME_DIR not set ...", "QPainter::begin():
// Returned false") are no message of this program: they are caught for the time of
// the command, and the last one is kept to say in our words why a page failed.
class QtMessages {
public:
    QtMessages() : previous_(qInstallMessageHandler(&Catch)) { Active() = this; }
    ~QtMessages()
    {
        qInstallMessageHandler(previous_);
        Active() = nullptr;
    }
    QtMessages(const QtMessages&) = delete;
    QtMessages& operator=(const QtMessages&) = delete;

    std::string Last() const
    {
        const std::lock_guard lock(mutex_);
        return last_;
    }

private:
    // Qt's handler is a plain function: it finds the catcher of the running command here.
    static QtMessages*& Active()
    {
        static QtMessages* active = nullptr;
        return active;
    }
    static void Catch(QtMsgType, const QMessageLogContext&, const QString& message)
    {
        if (QtMessages* self = Active()) {
            const std::lock_guard lock(self->mutex_);
            self->last_ = message.toStdString();
        }
    }

    QtMessageHandler previous_;
    mutable std::mutex mutex_;
    std::string last_;
};

// Why the PDF printer failed. Qt's line is never quoted: the last one is as often
// about something else (XDG_RUNTIME_DIR) as about the page.
std::string PrinterFailure(const std::string& qtLine)
{
    if (qtLine.find("QPainter::begin") != std::string::npos) return "the PDF printer could not start the page";
    return "the PDF printer stopped";
}

// A file in memory for Qt's PDF printer, which opens its output by name and says
// nothing when a write fails: the page is printed here whole, and its bytes then go
// through the checked writer of every output (a full disk is found and said there).
class MemoryFile {
public:
    MemoryFile() : fd_(::memfd_create("pemlo-report", MFD_CLOEXEC)) {}
    ~MemoryFile()
    {
        if (fd_ >= 0) ::close(fd_);
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    // Empty when the memory file could not be made.
    std::string Path() const { return fd_ < 0 ? std::string() : "/proc/self/fd/" + std::to_string(fd_); }
    std::string Bytes() const
    {
        struct stat info {};
        if (fd_ < 0 || ::fstat(fd_, &info) != 0) return {};
        std::string bytes(static_cast<std::size_t>(info.st_size), '\0');
        for (std::size_t at = 0; at < bytes.size();) {
            const ssize_t n = ::pread(fd_, bytes.data() + at, bytes.size() - at, static_cast<off_t>(at));
            if (n <= 0) return {};
            at += static_cast<std::size_t>(n);
        }
        return bytes;
    }

private:
    int fd_;
};

// The screens draw with Qt: an application for the time of the command, offscreen
// whatever the display. It must be gone before the program's own exit: Qt cannot
// take down an application after its own statics.
std::unique_ptr<QApplication> EnsureApplication()
{
    if (QCoreApplication::instance()) return nullptr;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "pemlo-cli";
    static char* argv[] = {name, nullptr};
    return std::make_unique<QApplication>(argc, argv);
}

[[noreturn]] void Fail(const ReportState& state, const std::string& what, int exitCode)
{
    WriteErr("pemlo-cli: " + formats::TerminalField(state.file) + ": " + what + "\n");
    throw CLI::RuntimeError(exitCode);
}

// The chosen view's charts, built offscreen as the desktop builds them: the plotting
// screen beneath the views cleans the readings first.
ResultScreen& BuildView(ScreenId id)
{
    Screens& screens = Screens::Instance();
    screens.Reset();
    // The plotting screens alone: a report needs no other.
    RegisterFrm_CPTData();
    RegisterFrm_Pemlo01();
    RegisterFrm_UandV();
    screens.Show(ScreenId::Frm_CPTData);
    if (id != ScreenId::Frm_CPTData) screens.Show(id);
    return dynamic_cast<ResultScreen&>(*screens.Get(id));
}

std::optional<PrintFailure> PrintView(const ReportState& state, const std::string& pdfPath)
{
    ResultScreen& view = BuildView(ViewScreen(state.view));
    std::optional<PrintFailure> failure;
    try {
        auto printer = MakeQtPrinter(MakePdfQPrinter(QString::fromStdString(pdfPath), state.dotsPerInch,
                                                     QString::fromStdString(state.paper)));
        failure = PrintReportOn(*printer, view.ChartsToPrint());
    } catch (const RunTimeError& e) {
        failure = PrintFailure{e.Number(), e.Message()};  // the PDF printer would not open
    }
    Screens::Instance().Reset();
    return failure;
}

void RunReport(const ReportState& state)
{
    const Input input = SingleInput(state.file, state.options.depth);
    CheckOutputPath("--pdf", state.pdf, {input.path});
    if (!input.refusal.empty()) Fail(state, input.refusal, ExitReadFailed);
    if (const auto refused = StrictRefusal(state.options, input)) {
        WriteErr(refused->notes);
        Fail(state, refused->error, refused->exitCode);
    }
    const QtMessages qt;
    const auto application = EnsureApplication();
    Declarations& d = TheRecord();
    const RoadOptions road = ToRoadOptions(state.options, input);
    const RoadResult result = RunRoad(road, d);
    std::string notes = InputNotes(state.options, input, true);
    for (const std::string& warning : result.warnings)
        notes += "pemlo-cli: warning: " + input.name + ": " + warning + "\n";
    WriteErr(notes);
    if (result.status != RoadStatus::Done)
        Fail(state, DescribeRoadFailure(result, road, d), ExitCodeOf(result.status));
    if (state.options.strict && !result.warnings.empty())
        Fail(state, "--strict: " + std::to_string(result.warnings.size()) + " unit warnings", ExitReadFailed);
    const formats::ProjectInfo project = ProjectOf(input, state.project);
    d.ProjectNumber = project.number;
    d.ProjectTitle = project.title;
    d.ProjectDate = project.date;
    d.ProjectLocation = project.location;
    d.GWT = project.gwt;
    d.ConeNo = project.coneNo;

    const std::string pdf = formats::TerminalField(state.pdf);
    const MemoryFile page;
    if (page.Path().empty())
        Fail(state, "could not write " + pdf + ": no memory file to print into: " + std::strerror(errno),
             ExitWriteFailed);
    std::optional<PrintFailure> failure;
    try {
        failure = PrintView(state, page.Path());
    } catch (const RunTimeError& e) {
        Screens::Instance().Reset();
        Fail(state, "Run-time error '" + std::to_string(e.Number()) + "': " + e.Message(), ExitRunTimeFailed);
    }
    if (failure)
        Fail(state, "A Printing Error ....: could not write " + pdf + ": " + PrinterFailure(qt.Last()),
             ExitWriteFailed);
    const std::string bytes = page.Bytes();
    if (bytes.empty()) Fail(state, "no page was printed to " + pdf + ": " + PrinterFailure(qt.Last()), ExitWriteFailed);
    // Written as every output is: beside the target, renamed into place only when whole.
    if (const std::string why = WriteOutputBytes(state.pdf, bytes); !why.empty()) Fail(state, why, ExitWriteFailed);
    WriteOut(SummaryLine(input.name, state.pdf, CLI::detail::to_lower(state.view) + " report"));
}

}  // namespace

void AddReportCommand(CLI::App& app)
{
    auto state = std::make_shared<ReportState>();
    CLI::App* command = app.add_subcommand(
        "report", "Print the report page of one screen (cpt, results or uv) of a sounding into a PDF file, "
                  "as the screen's Print command prints it");
    command
        ->add_option("FILE", state->file,
                     "Cone data file (depth, qc, fs per line), GEF, AGS4 or BRO-XML file, or FILE#ID")
        ->required();
    AddRoadOptions(*command, state->options);
    command->add_option("--view", state->view, "The screen to print: cpt (CPT data), results "
                                               "(classification results) or uv (U and V); default results")
        ->check(CLI::IsMember({"cpt", "results", "uv"}, CLI::ignore_case))
        ->type_name("cpt|results|uv");
    command->add_option("--pdf", state->pdf, "The PDF file to write")->required()->type_name("OUT.pdf");
    command->add_option("--paper", state->paper, "Paper size: letter or a4; default letter")
        ->check(CLI::IsMember({"letter", "a4"}, CLI::ignore_case))
        ->type_name("letter|a4");
    command->add_option("--dpi", state->dotsPerInch,
                        "Printer resolution in dots per inch, 72 to 2400; default 600. The page is laid "
                        "out for 600 dpi: a higher resolution prints at 600, as Print All does on a "
                        "printer that offers more, so that both header rows stay above the charts")
        ->check(CLI::Range(72, 2400))
        ->type_name("N");
    AddProjectOptions(*command, state->project);
    command->callback([state] { RunReport(*state); });
}

}  // namespace pemlo::cli
