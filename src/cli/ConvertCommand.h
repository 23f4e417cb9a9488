// The "convert" command: each sounding of GEF, AGS4 and BRO-XML files as a plain
// ASCII cone data file the desktop program loads with "SI Units" and 10 title lines.
#pragma once

namespace CLI {
class App;
}

namespace pemlo::cli {

void AddConvertCommand(CLI::App& app);

}  // namespace pemlo::cli
