#include "classify/ReadingSteps.h"
