#include "tuner/scan.h"
