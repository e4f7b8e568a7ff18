#include "tuner/resonances.h"
