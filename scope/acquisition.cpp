#include "scope/acquisition.h"

namespace servo::scope {}
