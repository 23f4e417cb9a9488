#include "core/ProgramRoad.h"
