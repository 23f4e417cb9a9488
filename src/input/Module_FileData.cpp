#include "input/Module_FileData.h"
