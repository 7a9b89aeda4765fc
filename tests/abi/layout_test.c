/* What programs have compiled in: the value of every constant, and the layout of every record. It
 * only has to compile, as C11 and as C++. */
#include <ky_adviser.h>
#include <ky_common.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <assert.h>
#include <stddef.h>

#define VALUE(constant, value) static_assert((constant) == (value), #constant)
#define SIZE(type, size) static_assert(sizeof(type) == (size), #type)
#define FIELD(type, field, offset, size)                                          \
    static_assert(                                                                \
        offsetof(type, field) == (offset) && sizeof(((type*)0)->field) == (size), \
        #type "." #field)
#define UNSIGNED(type) static_assert((type)0xFFFFFFFFU > (type)0, #type)
#define STATUS(name, value) VALUE(KY_STATUS_##name, value)
#define COMMAND(name, value) VALUE(KY_ACCESS_CMD_##name, value)
#define EVENT(name, value) VALUE(ADVISER_EVENT_##name, value)

/* clang-format off */

/* Status codes. */
STATUS(SUCCESS, 0); STATUS(ERROR, 1); STATUS(SDK_NOT_INITIALIZED, 2); STATUS(INVALID_HANDLE, 3);
STATUS(COMM_ERROR, 4); STATUS(NO_RESOURCES, 5); STATUS(NO_MEMORY, 6); STATUS(MEMORY_ERROR, 7);
STATUS(CMD_ERROR, 8); STATUS(CMD_INCOMPLETE, 9); STATUS(CMD_UNSUPPORTED, 10);
STATUS(CMD_UNPERMITTED, 11); STATUS(PARAM_NULL, 12); STATUS(PARAM_ERROR, 13);
STATUS(PARAM_EXCEEDS_RANGE, 14); STATUS(MESSAGE_SIZE_ZERO, 15);
STATUS(MESSAGE_SIZE_EXCEEDS_LIMIT, 16); STATUS(DB_ALREADY_INITIALIZED, 17);
STATUS(DB_NOT_INITIALIZED, 18); STATUS(DB_NOT_EMPTY, 19); STATUS(END_OF_DB, 20);
STATUS(ENTRY_NOT_FOUND, 21); STATUS(ENTRY_ALREADY_EXISTS, 22); STATUS(ENTRY_NOT_BOUND, 23);
STATUS(ENTRY_ALREADY_BOUND, 24); STATUS(WRONG_POLICER_TYPE, 25); STATUS(UNEXPECTED_EVENT_TYPE, 26);
STATUS(TRAP_ID_NOT_CONFIGURED, 27); STATUS(INT_COMM_CLOSE, 28); STATUS(RESOURCE_IN_USE, 29);
STATUS(TRAP_ID_ALREADY_ASSOCIATED, 30); STATUS(ALREADY_INITIALIZED, 31); STATUS(TIMEOUT, 32);
STATUS(MODULE_UNINITIALIZED, 33); STATUS(UNSUPPORTED, 34); STATUS(UTILS_RETURNED_NON_ZERO, 35);
STATUS(PARTIALLY_COMPLETE, 36); STATUS(ACCEPTED, 37); STATUS(ISSU_IN_PROGRESS, 38);
STATUS(DRIVER_RETURNED_NON_ZERO, 102);

/* Access commands. */
COMMAND(NONE, 0); COMMAND(ADD, 1); COMMAND(EDIT, 2); COMMAND(DELETE, 3); COMMAND(DELETE_ALL, 4);
COMMAND(SOFT_ADD, 5); COMMAND(SOFT_EDIT, 6); COMMAND(SOFT_DELETE, 7); COMMAND(TEST, 8);
COMMAND(APPLY, 9); COMMAND(ENABLE, 10); COMMAND(DISABLE, 11); COMMAND(CREATE, 12);
COMMAND(DESTROY, 13); COMMAND(COUNT, 14); COMMAND(SET, 15); COMMAND(UNSET, 16); COMMAND(GET, 17);
COMMAND(GET_NEXT, 18); COMMAND(REGISTER, 19); COMMAND(DEREGISTER, 20); COMMAND(GET_ALL, 21);
COMMAND(TEST_HW, 22); COMMAND(ADD_PORTS, 23); COMMAND(DELETE_PORTS, 24); COMMAND(BIND, 25);
COMMAND(UNBIND, 26); COMMAND(GET_FIRST, 27); COMMAND(REPLACE_ALL_PORTS, 28);
COMMAND(DELETE_ALL_PORTS, 29); COMMAND(READY, 30); COMMAND(READ, 31); COMMAND(READ_CLEAR, 32);
COMMAND(CLEAR, 33); COMMAND(DELETE_PORT, 34); COMMAND(MARK, 35);

/* Adviser events. */
EVENT(NONE, 0); EVENT(PORT_ADDED, 1); EVENT(PORT_DELETED, 2); EVENT(SWID_ADDED, 3);
EVENT(SWID_DELETED, 4); EVENT(PRE_DEVICE_ADDED, 5); EVENT(DEVICE_ADDED, 6); EVENT(DEVICE_READY, 7);
EVENT(PRE_DEVICE_DELETED, 8); EVENT(DEVICE_DELETED, 9); EVENT(PORT_ADDED_INTO_SWID, 10);
EVENT(PRE_PORT_DELETED_FROM_SWID, 11); EVENT(PRE_FAILED_PORT_DELETED_FROM_SWID, 12);
EVENT(PORT_DELETED_FROM_SWID, 13); EVENT(FID_ADDED, 14); EVENT(FID_DELETED, 15);
EVENT(PORT_VID_ADDED, 16); EVENT(PORT_VID_DELETED, 17); EVENT(PREPARE_PROFILE, 18);
EVENT(PORT_VLAN_MEMBERSHIP_ADD_E, 19); EVENT(PORT_VLAN_MEMBERSHIP_DELETE_E, 20);
EVENT(VPORT_BRIDGE_ADD, 21); EVENT(PRE_VPORT_BRIDGE_DELETE, 22); EVENT(VPORT_BRIDGE_DELETE, 23);
EVENT(VPORT_BRIDGE_PENDING_PUSH, 24); EVENT(SPAN_SESSION_UPDATE, 25);
EVENT(INGRESS_FILTER_CHANGE, 26); EVENT(PRE_MC_CONTAINER_CHANGE, 27);
EVENT(MC_CONTAINER_ERIF_POINTER_CHANGE, 28); EVENT(MC_CONTAINER_NVE_MC_POINTER_CHANGE, 29);
EVENT(MC_CONTAINER_PORT_MC_POINTER_CHANGE, 30); EVENT(MC_CONTAINER_NEXT_HOPS_CHANGE, 31);
EVENT(POST_RIF_ADD, 32); EVENT(PRE_RIF_DELETE, 33); EVENT(TUNNEL_DECAP_CHANGE, 34);
EVENT(IPV6_CHANGE, 35); EVENT(FDB_MC_MID_CHANGE, 36); EVENT(POST_LAG_REDIRECT_SET, 37);
EVENT(BRIDGE_TUNNEL_MAP_ADD, 38); EVENT(BRIDGE_TUNNEL_MAP_DELETE, 39); EVENT(FDB_UC_MAC_ADD, 40);
EVENT(FDB_UC_MAC_DELETE, 41); EVENT(POST_KVD_HASH_NO_RESOURCES, 42); EVENT(SDK_CLIENT_CLOSE, 43);
EVENT(POST_PORT_OPER_DOWN_E, 44); EVENT(PORT_ADMIN_STATE, 45); EVENT(PRE_VPORT_BRIDGE_ADD, 46);
EVENT(PRE_ISSU_END, 47); EVENT(POST_RIF_ENABLE, 48); EVENT(PRE_RIF_DISABLE, 49);
EVENT(POST_TUNNEL_ATTRIBUTES_CHANGE, 50); EVENT(POST_ECMP_UPDATE, 51); EVENT(MAX, 51);

/* Log masks and levels, and limits. */
VALUE(KY_LOG_MASK_ERROR, 1); VALUE(KY_LOG_MASK_WARNING, 3); VALUE(KY_LOG_MASK_NOTICE, 7);
VALUE(KY_LOG_MASK_INFO, 15); VALUE(KY_LOG_MASK_DEBUG, 31); VALUE(KY_LOG_LEVEL_MIN, 0);
VALUE(KY_LOG_LEVEL_DEFAULT, 3); VALUE(KY_LOG_LEVEL_MAX, 8); VALUE(KY_RPF_GROUP_ID_MAX, 511);
VALUE(KY_USER_TOKEN_MAX, 0xFFF); VALUE(KY_MC_ROUTE_ENTRIES_MAX, 128);
VALUE(PORT_TYPE_VALIDATION_ROWS, 174);

/* Records, by size and by offset and size of each field. */
SIZE(ky_ipv4_prefix_t, 8); FIELD(ky_ipv4_prefix_t, addr, 0, 4); FIELD(ky_ipv4_prefix_t, mask, 4, 4);
SIZE(ky_ipv6_prefix_t, 32); FIELD(ky_ipv6_prefix_t, addr, 0, 16);
FIELD(ky_ipv6_prefix_t, mask, 16, 16);
SIZE(ky_ip_prefix_t, 36); FIELD(ky_ip_prefix_t, version, 0, 4);
FIELD(ky_ip_prefix_t, prefix, 4, 32); FIELD(ky_ip_prefix_t, prefix.ipv4, 4, 8);
FIELD(ky_ip_prefix_t, prefix.ipv6, 4, 32);
SIZE(ky_mc_route_key_t, 72); FIELD(ky_mc_route_key_t, source_addr, 0, 36);
FIELD(ky_mc_route_key_t, mc_group_addr, 36, 36);
SIZE(ky_router_vinterface_t, 8); FIELD(ky_router_vinterface_t, type, 0, 4);
FIELD(ky_router_vinterface_t, id, 4, 4);
SIZE(ky_mc_route_attr_t, 32); FIELD(ky_mc_route_attr_t, rpf_action, 0, 4);
FIELD(ky_mc_route_attr_t, ttl_cmd, 4, 4); FIELD(ky_mc_route_attr_t, router_word_1, 8, 4);
FIELD(ky_mc_route_attr_t, prio_type, 12, 4); FIELD(ky_mc_route_attr_t, router_word_2, 16, 4);
FIELD(ky_mc_route_attr_t, rpf_group_id, 20, 4); FIELD(ky_mc_route_attr_t, user_token_valid, 24, 4);
FIELD(ky_mc_route_attr_t, user_token_value, 28, 2);
FIELD(ky_mc_route_attr_t, user_token_mask, 30, 2);
SIZE(ky_mc_route_data_t, 12); FIELD(ky_mc_route_data_t, action, 0, 4);
FIELD(ky_mc_route_data_t, egress_rif_cnt, 4, 4);
FIELD(ky_mc_route_data_t, egress_container_id, 8, 4);
SIZE(ky_mc_route_get_filter_t, 88); FIELD(ky_mc_route_get_filter_t, source_addr_valid, 0, 4);
FIELD(ky_mc_route_get_filter_t, source_addr, 4, 36);
FIELD(ky_mc_route_get_filter_t, mc_group_addr_valid, 40, 4);
FIELD(ky_mc_route_get_filter_t, mc_group_addr, 44, 36);
FIELD(ky_mc_route_get_filter_t, ingress_rif_valid, 80, 4);
FIELD(ky_mc_route_get_filter_t, ingress_rif_incl_rpf_groups_valid, 84, 4);
SIZE(port_type_validation_entry_t, 2 * sizeof(char*));
FIELD(port_type_validation_entry_t, func_name, 0, sizeof(char*));
FIELD(port_type_validation_entry_t, allowed_port_types, sizeof(char*), 1);
FIELD(cl_spinlock_t, state, sizeof(pthread_mutex_t), 4);

/* The version as one number, if its parts were others. */
#undef KRIOLILGLU_VERSION_MAJOR
#undef KRIOLILGLU_VERSION_MINOR
#undef KRIOLILGLU_VERSION_PATCH
#define KRIOLILGLU_VERSION_MAJOR 2
#define KRIOLILGLU_VERSION_MINOR 3
#define KRIOLILGLU_VERSION_PATCH 4
VALUE(KRIOLILGLU_VERSION, 20304);

/* Enumerations are unsigned and 32 bits wide. */
SIZE(ky_status_t, 4); SIZE(ky_access_cmd_t, 4); SIZE(adviser_event_t, 4);
SIZE(ky_ip_version_t, 4);
UNSIGNED(ky_status_t); UNSIGNED(ky_access_cmd_t); UNSIGNED(adviser_event_t);

/* The objects have the size that programs copy. */
SIZE(port_type_validation_table, 174 * sizeof(port_type_validation_entry_t));
#if defined(__x86_64__) && defined(__LP64__)
SIZE(port_type_validation_table, 2784); SIZE(utils_mem_type_count_lock, 48);
#endif
