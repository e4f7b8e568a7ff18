#include "scope/plot_paint_view.h"
