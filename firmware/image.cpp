#include "firmware/image.h"
