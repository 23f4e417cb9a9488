// The CPT data screen: the first view of a loaded sounding. It cleans the readings
// (qc of zero or less becomes 1.0, negative fs 0), computes the friction ratio and
// plots tip resistance, sleeve friction and ratio against depth on three charts,
// with the project information below them.
#pragma once

#include "views/ResultScreen.h"

namespace pemlo {

class Frm_CPTData : public ResultScreen {
    Q_OBJECT
public:
    // Building the screen is its load step; a run-time error of the load leaves the
    // constructor (the caller reports it).
    explicit Frm_CPTData(QWidget* parent = nullptr);

    // The plotting procedures, run by the load in this order: TipPlot sets the chart
    // counters the other two use. Each ends silently at its first failure.
    void TipPlot();
    void SleevePlot();
    void Ratioplot();

    ChartView* ChartFX1() const { return charts_[0]; }
    ChartView* ChartFX2() const { return charts_[1]; }
    ChartView* ChartFX3() const { return charts_[2]; }

    // The three charts as they stand; the report's fourth is a filler.
    ReportCharts ChartsToPrint() override
    {
        return ReportCharts{3, {&charts_[0]->Surface(), &charts_[1]->Surface(), &charts_[2]->Surface(),
                                &charts_[2]->Surface()}};
    }
    Integer ReadingIndex() const { return readingIndex_; }
    Integer PointIndex() const { return pointIndex_; }

protected:
    void OnCommand(const QString& key) override;

private:
    void Form_Load();
    void PlotPoints(ChartSurface& chart, const ReadingArray& xs);
    void DepthAxis(ChartSurface& chart);

    ChartView* charts_[3] = {nullptr, nullptr, nullptr};
    Integer readingIndex_ = 0;   // running reading index of the load
    Integer pointIndex_ = 0;     // running point index the three plots share
};

// Tells the screen registry how to build the CPT data screen.
void RegisterFrm_CPTData();

}  // namespace pemlo
