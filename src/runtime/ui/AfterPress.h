// A press is answered (to the mouse, the keyboard, or a screen reader over the
// accessibility bus) only when its handler returns. A handler that opens a modal
// window would hold that answer until the window is gone, and a screen reader that
// pressed waits for it all that time: such commands run once the press has returned.
#pragma once

#include <functional>

class QObject;

namespace pemlo {

// Runs `handler` at the next turn of the event loop, as an untrapped event handler
// (see Untrapped). Nothing runs if `context` is destroyed before then.
void AfterPress(QObject* context, std::function<void()> handler);

}  // namespace pemlo
