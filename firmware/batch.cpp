#include "firmware/batch.h"
