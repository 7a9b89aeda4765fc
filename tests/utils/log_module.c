/* The log statements and traces of a module "TEST": one source, compiled as C and as C++. */
#include "log_module.h"

#include <ky_common.h>

#define KY_LOG_MODULE "TEST"
#define KY_LOG_VERBOSITY verbosity

static uint32_t verbosity = KY_LOG_LEVEL_DEFAULT;

#ifdef __cplusplus
struct limits {
    static const int largest = 10; /* not defined: a statement takes its values by value */
};
#define LARGEST limits::largest
#else
#define LARGEST 10
#endif

static void set_verbosity(uint32_t level)
{
    KY_STORE(verbosity, level);
}

static uint32_t level_of(uint32_t mask)
{
    return KY_LOG_LEVEL(mask);
}

static void say_bare(void)
{
    // NOLINTBEGIN(readability-braces-around-statements): the statement must work without braces
    if (verbosity < level_of(KY_LOG_MASK_ERROR))
        (void)KY_LOG_ERROR("not printed\n");
    else
        KY_LOG_ERROR("bare\n");
    // NOLINTEND(readability-braces-around-statements)
}

static void say_at_all_levels(int number)
{
    KY_LOG_ERROR("said %d\n", number);
    KY_LOG_WARNING("said %d\n", number);
    KY_LOG_NOTICE("said %d\n", number);
    KY_LOG_INFO("said %d\n", number);
    KY_LOG_DEBUG("said %d\n", number);
    KY_LOG(KY_LOG_MASK_INFO | 63U, "said %d\n", number);
    KY_LOG(127U, "said %d\n", number);
    KY_LOG(255U, "said %d\n", number);
    KY_LOG(1023U, "said %d\n", number);
}

static void say_much(void)
{
    const int function = 1; /* the macros have these names, too */
    const int arguments = 2;
    KY_LOG_ERROR(
        "%d%s%d%s%d%s%d%s%d%s%d%s%d%s%d%s%d%s%d\n", function, "a", arguments, "b", 3, "c", 4, "d",
        5, "e", 6, "f", 7, "g", 8, "h", 9, "i", LARGEST);
}

static uint32_t fail(const uint32_t* number)
{
    return KY_FAIL(KY_STATUS_PARAM_ERROR, "%u is wrong\n", *number);
}

static uint32_t change(uint32_t level, int32_t flag)
{
    set_verbosity(level);
    KY_STORE(g_ky_log_module_func_enable, flag);
    return 13;
}

static uint32_t traced(uint32_t new_level, int32_t new_flag)
{
#ifdef __cplusplus
    KY_TRACE_FUNCTION();
    const auto within = [] { KY_TRACE_FUNCTION(); }; /* hides nothing of the trace around it */
    (void)within;
    return change(new_level, new_flag);
#else
    uint32_t changed = 0;
    (KY_TRACE_ENTRY()); /* an expression */
    changed = change(new_level, new_flag);
    (KY_TRACE_EXIT());
    return changed;
#endif
}

#ifdef __cplusplus
#define THIS_MODULE log_module_in_cpp
#else
#define THIS_MODULE log_module_in_c
#endif
const log_module_t THIS_MODULE = {set_verbosity, say_bare, say_at_all_levels,
                                  say_much,      fail,     traced};
