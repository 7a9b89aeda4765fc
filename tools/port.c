/* The request about the dictionary of port types. */
#include "names.h"
#include "output.h"
#include "request.h"

#include <ky_names.h>
#include <ky_port_type_validate.h>

#include <inttypes.h>

#define TYPE_SHIFT 28

static const char* accepted_types(uint32_t row)
{
    return port_types(port_type_validation_table[row].allowed_port_types);
}

bool answer_port(const request_t* request)
{
    const uint32_t log_port = request->value[0];
    const uint32_t type = log_port >> TYPE_SHIFT;
    uint32_t row = request->value[1];
    if (request->count == 2) {
        is_refused = is_port_type_valid(row, log_port) == 0;
        answer(
            "%s: row %" PRIu32 " %s accepts %s", is_refused ? "refused" : "accepted", row,
            port_row_name(row), accepted_types(row));
        return true;
    }
    if (request->count == 1) {
        answer("type %" PRIu32 " %s", type, ky_port_type_str(type));
    }
    is_refused = true; /* until a function accepts it */
    for (row = 1; row < PORT_TYPE_VALIDATION_ROWS - 1; row++) {
        const uint32_t bits = port_type_validation_table[row].allowed_port_types;
        if (request->count == 0 || (bits & port_type_bit(type)) != 0) {
            answer("%" PRIu32 " %s: %s", row, port_row_name(row), port_types(bits));
            is_refused = false;
        }
    }
    if (is_refused) {
        answer("no function accepts it");
    }
    return true;
}
