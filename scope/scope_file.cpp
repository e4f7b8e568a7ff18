#include "scope/scope_file.h"

namespace servo::scope {}
