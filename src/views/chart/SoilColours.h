// The colours of sand, silt and clay wherever the program draws them: the results
// view's soil chart (in the colours of its legend picture's squares) and the log's
// soil columns, as 0x00BBGGRR.
#pragma once

#include "views/chart/ChartSurface.h"

namespace pemlo {

constexpr ColorRef SandColour = 0x99FFFF;  // light yellow
constexpr ColorRef SiltColour = 0x808066;  // grey-teal
constexpr ColorRef ClayColour = 0x404080;  // brown

}  // namespace pemlo
