// What the three plotting screens share: the command bar across the top, charts at
// their design rectangles, the framed band of project information below the charts
// (labels and bold text boxes filled from the record), and the smallest window size
// of four fifths of the loaded size. Each screen adds its own layout table and commands.
#pragma once

#include <QString>
#include <vector>

#include "core/Declarations.h"
#include "report/Module_output.h"
#include "runtime/ui/FormScaling.h"
#include "runtime/ui/Toolbar.h"
#include "views/chart/ChartView.h"

class QLineEdit;
class QLabel;
class QToolBar;

namespace pemlo {

// The six project texts of the record.
enum class ProjectField { Number, Title, Date, ConeNo, Location, GWT };

// One label with its text box, in twips as designed (the toolbar's height included).
struct ProjectBandItem {
    const char* caption;    // the label's text, e.g. "Project/Number:"
    TwipsRect label;
    const char* boxName;    // the text box's objectName, e.g. "TxtProjNum"
    TwipsRect box;
    ProjectField field;
};

class ResultScreen : public ScaledForm {
    Q_OBJECT
public:
    // Design height of the command bar: design tops below it move up by this much,
    // since the bar stands above the scaled area at its natural height.
    static constexpr int ToolbarTwips = 480;

    // name: the screen's objectName; client size in twips, toolbar included.
    ResultScreen(const QString& name, int clientWidthTwips, int clientHeightTwips,
                 const std::vector<ToolButtonSpec>& buttons, QWidget* parent = nullptr);

    // A chart at its design rectangle, carrying the tool windows stored with it
    // (the first list) of which the second list shows.
    ChartView* AddChart(const QString& objectName, const TwipsRect& designRect,
                        const std::vector<QString>& storedTools, const std::vector<QString>& shownTools);
    // Any other control at its design rectangle.
    void PlaceDesign(QWidget* control, const TwipsRect& designRect);
    // Lines in design coordinates (the frame around the project band).
    void AddDesignLines(const std::vector<TwipsLine>& lines);

    // Builds the labels (Arial 9) and text boxes (Arial 9 bold) of the project band.
    void AddProjectBand(const std::vector<ProjectBandItem>& items);
    // Copies the record's project texts into the text boxes.
    void FillProjectBand(const Declarations& d);
    QLineEdit* ProjectBox(const QString& boxName) const;

    // The form-resizing settings: 0.8 x the loaded width and height.
    void ApplyResizeSettings();

    QToolBar* Toolbar() const { return toolbar_; }

    // The charts the Print command hands the report, prepared for the page: what the
    // desktop's Print and the command line's report both print.
    virtual ReportCharts ChartsToPrint() = 0;

protected:
    // The Print command: the prepared charts on the default printer.
    void PrintToDefaultPrinter();

    // The command of a toolbar key; keys a screen does not know do nothing.
    virtual void OnCommand(const QString& key) = 0;

private:
    TwipsRect Shifted(const TwipsRect& r) const;

    QToolBar* toolbar_ = nullptr;
    struct BandBox {
        QLineEdit* box;
        ProjectField field;
    };
    std::vector<BandBox> band_;
    int clientWidthTwips_;
    int clientHeightTwips_;
};

}  // namespace pemlo
