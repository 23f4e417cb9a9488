// The layers column: the layers of `layers` as blocks in their soil's colour, each
// labelled beside it, the labels pushed apart where blocks are thin.
#include "log/ui/LogColumns.h"
#include "log/ui/LogPages.h"

namespace pemlo::log {

// Blocks in the soil's colour on the left, their labels on the right, each at its
// block's middle and pushed apart where blocks are too thin for them, with a leader
// from the label to its block.
void DrawLayers(PagePainter& p, const Box& b, const DepthAxis& axis, const std::vector<LogLayer>& layers)
{
    const double blockWidth = b.width * 0.16;
    const double labelLeft = b.left + blockWidth + 2.5;
    const double lineHeight = 2.6;
    struct Label {
        const LogLayer* layer;
        double middle;  // of the visible block
        double y;       // of the label's middle
    };
    std::vector<Label> labels;
    for (const LogLayer& l : layers) {
        const double y1 = std::max(axis.Y(l.top), b.top), y2 = std::min(axis.Y(l.bottom), b.Bottom());
        if (y2 <= y1) continue;
        p.Fill({b.left, y1, blockWidth, y2 - y1}, SoilColour(static_cast<int>(l.soil)));
        p.Line(b.left, y1, b.left + blockWidth, y1, 0.15);
        p.Line(b.left, y2, b.left + blockWidth, y2, 0.15);
        labels.push_back({&l, (y1 + y2) / 2, (y1 + y2) / 2});
    }
    // Down from the top, then back up from the bottom, so that every label fits.
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const double lowest = i == 0 ? b.top + lineHeight / 2 : labels[i - 1].y + lineHeight;
        labels[i].y = std::max(labels[i].y, lowest);
    }
    for (std::size_t i = labels.size(); i-- > 0;) {
        const double highest = i + 1 == labels.size() ? b.Bottom() - lineHeight / 2 : labels[i + 1].y - lineHeight;
        labels[i].y = std::min(labels[i].y, highest);
    }
    // One type size for all labels, the largest at which the longest fits.
    double points = LabelPoints;
    for (const Label& l : labels)
        while (points > 4.5 && p.TextWidth(LayerLabel(*l.layer), points) > b.Right() - labelLeft) points -= 0.25;
    for (const Label& l : labels) {
        p.Line(b.left + blockWidth, l.middle, labelLeft - 0.8, l.y, 0.1, QColor(0x60, 0x60, 0x60));
        p.Text({labelLeft, l.y - lineHeight / 2, b.Right() - labelLeft + 2.0, lineHeight}, LayerLabel(*l.layer),
               points, Qt::AlignLeft | Qt::AlignVCenter);
    }
}

}  // namespace pemlo::log
