/* The part of the logging library that kriolilglu calls. This header and its library are stand-ins
 * for the SDK's own, which a build can use instead. All functions are thread-safe.
 */
#ifndef KYLOG_KYLOG_H
#define KYLOG_KYLOG_H

#include <stdint.h>
#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Entry and exit traces of functions: non-zero enables them. */
extern int32_t g_ky_log_module_func_enable;

/** Writes one line to standard error: level, module, message. The write is atomic, so that lines of
 *  processes that share standard error do not interleave; a line is truncated at PIPE_BUF (4,096)
 *  bytes.
 *
 *  @param severity_mask  1 error, 3 warning, 7 notice, 15 info, 31 debug
 *  @param module         name of the log module
 *  @param format         as for printf
 *  @return               0
 */
__attribute__((cold, format(printf, 3, 4))) int
ky_log(uint32_t severity_mask, const char* module, const char* format, ...);

/** Adds one record to the trace buffer, a ring that keeps the newest KY_TRACE_CBUFF_RECORDS.
 *
 *  @param format  as for printf; a text longer than KY_TRACE_CBUFF_TEXT - 1 characters is truncated
 *  @return        0
 */
__attribute__((cold, format(printf, 1, 2))) int ky_trace_cbuff_log(const char* format, ...);

#define KY_TRACE_CBUFF_RECORDS 256
#define KY_TRACE_CBUFF_TEXT 256

/** Prints the trace buffer, oldest record first. This function is the stand-in's own: kriolilglu
 *  never reads the buffer, and the SDK's library has other ways to. */
void ky_trace_cbuff_dump(FILE* stream);

/* ---- Table printer ---- */

/** How the printer reads a column's value. */
enum {
    DBG_UTILS_KIND_UINT32 = 2, /**< value points to a uint32_t */
    DBG_UTILS_KIND_UINT64 = 3, /**< value points to a uint64_t */
    DBG_UTILS_KIND_STRING = 5, /**< value is the string itself */
    DBG_UTILS_KIND_END = 19    /**< ends the list of columns; title and value are null */
};

/** One column of a table. */
typedef struct dbg_utils_column {
    const char* title;
    uint32_t width; /**< in characters */
    uint32_t kind;
    const void* value; /**< in the next row */
} dbg_utils_column_t;

/** Prints the heading of a module's dump. */
void dbg_utils_print_module_header(FILE* stream, const char* title);

/** Prints the titles of a table's columns. */
void dbg_utils_print_table_headline(FILE* stream, const dbg_utils_column_t* columns);

/** Prints one row of a table: the current values of its columns. */
void dbg_utils_print_table_data_line(FILE* stream, const dbg_utils_column_t* columns);

#ifdef __cplusplus
}
#endif

#endif
