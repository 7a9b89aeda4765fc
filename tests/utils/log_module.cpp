#include "log_module.h"

#include <ky_common.h>

namespace {

#define TRACED_CHANGE(level, flag) \
    KY_TRACE_FUNCTION();           \
    return change(level, flag)
#include "log_module.inc"

} // namespace

const log_module_t log_module_in_cpp = LOG_MODULE;
