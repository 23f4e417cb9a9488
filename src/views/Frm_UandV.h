// The U and V view: the soil classification index U and the soil in-situ index V of
// every depth interval against depth, on three charts (U, V, both), with the project
// information below. Every load recomputes the grid and the classification.
#pragma once

#include "views/chart/ChartSurface.h"
#include "views/ResultScreen.h"

namespace pemlo {

class Frm_UandV : public ResultScreen {
    Q_OBJECT
public:
    // The load step: recomputes the intervals of the record and plots them. Nothing
    // is trapped here: a run-time error leaves the constructor, is reported and ends
    // the program.
    explicit Frm_UandV(QWidget* parent = nullptr);

    ChartSurface& ChartFX1() { return chartU_->Surface(); }
    ChartSurface& ChartFX2() { return chartV_->Surface(); }
    ChartSurface& ChartFX3() { return chartUV_->Surface(); }

    // The three charts as they stand; the report's fourth is a filler.
    ReportCharts ChartsToPrint() override
    {
        return ReportCharts{3, {&ChartFX1(), &ChartFX2(), &ChartFX3(), &ChartFX3()}};
    }

protected:
    void OnCommand(const QString& key) override;

private:
    void BuildDesign();
    void Load();

    ChartView* chartU_ = nullptr;
    ChartView* chartV_ = nullptr;
    ChartView* chartUV_ = nullptr;
};

// Registers the screen with the screen registry (done once at program start).
void RegisterFrm_UandV();

}  // namespace pemlo
