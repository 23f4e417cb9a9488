// The layers column: the layers of `layers` as blocks in their soil's colour, each
// labelled beside it, the labels pushed apart where blocks are thin.
#include <algorithm>

#include "log/ui/LogColumns.h"
#include "log/ui/LogPages.h"

namespace pemlo::log {

namespace {

constexpr double LineHeight = 2.6;

struct Label {
    QString text;
    double middle;  // of what it names: the visible block, or the end of the sounding
    double y;       // of the label's middle
};

// Down from the top, then back up from the bottom, so that every label fits.
void PushApart(std::vector<Label>& labels, const Box& b)
{
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const double lowest = i == 0 ? b.top + LineHeight / 2 : labels[i - 1].y + LineHeight;
        labels[i].y = std::max(labels[i].y, lowest);
    }
    for (std::size_t i = labels.size(); i-- > 0;) {
        const double highest = i + 1 == labels.size() ? b.Bottom() - LineHeight / 2 : labels[i + 1].y - LineHeight;
        labels[i].y = std::min(labels[i].y, highest);
    }
}

}  // namespace

// Blocks in the soil's colour on the left, down to the end of the sounding, their
// labels on the right, each at its block's middle and pushed apart where blocks are
// too thin for them, with a leader from the label to its block. A layer's label keeps
// the depths `layers` gives, though the last may run on below the last reading.
void DrawLayers(PagePainter& p, const Box& b, const DepthAxis& axis, const std::vector<LogLayer>& layers, double end)
{
    const double blockWidth = b.width * 0.16;
    const double labelLeft = b.left + blockWidth + 2.5;
    const double endY = axis.Y(end);
    const double bottom = std::min(b.Bottom(), endY);
    std::vector<Label> labels;
    for (const LogLayer& l : layers) {
        const double y1 = std::max(axis.Y(l.top), b.top), y2 = std::min(axis.Y(l.bottom), bottom);
        if (y2 <= y1) continue;
        p.Fill({b.left, y1, blockWidth, y2 - y1}, SoilColour(static_cast<int>(l.soil)));
        p.Line(b.left, y1, b.left + blockWidth, y1, 0.15);
        p.Line(b.left, y2, b.left + blockWidth, y2, 0.15);
        labels.push_back({LayerLabel(l), (y1 + y2) / 2, (y1 + y2) / 2});
    }
    // Where the cone stopped, on the page that shows it.
    if (endY > b.top && endY <= b.Bottom() + 1e-9) {
        p.Line(b.left, endY, b.left + blockWidth, endY, 0.5);
        labels.push_back({QStringLiteral("end of sounding %1 m").arg(DepthText(end)), endY, endY});
    }
    PushApart(labels, b);
    // One type size for all labels, the largest at which the longest fits.
    double points = LabelPoints;
    for (const Label& l : labels)
        while (points > 4.5 && p.TextWidth(l.text, points) > b.Right() - labelLeft) points -= 0.25;
    for (const Label& l : labels) {
        p.Line(b.left + blockWidth, l.middle, labelLeft - 0.8, l.y, 0.1, QColor(0x60, 0x60, 0x60));
        p.Text({labelLeft, l.y - LineHeight / 2, b.Right() - labelLeft + 2.0, LineHeight}, l.text, points,
               Qt::AlignLeft | Qt::AlignVCenter);
    }
}

}  // namespace pemlo::log
