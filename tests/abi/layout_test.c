/* What is compiled into programs: limits and the layout of every record. Compile-only, as C11 and as
 * C++11. */
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
/* clang-format off */

/* Log masks and levels, and limits. */
VALUE(ADVISER_EVENT_MAX, 51); VALUE(KY_LOG_MASK_ERROR, 1); VALUE(KY_LOG_MASK_WARNING, 3);
VALUE(KY_LOG_MASK_NOTICE, 7); VALUE(KY_LOG_MASK_INFO, 15); VALUE(KY_LOG_MASK_DEBUG, 31);
VALUE(KY_LOG_LEVEL_MIN, 0); VALUE(KY_LOG_LEVEL_DEFAULT, 3); VALUE(KY_LOG_LEVEL_MAX, 8);
VALUE(KY_RPF_GROUP_ID_MAX, 511); VALUE(KY_USER_TOKEN_MAX, 0xFFF);
VALUE(KY_MC_ROUTE_ENTRIES_MAX, 128); VALUE(PORT_TYPE_VALIDATION_ROWS, 174);

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

/* KRIOLILGLU_VERSION, computed from other parts. */
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

/* The exported objects have the size that programs copy. */
SIZE(port_type_validation_table, 174 * sizeof(port_type_validation_entry_t));
#if defined(__x86_64__) && defined(__LP64__)
SIZE(port_type_validation_table, 2784); SIZE(utils_mem_type_count_lock, 48);
#endif
