// The "readings" command: the readings of one sounding as the CPT data screen holds
// them, converted to the graph units and cleaned, with their friction ratio.
#pragma once

namespace CLI {
class App;
}

namespace pemlo::cli {

void AddReadingsCommand(CLI::App& app);

}  // namespace pemlo::cli
