// The nine validators of multicast calls.
#include "fuzz.h"

#include <ky_router_utils_validate.h>

#include <vector>

namespace {

/* What must not be read. */
void* const unread = reinterpret_cast<void*>(16);

uint32_t word(Input& input)
{
    return input.PickValueInArray<uint32_t>(
        {0, 1, 2, 3, 4, 5, 6, 128, 129, 511, 512, 0xFFF, 0x1000, 0xE0000000, 0xE8010203, 0xFF000000,
         0xFF0E0000, 0xFFFFFFFF, input.ConsumeIntegral<uint32_t>()});
}

/* Words of a mask of so many leading bits, and of a broken one now and then. */
uint32_t mask_word(Input& input, uint32_t length, uint32_t index)
{
    const uint32_t start = index * 32;
    if (input.ConsumeIntegralInRange(0, 15) == 0) {
        return word(input);
    }
    return length <= start ? 0 : length >= start + 32 ? ~0U : ~(~0U >> (length - start));
}

ky_ip_prefix_t prefix(Input& input, uint32_t version, bool is_group)
{
    ky_ip_prefix_t prefix = {};
    prefix.version = input.ConsumeIntegralInRange(0, 15) == 0 ? word(input) : version;
    const uint32_t length = input.ConsumeIntegralInRange<uint32_t>(0, 128);
    const bool is_covered = input.ConsumeIntegralInRange(0, 7) != 0;
    ky_ipv6_prefix_t& ipv6 = prefix.prefix.ipv6;
    for (uint32_t i = 0; i < 4; i++) {
        ipv6.mask[i] = mask_word(input, length, i);
        ipv6.addr[i] = word(input) & (is_covered ? ipv6.mask[i] : ~0U);
    }
    if (is_group && input.ConsumeIntegralInRange(0, 7) != 0) {
        ipv6.addr[0] |= 0xFF000000 & ipv6.mask[0];
    }
    if (version == 1) {
        const uint32_t mask = ipv6.mask[0];
        const uint32_t address = ipv6.addr[0] & (is_group ? 0xEFFFFFFF : ~0U);
        prefix.prefix.ipv4 = {address, mask};
    }
    return prefix;
}

ky_mc_route_key_t key(Input& input)
{
    const uint32_t version = input.PickValueInArray<uint32_t>({1, 1, 2, 2, 0, 3, 4});
    const ky_ip_prefix_t source = prefix(input, version, false);
    const bool is_any_group = input.ConsumeIntegralInRange(0, 7) == 0;
    return {source, is_any_group ? ky_ip_prefix_t{version, {}} : prefix(input, version, true)};
}

ky_mc_route_attr_t attributes(Input& input)
{
    return {
        word(input),
        word(input),
        word(input),
        word(input),
        word(input),
        word(input),
        word(input),
        static_cast<uint16_t>(word(input)),
        static_cast<uint16_t>(word(input))};
}

ky_mc_route_get_filter_t filter(Input& input)
{
    const uint32_t version = input.PickValueInArray<uint32_t>({1, 1, 2, 2, 0, 3, 4});
    return {word(input), prefix(input, version, false),
            word(input), prefix(input, version, true),
            word(input), word(input)};
}

/* Whether a mask of one or four words is contiguous, bit by bit, and covers an address. */
bool covers(const uint32_t* mask, const uint32_t* address, uint32_t words)
{
    bool is_over = false;
    for (uint32_t bit = 0; bit < words * 32; bit++) {
        const bool is_set = (mask[bit / 32] >> (31 - bit % 32) & 1) != 0;
        const bool is_used = (address[bit / 32] >> (31 - bit % 32) & 1) != 0;
        is_over = is_over || !is_set;
        if ((is_set && is_over) || (is_used && !is_set)) {
            return false;
        }
    }
    return true;
}

/* What holds of a key that has passed. */
bool is_sound(const ky_mc_route_key_t& key)
{
    static const ky_ipv6_prefix_t none = {};
    const auto& [source_version, source] = key.source_addr;
    const auto& [version, group] = key.mc_group_addr;
    if (version > 3 || version != source_version) {
        return false;
    }
    if (version == 1) {
        return covers(&source.ipv4.mask, &source.ipv4.addr, 1) &&
               (group.ipv4.addr >> 28 == 0xE || (group.ipv4.addr | group.ipv4.mask) == 0);
    }
    return covers(source.ipv6.mask, source.ipv6.addr, 4) &&
           ((version == 2 && group.ipv6.addr[0] >> 24 == 0xFF) ||
            memcmp(&group.ipv6, &none, sizeof none) == 0);
}

constexpr ky_status_t NIL = KY_STATUS_PARAM_NULL;
constexpr ky_status_t BAD = KY_STATUS_PARAM_ERROR;
constexpr ky_status_t RANGE = KY_STATUS_PARAM_EXCEEDS_RANGE;

void validate_route_set(Input& input, uint32_t verbosity, ky_access_cmd_t cmd)
{
    const bool reads_all = cmd == KY_ACCESS_CMD_ADD || cmd == KY_ACCESS_CMD_EDIT;
    const bool has_key = input.ConsumeIntegralInRange(0, 15) != 0;
    const Argument route(key(input), has_key);
    const Argument attr(attributes(input));
    const Argument data(ky_mc_route_data_t{word(input), word(input), word(input)});
    const ky_status_t status = checked(verbosity, {NIL, RANGE, BAD}, [&] {
        return ky_router_utils_validate_mc_route_set(
            cmd, 0, route, reads_all ? attr : static_cast<ky_mc_route_attr_t*>(unread),
            reads_all ? data : static_cast<ky_mc_route_data_t*>(unread));
    });
    const bool reads_key = cmd != KY_ACCESS_CMD_DELETE_ALL;
    REQUIRE((status == NIL) == (!has_key && reads_key));
    REQUIRE(status != KY_STATUS_SUCCESS || !reads_key || is_sound(*route));
}

void validate_route_get(Input& input, uint32_t verbosity, ky_access_cmd_t cmd)
{
    const bool is_get = cmd == KY_ACCESS_CMD_GET;
    const Argument route(key(input));
    const Argument which(filter(input), input.ConsumeBool());
    const Argument count(word(input));
    const ky_status_t status = checked(verbosity, {RANGE, BAD}, [&] {
        return ky_router_utils_validate_mc_route_get(
            cmd, 0, is_get ? route : static_cast<ky_mc_route_key_t*>(unread),
            is_get ? static_cast<ky_mc_route_get_filter_t*>(unread) : which, unread,
            cmd == KY_ACCESS_CMD_COUNT ? static_cast<uint32_t*>(unread) : count);
    });
    REQUIRE(status != KY_STATUS_SUCCESS || !is_get || is_sound(*route));
}

void validate_calls_about_a_route(Input& input, uint32_t verbosity, ky_access_cmd_t cmd)
{
    const Argument route(key(input));
    const uint32_t number = word(input);
    const std::function<ky_status_t()> calls[] = {
        [&] { return ky_router_utils_validate_mc_egress_rif_set(cmd, 0, route, unread, number); },
        [&] { return ky_router_utils_validate_mc_egress_rif_get(0, route, unread, unread); },
        [&] { return ky_router_utils_validate_mc_route_activity_get(cmd, 0, route, unread); },
        [&] { return ky_router_utils_validate_mc_route_counter_bind_set(cmd, 0, route, number); },
        [&] { return ky_router_utils_validate_mc_route_counter_bind_get(0, route, unread); },
    };
    for (const auto& call : calls) {
        const ky_status_t status = checked(verbosity, {RANGE, BAD}, call);
        REQUIRE(status != KY_STATUS_SUCCESS || is_sound(*route));
    }
}

void validate_rpf_groups(Input& input, uint32_t verbosity, ky_access_cmd_t cmd)
{
    const bool set_skips_id = cmd == KY_ACCESS_CMD_CREATE || cmd == KY_ACCESS_CMD_DELETE_ALL;
    const bool get_reads_id = cmd == KY_ACCESS_CMD_GET || cmd == KY_ACCESS_CMD_GET_NEXT;
    const Argument id(word(input));
    auto* const no_id = static_cast<uint32_t*>(unread);
    const uint32_t count = input.ConsumeIntegralInRange<uint32_t>(0, 5);
    std::vector<ky_router_vinterface_t> list;
    for (uint32_t i = 0; i < count; i++) {
        list.push_back({input.ConsumeIntegralInRange<uint32_t>(0, 4), word(input)});
    }
    const std::vector<ky_router_vinterface_t> given(list);
    checked(verbosity, {BAD}, [&] {
        return ky_router_utils_validate_mc_rpf_group_set(
            cmd, set_skips_id ? no_id : id, count == 0 ? nullptr : given.data(), count);
    });
    REQUIRE(count == 0 || memcmp(list.data(), given.data(), count * sizeof list[0]) == 0);
    checked(verbosity, {BAD}, [&] {
        return ky_router_utils_validate_mc_rpf_group_get(
            cmd, get_reads_id ? id : no_id, unread, unread);
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input input(data, size);
    const uint32_t verbosity = choose_verbosity(input);
    const auto cmd = static_cast<ky_access_cmd_t>(input.ConsumeIntegralInRange<uint32_t>(0, 40));
    const auto validate = input.PickValueInArray(
        {validate_route_set, validate_route_get, validate_calls_about_a_route,
         validate_rpf_groups});
    validate(input, verbosity, cmd);
    return 0;
}
