/** @file
 * Function traces, argument checks, settings, accounted memory, pools and maps.
 *
 * The functions need no initialisation and log under module "UTILS". They are thread-safe, except
 * that a pool or a map takes one caller at a time. */
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

/** Logs that a function is entered, if traces are on and the verbosity of "UTILS" is 5 or more.
 *
 *  @param function_name  name of the function
 */
void utils_ky_log_enter(const char* function_name);

/** Logs that a function is left, if traces are on and the verbosity of "UTILS" is 5 or more.
 *
 *  The argument checks (except utils_check_msg_size), the memory functions, pool initialisation and
 *  the utils_db_ functions return their failures through it: a process can interpose it.
 *
 *  @param status         what the function returns
 *  @param function_name  name of the function
 *  @return               status
 */
ky_status_t utils_ky_log_exit(ky_status_t status, const char* function_name);

/** Sets the verbosity of module "UTILS", which is 3 at load.
 *
 *  It traces entry at the old level and exit at the new one.
 *
 *  @param level  0 (silent) to 8 (everything); a higher level is stored, and prints everything
 *  @return       KY_STATUS_SUCCESS
 */
ky_status_t utils_log_verbosity_level_set(uint32_t level);

/** @} */

/** @name Argument checks
 *
 *  A check that passes logs nothing. A check that fails logs one error message and returns through
 *  utils_ky_log_exit, except utils_check_msg_size. A value that is wider than the argument is
 *  truncated first.
 *  @{ */

/** Checks that a pointer is not null.
 *
 *  @param pointer      any pointer; it is not dereferenced
 *  @param description  what the pointer is, for the message, or null
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_NULL if the pointer is null
 */
ky_status_t utils_check_pointer(const void* pointer, const char* description);

/** Checks a verbosity level.
 *
 *  @param level  0 to 8
 *  @return       KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger one
 */
ky_status_t utils_check_verbosity_level(uint32_t level);

/** Checks that the length of an array is not 0.
 *
 *  @param length       number of elements, 1 or more
 *  @param description  what the array is, for the message, or null
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for length 0
 */
ky_status_t utils_check_array_length(uint32_t length, const char* description);

/** Checks that the size of an array is not 0.
 *
 *  @param size         size in bytes, 1 or more
 *  @param description  what the array is, for the message, or null
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for size 0
 */
ky_status_t utils_check_array_size(uint32_t size, const char* description);

/** Checks a multicast ID.
 *
 *  @param mc_id  1 to 65535
 *  @return       KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for 0
 */
ky_status_t utils_check_mc_id(uint16_t mc_id);

/** Checks the ID of a spanning-tree (MSTP) instance.
 *
 *  @param mstp_inst_id  0 to 1024
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger one
 */
ky_status_t utils_check_mstp_inst_id(uint16_t mstp_inst_id);

/** Checks the state of a port in a spanning-tree (MSTP) instance.
 *
 *  @param port_state  KY_MSTP_INST_PORT_STATE_DISCARDING (1), _LEARNING (2) or _FORWARDING (3)
 *  @return            KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
ky_status_t utils_check_mstp_inst_port_state(uint32_t port_state);

/** Checks a switch partition ID.
 *
 *  @param swid  0 to 7, or 254; the message names the range 0 to 7 only
 *  @return      KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
ky_status_t utils_check_swid(uint8_t swid);

/** Checks the administrative state of a port.
 *
 *  @param admin_state  KY_PORT_ADMIN_STATE_UP (1) or KY_PORT_ADMIN_STATE_DOWN (2)
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other value
 */
ky_status_t utils_check_port_admin_state(int32_t admin_state);

/** Checks a device ID.
 *
 *  @param device_id  1 to 253
 *  @return           KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other
 */
ky_status_t utils_check_device_id(uint8_t device_id);

/** Checks the type of a device's node in the topology.
 *
 *  @param node_type  KY_DEV_NODE_TYPE_ALL (0) to KY_DEV_NODE_TYPE_HYBRID (5)
 *  @return           KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for any other value
 */
ky_status_t utils_check_device_node_type(int32_t node_type);

/** Checks the size of a message. It writes no exit record.
 *
 *  @param size   size in bytes, 1 to limit
 *  @param limit  largest size accepted, in bytes
 *  @retval KY_STATUS_SUCCESS                     the size is accepted
 *  @retval KY_STATUS_MESSAGE_SIZE_ZERO           the size is 0, whatever the limit
 *  @retval KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT  the size is above the limit
 */
ky_status_t utils_check_msg_size(uint32_t size, uint32_t limit);

/** @} */

/** @name Settings
 *
 *  The library stores the settings for components of the SDK and does not use them itself. All of
 *  the functions but utils_boot_mode_get trace entry and exit.
 *  @{ */

/** Sets the use-XM flag, which is 0 at load.
 *
 *  @param use_xm  any value
 *  @return        KY_STATUS_SUCCESS
 */
ky_status_t utils_use_xm_set(uint32_t use_xm);

/** Gets the use-XM flag.
 *
 *  @param[out] use_xm_p  the flag
 *  @return               KY_STATUS_SUCCESS, or KY_STATUS_PARAM_NULL if use_xm_p is null
 */
ky_status_t utils_use_xm_get(uint32_t* use_xm_p);

/** Sets the boot mode, which is 0 at load. `ky_boot_mode_str` names the modes.
 *
 *  @param boot_mode  KY_BOOT_MODE_DISABLED (0) to KY_BOOT_MODE_ISSU_START (5)
 *  @return           KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger mode
 */
ky_status_t utils_boot_mode_set(uint32_t boot_mode);

/** Gets the boot mode. For a null pointer it logs a second message after that of the check.
 *
 *  @param[out] boot_mode_p  the mode
 *  @return                  KY_STATUS_SUCCESS, or KY_STATUS_PARAM_NULL if boot_mode_p is null
 */
ky_status_t utils_boot_mode_get(uint32_t* boot_mode_p);

/** @} */

/** @name Memory, accounted by type
 *
 *  Every block has a memory type, and the library counts the bytes that each type holds. The types
 *  are constants of `ky_values.h`, and `kriolilglu name mem_type` prints them.
 *
 *  Records of pools are not counted. A block lies 4 bytes behind the start of the allocation, and
 *  is aligned to 4 bytes only: copy wider types in and out with memcpy instead of accessing them in
 *  place.
 *
 *  At debug level each allocation and each release is logged.
 *
 *  A process that forks while another thread allocates or frees may leave the lock held in the
 *  child; the child must then call exec without using these functions.
 *  @{ */

/** The lock of the byte counts. It is initialised at load, and held only while the counts change. A
 *  caller that holds it must not get or put memory. */
extern cl_spinlock_t utils_mem_type_count_lock;

/** Allocates a block of memory. It is not cleared, and the caller owns it until utils_memory_put.
 *  Of the failures only a null pointer is logged.
 *
 *  @param[out] buffer_pp  the block, aligned to 4 bytes; null after KY_STATUS_NO_MEMORY
 *  @param size            size in bytes; may be 0
 *  @param mem_type        memory type, KY_MEM_TYPE_COS (1) to KY_MEM_TYPE_TELEMETRY (17)
 *  @retval KY_STATUS_SUCCESS              the block is allocated
 *  @retval KY_STATUS_PARAM_EXCEEDS_RANGE  mem_type is not 1 to 17
 *  @retval KY_STATUS_PARAM_NULL           buffer_pp is null
 *  @retval KY_STATUS_NO_MEMORY            there is not enough memory
 */
ky_status_t utils_memory_get(void** buffer_pp, uint32_t size, uint32_t mem_type);

/** Allocates a block for an array and clears it. The caller owns it until utils_memory_put. Of the
 *  failures only a null pointer and an array that is too large are logged.
 *
 *  @param[out] buffer_pp  the block, aligned to 4 bytes; null after KY_STATUS_NO_MEMORY
 *  @param count           number of elements
 *  @param size            size of an element in bytes
 *  @param mem_type        memory type, KY_MEM_TYPE_COS (1) to KY_MEM_TYPE_TELEMETRY (17)
 *  @retval KY_STATUS_SUCCESS              the block is allocated
 *  @retval KY_STATUS_PARAM_EXCEEDS_RANGE  mem_type is not 1 to 17, or the array has 4 GiB or more
 *  @retval KY_STATUS_PARAM_NULL           buffer_pp is null
 *  @retval KY_STATUS_NO_MEMORY            there is not enough memory
 */
ky_status_t
utils_clr_memory_get(void** buffer_pp, uint32_t count, uint32_t size, uint32_t mem_type);

/** Frees a block. A bad memory type is not logged.
 *
 *  @param buffer_p  a block of utils_memory_get or utils_clr_memory_get that is not freed yet
 *  @param mem_type  the memory type that the block was allocated with
 *  @retval KY_STATUS_SUCCESS              the block is freed
 *  @retval KY_STATUS_PARAM_EXCEEDS_RANGE  mem_type is not 1 to 17
 *  @retval KY_STATUS_PARAM_NULL           buffer_p is null
 *  @retval KY_STATUS_MEMORY_ERROR         mem_type holds fewer bytes; the block is not freed
 */
ky_status_t utils_memory_put(void* buffer_p, uint32_t mem_type);

/** Logs the number of bytes that a memory type holds, at debug level. No function returns it.
 *
 *  @param mem_type  memory type, or KY_MEM_TYPE_ALL for each of them
 *  @return          KY_STATUS_SUCCESS, or KY_STATUS_PARAM_EXCEEDS_RANGE for a larger type
 */
ky_status_t utils_memory_print_summary(uint32_t mem_type);

/** Prints a table of the number of bytes that each memory type holds.
 *
 *  @param stream  stream for the table printer of the logging library
 *  @return        KY_STATUS_SUCCESS
 */
ky_status_t utils_memory_dbg_dump(FILE* stream);

/** @} */

/** @name Conversions between items and records
 *  @{ */

/** Converts a map item to the record that contains it. */
typedef void* (*utils_map_item_to_record_t)(cl_map_item_t* item);
/** Converts a pool item to the record that contains it. */
typedef void* (*utils_pool_item_to_record_t)(cl_pool_item_t* item);
/** Converts a record to its map item. */
typedef cl_map_item_t* (*utils_record_to_map_item_t)(void* record);
/** Converts a record to its pool item. */
typedef cl_pool_item_t* (*utils_record_to_pool_item_t)(void* record);

/** @} */

/** @name Pools and maps
 *
 *  Pools and maps of the component library, with status codes; this header includes its headers. A
 *  pool supplies objects of one size; a map finds records by a 64-bit key. A record contains the
 *  item by which the map links it, and in a pool begins with the item of the pool. A database is a
 *  pool that supplies records and a map that finds them:
 *
 *      typedef struct vlan {
 *          cl_pool_item_t pool_item; // first
 *          cl_map_item_t map_item;
 *          uint32_t ports;
 *      } vlan_t;
 *
 *      static void* vlan_of_map_item(cl_map_item_t* item)
 *      {
 *          return (char*)item - offsetof(vlan_t, map_item);
 *      }
 *
 *  Both must be initialised before use. The caller ends a database: it frees what the records own,
 *  which it finds from `cl_qmap_head(map)` by `cl_qmap_next(item)` to `cl_qmap_end(map)`, in
 *  ascending order of the keys, then calls utils_db_qmap_del and `cl_qpool_destroy(pool)`. A map
 *  needs no end of its own.
 *
 *  A call that fails leaves pool and map as they were. The functions do not log, except for the
 *  initialisations and the exit records of the utils_db_ functions on failure, and do not trace,
 *  except that utils_qmap_is_empty traces exit.
 *  @{ */

/** Initialises a pool.
 *
 *  Success is logged at notice level. The counts are those of cl_qpool_init: the pool begins with
 *  min_count objects; when none is free it grows by grow_count, or by what is left up to max_count.
 *  The caller destroys the pool with cl_qpool_destroy, which frees all objects, those in use
 *  included.
 *
 *  @param pool_p       the pool; unchanged on failure
 *  @param min_count    number of objects at creation; at most max_count, unless that is 0
 *  @param max_count    largest number of objects; 0 for no limit
 *  @param grow_count   number of objects to grow by; 0 for a pool that does not grow
 *  @param object_size  size of an object in bytes, at least that of cl_pool_item_t, with which an
 *                      object begins
 *  @param db_name      name for the messages; read during the call only
 *  @return             KY_STATUS_SUCCESS, or KY_STATUS_NO_MEMORY, with a message, if memory is
 *                      short or a count or the size is out of range
 */
ky_status_t utils_qpool_init(
    cl_qpool_t* pool_p, uint32_t min_count, uint32_t max_count, uint32_t grow_count,
    uint32_t object_size, const char* db_name);

/** Initialises a pool, as utils_qpool_init does, and a map, which needs no destruction.
 *
 *  @copydetails utils_qpool_init
 *
 *  @param map_p  the map; unchanged on failure
 */
ky_status_t utils_qpool_qmap_init(
    cl_qpool_t* pool_p, cl_qmap_t* map_p, uint32_t min_count, uint32_t max_count,
    uint32_t grow_count, uint32_t object_size, const char* db_name);

/** Takes an object from a pool. It is not cleared. cl_qpool_put puts it back.
 *
 *  @param[out] item_pp  the item of the object; null on failure
 *  @param pool_p        the pool
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_NO_RESOURCES if no object is free and the
 *                       pool cannot grow
 */
ky_status_t utils_qpool_get(cl_pool_item_t** item_pp, cl_qpool_t* pool_p);

/** Checks that a key is in a map.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  the item, or cl_qmap_end if the key is not in the map; may be null
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
ky_status_t utils_qmap_key_exists(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Checks that a key is not in a map.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  the item, or cl_qmap_end if the key is not in the map; may be null
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_ALREADY_EXISTS
 */
ky_status_t
utils_qmap_key_not_exists(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Checks that a map is empty.
 *
 *  @param map_p  the map
 *  @return       KY_STATUS_SUCCESS, or KY_STATUS_DB_NOT_EMPTY
 */
ky_status_t utils_qmap_is_empty(const cl_qmap_t* map_p);

/** Finds the item of a key.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  the item, or cl_qmap_end if the key is not in the map
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
ky_status_t utils_qmap_get(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Removes the item of a key from a map.
 *
 *  @param map_p         the map
 *  @param key           the key
 *  @param[out] item_pp  the item, or cl_qmap_end if the key is not in the map
 *  @return              KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
ky_status_t utils_qmap_remove(cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp);

/** Finds the record of a key.
 *
 *  @param key             the key
 *  @param map_p           the map
 *  @param record_of_item  converts a map item to its record; null if the record is not wanted
 *  @param[out] record_pp  the record, if record_of_item is not null; may be null
 *  @return                KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
ky_status_t utils_db_qmap_item_get(
    uint64_t key, const cl_qmap_t* map_p, utils_map_item_to_record_t record_of_item,
    void** record_pp);

/** Inserts an item, which the caller owns.
 *
 *  @param key     the key
 *  @param map_p   the map
 *  @param item_p  the item
 *  @return        KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_ALREADY_EXISTS
 */
ky_status_t utils_db_qmap_item_ins(uint64_t key, cl_qmap_t* map_p, cl_map_item_t* item_p);

/** Takes a record from a pool and inserts it into a map. The record is not cleared: except for its
 *  items it holds what its last user left there, or what was in the memory.
 *
 *  @param key                  the key
 *  @param map_p                the map
 *  @param pool_p               the pool
 *  @param record_of_item       converts a map item to its record
 *  @param record_of_pool_item  converts a pool item to its record
 *  @param item_of_record       converts a record to its map item
 *  @param[out] record_pp       the record; on KY_STATUS_ENTRY_ALREADY_EXISTS the one in the map;
 *                              may be null
 *  @retval KY_STATUS_SUCCESS               the record is inserted
 *  @retval KY_STATUS_ENTRY_ALREADY_EXISTS  the key is in the map
 *  @retval KY_STATUS_NO_RESOURCES          no record is free and the pool cannot grow
 */
ky_status_t utils_db_qmap_item_add(
    uint64_t key, cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_pool_item_to_record_t record_of_pool_item, utils_record_to_map_item_t item_of_record,
    void** record_pp);

/** Removes a record from a map, and puts it back into its pool.
 *
 *  @param key                  the key
 *  @param map_p                the map
 *  @param pool_p               the pool
 *  @param record_of_item       converts a map item to its record; null to remove the item only
 *  @param pool_item_of_record  converts a record to its pool item; null to keep the record out of
 *                              the pool
 *  @param[out] record_pp       the record, if record_of_item is not null; may be null. The caller
 *                              owns the record only if it is kept out of the pool, until
 *                              cl_qpool_put
 *  @return                     KY_STATUS_SUCCESS, or KY_STATUS_ENTRY_NOT_FOUND
 */
ky_status_t utils_db_qmap_item_del(
    uint64_t key, cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_record_to_pool_item_t pool_item_of_record, void** record_pp);

/** Removes all records from a map, in ascending order of their keys, and puts them back into their
 *  pool. Both remain initialised.
 *
 *  @param map_p                the map
 *  @param pool_p               the pool
 *  @param record_of_item       converts a map item to its record
 *  @param pool_item_of_record  converts a record to its pool item
 *  @return                     KY_STATUS_SUCCESS
 */
ky_status_t utils_db_qmap_del(
    cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_record_to_pool_item_t pool_item_of_record);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
