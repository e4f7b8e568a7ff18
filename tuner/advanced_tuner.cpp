#include "tuner/advanced_tuner.h"
