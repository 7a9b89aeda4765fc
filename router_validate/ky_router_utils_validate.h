/** @file
 * Validation of the arguments of the router's multicast API calls.
 *
 * Each function checks its arguments in a fixed order, logs one error message under module
 * "KY_API_ROUTER" for the first check that fails, and returns the status of that check. Commands
 * are not checked: a check that is stated for certain commands is skipped for all others. The
 * functions trace entry and exit, except the verbosity setter, and are thread-safe while no thread
 * changes the records. */
#ifndef KY_ROUTER_UTILS_VALIDATE_H
#define KY_ROUTER_UTILS_VALIDATE_H

#include "ky_common.h"
#include "ky_names.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Limits and records
 *
 *  Each 32-bit word of an address or a mask is a number in host byte order: 224.1.2.3 is
 *  0xE0010203. A flag is set only if it is 1. Fields that are not checked belong to the router API.
 *  `ky_values.h` has constants for the enumerations.
 *  @{ */

/** The highest ID of an RPF group; the lowest is 0. */
#define KY_RPF_GROUP_ID_MAX 511U
/** The highest value of a user token and of its mask, 12 bits. */
#define KY_USER_TOKEN_MAX 0xFFFU
/** The largest number of entries that GET_FIRST or GET_NEXT may request. */
#define KY_MC_ROUTE_ENTRIES_MAX 128U

/** An IPv4 address and its bit mask (not a length). */
typedef struct ky_ipv4_prefix {
    uint32_t addr; /**< the address */
    uint32_t mask; /**< its bit mask */
} ky_ipv4_prefix_t;

/** An IPv6 address and its bit mask (not a length); word 0 holds the first four bytes. */
typedef struct ky_ipv6_prefix {
    uint32_t addr[4]; /**< the address */
    uint32_t mask[4]; /**< its bit mask */
} ky_ipv6_prefix_t;

/** An address with a bit mask of the same form. */
typedef struct ky_ip_prefix {
    ky_ip_version_t version; /**< 1 IPv4 or 2 IPv6; 0 and 3 use the IPv6 words */
    union {
        ky_ipv4_prefix_t ipv4; /**< as prefix.ipv4: for version 1 */
        ky_ipv6_prefix_t ipv6; /**< as prefix.ipv6: for other versions */
    } prefix;                  /**< the address and its mask, in the form of the version */
} ky_ip_prefix_t;

/** The key of a multicast route. A key fails its check if, in this order,
 *
 *  1. the version of the group is above 3: KY_STATUS_PARAM_EXCEEDS_RANGE;
 *  2. the version of the source is above 3: KY_STATUS_PARAM_EXCEEDS_RANGE;
 *  3. the two versions differ: KY_STATUS_PARAM_ERROR;
 *  4. the group is not in 224.0.0.0/4 or ff00::/8: KY_STATUS_PARAM_EXCEEDS_RANGE. A group that is
 *     all zero, address and mask, stands for any group and passes; 255.255.255.255 fails in step 6;
 *  5. the mask of the source is not contiguous, or its address has bits outside the mask:
 *     KY_STATUS_PARAM_ERROR;
 *  6. the mask of the group does not cover 224.0.0.0/4 or ff00::/8, or its address has bits outside
 *     the mask, or its version is 0 or 3, unless it is all zero: KY_STATUS_PARAM_ERROR. The mask
 *     need not be contiguous.
 */
typedef struct ky_mc_route_key {
    ky_ip_prefix_t source_addr;   /**< the source */
    ky_ip_prefix_t mc_group_addr; /**< the group */
} ky_mc_route_key_t;

/** An entry of a list of RPF interfaces. */
typedef struct ky_router_vinterface {
    ky_router_vinterface_type_t type; /**< 0 to 3 */
    uint32_t id;                      /**< not checked */
} ky_router_vinterface_t;

/** The attributes of a multicast route. */
typedef struct ky_mc_route_attr {
    ky_router_rpf_action_t rpf_action; /**< 0 to 5 */
    ky_mc_router_ttl_cmd_t ttl_cmd;    /**< 1 or 2 */
    uint32_t router_word_1;            /**< not checked */
    ky_router_prio_type_t prio_type;   /**< 1 or 2 (LPM) */
    uint32_t router_word_2;            /**< not checked */
    uint32_t rpf_group_id;             /**< 0 to 511; checked for RPF actions 4 and 5 */
    uint32_t user_token_valid;         /**< 1 if the route carries a user token */
    uint16_t user_token_value;         /**< 0 to 0xFFF */
    uint16_t user_token_mask;          /**< 0 to 0xFFF */
} ky_mc_route_attr_t;

/** The forwarding data of a multicast route: the fields that are checked. */
typedef struct ky_mc_route_data {
    ky_router_action_t action;    /**< 0 to 4 */
    uint32_t egress_rif_cnt;      /**< number of egress router interfaces (RIFs) */
    uint32_t egress_container_id; /**< 0 for none, as it must be with egress RIFs */
} ky_mc_route_data_t;

/** A filter for multicast routes: the fields that are checked. */
typedef struct ky_mc_route_get_filter {
    uint32_t source_addr_valid;                 /**< 1: filter by source */
    ky_ip_prefix_t source_addr;                 /**< the source, if source_addr_valid is 1 */
    uint32_t mc_group_addr_valid;               /**< 1: filter by group */
    ky_ip_prefix_t mc_group_addr;               /**< the group, if mc_group_addr_valid is 1 */
    uint32_t ingress_rif_valid;                 /**< 1: filter by ingress RIF */
    uint32_t ingress_rif_incl_rpf_groups_valid; /**< 1: filter by ingress RIF and RPF groups */
} ky_mc_route_get_filter_t;

/** @} */

/** @name Routes
 *  @{ */

/** Validates the arguments of a call that creates, edits or deletes a multicast route.
 *
 *  The call fails if, in this order,
 *
 *  1. the key is null: KY_STATUS_PARAM_NULL, except for DELETE_ALL;
 *  2. the check of the key below fails, of which DELETE_ALL has steps 1 to 3 only;
 *
 *  and for ADD and EDIT then
 *
 *  1. rpf_action is above 5: KY_STATUS_PARAM_ERROR;
 *  2. rpf_action is 4 or 5 and rpf_group_id is above 511: KY_STATUS_PARAM_ERROR;
 *  3. prio_type is neither 1 nor 2: KY_STATUS_PARAM_ERROR;
 *  4. prio_type is 2 (LPM) and the mask of the group is not contiguous: KY_STATUS_PARAM_ERROR;
 *  5. ttl_cmd is neither 1 nor 2: KY_STATUS_PARAM_ERROR;
 *  6. user_token_valid is 1 and user_token_mask is above 0xFFF: KY_STATUS_PARAM_EXCEEDS_RANGE;
 *  7. user_token_valid is 1 and user_token_value is above 0xFFF: KY_STATUS_PARAM_EXCEEDS_RANGE;
 *  8. action is above 4: KY_STATUS_PARAM_ERROR;
 *  9. neither egress_container_id nor egress_rif_cnt is 0: KY_STATUS_PARAM_ERROR.
 *
 *  All functions check a key alike:
 *
 *  @copydetails ky_mc_route_key_t
 *
 *  @param cmd              the command
 *  @param vrid             the virtual router; not checked
 *  @param mc_route_key_p   the key; may be null for DELETE_ALL
 *  @param mc_route_attr_p  the attributes; read for ADD and EDIT only, and then not null
 *  @param mc_route_data_p  the forwarding data; read for ADD and EDIT only, and then not null
 *  @return                 KY_STATUS_SUCCESS, or the status of the first check that fails
 */
ky_status_t ky_router_utils_validate_mc_route_set(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const ky_mc_route_attr_t* mc_route_attr_p, const ky_mc_route_data_t* mc_route_data_p);

/** Validates the arguments of a call that reads, iterates or counts multicast routes.
 *
 *  The call fails if, in this order,
 *
 *  1. the count is 0: KY_STATUS_PARAM_ERROR, except for COUNT;
 *  2. for GET, the check of the key below fails; the following steps are not for GET;
 *  3. for GET_FIRST and GET_NEXT, the count is above 128: KY_STATUS_PARAM_EXCEEDS_RANGE;
 *  4. the version of a source to filter by is above 3: KY_STATUS_PARAM_ERROR;
 *  5. the mask of that source is not contiguous, or its address has bits outside the mask:
 *     KY_STATUS_PARAM_ERROR;
 *  6. the version of a group to filter by is above 3: KY_STATUS_PARAM_ERROR;
 *  7. that group is not in 224.0.0.0/4 or ff00::/8: KY_STATUS_PARAM_EXCEEDS_RANGE, also if it is
 *     all zero; 255.255.255.255 fails in step 8;
 *  8. the mask of that group does not cover 224.0.0.0/4 or ff00::/8, or its address has bits
 *     outside the mask, or its version is 0 or 3: KY_STATUS_PARAM_ERROR;
 *  9. ingress_rif_valid and ingress_rif_incl_rpf_groups_valid are both 1: KY_STATUS_PARAM_ERROR.
 *
 *  All functions check a key alike:
 *
 *  @copydetails ky_mc_route_key_t
 *
 *  @param cmd                 the command
 *  @param vrid                the virtual router; not checked
 *  @param mc_route_key_p      the key; read for GET only, and then not null
 *  @param filter_p            the filter, or null for none; not read for GET
 *  @param mc_route_entries_p  not checked
 *  @param entries_count_p     number of entries requested; not read for COUNT, and not null for
 *                             every other command
 *  @return                    KY_STATUS_SUCCESS, or the status of the first check that fails
 */
ky_status_t ky_router_utils_validate_mc_route_get(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const ky_mc_route_get_filter_t* filter_p, const void* mc_route_entries_p,
    const uint32_t* entries_count_p);

/** @} */

/** @name Calls about one route
 *
 *  The key must not be null. The other pointers are not checked.
 *  @{ */

/** Validates the arguments of a call that sets the egress RIFs of a route: the key, then the count.
 *
 *  @copydetails ky_mc_route_key_t
 *
 *  @param cmd                the command; ADD and DELETE fail with KY_STATUS_PARAM_ERROR if the
 *                            count is 0
 *  @param vrid               the virtual router; not checked
 *  @param mc_route_key_p     the key
 *  @param egress_rif_list_p  not checked
 *  @param egress_rif_cnt     number of egress RIFs
 *  @return                   KY_STATUS_SUCCESS, or the status of the first check that fails
 */
ky_status_t ky_router_utils_validate_mc_egress_rif_set(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const void* egress_rif_list_p, uint32_t egress_rif_cnt);

/** Validates the arguments of a call that gets the egress RIFs of a route: the key.
 *
 *  @copydetails ky_mc_route_key_t
 *
 *  @param vrid               the virtual router; not checked
 *  @param mc_route_key_p     the key
 *  @param egress_rif_list_p  not checked
 *  @param egress_rif_cnt_p   not checked
 *  @return                   KY_STATUS_SUCCESS, or the status of the first check that fails
 */
ky_status_t ky_router_utils_validate_mc_egress_rif_get(
    uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p, const void* egress_rif_list_p,
    const void* egress_rif_cnt_p);

/** Validates the arguments of a call that gets the activity of a route: the key.
 *
 *  @copydetails ky_mc_route_key_t
 *
 *  @param cmd             not checked
 *  @param vrid            the virtual router; not checked
 *  @param mc_route_key_p  the key
 *  @param activity_p      not checked
 *  @return                KY_STATUS_SUCCESS, or the status of the first check that fails
 */
ky_status_t ky_router_utils_validate_mc_route_activity_get(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const void* activity_p);

/** Validates the arguments of a call that binds or unbinds a counter: the key, then the counter.
 *
 *  @copydetails ky_mc_route_key_t
 *
 *  @param cmd             the command; BIND fails with KY_STATUS_PARAM_ERROR if the counter is 0
 *  @param vrid            the virtual router; not checked
 *  @param mc_route_key_p  the key
 *  @param counter_id      the counter
 *  @return                KY_STATUS_SUCCESS, or the status of the first check that fails
 */
ky_status_t ky_router_utils_validate_mc_route_counter_bind_set(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    uint32_t counter_id);

/** Validates the arguments of a call that gets the counter of a route: the key.
 *
 *  @copydetails ky_mc_route_key_t
 *
 *  @param vrid            the virtual router; not checked
 *  @param mc_route_key_p  the key
 *  @param counter_id_p    not checked
 *  @return                KY_STATUS_SUCCESS, or the status of the first check that fails
 */
ky_status_t ky_router_utils_validate_mc_route_counter_bind_get(
    uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p, const void* counter_id_p);

/** @} */

/** @name RPF groups
 *  @{ */

/** Validates the arguments of a call that sets an RPF group.
 *
 *  The call fails with KY_STATUS_PARAM_ERROR if, in this order,
 *
 *  1. the ID is above 511, except for CREATE and DELETE_ALL;
 *  2. the count is 0, for CREATE and SET;
 *  3. the type of an interface is above 3.
 *
 *  @param cmd             the command
 *  @param rpf_group_id_p  ID of the group; not read for CREATE and DELETE_ALL, and not null for
 *                         every other command
 *  @param rpf_vif_list_p  the interfaces of the group; not null unless the count is 0
 *  @param rpf_vif_cnt     number of interfaces
 *  @return                KY_STATUS_SUCCESS or KY_STATUS_PARAM_ERROR
 */
ky_status_t ky_router_utils_validate_mc_rpf_group_set(
    ky_access_cmd_t cmd, const uint32_t* rpf_group_id_p,
    const ky_router_vinterface_t* rpf_vif_list_p, uint32_t rpf_vif_cnt);

/** Validates the arguments of a call that gets an RPF group. It fails with KY_STATUS_PARAM_ERROR if
 *  the ID is above 511, for GET and GET_NEXT.
 *
 *  @param cmd             the command
 *  @param rpf_group_id_p  ID of the group; read for GET and GET_NEXT only, and then not null
 *  @param rpf_vif_list_p  not checked
 *  @param rpf_vif_cnt_p   not checked
 *  @return                KY_STATUS_SUCCESS or KY_STATUS_PARAM_ERROR
 */
ky_status_t ky_router_utils_validate_mc_rpf_group_get(
    ky_access_cmd_t cmd, const uint32_t* rpf_group_id_p, const void* rpf_vif_list_p,
    const void* rpf_vif_cnt_p);

/** @} */

/** @name Verbosity
 *  @{ */

/** Sets the verbosity of module "KY_API_ROUTER", which is 3 at load. It does not trace.
 *
 *  @param level  0 (silent) to 8 (everything); a higher level is stored, and prints everything
 *  @return       KY_STATUS_SUCCESS
 */
ky_status_t ky_router_utils_log_verbosity_set(uint32_t level);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
