// Validation of the multicast API's arguments: module "KY_API_ROUTER".
#include "ky_router_utils_validate.h"

#include "ky_values.h"

#include <arpa/inet.h>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

#define KY_LOG_MODULE "KY_API_ROUTER"
#define KY_LOG_VERBOSITY ky_router_utils_verbosity_level

namespace {

constinit uint32_t ky_router_utils_verbosity_level = KY_LOG_LEVEL_DEFAULT;

constexpr uint32_t IPV4_MC_RANGE = 0xE;  // the first four bits of an address: 224.0.0.0/4
constexpr uint32_t IPV6_MC_RANGE = 0xFF; // the first eight: ff00::/8

constexpr ky_router_action_t ROUTER_ACTION_MAX = 4; // which has no name

// ---- Addresses and masks ----

/* For the hot path, which calls no function: with calls, a validation that succeeds would take half
 * as long again. */
#define ALWAYS_INLINE __attribute__((always_inline)) inline

/* The first or second half of an IPv6 address or mask, its two words in memory order. */
ALWAYS_INLINE uint64_t half(const uint32_t (&words)[4], size_t which)
{
    uint64_t two = 0;
    memcpy(&two, &words[2 * which], sizeof two);
    return two;
}

/* Whether a mask's set bits are one run from the most significant bit on. Its complement plus one
 * then has no bit in common with the complement. */
ALWAYS_INLINE int __is_ipv4_mask_contiguous(uint32_t mask)
{
    return ((~mask + 1) & ~mask) == 0;
}

ALWAYS_INLINE int __is_ipv6_mask_contiguous(const uint32_t (&mask)[4])
{
    // On a little-endian CPU the first word of a half is its low word.
    constexpr int TO_NUMBER = std::endian::native == std::endian::little ? 32 : 0;
    const uint64_t high = std::rotl(~half(mask, 0), TO_NUMBER);
    const uint64_t low = std::rotl(~half(mask, 1), TO_NUMBER);
    uint64_t low_sum = 0;
    const uint64_t high_sum = high + (__builtin_add_overflow(low, 1, &low_sum) ? 1 : 0);
    return ((high_sum & high) | (low_sum & low)) == 0;
}

ALWAYS_INLINE bool is_contiguous(const ky_ipv4_prefix_t& ipv4)
{
    return __is_ipv4_mask_contiguous(ipv4.mask) != 0;
}

ALWAYS_INLINE bool is_contiguous(const ky_ipv6_prefix_t& ipv6)
{
    return __is_ipv6_mask_contiguous(ipv6.mask) != 0;
}

/* Whether an address has no bit outside its mask. */
ALWAYS_INLINE bool is_covered(const ky_ipv4_prefix_t& ipv4)
{
    return (ipv4.addr & ~ipv4.mask) == 0;
}

ALWAYS_INLINE bool is_covered(const ky_ipv6_prefix_t& ipv6)
{
    const auto& [addr, mask] = ipv6;
    return ((half(addr, 0) & ~half(mask, 0)) | (half(addr, 1) & ~half(mask, 1))) == 0;
}

/* Whether a prefix is "any group": address and mask are zero. */
ALWAYS_INLINE bool is_any(const ky_ipv4_prefix_t& ipv4)
{
    return (ipv4.addr | ipv4.mask) == 0;
}

ALWAYS_INLINE bool is_any(const ky_ipv6_prefix_t& ipv6)
{
    const auto& [addr, mask] = ipv6;
    return (half(addr, 0) | half(addr, 1) | half(mask, 0) | half(mask, 1)) == 0;
}

/* Whether a group is in the multicast range. The broadcast address passes; the check of the mask
 * rejects it. */
ALWAYS_INLINE bool passes_range(const ky_ipv4_prefix_t& ipv4)
{
    return ipv4.addr >> 28 == IPV4_MC_RANGE || ipv4.addr == 0xFFFFFFFF;
}

ALWAYS_INLINE bool passes_range(const ky_ipv6_prefix_t& ipv6)
{
    return ipv6.addr[0] >> 24 == IPV6_MC_RANGE;
}

/* The mask of a multicast prefix must cover the address and the multicast range; it need not be
 * contiguous. A mask that covers an IPv6 multicast address covers the range. */
ALWAYS_INLINE int __is_ipv4_mc_prefix_valid(const ky_ip_prefix_t* prefix)
{
    return prefix != nullptr && prefix->prefix.ipv4.addr >> 28 == IPV4_MC_RANGE &&
           ((prefix->prefix.ipv4.addr | 0xF0000000) & ~prefix->prefix.ipv4.mask) == 0;
}

ALWAYS_INLINE int __is_ipv6_mc_prefix_valid(const ky_ip_prefix_t* prefix)
{
    return prefix != nullptr && passes_range(prefix->prefix.ipv6) &&
           is_covered(prefix->prefix.ipv6);
}

ALWAYS_INLINE int __is_mc_prefix_valid(const ky_ip_prefix_t* prefix)
{
    return prefix == nullptr                       ? 0
           : prefix->version == KY_IP_VERSION_IPV4 ? __is_ipv4_mc_prefix_valid(prefix)
           : prefix->version == KY_IP_VERSION_IPV6 ? __is_ipv6_mc_prefix_valid(prefix)
                                                   : 0;
}

/* Applies a test to a prefix as IPv4 if that is its version, else as IPv6. */
template <typename Test> ALWAYS_INLINE bool judged_by(Test test, const ky_ip_prefix_t* prefix)
{
    return prefix->version == KY_IP_VERSION_IPV4 ? test(prefix->prefix.ipv4)
                                                 : test(prefix->prefix.ipv6);
}

constexpr auto IS_CONTIGUOUS = [](const auto& prefix) { return is_contiguous(prefix); };
constexpr auto IS_PREFIX = [](const auto& prefix) {
    return is_covered(prefix) && is_contiguous(prefix);
};
constexpr auto PASSES_RANGE = [](const auto& prefix) { return passes_range(prefix); };

// ---- Addresses and masks as text ----

using PrefixText = std::array<char, 50>;

/* Converts the words of an address or of a mask to text. */
const char* words_to_str(
    ky_ip_version_t version, uint32_t ipv4_word, const uint32_t (&ipv6_words)[4], char* text)
{
    if (version == KY_IP_VERSION_IPV4) {
        const in_addr address = {htonl(ipv4_word)};
        return inet_ntop(AF_INET, &address, text, sizeof(PrefixText));
    }
    if (version == KY_IP_VERSION_IPV6) {
        uint32_t address[4];
        for (size_t i = 0; i < 4; i++) {
            address[i] = htonl(ipv6_words[i]);
        }
        return inet_ntop(AF_INET6, address, text, sizeof(PrefixText));
    }
    return "Invalid IP version";
}

const char* __prefix_addr_to_str(const ky_ip_prefix_t* prefix, char* text)
{
    return prefix == nullptr
               ? "NULL prefix"
               : words_to_str(
                     prefix->version, prefix->prefix.ipv4.addr, prefix->prefix.ipv6.addr, text);
}

const char* __prefix_mask_to_str(const ky_ip_prefix_t* prefix, char* text)
{
    return prefix == nullptr
               ? "NULL prefix"
               : words_to_str(
                     prefix->version, prefix->prefix.ipv4.mask, prefix->prefix.ipv6.mask, text);
}

/* KY_FAIL whose values are texts of a prefix; the functions that make them stand for the values. A
 * cold function calls them, so that a validation that succeeds needs no frame for the texts. */
#define FAIL_WITH_TEXTS(status, prefix_p, format, ...)                                          \
    [](const char* function, const ky_ip_prefix_t* prefix, auto... to_str)                      \
        __attribute__((cold, noinline))                                                         \
    {                                                                                           \
        KY_LOG_IN(function, KY_LOG_MASK_ERROR, format, to_str(prefix, PrefixText{}.data())...); \
        return (status);                                                                        \
    }                                                                                           \
    (__func__, prefix_p, __VA_ARGS__)

// ---- Checks that several functions share ----

ALWAYS_INLINE ky_status_t __validate_mc_key_ip_versions(const ky_mc_route_key_t* mc_route_key_p)
{
    const ky_ip_version_t source_version = mc_route_key_p->source_addr.version;
    const ky_ip_version_t group_version = mc_route_key_p->mc_group_addr.version;

    if (group_version > KY_IP_VERSION_IPV4_IPV6) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Given MC IP version %d is invalid\n", group_version);
    }
    if (source_version > KY_IP_VERSION_IPV4_IPV6) {
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

template <typename Prefix>
ALWAYS_INLINE ky_status_t __validate_mc_key_ranges(
    const ky_mc_route_key_t* mc_route_key_p, const Prefix& source_prefix,
    const Prefix& group_prefix)
{
    const ky_ip_prefix_t* source = &mc_route_key_p->source_addr;
    const ky_ip_prefix_t* group = &mc_route_key_p->mc_group_addr;

    if (!passes_range(group_prefix) && !is_any(group_prefix)) {
        return FAIL_WITH_TEXTS(
            KY_STATUS_PARAM_EXCEEDS_RANGE, group,
            "Given MC mask %s/%s is not in the valid MC address range\n", __prefix_addr_to_str,
            __prefix_mask_to_str);
    }
    if (!IS_PREFIX(source_prefix)) {
        return FAIL_WITH_TEXTS(
            KY_STATUS_PARAM_ERROR, source,
            "Given source address prefix %s/%s is not a valid IPv4 or IPv6 prefix\n",
            __prefix_addr_to_str, __prefix_mask_to_str);
    }
    if (!__is_mc_prefix_valid(group) && !is_any(group_prefix)) {
        return FAIL_WITH_TEXTS(
            KY_STATUS_PARAM_ERROR, group, "Given MC mask %s/%s is not a valid mask\n",
            __prefix_addr_to_str, __prefix_mask_to_str);
    }
    return KY_STATUS_SUCCESS;
}

ALWAYS_INLINE ky_status_t __validate_mc_key_ranges(const ky_mc_route_key_t* mc_route_key_p)
{
    const auto& [source, group] = *mc_route_key_p;
    return group.version == KY_IP_VERSION_IPV4
               ? __validate_mc_key_ranges(mc_route_key_p, source.prefix.ipv4, group.prefix.ipv4)
               : __validate_mc_key_ranges(mc_route_key_p, source.prefix.ipv6, group.prefix.ipv6);
}

ALWAYS_INLINE ky_status_t validate_mc_key(const ky_mc_route_key_t* mc_route_key_p)
{
    const ky_status_t status = __validate_mc_key_ip_versions(mc_route_key_p);
    return status != KY_STATUS_SUCCESS ? status : __validate_mc_key_ranges(mc_route_key_p);
}

ky_status_t __validate_vif_types(const ky_router_vinterface_t* vif_list_p, uint32_t vif_cnt)
{
    for (uint32_t i = 0; i < vif_cnt; i++) {
        if (vif_list_p[i].type > KY_ROUTER_VINTERFACE_TYPE_NVE) {
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
        ky_status_t status = __validate_mc_key_ip_versions(mc_route_key_p);
        if (status == KY_STATUS_SUCCESS && !is_delete_all) {
            status = __validate_mc_key_ranges(mc_route_key_p);
        }
        if (status != KY_STATUS_SUCCESS) {
            return status;
        }
    }
    // For every other command the key alone is checked.
    if (cmd != KY_ACCESS_CMD_ADD && cmd != KY_ACCESS_CMD_EDIT) {
        return KY_STATUS_SUCCESS;
    }

    const ky_ip_prefix_t* group = &mc_route_key_p->mc_group_addr;
    const ky_mc_route_attr_t& attr = *mc_route_attr_p;
    const ky_mc_route_data_t& data = *mc_route_data_p;
    const bool has_user_token = attr.user_token_valid == 1;
    if (attr.rpf_action > KY_ROUTER_RPF_ACTION_TRAP_LIST) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Given RPF action %d is invalid\n", attr.rpf_action);
    }
    if (attr.rpf_action >= KY_ROUTER_RPF_ACTION_DROP_LIST &&
        attr.rpf_group_id > KY_RPF_GROUP_ID_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR,
            "Invalid RPF group %u given. "
            "Valid RPF group must be given when RPF action is DROP_LIST or TRAP_LIST\n",
            attr.rpf_group_id);
    }
    if (attr.prio_type < KY_ROUTER_PRIO_TYPE_MANUAL || attr.prio_type > KY_ROUTER_PRIO_TYPE_LPM) {
        return KY_FAIL(KY_STATUS_PARAM_ERROR, "Invalid priority type %d given\n", attr.prio_type);
    }
    if (attr.prio_type == KY_ROUTER_PRIO_TYPE_LPM && !judged_by(IS_CONTIGUOUS, group)) {
        return FAIL_WITH_TEXTS(
            KY_STATUS_PARAM_ERROR, group,
            "Invalid MC group mask %s/%s given for priority type LPM\n", __prefix_addr_to_str,
            __prefix_mask_to_str);
    }
    if (attr.ttl_cmd < KY_MC_ROUTER_TTL_CMD_DEC || attr.ttl_cmd > KY_MC_ROUTER_TTL_CMD_SET) {
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

    const ky_ip_prefix_t* source = &filter_p->source_addr;
    const ky_ip_prefix_t* group = &filter_p->mc_group_addr;
    const bool has_source = filter_p->source_addr_valid == 1;
    const bool has_group = filter_p->mc_group_addr_valid == 1;
    if (has_source && source->version > KY_IP_VERSION_IPV4_IPV6) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "Given filter source IP version %d is invalid\n",
            source->version);
    }
    if (has_source && !judged_by(IS_PREFIX, source)) {
        return FAIL_WITH_TEXTS(
            KY_STATUS_PARAM_ERROR, source,
            "Given filter source address prefix %s/%s is not a valid IPv4 or IPv6 prefix\n",
            __prefix_addr_to_str, __prefix_mask_to_str);
    }
    if (has_group && group->version > KY_IP_VERSION_IPV4_IPV6) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "Given filter MC IP version %d is invalid\n", group->version);
    }
    if (has_group && !judged_by(PASSES_RANGE, group)) { // "any group" is not exempt here
        return FAIL_WITH_TEXTS(
            KY_STATUS_PARAM_EXCEEDS_RANGE, group,
            "Given filter MC address %s is not in the valid MC address range\n",
            __prefix_addr_to_str);
    }
    if (has_group && !__is_mc_prefix_valid(group)) {
        return FAIL_WITH_TEXTS(
            KY_STATUS_PARAM_ERROR, group, "Given filter MC mask %s/%s is not a valid mask\n",
            __prefix_addr_to_str, __prefix_mask_to_str);
    }
    if (filter_p->ingress_rif_valid == 1 && filter_p->ingress_rif_incl_rpf_groups_valid == 1) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "Filter by ingress RIF and filter by ingress RIF including RPF "
                                   "groups can't both be valid\n");
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
    KY_TRACE_FUNCTION();
    return validate_mc_key(mc_route_key_p);
}

ky_status_t ky_router_utils_validate_mc_route_activity_get(
    ky_access_cmd_t /* cmd */, uint16_t /* vrid */, const ky_mc_route_key_t* mc_route_key_p,
    const void* /* activity_p */)
{
    KY_TRACE_FUNCTION();
    return validate_mc_key(mc_route_key_p);
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
    KY_TRACE_FUNCTION();
    return validate_mc_key(mc_route_key_p);
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
