#include "scope/channel_lists.h"

namespace servo::scope {}
