#include "peers.h"

#include <ky_port_type_validate.h>

boost::outcome_v2::result<void> peer_check(uint8_t device_id)
{
    if (device_id - 1U >= 253U) {
        return boost::system::errc::make_error_code(boost::system::errc::result_out_of_range);
    }
    return boost::outcome_v2::success();
}

uint32_t peer_port_type(uint32_t enum_id, uint32_t log_port)
{
    if (enum_id - 1 >= 172) {
        return 0;
    }
    const uint32_t allowed = port_type_validation_table[enum_id].allowed_port_types;
    switch (log_port >> 28) {
    case 0:
        return (allowed & 0x01) != 0;
    case 1:
        return (allowed & 0x02) != 0;
    case 2:
        return (allowed & 0x04) != 0;
    case 3:
        return (allowed & 0x08) != 0;
    case 4:
        return (allowed & 0x20) != 0;
    case 8:
        return (allowed & 0x10) != 0;
    default:
        return 0;
    }
}
