#include "input/Module_Units.h"
