#include "scope/recording.h"

namespace servo::scope {}
