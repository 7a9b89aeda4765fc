#include "log_module.h"

#include <ky_common.h>

namespace in_scope {

#define TRACED_CHANGE(level, flag) \
    KY_TRACE_FUNCTION();           \
    return change(level, flag)
#include "log_module.inc"

constexpr log_module_t module = LOG_MODULE;

} // namespace in_scope

namespace in_call {

#undef TRACED_CHANGE
#define TRACED_CHANGE(level, flag) return KY_TRACED(change, level, flag)
#include "log_module.inc"

constexpr log_module_t module = LOG_MODULE;

} // namespace in_call

const log_module_t log_module_in_cpp = in_scope::module;
const log_module_t log_module_in_cpp_by_call = in_call::module;
