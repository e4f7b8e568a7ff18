#include "scope/statistics.h"

namespace servo::scope {}
