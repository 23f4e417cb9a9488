// Where no procedure traps a run-time error, the program shows the platform's report
// (a critical message box "Run-time error 'N':" with its message) and ends.
#pragma once

#include <functional>

#include "runtime/RunTimeError.h"

namespace pemlo {

// Shows the report, then ends the program through the ender (see SetProgramEnder).
void ReportRunTimeError(const RunTimeError& error);

// How the program ends: the screen registry installs its EndProgram here.
void SetProgramEnder(std::function<void()> ender);
void EndProgramNow();

// Runs an event handler that traps nothing: a RunTimeError escaping it is reported
// and ends the program. Every slot of a screen goes through this, so no exception
// ever crosses Qt's event loop.
void Untrapped(const std::function<void()>& handler);

}  // namespace pemlo
