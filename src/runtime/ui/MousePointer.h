// The global mouse pointer: one setting for the whole program, not a stack.
#pragma once

namespace pemlo {

enum class MousePointer { Default, Hourglass };

void SetMousePointer(MousePointer pointer);
MousePointer CurrentMousePointer();

}  // namespace pemlo
