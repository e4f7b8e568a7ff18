#include "scope/trace.h"

namespace servo::scope {}
