#include "runtime/FileChannels.h"
