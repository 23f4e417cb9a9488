#include "runtime/ui/RunTimeErrorReport.h"

#include <QApplication>
#include <QMessageBox>
#include <QString>
#include <exception>
#include <new>
#include <string>

#include "runtime/ui/MessageBox.h"

namespace pemlo {

namespace {

std::function<void()>& Ender()
{
    static std::function<void()> ender;
    return ender;
}

constexpr int ErrInternal = 51;

}  // namespace

void ReportRunTimeError(const RunTimeError& error)
{
    const QString text = QStringLiteral("Run-time error '%1':").arg(error.Number()) + QStringLiteral("\n\n") +
                         QString::fromStdString(error.Message());
    ShowMessage(QApplication::activeWindow(), text, QMessageBox::Critical, AppTitle());
    EndProgramNow();
}

void SetProgramEnder(std::function<void()> ender) { Ender() = std::move(ender); }

void EndProgramNow()
{
    if (Ender()) {
        Ender()();
    } else if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::exit(0);
    }
}

void Untrapped(const std::function<void()>& handler)
{
    try {
        handler();
    } catch (const RunTimeError& error) {
        ReportRunTimeError(error);
    } catch (const std::bad_alloc&) {
        ReportRunTimeError(RunTimeError(ErrOutOfMemory, "Out of memory"));
    } catch (const std::exception& other) {
        // Nothing but RunTimeError should get here; if something does, the user
        // still gets a report and a clean end instead of a crash.
        ReportRunTimeError(RunTimeError(ErrInternal, std::string("Internal error: ") + other.what()));
    }
}

}  // namespace pemlo
