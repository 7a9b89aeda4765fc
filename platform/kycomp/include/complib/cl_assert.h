/* The assertion of the inline accessors. It reports and continues: the accessor proceeds as if the
 * condition held, so a null pointer is reported before it faults. */
#ifndef COMPLIB_CL_ASSERT_H
#define COMPLIB_CL_ASSERT_H

#include <kylog/kylog.h>
#include <stdlib.h>
#include <sys/types.h>
#if __has_include(<execinfo.h>) // absent from some C libraries
#include <execinfo.h>
#define CL_HAS_BACKTRACE
#endif

/** The state of an object that is initialised. */
#define CL_INITIALIZED 2U

/** Reports a condition that is false.
 *
 *  @param path  the header's path, as an include line names it
 */
#define CL_ASSERT(condition, path) \
    (__builtin_expect(!(condition), 0) ? cl_assert_report(path, __LINE__, __func__) : (void)0)

#define CL_ASSERT_FRAMES 20

#ifdef __cplusplus
extern "C" {
#endif

/* Static, so that the report is the includer's and its call stack starts there. */
__attribute__((cold, noinline, unused)) static void
cl_assert_report(const char* path, int line, const char* function)
{
    ky_log(1, "TRACE_CBUFF", "ASSERT in %s[%d]- %s\n", path, line, function);
    ssize_t elements = 0;
    char** symbols = NULL;
#ifdef CL_HAS_BACKTRACE
    void* frames[CL_ASSERT_FRAMES];
    const int count = backtrace(frames, CL_ASSERT_FRAMES);
    elements = count;
    symbols = backtrace_symbols(frames, count);
#endif
    ky_log(1, "TRACE_CBUFF", "ASSERT - Retrieved a list of %zd elements.\n", elements);
    if (symbols != NULL) {
        for (ssize_t i = 0; i < elements; i++) {
            ky_log(1, "TRACE_CBUFF", "ASSERT - Element %zd: %s.\n", i, symbols[i]);
        }
        free(symbols);
    }
}

#ifdef __cplusplus
}
#endif

#endif
