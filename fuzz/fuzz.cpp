#include "fuzz.h"

#include "allocation.h"

#include <ky_adviser.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <utility>

static uint32_t errors;

void broken(const char* file, int line, const char* condition)
{
    fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, condition);
    abort();
}

uint32_t take_errors()
{
    return std::exchange(errors, 0);
}

int ky_log(uint32_t severity_mask, const char*, const char* format, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);

    REQUIRE(length > 0 && length < static_cast<int>(sizeof text) && text[length - 1] == '\n');
    REQUIRE(locks_held() == 0);
    errors += severity_mask == KY_LOG_MASK_ERROR;
    return 0;
}

int ky_trace_cbuff_log(const char*, ...)
{
    return 0;
}

uint32_t choose_verbosity(Input& input)
{
    uint32_t level = input.one_of({3U, 3U, 0U, 1U, 5U, 8U, 0xFFFFFFFFU});
    KY_STORE(g_ky_log_module_func_enable, 0);
    utils_log_verbosity_level_set(level);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    KY_STORE(g_ky_log_module_func_enable, input.once_in(2) ? 1 : 0);
    take_errors();
    return level;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input input(data, size);
    run(input);
    return 0;
}
