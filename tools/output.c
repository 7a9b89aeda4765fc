/* The program puts a log sink of its own in front of the logging library's, so that the library's
 * records stand among the answers. */
#include "output.h"

#include <ky_common.h>

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

unsigned line_number;
bool is_refused;
char* record_buffer;

void answer(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    fputs(line_number == 0 ? "" : "  ", stdout);
    vprintf(format, arguments);
    putchar('\n');
    va_end(arguments);
}

bool report(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    fprintf(stderr, line_number == 0 ? "kriolilglu: " : "kriolilglu: line %u: ", line_number);
    vfprintf(stderr, format, arguments);
    fputc('\n', stderr);
    va_end(arguments);
    return false;
}

const char* colour(const char* sequence)
{
    const char* never = getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe): there is one thread
    return (never == NULL || never[0] == '\0') && isatty(STDOUT_FILENO) != 0 ? sequence : "";
}

int ky_log(uint32_t severity_mask, const char* module, const char* format, ...)
{
    char text[RECORD_SIZE];
    char* record = record_buffer == NULL ? text : record_buffer;
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(record, RECORD_SIZE, format, arguments);
    va_end(arguments);
    char* end = strrchr(record, '\n');
    *(end == NULL ? record + strlen(record) : end) = '\0';
    if (record == text) {
        printf("%s%s ", colour("\033[33m"), KY_LOG_LEVEL_NAME(severity_mask));
        printf("%s: %s%s\n", module, text, colour("\033[m"));
    }
    return 0;
}
