// The "ags" command: the soil layers of one or more soundings as one AGS4 file, held
// to the AGS4 rules before a byte of it is written.
#pragma once

namespace CLI {
class App;
}

namespace pemlo::cli {

void AddAgsCommand(CLI::App& app);

}  // namespace pemlo::cli
