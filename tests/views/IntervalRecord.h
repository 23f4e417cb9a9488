// A record whose interval arrays are filled directly, as the plots find them after
// the classification has run: every interval gets distinct, recognisable values, so
// a plot that takes the wrong interval or the wrong array shows at once.
#pragma once

#include "core/Declarations.h"

namespace pemlo::testing {

inline void FillIntervals(Declarations& d, int count, Integer graphUnits)
{
    d.GraphUnits = graphUnits;
    d.NumIntervals = static_cast<Integer>(count);
    for (IntervalArray* a : {&d.IntDepth, &d.IntQTip, &d.IntQSleeve, &d.IntRatio, &d.IntReserve,
                             &d.IntProb1, &d.IntProb2, &d.IntProb3, &d.IntU, &d.IntV}) {
        a->Allocate(count);
    }
    for (int i = 1; i <= count; ++i) {
        const float f = static_cast<float>(i);
        d.IntDepth[i] = 0.1f * f - 0.05f;
        d.IntQTip[i] = 10.0f + f;
        d.IntQSleeve[i] = 0.01f * f;
        d.IntRatio[i] = 0.25f * f;
        d.IntProb1[i] = f;
        d.IntProb2[i] = 30.0f;
        d.IntProb3[i] = 70.0f - f;
        d.IntU[i] = 0.02f * f;
        d.IntV[i] = 1.0f - 0.03f * f;
    }
}

}  // namespace pemlo::testing
