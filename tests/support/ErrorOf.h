// The run-time error number a step raises, or 0 when it completes.
#pragma once

#include <functional>

#include "runtime/RunTimeError.h"

namespace pemlo::test {

inline int ErrorOf(const std::function<void()>& step)
{
    try {
        step();
    } catch (const RunTimeError& e) {
        return e.Number();
    }
    return 0;
}

}  // namespace pemlo::test
