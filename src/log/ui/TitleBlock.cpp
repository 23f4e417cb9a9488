// The title block: what was tested where, how it was interpreted, and the page.
#include <QString>

#include "log/ui/LogPages.h"

namespace pemlo::log {

namespace {

constexpr double HeadingHeight = 7.0;
constexpr int Rows = 5;
constexpr int FieldColumns = 3;
constexpr double LabelPoints = 6.5;
constexpr double ValuePoints = 7.5;

QString Q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

void DrawTitleBlock(PagePainter& p, const Box& box, const LogSounding& s, int page, int pages)
{
    p.Frame(box, 0.35);
    p.Line(box.left, box.top + HeadingHeight, box.Right(), box.top + HeadingHeight, 0.25);
    const Box heading{box.left + 2, box.top, box.width - 4, HeadingHeight};
    p.Text(heading, QStringLiteral("CPT log  ") + Q(s.heading), 11, Qt::AlignLeft | Qt::AlignVCenter, true);
    p.Text(heading, QStringLiteral("Page %1 of %2").arg(page).arg(pages), 9, Qt::AlignRight | Qt::AlignVCenter, true);

    const double rowHeight = (box.height - HeadingHeight) / Rows;
    const double columnWidth = box.width / FieldColumns;
    for (int c = 1; c < FieldColumns; ++c)
        p.Line(box.left + c * columnWidth, box.top + HeadingHeight, box.left + c * columnWidth, box.Bottom(), 0.2);
    for (std::size_t i = 0; i < s.fields.size() && i < std::size_t{Rows * FieldColumns}; ++i) {
        const TitleField& f = s.fields[i];
        const double left = box.left + static_cast<double>(i / Rows) * columnWidth + 1.5;
        const double top = box.top + HeadingHeight + static_cast<double>(i % Rows) * rowHeight;
        const QString label = Q(f.label) + QStringLiteral(":");
        const double labelWidth = p.TextWidth(label, LabelPoints) + 1.5;
        p.Text({left, top, labelWidth, rowHeight}, label, LabelPoints, Qt::AlignLeft | Qt::AlignVCenter, false,
               QColor(0x44, 0x44, 0x44));
        const double valueWidth = columnWidth - labelWidth - 3.0;
        // A value wider than its cell is cut short with an ellipsis rather than run into the next.
        QString value = Q(f.value);
        double points = ValuePoints;
        while (points > 5.5 && p.TextWidth(value, points, true) > valueWidth) points -= 0.5;
        if (p.TextWidth(value, points, true) > valueWidth) {
            while (value.size() > 1 && p.TextWidth(value + QChar(0x2026), points, true) > valueWidth) value.chop(1);
            value += QChar(0x2026);
        }
        p.Text({left + labelWidth, top, valueWidth, rowHeight}, value, points, Qt::AlignLeft | Qt::AlignVCenter,
               true);
    }
}

}  // namespace pemlo::log
