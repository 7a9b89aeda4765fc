/** @file
 * Validation of the arguments of the router's multicast API calls, before the router acts on them.
 *
 * Each function runs its checks in a fixed order, logs one error message under module
 * "KY_API_ROUTER" for the first one that fails, and returns its status. All but the verbosity
 * setter trace entry and exit. None keeps state or changes an argument; any thread may call any of
 * them, as long as no other one changes the records meanwhile. A command that a function does not
 * name passes its command-specific checks. */
#ifndef KY_ROUTER_UTILS_VALIDATE_H
#define KY_ROUTER_UTILS_VALIDATE_H

#include "ky_common.h"
#include "ky_names.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Records
 *
 *  Every 32-bit word of an address or a mask is a number in host byte order: 224.1.2.3 is
 *  0xE0010203. A flag is set only if it equals 1. Fields that are not examined here are the router
 *  API's.
 *  @{ */

/** The highest ID of an RPF group; the lowest one is 0. */
#define KY_RPF_GROUP_ID_MAX 511U
/** The highest value of a user token and of its mask: twelve bits. */
#define KY_USER_TOKEN_MAX 0xFFFU
/** The most entries that one get-first or get-next may ask for. */
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
    ky_ip_version_t version; /**< 1 IPv4, 2 IPv6; 0 and 3 are judged by the IPv6 words */
    union {
        ky_ipv4_prefix_t ipv4; /**< as prefix.ipv4, for version 1 */
        ky_ipv6_prefix_t ipv6; /**< as prefix.ipv6, for every other one */
    } prefix; /**< the address and the mask, in the form that the version asks for */
} ky_ip_prefix_t;

/** What names a multicast route. */
typedef struct ky_mc_route_key {
    ky_ip_prefix_t source_addr;   /**< the senders */
    ky_ip_prefix_t mc_group_addr; /**< the group; all zero, address and mask: any group */
} ky_mc_route_key_t;

/** An entry of a list of RPF interfaces. */
typedef struct ky_router_vinterface {
    ky_router_vinterface_type_t type; /**< 0 RIF, 1 IP in IP, 2 MPLS or 3 NVE */
    uint32_t id;                      /**< not examined here */
} ky_router_vinterface_t;

/** The attributes of a multicast route. */
typedef struct ky_mc_route_attr {
    ky_router_rpf_action_t rpf_action; /**< 0 to 5 */
    ky_mc_router_ttl_cmd_t ttl_cmd;    /**< 1 Dec or 2 Set */
    uint32_t router_word_1;            /**< not examined here */
    ky_router_prio_type_t prio_type;   /**< 1 MANUAL or 2 LPM */
    uint32_t router_word_2;            /**< not examined here */
    uint32_t rpf_group_id;             /**< 0 to 511; counts for RPF actions 4 and 5 */
    uint32_t user_token_valid;         /**< 1 if the route carries a user token */
    uint16_t user_token_value;         /**< 0 to 0xFFF */
    uint16_t user_token_mask;          /**< 0 to 0xFFF */
} ky_mc_route_attr_t;

/** The forwarding part of a multicast route, as far as it is examined here. */
typedef struct ky_mc_route_data {
    ky_router_action_t action;    /**< 0 to 4 */
    uint32_t egress_rif_cnt;      /**< number of egress router interfaces (RIFs) */
    uint32_t egress_container_id; /**< 0 for none; not together with egress RIFs */
} ky_mc_route_data_t;

/** Which multicast routes a get is about, as far as it is examined here. */
typedef struct ky_mc_route_get_filter {
    uint32_t source_addr_valid;                 /**< 1: by source */
    ky_ip_prefix_t source_addr;                 /**< the source; read if source_addr_valid is 1 */
    uint32_t mc_group_addr_valid;               /**< 1: by group */
    ky_ip_prefix_t mc_group_addr;               /**< the group; read if mc_group_addr_valid is 1 */
    uint32_t ingress_rif_valid;                 /**< 1: by ingress RIF */
    uint32_t ingress_rif_incl_rpf_groups_valid; /**< 1: by ingress RIF including RPF groups */
} ky_mc_route_get_filter_t;

/** @} */

/** @name Routes
 *  @{ */

/** Judges the arguments of creating, editing or deleting a multicast route.
 *
 *  A key is judged by its IP versions, which must be equal and 0 to 3; by its group, which must lie
 *  in 224.0.0.0/4 or ff00::/8 with a mask that covers the range and the address, or be all zero
 *  (and must be, for versions 0 and 3); and by its source, whose mask must be contiguous and cover
 *  the address. The group's mask need not be contiguous, unless the priority type is LPM.
 *
 *  @param cmd              ADD and EDIT judge everything, DELETE_ALL the key's IP versions alone,
 *                          every other command the key
 *  @param vrid             the virtual router; not examined
 *  @param mc_route_key_p   may be null for DELETE_ALL
 *  @param mc_route_attr_p  read for ADD and EDIT only, and then not null
 *  @param mc_route_data_p  read for ADD and EDIT only, and then not null
 *  @return  KY_STATUS_SUCCESS; KY_STATUS_PARAM_NULL for a missing key;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an IP version above 3, a group outside the multicast
 *           ranges, or a user token value or mask above 0xFFF;
 *           KY_STATUS_PARAM_ERROR for every other fault, the group 255.255.255.255 included
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_route_set(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const ky_mc_route_attr_t* mc_route_attr_p, const ky_mc_route_data_t* mc_route_data_p);

/** Judges the arguments of reading, iterating or counting multicast routes.
 *
 *  A filter's group must lie in the multicast ranges too; an all-zero one is not exempt there.
 *
 *  @param cmd                 GET judges the key and ignores the filter, every other command the
 *                             filter; GET_FIRST and GET_NEXT may ask for at most 128 entries
 *  @param vrid                the virtual router; not examined
 *  @param mc_route_key_p      read for GET only, and then not null
 *  @param filter_p            null for none; not read for GET
 *  @param mc_route_entries_p  not examined
 *  @param entries_count_p     number of entries asked for, 1 or more; not read for COUNT, not null
 *                             for every other command
 *  @return  KY_STATUS_SUCCESS;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for too many entries, an IP version above 3 in the key,
 *           or a group outside the multicast ranges;
 *           KY_STATUS_PARAM_ERROR for every other fault, the group 255.255.255.255 and an IP
 *           version above 3 in the filter included
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_route_get(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const ky_mc_route_get_filter_t* filter_p, const void* mc_route_entries_p,
    const uint32_t* entries_count_p);

/** @} */

/** @name Calls about one route
 *
 *  These functions judge the key as a route set of any command but DELETE_ALL does. The key must
 *  not be null, and the other pointers are not examined.
 *  @{ */

/** Judges the arguments of setting a route's egress RIFs.
 *
 *  @param cmd                ADD and DELETE need a count above 0
 *  @param vrid               the virtual router; not examined
 *  @param mc_route_key_p     the route
 *  @param egress_rif_list_p  not examined
 *  @param egress_rif_cnt     number of egress RIFs
 *  @return  KY_STATUS_SUCCESS;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an IP version above 3 or a group outside the
 *           multicast ranges;
 *           KY_STATUS_PARAM_ERROR for every other fault
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_egress_rif_set(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const void* egress_rif_list_p, uint32_t egress_rif_cnt);

/** Judges the arguments of getting a route's egress RIFs.
 *
 *  @param vrid               the virtual router; not examined
 *  @param mc_route_key_p     the route
 *  @param egress_rif_list_p  not examined
 *  @param egress_rif_cnt_p   not examined
 *  @return  KY_STATUS_SUCCESS;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an IP version above 3 or a group outside the
 *           multicast ranges;
 *           KY_STATUS_PARAM_ERROR for every other fault
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_egress_rif_get(
    uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p, const void* egress_rif_list_p,
    const void* egress_rif_cnt_p);

/** Judges the arguments of getting a route's activity.
 *
 *  @param cmd             not examined
 *  @param vrid            the virtual router; not examined
 *  @param mc_route_key_p  the route
 *  @param activity_p      not examined
 *  @return  KY_STATUS_SUCCESS;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an IP version above 3 or a group outside the
 *           multicast ranges;
 *           KY_STATUS_PARAM_ERROR for every other fault
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_route_activity_get(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    const void* activity_p);

/** Judges the arguments of binding a counter to a route, or unbinding it.
 *
 *  @param cmd             BIND needs a counter
 *  @param vrid            the virtual router; not examined
 *  @param mc_route_key_p  the route
 *  @param counter_id      the counter; 0 is none
 *  @return  KY_STATUS_SUCCESS;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an IP version above 3 or a group outside the
 *           multicast ranges;
 *           KY_STATUS_PARAM_ERROR for every other fault
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_route_counter_bind_set(
    ky_access_cmd_t cmd, uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p,
    uint32_t counter_id);

/** Judges the arguments of getting the counter that is bound to a route.
 *
 *  @param vrid            the virtual router; not examined
 *  @param mc_route_key_p  the route
 *  @param counter_id_p    not examined
 *  @return  KY_STATUS_SUCCESS;
 *           KY_STATUS_PARAM_EXCEEDS_RANGE for an IP version above 3 or a group outside the
 *           multicast ranges;
 *           KY_STATUS_PARAM_ERROR for every other fault
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_route_counter_bind_get(
    uint16_t vrid, const ky_mc_route_key_t* mc_route_key_p, const void* counter_id_p);

/** @} */

/** @name RPF groups
 *  @{ */

/** Judges the arguments of setting an RPF group.
 *
 *  @param cmd             CREATE and DELETE_ALL do not look at the ID; CREATE and SET need a count
 *                         above 0
 *  @param rpf_group_id_p  the ID, 0 to 511; not null unless the command does not look at it
 *  @param rpf_vif_list_p  the group's interfaces, each of a type from 0 to 3; not null unless the
 *                         count is 0
 *  @param rpf_vif_cnt     number of interfaces in the list
 *  @return                KY_STATUS_SUCCESS or KY_STATUS_PARAM_ERROR
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_rpf_group_set(
    ky_access_cmd_t cmd, const uint32_t* rpf_group_id_p,
    const ky_router_vinterface_t* rpf_vif_list_p, uint32_t rpf_vif_cnt);

/** Judges the arguments of getting an RPF group.
 *
 *  @param cmd             GET and GET_NEXT look at the ID
 *  @param rpf_group_id_p  the ID, 0 to 511; not null for those two
 *  @param rpf_vif_list_p  not examined
 *  @param rpf_vif_cnt_p   not examined
 *  @return                KY_STATUS_SUCCESS or KY_STATUS_PARAM_ERROR
 */
KY_EXPORT ky_status_t ky_router_utils_validate_mc_rpf_group_get(
    ky_access_cmd_t cmd, const uint32_t* rpf_group_id_p, const void* rpf_vif_list_p,
    const void* rpf_vif_cnt_p);

/** @} */

/** @name Verbosity
 *  @{ */

/** Sets the verbosity of module "KY_API_ROUTER", 3 at load. It does not trace.
 *
 *  @param level  0 (silent) to 8 (all); a larger level is stored too and prints all
 *  @return       KY_STATUS_SUCCESS
 */
KY_EXPORT ky_status_t ky_router_utils_log_verbosity_set(uint32_t level);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
