#include "scope/spectrum.h"

namespace servo::scope {}
