#include "views/Frm_UandV.h"

#include <QLabel>
#include <QPixmap>

#include "classify/ReadingSteps.h"
#include "core/ui/Screens.h"
#include "runtime/ui/MousePointer.h"
#include "views/IndexPlots.h"
#include "views/LegendPictures.h"

namespace pemlo {

namespace {

constexpr int ClientWidth = 13980;
constexpr int ClientHeight = 8235;

const std::vector<ToolButtonSpec>& Buttons()
{
    static const std::vector<ToolButtonSpec> buttons{
        {QStringLiteral("Back      "), QStringLiteral("Back"), QStringLiteral("Back to previous form"), {}},
        {QStringLiteral("Print All     "), QStringLiteral("Print"), QString(), {}},
        {QStringLiteral("Exit           "), QStringLiteral("Exit"), QStringLiteral("Exit the program"), {}},
    };
    return buttons;
}

struct ChartDesign {
    const char* name;
    TwipsRect rect;
    const char* caption;   // the chart's own caption text; the load only colours it
    bool allTools;         // the combined chart stores every tool window, the others a toolbar
};

const ChartDesign Charts[] = {
    {"ChartFX1", {120, 600, 4530, 6825}, "Soil Classification Index U", false},
    {"ChartFX2", {4680, 600, 4560, 6825}, "Soil In-situ Index V", false},
    {"ChartFX3", {9270, 600, 4530, 6825}, "U and V", true},
};

// The label of each text box carries its place in the screen's label array.
struct BandEntry {
    ProjectBandItem item;
    const char* labelName;
};

const BandEntry Band[] = {
    {{"Project/Number:", {360, 7620, 1335, 225}, "TxtProjNum", {1680, 7620, 975, 216}, ProjectField::Number}, "Label_0"},
    {{"Project Title:", {2820, 7620, 975, 210}, "TxtTitle", {3900, 7620, 3015, 216}, ProjectField::Title}, "Label_1"},
    {{"Date/Time:", {7020, 7605, 900, 225}, "TxtDate", {7980, 7605, 975, 216}, ProjectField::Date}, "Label_6"},
    {{"Cone No:", {840, 7905, 780, 225}, "TxtConeNo", {1680, 7905, 975, 216}, ProjectField::ConeNo}, "Label_4"},
    {{"Location/No:", {2820, 7920, 1095, 225}, "TxtLocationNo", {3900, 7920, 1452, 216}, ProjectField::Location},
     "Label_2"},
    {{"GWT:", {5640, 7920, 450, 225}, "TxtGWT", {6180, 7920, 735, 216}, ProjectField::GWT}, "Label_3"},
};

// The frame of the project band and the frame of the legend picture, whose right
// side stands 30 twips lower than the other three, as it always has.
const std::vector<TwipsLine> Lines{
    {"Line1", 210, 7560, 9120, 7560},   {"Line3", 210, 8160, 9120, 8160},
    {"Line2", 210, 7560, 210, 8160},    {"Line7", 9120, 7560, 9120, 8160},
    {"Line5", 9360, 7560, 13710, 7560}, {"Line6", 9360, 8160, 13710, 8160},
    {"Line4", 9360, 7560, 9360, 8160},  {"Line8", 13710, 7590, 13710, 8190},
};

const std::vector<QString> AllTools{QStringLiteral("Toolbar"), QStringLiteral("Menu"), QStringLiteral("Legend"),
                                    QStringLiteral("Series Legend"), QStringLiteral("Data Editor")};
const std::vector<QString> ToolbarOnly{QStringLiteral("Toolbar")};

}  // namespace

Frm_UandV::Frm_UandV(QWidget* parent)
    : ResultScreen(QStringLiteral("Frm_UandV"), ClientWidth, ClientHeight, Buttons(), parent)
{
    setWindowTitle(QStringLiteral("U and V Plot"));
    BuildDesign();
    Load();
}

void Frm_UandV::BuildDesign()
{
    ChartView* views[3] = {};
    for (int k = 0; k < 3; ++k) {
        const ChartDesign& c = Charts[k];
        views[k] = AddChart(QString::fromLatin1(c.name), c.rect, c.allTools ? AllTools : ToolbarOnly,
                            c.allTools ? std::vector<QString>{} : ToolbarOnly);
        views[k]->Surface().SetTitle(2, QString::fromLatin1(c.caption));
    }
    chartU_ = views[0];
    chartV_ = views[1];
    chartUV_ = views[2];

    std::vector<ProjectBandItem> items;
    for (const BandEntry& b : Band) items.push_back(b.item);
    AddProjectBand(items);
    for (const BandEntry& b : Band) {
        const QString labelName = QStringLiteral("Lbl") + QString::fromLatin1(b.item.boxName).mid(3);
        if (auto* label = findChild<QLabel*>(labelName, Qt::FindDirectChildrenOnly)) {
            label->setObjectName(QString::fromLatin1(b.labelName));
        }
    }
    AddDesignLines(Lines);

    // The index legend picture is shown at its natural size.
    auto* picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("Image1"));
    picture->setPixmap(IndexLegendPicture());
    picture->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    PlaceDesign(picture, {10440, 7560, 3120, 450});
}

// The load step, in the order engineers' earlier results depend on.
void Frm_UandV::Load()
{
    ApplyResizeSettings();
    Declarations& d = TheRecord();
    setWindowTitle(QStringLiteral(" U and V Plot - File: ") + QString::fromStdString(d.DataFileName));
    FillProjectBand(d);
    SetMousePointer(MousePointer::Hourglass);
    RunClassificationPipeline(d);
    PlotIndexCharts(d, ChartFX1(), ChartFX2(), ChartFX3());
    SetMousePointer(MousePointer::Default);
}

void Frm_UandV::OnCommand(const QString& key)
{
    Screens& screens = Screens::Instance();
    if (key == QLatin1String("Back")) {
        screens.Close(ScreenId::Frm_UandV);
    } else if (key == QLatin1String("Print")) {
        PrintToDefaultPrinter();
    } else if (key == QLatin1String("Exit")) {
        screens.Close(ScreenId::Frm_UandV);
        screens.Close(ScreenId::Frm_CPTData);
        screens.EndProgram();
    }
}

void RegisterFrm_UandV()
{
    Screens::Instance().Register(ScreenId::Frm_UandV, [] { return new Frm_UandV; });
}

}  // namespace pemlo
