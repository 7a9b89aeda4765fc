#include "recorder.h"

#include "allocation.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cinttypes>
#include <cstdarg>
#include <dlfcn.h>
#include <mutex>
#include <string_view>
#include <utility>

std::function<void()> at_record;
constinit thread_local bool marks_exit = false;

namespace {

std::mutex lock;
Log recorded;
thread_local LogRecord pending; // in ky_log, not yet in the trace buffer
thread_local int pending_line;  // 0 without a prefix

void record(const LogRecord& record)
{
    EXPECT_EQ(locks_held(), 0) << record.text;
    if (at_record) {
        at_record();
    }
    const std::lock_guard guard(lock);
    recorded.push_back(record);
}

__attribute__((format(printf, 1, 0))) std::string vformatted(const char* format, va_list arguments)
{
    char buffer[1024];
    vsnprintf(buffer, sizeof buffer, format, arguments);
    return buffer;
}

bool skip(const char*& format, std::string_view prefix)
{
    const bool is_there = std::string_view(format).starts_with(prefix);
    format += is_there ? prefix.size() : 0;
    return is_there;
}

} // namespace

int ky_log(uint32_t severity_mask, const char* module, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    EXPECT_EQ(pending.text, "") << "did not reach the trace buffer";
    pending = {severity_mask, "", "", false, module};
    pending_line = 0;
    if (skip(format, "%s[%d]- %s: ")) {
        pending.module += std::string(" ") + va_arg(arguments, const char*);
        pending_line = va_arg(arguments, int);
        pending.function = va_arg(arguments, const char*);
    }
    pending.text = vformatted(format, arguments);
    va_end(arguments);
    return -1; // callers must ignore it
}

int ky_trace_cbuff_log(const char* format, ...)
{
    static const char* const levels[] = {"NONE   ", "ERROR  ", "WARN   ", "NOTICE ", "INFO   ",
                                         "DEBUG  ", "FUNCS  ", "FRAMES ", "ALL    ", "UNKNOWN"};
    va_list arguments;
    va_start(arguments, format);
    EXPECT_TRUE(skip(format, "[%s] [%s] - %s[%d]: "));
    EXPECT_STREQ(va_arg(arguments, const char*), levels[std::min(std::popcount(pending.mask), 9)]);
    EXPECT_EQ(va_arg(arguments, const char*), pending.module.substr(0, pending.module.find(' ')));
    const std::string function = va_arg(arguments, const char*);
    const int line = va_arg(arguments, int);
    EXPECT_EQ(vformatted(format, arguments), pending.text);
    va_end(arguments);
    const bool is_in_one_place = line == pending_line && function == pending.function;
    EXPECT_TRUE(line > 0 && (pending_line == 0 || is_in_one_place));
    pending.function = function;
    record(std::exchange(pending, {}));
    return -1;
}

ky_status_t utils_ky_log_exit(ky_status_t status, const char* function_name)
{
    static const auto library_exit =
        reinterpret_cast<decltype(&utils_ky_log_exit)>(dlsym(RTLD_NEXT, "utils_ky_log_exit"));
    record({0, "", std::string("fails in ") + function_name});
    return static_cast<ky_status_t>(
        library_exit(status, function_name) | (marks_exit ? THROUGH_EXIT : 0));
}

void dbg_utils_print_module_header(FILE* stream, const char* title)
{
    record({0, "", formatted("%p header %s", static_cast<void*>(stream), title)});
}

void dbg_utils_print_table_headline(FILE* stream, const dbg_utils_column_t* columns)
{
    std::string line = formatted("%p headline", static_cast<void*>(stream));
    for (; columns->kind != DBG_UTILS_KIND_END; columns++) {
        line += formatted(" %s:%u", columns->title, columns->width);
    }
    record({0, "", line});
}

void dbg_utils_print_table_data_line(FILE* stream, const dbg_utils_column_t* columns)
{
    std::string line = formatted("%p data", static_cast<void*>(stream));
    for (; columns->kind != DBG_UTILS_KIND_END; columns++) {
        const void* value = columns->value;
        line += columns->kind == DBG_UTILS_KIND_STRING
                    ? formatted(" %s", static_cast<const char*>(value))
                : columns->kind == DBG_UTILS_KIND_UINT32
                    ? formatted(" %u", *static_cast<const uint32_t*>(value))
                    : formatted(" %" PRIu64, *static_cast<const uint64_t*>(value));
    }
    record({0, "", line});
}

Log take_log()
{
    const std::lock_guard guard(lock);
    EXPECT_EQ(pending.text, "") << "did not reach the trace buffer";
    return std::exchange(recorded, {});
}

void set_verbosity_and_flag(uint32_t verbosity, int32_t flag)
{
    KY_STORE(g_ky_log_module_func_enable, 0);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &verbosity);
    utils_log_verbosity_level_set(verbosity);
    port_type_validate_log_verbosity_level_set(verbosity);
    ky_router_utils_log_verbosity_set(verbosity);
    KY_STORE(g_ky_log_module_func_enable, flag);
}

std::string formatted(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string result = vformatted(format, arguments);
    va_end(arguments);
    return result;
}

Log operator+(Log a, const Log& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

void PrintTo(const LogRecord& record, std::ostream* stream)
{
    *stream << record.mask << " " << record.module << " " << record.function << ": " << record.text;
}

Log traced(const std::string& function, Log within)
{
    for (LogRecord& record : within) {
        if (record.function.empty() && record.mask != 0) {
            record.function = function;
        }
    }
    return entry_trace(function) + within + exit_trace(function);
}

Log failure_trace(const std::string& function)
{
    return {
        {0, "", "fails in " + function},
        {KY_LOG_MASK_DEBUG, "utils_ky_log_exit", function + " - left\n", true}};
}

Log null_pointer(const std::string& description)
{
    return error("NULL Pointer (" + description + ")\n", "utils_check_pointer") +
           failure_trace("utils_check_pointer");
}

Log filtered(
    Log log, const std::string& module, const std::string& source, uint32_t verbosity, int32_t flag)
{
    std::erase_if(log, [=](const LogRecord& record) {
        const auto level = static_cast<uint32_t>(std::popcount(record.mask));
        return level > verbosity || (record.is_trace && flag == 0);
    });
    for (LogRecord& record : log) {
        record.is_trace = false;
        record.module = record.mask >= KY_LOG_MASK_DEBUG
                            ? formatted("%s %s", module.c_str(), source.c_str())
                        : record.mask != 0 ? module
                                           : "";
    }
    return log;
}
