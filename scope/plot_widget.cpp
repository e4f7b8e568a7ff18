#include "scope/plot_widget.h"
