#include "tuner/margins.h"
