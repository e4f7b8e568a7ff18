#include "tuner/bode_file.h"
