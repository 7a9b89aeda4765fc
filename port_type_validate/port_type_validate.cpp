// The dictionary of accepted port types and its check: module "PORT_TYPE_VALIDATE".
#include "ky_port_type_validate.h"

#include "ky_names.h"

#include <iterator>

#define KY_LOG_MODULE "PORT_TYPE_VALIDATE"
#define KY_LOG_VERBOSITY port_type_validate_verbosity_level

namespace {

constinit uint32_t port_type_validate_verbosity_level = KY_LOG_LEVEL_DEFAULT;

/* The types of port as a row lists them. Their bits do not follow the values of the types. */
enum PortTypes : uint8_t {
    none = 0,
    network = 1 << 0,
    lag = 1 << 1,
    vport = 1 << 2,
    vlag = 1 << 3,
    nve = 1 << 4,
    cpu = 1 << 5,
};

consteval PortTypes operator|(PortTypes a, PortTypes b)
{
    return static_cast<PortTypes>(uint8_t{a} | uint8_t{b});
}

/* The bit of each type that bits 31 to 28 of a logical port can name. */
constexpr PortTypes bit_of_port_type[16] = {network, lag, vport, vlag, cpu, none, none, none, nve};

constexpr uint32_t ENUM_ID_MIN = 1;
constexpr uint32_t ENUM_ID_MAX = PORT_TYPE_VALIDATION_ROWS - 2;

/* The rows once more, for the compiler to check: one that is lost or bare fails the build. */
constexpr port_type_validation_entry_t rows[] = {
#include "port_type_validation_table.def"
};

consteval bool only_sentinels_accept_nothing()
{
    for (uint32_t id = 0; id < PORT_TYPE_VALIDATION_ROWS; id++) {
        const bool is_sentinel = id < ENUM_ID_MIN || id > ENUM_ID_MAX;
        if (is_sentinel != (rows[id].allowed_port_types == none)) {
            return false;
        }
    }
    return true;
}

static_assert(std::size(rows) == PORT_TYPE_VALIDATION_ROWS);
static_assert(only_sentinels_accept_nothing());

} // namespace

constinit port_type_validation_entry_t port_type_validation_table[] = {
#include "port_type_validation_table.def"
};

namespace {

bool is_enum_id(uint32_t enum_id)
{
    return enum_id >= ENUM_ID_MIN && enum_id <= ENUM_ID_MAX;
}

PortTypes bit_of(uint32_t log_port)
{
    return bit_of_port_type[log_port >> 28];
}

bool accepts(uint32_t enum_id, PortTypes bit)
{
    return (port_type_validation_table[enum_id].allowed_port_types & bit) != 0;
}

/* The check with all that can be seen of it: traces, and what is wrong. The records name it, so it
 * is called as the exported one is. */
namespace aloud {

[[gnu::noinline]] uint32_t is_port_type_valid(uint32_t enum_id, uint32_t log_port)
{
    KY_TRACE_FUNCTION();

    if (!is_enum_id(enum_id)) {
        return KY_FAIL(
            0U, "enum_id invalid (Enum id %d is not included in port validation dictionary)\n",
            enum_id);
    }
    const ky_port_type_t port_type = log_port >> 28;
    const PortTypes bit = bit_of(log_port);
    if (bit == none) {
        return KY_FAIL(
            0U, "Port 0x%08X invalid (Port type is (%s))\n", log_port, ky_port_type_str(port_type));
    }
    if (accepts(enum_id, bit)) {
        return 1;
    }
    if (bit == network) {
        return KY_FAIL(
            0U, "Port 0x%08X invalid (Port type %s is unsupported)\n", log_port,
            ky_port_type_str(port_type));
    }
    return KY_FAIL(
        0U, "Port 0x%08X invalid (Port type(%s) is unsupported)\n", log_port,
        ky_port_type_str(port_type));
}

} // namespace aloud
} // namespace

uint32_t is_port_type_valid(uint32_t enum_id, uint32_t log_port)
{
    // A port that passes without an entry trace is answered at once: no frame, a third less to do.
    if (!KY_TRACE_WANTED() && is_enum_id(enum_id) && accepts(enum_id, bit_of(log_port))) {
        return KY_TRACE_RESULT(__func__, 1U);
    }
    return aloud::is_port_type_valid(enum_id, log_port);
}

ky_status_t port_type_validate_log_verbosity_level_set(uint32_t level)
{
    KY_TRACE_FUNCTION();
    KY_STORE(port_type_validate_verbosity_level, level);
    return KY_STATUS_SUCCESS;
}
