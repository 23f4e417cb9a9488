// The splash screen that opens every run: the program's name, the method it rests
// on, its makers and a cone. While it shows, the open-file screen loads behind it; a
// key, a click on its background or its timer leads on to that screen.
#pragma once

#include <QTimer>

#include "runtime/ui/FormScaling.h"

namespace pemlo {

class Frm_Splash : public ScaledForm {
    Q_OBJECT
public:
    // The load step: sized to the screen, hourglass, the open-file screen loaded hidden.
    explicit Frm_Splash(QWidget* parent = nullptr);

    static constexpr int TimerInterval = 4800;  // milliseconds

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    // Key, click and timer all end the splash the same way; the first one wins.
    void Dismiss();

    QTimer* timer1_ = nullptr;
};

void RegisterFrm_Splash();

}  // namespace pemlo
