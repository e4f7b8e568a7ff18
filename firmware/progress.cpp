#include "firmware/progress.h"
