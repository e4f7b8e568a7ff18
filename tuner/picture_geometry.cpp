#include "tuner/picture_geometry.h"
