#include "log_module.h"

#include <ky_common.h>

#define TRACED_CHANGE(level, flag)                \
    (KY_TRACE_ENTRY()); /* an expression */       \
    const uint32_t changed = change(level, flag); \
    (KY_TRACE_EXIT());                            \
    return changed
#include "log_module.inc"

const log_module_t log_module_in_c = LOG_MODULE;
