// The open-file screen's design: every control with its caption and its rectangle in
// twips, built onto a scaled form. The screen's commands live in Frm_OpenFile.
#pragma once

#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <array>

#include "runtime/ui/FormScaling.h"

namespace pemlo {

// The design client area, which is also the form-resizing minimum.
constexpr int OpenFileWidthTwips = 7600;
constexpr int OpenFileHeightTwips = 6000;

struct OpenFileControls {
    std::array<QRadioButton*, 3> Opt_Units{};
    std::array<QRadioButton*, 2> Opt_GraphUnits{};
    QComboBox* CombTitleLines = nullptr;
    QPushButton* CmdViewFile = nullptr;
    QPushButton* CmdOpenFile = nullptr;
    QPushButton* CmdPlot = nullptr;
    // The frames and file buttons a load that never ends keeps the user away from.
    std::vector<QWidget*> inputs;
};

// Creates every control of the screen on form, at its design place, in tab order.
OpenFileControls BuildOpenFileLayout(ScaledForm& form);

}  // namespace pemlo
