/* What is compiled into programs, but not in the ABI baseline, which has no macros, no sign of an
 * enumeration and no CPU other than x86-64. Compile-only, as C11 and as C++11. */
#include <ky_adviser.h>
#include <ky_common.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>
#include <ky_values.h>

#include <assert.h>
#include <stddef.h>

#define VALUE(constant, value) static_assert((constant) == (value), #constant)
#define LIMIT(constant, value) \
    static_assert((constant) == (value) && (constant) - (value)-1 > 0, #constant)
#define SIZE(type, size) static_assert(sizeof(type) == (size), #type)
#define ENUMERATION(type) static_assert(sizeof(type) == 4 && (type)0xFFFFFFFFU > (type)0, #type)
/* clang-format off */

/* Log masks and levels, and limits. */
VALUE(ADVISER_EVENT_MAX, 51); LIMIT(KY_LOG_MASK_ERROR, 1); LIMIT(KY_LOG_MASK_WARNING, 3);
LIMIT(KY_LOG_MASK_NOTICE, 7); LIMIT(KY_LOG_MASK_INFO, 15); LIMIT(KY_LOG_MASK_DEBUG, 31);
LIMIT(KY_LOG_LEVEL_MIN, 0); LIMIT(KY_LOG_LEVEL_DEFAULT, 3); LIMIT(KY_LOG_LEVEL_MAX, 8);
LIMIT(KY_RPF_GROUP_ID_MAX, 511); LIMIT(KY_USER_TOKEN_MAX, 0xFFF);
LIMIT(KY_MC_ROUTE_ENTRIES_MAX, 128); VALUE(PORT_TYPE_VALIDATION_ROWS, 174);

/* KRIOLILGLU_VERSION, computed from other parts. */
#undef KRIOLILGLU_VERSION_MAJOR
#undef KRIOLILGLU_VERSION_MINOR
#undef KRIOLILGLU_VERSION_PATCH
#define KRIOLILGLU_VERSION_MAJOR 2
#define KRIOLILGLU_VERSION_MINOR 3
#define KRIOLILGLU_VERSION_PATCH 4
VALUE(KRIOLILGLU_VERSION, 20304);

/* Enumerations are unsigned and 32 bits wide. */
ENUMERATION(ky_status_t); ENUMERATION(ky_access_cmd_t); ENUMERATION(adviser_event_t);
ENUMERATION(ky_ip_version_t); ENUMERATION(enum ky_port_row_values);

/* The exported objects have the size that programs copy. */
SIZE(port_type_validation_table, sizeof(char*) * 2 * 174);
VALUE(offsetof(cl_spinlock_t, state), sizeof(pthread_mutex_t));
#if defined(__x86_64__) && defined(__LP64__)
SIZE(port_type_validation_table, 2784); SIZE(utils_mem_type_count_lock, 48);
#endif
