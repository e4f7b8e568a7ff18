#include "tuner/analysis.h"
