#include "fuzz.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>

#include <bit>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

uint32_t errors;
uint32_t verbosity;               // of all modules
std::vector<std::string> entered; // functions, innermost last
bool is_first_sink_next = true;

/* The function of a trace that ends in this; nothing for another text. */
std::string_view traced(std::string_view text, std::string_view end)
{
    if (!text.ends_with(end)) {
        return {};
    }
    text.remove_suffix(end.size());
    return text.substr(text.rfind(' ') + 1);
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
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);

    REQUIRE(std::exchange(is_first_sink_next, false));
    REQUIRE(length > 0 && length < static_cast<int>(sizeof text) && text[length - 1] == '\n');
    REQUIRE(std::popcount(severity_mask) <= int64_t{verbosity}); // the level of a mask
    errors += severity_mask == KY_LOG_MASK_ERROR;
    const std::string_view function = traced({text, static_cast<size_t>(length)}, " - entered \n");
    if (!function.empty() && function != "adviser_log_verbosity_level") { // no trace of its exit
        entered.emplace_back(function);
    }
    const std::string_view left = traced({text, static_cast<size_t>(length)}, " - left \n");
    if (!left.empty() && left != "utils_qmap_is_empty") { // no trace of its entry
        REQUIRE(!entered.empty() && entered.back() == left);
        entered.pop_back();
    }
    return 0;
}

int ky_trace_cbuff_log(const char*, ...)
{
    REQUIRE(!std::exchange(is_first_sink_next, true));
    return 0;
}

uint32_t choose_verbosity(Input& input)
{
    uint32_t level = input.one_of({3U, 3U, 0U, 1U, 5U, 8U, 0xFFFFFFFFU});
    KY_STORE(g_ky_log_module_func_enable, 0);
    utils_log_verbosity_level_set(level);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    ky_router_utils_log_verbosity_set(level);
    port_type_validate_log_verbosity_level_set(level);
    KY_STORE(g_ky_log_module_func_enable, input.once_in(2) ? 1 : 0);
    take_errors();
    verbosity = level;
    return level;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input input(data, size);
    run(input);
    REQUIRE(traces_are_balanced() && is_first_sink_next);
    return 0;
}
