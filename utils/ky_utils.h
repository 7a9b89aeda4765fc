/* The services that every SDK module uses: function traces, argument checks, library settings.
 *
 * None needs an initialisation, all may be called from any thread at any time, and what they log
 * they log under module "UTILS". */
#ifndef KY_UTILS_H
#define KY_UTILS_H

#include "ky_common.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Function traces and verbosity ---- */

/** Writes an entry record under "UTILS", if function traces are on and its verbosity is 5 or more.
 *
 *  @param function_name  the function that was entered; a string that need live for the call only
 */
KY_EXPORT void utils_ky_log_enter(const char* function_name);

/** Writes an exit record under "UTILS", if function traces are on and its verbosity is 5 or more.
 *
 *  The argument checks below, but for utils_check_msg_size, return through it when they fail, so a
 *  process that puts a function of this name in front of the library sees each failure.
 *
 *  @param status         what the function is about to return
 *  @param function_name  the function that is left; a string that need live for the call only
 *  @return               status, unchanged
 */
KY_EXPORT ky_status_t utils_ky_log_exit(ky_status_t status, const char* function_name);

/** Sets the verbosity of module "UTILS", 3 at load.
 *
 *  Traces its entry at the old level and its exit at the new one.
 *
 *  @param level  0 (silent) to 8 (all); a larger level is stored too and prints all
 *  @return       KY_STATUS_SUCCESS
 */
KY_EXPORT ky_status_t utils_log_verbosity_level_set(uint32_t level);

/* ---- Argument checks ----
 *
 * Each returns KY_STATUS_SUCCESS, and logs nothing, for a value that is acceptable. Otherwise it
 * logs one error message that names the value and what would be accepted, and returns the status
 * given with it; but for utils_check_msg_size it returns through utils_ky_log_exit. A value wider
 * than its argument is cut to the argument's width. A description may be null. */

/** Checks that a pointer is not null.
 *
 *  @param pointer      any pointer; it is not followed
 *  @param description  what the pointer is, for the message, or null
 *  @return             KY_STATUS_PARAM_NULL if the pointer is null
 */
KY_EXPORT ky_status_t utils_check_pointer(const void* pointer, const char* description);

/** Checks a verbosity level.
 *
 *  @param level  0 to 8
 *  @return       KY_STATUS_PARAM_EXCEEDS_RANGE for a larger one
 */
KY_EXPORT ky_status_t utils_check_verbosity_level(uint32_t level);

/** Checks that an array has elements.
 *
 *  @param length       number of elements, 1 or more
 *  @param description  what the array is, for the message, or null
 *  @return             KY_STATUS_PARAM_EXCEEDS_RANGE for length 0
 */
KY_EXPORT ky_status_t utils_check_array_length(uint32_t length, const char* description);

/** Checks that an array has a size.
 *
 *  @param size         size in bytes, 1 or more
 *  @param description  what the array is, for the message, or null
 *  @return             KY_STATUS_PARAM_EXCEEDS_RANGE for size 0
 */
KY_EXPORT ky_status_t utils_check_array_size(uint32_t size, const char* description);

/** Checks a multicast ID.
 *
 *  @param mc_id  1 to 65535
 *  @return       KY_STATUS_PARAM_EXCEEDS_RANGE for 0
 */
KY_EXPORT ky_status_t utils_check_mc_id(uint16_t mc_id);

/** Checks the ID of a spanning-tree (MSTP) instance.
 *
 *  @param mstp_inst_id  0 to 1024
 *  @return              KY_STATUS_PARAM_EXCEEDS_RANGE for a larger one
 */
KY_EXPORT ky_status_t utils_check_mstp_inst_id(uint16_t mstp_inst_id);

/** Checks the state of a port in a spanning-tree (MSTP) instance.
 *
 *  @param port_state  1 (Discarding) to 3 (Forwarding)
 *  @return            KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
KY_EXPORT ky_status_t utils_check_mstp_inst_port_state(uint32_t port_state);

/** Checks a switch partition ID.
 *
 *  @param swid  0 to 7, or 254, which the message does not mention
 *  @return      KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
KY_EXPORT ky_status_t utils_check_swid(uint8_t swid);

/** Checks the administrative state of a port.
 *
 *  @param admin_state  1 (Up) or 2 (Down)
 *  @return             KY_STATUS_PARAM_EXCEEDS_RANGE for any other, negative ones included
 */
KY_EXPORT ky_status_t utils_check_port_admin_state(int32_t admin_state);

/** Checks a device ID.
 *
 *  @param device_id  1 to 253
 *  @return           KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
KY_EXPORT ky_status_t utils_check_device_id(uint8_t device_id);

/** Checks the type of a device's node in the topology.
 *
 *  @param node_type  0 (ALL) to 5 (HYBRID)
 *  @return           KY_STATUS_PARAM_EXCEEDS_RANGE for any other, negative ones included
 */
KY_EXPORT ky_status_t utils_check_device_node_type(int32_t node_type);

/** Checks the size of a message. It never writes an exit record.
 *
 *  @param size   size in bytes, 1 to limit
 *  @param limit  the largest size accepted, in bytes
 *  @return       KY_STATUS_MESSAGE_SIZE_ZERO for size 0, whatever the limit;
 *                KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT for a size above the limit
 */
KY_EXPORT ky_status_t utils_check_msg_size(uint32_t size, uint32_t limit);

/* ---- Settings ----
 *
 * Kept for the SDK's components, for the life of the process; the library itself does not act on
 * them. A get that runs beside a set yields the value before or after it. All but
 * utils_boot_mode_get trace their entry and exit. */

/** Sets the use-XM flag, 0 at load.
 *
 *  @param use_xm  any value
 *  @return        KY_STATUS_SUCCESS
 */
KY_EXPORT ky_status_t utils_use_xm_set(uint32_t use_xm);

/** Gets the use-XM flag.
 *
 *  @param[out] use_xm_p  receives the flag; untouched on failure
 *  @return               KY_STATUS_SUCCESS, or KY_STATUS_PARAM_NULL if use_xm_p is null
 */
KY_EXPORT ky_status_t utils_use_xm_get(uint32_t* use_xm_p);

/** Sets the boot mode, 0 ("Disabled") at load. `ky_boot_mode_str` gives the modes their names.
 *
 *  @param boot_mode  0 to 5
 *  @return           KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger mode; the
 *                    mode then stays as it was
 */
KY_EXPORT ky_status_t utils_boot_mode_set(uint32_t boot_mode);

/** Gets the boot mode. For a null pointer it logs a message of its own after the check's.
 *
 *  @param[out] boot_mode_p  receives the mode; untouched on failure
 *  @return                  KY_STATUS_SUCCESS, or KY_STATUS_PARAM_NULL if boot_mode_p is null
 */
KY_EXPORT ky_status_t utils_boot_mode_get(uint32_t* boot_mode_p);

#ifdef __cplusplus
}
#endif

#endif
