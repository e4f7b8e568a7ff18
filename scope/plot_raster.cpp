#include "scope/plot_raster.h"
