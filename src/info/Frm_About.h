// The About window: the disclaimer, the publications the classification rests on and
// the acknowledgements. Modal, opened from the open-file screen's toolbar.
#pragma once

#include "info/InfoWindow.h"

namespace pemlo {

class Frm_About : public InfoWindow {
    Q_OBJECT
public:
    explicit Frm_About(QWidget* parent = nullptr);
};

// Tells the screen registry how to build the About window.
void RegisterFrm_About();

}  // namespace pemlo
