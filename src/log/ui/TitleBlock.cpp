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

// The text in two lines no wider than `width`: as many words on the first as fit (part
// of a word where the first alone is too wide), the rest on the second.
QString InTwoLines(const PagePainter& p, const QString& text, double points, double width)
{
    const QStringList words = text.split(QLatin1Char(' '));
    QString first;
    qsizetype i = 0;
    for (; i < words.size(); ++i) {
        const QString longer = first.isEmpty() ? words[i] : first + QLatin1Char(' ') + words[i];
        if (!first.isEmpty() && p.TextWidth(longer, points, true) > width) break;
        first = longer;
    }
    QString rest = words.mid(i).join(QLatin1Char(' ')), moved;
    while (first.size() > 1 && p.TextWidth(first, points, true) > width) moved.prepend(first.back()), first.chop(1);
    if (!moved.isEmpty()) rest = rest.isEmpty() ? moved : moved + QLatin1Char(' ') + rest;
    return first + QLatin1Char('\n') + rest;
}

// A value in its cell: on one line where it fits at 6.5 points or more, else on two
// lines at the largest size whose two lines fit the cell, the second cut short with an
// ellipsis only where even 5.5 points is too large.
void DrawValue(PagePainter& p, const Box& cell, const QString& value)
{
    const int flags = Qt::AlignLeft | Qt::AlignVCenter;
    for (double points = ValuePoints; points >= 6.5; points -= 0.5)
        if (p.TextWidth(value, points, true) <= cell.width) return p.Text(cell, value, points, flags, true);
    double points = 7.0;
    while (points > 5.5 && 2 * p.LineSpacing(points, true) > cell.height) points -= 0.5;
    // The lines are split at the size they are drawn at.
    QString lines = InTwoLines(p, value, points, cell.width);
    while (points > 5.5 && p.TextWidth(lines.section(QLatin1Char('\n'), 1), points, true) > cell.width) {
        points -= 0.5;
        lines = InTwoLines(p, value, points, cell.width);
    }
    const QString first = lines.section(QLatin1Char('\n'), 0, 0);
    const QString second = p.Elided(lines.section(QLatin1Char('\n'), 1), points, true, cell.width);
    p.Text(cell, first + QLatin1Char('\n') + second, points, flags, true);
}

}  // namespace

void DrawTitleBlock(PagePainter& p, const Box& box, const LogSounding& s, int page, int pages)
{
    p.Frame(box, 0.35);
    p.Line(box.left, box.top + HeadingHeight, box.Right(), box.top + HeadingHeight, 0.25);
    const Box heading{box.left + 2, box.top, box.width - 4, HeadingHeight};
    const QString pageText = QStringLiteral("Page %1 of %2").arg(page).arg(pages);
    p.Text(heading, pageText, 9, Qt::AlignRight | Qt::AlignVCenter, true);
    // The sounding's name takes what "Page i of n" leaves, cut short where it needs more.
    const double room = heading.width - p.TextWidth(pageText, 9, true) - 4.0;
    p.Text(heading, p.Elided(QStringLiteral("CPT log  ") + Q(s.heading), 11, true, room), 11,
           Qt::AlignLeft | Qt::AlignVCenter, true);

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
        DrawValue(p, {left + labelWidth, top, columnWidth - labelWidth - 3.0, rowHeight}, Q(f.value));
    }
}

}  // namespace pemlo::log
