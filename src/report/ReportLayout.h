// Where everything of the printed report stands on the page, computed from the page
// alone: the usable page, the margin unit, the header frame and its eight pieces of
// text, and the band of charts with each chart's edges. No printer is needed, so the
// layout can be checked for any page and resolution.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <vector>

#include "runtime/ui/Printer.h"

namespace pemlo {

// The quantities one print works with. W and H are the whole landscape page in
// twips; Wp and Hp the usable 95 percent of it, stored single as the report always
// kept them; px and py the twips in one device pixel, kept at the printer's full
// precision (1440 / dots per inch): stored single, 2.4 would become 2.4000001 and
// move the halfway chart edges of a 600 dpi page (1567.5, 4702.5) off their halves.
//
// m is 100 twips expressed in device pixels, yet the header also uses it directly
// as a distance in twips: on a 600 dpi printer the header frame starts about 42
// twips from the page corner while the charts start 42 pixels (100 twips) from it.
// Printed reports filed with earlier projects look like that; keep the mixture.
struct PageQuantities {
    std::int32_t W = 0;
    std::int32_t H = 0;
    float Wp = 0.0f;
    float Hp = 0.0f;
    double px = 0.0;
    double py = 0.0;
    double m = 0.0;
};

// Raises a run-time error on a page or pixel size that gives no finite layout
// (zero twips per pixel: division by zero).
PageQuantities ComputePageQuantities(std::int32_t W, std::int32_t H, double px, double py);

enum class PieceWeight { Normal, Bold, Unchanged };

// One piece of header text: its position in twips, the weight set before it is
// printed and the items printed there.
struct HeaderPiece {
    float x = 0.0f;
    float y = 0.0f;
    PieceWeight weight = PieceWeight::Unchanged;
    std::vector<PrintItem> items;
};

// The project information as typed, printed as it stands.
struct ProjectTexts {
    QString number;
    QString title;
    QString date;
    QString location;
    QString gwt;
    QString coneNo;
};

struct ReportLayout {
    PageQuantities page;
    // The header frame, corners in twips.
    float frameLeft = 0.0f;
    float frameTop = 0.0f;
    float frameRight = 0.0f;
    float frameBottom = 0.0f;
    std::array<HeaderPiece, 8> pieces;
    // The band of charts in device pixels; edges[i] and edges[i + 1] bound chart i.
    std::int32_t chartTop = 0;
    std::int32_t chartBottom = 0;
    std::vector<std::int32_t> edges;
};

// The number of charts a chart count prints: 3, or four for any other count.
int ChartsPrinted(int chartCount);

ReportLayout LayoutReport(const PageQuantities& page, int chartCount, const ProjectTexts& texts);

}  // namespace pemlo
