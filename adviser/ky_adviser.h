/** @file
 * The adviser: a process-wide registry of callbacks for life-cycle events of the SDK.
 *
 * A module registers a callback, which runs when another one processes the event:
 *
 *     static ky_status_t on_port_added(adviser_event_t event, void* event_data)
 *     {
 *         return learn_port(event_data);
 *     }
 *
 *     adviser_register_event(KY_ACCESS_CMD_ADD, ADVISER_EVENT_PORT_ADDED, on_port_added);
 *     ...
 *     adviser_process_event(ADVISER_EVENT_PORT_ADDED, &port);
 *
 * The callbacks of an event run in ascending order of their addresses, on the thread that processes
 * the event, until one fails. The order differs between compilers and from load to load: do not
 * rely on it. A callback vetoes an event by failing. Only PRE-PORT-DELETED-FROM-SWID has a
 * rollback: after a failure the callbacks in front of the one that failed are called again, in the
 * same order, with PRE-FAILED-PORT-DELETED-FROM-SWID. If callbacks are registered or deregistered
 * meanwhile, some may be called that have not received the first event.
 *
 * The adviser takes no lock. The caller serialises its functions, except
 * adviser_log_verbosity_level, which is thread-safe. A callback may call all of them: a callback
 * that it deregisters is not called any more, one that it registers may be called, and
 * adviser_deinit ends the event. A callback must return: it must not throw, jump out of itself or
 * end its thread.
 *
 * A module deregisters its callbacks before it is unloaded. A process calls adviser_deinit before
 * it unloads this library, or the memory of the registry is lost.
 *
 * The functions log under module "ADVISER". They trace entry and exit, except
 * adviser_log_verbosity_level, which traces entry only. */
#ifndef KY_ADVISER_H
#define KY_ADVISER_H

#include "ky_common.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Events
 *  @{ */

/** An event in the life of a switch. Event 12, PRE-FAILED-PORT-DELETED-FROM-SWID, is the rollback
 *  of event 11, and goes to the callbacks of event 11. `kriolilglu name adviser_event` prints the
 *  names that messages show; `ky_lib_adviser_event_type_str` names another enumeration. */
KY_ENUM(adviser_event_t){
    ADVISER_EVENT_NONE = 0,
    ADVISER_EVENT_PORT_ADDED = 1,
    ADVISER_EVENT_PORT_DELETED = 2,
    ADVISER_EVENT_SWID_ADDED = 3,
    ADVISER_EVENT_SWID_DELETED = 4,
    ADVISER_EVENT_PRE_DEVICE_ADDED = 5,
    ADVISER_EVENT_DEVICE_ADDED = 6,
    ADVISER_EVENT_DEVICE_READY = 7,
    ADVISER_EVENT_PRE_DEVICE_DELETED = 8,
    ADVISER_EVENT_DEVICE_DELETED = 9,
    ADVISER_EVENT_PORT_ADDED_INTO_SWID = 10,
    ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID = 11,
    ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID = 12,
    ADVISER_EVENT_PORT_DELETED_FROM_SWID = 13,
    ADVISER_EVENT_FID_ADDED = 14,
    ADVISER_EVENT_FID_DELETED = 15,
    ADVISER_EVENT_PORT_VID_ADDED = 16,
    ADVISER_EVENT_PORT_VID_DELETED = 17,
    ADVISER_EVENT_PREPARE_PROFILE = 18,
    ADVISER_EVENT_PORT_VLAN_MEMBERSHIP_ADD_E = 19,
    ADVISER_EVENT_PORT_VLAN_MEMBERSHIP_DELETE_E = 20,
    ADVISER_EVENT_VPORT_BRIDGE_ADD = 21,
    ADVISER_EVENT_PRE_VPORT_BRIDGE_DELETE = 22,
    ADVISER_EVENT_VPORT_BRIDGE_DELETE = 23,
    ADVISER_EVENT_VPORT_BRIDGE_PENDING_PUSH = 24,
    ADVISER_EVENT_SPAN_SESSION_UPDATE = 25,
    ADVISER_EVENT_INGRESS_FILTER_CHANGE = 26,
    ADVISER_EVENT_PRE_MC_CONTAINER_CHANGE = 27,
    ADVISER_EVENT_MC_CONTAINER_ERIF_POINTER_CHANGE = 28,
    ADVISER_EVENT_MC_CONTAINER_NVE_MC_POINTER_CHANGE = 29,
    ADVISER_EVENT_MC_CONTAINER_PORT_MC_POINTER_CHANGE = 30,
    ADVISER_EVENT_MC_CONTAINER_NEXT_HOPS_CHANGE = 31,
    ADVISER_EVENT_POST_RIF_ADD = 32,
    ADVISER_EVENT_PRE_RIF_DELETE = 33,
    ADVISER_EVENT_TUNNEL_DECAP_CHANGE = 34,
    ADVISER_EVENT_IPV6_CHANGE = 35,
    ADVISER_EVENT_FDB_MC_MID_CHANGE = 36,
    ADVISER_EVENT_POST_LAG_REDIRECT_SET = 37,
    ADVISER_EVENT_BRIDGE_TUNNEL_MAP_ADD = 38,
    ADVISER_EVENT_BRIDGE_TUNNEL_MAP_DELETE = 39,
    ADVISER_EVENT_FDB_UC_MAC_ADD = 40,
    ADVISER_EVENT_FDB_UC_MAC_DELETE = 41,
    ADVISER_EVENT_POST_KVD_HASH_NO_RESOURCES = 42,
    ADVISER_EVENT_SDK_CLIENT_CLOSE = 43,
    ADVISER_EVENT_POST_PORT_OPER_DOWN_E = 44,
    ADVISER_EVENT_PORT_ADMIN_STATE = 45,
    ADVISER_EVENT_PRE_VPORT_BRIDGE_ADD = 46,
    ADVISER_EVENT_PRE_ISSU_END = 47,
    ADVISER_EVENT_POST_RIF_ENABLE = 48,
    ADVISER_EVENT_PRE_RIF_DISABLE = 49,
    ADVISER_EVENT_POST_TUNNEL_ATTRIBUTES_CHANGE = 50,
    ADVISER_EVENT_POST_ECMP_UPDATE = 51,
};

/** The last event. A later version that adds events increases it. */
#define ADVISER_EVENT_MAX ADVISER_EVENT_POST_ECMP_UPDATE

/** @} */

/** @name Callbacks and their registry
 *  @{ */

/** Handles an event.
 *
 *  @param event       the event; in a rollback PRE-FAILED-PORT-DELETED-FROM-SWID
 *  @param event_data  the event_data of adviser_process_event
 *  @return            KY_STATUS_SUCCESS to accept the event; any other value is a failure
 */
typedef ky_status_t (*adviser_cb_t)(adviser_event_t event, void* event_data);

/** Creates the registry, which is empty.
 *
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_DB_ALREADY_INITIALIZED if it exists; KY_STATUS_NO_MEMORY,
 *           which is not logged
 */
ky_status_t adviser_init(void);

/** Removes all registrations, without calling them, and destroys the registry.
 *
 *  @return  KY_STATUS_SUCCESS, or KY_STATUS_DB_NOT_INITIALIZED if there is no registry
 */
ky_status_t adviser_deinit(void);

/** Registers a callback for an event, or deregisters it. Every failure is logged.
 *
 *  A callback may be registered for any number of events, once for each; 255 registrations may
 *  exist. Deregistering from PRE-FAILED-PORT-DELETED-FROM-SWID deregisters from
 *  PRE-PORT-DELETED-FROM-SWID.
 *
 *  @param cmd       KY_ACCESS_CMD_ADD to register, KY_ACCESS_CMD_DELETE to deregister
 *  @param event     1 to ADVISER_EVENT_MAX; to register, not PRE-FAILED-PORT-DELETED-FROM-SWID
 *  @param callback  the callback; a null pointer to deregister is not found
 *  @retval KY_STATUS_SUCCESS               the callback is registered or deregistered
 *  @retval KY_STATUS_CMD_UNSUPPORTED       cmd is another command
 *  @retval KY_STATUS_PARAM_NULL            to register: callback is null
 *  @retval KY_STATUS_PARAM_ERROR           to register: event is PRE-FAILED-PORT-DELETED-FROM-SWID
 *  @retval KY_STATUS_PARAM_EXCEEDS_RANGE   event is not 1 to ADVISER_EVENT_MAX
 *  @retval KY_STATUS_DB_NOT_INITIALIZED    there is no registry
 *  @retval KY_STATUS_ENTRY_ALREADY_EXISTS  to register: the callback is registered for the event,
 *                                          which is logged at notice level
 *  @retval KY_STATUS_NO_RESOURCES          to register: 255 registrations exist, or memory is short
 *  @retval KY_STATUS_ENTRY_NOT_FOUND       to deregister: the callback is not registered for event
 */
ky_status_t
adviser_register_event(ky_access_cmd_t cmd, adviser_event_t event, adviser_cb_t callback);

/** Calls the callbacks of an event until one fails.
 *
 *  PRE-FAILED-PORT-DELETED-FROM-SWID calls the callbacks of PRE-PORT-DELETED-FROM-SWID, for a
 *  caller whose deletion fails after all callbacks have accepted it.
 *
 *  A failure is logged; if the event is DEVICE-DELETED, with a second error. A callback that fails
 *  in a rollback is logged, and the rollback goes on.
 *
 *  @param event       1 to ADVISER_EVENT_MAX
 *  @param event_data  argument of the callbacks, which the adviser does not read; the module of
 *                     the SDK that processes the event documents it; may be null
 *  @return            the status of the callback that fails, whatever a rollback returns, or
 *  @retval KY_STATUS_SUCCESS              all callbacks succeed, or none is registered
 *  @retval KY_STATUS_PARAM_EXCEEDS_RANGE  event is not 1 to ADVISER_EVENT_MAX
 *  @retval KY_STATUS_DB_NOT_INITIALIZED   there is no registry
 */
ky_status_t adviser_process_event(adviser_event_t event, void* event_data);

/** Gets or sets the verbosity of module "ADVISER", which is 3 at load.
 *
 *  @param cmd              KY_ACCESS_CMD_GET or KY_ACCESS_CMD_SET
 *  @param[in,out] level_p  the level, 0 (silent) to 8 (everything); a higher level is stored, and
 *                          prints everything. It may be null for another command
 *  @return                 KY_STATUS_SUCCESS, or KY_STATUS_CMD_UNSUPPORTED for another command
 */
ky_status_t adviser_log_verbosity_level(ky_access_cmd_t cmd, uint32_t* level_p);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
