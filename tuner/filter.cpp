#include "tuner/filter.h"
