#include "tuner/simulation.h"
