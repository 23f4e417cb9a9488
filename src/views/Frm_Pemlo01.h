// The classification results view: the interval means of tip resistance, sleeve
// friction and sleeve-to-tip ratio, and the probabilities of sand, silt and clay,
// on four charts against depth, with the project information and a colour legend
// of the soil types below. Every load recomputes the grid and the classification.
#pragma once

#include <array>

#include "views/chart/ChartSurface.h"
#include "views/ResultScreen.h"

namespace pemlo {

class Frm_Pemlo01 : public ResultScreen {
    Q_OBJECT
public:
    // The load step: recomputes the intervals of the record and plots them. An error
    // of the classification is not trapped and leaves the constructor; each plot
    // traps its own and ends silently.
    explicit Frm_Pemlo01(QWidget* parent = nullptr);

    // The screen's array of charts, indices 0 to 3 (error 9 outside).
    ChartSurface& ChartFX(Integer index);

    // The probabilities of the soil types of every interval against depth, deepest
    // interval first. Traps its own errors: the first failure ends the plot silently.
    void SoilPlot(ChartSurface& ChartSoil);

    // The value the load and every resize store from chart 0's size; nothing reads it.
    Integer Chart0Height() const { return chart0Height_; }

    // Every chart shows its series legend on paper: the four charts, prepared.
    ReportCharts ChartsToPrint() override;

protected:
    void OnCommand(const QString& key) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void BuildDesign();
    void Load();
    void StoreChart0Height();

    std::array<ChartView*, 4> charts_{};
    Integer chartIndex_ = 0;     // running chart index of the load
    Integer seriesIndex_ = 0;    // running series index of SoilPlot
    Integer pointIndex_ = 0;     // running point index of SoilPlot
    Integer chart0Height_ = 0;
};

// Registers the screen with the screen registry (done once at program start).
void RegisterFrm_Pemlo01();

}  // namespace pemlo
