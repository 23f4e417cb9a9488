#include "classify/RefineLayers.h"
