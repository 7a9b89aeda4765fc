// The nine validators of the multicast API. Each has a list of cases in the order of its checks;
// every case runs under every command, and every pair of faults together.
#include "contract.h"

#include <ky_router_utils_validate.h>
#include <ky_values.h>

#include <algorithm>
#include <bitset>

namespace {

ky_ip_prefix_t ipv4(uint32_t addr, uint32_t mask)
{
    ky_ip_prefix_t prefix;
    memset(&prefix, 0xA5, sizeof prefix); // garbage behind an IPv4 prefix
    prefix.version = KY_IP_VERSION_IPV4;
    prefix.prefix.ipv4 = {addr, mask};
    return prefix;
}

ky_ip_prefix_t
ipv6(const uint32_t (&addr)[4], const uint32_t (&mask)[4], uint32_t version = KY_IP_VERSION_IPV6)
{
    ky_ip_prefix_t prefix = {};
    prefix.version = version;
    memcpy(prefix.prefix.ipv6.addr, addr, sizeof addr);
    memcpy(prefix.prefix.ipv6.mask, mask, sizeof mask);
    return prefix;
}

ky_ip_prefix_t zero(uint32_t version)
{
    return ipv6({0, 0, 0, 0}, {0, 0, 0, 0}, version);
}

const ky_ip_prefix_t source4 = ipv4(0x0A000000, 0xFF000000);
const ky_ip_prefix_t group4 = ipv4(0xEF010100, 0xFFFFFF00);
const ky_ip_prefix_t source6 = ipv6({0x20010DB8, 0, 0, 0}, {0xFFFFFFFF, 0, 0, 0});
const ky_ip_prefix_t group6 = ipv6({0xFF0E0000, 0, 0, 1}, {~0U, ~0U, ~0U, ~0U});

// ---- Commands ----

using Commands = std::function<bool(ky_access_cmd_t)>;

Commands only(std::vector<ky_access_cmd_t> commands)
{
    return [commands = std::move(commands)](ky_access_cmd_t cmd) {
        return std::find(commands.begin(), commands.end(), cmd) != commands.end();
    };
}

Commands all_but(std::vector<ky_access_cmd_t> commands)
{
    return std::not_fn(only(std::move(commands)));
}

constexpr ky_access_cmd_t ADD = KY_ACCESS_CMD_ADD;
constexpr ky_access_cmd_t EDIT = KY_ACCESS_CMD_EDIT;
constexpr ky_access_cmd_t DELETE = KY_ACCESS_CMD_DELETE;
constexpr ky_access_cmd_t DELETE_ALL = KY_ACCESS_CMD_DELETE_ALL;
constexpr ky_access_cmd_t CREATE = KY_ACCESS_CMD_CREATE;
constexpr ky_access_cmd_t SET = KY_ACCESS_CMD_SET;
constexpr ky_access_cmd_t GET = KY_ACCESS_CMD_GET;
constexpr ky_access_cmd_t GET_FIRST = KY_ACCESS_CMD_GET_FIRST;
constexpr ky_access_cmd_t GET_NEXT = KY_ACCESS_CMD_GET_NEXT;
const Commands all = all_but({});
const Commands add_or_edit = only({ADD, EDIT});
const Commands has_id = all_but({CREATE, DELETE_ALL});
const Commands gets_id = only({GET, GET_NEXT});

// ---- Requests ----

/* The arguments of all nine calls. Every validator accepts the defaults, which include values that
 * are invalid in combination with others. */
struct Request {
    ky_access_cmd_t cmd = ADD;
    uint32_t has_key = 1;
    ky_mc_route_key_t key = {source4, group4};
    ky_mc_route_attr_t attr = {
        .rpf_action = KY_ROUTER_RPF_ACTION_DROP,
        .ttl_cmd = KY_MC_ROUTER_TTL_CMD_DEC,
        .router_word_1 = 0xdead,
        .prio_type = KY_ROUTER_PRIO_TYPE_LPM,
        .router_word_2 = 0xdead,
        .rpf_group_id = 70000,
        .user_token_valid = 2,
        .user_token_value = 0xffff,
        .user_token_mask = 0xffff};
    ky_mc_route_data_t data = {4, 3, 0};
    uint32_t has_filter = 1;
    ky_mc_route_get_filter_t filter = {1, source4, 1, group4, 1, 0x10001};
    uint32_t count = 1; // entries, egress RIFs
    uint32_t id = 511;  // counter, RPF group
    uint32_t vif_count = 4;
    ky_router_vinterface_t vifs[4] = {{0, ~0U}, {1, 0}, {2, 0}, {3, 0}};
};

/* The pointer if the command reads it; otherwise a pointer that must not be dereferenced. */
template <typename T> const T* if_read(bool is_read, const T* pointer)
{
    return is_read ? pointer : reinterpret_cast<const T*>(16);
}

const void* const unread = if_read<void>(false, nullptr);

struct Validator {
    std::string function;
    std::function<ky_status_t(const Request&)> call;
};
#define VALIDATOR(name, ...)                                                              \
    {                                                                                     \
        "ky_router_utils_validate_" #name,                                                \
            [](const Request& r) { return ky_router_utils_validate_##name(__VA_ARGS__); } \
    }
#define KEY (r.has_key != 0 ? &r.key : nullptr)

// clang-format off
const Validator route_set = VALIDATOR(mc_route_set,
    r.cmd, 0xFFFF, KEY, if_read(add_or_edit(r.cmd), &r.attr), if_read(add_or_edit(r.cmd), &r.data));
const Validator route_get = VALIDATOR(mc_route_get,
    r.cmd, 0xFFFF, if_read(r.cmd == GET, &r.key),
    if_read(r.cmd != GET, r.has_filter != 0 ? &r.filter : nullptr), unread,
    if_read(r.cmd != KY_ACCESS_CMD_COUNT, &r.count));
const Validator egress_rif_set = VALIDATOR(mc_egress_rif_set,
    r.cmd, 0xFFFF, &r.key, unread, r.count);
const Validator egress_rif_get = VALIDATOR(mc_egress_rif_get, 0xFFFF, &r.key, unread, unread);
const Validator activity_get = VALIDATOR(mc_route_activity_get, r.cmd, 0xFFFF, &r.key, unread);
const Validator counter_set = VALIDATOR(mc_route_counter_bind_set, r.cmd, 0xFFFF, &r.key, r.id);
const Validator counter_get = VALIDATOR(mc_route_counter_bind_get, 0xFFFF, &r.key, unread);
const Validator rpf_group_set = VALIDATOR(mc_rpf_group_set,
    r.cmd, if_read(has_id(r.cmd), &r.id), if_read(r.vif_count > 0, r.vifs), r.vif_count);
const Validator rpf_group_get = VALIDATOR(mc_rpf_group_get,
    r.cmd, if_read(gets_id(r.cmd), &r.id), unread, unread);
// clang-format on

// ---- Cases ----

/* A change of a request, the commands that check it, and the validator's status and message. {d}
 * and {name} are the command. */
struct Case {
    Commands reached_by;
    std::function<void(Request&)> change;
    ky_status_t status = KY_STATUS_SUCCESS;
    std::string message = {};
    std::string function = {}; // named by the message; empty for the validator
};
using Cases = std::vector<Case>;
#define WITH(...) [=](Request& r) { __VA_ARGS__; }

Cases operator+(Cases a, const Cases& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/* Boundary values of a field. A field may be narrower than a value: the setter returns what it
 * stores. */
struct Field {
    Commands reached_by;
    std::function<uint32_t(Request&, uint32_t)> set;
    uint32_t min;
    uint32_t max;
};
#define FIELD(name) \
    [](Request& r, uint32_t value) { return r.name = static_cast<decltype(r.name)>(value); }

Cases range(
    const Field& field, ky_status_t status, const std::string& message,
    const std::string& function = {})
{
    Cases cases;
    Request request;
    for (const uint32_t edge : boundary_values(field.min, field.max)) {
        const uint32_t value = field.set(request, edge);
        cases.push_back({field.reached_by, WITH(field.set(r, edge))});
        if (value < field.min || value > field.max) {
            cases.back().status = status;
            cases.back().message = with_value(message, value);
            cases.back().function = function;
        }
    }
    return cases;
}

/* For fields whose values within the range are invalid for another reason. */
Cases outside(Cases cases)
{
    std::erase_if(cases, [](const Case& each) { return each.status == KY_STATUS_SUCCESS; });
    return cases;
}

Cases inside(const Field& field)
{
    Cases cases = range(field, KY_STATUS_PARAM_ERROR, "");
    std::erase_if(cases, [](const Case& each) { return each.status != KY_STATUS_SUCCESS; });
    return cases;
}

// clang-format off
/* A key, whose ranges only some commands check. */
Cases key_cases(const Commands& versions, const Commands& ranges)
{
    const std::string in_versions = "__validate_mc_key_ip_versions";
    const std::string in_ranges = "__validate_mc_key_ranges";
    const auto all_zero = [](Request& r, uint32_t version) {
        r.key = {zero(version), zero(version)};
        return version;
    };
    const auto unequal = [&](uint32_t source, uint32_t group, const std::string& message) -> Case {
        const auto bad = [](uint32_t version) { return ipv6({1, 0, 0, 0}, {0, 0, 0, 0}, version); };
        return {versions, WITH(r.key = {bad(source), bad(group)}), KY_STATUS_PARAM_ERROR, message, in_versions};
    };
    const auto judged = [&](const ky_ip_prefix_t& source, const ky_ip_prefix_t& group,
                            ky_status_t status = KY_STATUS_SUCCESS, const std::string& message = {}) -> Case {
        return {ranges, WITH(r.key = {source, group}), status, message, in_ranges};
    };
    return
        outside(range({versions, FIELD(key.mc_group_addr.version), 0, 3}, KY_STATUS_PARAM_EXCEEDS_RANGE,
                      "Given MC IP version {d} is invalid\n", in_versions)) +
        outside(range({versions, FIELD(key.source_addr.version), 0, 3}, KY_STATUS_PARAM_EXCEEDS_RANGE,
                      "Given source IP version {d} is invalid\n", in_versions)) +
        inside({versions, all_zero, 0, 3}) +
        Cases{
            unequal(2, 1, "Source IP version IPv6 and MC IP version IPv4 are not equal\n"),
            unequal(1, 2, "Source IP version IPv4 and MC IP version IPv6 are not equal\n"),
            unequal(0, 3, "Source IP version None and MC IP version IPv4&IPv6 are not equal\n"),
            unequal(3, 1, "Source IP version IPv4&IPv6 and MC IP version IPv4 are not equal\n"),
            judged(ipv4(1, 0), ipv4(0xC0A80101, ~0U), KY_STATUS_PARAM_EXCEEDS_RANGE, "Given MC mask "
                   "192.168.1.1/255.255.255.255 is not in the valid MC address range\n"),
            judged(source6, ipv6({0xFE0E0000, 1, 2, 3}, {~0U, ~0U, ~0U, 0}), KY_STATUS_PARAM_EXCEEDS_RANGE, "Given MC mask "
                   "fe0e::1:0:2:0:3/ffff:ffff:ffff:ffff:ffff:ffff:: is not in the valid MC address "
                   "range\n"),
            judged(ipv4(0x0A010101, 0xFFFFFF00), ipv4(~0U, ~0U), KY_STATUS_PARAM_ERROR, "Given source address prefix "
                   "10.1.1.1/255.255.255.0 is not a valid IPv4 or IPv6 prefix\n"),
            judged(ipv6({0, 0, 0, 0}, {~0U, 0, 1, 0}), group6, KY_STATUS_PARAM_ERROR, "Given source address prefix "
                   "::/ffff:ffff::1:0:0 is not a valid IPv4 or IPv6 prefix\n"),
            judged(source4, ipv4(0xE0000000, 0xE0000000), KY_STATUS_PARAM_ERROR,
                   "Given MC mask 224.0.0.0/224.0.0.0 is not a valid mask\n"),
            judged(source4, ipv4(~0U, 0), KY_STATUS_PARAM_ERROR,
                   "Given MC mask 255.255.255.255/0.0.0.0 is not a valid mask\n"),
            judged(source6, ipv6({0xFF0E0000, 0, 0, 1}, {0xFF000000, 0, 0, 0}), KY_STATUS_PARAM_ERROR,
                   "Given MC mask ff0e::1/ff00:: is not a valid mask\n"),
            judged(zero(3), ipv6({0xFF000000, 0, 0, 0}, {0, 0, 0, 0}, 3), KY_STATUS_PARAM_ERROR,
                   "Given MC mask Invalid IP version/Invalid IP version is not a valid mask\n"),
            judged(zero(0), ipv6({0xE0000000, ~0U, 0, 0}, {0, 0, 0, 0}, 0), KY_STATUS_PARAM_EXCEEDS_RANGE, "Given MC mask "
                   "Invalid IP version/Invalid IP version is not in the valid MC address range\n"),
            judged(source6, group6), judged(source6, zero(2)), judged(source4, ipv4(0, 0)),
        };
}

const Cases key = key_cases(all, all);

const Module module = {
    "KY_API_ROUTER", "ky_router_utils_validate.cpp", Traces::both,
    {{"ky_router_utils_log_verbosity_set", Traces::none}}};

class RouterValidateTest : public ContractTest {
  protected:
    RouterValidateTest() : ContractTest(module) {}

    /* Returns the library's status, and checks that the request is unchanged. */
    static uint32_t answer(const Validator& validator, const Request& request)
    {
        const Request before = request;
        const uint32_t status = validator.call(request);
        EXPECT_EQ(memcmp(&before, &request, sizeof request), 0); // NOLINT: padding is copied, too
        return status;
    }
    void expect_case(const Validator& validator, const Case& wanted, const Request& request)
    {
        const bool is_reached = wanted.status != KY_STATUS_SUCCESS && wanted.reached_by(request.cmd);
        std::string message = with_value(wanted.message, request.cmd);
        if (const size_t name = message.find("{name}"); name != std::string::npos) {
            message.replace(name, 6, ky_access_cmd_str(request.cmd));
        }
        expect({.label = validator.function + "(" + ky_access_cmd_str(request.cmd) + ") " + message,
                .call = [&] { return answer(validator, request); },
                .status = is_reached ? wanted.status : KY_STATUS_SUCCESS,
                .log = is_reached ? error(message, wanted.function) : Log{}});
    }
    void expect_cases(const Validator& validator, const Cases& cases)
    {
        Request request;
        for (const ky_access_cmd_t cmd : commands()) {
            for (const Case& each : cases) {
                request = {.cmd = cmd};
                each.change(request);
                expect_case(validator, each, request);
            }
        }
        const Cases faults = outside(cases);
        for (size_t second = 0; second < faults.size(); second++) {
            for (size_t first = 0; first < second; first++) {
                for (const ky_access_cmd_t cmd :
                     {ADD, DELETE, SET, GET, GET_NEXT, KY_ACCESS_CMD_BIND}) {
                    if (faults[first].reached_by(cmd) && faults[second].reached_by(cmd)) {
                        request = {.cmd = cmd};
                        faults[second].change(request);
                        faults[first].change(request); // wins where both change a field
                        expect_case(validator, faults[first], request);
                        break;
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

TEST_F(RouterValidateTest, RouteSet)
{
    const auto attr = [](auto set, uint32_t min, uint32_t max) -> Field {
        return {add_or_edit, set, min, max};
    };
    const auto rpf_group_of = [](uint32_t action) {
        return [action](Request& r, uint32_t group) {
            r.attr.rpf_action = action;
            return r.attr.rpf_group_id = group;
        };
    };
    const auto mask = [](Request& r, uint32_t value) {
        r.attr.user_token_value = r.attr.user_token_valid == 1 ? r.attr.user_token_value : 0;
        r.attr.user_token_valid = 1;
        return r.attr.user_token_mask = static_cast<uint16_t>(value);
    };
    const auto token = [](Request& r, uint32_t value) {
        r.attr.user_token_valid = 1;
        r.attr.user_token_mask = 0;
        return r.attr.user_token_value = static_cast<uint16_t>(value);
    };
    const std::string bad_group = "Invalid RPF group {u} given. Valid RPF group must be given when "
        "RPF action is DROP_LIST or TRAP_LIST\n";
    const ky_ip_prefix_t hole = ipv4(0xEF010001, 0xFFFF00FF);
    expect_cases(route_set,
        Cases{
            {all_but({DELETE_ALL}), WITH(r.has_key = 0), KY_STATUS_PARAM_NULL,
             "Given mc_route_key_p is NULL and CMD is {d} \n"},
        } +
        key_cases(all, all_but({DELETE_ALL})) +
        outside(range(attr(FIELD(attr.rpf_action), 0, 5), KY_STATUS_PARAM_ERROR,
                      "Given RPF action {d} is invalid\n")) +
        inside(attr(FIELD(attr.rpf_action), 0, 3)) +
        range(attr(rpf_group_of(4), 0, 511), KY_STATUS_PARAM_ERROR, bad_group) +
        range(attr(rpf_group_of(5), 0, 511), KY_STATUS_PARAM_ERROR, bad_group) +
        range(attr(FIELD(attr.prio_type), 1, 2), KY_STATUS_PARAM_ERROR, "Invalid priority type {d} given\n") +
        Cases{
            {add_or_edit, WITH(r.key = {source4, hole}), KY_STATUS_PARAM_ERROR,
             "Invalid MC group mask 239.1.0.1/255.255.0.255 given for priority type LPM\n"},
            {add_or_edit, WITH(r.key = {source6, ipv6({~0U, 0, 0, 0}, {~0U, 0, 0, 1})}), KY_STATUS_PARAM_ERROR,
             "Invalid MC group mask ffff:ffff::/ffff:ffff::1 given for priority type LPM\n"},
        } +
        range(attr(FIELD(attr.ttl_cmd), 1, 2), KY_STATUS_PARAM_ERROR, "Invalid TTL command {d} given\n") +
        range(attr(mask, 0, 0xFFF), KY_STATUS_PARAM_EXCEEDS_RANGE,
                "User token mask[0x{x}] is invalid, Max Mask value : 0xfff\n") +
        range(attr(token, 0, 0xFFF), KY_STATUS_PARAM_EXCEEDS_RANGE,
                "User token value[0x{x}] is invalid, Max value : 0xfff\n") +
        range(attr(FIELD(data.action), 0, 4), KY_STATUS_PARAM_ERROR, "Invalid router action {d} given\n") +
        Cases{
            {add_or_edit, WITH(r.data = {0, ~1U, ~0U}), KY_STATUS_PARAM_ERROR, "Egress container ID 4294967295 and "
             "egress RIF count 4294967294 can't both be specified\n"},
            {add_or_edit, WITH(r.data = {0, 0x100, 0x10000}), KY_STATUS_PARAM_ERROR, "Egress container ID 65536 and "
             "egress RIF count 256 can't both be specified\n"},
            {all, WITH(r.data = {0, 0, 7})},
            {all, WITH(r.key.mc_group_addr = hole; r.attr.prio_type = 1)},
            {all, WITH(r.attr.user_token_valid = 0x10001)},
        });
    expect_case(route_set, {}, {.cmd = DELETE_ALL, .has_key = 0});
}

TEST_F(RouterValidateTest, RouteGet)
{
    const Commands filters = all_but({GET});
    const auto version = [](ky_ip_prefix_t ky_mc_route_get_filter_t::*prefix) {
        return [prefix](Request& r, uint32_t value) {
            return (r.filter.*prefix).version = value;
        };
    };
    const auto any_source = [](Request& r, uint32_t value) {
        r.filter.source_addr = zero(value);
        return value;
    };
    expect_cases(route_get,
        Cases{
            {all_but({KY_ACCESS_CMD_COUNT}), WITH(r.count = 0), KY_STATUS_PARAM_ERROR,
             "Entries count must be larger than 0 for command {name}\n"},
        } +
        key_cases(only({GET}), only({GET})) +
        outside(range({only({GET_FIRST, GET_NEXT}), FIELD(count), 0, 128}, KY_STATUS_PARAM_EXCEEDS_RANGE,
                      "Given entries count {u} is larger than max allowed 128\n")) +
        inside({all, FIELD(count), 1, 128}) +
        Cases{
            {only({GET_FIRST, GET_NEXT}), WITH(r.count = 129; r.has_filter = 0), KY_STATUS_PARAM_EXCEEDS_RANGE,
             "Given entries count 129 is larger than max allowed 128\n"},
        } +
        outside(range({filters, version(&ky_mc_route_get_filter_t::source_addr), 0, 3}, KY_STATUS_PARAM_ERROR,
                      "Given filter source IP version {d} is invalid\n")) +
        Cases{
            {filters, WITH(r.filter.source_addr = ipv6({0, 0, 0, 1}, {~0U, ~0U, ~0U, ~1U})), KY_STATUS_PARAM_ERROR,
             "Given filter source address prefix ::1/ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe is "
             "not a valid IPv4 or IPv6 prefix\n"},
        } +
        outside(range({filters, version(&ky_mc_route_get_filter_t::mc_group_addr), 0, 3}, KY_STATUS_PARAM_ERROR,
                      "Given filter MC IP version {d} is invalid\n")) +
        Cases{
            {filters, WITH(r.filter.mc_group_addr = ipv4(0xC0A80101, ~0U)), KY_STATUS_PARAM_EXCEEDS_RANGE,
             "Given filter MC address 192.168.1.1 is not in the valid MC address range\n"},
            {filters, WITH(r.filter.mc_group_addr = ipv4(0, 0)), KY_STATUS_PARAM_EXCEEDS_RANGE,
             "Given filter MC address 0.0.0.0 is not in the valid MC address range\n"},
            {filters, WITH(r.filter.mc_group_addr = zero(2)), KY_STATUS_PARAM_EXCEEDS_RANGE,
             "Given filter MC address :: is not in the valid MC address range\n"},
            {filters, WITH(r.filter.mc_group_addr = ipv4(~0U, ~0U)), KY_STATUS_PARAM_ERROR,
             "Given filter MC mask 255.255.255.255/255.255.255.255 is not a valid mask\n"},
            {filters, WITH(r.filter.mc_group_addr = group6; r.filter.mc_group_addr.version = 3),
             KY_STATUS_PARAM_ERROR, "Given filter MC mask Invalid IP version/Invalid IP version is not a valid mask\n"},
            {filters, WITH(r.filter.ingress_rif_incl_rpf_groups_valid = 1), KY_STATUS_PARAM_ERROR, "Filter by "
             "ingress RIF and filter by ingress RIF including RPF groups can't both be valid\n"},
            {all, WITH(r.has_filter = 0)},
            {all, WITH(r.filter = {2, zero(9), 0x100, zero(9), 2, 1})},
            {all, WITH(r.filter = {0x101, zero(~0U), 0x101, zero(~0U), 0x101, 1})},
            {all, WITH(r.filter = {1, source6, 1, group4, 0, 1})},
            {all, WITH(r.filter.mc_group_addr = ipv4(0xE0010001, 0xF0FF00FF))},
        } +
        inside({all, any_source, 0, 3}));
}

TEST_F(RouterValidateTest, CallsAboutOneRoute)
{
    for (const Validator& validator : {egress_rif_get, activity_get, counter_get}) {
        expect_cases(validator, key);
    }
    expect_cases(egress_rif_set, key + Cases{
        {only({ADD, DELETE}), WITH(r.count = 0), KY_STATUS_PARAM_ERROR,
         "Egress RIF count cannot be 0 when command is {name}\n"},
        {all, WITH(r.count = 0x80000000)},
    });
    expect_cases(counter_set, key + Cases{
        {only({KY_ACCESS_CMD_BIND}), WITH(r.id = 0), KY_STATUS_PARAM_ERROR,
         "Counter_id must be valid when binding\n"},
        {all, WITH(r.id = 0x80000000)},
    });
}

TEST_F(RouterValidateTest, RpfGroups)
{
    const std::string bad_id = "Invalid RPF group ID {u} given\n";
    Cases bad_types;
    for (const auto& bad : {std::pair(4U, 0U), {0x100U, 0U}, {0x10001U, 1U},
                            {0x80000000U, 2U}, {~0U, 3U}}) {
        const unsigned type = bad.first, at = bad.second;
        const std::string name = ky_router_vinterface_type_str(type);
        bad_types.push_back({all, WITH(r.vifs[at].type = type; r.vifs[3].type = type), KY_STATUS_PARAM_ERROR,
            "Invalid VIF type " + name + " given for VIF index " + std::to_string(at) + "\n",
            "__validate_vif_types"});
    }
    expect_cases(rpf_group_set,
        range({has_id, FIELD(id), 0, 511}, KY_STATUS_PARAM_ERROR, bad_id) +
        Cases{{only({CREATE, SET}), WITH(r.vif_count = 0), KY_STATUS_PARAM_ERROR,
               "RPF RIF count 0 isn't allowed for CREATE/SET\n"}} +
        bad_types +
        Cases{{all, WITH(r.vif_count = 2; r.vifs[2].type = 4)}});
    expect_cases(rpf_group_get,
        range({gets_id, FIELD(id), 0, 511}, KY_STATUS_PARAM_ERROR, bad_id));

    std::vector<ky_router_vinterface_t> many(70000, {3, 0});
    many.push_back({4, 0});
    expect({CALL(ky_router_utils_validate_mc_rpf_group_set(CREATE, nullptr, many.data(), ~0U)),
            .status = KY_STATUS_PARAM_ERROR,
            .log = error("Invalid VIF type VXLAN given for VIF index 70000\n",
                          "__validate_vif_types")});
}
// clang-format on

using Bits = std::bitset<128>; // bit 0 is the most significant one

ky_ip_prefix_t prefix(uint32_t version, const Bits& addr, const Bits& mask)
{
    uint32_t words[2][4] = {};
    for (uint32_t i = 0; i < 128; i++) {
        words[0][i / 32] |= uint32_t{addr[i]} << (31 - i % 32);
        words[1][i / 32] |= uint32_t{mask[i]} << (31 - i % 32);
    }
    return version == KY_IP_VERSION_IPV4 ? ipv4(words[0][0], words[1][0])
                                         : ipv6(words[0], words[1], version);
}

Bits first(uint32_t length)
{
    return length == 0 ? Bits() : ~Bits() >> (128 - length);
}

TEST_F(RouterValidateTest, EveryBitOfAKeyCounts)
{
    for (const uint32_t version : {0U, 1U, 2U, 3U}) {
        const bool is_ipv4 = version == KY_IP_VERSION_IPV4;
        const uint32_t width = is_ipv4 ? 32 : 128;
        const uint32_t range_width = is_ipv4 ? 4 : 8;
        const Bits range = is_ipv4 ? Bits(0b0111) : first(8);
        const ky_status_t valid = is_ipv4 || version == KY_IP_VERSION_IPV6 ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_ERROR;
        const ky_ip_prefix_t any = prefix(version, {}, {});
        const auto expect_key = [&](const ky_ip_prefix_t& source, const ky_ip_prefix_t& group,
                                    ky_status_t status) {
            EXPECT_EQ(answer(egress_rif_get, {.key = {source, group}}), status);
            const uint32_t by_group = &group != &any ? 1 : 0; // "any group" is no filter
            EXPECT_EQ(
                answer(route_get, {.cmd = GET_NEXT, .filter = {1, source, by_group, group, 0, 0}}),
                status);
            take_log();
        };
        EXPECT_EQ(answer(route_get, {.cmd = GET_NEXT, .filter = {0, any, 1, any, 0, 0}}), KY_STATUS_PARAM_EXCEEDS_RANGE);
        for (uint32_t i = 0; i < width; i++) {
            SCOPED_TRACE(formatted("version %u, bit %u", version, i));
            const Bits bit = Bits(1) << i;
            const ky_status_t in_or_out = i < range_width ? KY_STATUS_PARAM_EXCEEDS_RANGE : KY_STATUS_PARAM_ERROR;
            expect_key(prefix(version, bit, first(i)), any, KY_STATUS_PARAM_ERROR);
            expect_key(prefix(version, bit, first(i + 1)), any, KY_STATUS_SUCCESS);
            expect_key(any, prefix(version, bit, {}), KY_STATUS_PARAM_EXCEEDS_RANGE);
            expect_key(any, prefix(version, {}, bit), KY_STATUS_PARAM_EXCEEDS_RANGE);
            expect_key(any, prefix(version, range ^ bit, first(width) ^ bit), in_or_out);
            expect_key(
                any, prefix(version, range, first(width) ^ bit), i < range_width ? KY_STATUS_PARAM_ERROR : valid);
            for (uint32_t length = 0; length <= width; length++) {
                const bool is_contiguous = length == i || length == i + 1;
                const Bits mask = first(length) ^ bit;
                expect_key(prefix(version, {}, mask), any, is_contiguous ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_ERROR);
                if (i + 2 < width) { // two bits apart make no length
                    expect_key(prefix(version, {}, mask ^ bit << 2), any, KY_STATUS_PARAM_ERROR);
                }
            }
        }
    }
}

} // namespace
