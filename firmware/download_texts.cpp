#include "firmware/download.h"
