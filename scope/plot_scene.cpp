#include "scope/plot_scene.h"
