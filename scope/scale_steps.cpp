#include "scope/scale_steps.h"

namespace servo::scope {}
