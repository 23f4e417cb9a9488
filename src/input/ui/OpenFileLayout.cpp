#include "input/ui/OpenFileLayout.h"

#include <QFrame>
#include <QLabel>
#include <QMap>

#include "info/ConePicture.h"
#include "info/ProgramBanner.h"

namespace pemlo {

namespace {

enum class Kind { Picture, Label, Frame, Option, Combo, Button };

struct ControlDesign {
    const char* name;
    Kind kind;
    QString caption;
    const char* parent;  // "" for the form itself
    TwipsRect rect;
    double pointSize;
    bool bold;
    Qt::Alignment align;
};

std::vector<ControlDesign> Design()
{
    const Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    // Captions with a trailing blank are the design's own and kept as they are.
    return {
        {"ConeImage", Kind::Picture, "", "", {240, 160, 1150, 1880}, 9, false, left},
        {"LblTitle", Kind::Label, banner::Title(), "", {1600, 140, 5760, 620}, 20, true, left},
        {"LblSubtitle", Kind::Label, banner::Subtitle(), "", {1600, 760, 5760, 330}, 10, false, left},
        {"LblCitation", Kind::Label, banner::Citation(), "", {1600, 1110, 5760, 300}, 8, false, left},
        {"LblAffiliation1", Kind::Label, banner::Affiliation(), "", {1600, 1500, 5760, 270}, 9, true, left},
        {"LblAffiliation2", Kind::Label, banner::AffiliationLine2(), "", {1600, 1770, 5760, 270}, 9, false, left},

        {"Frm_Units", Kind::Frame, "", "", {240, 2340, 2380, 1620}, 9, false, left},
        {"LblUnits", Kind::Label, "Units in Data File:", "Frm_Units", {150, 90, 2100, 330}, 9, true, left},
        {"Opt_Units_0", Kind::Option, "m-MilliVolts", "Frm_Units", {240, 470, 2040, 330}, 9, false, left},
        {"Opt_Units_1", Kind::Option, "English Units ", "Frm_Units", {240, 830, 2040, 330}, 9, false, left},
        {"Opt_Units_2", Kind::Option, "SI Units ", "Frm_Units", {240, 1190, 2040, 330}, 9, false, left},

        {"Frm_GraphUnits", Kind::Frame, "", "", {2760, 2340, 2240, 1620}, 9, false, left},
        {"LblGraphUnits", Kind::Label, "Graph Units", "Frm_GraphUnits", {150, 90, 1960, 330}, 9, true, left},
        {"Opt_GraphUnits_0", Kind::Option, "English Units", "Frm_GraphUnits", {240, 470, 1900, 330}, 9, false, left},
        {"Opt_GraphUnits_1", Kind::Option, "SI Units", "Frm_GraphUnits", {240, 830, 1900, 330}, 9, false, left},

        {"Frm_TitleLines", Kind::Frame, "", "", {5140, 2340, 2220, 1620}, 9, false, left},
        {"LblTitleLines", Kind::Label, "Num. of Title lines", "Frm_TitleLines", {150, 90, 1940, 330}, 9, true, left},
        {"CombTitleLines", Kind::Combo, "", "Frm_TitleLines", {240, 500, 1100, 380}, 9, false, left},

        {"CmdViewFile", Kind::Button, "View Data File", "", {240, 4170, 2380, 520}, 9, false, left},
        {"CmdOpenFile", Kind::Button, "Load Data File", "", {2760, 4170, 2240, 520}, 9, false, left},
        {"CmdPlot", Kind::Button, "Plot Cone Data", "", {5140, 4170, 2220, 520}, 9, true, left},

        {"LblRights", Kind::Label, banner::Rights(), "", {240, 5330, 5000, 300}, 8, false, left},
        {"lblVersion", Kind::Label, banner::Version(), "", {5360, 5330, 2000, 300}, 8, false, right},
    };
}

QWidget* Create(const ControlDesign& design, QWidget* parent)
{
    switch (design.kind) {
    case Kind::Picture: return new ConePicture(parent);
    case Kind::Label: {
        auto* label = new QLabel(design.caption, parent);
        label->setAlignment(design.align);
        label->setTextFormat(Qt::PlainText);
        return label;
    }
    case Kind::Frame: {
        auto* frame = new QFrame(parent);
        frame->setFrameShape(QFrame::StyledPanel);
        frame->setFrameShadow(QFrame::Sunken);
        return frame;
    }
    case Kind::Option: return new QRadioButton(design.caption, parent);
    case Kind::Combo: return new QComboBox(parent);
    case Kind::Button: return new QPushButton(design.caption, parent);
    }
    return nullptr;
}

}  // namespace

OpenFileControls BuildOpenFileLayout(ScaledForm& form)
{
    form.AddLines({{"Line1", 240, 2190, 7360, 2190}, {"Line2", 240, 5130, 7360, 5130}});
    QMap<QString, QWidget*> built;
    OpenFileControls controls;
    for (const ControlDesign& design : Design()) {
        QWidget* parent = *design.parent ? built.value(design.parent) : &form;
        QWidget* control = Create(design, parent);
        control->setObjectName(design.name);
        QFont font = control->font();
        font.setPointSizeF(design.pointSize);
        font.setBold(design.bold);
        control->setFont(font);
        form.Place(control, design.rect);
        built.insert(design.name, control);
    }
    for (int i = 0; i < 3; ++i) {
        controls.Opt_Units[i] = static_cast<QRadioButton*>(built.value(QStringLiteral("Opt_Units_%1").arg(i)));
    }
    for (int i = 0; i < 2; ++i) {
        controls.Opt_GraphUnits[i] =
            static_cast<QRadioButton*>(built.value(QStringLiteral("Opt_GraphUnits_%1").arg(i)));
    }
    controls.CombTitleLines = static_cast<QComboBox*>(built.value("CombTitleLines"));
    controls.CmdViewFile = static_cast<QPushButton*>(built.value("CmdViewFile"));
    controls.CmdOpenFile = static_cast<QPushButton*>(built.value("CmdOpenFile"));
    controls.CmdPlot = static_cast<QPushButton*>(built.value("CmdPlot"));
    for (const char* name : {"Frm_Units", "Frm_GraphUnits", "Frm_TitleLines", "CmdViewFile", "CmdOpenFile"}) {
        controls.inputs.push_back(built.value(name));
    }
    return controls;
}

}  // namespace pemlo
