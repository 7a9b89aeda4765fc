/** @file
 * The types of port that API functions of the SDK accept.
 *
 * An API function checks the logical port that it is called with against its row of the table:
 *
 *     if (!is_port_type_valid(KY_PORT_ROW_COS_PORT_DEFAULT_PRIO_SET, log_port)) {
 *         return KY_STATUS_PARAM_ERROR;
 *     }
 */
#ifndef KY_PORT_TYPE_VALIDATE_H
#define KY_PORT_TYPE_VALIDATE_H

#include "ky_common.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The number of rows of port_type_validation_table, with its two sentinels. */
#define PORT_TYPE_VALIDATION_ROWS 174

/** A row of port_type_validation_table. */
typedef struct port_type_validation_entry {
    const char* func_name;      /**< name of the API function; the library does not read it */
    uint8_t allowed_port_types; /**< KY_PORT_TYPE_BIT_ of each type of port that it accepts */
} port_type_validation_entry_t;

/** The API functions, and the types of port that each accepts.
 *
 *  The library reads the table in is_port_type_valid, and does not write it. A caller that writes
 *  it must do so while no check runs. Rows 0 and 173 are sentinels that accept nothing;
 *  is_port_type_valid lists the others, and `kriolilglu port` prints them.
 */
extern port_type_validation_entry_t port_type_validation_table[PORT_TYPE_VALIDATION_ROWS];

/** Checks that an API function accepts the type of a port. A refusal logs one error message. The
 *  function traces entry and exit, and is thread-safe. These are the rows:
 *
 *  @table port
 *
 *  @param enum_id   the API function's row, 1 to 172, a KY_PORT_ROW_ constant of `ky_values.h`
 *  @param log_port  logical port ID; bits 31 to 28 are the type, a `ky_port_type_t`, and the others
 *                   are ignored
 *  @return          1 if the type is accepted; 0, not a status, if it is not or enum_id is no row
 */
uint32_t is_port_type_valid(uint32_t enum_id, uint32_t log_port);

/** Sets the verbosity of module "PORT_TYPE_VALIDATE", which is 3 at load.
 *
 *  It traces entry at the old level and exit at the new one, and is thread-safe.
 *
 *  @param level  0 (silent) to 8 (everything); a higher level is stored, and prints everything
 *  @return       KY_STATUS_SUCCESS
 */
ky_status_t port_type_validate_log_verbosity_level_set(uint32_t level);

#ifdef __cplusplus
}
#endif

#endif
