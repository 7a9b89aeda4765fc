// The nine validators of the multicast API. Each has a list of its checks in their order: what they
// refuse is tried under every command, alone and together with what each later check refuses.
#include "contract.h"

#include <ky_router_utils_validate.h>
#include <ky_values.h>

#include <array>
#include <bitset>

namespace {

using Words = std::array<uint32_t, 4>; // of an IPv6 address; the first is an IPv4 address

ky_ip_prefix_t prefix(uint32_t version, const Words& addr, const Words& mask)
{
    ky_ip_prefix_t prefix;
    memset(&prefix, 0xA5, sizeof prefix); // garbage behind an IPv4 prefix
    prefix.version = version;
    if (version == KY_IP_VERSION_IPV4) {
        prefix.prefix.ipv4 = {addr[0], mask[0]};
    } else {
        memcpy(&prefix.prefix.ipv6.addr, &addr, sizeof addr);
        memcpy(&prefix.prefix.ipv6.mask, &mask, sizeof mask);
    }
    return prefix;
}

const ky_ip_prefix_t source4 = prefix(1, {0x0A000000}, {0xFF000000});
const ky_ip_prefix_t group4 = prefix(1, {0xEF010100}, {0xFFFFFF00});

/* The arguments of all nine calls. The defaults are valid under every command; two of them wrap to
 * invalid ones in 16 bits. */
struct Request {
    ky_access_cmd_t cmd;
    uint32_t has_key = 1;
    ky_mc_route_key_t key = {source4, group4};
    ky_mc_route_attr_t attr = {
        .rpf_action = KY_ROUTER_RPF_ACTION_TRAP_LIST,
        .ttl_cmd = KY_MC_ROUTER_TTL_CMD_SET,
        .router_word_1 = 0xDEAD,
        .prio_type = KY_ROUTER_PRIO_TYPE_LPM,
        .router_word_2 = 0xDEAD,
        .rpf_group_id = 511,
        .user_token_valid = 1,
        .user_token_value = 0xFFF,
        .user_token_mask = 0xFFF};
    ky_mc_route_data_t data = {4, 0x80010000, 0};
    uint32_t has_filter = 1;
    ky_mc_route_get_filter_t filter = {1, source4, 1, group4, 1, 0x10001};
    uint32_t count = 128; // entries, egress RIFs
    uint32_t id = 511;    // counter, RPF group
    uint32_t vif_count = 4;
    ky_router_vinterface_t vifs[4] = {{0, ~0U}, {1, 0}, {2, 0}, {3, 0}};
};

using Commands = std::set<ky_access_cmd_t>;

Commands all_but(const Commands& others)
{
    const std::vector<ky_access_cmd_t> list = commands();
    Commands these(list.begin(), list.end());
    std::erase_if(these, [&](ky_access_cmd_t cmd) { return others.contains(cmd); });
    return these;
}

/* The pointer if a call reads it; otherwise a pointer that must not be dereferenced. */
template <typename T> const T* if_read(bool is_read, const T* pointer)
{
    return is_read ? pointer : reinterpret_cast<const T*>(16);
}

const void* const unread = if_read<void>(false, nullptr);

using Call = ky_status_t (*)(const Request& r);
#define VALIDATOR(name, ...)           \
    "ky_router_utils_validate_" #name, \
        [](const Request& r) { return ky_router_utils_validate_##name(__VA_ARGS__); }

// ---- Checks ----

/* Where a check is: the commands that it is for, and the function that logs it. */
struct Place {
    Commands commands = {};
    std::string function = {}; // empty for the validator
};

using Values = std::vector<uint32_t>;
const Values once = {0}; // for a change that sets no value

/* The values around a range that are not in it. */
Values outside(uint32_t min, uint32_t max)
{
    std::set<uint32_t> values = boundary_values(min, max);
    std::erase_if(values, [=](uint32_t value) { return value >= min && value <= max; });
    return {values.begin(), values.end()};
}

/* Changes of a request that a check refuses; without a message, changes that are valid. */
struct Check {
    void (*change)(Request& r, uint32_t value);
    Values values = once;
    Place place = {};
    ky_status_t status = KY_STATUS_SUCCESS;
    std::function<std::string(ky_access_cmd_t cmd, uint32_t value)> message = {};
};
using Checks = std::vector<Check>;
#define FIELD(name) WITH(r.name = static_cast<decltype(r.name)>(value))
#define WITH(...) [](Request& r, [[maybe_unused]] uint32_t value) { __VA_ARGS__; }
#define MESSAGE(...) \
    [=]([[maybe_unused]] auto cmd, [[maybe_unused]] auto value) { return formatted(__VA_ARGS__); }

Checks operator+(Checks a, const Checks& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const Module module = {
    "KY_API_ROUTER",
    "ky_router_utils_validate.cpp",
    Traces::both,
    {{"ky_router_utils_log_verbosity_set", Traces::none}}};

class RouterValidateTest : public ContractTest {
  protected:
    RouterValidateTest() : ContractTest(module) {}

    void expect_check(
        const std::string& function, Call call, const Check& check, uint32_t value, Request request)
    {
        check.change(request, value);
        const Request before = request;
        const bool is_refused = check.place.commands.contains(request.cmd);
        const std::string message = is_refused ? check.message(request.cmd, value) : "is valid";
        expect(
            {.label = function + "(" + ky_access_cmd_str(request.cmd) + ") " + message,
             .call = [&] { return call(request); },
             .status = is_refused ? check.status : KY_STATUS_SUCCESS,
             .log = is_refused ? error(message, check.place.function) : Log{}});
        EXPECT_EQ(memcmp(&before, &request, sizeof request), 0); // NOLINT: has no padding
    }
    void expect_checks(const std::string& function, Call call, const Checks& checks)
    {
        for (const ky_access_cmd_t cmd : commands()) {
            for (const Check& check : checks) {
                for (const uint32_t value : check.values) {
                    expect_check(function, call, check, value, {.cmd = cmd});
                }
                // A later check is never reached. Changes that overwrite each other do not pair.
                for (const Check& later : checks) {
                    Request request = {.cmd = cmd};
                    later.change(request, later.values[0]);
                    Request both = request;
                    check.change(both, check.values[0]);
                    Request again = both;
                    later.change(again, later.values[0]);
                    if (&check < &later && check.place.commands.contains(cmd) &&
                        later.place.commands.contains(cmd) &&
                        memcmp(&both, &again, sizeof both) == 0) { // NOLINT: has no padding
                        expect_check(function, call, check, check.values[0], request);
                    }
                }
            }
        }
    }
};

TEST_F(RouterValidateTest, Verbosity)
{
    expect({CALL(ky_router_utils_log_verbosity_set(verbosity))});
}

const char* const no_text = "Invalid IP version/Invalid IP version"; // of versions 0 and 3

Checks key_checks(const Commands& check_versions, const Commands& check_ranges)
{
    const Place versions = {check_versions, "__validate_mc_key_ip_versions"};
    const Place ranges = {check_ranges, "__validate_mc_key_ranges"};
    const auto bad_range = [](const char* group) {
        return MESSAGE("Given MC mask %s is not in the valid MC address range\n", group);
    };
    const auto bad_source = [](const char* source) {
        return MESSAGE(
            "Given source address prefix %s is not a valid IPv4 or IPv6 prefix\n", source);
    };
    const auto bad_mask = [](const char* group) {
        return MESSAGE("Given MC mask %s is not a valid mask\n", group);
    };
    return {
        {FIELD(key.mc_group_addr.version), outside(0, 3), versions, KY_STATUS_PARAM_EXCEEDS_RANGE,
         MESSAGE("Given MC IP version %d is invalid\n", value)},
        {FIELD(key.source_addr.version), outside(0, 3), versions, KY_STATUS_PARAM_EXCEEDS_RANGE,
         MESSAGE("Given source IP version %d is invalid\n", value)},
        {WITH(r.key = {prefix(value, {1}, {}), group4}), Values{2, 3}, versions,
         KY_STATUS_PARAM_ERROR,
         MESSAGE(
             "Source IP version %s and MC IP version IPv4 are not equal\n",
             ky_ip_version_str(value))},
        {WITH(r.key = {prefix(0, {}, {}), prefix(value, {1}, {})}), Values{1, 2, 3}, versions,
         KY_STATUS_PARAM_ERROR,
         MESSAGE(
             "Source IP version None and MC IP version %s are not equal\n",
             ky_ip_version_str(value))},
        {WITH(r.key.mc_group_addr = prefix(1, {0xC0A80101}, {~0U})), once, ranges,
         KY_STATUS_PARAM_EXCEEDS_RANGE, bad_range("192.168.1.1/255.255.255.255")},
        {WITH(r.key.mc_group_addr = prefix(1, {~1U}, {~0U})), once, ranges,
         KY_STATUS_PARAM_EXCEEDS_RANGE, bad_range("255.255.255.254/255.255.255.255")},
        {WITH(r.key = {prefix(2, {}, {}), prefix(2, {0xFE0E0000, 1, 2, 3}, {~0U, ~0U, ~0U})}), once,
         ranges, KY_STATUS_PARAM_EXCEEDS_RANGE,
         bad_range("fe0e::1:0:2:0:3/ffff:ffff:ffff:ffff:ffff:ffff::")},
        {WITH(r.key = {prefix(0, {}, {}), prefix(0, {0xE0000000, ~0U}, {})}), once, ranges,
         KY_STATUS_PARAM_EXCEEDS_RANGE, bad_range(no_text)},
        {WITH(r.key.source_addr = prefix(1, {0x0A010101}, {0xFFFFFF00})), once, ranges,
         KY_STATUS_PARAM_ERROR, bad_source("10.1.1.1/255.255.255.0")},
        {WITH(r.key = {prefix(2, {}, {~0U, 0, 1}), prefix(2, {}, {})}), once, ranges,
         KY_STATUS_PARAM_ERROR, bad_source("::/ffff:ffff::1:0:0")},
        {WITH(r.key.mc_group_addr = prefix(1, {0xE0000000}, {0xE0000000})), once, ranges,
         KY_STATUS_PARAM_ERROR, bad_mask("224.0.0.0/224.0.0.0")},
        {WITH(r.key.mc_group_addr = prefix(1, {~0U}, {})), once, ranges, KY_STATUS_PARAM_ERROR,
         bad_mask("255.255.255.255/0.0.0.0")},
        {WITH(r.key = {prefix(2, {}, {}), prefix(2, {0xFF0E0000, 0, 0, 1}, {0xFF000000})}), once,
         ranges, KY_STATUS_PARAM_ERROR, bad_mask("ff0e::1/ff00::")},
        {WITH(r.key = {prefix(3, {}, {}), prefix(3, {0xFF000000}, {})}), once, ranges,
         KY_STATUS_PARAM_ERROR, bad_mask(no_text)},
        {WITH(r.key.source_addr = r.key.mc_group_addr = prefix(value, {}, {})), Values{0, 1, 2, 3}},
        {WITH(r.key.mc_group_addr = prefix(1, {}, {}))},
        {WITH(r.key = {prefix(2, {5}, {~0U}), prefix(2, {0xFF0E0000, 5}, {0xFFFF0000, 5})};
              r.attr.prio_type = 1)},
    };
}

TEST_F(RouterValidateTest, RouteSet)
{
    static const Place add_or_edit = {{KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_EDIT}};
    const Place not_delete_all = {all_but({KY_ACCESS_CMD_DELETE_ALL})};
    const Checks null_key = {
        {FIELD(has_key), Values{0}, not_delete_all, KY_STATUS_PARAM_NULL,
         MESSAGE("Given mc_route_key_p is NULL and CMD is %d \n", cmd)},
    };
    const auto bad_group = MESSAGE(
        "Invalid RPF group %u given. Valid RPF group must be given when RPF action is DROP_LIST "
        "or TRAP_LIST\n",
        value);
    const Checks attributes_and_data = {
        {FIELD(attr.rpf_action), outside(0, 5), add_or_edit, KY_STATUS_PARAM_ERROR,
         MESSAGE("Given RPF action %d is invalid\n", value)},
        {FIELD(attr.rpf_group_id), outside(0, 511), add_or_edit, KY_STATUS_PARAM_ERROR, bad_group},
        {WITH(r.attr.rpf_action = 4; r.attr.rpf_group_id = value), outside(0, 511), add_or_edit,
         KY_STATUS_PARAM_ERROR, bad_group},
        {FIELD(attr.prio_type), outside(1, 2), add_or_edit, KY_STATUS_PARAM_ERROR,
         MESSAGE("Invalid priority type %d given\n", value)},
        {WITH(r.key.mc_group_addr = prefix(1, {0xEF010001}, {0xFFFF00FF})), once, add_or_edit,
         KY_STATUS_PARAM_ERROR,
         MESSAGE("Invalid MC group mask 239.1.0.1/255.255.0.255 given for priority type LPM\n")},
        {WITH(r.key = {prefix(2, {}, {}), prefix(2, {~0U}, {~0U, 0, 0, 1})}), once, add_or_edit,
         KY_STATUS_PARAM_ERROR,
         MESSAGE("Invalid MC group mask ffff:ffff::/ffff:ffff::1 given for priority type LPM\n")},
        {FIELD(attr.ttl_cmd), outside(1, 2), add_or_edit, KY_STATUS_PARAM_ERROR,
         MESSAGE("Invalid TTL command %d given\n", value)},
        {FIELD(attr.user_token_mask), Values{0x1000, 0x8000, 0xFFFF}, add_or_edit,
         KY_STATUS_PARAM_EXCEEDS_RANGE,
         MESSAGE("User token mask[0x%x] is invalid, Max Mask value : 0xfff\n", value)},
        {FIELD(attr.user_token_value), Values{0x1000, 0x8000, 0xFFFF}, add_or_edit,
         KY_STATUS_PARAM_EXCEEDS_RANGE,
         MESSAGE("User token value[0x%x] is invalid, Max value : 0xfff\n", value)},
        {FIELD(data.action), outside(0, 4), add_or_edit, KY_STATUS_PARAM_ERROR,
         MESSAGE("Invalid router action %d given\n", value)},
        {FIELD(data.egress_container_id), outside(0, 0), add_or_edit, KY_STATUS_PARAM_ERROR,
         MESSAGE(
             "Egress container ID %u and egress RIF count %u can't both be specified\n", value,
             0x80010000)},
        {WITH(r.attr = {0, 1, 0, 1, 0, 0, 1, 0, 0}; r.data = {0, 0, value}), Values{0, 7}},
        {WITH(r.attr.rpf_action = value; r.attr.rpf_group_id = 70000), Values{0, 1, 2, 3}},
        {WITH(r.attr.rpf_action = 4; r.attr.rpf_group_id = value), Values{0, 511}},
        {FIELD(attr.rpf_group_id), Values{0, 511}},
        {WITH(r.attr.user_token_valid = value; r.attr.user_token_mask = 0xFFFF),
         Values{0, 2, 0x10001}},
        {WITH(r.attr.user_token_valid = value; r.attr.user_token_value = 0xFFFF),
         Values{0, 2, 0x10001}},
        {WITH(r.attr.prio_type = 1; r.key.mc_group_addr = prefix(1, {0xE0010001}, {0xF0FF00FF}))},
    };
    expect_checks(
        VALIDATOR(
            mc_route_set, r.cmd, 0xFFFF, r.has_key != 0 ? &r.key : nullptr,
            if_read(add_or_edit.commands.contains(r.cmd), &r.attr),
            if_read(add_or_edit.commands.contains(r.cmd), &r.data)),
        null_key + key_checks(all_but({}), not_delete_all.commands) + attributes_and_data);
}

TEST_F(RouterValidateTest, RouteGet)
{
    const Commands get = {KY_ACCESS_CMD_GET};
    const Place counted = {all_but({KY_ACCESS_CMD_COUNT})};
    const Place bounded = {{KY_ACCESS_CMD_GET_FIRST, KY_ACCESS_CMD_GET_NEXT}};
    const Place filtered = {all_but(get)};
    const Checks no_entries = {
        {FIELD(count), Values{0}, counted, KY_STATUS_PARAM_ERROR,
         MESSAGE("Entries count must be larger than 0 for command %s\n", ky_access_cmd_str(cmd))},
    };
    const auto too_many = MESSAGE("Given entries count %u is larger than max allowed 128\n", value);
    const auto bad_range = [](const char* group) {
        return MESSAGE("Given filter MC address %s is not in the valid MC address range\n", group);
    };
    const auto bad_mask = [](const char* group) {
        return MESSAGE("Given filter MC mask %s is not a valid mask\n", group);
    };
    const Checks entries_and_filter = {
        {FIELD(count), outside(0, 128), bounded, KY_STATUS_PARAM_EXCEEDS_RANGE, too_many},
        {WITH(r.count = value; r.has_filter = 0), Values{129}, bounded,
         KY_STATUS_PARAM_EXCEEDS_RANGE, too_many},
        {FIELD(filter.source_addr.version), outside(0, 3), filtered, KY_STATUS_PARAM_ERROR,
         MESSAGE("Given filter source IP version %d is invalid\n", value)},
        {WITH(r.filter.source_addr = prefix(2, {0, 0, 0, 1}, {~0U, ~0U, ~0U, ~1U})), once, filtered,
         KY_STATUS_PARAM_ERROR,
         MESSAGE("Given filter source address prefix ::1/ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe "
                 "is not a valid IPv4 or IPv6 prefix\n")},
        {FIELD(filter.mc_group_addr.version), outside(0, 3), filtered, KY_STATUS_PARAM_ERROR,
         MESSAGE("Given filter MC IP version %d is invalid\n", value)},
        {WITH(r.filter.mc_group_addr = prefix(1, {0xC0A80101}, {~0U})), once, filtered,
         KY_STATUS_PARAM_EXCEEDS_RANGE, bad_range("192.168.1.1")},
        {WITH(r.filter.mc_group_addr = prefix(1, {}, {})), once, filtered,
         KY_STATUS_PARAM_EXCEEDS_RANGE, bad_range("0.0.0.0")},
        {WITH(r.filter.mc_group_addr = prefix(2, {}, {})), once, filtered,
         KY_STATUS_PARAM_EXCEEDS_RANGE, bad_range("::")},
        {WITH(r.filter.mc_group_addr = prefix(value, {}, {})), Values{0, 3}, filtered,
         KY_STATUS_PARAM_EXCEEDS_RANGE, bad_range("Invalid IP version")},
        {WITH(r.filter.mc_group_addr = prefix(1, {0xE1020304}, {0xFF000000})), once, filtered,
         KY_STATUS_PARAM_ERROR, bad_mask("225.2.3.4/255.0.0.0")},
        {WITH(r.filter.mc_group_addr = prefix(1, {~0U}, {~0U})), once, filtered,
         KY_STATUS_PARAM_ERROR, bad_mask("255.255.255.255/255.255.255.255")},
        {WITH(r.filter.mc_group_addr = prefix(3, {0xFF000000}, {~0U})), once, filtered,
         KY_STATUS_PARAM_ERROR, bad_mask(no_text)},
        {FIELD(filter.ingress_rif_incl_rpf_groups_valid), Values{1}, filtered,
         KY_STATUS_PARAM_ERROR,
         MESSAGE("Filter by ingress RIF and filter by ingress RIF including RPF groups can't both "
                 "be valid\n")},
        {FIELD(count), Values{1, 128}},
        {FIELD(has_filter), Values{0}},
        {WITH(r.filter = {value, prefix(9, {}, {}), value, prefix(9, {}, {}), value, 1}),
         Values{0, 2, 0x100, 0x101}},
        {WITH(r.filter.source_addr = prefix(value, {}, {})), Values{0, 1, 2, 3}},
        {WITH(r.filter.mc_group_addr = prefix(1, {0xE0010001}, {0xF0FF00FF}))},
    };
    expect_checks(
        VALIDATOR(
            mc_route_get, r.cmd, 0xFFFF, if_read(r.cmd == KY_ACCESS_CMD_GET, &r.key),
            if_read(r.cmd != KY_ACCESS_CMD_GET, r.has_filter != 0 ? &r.filter : nullptr), unread,
            if_read(r.cmd != KY_ACCESS_CMD_COUNT, &r.count)),
        no_entries + key_checks(get, get) + entries_and_filter);
}

TEST_F(RouterValidateTest, CallsAboutOneRoute)
{
    const Checks key = key_checks(all_but({}), all_but({}));
    const Place add_or_delete = {{KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_DELETE}};
    const Checks count = {
        {FIELD(count), Values{0}, add_or_delete, KY_STATUS_PARAM_ERROR,
         MESSAGE("Egress RIF count cannot be 0 when command is %s\n", ky_access_cmd_str(cmd))},
        {FIELD(count), outside(0, 0)},
    };
    const Place bind = {{KY_ACCESS_CMD_BIND}};
    const Checks id = {
        {FIELD(id), Values{0}, bind, KY_STATUS_PARAM_ERROR,
         MESSAGE("Counter_id must be valid when binding\n")},
        {FIELD(id), outside(0, 0)},
    };
    expect_checks(
        VALIDATOR(mc_egress_rif_set, r.cmd, 0xFFFF, &r.key, unread, r.count), key + count);
    expect_checks(VALIDATOR(mc_egress_rif_get, 0xFFFF, &r.key, unread, unread), key);
    expect_checks(VALIDATOR(mc_route_activity_get, r.cmd, 0xFFFF, &r.key, unread), key);
    expect_checks(VALIDATOR(mc_route_counter_bind_set, r.cmd, 0xFFFF, &r.key, r.id), key + id);
    expect_checks(VALIDATOR(mc_route_counter_bind_get, 0xFFFF, &r.key, unread), key);
}

TEST_F(RouterValidateTest, RpfGroups)
{
    static const Place set_by_id = {all_but({KY_ACCESS_CMD_CREATE, KY_ACCESS_CMD_DELETE_ALL})};
    static const Place get_by_id = {{KY_ACCESS_CMD_GET, KY_ACCESS_CMD_GET_NEXT}};
    const auto id_checks = [](const Place& by_id) -> Checks {
        return {
            {FIELD(id), outside(0, 511), by_id, KY_STATUS_PARAM_ERROR,
             MESSAGE("Invalid RPF group ID %u given\n", value)},
            {FIELD(id), Values{0, 511}},
        };
    };
    const Place create_or_set = {{KY_ACCESS_CMD_CREATE, KY_ACCESS_CMD_SET}};
    const Place types = {all_but({}), "__validate_vif_types"};
    const Checks interfaces = {
        {FIELD(vif_count), Values{0}, create_or_set, KY_STATUS_PARAM_ERROR,
         MESSAGE("RPF RIF count 0 isn't allowed for CREATE/SET\n")},
        {WITH(r.vifs[value].type = 4), Values{0, 1, 2, 3}, types, KY_STATUS_PARAM_ERROR,
         MESSAGE("Invalid VIF type VXLAN given for VIF index %u\n", value)},
        {FIELD(vifs[3].type), outside(0, 3), types, KY_STATUS_PARAM_ERROR,
         MESSAGE(
             "Invalid VIF type %s given for VIF index 3\n", ky_router_vinterface_type_str(value))},
        {WITH(r.vif_count = 2; r.vifs[2].type = 4)},
    };
    expect_checks(
        VALIDATOR(
            mc_rpf_group_set, r.cmd, if_read(set_by_id.commands.contains(r.cmd), &r.id),
            if_read(r.vif_count > 0, r.vifs), r.vif_count),
        id_checks(set_by_id) + interfaces);
    expect_checks(
        VALIDATOR(
            mc_rpf_group_get, r.cmd, if_read(get_by_id.commands.contains(r.cmd), &r.id), unread,
            unread),
        id_checks(get_by_id));

    std::vector<ky_router_vinterface_t> many(70000, {3, 0});
    many.push_back({4, 0});
    expect(
        {CALL(ky_router_utils_validate_mc_rpf_group_set(
             KY_ACCESS_CMD_CREATE, nullptr, many.data(), ~0U)),
         .status = KY_STATUS_PARAM_ERROR,
         .log = error("Invalid VIF type VXLAN given for VIF index 70000\n", types.function)});
}

using Bits = std::bitset<128>; // bit 0 is the most significant one

Words words(const Bits& bits)
{
    Words words = {};
    for (uint32_t i = 0; i < 128; i++) {
        words[i / 32] |= uint32_t{bits[i]} << (31 - i % 32);
    }
    return words;
}

TEST_F(RouterValidateTest, EveryBitOfAKeyCounts)
{
    const Bits none;
    const auto first = [](uint32_t length) { return ~Bits() >> (128 - length); };
    for (const uint32_t version : {0U, 1U, 2U, 3U}) {
        /* The prefix in a key, where the other one is "any", and alone in a filter. */
        const auto expect_prefix = [=](bool is_group, const Bits& addr, const Bits& mask,
                                       ky_status_t status) {
            const ky_ip_prefix_t tested = prefix(version, words(addr), words(mask));
            ky_mc_route_key_t key = {prefix(version, {}, {}), prefix(version, {}, {})};
            (is_group ? key.mc_group_addr : key.source_addr) = tested;
            const ky_mc_route_get_filter_t filter = {!is_group, tested, is_group, tested, 0, 0};
            const uint32_t count = 1;
            EXPECT_EQ(
                ky_router_utils_validate_mc_egress_rif_get(0, &key, nullptr, nullptr), status);
            EXPECT_EQ(
                ky_router_utils_validate_mc_route_get(
                    KY_ACCESS_CMD_GET_NEXT, 0, nullptr, &filter, nullptr, &count),
                status);
            take_log();
        };
        const auto expect_source = std::bind_front(expect_prefix, false);
        const auto expect_group = std::bind_front(expect_prefix, true);
        const uint32_t width = version == 1 ? 32 : 128;
        const uint32_t range = version == 1 ? 4 : 8; // of multicast addresses, as a length
        const Bits base = version == 1 ? Bits(0b0111) : first(8);
        const bool is_valid = version == 1 || version == 2;
        for (uint32_t i = 0; i < width; i++) {
            SCOPED_TRACE(formatted("version %u, bit %u", version, i));
            const Bits bit = Bits(1) << i;
            expect_source(bit, first(i), KY_STATUS_PARAM_ERROR);
            expect_source(bit, first(i + 1), KY_STATUS_SUCCESS);
            for (uint32_t length = 0; length <= width; length++) {
                const bool is_contiguous = length == i || length == i + 1;
                const Bits mask = first(length) ^ bit;
                expect_source(
                    none, mask, is_contiguous ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_ERROR);
                if (i + 2 < width) { // two bits apart make no length
                    expect_source(none, mask ^ bit << 2, KY_STATUS_PARAM_ERROR);
                }
            }
            const Bits others = first(width) ^ bit;
            expect_group(bit, none, KY_STATUS_PARAM_EXCEEDS_RANGE);
            expect_group(none, bit, KY_STATUS_PARAM_EXCEEDS_RANGE);
            expect_group(
                base ^ bit, others,
                i < range ? KY_STATUS_PARAM_EXCEEDS_RANGE : KY_STATUS_PARAM_ERROR);
            expect_group(
                base, others, i >= range && is_valid ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_ERROR);
        }
    }
}

} // namespace
