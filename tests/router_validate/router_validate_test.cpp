// The nine validators of the multicast API: every fault alone, and every two faults together.
#include "recorder.h"

#include <ky_router_utils_validate.h>

#include <cstring>

namespace {

class RouterValidateTest : public RecordedTest {};

constexpr ky_access_cmd_t DELETE = KY_ACCESS_CMD_DELETE;
constexpr ky_access_cmd_t DELETE_ALL = KY_ACCESS_CMD_DELETE_ALL;

constexpr Module router = {"KY_API_ROUTER", "ky_router_utils_validate.cpp"};

ky_ip_prefix_t ipv4(uint32_t addr, uint32_t mask)
{
    ky_ip_prefix_t prefix = {};
    prefix.version = 1;
    prefix.prefix.ipv4 = {addr, mask};
    return prefix;
}

ky_ip_prefix_t ipv6(const uint32_t (&addr)[4], const uint32_t (&mask)[4], uint32_t version = 2)
{
    ky_ip_prefix_t prefix = {};
    prefix.version = version;
    memcpy(prefix.prefix.ipv6.addr, addr, sizeof addr);
    memcpy(prefix.prefix.ipv6.mask, mask, sizeof mask);
    return prefix;
}

const ky_ip_prefix_t source4 = ipv4(0x0a000000, 0xff000000);
const ky_ip_prefix_t group4 = ipv4(0xef010100, 0xffffff00);
const ky_ip_prefix_t source6 = ipv6({0x20010db8, 0, 0, 0}, {0xffffffff, 0, 0, 0});
const ky_ip_prefix_t group6 = ipv6({0xff0e0000, 0, 0, 1}, {~0U, ~0U, ~0U, ~0U});
const ky_ip_prefix_t any4 = ipv4(0, 0);
const ky_ip_prefix_t any6 = ipv6({0, 0, 0, 0}, {0, 0, 0, 0});

/* All that any of the nine calls takes. */
struct Request {
    ky_access_cmd_t cmd = KY_ACCESS_CMD_ADD;
    bool has_key = true;
    ky_mc_route_key_t key = {source4, group4};
    ky_mc_route_attr_t attr = {1, 1, 0xdead, 2, 0xdead, 70000, 2, 0xffff, 0xffff};
    ky_mc_route_data_t data = {4, 3, 0};
    bool has_filter = true;
    ky_mc_route_get_filter_t filter = {1, source4, 1, group4, 1, 2};
    uint32_t count = 1; // entries or egress RIFs
    uint32_t id = 511;  // counter or RPF group
    std::vector<ky_router_vinterface_t> vifs = {{0, ~0U}, {1, 0}, {2, 0}, {3, 0}};

    const ky_mc_route_key_t* key_p() const
    {
        return has_key ? &key : nullptr;
    }
};

using Validator = std::function<ky_status_t(const Request&)>;
#define VALIDATE(call) [](const Request& r) { return ky_router_utils_validate_##call; }

// clang-format off
const Validator route_set = VALIDATE(mc_route_set(r.cmd, 1, r.key_p(), &r.attr, &r.data));
const Validator route_get = VALIDATE(mc_route_get(
    r.cmd, 1, r.key_p(), r.has_filter ? &r.filter : nullptr, nullptr, &r.count));
const Validator egress_rif_set = VALIDATE(mc_egress_rif_set(r.cmd, 1, r.key_p(), nullptr, r.count));
const Validator egress_rif_get = VALIDATE(mc_egress_rif_get(1, r.key_p(), nullptr, nullptr));
const Validator activity_get = VALIDATE(mc_route_activity_get(r.cmd, 1, r.key_p(), nullptr));
const Validator counter_bind_set = VALIDATE(mc_route_counter_bind_set(r.cmd, 1, r.key_p(), r.id));
const Validator counter_bind_get = VALIDATE(mc_route_counter_bind_get(1, r.key_p(), nullptr));
const Validator rpf_group_set = VALIDATE(mc_rpf_group_set(
    r.cmd, &r.id, r.vifs.data(), static_cast<uint32_t>(r.vifs.size())));
const Validator rpf_group_get = VALIDATE(mc_rpf_group_get(r.cmd, &r.id, nullptr, nullptr));
// clang-format on

/* A way to spoil a request, and what the validator, or a function within, says of it. */
struct Fault {
    std::function<void(Request&)> spoil;
    ky_status_t status;
    std::string message;
    const char* function = nullptr;
};
#define SPOIL(...) [](Request& r) { __VA_ARGS__; }

constexpr const char* VERSIONS = "__validate_mc_key_ip_versions";
constexpr const char* RANGES = "__validate_mc_key_ranges";

// clang-format off
/* In the order in which a key is checked. */
const std::vector<Fault> key_faults = {
    {SPOIL(r.key.mc_group_addr.version = ~0U), RANGE,
     "Given MC IP version -1 is invalid\n", VERSIONS},
    {SPOIL(r.key.source_addr.version = ~0U), RANGE,
     "Given source IP version -1 is invalid\n", VERSIONS},
    {SPOIL(r.key.source_addr.version = 2), BAD,
     "Source IP version IPv6 and MC IP version IPv4 are not equal\n", VERSIONS},
    {SPOIL(r.key.mc_group_addr = ipv4(0xc0a80101, ~0U)), RANGE,
     "Given MC mask 192.168.1.1/255.255.255.255 is not in the valid MC address range\n", RANGES},
    {SPOIL(r.key.source_addr = ipv4(0x0a010101, 0xffffff00)), BAD,
     "Given source address prefix 10.1.1.1/255.255.255.0 is not a valid IPv4 or IPv6 prefix\n",
     RANGES},
    {SPOIL(r.key.mc_group_addr = ipv4(0xe0000000, 0xe0000000)), BAD,
     "Given MC mask 224.0.0.0/224.0.0.0 is not a valid mask\n", RANGES},
};
// clang-format on

using Faults = std::vector<Fault>;

Faults operator+(Faults a, const Faults& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/* Each fault alone is reported, and of two the one that stands first. */
void expect_faults_in_order(
    const std::string& name, const Validator& call, const Request& good, const Faults& faults)
{
    EXPECT_OUTCOME(call(good), GOOD, {}) << name;
    for (size_t first = 0; first < faults.size(); first++) {
        for (size_t second = first; second < faults.size(); second++) {
            const auto& [spoil, status, message, within] = faults[first];
            SCOPED_TRACE(testing::Message() << name << ": " << message << faults[second].message);
            const std::string function = within ? within : "ky_router_utils_validate_" + name;
            Request request = good;
            faults[second].spoil(request);
            spoil(request); // what both spoil is spoiled as the first one wants it
            EXPECT_OUTCOME(call(request), status, router.said(1, function, message));
            ky_router_utils_log_verbosity_set(0);
            EXPECT_OUTCOME(call(request), status, {});
            ky_router_utils_log_verbosity_set(1);
        }
    }
}

// clang-format off
TEST_F(RouterValidateTest, RouteSetReportsTheFirstFault)
{
    const Faults missing_key = {
        {SPOIL(r.has_key = false), NIL, "Given mc_route_key_p is NULL and CMD is 1 \n"},
    };
    const Faults faults = {
        {SPOIL(r.attr.rpf_action = ~0U), BAD, "Given RPF action -1 is invalid\n"},
        {SPOIL(r.attr.rpf_action = 4; r.attr.rpf_group_id = ~0U), BAD,
         "Invalid RPF group 4294967295 given. Valid RPF group must be given when RPF action is "
         "DROP_LIST or TRAP_LIST\n"},
        {SPOIL(r.attr.prio_type = ~0U), BAD, "Invalid priority type -1 given\n"},
        {SPOIL(r.key.mc_group_addr = ipv4(0xef010001, 0xffff00ff)), BAD,
         "Invalid MC group mask 239.1.0.1/255.255.0.255 given for priority type LPM\n"},
        {SPOIL(r.attr.ttl_cmd = ~0U), BAD, "Invalid TTL command -1 given\n"},
        {SPOIL(r.attr.user_token_valid = 1; r.attr.user_token_mask = 0x1000), RANGE,
         "User token mask[0x1000] is invalid, Max Mask value : 0xfff\n"},
        {SPOIL(r.attr.user_token_valid = 1; r.attr.user_token_mask = 0xfff;
               r.attr.user_token_value = 0x1000), RANGE,
         "User token value[0x1000] is invalid, Max value : 0xfff\n"},
        {SPOIL(r.data.action = ~0U), BAD, "Invalid router action -1 given\n"},
        {SPOIL(r.data.egress_container_id = ~0U; r.data.egress_rif_cnt = ~1U), BAD, "Egress "
         "container ID 4294967295 and egress RIF count 4294967294 can't both be specified\n"},
    };
    expect_faults_in_order("mc_route_set", route_set, {}, missing_key + key_faults + faults);
}

TEST_F(RouterValidateTest, RouteGetReportsTheFirstFault)
{
    const Faults faults = {
        {SPOIL(r.count = 0), BAD, "Entries count must be larger than 0 for command GET FIRST\n"},
        {SPOIL(r.count = ~0U), RANGE,
         "Given entries count 4294967295 is larger than max allowed 128\n"},
        {SPOIL(r.filter.source_addr.version = ~0U), BAD,
         "Given filter source IP version -1 is invalid\n"},
        {SPOIL(r.filter.source_addr = ipv6({0, 0, 0, 1}, {~0U, ~0U, ~0U, ~1U})), BAD,
         "Given filter source address prefix ::1/ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe is not a "
         "valid IPv4 or IPv6 prefix\n"},
        {SPOIL(r.filter.mc_group_addr.version = 0x80000000), BAD,
         "Given filter MC IP version -2147483648 is invalid\n"},
        {SPOIL(r.filter.mc_group_addr = ipv4(0xc0a80101, ~0U)), RANGE,
         "Given filter MC address 192.168.1.1 is not in the valid MC address range\n"},
        {SPOIL(r.filter.mc_group_addr = ipv4(~0U, ~0U)), BAD,
         "Given filter MC mask 255.255.255.255/255.255.255.255 is not a valid mask\n"},
        {SPOIL(r.filter.ingress_rif_incl_rpf_groups_valid = 1), BAD, "Filter by ingress RIF and "
         "filter by ingress RIF including RPF groups can't both be valid\n"},
    };
    Request good = {.cmd = KY_ACCESS_CMD_GET_FIRST, .has_key = false, .count = 128};
    expect_faults_in_order("mc_route_get", route_get, good, faults);
    // A get judges the key, and neither the filter nor how many entries are too many.
    good.cmd = KY_ACCESS_CMD_GET;
    good.count = 129;
    good.has_key = true;
    good.filter.source_addr.version = 4;
    expect_faults_in_order("mc_route_get", route_get, good, key_faults);
}

TEST_F(RouterValidateTest, OtherCallsReportTheFirstFault)
{
    const Faults no_rifs = {
        {SPOIL(r.count = 0), BAD, "Egress RIF count cannot be 0 when command is ADD\n"},
    };
    const Faults no_counter = {{SPOIL(r.id = 0), BAD, "Counter_id must be valid when binding\n"}};
    const Faults bad_id = {{SPOIL(r.id = ~0U), BAD, "Invalid RPF group ID 4294967295 given\n"}};
    const Faults bad_vifs = {
        {SPOIL(r.vifs.clear()), BAD, "RPF RIF count 0 isn't allowed for CREATE/SET\n"},
        {SPOIL(r.vifs.assign(70000, {3, 0}); r.vifs.push_back({4, 0}); r.vifs.push_back({5, 0})),
         BAD, "Invalid VIF type VXLAN given for VIF index 70000\n", "__validate_vif_types"},
    };
    const struct {
        const char* name;
        Validator call;
        ky_access_cmd_t cmd;
        Faults faults;
    } rows[] = {
        {"mc_egress_rif_set", egress_rif_set, KY_ACCESS_CMD_ADD, key_faults + no_rifs},
        {"mc_egress_rif_get", egress_rif_get, KY_ACCESS_CMD_ADD, key_faults},
        {"mc_route_activity_get", activity_get, KY_ACCESS_CMD_ADD, key_faults},
        {"mc_route_counter_bind_set", counter_bind_set, KY_ACCESS_CMD_BIND,
         key_faults + no_counter},
        {"mc_route_counter_bind_get", counter_bind_get, KY_ACCESS_CMD_ADD, key_faults},
        {"mc_rpf_group_set", rpf_group_set, KY_ACCESS_CMD_SET, bad_id + bad_vifs},
        {"mc_rpf_group_get", rpf_group_get, KY_ACCESS_CMD_GET, bad_id},
        {"mc_rpf_group_get", rpf_group_get, KY_ACCESS_CMD_GET_NEXT, bad_id},
    };
    for (const auto& [name, call, cmd, faults] : rows) {
        expect_faults_in_order(name, call, {.cmd = cmd}, faults);
    }
}

/* What passes although it looks odd, and what each command does and does not look at. */
TEST_F(RouterValidateTest, CommandsAndBoundaries)
{
    const ky_mc_route_key_t mixed = {source4, group6};
    const ky_mc_route_key_t not_multicast = {source4, source4};
    const ky_mc_route_key_t with_hole = {source4, ipv4(0xe0010001, 0xf0ff00ff)};
    const ky_mc_route_key_t broadcast = {source4, ipv4(~0U, ~0U)};
    ky_mc_route_get_filter_t ignored = {2, any4, 0x100, any4, 2, 1};
    ignored.source_addr.version = ignored.mc_group_addr.version = 9;
    ky_ip_prefix_t newest = any6;
    newest.version = ~0U;
    ky_ip_prefix_t fourth = any6;
    fourth.version = 4;
    const struct {
        const char* label;
        Validator call;
        Request request;
        ky_status_t status;
    } cases[] = {
        {"delete-all without a key", route_set, {.cmd = DELETE_ALL, .has_key = false}, GOOD},
        {"delete-all, two versions", route_set, {.cmd = DELETE_ALL, .key = mixed}, BAD},
        {"delete-all, any group", route_set, {.cmd = DELETE_ALL, .key = not_multicast}, GOOD},
        {"delete, no such group", route_set, {.cmd = DELETE, .key = not_multicast}, RANGE},
        {"delete, broadcast", route_set, {.cmd = DELETE, .key = broadcast}, BAD},
        {"edit, bad action", route_set, {.cmd = KY_ACCESS_CMD_EDIT, .data = {5, 0, 0}}, BAD},
        {"delete, bad data", route_set, {.cmd = DELETE, .attr = {}, .data = {5, 1, 1}}, GOOD},
        // RPF action, TTL command, -, priority type, -, RPF group, token valid, value, mask
        {"drop list, group 511", route_set, {.attr = {4, 1, 0, 1, 0, 511, 0, 0, 0}}, GOOD},
        {"trap list, group 511", route_set, {.attr = {5, 1, 0, 1, 0, 511, 0, 0, 0}}, GOOD},
        {"trap list, group 512", route_set, {.attr = {5, 1, 0, 1, 0, 512, 0, 0, 0}}, BAD},
        {"RPF action 3, group 512", route_set, {.attr = {3, 1, 0, 1, 0, 512, 0, 0, 0}}, GOOD},
        {"priority type 3", route_set, {.attr = {0, 1, 0, 3, 0, 0, 0, 0, 0}}, BAD},
        {"a hole", route_set, {.key = with_hole, .attr = {0, 1, 0, 1, 0, 0, 0, 0, 0}}, GOOD},
        {"TTL command 2", route_set, {.attr = {0, 2, 0, 1, 0, 0, 0, 0, 0}}, GOOD},
        {"TTL command 3", route_set, {.attr = {0, 3, 0, 1, 0, 0, 0, 0, 0}}, BAD},
        {"largest token", route_set, {.attr = {0, 1, 0, 1, 0, 0, 1, 0xfff, 0xfff}}, GOOD},
        {"container without RIFs", route_set, {.data = {0, 0, 7}}, GOOD},
        {"next, 129", route_get, {.cmd = KY_ACCESS_CMD_GET_NEXT, .count = 129}, RANGE},
        {"another command, 129", route_get, {.cmd = KY_ACCESS_CMD_READ, .count = 129}, GOOD},
        {"set, 129", route_get, {.cmd = KY_ACCESS_CMD_SET, .count = 129}, GOOD},
        {"no filter", route_get, {.has_key = false, .has_filter = false}, GOOD},
        {"flags other than 1", route_get, {.filter = ignored}, GOOD},
        {"two versions", route_get, {.filter = {1, source6, 1, group4, 0, 1}}, GOOD},
        {"egress delete of none", egress_rif_set, {.cmd = DELETE, .count = 0}, BAD},
        {"egress delete-all", egress_rif_set, {.cmd = DELETE_ALL, .count = 0}, GOOD},
        {"unbind counter 0", counter_bind_set, {.cmd = KY_ACCESS_CMD_UNBIND, .id = 0}, GOOD},
        {"create, any ID", rpf_group_set, {.cmd = KY_ACCESS_CMD_CREATE, .id = 512}, GOOD},
        {"create of none", rpf_group_set, {.cmd = KY_ACCESS_CMD_CREATE, .vifs = {}}, BAD},
        {"destroy of none", rpf_group_set, {.cmd = KY_ACCESS_CMD_DESTROY, .vifs = {}}, GOOD},
        {"delete of a wrong type", rpf_group_set, {.cmd = DELETE, .vifs = {{~0U, 0}}}, BAD},
        // What another boundary, a narrower flag or a longer list of commands would turn round.
        {"RPF action 6", route_set, {.attr = {6, 1, 0, 1, 0, 0, 0, 0, 0}}, BAD},
        {"TTL command 0", route_set, {.attr = {0, 0, 0, 1, 0, 0, 0, 0, 0}}, BAD},
        {"priority type 0", route_set, {.attr = {0, 1, 0, 0, 0, 0, 0, 0, 0}}, BAD},
        {"token mask, top bit", route_set, {.attr = {0, 1, 0, 1, 0, 0, 1, 0, 0x8000}}, RANGE},
        {"group version 4", egress_rif_get, {.key = {source4, fourth}}, RANGE},
        {"source version 4", egress_rif_get, {.key = {fourth, group4}}, RANGE},
        {"set, ID 512", rpf_group_set, {.cmd = KY_ACCESS_CMD_SET, .id = 512}, BAD},
        {"get, ID 512", rpf_group_get, {.cmd = KY_ACCESS_CMD_GET, .id = 512}, BAD},
        {"container, one RIF", route_set, {.data = {0, 1, 7}}, BAD},
        {"next of none", route_get, {.cmd = KY_ACCESS_CMD_GET_NEXT, .count = 0}, BAD},
        {"count, filtered", route_get,
         {.cmd = KY_ACCESS_CMD_COUNT, .filter = {0, any4, 0, any4, 1, 1}, .count = 0}, BAD},
        {"flags 0x101", route_get, {.filter = {0x101, newest, 0x101, newest, 0x101, 1}}, GOOD},
        {"filter source version 4", route_get, {.filter = {1, fourth, 0, any4, 0, 0}}, BAD},
        {"filter group version 4", route_get, {.filter = {0, any4, 1, fourth, 0, 0}}, BAD},
        {"filter by any group", route_get, {.filter = {2, any4, 1, any4, 0, 0}}, RANGE},
        {"filter by any IPv6 group", route_get, {.filter = {0, any4, 1, any6, 0, 0}}, RANGE},
        {"filter with a hole", route_get,
         {.filter = {0, any4, 1, with_hole.mc_group_addr, 0, 0}}, GOOD},
        {"egress edit of none", egress_rif_set, {.cmd = KY_ACCESS_CMD_EDIT, .count = 0}, GOOD},
        {"set counter 0", counter_bind_set, {.cmd = KY_ACCESS_CMD_SET, .id = 0}, GOOD},
        {"edit of none", rpf_group_set, {.cmd = KY_ACCESS_CMD_EDIT, .vifs = {}}, GOOD},
        {"delete-all of a wrong type", rpf_group_set, {.cmd = DELETE_ALL, .vifs = {{4, 0}}}, BAD},
        {"count, any ID", rpf_group_get, {.cmd = KY_ACCESS_CMD_COUNT, .id = 512}, GOOD},
        {"first, any ID", rpf_group_get, {.cmd = KY_ACCESS_CMD_GET_FIRST, .id = 512}, GOOD},
    };
    const auto unknown = static_cast<ky_access_cmd_t>(~0U);
    EXPECT_OUTCOME(
        route_set({.cmd = unknown, .has_key = false}), NIL,
        router.said(
            1, "ky_router_utils_validate_mc_route_set",
            "Given mc_route_key_p is NULL and CMD is -1 \n"));
    for (const auto& [label, call, request, status] : cases) {
        EXPECT_EQ(call(request), status) << label;
        EXPECT_EQ(take_records().size(), status == GOOD ? 0U : 2U) << label;
    }
}

TEST_F(RouterValidateTest, PointersThatACommandDoesNotUseAreNotRead)
{
    const ky_mc_route_key_t key = {source4, group4};
    const ky_router_vinterface_t vif = {3, 0};
    const std::pair<const char*, Call> calls[] = {
        {CALL(ky_router_utils_validate_mc_route_set(DELETE_ALL, 0, nullptr, nullptr, nullptr))},
        {CALL(ky_router_utils_validate_mc_route_set(DELETE, 0, &key, nullptr, nullptr))},
        {CALL(ky_router_utils_validate_mc_route_get(
            KY_ACCESS_CMD_COUNT, 0, nullptr, nullptr, nullptr, nullptr))},
        {CALL(ky_router_utils_validate_mc_rpf_group_set(KY_ACCESS_CMD_CREATE, nullptr, &vif, 1))},
        {CALL(ky_router_utils_validate_mc_rpf_group_set(DELETE_ALL, nullptr, nullptr, 0))},
        {CALL(ky_router_utils_validate_mc_rpf_group_get(
            KY_ACCESS_CMD_GET_FIRST, nullptr, nullptr, nullptr))},
    };
    for (const auto& [label, call] : calls) {
        EXPECT_EQ(call(), GOOD) << label;
    }
}

TEST_F(RouterValidateTest, TracesSurroundTheMessageOnEveryPath)
{
    const std::pair<std::string, Validator> calls[] = {
        {"mc_route_set", route_set}, {"mc_route_get", route_get},
        {"mc_egress_rif_set", egress_rif_set}, {"mc_egress_rif_get", egress_rif_get},
        {"mc_route_activity_get", activity_get}, {"mc_route_counter_bind_set", counter_bind_set},
        {"mc_route_counter_bind_get", counter_bind_get}, {"mc_rpf_group_set", rpf_group_set},
        {"mc_rpf_group_get", rpf_group_get},
    };
    KY_STORE(g_ky_log_module_func_enable, 1);
    EXPECT_OUTCOME(ky_router_utils_log_verbosity_set(9), GOOD, {}); // the setter does not trace
    Request bad;
    bad.cmd = KY_ACCESS_CMD_GET;
    bad.key.mc_group_addr = ipv4(0x0a000001, ~0U);
    bad.id = 512;
    for (const auto& [name, call] : calls) {
        SCOPED_TRACE(name);
        const std::string function = "ky_router_utils_validate_" + name;
        const bool is_rpf = name.starts_with("mc_rpf");
        const ky_status_t status = is_rpf ? BAD : RANGE;
        const char* text = is_rpf ? "Invalid RPF group ID 512 given\n" : "Given MC mask "
            "10.0.0.1/255.255.255.255 is not in the valid MC address range\n";
        const Records message = router.said(1, is_rpf ? function : RANGES, text);
        EXPECT_OUTCOME(call({}), GOOD, router.around(function));
        EXPECT_OUTCOME(call(bad), status, router.around(function, message));
        ky_router_utils_log_verbosity_set(0);
        EXPECT_OUTCOME(call(bad), status, {});
        ky_router_utils_log_verbosity_set(5);
    }
}

TEST_F(RouterValidateTest, Ipv6KeysAndOtherVersions)
{
    const uint32_t zero[4] = {};
    const ky_ip_prefix_t with_hole = ipv6(zero, {~0U, 0, 1, 0});
    const struct {
        ky_mc_route_key_t key;
        ky_status_t status;
        std::string message;
    } cases[] = {
        {{source6, group6}, GOOD, ""},
        {{source6, any6}, GOOD, ""},
        {{source6, ipv6({0xff0e0000, 0, 0, 0}, {0xffff0000, 0, 0, 0})}, GOOD, ""},
        {{ipv6(zero, zero, 0), ipv6(zero, zero, 0)}, GOOD, ""},
        {{source6, ipv6({0xff0e0000, 0, 0, 1}, {0xff000000, 0, 0, 0})}, BAD,
         "Given MC mask ff0e::1/ff00:: is not a valid mask\n"},
        {{with_hole, ipv6({0xfe0e0000, 1, 2, 3}, {~0U, ~0U, ~0U, 0})}, RANGE, "Given MC mask "
         "fe0e::1:0:2:0:3/ffff:ffff:ffff:ffff:ffff:ffff:: is not in the valid MC address range\n"},
        {{with_hole, group6}, BAD,
         "Given source address prefix ::/ffff:ffff::1:0:0 is not a valid IPv4 or IPv6 prefix\n"},
        {{ipv6(zero, zero, 3), ipv6({0xff000000, 0, 0, 0}, zero, 3)}, BAD,
         "Given MC mask Invalid IP version/Invalid IP version is not a valid mask\n"},
    };
    for (const auto& [key, status, message] : cases) {
        const Records records = router.said(1, RANGES, message);
        EXPECT_OUTCOME(egress_rif_get({.key = key}), status, message.empty() ? Records{} : records);
    }
}
// clang-format on

} // namespace
