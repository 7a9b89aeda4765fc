#include "recorder.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <cstdarg>
#include <cstring>
#include <mutex>
#include <utility>

namespace {

std::mutex lock;
Records records;
thread_local int line_of_log; // of the ky_log record written last, 0 if it has none

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments)
{
    char text[1024];
    vsnprintf(text, sizeof text, format, arguments);
    return text;
}

/* Takes the line number out of "...[LINE]..." and returns it. */
int take_line(std::string& text, size_t open)
{
    const size_t close = text.find(']', open);
    const int line = std::stoi(text.substr(open + 1, close - open - 1));
    text.replace(open + 1, close - open - 1, "L");
    return line;
}

} // namespace

int ky_log(uint32_t severity_mask, const char* module, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);

    const std::lock_guard guard(lock);
    const bool prefixed = strncmp(format, "%s[%d]- %s: ", 12) == 0;
    line_of_log = prefixed ? take_line(text, text.find('[')) : 0;
    records.push_back("log " + std::to_string(severity_mask) + " " + module + ": " + text);
    return -1; // nobody may care
}

int ky_trace_cbuff_log(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);

    const std::lock_guard guard(lock);
    if (strncmp(format, "[%s] [%s] - %s[%d]: ", 20) == 0) {
        const int line = take_line(text, text.find('[', text.find("] - ")));
        EXPECT_GT(line, 0);
        EXPECT_TRUE(line_of_log == 0 || line_of_log == line) << text;
    }
    records.push_back("trace: " + text);
    return -1;
}

Records take_records()
{
    const std::lock_guard guard(lock);
    return std::exchange(records, {});
}

Records Module::said(uint32_t mask, const std::string& function, const std::string& text) const
{
    static const char* const levels[] = {"NONE   ", "ERROR  ", "WARN   ", "NOTICE ", "INFO   ",
                                         "DEBUG  ", "FUNCS  ", "FRAMES ", "ALL    ", "UNKNOWN"};
    const std::string level = levels[__builtin_popcount(mask)];
    const std::string source = std::string(file_) + "[L]- " + function + ": ";
    return {
        "log " + std::to_string(mask) + " " + name_ + ": " + (mask >= 31 ? source : "") + text,
        "trace: [" + level + "] [" + name_ + "] - " + function + "[L]: " + text};
}

Records Module::entered(const std::string& function) const
{
    return said(31, function, function + " - entered \n");
}

Records Module::left(const std::string& function) const
{
    return said(31, function, function + " - left \n");
}

Records Module::around(const std::string& function, const Records& within) const
{
    return entered(function) + within + left(function);
}

Records operator+(Records a, const Records& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

void Fingerprint::add(const char* text)
{
    do {
        value_ = (value_ ^ static_cast<unsigned char>(*text)) * 0x100000001b3;
    } while (*text++ != '\0');
}

static void be_silent()
{
    uint32_t level = KY_LOG_LEVEL_DEFAULT;
    KY_STORE(g_ky_log_module_func_enable, 0);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
    port_type_validate_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
    ky_router_utils_log_verbosity_set(KY_LOG_LEVEL_DEFAULT);
    take_records();
}

void RecordedTest::SetUp()
{
    be_silent();
}

void RecordedTest::TearDown()
{
    be_silent();
}
