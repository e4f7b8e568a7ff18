#include "tuner/step_response.h"
