// Validation of the multicast API's arguments: module "KY_API_ROUTER".
#include "ky_router_utils_validate.h"

#include <arpa/inet.h>
#include <cstddef>
#include <cstring>

#define KY_LOG_MODULE "KY_API_ROUTER"
#define KY_LOG_VERBOSITY ky_router_utils_verbosity_level

namespace {

constinit uint32_t ky_router_utils_verbosity_level = KY_LOG_LEVEL_DEFAULT;

constexpr ky_ip_version_t IP_VERSION_IPV4 = 1;
constexpr ky_ip_version_t IP_VERSION_IPV6 = 2;
constexpr ky_ip_version_t IP_VERSION_MAX = 3;
constexpr uint32_t IPV4_BROADCAST = 0xFFFFFFFF;
constexpr uint32_t IPV4_MC_RANGE = 0xE0000000; // 224.0.0.0/4
constexpr uint32_t IPV4_MC_RANGE_MASK = 0xF0000000;
constexpr uint32_t IPV6_MC_RANGE = 0xFF000000; // ff00::/8, its first word
constexpr uint32_t IPV6_MC_RANGE_MASK = 0xFF000000;

constexpr ky_router_vinterface_type_t VIF_TYPE_MAX = 3; // NVE
constexpr ky_router_rpf_action_t RPF_ACTION_DROP_LIST = 4;
constexpr ky_router_rpf_action_t RPF_ACTION_TRAP_LIST = 5;
constexpr ky_router_rpf_action_t RPF_ACTION_MAX = 5;
constexpr ky_router_prio_type_t PRIO_TYPE_MIN = 1;
constexpr ky_router_prio_type_t PRIO_TYPE_LPM = 2;
constexpr ky_router_prio_type_t PRIO_TYPE_MAX = 2;
constexpr ky_mc_router_ttl_cmd_t TTL_CMD_MIN = 1;
constexpr ky_mc_router_ttl_cmd_t TTL_CMD_MAX = 2;
constexpr ky_router_action_t ROUTER_ACTION_MAX = 4;

// ---- Addresses and masks ----

/* A call that passes runs no other function: with calls in between, its checks cost half as much
 * again. */
#define ALWAYS_INLINE __attribute__((always_inline)) inline

/* The four words of an IPv6 address or mask, as two: most of what is asked of them does not depend
 * on their order. */
struct Halves {
    uint64_t first;
    uint64_t second;
};

ALWAYS_INLINE Halves halves_of(const uint32_t (&words)[4])
{
    Halves halves;
    static_assert(sizeof halves == sizeof words);
    memcpy(&halves, words, sizeof halves);
    return halves;
}

/* A mask is contiguous if its set bits are one run from the most significant bit on: one added to
 * the bits that are clear then carries through all of them. */
ALWAYS_INLINE int __is_ipv4_mask_contiguous(uint32_t mask)
{
    const uint32_t rest = ~mask;
    return ((rest + 1) & rest) == 0;
}

ALWAYS_INLINE int __is_ipv6_mask_contiguous(const uint32_t (&mask)[4])
{
    const uint64_t high = ~(uint64_t{mask[0]} << 32 | mask[1]);
    const uint64_t low = ~(uint64_t{mask[2]} << 32 | mask[3]);
    const uint64_t carry = low + 1 == 0 ? 1 : 0;
    return (((high + carry) & high) | ((low + 1) & low)) == 0;
}

/* Whether an address has no bits outside its mask. */
ALWAYS_INLINE bool is_covered(const ky_ipv4_prefix_t& ipv4)
{
    return (ipv4.addr & ~ipv4.mask) == 0;
}

ALWAYS_INLINE bool is_covered(const ky_ipv6_prefix_t& ipv6)
{
    const Halves addr = halves_of(ipv6.addr);
    const Halves mask = halves_of(ipv6.mask);
    return ((addr.first & ~mask.first) | (addr.second & ~mask.second)) == 0;
}

/* Whether an address and its mask have no bits at all. */
ALWAYS_INLINE bool is_zero(const ky_ipv4_prefix_t& ipv4)
{
    return (ipv4.addr | ipv4.mask) == 0;
}

ALWAYS_INLINE bool is_zero(const ky_ipv6_prefix_t& ipv6)
{
    const Halves addr = halves_of(ipv6.addr);
    const Halves mask = halves_of(ipv6.mask);
    return (addr.first | addr.second | mask.first | mask.second) == 0;
}

/* Whether a prefix is one: its address lies within its mask, and the mask is contiguous. */
ALWAYS_INLINE bool is_prefix(const ky_ip_prefix_t* prefix)
{
    const auto& [version, words] = *prefix;
    return version == IP_VERSION_IPV4
               ? is_covered(words.ipv4) && __is_ipv4_mask_contiguous(words.ipv4.mask)
               : is_covered(words.ipv6) && __is_ipv6_mask_contiguous(words.ipv6.mask);
}

ALWAYS_INLINE bool is_in_mc_range(const ky_ip_prefix_t* group)
{
    const auto& [version, words] = *group;
    return version == IP_VERSION_IPV4 ? (words.ipv4.addr & IPV4_MC_RANGE_MASK) == IPV4_MC_RANGE
                                      : (words.ipv6.addr[0] & IPV6_MC_RANGE_MASK) == IPV6_MC_RANGE;
}

ALWAYS_INLINE bool is_ipv4_broadcast(const ky_ip_prefix_t* group)
{
    return group->version == IP_VERSION_IPV4 && group->prefix.ipv4.addr == IPV4_BROADCAST;
}

/* An all-zero group stands for any. */
ALWAYS_INLINE bool is_any_group(const ky_ip_prefix_t* group)
{
    const auto& [version, words] = *group;
    return version == IP_VERSION_IPV4 ? is_zero(words.ipv4) : is_zero(words.ipv6);
}

/* The mask of a multicast prefix covers the multicast range; it need not be contiguous. */
ALWAYS_INLINE int __is_ipv4_mc_prefix_valid(const ky_ip_prefix_t* prefix)
{
    if (prefix == nullptr) {
        return 0;
    }
    const ky_ipv4_prefix_t& ipv4 = prefix->prefix.ipv4;
    return (ipv4.addr & IPV4_MC_RANGE_MASK) == IPV4_MC_RANGE &&
           (ipv4.mask & IPV4_MC_RANGE_MASK) == IPV4_MC_RANGE_MASK && is_covered(ipv4);
}

ALWAYS_INLINE int __is_ipv6_mc_prefix_valid(const ky_ip_prefix_t* prefix)
{
    if (prefix == nullptr) {
        return 0;
    }
    const ky_ipv6_prefix_t& ipv6 = prefix->prefix.ipv6;
    return (ipv6.addr[0] & IPV6_MC_RANGE_MASK) == IPV6_MC_RANGE &&
           (ipv6.mask[0] & IPV6_MC_RANGE_MASK) == IPV6_MC_RANGE_MASK && is_covered(ipv6);
}

ALWAYS_INLINE int __is_mc_prefix_valid(const ky_ip_prefix_t* prefix)
{
    if (prefix == nullptr) {
        return 0;
    }
    switch (prefix->version) {
    case IP_VERSION_IPV4:
        return __is_ipv4_mc_prefix_valid(prefix);
    case IP_VERSION_IPV6:
        return __is_ipv6_mc_prefix_valid(prefix);
    default:
        return 0;
    }
}

// ---- Their texts ----

using PrefixText = char[50];

/* The text of an address or of a mask: of whichever words the caller picks. */
const char* words_to_str(
    ky_ip_version_t version, uint32_t ipv4_word, const uint32_t (&ipv6_words)[4], PrefixText& text)
{
    if (version == IP_VERSION_IPV4) {
        const in_addr address = {htonl(ipv4_word)};
        return inet_ntop(AF_INET, &address, text, sizeof text);
    }
    if (version == IP_VERSION_IPV6) {
        uint32_t address[4];
        for (size_t i = 0; i < 4; i++) {
            address[i] = htonl(ipv6_words[i]);
        }
        return inet_ntop(AF_INET6, address, text, sizeof text);
    }
    return "Invalid IP version";
}

const char* __prefix_addr_to_str(const ky_ip_prefix_t* prefix, PrefixText& text)
{
    return prefix == nullptr
               ? "NULL prefix"
               : words_to_str(
                     prefix->version, prefix->prefix.ipv4.addr, prefix->prefix.ipv6.addr, text);
}

const char* __prefix_mask_to_str(const ky_ip_prefix_t* prefix, PrefixText& text)
{
    return prefix == nullptr
               ? "NULL prefix"
               : words_to_str(
                     prefix->version, prefix->prefix.ipv4.mask, prefix->prefix.ipv6.mask, text);
}

/* KY_FAIL with a message about a prefix, whose arguments are the texts `address` and `mask`. The
 * texts and their buffers are made where the records are, off the path that passes. */
#define FAIL_ABOUT(status, prefix_p, ...)                                                        \
    ((KY_LOG_WANTED(KY_LOG_MASK_ERROR)                                                           \
          ? [](const char* function, const ky_ip_prefix_t* prefix)                               \
                __attribute__((cold, noinline)) {                                                \
                    PrefixText address_text = {};                                                \
                    PrefixText mask_text = {};                                                   \
                    const char* address = __prefix_addr_to_str(prefix, address_text);            \
                    [[maybe_unused]] const char* mask = __prefix_mask_to_str(prefix, mask_text); \
                    KY_LOG_RECORDS(function, KY_LOG_MASK_ERROR, __VA_ARGS__);                    \
                }(__func__, prefix_p)                                                            \
          : (void)0),                                                                            \
     (status))

// ---- Checks that several functions share ----

ALWAYS_INLINE ky_status_t __validate_mc_key_ip_versions(const ky_mc_route_key_t* mc_route_key_p)
{
    const ky_ip_version_t source_version = mc_route_key_p->source_addr.version;
    const ky_ip_version_t group_version = mc_route_key_p->mc_group_addr.version;

    if (group_version > IP_VERSION_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Given MC IP version %d is invalid\n", group_version);
    }
    if (source_version > IP_VERSION_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Given source IP version %d is invalid\n",
            source_version);
    }
    if (source_version != group_version) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "Source IP version %s and MC IP version %s are not equal\n",
            ky_ip_version_str(source_version), ky_ip_version_str(group_version));
    }
    return KY_STATUS_SUCCESS;
}

ALWAYS_INLINE ky_status_t __validate_mc_key_ranges(const ky_mc_route_key_t* mc_route_key_p)
{
    const ky_ip_prefix_t* source = &mc_route_key_p->source_addr;
    const ky_ip_prefix_t* group = &mc_route_key_p->mc_group_addr;

    if (!is_in_mc_range(group) && !is_ipv4_broadcast(group) && !is_any_group(group)) {
        return FAIL_ABOUT(
            KY_STATUS_PARAM_EXCEEDS_RANGE, group,
            "Given MC mask %s/%s is not in the valid MC address range\n", address, mask);
    }
    if (!is_prefix(source)) {
        return FAIL_ABOUT(
            KY_STATUS_PARAM_ERROR, source,
            "Given source address prefix %s/%s is not a valid IPv4 or IPv6 prefix\n", address,
            mask);
    }
    if (!__is_mc_prefix_valid(group) && !is_any_group(group)) {
        return FAIL_ABOUT(
            KY_STATUS_PARAM_ERROR, group, "Given MC mask %s/%s is not a valid mask\n", address,
            mask);
    }
    return KY_STATUS_SUCCESS;
}

/* The key checks in their order: the ranges of a key make sense only if its versions do. */
ALWAYS_INLINE ky_status_t validate_mc_key(const ky_mc_route_key_t* mc_route_key_p)
{
    const ky_status_t status = __validate_mc_key_ip_versions(mc_route_key_p);
    return status == KY_STATUS_SUCCESS ? __validate_mc_key_ranges(mc_route_key_p) : status;
}

ky_status_t __validate_vif_types(const ky_router_vinterface_t* vif_list_p, uint32_t vif_cnt)
{
    for (uint32_t i = 0; i < vif_cnt; i++) {
        if (vif_list_p[i].type > VIF_TYPE_MAX) {
            return KY_FAIL(
                KY_STATUS_PARAM_ERROR, "Invalid VIF type %s given for VIF index %u\n",
                ky_router_vinterface_type_str(vif_list_p[i].type), i);
        }
    }
    return KY_STATUS_SUCCESS;
}

} // namespace

// ---- Routes ----

ky_status_t ky_router_utils_validate_mc_route_set(
    ky_access_cmd_t cmd, uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p,
    const ky_mc_route_attr_t* mc_route_attr_p, const ky_mc_route_data_t* mc_route_data_p)
{
    KY_TRACE_FUNCTION();

    const bool is_delete_all = cmd == KY_ACCESS_CMD_DELETE_ALL;
    if (!is_delete_all && mc_route_key_p == nullptr) {
        return KY_FAIL(KY_STATUS_PARAM_NULL, "Given mc_route_key_p is NULL and CMD is %d \n", cmd);
    }
    if (mc_route_key_p != nullptr) {
        const ky_status_t status = is_delete_all ? __validate_mc_key_ip_versions(mc_route_key_p)
                                                 : validate_mc_key(mc_route_key_p);
        if (status != KY_STATUS_SUCCESS) {
            return status;
        }
    }
    // Every other command is judged by its key alone.
    if (cmd != KY_ACCESS_CMD_ADD && cmd != KY_ACCESS_CMD_EDIT) {
        return KY_STATUS_SUCCESS;
    }

    const ky_ip_prefix_t* group = &mc_route_key_p->mc_group_addr;
    const ky_mc_route_attr_t& attr = *mc_route_attr_p;
    const ky_mc_route_data_t& data = *mc_route_data_p;
    const bool needs_rpf_group =
        attr.rpf_action == RPF_ACTION_DROP_LIST || attr.rpf_action == RPF_ACTION_TRAP_LIST;
    const bool has_user_token = attr.user_token_valid == 1;
    if (attr.rpf_action > RPF_ACTION_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Given RPF action %d is invalid\n", attr.rpf_action);
    }
    if (needs_rpf_group && attr.rpf_group_id > KY_RPF_GROUP_ID_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR,
            "Invalid RPF group %u given. "
            "Valid RPF group must be given when RPF action is DROP_LIST or TRAP_LIST\n",
            attr.rpf_group_id);
    }
    if (attr.prio_type < PRIO_TYPE_MIN || attr.prio_type > PRIO_TYPE_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Invalid priority type %d given\n", attr.prio_type);
    }
    if (attr.prio_type == PRIO_TYPE_LPM && !is_prefix(group)) {
        return FAIL_ABOUT(
            KY_STATUS_PARAM_ERROR, group,
            "Invalid MC group mask %s/%s given for priority type LPM\n", address, mask);
    }
    if (attr.ttl_cmd < TTL_CMD_MIN || attr.ttl_cmd > TTL_CMD_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Invalid TTL command %d given\n", attr.ttl_cmd);
    }
    if (has_user_token && attr.user_token_mask > KY_USER_TOKEN_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE,
            "User token mask[0x%x] is invalid, Max Mask value : 0x%x\n", attr.user_token_mask,
            KY_USER_TOKEN_MAX);
    }
    if (has_user_token && attr.user_token_value > KY_USER_TOKEN_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "User token value[0x%x] is invalid, Max value : 0x%x\n",
            attr.user_token_value, KY_USER_TOKEN_MAX);
    }
    if (data.action > ROUTER_ACTION_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Invalid router action %d given\n", data.action);
    }
    if (data.egress_container_id != 0 && data.egress_rif_cnt != 0) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR,
            "Egress container ID %u and egress RIF count %u can't both be specified\n",
            data.egress_container_id, data.egress_rif_cnt);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t ky_router_utils_validate_mc_route_get(
    ky_access_cmd_t cmd, uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p,
    const ky_mc_route_get_filter_t* filter_p, const void* /* mc_route_entries_p */,
    const uint32_t* entries_count_p)
{
    KY_TRACE_FUNCTION();

    if (cmd != KY_ACCESS_CMD_COUNT && *entries_count_p == 0) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "Entries count must be larger than 0 for command %s\n",
            ky_access_cmd_str(cmd));
    }
    if (cmd == KY_ACCESS_CMD_GET) {
        return validate_mc_key(mc_route_key_p);
    }
    if ((cmd == KY_ACCESS_CMD_GET_FIRST || cmd == KY_ACCESS_CMD_GET_NEXT) &&
        *entries_count_p > KY_MC_ROUTE_ENTRIES_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Given entries count %u is larger than max allowed %u\n",
            *entries_count_p, KY_MC_ROUTE_ENTRIES_MAX);
    }
    if (filter_p == nullptr) {
        return KY_STATUS_SUCCESS;
    }

    if (filter_p->source_addr_valid == 1) {
        const ky_ip_prefix_t* source = &filter_p->source_addr;
        if (source->version > IP_VERSION_MAX) {
            return KY_FAIL(
                KY_STATUS_PARAM_ERROR, "Given filter source IP version %d is invalid\n",
                source->version);
        }
        if (!is_prefix(source)) {
            return FAIL_ABOUT(
                KY_STATUS_PARAM_ERROR, source,
                "Given filter source address prefix %s/%s is not a valid IPv4 or IPv6 prefix\n",
                address, mask);
        }
    }
    if (filter_p->mc_group_addr_valid == 1) {
        const ky_ip_prefix_t* group = &filter_p->mc_group_addr;
        if (group->version > IP_VERSION_MAX) {
            return KY_FAIL(
                KY_STATUS_PARAM_ERROR, "Given filter MC IP version %d is invalid\n",
                group->version);
        }
        // Unlike a key's, an all-zero group is not exempt.
        if (!is_in_mc_range(group) && !is_ipv4_broadcast(group)) {
            return FAIL_ABOUT(
                KY_STATUS_PARAM_EXCEEDS_RANGE, group,
                "Given filter MC address %s is not in the valid MC address range\n", address);
        }
        if (!__is_mc_prefix_valid(group)) {
            return FAIL_ABOUT(
                KY_STATUS_PARAM_ERROR, group, "Given filter MC mask %s/%s is not a valid mask\n",
                address, mask);
        }
    }
    if (filter_p->ingress_rif_valid == 1 && filter_p->ingress_rif_incl_rpf_groups_valid == 1) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR,
            "Filter by ingress RIF and filter by ingress RIF including RPF groups "
            "can't both be valid\n");
    }
    return KY_STATUS_SUCCESS;
}

// ---- Calls about one route ----

ky_status_t ky_router_utils_validate_mc_egress_rif_set(
    ky_access_cmd_t cmd, uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p,
    const void* /* egress_rif_list_p */, uint32_t egress_rif_cnt)
{
    KY_TRACE_FUNCTION();

    const ky_status_t status = validate_mc_key(mc_route_key_p);
    if (status != KY_STATUS_SUCCESS) {
        return status;
    }
    if ((cmd == KY_ACCESS_CMD_ADD || cmd == KY_ACCESS_CMD_DELETE) && egress_rif_cnt == 0) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "Egress RIF count cannot be 0 when command is %s\n",
            ky_access_cmd_str(cmd));
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t ky_router_utils_validate_mc_egress_rif_get(
    uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p,
    const void* /* egress_rif_list_p */, const void* /* egress_rif_cnt_p */)
{
    return KY_TRACED(validate_mc_key, mc_route_key_p);
}

ky_status_t ky_router_utils_validate_mc_route_activity_get(
    ky_access_cmd_t /* cmd */, uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p,
    const void* /* activity_p */)
{
    return KY_TRACED(validate_mc_key, mc_route_key_p);
}

ky_status_t ky_router_utils_validate_mc_route_counter_bind_set(
    ky_access_cmd_t cmd, uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p,
    uint32_t counter_id)
{
    KY_TRACE_FUNCTION();

    const ky_status_t status = validate_mc_key(mc_route_key_p);
    if (status != KY_STATUS_SUCCESS) {
        return status;
    }
    if (cmd == KY_ACCESS_CMD_BIND && counter_id == 0) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Counter_id must be valid when binding\n");
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t ky_router_utils_validate_mc_route_counter_bind_get(
    uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p, const void* /* counter_id_p */)
{
    return KY_TRACED(validate_mc_key, mc_route_key_p);
}

// ---- RPF groups ----

ky_status_t ky_router_utils_validate_mc_rpf_group_set(
    ky_access_cmd_t cmd, const uint32_t* rpf_group_id_p,
    const ky_router_vinterface_t* rpf_vif_list_p, uint32_t rpf_vif_cnt)
{
    KY_TRACE_FUNCTION();

    if (cmd != KY_ACCESS_CMD_CREATE && cmd != KY_ACCESS_CMD_DELETE_ALL &&
        *rpf_group_id_p > KY_RPF_GROUP_ID_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Invalid RPF group ID %u given\n", *rpf_group_id_p);
    }
    if ((cmd == KY_ACCESS_CMD_CREATE || cmd == KY_ACCESS_CMD_SET) && rpf_vif_cnt == 0) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "RPF RIF count 0 isn't allowed for CREATE/SET\n");
    }
    return __validate_vif_types(rpf_vif_list_p, rpf_vif_cnt);
}

ky_status_t ky_router_utils_validate_mc_rpf_group_get(
    ky_access_cmd_t cmd, const uint32_t* rpf_group_id_p, const void* /* rpf_vif_list_p */,
    const void* /* rpf_vif_cnt_p */)
{
    KY_TRACE_FUNCTION();

    if ((cmd == KY_ACCESS_CMD_GET || cmd == KY_ACCESS_CMD_GET_NEXT) &&
        *rpf_group_id_p > KY_RPF_GROUP_ID_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Invalid RPF group ID %u given\n", *rpf_group_id_p);
    }
    return KY_STATUS_SUCCESS;
}

// ---- Verbosity ----

ky_status_t ky_router_utils_log_verbosity_set(uint32_t level)
{
    KY_STORE(ky_router_utils_verbosity_level, level);
    return KY_STATUS_SUCCESS;
}
