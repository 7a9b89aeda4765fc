// The same module as C++, with what only C++ has, and names that a consumer may use.
extern "C" {
#include "consumer.c"
}

struct limits {
    static const uint32_t largest = 10; // not defined: a log statement takes it by value
};

uint32_t consume_again(uint32_t function, uint32_t arguments)
{
    KY_TRACE_FUNCTION();
    const auto within = [] {
        KY_TRACE_FUNCTION();
        return KY_FAIL(KY_STATUS_ERROR, "within\n");
    };
    within();
    return KY_FAIL(function, "%u %u %u\n", function, arguments, limits::largest);
}
