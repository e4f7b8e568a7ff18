#include "scope/plot_geometry.h"

namespace servo::scope {}
