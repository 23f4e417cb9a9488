// The on-screen chart: the same drawing as the printed one, inside a QChartView.
#include "views/chart/ChartView.h"

#include <QAction>
#include <QApplication>
#include <QChart>
#include <QChartView>
#include <QClipboard>
#include <QPainter>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>
#include <QValueAxis>
#include <functional>

#include "views/chart/ChartRender.h"

namespace pemlo {

namespace {

// The chart's plot area is laid out in pixels: every new size of the view lays it out
// afresh, once the view itself has sized its chart.
class PlotView : public QChartView {
public:
    using QChartView::QChartView;
    std::function<void()> resized;

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QChartView::resizeEvent(event);
        if (resized) resized();
    }
};

}  // namespace

ChartView::ChartView(QWidget* parent)
    : QWidget(parent), surface_(new ChartSurface(this)), view_(new PlotView(this)), chart_(new QChart),
      tools_(new QToolBar(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    tools_->setObjectName(QStringLiteral("ChartToolbar"));
    tools_->setIconSize(QSize(14, 14));
    tools_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QFont small = tools_->font();
    small.setPointSize(8);
    tools_->setFont(small);
    auto add = [this](const QString& text, const QString& tip, const QString& name, auto slot) {
        QAction* a = tools_->addAction(text);
        a->setToolTip(tip);
        a->setObjectName(name);
        connect(a, &QAction::triggered, this, slot);
    };
    add(QStringLiteral("+"), tr("Zoom in"), QStringLiteral("ZoomIn"), &ChartView::ZoomIn);
    add(QStringLiteral("\u2212"), tr("Zoom out"), QStringLiteral("ZoomOut"), &ChartView::ZoomOut);
    add(QStringLiteral("1:1"), tr("Whole chart"), QStringLiteral("ZoomReset"), &ChartView::ZoomReset);
    add(tr("Copy"), tr("Copy the chart to the clipboard as a picture"), QStringLiteral("CopyChart"),
        &ChartView::CopyToClipboard);
    // A chart without its toolbar keeps the toolbar's room, so that the plots of the
    // charts side by side on a screen start on the same row.
    QSizePolicy keepRoom = tools_->sizePolicy();
    keepRoom.setRetainSizeWhenHidden(true);
    tools_->setSizePolicy(keepRoom);
    layout->addWidget(tools_);

    chart_->setAnimationOptions(QChart::NoAnimation);
    view_->setChart(chart_);   // the view owns the chart
    view_->setRenderHint(QPainter::Antialiasing);
    view_->setFrameShape(QFrame::NoFrame);
    view_->setBackgroundBrush(Qt::white);
    layout->addWidget(view_, 1);

    static_cast<PlotView*>(view_)->resized = [this] { Relayout(); };
    connect(surface_, &ChartSurface::Changed, this, &ChartView::Redraw);
    UpdateTools();
}

void ChartView::UpdateTools() { tools_->setVisible(surface_->ShowsTool(QStringLiteral("Toolbar"))); }

// A refresh redraws a chart on screen at once; a hidden chart (a screen still
// loading) draws when it shows, which also draws a model changed without a refresh,
// as a plot that failed half-way leaves it.
void ChartView::Redraw()
{
    UpdateTools();
    if (isVisible()) Fill();
}

void ChartView::Fill()
{
    // A zoomed chart keeps its zoom when it is drawn again at a new size.
    std::vector<std::pair<double, double>> zoom;
    if (zoomed_)
        for (QAbstractAxis* axis : chart_->axes())
            if (auto* v = qobject_cast<QValueAxis*>(axis)) zoom.emplace_back(v->min(), v->max());
    ChartRenderOptions options;
    options.thin = !zoomed_;
    FillChart(*chart_, *surface_, options);
    const QList<QAbstractAxis*> axes = chart_->axes();
    if (zoom.size() == static_cast<size_t>(axes.size()))
        for (qsizetype i = 0; i < axes.size(); ++i) axes[i]->setRange(zoom[i].first, zoom[i].second);
    drawnRevision_ = surface_->Revision();
}

void ChartView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // The tool windows are the chart's design: they show even when the plotting
    // ended before its refresh.
    UpdateTools();
    if (drawnRevision_ != surface_->Revision()) Fill();
}

void ChartView::Relayout()
{
    // Tick spacing, thinning and the plot area follow the size: the chart is filled
    // again, the model is not touched. Whatever the model's revision: printing changes
    // its print settings after it was drawn, and a resize after Print All must still lay
    // the plot out for the new size.
    Fill();
}

// Zooming in draws every reading; back at the whole chart, long lines are thinned again.
void ChartView::ZoomIn()
{
    if (!zoomed_) {
        zoomed_ = true;
        Fill();
    }
    chart_->zoomIn();
}

void ChartView::ZoomOut() { chart_->zoomOut(); }

void ChartView::ZoomReset()
{
    zoomed_ = false;
    Fill();
}

QImage ChartView::ChartImage() const
{
    if (drawnRevision_ != surface_->Revision()) const_cast<ChartView*>(this)->Fill();
    return view_->grab().toImage();
}

void ChartView::CopyToClipboard() const
{
    if (QClipboard* clipboard = QApplication::clipboard()) clipboard->setImage(ChartImage());
}

}  // namespace pemlo
