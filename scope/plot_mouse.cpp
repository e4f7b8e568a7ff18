#include "scope/plot_mouse.h"

namespace servo::scope {}
