#include "core/platform/WholeFile.h"
