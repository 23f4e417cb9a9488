#include "views/ResultScreen.h"

#include <QLabel>
#include <QLineEdit>
#include <QToolBar>

#include "core/ui/Screens.h"
#include "runtime/ui/AfterPress.h"

namespace pemlo {

namespace {

QFont BandFont(bool bold)
{
    QFont f(QStringLiteral("Arial"));
    f.setPointSize(9);
    f.setBold(bold);
    return f;
}

QString FieldText(const Declarations& d, ProjectField field)
{
    switch (field) {
    case ProjectField::Number: return QString::fromStdString(d.ProjectNumber);
    case ProjectField::Title: return QString::fromStdString(d.ProjectTitle);
    case ProjectField::Date: return QString::fromStdString(d.ProjectDate);
    case ProjectField::ConeNo: return QString::fromStdString(d.ConeNo);
    case ProjectField::Location: return QString::fromStdString(d.ProjectLocation);
    case ProjectField::GWT: return QString::fromStdString(d.GWT);
    }
    return {};
}

}  // namespace

ResultScreen::ResultScreen(const QString& name, int clientWidthTwips, int clientHeightTwips,
                           const std::vector<ToolButtonSpec>& buttons, QWidget* parent)
    : ScaledForm(name, clientWidthTwips, clientHeightTwips - ToolbarTwips, parent),
      clientWidthTwips_(clientWidthTwips), clientHeightTwips_(clientHeightTwips)
{
    setAutoFillBackground(true);
    // Behind a load that never ends only Exit answers: the other commands work on
    // the readings that load is still replacing.
    toolbar_ = BuildToolbar(this, buttons, [this](const QString& key) {
        if (key == QLatin1String("Print")) {
            // A failed print shows a modal message box: the print runs once the press
            // is answered, so that a screen reader that pressed is not held by it.
            AfterPress(this, [this] {
                if (!Screens::Instance().IsWaitingForLoad()) OnCommand(QStringLiteral("Print"));
            });
            return;
        }
        if (key == QLatin1String("Exit") || !Screens::Instance().IsWaitingForLoad()) OnCommand(key);
    });
    SetTopBar(toolbar_);
    resize(width(), height() + toolbar_->sizeHint().height());
}

TwipsRect ResultScreen::Shifted(const TwipsRect& r) const
{
    return TwipsRect{r.left, r.top - ToolbarTwips, r.width, r.height};
}

ChartView* ResultScreen::AddChart(const QString& objectName, const TwipsRect& designRect,
                                  const std::vector<QString>& storedTools, const std::vector<QString>& shownTools)
{
    auto* chart = new ChartView(this);
    chart->setObjectName(objectName);
    chart->Surface().setObjectName(objectName);
    chart->Surface().SetToolWindows(storedTools, shownTools);
    Place(chart, Shifted(designRect));
    return chart;
}

void ResultScreen::PlaceDesign(QWidget* control, const TwipsRect& designRect) { Place(control, Shifted(designRect)); }

void ResultScreen::AddDesignLines(const std::vector<TwipsLine>& lines)
{
    std::vector<TwipsLine> shifted;
    for (TwipsLine l : lines) {
        l.y1 -= ToolbarTwips;
        l.y2 -= ToolbarTwips;
        shifted.push_back(l);
    }
    AddLines(shifted);
}

void ResultScreen::AddProjectBand(const std::vector<ProjectBandItem>& items)
{
    for (const ProjectBandItem& item : items) {
        auto* label = new QLabel(QString::fromUtf8(item.caption), this);
        label->setFont(BandFont(false));
        label->setObjectName(QStringLiteral("Lbl") + QString::fromLatin1(item.boxName).mid(3));
        PlaceDesign(label, item.label);
        auto* box = new QLineEdit(this);
        box->setObjectName(QString::fromLatin1(item.boxName));
        box->setFont(BandFont(true));
        box->setFrame(false);
        box->setTextMargins(1, 0, 1, 0);
        PlaceDesign(box, item.box);
        band_.push_back(BandBox{box, item.field});
    }
}

void ResultScreen::FillProjectBand(const Declarations& d)
{
    for (const BandBox& b : band_) {
        b.box->setText(FieldText(d, b.field));
        b.box->setCursorPosition(0);   // a text wider than its box shows its start
    }
}

QLineEdit* ResultScreen::ProjectBox(const QString& boxName) const
{
    for (const BandBox& b : band_)
        if (b.box->objectName() == boxName) return b.box;
    return nullptr;
}

void ResultScreen::ApplyResizeSettings()
{
    SetResizeMinimum(0.8 * clientWidthTwips_, 0.8 * (clientHeightTwips_ - ToolbarTwips));
}

void ResultScreen::PrintToDefaultPrinter()
{
    const ReportCharts report = ChartsToPrint();
    PrintReport(report.count, *report.charts[0], *report.charts[1], *report.charts[2], *report.charts[3]);
}

}  // namespace pemlo
