#include "scope/cursors.h"

namespace servo::scope {}
