// The check of a port's type, beside what the dictionary says.
#include "fuzz.h"

#include <ky_port_type_validate.h>

#include <array>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const auto table = std::to_array(port_type_validation_table);
    static const uint8_t bits[16] = {0x01, 0x02, 0x04, 0x08, 0x20, 0, 0, 0, 0x10};

    Input input(data, size);
    const uint32_t verbosity = choose_verbosity(input);
    const uint32_t row = input.ConsumeBool() ? input.ConsumeIntegralInRange<uint32_t>(0, 180)
                                             : input.ConsumeIntegral<uint32_t>();
    const auto port = input.ConsumeIntegral<uint32_t>();

    const uint32_t answer = is_port_type_valid(row, port);
    const bool is_row = row >= 1 && row < PORT_TYPE_VALIDATION_ROWS - 1;
    REQUIRE(answer == (is_row && (table[row].allowed_port_types & bits[port >> 28]) != 0));
    REQUIRE(take_errors() == (answer == 0 && verbosity > 0));
    REQUIRE(traces_are_balanced());
    REQUIRE(memcmp(port_type_validation_table, table.data(), sizeof table) == 0);
    return 0;
}
