// A chart control on a screen: shows its ChartSurface with Qt Charts and redraws
// whenever the model is refreshed. Its "Toolbar" tool window, where the chart carries
// one, offers zoom in, zoom out, back to the whole chart, and copy to the clipboard.
#pragma once

#include <QImage>
#include <QWidget>

#include "views/chart/ChartSurface.h"

class QChart;
class QChartView;
class QToolBar;

namespace pemlo {

class ChartView : public QWidget {
    Q_OBJECT
public:
    explicit ChartView(QWidget* parent = nullptr);

    ChartSurface& Surface() { return *surface_; }
    const ChartSurface& Surface() const { return *surface_; }

    // The chart as it stands, as an image of the control's size (copy uses it too).
    QImage ChartImage() const;
    QChart* Chart() const { return chart_; }
    QToolBar* Tools() const { return tools_; }

    void ZoomIn();
    void ZoomOut();
    void ZoomReset();
    void CopyToClipboard() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Redraw();
    void Fill();
    void Relayout();
    void UpdateTools();

    ChartSurface* surface_;
    QChartView* view_;
    QChart* chart_;
    QToolBar* tools_;
    unsigned drawnRevision_ = ~0u;
    bool zoomed_ = false;
};

}  // namespace pemlo
