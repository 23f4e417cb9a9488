#include "classify/BuildIntervalGrid.h"
