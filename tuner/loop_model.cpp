#include "tuner/loop_model.h"
