// The fixed legend pictures of the result screens, shipped with the program as
// bitmaps (drawn once by tools/legend-pictures, never at run time).
#pragma once

#include <QPixmap>

namespace pemlo {

// 215 x 19: the colour squares of sand, silt and clay with their names.
QPixmap SoilLegendPicture();
// 208 x 30: the blue U and the dark red V line samples.
QPixmap IndexLegendPicture();

}  // namespace pemlo
