#include "log_module.h"

#include <ky_common.h>

#define TRACED_ENTRY KY_TRACE_FUNCTION()
#define TRACED_EXIT static_cast<void>(0)
#include "log_module.inc"

const log_module_t log_module_in_cpp = LOG_MODULE;
