/* The request about the dictionary of port types. */
#include "request.h"

#include <ky_port_type_validate.h>

#define TYPE_SHIFT 28

static bool answer_row(uint32_t row, const char* prefix)
{
    answer(
        "%s%s accepts %s", prefix, value_text("port_row", row),
        port_type_bit_name(port_type_validation_table[row].allowed_port_types));
    return true;
}

/* Lists the functions that accept a type of these bits. */
static bool answer_rows(uint32_t bits)
{
    is_refused = true;
    for (uint32_t row = 1; row < PORT_TYPE_VALIDATION_ROWS - 1; row++) {
        if ((port_type_validation_table[row].allowed_port_types & bits) != 0) {
            is_refused = !answer_row(row, "");
        }
    }
    return !is_refused || !report("no function accepts it");
}

/* The first word is a number, a type of port or, alone, a function. */
bool answer_port(const request_t* request)
{
    const char* word = request->text[0];
    uint32_t row = request->value[1];
    uint32_t port = 0;
    if (request->count == 0) {
        return answer_rows(UINT32_MAX);
    }
    const bool is_number = number_in(word) != NO_NUMBER;
    if (request->count == 1 && !is_number && !find_value("port_type", word, &port)) {
        return read_value("port_row", word, &row) && answer_row(row, "");
    }
    if (!read_value(is_number ? "UINT32" : "port_type", word, &port)) {
        return false;
    }
    port <<= is_number ? 0 : TYPE_SHIFT;
    if (request->count == 1) {
        answer("port_type %s", value_text("port_type", port >> TYPE_SHIFT));
        return answer_rows(port_type_bits[port >> TYPE_SHIFT]);
    }
    is_refused = is_port_type_valid(row, port) == 0;
    return answer_row(row, is_refused ? "refused: " : "accepted: ");
}
