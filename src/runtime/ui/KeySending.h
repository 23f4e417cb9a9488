// Keystroke sending: Enter in a text box sends a Tab to the application, so the
// focus walks on to the next control in tab order instead of pressing a button.
#pragma once

class QObject;
class QWidget;

namespace pemlo {

// Moves the focus from the focused control to the next one in tab order, as a Tab
// key would.
void SendTab();

// From now on Enter (and the keypad's Enter) in control is discarded and a Tab is
// sent in its place. The filter is owned by control.
void InstallEnterAsTab(QWidget* control);

}  // namespace pemlo
