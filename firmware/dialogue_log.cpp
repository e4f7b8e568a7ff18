#include "firmware/dialogue_log.h"
