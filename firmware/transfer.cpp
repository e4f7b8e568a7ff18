#include "firmware/transfer.h"
