#include "fuzz.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>

#include <bit>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

uint32_t errors;
uint32_t verbosity;               // of all modules
std::vector<std::string> entered; // functions, innermost last
bool is_first_sink_next = true;

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments)
{
    char text[1024];
    const int length = vsnprintf(text, sizeof text, format, arguments);
    REQUIRE(length > 0 && length < static_cast<int>(sizeof text));
    return text;
}

/* Whether a trace ends in this, and if so of which function it is. */
bool is_trace(const std::string& text, const std::string& end, std::string* function)
{
    const size_t at = text.size() < end.size() ? 0 : text.size() - end.size();
    if (text.compare(at, end.size(), end) != 0) {
        return false;
    }
    const size_t start = text.rfind(' ', at - 1) + 1;
    *function = text.substr(start, at - start);
    return true;
}

} // namespace

void broken(const char* file, int line, const char* condition)
{
    fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, condition);
    abort();
}

uint32_t take_errors()
{
    return std::exchange(errors, 0);
}

bool traces_are_balanced()
{
    return entered.empty();
}

int ky_log(uint32_t severity_mask, const char*, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);

    REQUIRE(std::exchange(is_first_sink_next, false));
    REQUIRE(text.back() == '\n');
    REQUIRE(std::popcount(severity_mask) <= int64_t{verbosity}); // the level of a mask
    errors += severity_mask == KY_LOG_MASK_ERROR;
    std::string function;
    if (is_trace(text, " - entered \n", &function)) {
        if (function != "adviser_log_verbosity_level") { // which does not trace its exit
            entered.push_back(function);
        }
    } else if (is_trace(text, " - left \n", &function)) {
        if (function != "utils_qmap_is_empty") { // which does not trace its entry
            REQUIRE(!entered.empty() && entered.back() == function);
            entered.pop_back();
        }
    }
    return 0;
}

int ky_trace_cbuff_log(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    formatted(format, arguments);
    va_end(arguments);
    REQUIRE(!std::exchange(is_first_sink_next, true));
    return 0;
}

uint32_t choose_verbosity(Input& input)
{
    uint32_t level = input.PickValueInArray<uint32_t>({3, 3, 0, 1, 5, 8, 0xFFFFFFFF});
    KY_STORE(g_ky_log_module_func_enable, 0);
    utils_log_verbosity_level_set(level);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    ky_router_utils_log_verbosity_set(level);
    port_type_validate_log_verbosity_level_set(level);
    KY_STORE(g_ky_log_module_func_enable, input.ConsumeBool() ? 1 : 0);
    take_errors();
    verbosity = level;
    return level;
}

ky_status_t checked(
    uint32_t level, std::initializer_list<ky_status_t> failures,
    const std::function<ky_status_t()>& call)
{
    const ky_status_t status = call();
    const bool fails = status != KY_STATUS_SUCCESS;
    REQUIRE(!fails || std::ranges::count(failures, status) == 1);
    REQUIRE(take_errors() == (fails && level > 0 ? 1 : 0));
    REQUIRE(traces_are_balanced());
    REQUIRE(is_first_sink_next);
    return status;
}
