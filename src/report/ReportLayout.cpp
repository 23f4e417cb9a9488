// The page layout of the printed report. Every value is computed in double from the
// stored single values, in the order the report has always used, and stored as the
// printer receives it: text positions single, chart edges whole pixels rounded half
// to even, so that reports printed today match those filed earlier to the pixel.
#include "report/ReportLayout.h"

#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

// The header frame ends at a fixed distance from the top edge, whatever the page.
constexpr double FrameBottom = 548.72;
// Row 2 of the header stands one 9-point line and a little below row 1.
constexpr double RowGap = 216.6;

// The two kinds of separator in the title and location pieces. The title label runs
// straight into the title and the location label into the location; "     GWT: "
// starts at the next print zone, so the ground water table stands in a column of its
// own however long the location is, and its label runs into its value.
constexpr PrintSeparator KindA = PrintSeparator::Join;
constexpr PrintSeparator KindB = PrintSeparator::NextZone;

HeaderPiece Piece(double x, double y, PieceWeight weight, std::vector<PrintItem> items)
{
    return HeaderPiece{ToSingle(x), ToSingle(y), weight, std::move(items)};
}

std::vector<std::int32_t> ChartEdges(const PageQuantities& q, int chartCount)
{
    const double Wp = q.Wp;
    const double px = q.px;
    if (ChartsPrinted(chartCount) == 3) {
        return {RoundToLong(q.m), RoundToLong(Div(Wp, Checked(3 * px))),
                RoundToLong(Div(Checked(Wp + Wp), Checked(3 * px))), RoundToLong(Div(Wp, px))};
    }
    return {RoundToLong(q.m), RoundToLong(Div(Wp, Checked(4 * px))),
            RoundToLong(Div(Wp, Checked(px + px))),
            RoundToLong(Div(Checked(Wp * 3), Checked(4 * px))), RoundToLong(Div(Wp, px))};
}

}  // namespace

PageQuantities ComputePageQuantities(std::int32_t W, std::int32_t H, double px, double py)
{
    PageQuantities q;
    q.W = W;
    q.Wp = ToSingle(Checked(W * 0.95));
    q.px = px;
    q.py = py;
    q.H = H;
    q.Hp = ToSingle(Checked(H * 0.95));
    q.m = Div(100, px);
    return q;
}

int ChartsPrinted(int chartCount) { return chartCount == 3 ? 3 : 4; }

ReportLayout LayoutReport(const PageQuantities& q, int chartCount, const ProjectTexts& t)
{
    ReportLayout r;
    r.page = q;
    const double m = q.m;
    const double Wp = q.Wp;

    r.frameLeft = ToSingle(m);
    r.frameTop = ToSingle(m);
    r.frameRight = q.Wp;
    r.frameBottom = ToSingle(FrameBottom);

    const double row1 = Checked(4 * m);
    const double row2 = Checked(Checked(4 * m) + RowGap);
    r.pieces = {
        Piece(Checked(5 * m), row1, PieceWeight::Normal, {{KindA, QStringLiteral("Project Number: ")}}),
        Piece(Checked(Checked(5 * m) + 1444), row1, PieceWeight::Bold, {{KindA, t.number}}),
        // The title label prints bold with the title: the weight is not reset between
        // the project number and the title, and filed reports show it so.
        Piece(Wp / 3, row1, PieceWeight::Unchanged,
              {{KindA, QStringLiteral("Title: ")}, {KindA, t.title}}),
        Piece(Wp - 2166, row1, PieceWeight::Normal, {{KindA, QStringLiteral("Date: ")}}),
        Piece(Wp - 1444, row1, PieceWeight::Bold, {{KindA, t.date}}),
        Piece(Wp / 3, row2, PieceWeight::Normal,
              {{KindA, QStringLiteral("Location/No: ")},
               {KindA, t.location},
               {KindB, QStringLiteral("     GWT: ")},
               {KindA, t.gwt}}),
        Piece(Wp - 2166, row2, PieceWeight::Normal, {{KindA, QStringLiteral("Cone No: ")}}),
        Piece(Wp - 1300, row2, PieceWeight::Bold, {{KindA, t.coneNo}}),
    };

    r.chartTop = RoundToLong(Checked(6 * m));
    r.chartBottom = RoundToLong(Checked(Div(q.Hp, q.py) - m));
    r.edges = ChartEdges(q, chartCount);
    return r;
}

}  // namespace pemlo
