// Every screen of the program registered with the screen registry, in one place, so
// that the desktop program and the tests start from the same list.
#pragma once

namespace pemlo {

void RegisterAllScreens();

}  // namespace pemlo
