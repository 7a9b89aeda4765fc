/** @file
 * The adviser: a process-wide registry of callbacks for the SDK's life-cycle events.
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
 * it, until one fails. If that happens to PRE-PORT-DELETED-FROM-SWID, those that had accepted it
 * are called again, in the same order, with PRE-FAILED-PORT-DELETED-FROM-SWID: all in front of the
 * one that failed. If that one has left meanwhile, or others have come, some are called so that
 * never heard of the deletion.
 *
 * The adviser takes no lock: callers see to it that none of its functions runs beside another one,
 * adviser_log_verbosity_level apart. A callback, however, may call any of them: an advisor that it
 * deregisters is not called any more, one that it registers may be, and even adviser_deinit ends
 * the walk in order. A callback must return: it must not throw, jump out of itself or end its
 * thread. It must be deregistered before its module is unloaded, and whoever unloads this library
 * calls adviser_deinit first, or the registry's memory is lost.
 *
 * Everything logs under module "ADVISER". All functions trace entry and exit, but for
 * adviser_log_verbosity_level, which traces its entry alone. */
#ifndef KY_ADVISER_H
#define KY_ADVISER_H

#include "ky_common.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The events of a switch's life. Registrations for all of them together are at most 255. */
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

/** The last event. It rises with each event that a later version adds. */
#define ADVISER_EVENT_MAX ADVISER_EVENT_POST_ECMP_UPDATE

/** A module's answer to an event.
 *
 *  @param event       the event processed; for a rollback its fail event
 *  @param event_data  what adviser_process_event was given
 *  @return            KY_STATUS_SUCCESS to accept it; any other value is a failure
 */
typedef ky_status_t (*adviser_cb_t)(adviser_event_t event, void* event_data);

/** Creates the registry, empty. Call it before everything else here but the verbosity.
 *
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_DB_ALREADY_INITIALIZED if it exists; KY_STATUS_NO_MEMORY
 */
KY_EXPORT ky_status_t adviser_init(void);

/** Drops every registration, without calling it, and destroys the registry.
 *
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_DB_NOT_INITIALIZED if there is none
 */
KY_EXPORT ky_status_t adviser_deinit(void);

/** Registers a callback for an event, or deregisters it.
 *
 *  A callback may be registered for any number of events, once for each. Deregistering from
 *  PRE-FAILED-PORT-DELETED-FROM-SWID deregisters from PRE-PORT-DELETED-FROM-SWID.
 *
 *  @param cmd       KY_ACCESS_CMD_ADD to register, KY_ACCESS_CMD_DELETE to deregister
 *  @param event     1 to 51; to register, not PRE-FAILED-PORT-DELETED-FROM-SWID
 *  @param callback  the callback; null only to deregister, where it is not found
 *  @return  KY_STATUS_SUCCESS;
 *           KY_STATUS_CMD_UNSUPPORTED for another command;
 *           KY_STATUS_PARAM_NULL for a null callback to register;
 *           KY_STATUS_PARAM_ERROR for PRE-FAILED-PORT-DELETED-FROM-SWID to register;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an event outside 1 to 51;
 *           KY_STATUS_DB_NOT_INITIALIZED without a registry;
 *           KY_STATUS_ENTRY_ALREADY_EXISTS if the callback is registered for the event already;
 *           KY_STATUS_NO_RESOURCES if 255 registrations exist, or there is no memory for more;
 *           KY_STATUS_ENTRY_NOT_FOUND if a callback to deregister is not registered for the event
 */
KY_EXPORT ky_status_t
adviser_register_event(ky_access_cmd_t cmd, adviser_event_t event, adviser_cb_t callback);

/** Calls the callbacks of an event until one fails.
 *
 *  @param event       1 to 51
 *  @param event_data  handed to every callback as it is, and not looked at; may be null
 *  @return  KY_STATUS_SUCCESS if all succeeded, or there is none;
 *           the failing callback's own status, whatever the rollback brings;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an event outside 1 to 51;
 *           KY_STATUS_DB_NOT_INITIALIZED without a registry
 */
KY_EXPORT ky_status_t adviser_process_event(adviser_event_t event, void* event_data);

/** Gets or sets the verbosity of module "ADVISER", 3 at load. Any thread may call it.
 *
 *  @param cmd              KY_ACCESS_CMD_GET or KY_ACCESS_CMD_SET
 *  @param[in,out] level_p  the level, 0 (silent) to 8 (all); a larger one is stored too and prints
 *                          all; not null for these two commands
 *  @return                 KY_STATUS_SUCCESS, or KY_STATUS_CMD_UNSUPPORTED for another command
 */
KY_EXPORT ky_status_t adviser_log_verbosity_level(ky_access_cmd_t cmd, uint32_t* level_p);

#ifdef __cplusplus
}
#endif

#endif
