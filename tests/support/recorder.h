/* A recorder that interposes the logging library: it keeps what each log statement writes. */
#ifndef RECORDER_H
#define RECORDER_H

#include <ky_common.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/* A log statement, which is one record in each sink; or, with mask 0, a line of a table or a return
 * through utils_ky_log_exit. */
struct LogRecord {
    uint32_t mask;
    std::string function; // that it names; in a row, empty for the function called
    std::string text;
    bool is_trace = false;   // in a row: needs the trace flag, too
    std::string module = {}; // from debug level on with the source; set by filtered()
    bool operator==(const LogRecord&) const = default;
};
using Log = std::vector<LogRecord>;

Log operator+(Log a, const Log& b);
void PrintTo(const LogRecord& record, std::ostream* stream);

/* Runs at each record, for a sink that does more than write it. */
extern std::function<void()> at_record;

/* The records since the last call. */
Log take_log();

/* One record; without a function, of the one that is called. */
inline Log error(const std::string& text, const std::string& function = {})
{
    return {{KY_LOG_MASK_ERROR, function, text}};
}
inline Log notice(const std::string& text, const std::string& function = {})
{
    return {{KY_LOG_MASK_NOTICE, function, text}};
}
inline Log debug(const std::string& text, const std::string& function = {})
{
    return {{KY_LOG_MASK_DEBUG, function, text}};
}
inline Log entry_trace(const std::string& function)
{
    return {{KY_LOG_MASK_DEBUG, function, function + " - entered \n", true}};
}
inline Log exit_trace(const std::string& function)
{
    return {{KY_LOG_MASK_DEBUG, function, function + " - left \n", true}};
}
/* Entry trace, the function's records, exit trace. */
Log traced(const std::string& function, Log within = {});
/* The return of a failure through utils_ky_log_exit, and its exit trace. */
Log failure_trace(const std::string& function);
/* What utils_check_pointer logs about a null pointer. */
Log null_pointer(const std::string& description);

/* The records that pass in a module at a verbosity and a trace flag. */
Log filtered(
    Log log, const std::string& module, const std::string& source, uint32_t verbosity,
    int32_t flag);

/* For all modules; logs nothing. */
void set_verbosity_and_flag(uint32_t verbosity, int32_t flag);

/* The recorder sets this bit in a status that returns through utils_ky_log_exit, while this is set
 * in the thread. */
constexpr uint32_t THROUGH_EXIT = 0x40000000;
extern constinit thread_local bool marks_exit;

__attribute__((format(printf, 1, 2))) std::string formatted(const char* format, ...);

#endif
