// Window titles as the window system shows them. A screen designed without title
// text must show none: Qt would otherwise put the application's name there.
#pragma once

class QWidget;

namespace pemlo {

// Gives the window an empty title, on screen as well as in the window system.
void ShowNoTitle(QWidget* window);

}  // namespace pemlo
