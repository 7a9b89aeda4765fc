/** @file
 * The services that every SDK module uses: function traces, argument checks, library settings,
 * accounted memory, and pools and maps with status codes.
 *
 * No function here needs an initialisation, and messages stand under module "UTILS". Any thread may
 * call any of them at any time, but for one pool or map the caller lets one thread at a time. A
 * pointer must not be null unless it is said what happens then. */
#ifndef KY_UTILS_H
#define KY_UTILS_H

#include "ky_common.h"

#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>
#include <complib/cl_spinlock.h>

#ifdef __cplusplus
extern "C" {
#endif

/** @name Function traces and verbosity
 *  @{ */

/** Writes an entry record under "UTILS", if function traces are on and its verbosity is 5 or more.
 *
 *  @param function_name  the function that was entered; a string that need live for the call only
 */
KY_EXPORT void utils_ky_log_enter(const char* function_name);

/** Writes an exit record under "UTILS", if function traces are on and its verbosity is 5 or more.
 *
 *  The argument checks (but for utils_check_msg_size), memory, pool set-up and database functions
 *  below return through it when they fail, so a process that puts a function of this name in front
 *  of the library sees each failure.
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

/** @} */

/** @name Argument checks
 *
 *  Each check logs nothing and returns KY_STATUS_SUCCESS for a value that is acceptable. Otherwise
 *  it logs one error message that names the value and what would be accepted, and returns the
 *  status given with it; but for utils_check_msg_size it returns through utils_ky_log_exit. A value
 *  wider than its argument is cut to the argument's width. A description may be null.
 *  @{ */

/** Checks that a pointer is not null.
 *
 *  @param pointer      any pointer; it is not followed
 *  @param description  what the pointer is, for the message, or null
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_NULL if the pointer is null
 */
KY_EXPORT ky_status_t utils_check_pointer(const void* pointer, const char* description);

/** Checks a verbosity level.
 *
 *  @param level  0 to 8
 *  @return       KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger one
 */
KY_EXPORT ky_status_t utils_check_verbosity_level(uint32_t level);

/** Checks that an array has elements.
 *
 *  @param length       number of elements, 1 or more
 *  @param description  what the array is, for the message, or null
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for length 0
 */
KY_EXPORT ky_status_t utils_check_array_length(uint32_t length, const char* description);

/** Checks that an array has a size.
 *
 *  @param size         size in bytes, 1 or more
 *  @param description  what the array is, for the message, or null
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for size 0
 */
KY_EXPORT ky_status_t utils_check_array_size(uint32_t size, const char* description);

/** Checks a multicast ID.
 *
 *  @param mc_id  1 to 65535
 *  @return       KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for 0
 */
KY_EXPORT ky_status_t utils_check_mc_id(uint16_t mc_id);

/** Checks the ID of a spanning-tree (MSTP) instance.
 *
 *  @param mstp_inst_id  0 to 1024
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger one
 */
KY_EXPORT ky_status_t utils_check_mstp_inst_id(uint16_t mstp_inst_id);

/** Checks the state of a port in a spanning-tree (MSTP) instance.
 *
 *  @param port_state  1 (Discarding) to 3 (Forwarding)
 *  @return            KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
KY_EXPORT ky_status_t utils_check_mstp_inst_port_state(uint32_t port_state);

/** Checks a switch partition ID.
 *
 *  @param swid  0 to 7, or 254, which the message does not mention
 *  @return      KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
KY_EXPORT ky_status_t utils_check_swid(uint8_t swid);

/** Checks the administrative state of a port.
 *
 *  @param admin_state  1 (Up) or 2 (Down)
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other, negative
 *                      ones included
 */
KY_EXPORT ky_status_t utils_check_port_admin_state(int32_t admin_state);

/** Checks a device ID.
 *
 *  @param device_id  1 to 253
 *  @return           KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
KY_EXPORT ky_status_t utils_check_device_id(uint8_t device_id);

/** Checks the type of a device's node in the topology.
 *
 *  @param node_type  0 (ALL) to 5 (HYBRID)
 *  @return           KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other, negative
 *                    ones included
 */
KY_EXPORT ky_status_t utils_check_device_node_type(int32_t node_type);

/** Checks the size of a message. It never writes an exit record.
 *
 *  @param size   size in bytes, 1 to limit
 *  @param limit  the largest size accepted, in bytes
 *  @return       KY_STATUS_SUCCESS;
 *                KY_STATUS_MESSAGE_SIZE_ZERO for size 0, whatever the limit;
 *                KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT for a size above the limit
 */
KY_EXPORT ky_status_t utils_check_msg_size(uint32_t size, uint32_t limit);

/** @} */

/** @name Settings
 *
 *  Kept for the SDK's components, for the life of the process; the library itself does not act on
 *  them. A get that runs beside a set yields the value before or after it. All but
 *  utils_boot_mode_get trace their entry and exit.
 *  @{ */

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

/** @} */

/** @name Memory, accounted by type
 *
 *  Every block belongs to a memory type, 1 to 17: 1 COS, 2 TOPO, 3 PORT, 4 MSTP, 5 FDB, 6 VLAN, 7
 *  LAG, 8 ROUTER, 9 ACL, 10 SPAN, 11 POLICER, 12 HOST-INTERFACE, 13 FLOW-COUNTER, 14 KVDL, 15 API,
 *  16 TUNNEL, 17 TELEMETRY. The library counts the bytes that each type holds.
 *
 *  A block lies 4 bytes behind what was allocated, and is aligned to 4 bytes only: wider types are
 *  copied in and out of it (memcpy), not accessed in place.
 *
 *  A process that forks while another thread allocates or frees may leave the child with the lock
 *  held; such a child must call exec, or use none of these functions.
 *  @{ */

/** Guards the byte counts. It is initialised at load, and held for their changes alone. Whoever
 *  holds it must not take or give back memory meanwhile. */
KY_EXPORT extern cl_spinlock_t utils_mem_type_count_lock;

/** Hands out a block of memory. It is not cleared, and belongs to the caller until
 *  utils_memory_put.
 *
 *  @param[out] buffer_pp  receives the block; null after KY_STATUS_NO_MEMORY, untouched on other
 *                         failures
 *  @param size            bytes; 0 gives a block that holds none
 *  @param mem_type        1 to 17
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_PARAM_EXCEEDS_RANGE for another type;
 *           KY_STATUS_PARAM_NULL if buffer_pp is null; KY_STATUS_NO_MEMORY
 */
KY_EXPORT ky_status_t utils_memory_get(void** buffer_pp, uint32_t size, uint32_t mem_type);

/** Hands out a block for an array, cleared to zero.
 *
 *  @param[out] buffer_pp  receives the block; null after KY_STATUS_NO_MEMORY, untouched on other
 *                         failures
 *  @param count           elements
 *  @param size            bytes of an element
 *  @param mem_type        1 to 17
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_PARAM_EXCEEDS_RANGE for another type, or, with a message,
 *           for more than 4 GiB - 1 byte; KY_STATUS_PARAM_NULL if buffer_pp is null;
 *           KY_STATUS_NO_MEMORY
 */
KY_EXPORT ky_status_t
utils_clr_memory_get(void** buffer_pp, uint32_t count, uint32_t size, uint32_t mem_type);

/** Takes a block back and frees it.
 *
 *  @param buffer_p  what utils_memory_get or utils_clr_memory_get handed out, once; nothing else
 *  @param mem_type  the type that it was taken under
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_PARAM_EXCEEDS_RANGE for a type outside 1 to 17;
 *           KY_STATUS_PARAM_NULL if buffer_p is null;
 *           KY_STATUS_MEMORY_ERROR, with a message, if the type holds less than the block's size;
 *           the block is not freed then
 */
KY_EXPORT ky_status_t utils_memory_put(void* buffer_p, uint32_t mem_type);

/** Logs how many bytes a type holds, at debug level.
 *
 *  @param mem_type  1 to 17, or 0 for all
 *  @return          KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger type
 */
KY_EXPORT ky_status_t utils_memory_print_summary(uint32_t mem_type);

/** Prints a table of how many bytes each type holds.
 *
 *  @param stream  where to, as the logging library's table printer takes it; handed on as it is
 *  @return        KY_STATUS_SUCCESS
 */
KY_EXPORT ky_status_t utils_memory_dbg_dump(FILE* stream);

/** @} */

/** @name Pools and maps
 *
 *  The component library's pools and maps, with status codes. A record lies in a map, or comes from
 *  a pool, by an item that is a member of it; a database is one pool that supplies the records and
 *  one map that finds them by a 64-bit key. Both must be initialised before anything else is done
 *  with them. A call that fails leaves both as they were. No function here traces its entry, and
 *  utils_qmap_is_empty alone its exit; the utils_db_ functions fail through utils_ky_log_exit.
 *  @{ */

/** Converts a map item to the record that it is a member of. */
typedef void* (*utils_map_item_to_record_t)(cl_map_item_t* item);
/** Converts a pool item to the record that it is a member of. */
typedef void* (*utils_pool_item_to_record_t)(cl_pool_item_t* item);
/** Converts a record to its map item. */
typedef cl_map_item_t* (*utils_record_to_map_item_t)(void* record);
/** Converts a record to its pool item. */
typedef cl_pool_item_t* (*utils_record_to_pool_item_t)(void* record);

/** Initialises a pool, and logs that at notice level.
 *
 *  @param pool_p       the pool
 *  @param min_count    records at creation
 *  @param max_count    records at most
 *  @param grow_count   records to grow by
 *  @param object_size  bytes of a record
 *  @param db_name      what the pool is for, in the messages
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_NO_MEMORY with a message
 */
KY_EXPORT ky_status_t utils_qpool_init(
    cl_qpool_t* pool_p, uint32_t min_count, uint32_t max_count, uint32_t grow_count,
    uint32_t object_size, const char* db_name);

/** Initialises a pool and then a map, and logs that at notice level.
 *
 *  @param pool_p       the pool
 *  @param map_p        the map; untouched on failure
 *  @param min_count    records at creation
 *  @param max_count    records at most
 *  @param grow_count   records to grow by
 *  @param object_size  bytes of a record
 *  @param db_name      what both are for, in the messages
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_NO_MEMORY with a message
 */
KY_EXPORT ky_status_t utils_qpool_qmap_init(
    cl_qpool_t* pool_p, cl_qmap_t* map_p, uint32_t min_count, uint32_t max_count,
    uint32_t grow_count, uint32_t object_size, const char* db_name);

/** Takes an object from a pool.
 *
 *  @param[out] item_pp  receives the object's item; null if there is none
 *  @param pool_p        the pool
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_NO_RESOURCES
 */
KY_EXPORT ky_status_t utils_qpool_get(cl_pool_item_t** item_pp, cl_qpool_t* pool_p);

/** Asks that a key is in a map.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  receives the item, or the map's end marker; may be null
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
KY_EXPORT ky_status_t
utils_qmap_key_exists(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Asks that a key is not in a map.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  receives the item, or the map's end marker; may be null
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_ALREADY_EXISTS
 */
KY_EXPORT ky_status_t
utils_qmap_key_not_exists(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Asks that a map is empty.
 *
 *  @param map_p  the map
 *  @return       KY_STATUS_SUCCESS, or KY_STATUS_DB_NOT_EMPTY
 */
KY_EXPORT ky_status_t utils_qmap_is_empty(const cl_qmap_t* map_p);

/** Looks a key up.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  receives the item, or the map's end marker
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
KY_EXPORT ky_status_t utils_qmap_get(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Takes the item of a key out of a map.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  receives the item, or the map's end marker
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
KY_EXPORT ky_status_t utils_qmap_remove(cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Looks a record up.
 *
 *  @param key             the record's key
 *  @param map_p           the map
 *  @param record_of_item  null if the record itself is not wanted
 *  @param[out] record_pp  receives the record, if record_of_item is given; may be null
 *  @return                KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
KY_EXPORT ky_status_t utils_db_qmap_item_get(
    uint64_t key, const cl_qmap_t* map_p, utils_map_item_to_record_t record_of_item,
    void** record_pp);

/** Files an item that the caller owns.
 *
 *  @param key     the key to file it under
 *  @param map_p   the map
 *  @param item_p  the item
 *  @return        KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_ALREADY_EXISTS
 */
KY_EXPORT ky_status_t utils_db_qmap_item_ins(uint64_t key, cl_qmap_t* map_p, cl_map_item_t* item_p);

/** Takes a record from the pool and files it. Its fields are as the pool hands it out.
 *
 *  @param key                  the key to file it under
 *  @param map_p                the map
 *  @param pool_p               the pool
 *  @param record_of_item       required
 *  @param record_of_pool_item  required
 *  @param item_of_record       required
 *  @param[out] record_pp       receives the record, or the one that has the key; may be null
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_ENTRY_ALREADY_EXISTS; KY_STATUS_NO_RESOURCES if the pool
 *           is exhausted
 */
KY_EXPORT ky_status_t utils_db_qmap_item_add(
    uint64_t key, cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_pool_item_to_record_t record_of_pool_item, utils_record_to_map_item_t item_of_record,
    void** record_pp);

/** Takes a record out of the map, and gives it back to the pool.
 *
 *  @param key                  the record's key
 *  @param map_p                the map
 *  @param pool_p               the pool
 *  @param record_of_item       null to take the item out of the map and do nothing else
 *  @param pool_item_of_record  null to keep the record from the pool
 *  @param[out] record_pp       receives the record, if record_of_item is given; may be null. It is
 *                              the caller's only if it was kept from the pool
 *  @return                     KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
KY_EXPORT ky_status_t utils_db_qmap_item_del(
    uint64_t key, cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_record_to_pool_item_t pool_item_of_record, void** record_pp);

/** Takes all records out of the map, in ascending order of their keys, and gives them back to the
 *  pool.
 *
 *  @param map_p                the map
 *  @param pool_p               the pool
 *  @param record_of_item       required
 *  @param pool_item_of_record  required
 *  @return                     KY_STATUS_SUCCESS
 */
KY_EXPORT ky_status_t utils_db_qmap_del(
    cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_record_to_pool_item_t pool_item_of_record);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
