// A screen may use the record.
#include "core/Up.h"
