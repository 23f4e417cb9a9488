// The Help window: the program's user documentation, how to view a data file, plot
// it and classify the soil. Modal, opened from the open-file screen's toolbar.
#pragma once

#include <span>

#include "info/InfoWindow.h"

namespace pemlo {

class Frm_HelpInfo : public InfoWindow {
    Q_OBJECT
public:
    explicit Frm_HelpInfo(QWidget* parent = nullptr);
};

// The help text as typeset in the window, paragraph by paragraph.
std::span<const RichParagraph> HelpText();

// Tells the screen registry how to build the Help window.
void RegisterFrm_HelpInfo();

}  // namespace pemlo
