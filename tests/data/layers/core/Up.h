// An include up from the ground floor.
#include "views/Screen.h"
