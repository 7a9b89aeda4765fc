// The stand-in for the SDK's logging library.
#include <kylog/kylog.h>

#include <algorithm>
#include <cinttypes>
#include <climits>
#include <cstdarg>
#include <cstring>
#include <pthread.h>

int32_t g_ky_log_module_func_enable = 0;

namespace {

const char* level_name(uint32_t severity_mask)
{
    switch (severity_mask) {
    case 1:
        return "ERROR";
    case 3:
        return "WARN";
    case 7:
        return "NOTICE";
    case 15:
        return "INFO";
    case 31:
        return "DEBUG";
    default:
        return "UNKNOWN";
    }
}

struct TraceBuffer {
    pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
    uint64_t written = 0;
    char texts[KY_TRACE_CBUFF_RECORDS][KY_TRACE_CBUFF_TEXT] = {};
};

constinit TraceBuffer trace_buffer;

class Locked {
  public:
    explicit Locked(pthread_mutex_t& lock) : lock_(lock)
    {
        pthread_mutex_lock(&lock_);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked()
    {
        pthread_mutex_unlock(&lock_);
    }

  private:
    pthread_mutex_t& lock_;
};

bool ends_line(const char* text)
{
    const size_t length = strlen(text);
    return length != 0 && text[length - 1] == '\n';
}

/* The number of characters that snprintf stored, from its return value and the buffer size. */
size_t kept(int length, size_t room)
{
    return length < 0 ? 0 : std::min(static_cast<size_t>(length), room - 1);
}

} // namespace

int ky_log(uint32_t severity_mask, const char* module, const char* format, ...)
{
    // Processes may share standard error: a pipe takes this many bytes atomically.
    char record[PIPE_BUF];
    size_t length = kept(
        snprintf(record, sizeof record, "%-7s %s: ", level_name(severity_mask), module),
        sizeof record);
    va_list arguments;
    va_start(arguments, format);
    length += kept(
        vsnprintf(record + length, sizeof record - length, format, arguments),
        sizeof record - length);
    va_end(arguments);
    if (length == 0 || record[length - 1] != '\n') {
        record[length++] = '\n';
    }
    fwrite(record, 1, length, stderr);
    return 0;
}

int ky_trace_cbuff_log(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    {
        const Locked locked(trace_buffer.lock);
        char* text = trace_buffer.texts[trace_buffer.written++ % KY_TRACE_CBUFF_RECORDS];
        vsnprintf(text, KY_TRACE_CBUFF_TEXT, format, arguments);
    }
    va_end(arguments);
    return 0;
}

void ky_trace_cbuff_dump(FILE* stream)
{
    const Locked locked(trace_buffer.lock);
    const uint64_t end = trace_buffer.written;
    for (uint64_t i = end > KY_TRACE_CBUFF_RECORDS ? end - KY_TRACE_CBUFF_RECORDS : 0; i < end;
         i++) {
        const char* text = trace_buffer.texts[i % KY_TRACE_CBUFF_RECORDS];
        fputs(text, stream);
        if (!ends_line(text)) {
            fputc('\n', stream);
        }
    }
}

void dbg_utils_print_module_header(FILE* stream, const char* title)
{
    fprintf(stream, "\n%s\n", title);
}

void dbg_utils_print_table_headline(FILE* stream, const dbg_utils_column_t* columns)
{
    for (; columns->kind != DBG_UTILS_KIND_END; columns++) {
        fprintf(stream, "%-*s ", static_cast<int>(columns->width), columns->title);
    }
    fputc('\n', stream);
}

void dbg_utils_print_table_data_line(FILE* stream, const dbg_utils_column_t* columns)
{
    for (; columns->kind != DBG_UTILS_KIND_END; columns++) {
        const int width = static_cast<int>(columns->width);
        switch (columns->kind) {
        case DBG_UTILS_KIND_UINT32:
            fprintf(stream, "%-*" PRIu32 " ", width, *static_cast<const uint32_t*>(columns->value));
            break;
        case DBG_UTILS_KIND_UINT64:
            fprintf(stream, "%-*" PRIu64 " ", width, *static_cast<const uint64_t*>(columns->value));
            break;
        case DBG_UTILS_KIND_STRING:
            fprintf(stream, "%-*s ", width, static_cast<const char*>(columns->value));
            break;
        default:
            fprintf(stream, "%-*s ", width, "?");
            break;
        }
    }
    fputc('\n', stream);
}
