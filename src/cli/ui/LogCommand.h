// The "log" command: the CPT log of one or more soundings as PDF pages, the measured
// and derived columns, the classified soils and the layers against one depth axis,
// and the soil behaviour type chart. It draws with Qt, so it lives in the
// pemlo-report executable, which pemlo-cli hands a log command line over to.
#pragma once

namespace CLI {
class App;
}

namespace pemlo::cli {

// Adds the subcommand to app; it ends a failing run as the other commands do.
void AddLogCommand(CLI::App& app);

}  // namespace pemlo::cli
