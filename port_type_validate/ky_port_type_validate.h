/** @file
 * Which types of port the SDK's API functions accept, and the check that asks.
 *
 * An API function calls the check with its own row number and the logical port that it was given:
 *
 *     if (!is_port_type_valid(16, log_port)) {
 *         return KY_STATUS_PARAM_ERROR;
 *     }
 */
#ifndef KY_PORT_TYPE_VALIDATE_H
#define KY_PORT_TYPE_VALIDATE_H

#include "ky_common.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Number of rows of the dictionary, its two sentinels included. */
#define PORT_TYPE_VALIDATION_ROWS 174

/** A row of the dictionary. */
typedef struct port_type_validation_entry {
    /** The API function that the row stands for: static text, for readers of the table. */
    const char* func_name;
    /** The types of port that it accepts, one bit each: 0x01 Network, 0x02 LAG, 0x04 Vport,
     *  0x08 VLAG, 0x10 NVE, 0x20 CPU. */
    uint8_t allowed_port_types;
} port_type_validation_entry_t;

/** The dictionary: row `enum_id` is the API function's. Rows 0 and 173 are sentinels that accept
 *  nothing. The library only reads it; whoever writes it must see to it that no check runs. */
KY_EXPORT extern port_type_validation_entry_t port_type_validation_table[PORT_TYPE_VALIDATION_ROWS];

/** Checks that an API function accepts a port's type. A refusal logs one error message that says
 *  why. It traces entry and exit, and any thread may call it.
 *
 *  @param enum_id   row of the API function, 1 to 172
 *  @param log_port  logical port ID; bits 31 to 28 are the port's type, the others do not matter
 *  @return          1 if the function accepts the type; 0 if not, or if enum_id is not such a row
 */
KY_EXPORT uint32_t is_port_type_valid(uint32_t enum_id, uint32_t log_port);

/** Sets the verbosity of module "PORT_TYPE_VALIDATE", 3 at load.
 *
 *  Traces its entry at the old level and its exit at the new one. Any thread may call it.
 *
 *  @param level  0 (silent) to 8 (all); a larger level is stored too and prints all
 *  @return       KY_STATUS_SUCCESS
 */
KY_EXPORT ky_status_t port_type_validate_log_verbosity_level_set(uint32_t level);

#ifdef __cplusplus
}
#endif

#endif
