#include "log_module.h"

#include <ky_common.h>

#define TRACED_ENTRY KY_TRACE_ENTRY()
#define TRACED_EXIT KY_TRACE_EXIT()
#include "log_module.inc"

const log_module_t log_module_in_c = LOG_MODULE;
