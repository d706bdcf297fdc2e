#include "base/Published.h"
