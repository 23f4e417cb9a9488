#include "classify/Classify_Pemlo01.h"
