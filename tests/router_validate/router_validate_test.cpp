// The nine validators of the multicast API: every fault alone, and every two faults together.
#include "recorder.h"

#include <ky_router_utils_validate.h>

#include <cstring>
#include <functional>

namespace {

class RouterValidateTest : public RecordedTest {};

Records said(uint32_t mask, const std::string& function, const std::string& text)
{
    return statement(mask, "KY_API_ROUTER", "ky_router_utils_validate.cpp", function, text);
}

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
};

using Call = std::function<ky_status_t(const Request&)>;

const ky_mc_route_key_t* key_of(const Request& request)
{
    return request.has_key ? &request.key : nullptr;
}

// clang-format off
const Call route_set = [](const Request& r) {
    return ky_router_utils_validate_mc_route_set(r.cmd, 1, key_of(r), &r.attr, &r.data);
};
const Call route_get = [](const Request& r) {
    const ky_mc_route_get_filter_t* filter = r.has_filter ? &r.filter : nullptr;
    return ky_router_utils_validate_mc_route_get(r.cmd, 1, key_of(r), filter, nullptr, &r.count);
};
const Call egress_rif_set = [](const Request& r) {
    return ky_router_utils_validate_mc_egress_rif_set(r.cmd, 1, key_of(r), nullptr, r.count);
};
const Call egress_rif_get = [](const Request& r) {
    return ky_router_utils_validate_mc_egress_rif_get(1, key_of(r), nullptr, nullptr);
};
const Call activity_get = [](const Request& r) {
    return ky_router_utils_validate_mc_route_activity_get(r.cmd, 1, key_of(r), nullptr);
};
const Call counter_bind_set = [](const Request& r) {
    return ky_router_utils_validate_mc_route_counter_bind_set(r.cmd, 1, key_of(r), r.id);
};
const Call counter_bind_get = [](const Request& r) {
    return ky_router_utils_validate_mc_route_counter_bind_get(1, key_of(r), nullptr);
};
const Call rpf_group_set = [](const Request& r) {
    const auto count = static_cast<uint32_t>(r.vifs.size());
    return ky_router_utils_validate_mc_rpf_group_set(r.cmd, &r.id, r.vifs.data(), count);
};
const Call rpf_group_get = [](const Request& r) {
    return ky_router_utils_validate_mc_rpf_group_get(r.cmd, &r.id, nullptr, nullptr);
};
// clang-format on

/* A way to spoil a request, and what is said of it. An empty function stands for the validator's
 * own name. */
struct Fault {
    std::function<void(Request&)> spoil;
    ky_status_t status;
    const char* function;
    const char* message;
};

constexpr ky_status_t BAD = KY_STATUS_PARAM_ERROR;
constexpr ky_status_t RANGE = KY_STATUS_PARAM_EXCEEDS_RANGE;
constexpr const char* VERSIONS = "__validate_mc_key_ip_versions";
constexpr const char* RANGES = "__validate_mc_key_ranges";

/* In the order in which a key is checked. */
const std::vector<Fault> key_faults = {
    {[](Request& r) { r.key.mc_group_addr.version = 4; }, RANGE, VERSIONS,
     "Given MC IP version 4 is invalid\n"},
    {[](Request& r) { r.key.source_addr.version = 0xffffffff; }, RANGE, VERSIONS,
     "Given source IP version -1 is invalid\n"},
    {[](Request& r) { r.key.source_addr.version = 2; }, BAD, VERSIONS,
     "Source IP version IPv6 and MC IP version IPv4 are not equal\n"},
    {[](Request& r) { r.key.mc_group_addr = ipv4(0xc0a80101, ~0U); }, RANGE, RANGES,
     "Given MC mask 192.168.1.1/255.255.255.255 is not in the valid MC address range\n"},
    {[](Request& r) { r.key.source_addr = ipv4(0x0a010101, 0xffffff00); }, BAD, RANGES,
     "Given source address prefix 10.1.1.1/255.255.255.0 is not a valid IPv4 or IPv6 prefix\n"},
    {[](Request& r) { r.key.mc_group_addr = ipv4(0xe0000000, 0xe0000000); }, BAD, RANGES,
     "Given MC mask 224.0.0.0/224.0.0.0 is not a valid mask\n"},
};

using Faults = std::vector<Fault>;

Faults in_order(std::initializer_list<Faults> parts)
{
    Faults all;
    for (const Faults& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

/* Each fault alone is reported, and of two the one that stands first. */
void expect_faults_in_order(
    const char* function, const Call& call, const Request& good, const Faults& faults)
{
    EXPECT_EQ(call(good), KY_STATUS_SUCCESS) << function;
    EXPECT_SILENCE() << function;
    for (size_t first = 0; first < faults.size(); first++) {
        for (size_t second = first; second < faults.size(); second++) {
            const auto& [spoil, status, in, message] = faults[first];
            SCOPED_TRACE(std::string(function) + ": " + message + "and: " + faults[second].message);
            Request request = good;
            faults[second].spoil(request);
            spoil(request); // what both spoil is spoiled as the first one wants it
            EXPECT_EQ(call(request), status);
            EXPECT_RECORDS(said(1, in == nullptr ? function : in, message));

            ky_router_utils_log_verbosity_set(0);
            EXPECT_EQ(call(request), status);
            EXPECT_SILENCE();
            ky_router_utils_log_verbosity_set(1);
        }
    }
}

TEST_F(RouterValidateTest, RouteSetReportsTheFirstFault)
{
    const Faults missing_key = {
        {[](Request& r) { r.has_key = false; }, KY_STATUS_PARAM_NULL, nullptr,
         "Given mc_route_key_p is NULL and CMD is 1 \n"}};
    const Faults faults = {
        {[](Request& r) { r.attr.rpf_action = 6; }, BAD, nullptr,
         "Given RPF action 6 is invalid\n"},
        {[](Request& r) {
             r.attr.rpf_action = 4;
             r.attr.rpf_group_id = 512;
         },
         BAD, nullptr,
         "Invalid RPF group 512 given. Valid RPF group must be given when RPF action is DROP_LIST "
         "or TRAP_LIST\n"},
        {[](Request& r) { r.attr.prio_type = 0; }, BAD, nullptr, "Invalid priority type 0 given\n"},
        {[](Request& r) { r.key.mc_group_addr = ipv4(0xef010001, 0xffff00ff); }, BAD, nullptr,
         "Invalid MC group mask 239.1.0.1/255.255.0.255 given for priority type LPM\n"},
        {[](Request& r) { r.attr.ttl_cmd = 0; }, BAD, nullptr, "Invalid TTL command 0 given\n"},
        {[](Request& r) {
             r.attr.user_token_valid = 1;
             r.attr.user_token_mask = 0x1000;
         },
         RANGE, nullptr, "User token mask[0x1000] is invalid, Max Mask value : 0xfff\n"},
        {[](Request& r) {
             r.attr.user_token_valid = 1;
             r.attr.user_token_mask = 0xfff;
             r.attr.user_token_value = 0x2000;
         },
         RANGE, nullptr, "User token value[0x2000] is invalid, Max value : 0xfff\n"},
        {[](Request& r) { r.data.action = 5; }, BAD, nullptr, "Invalid router action 5 given\n"},
        {[](Request& r) { r.data.egress_container_id = 7; }, BAD, nullptr,
         "Egress container ID 7 and egress RIF count 3 can't both be specified\n"},
    };
    expect_faults_in_order(
        "ky_router_utils_validate_mc_route_set", route_set, {},
        in_order({missing_key, key_faults, faults}));
}

TEST_F(RouterValidateTest, RouteGetReportsTheFirstFault)
{
    const Faults no_entries = {
        {[](Request& r) { r.count = 0; }, BAD, nullptr,
         "Entries count must be larger than 0 for command GET FIRST\n"}};
    const Faults faults = {
        {[](Request& r) { r.count = 129; }, RANGE, nullptr,
         "Given entries count 129 is larger than max allowed 128\n"},
        {[](Request& r) { r.filter.source_addr.version = 4; }, BAD, nullptr,
         "Given filter source IP version 4 is invalid\n"},
        {[](Request& r) {
             r.filter.source_addr = ipv6({0, 0, 0, 1}, {~0U, ~0U, ~0U, ~1U});
         },
         BAD, nullptr,
         "Given filter source address prefix ::1/ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe is not a "
         "valid IPv4 or IPv6 prefix\n"},
        {[](Request& r) { r.filter.mc_group_addr.version = 0x80000000; }, BAD, nullptr,
         "Given filter MC IP version -2147483648 is invalid\n"},
        {[](Request& r) { r.filter.mc_group_addr = ipv4(0xc0a80101, ~0U); }, RANGE, nullptr,
         "Given filter MC address 192.168.1.1 is not in the valid MC address range\n"},
        {[](Request& r) { r.filter.mc_group_addr = ipv4(~0U, ~0U); }, BAD, nullptr,
         "Given filter MC mask 255.255.255.255/255.255.255.255 is not a valid mask\n"},
        {[](Request& r) { r.filter.ingress_rif_incl_rpf_groups_valid = 1; }, BAD, nullptr,
         "Filter by ingress RIF and filter by ingress RIF including RPF groups can't both be "
         "valid\n"},
    };
    Request good = {.cmd = KY_ACCESS_CMD_GET_FIRST, .has_key = false, .count = 128};
    const char* function = "ky_router_utils_validate_mc_route_get";
    expect_faults_in_order(function, route_get, good, in_order({no_entries, faults}));
    // A get judges the key, and neither the filter nor how many entries are too many.
    good.cmd = KY_ACCESS_CMD_GET;
    good.count = 129;
    good.has_key = true;
    good.filter.source_addr.version = 4;
    expect_faults_in_order(function, route_get, good, key_faults);
}

TEST_F(RouterValidateTest, CallsAboutOneRouteReportTheFirstFault)
{
    const Faults no_rifs = {
        {[](Request& r) { r.count = 0; }, BAD, nullptr,
         "Egress RIF count cannot be 0 when command is ADD\n"}};
    const Faults no_counter = {
        {[](Request& r) { r.id = 0; }, BAD, nullptr, "Counter_id must be valid when binding\n"}};
    expect_faults_in_order(
        "ky_router_utils_validate_mc_egress_rif_set", egress_rif_set, {},
        in_order({key_faults, no_rifs}));
    expect_faults_in_order(
        "ky_router_utils_validate_mc_route_counter_bind_set", counter_bind_set,
        {.cmd = KY_ACCESS_CMD_BIND}, in_order({key_faults, no_counter}));
    expect_faults_in_order("egress_rif_get", egress_rif_get, {}, key_faults);
    expect_faults_in_order("activity_get", activity_get, {}, key_faults);
    expect_faults_in_order("counter_bind_get", counter_bind_get, {}, key_faults);
}

TEST_F(RouterValidateTest, RpfGroupCallsReportTheFirstFault)
{
    const Fault bad_id = {
        [](Request& r) { r.id = 512; }, BAD, nullptr, "Invalid RPF group ID 512 given\n"};
    const Faults faults = {
        bad_id,
        {[](Request& r) { r.vifs.clear(); }, BAD, nullptr,
         "RPF RIF count 0 isn't allowed for CREATE/SET\n"},
        {[](Request& r) {
             r.vifs = {{3, 0}, {0, 0}, {4, 0}, {5, 0}};
         },
         BAD, "__validate_vif_types", "Invalid VIF type VXLAN given for VIF index 2\n"},
    };
    expect_faults_in_order(
        "ky_router_utils_validate_mc_rpf_group_set", rpf_group_set, {.cmd = KY_ACCESS_CMD_SET},
        faults);
    for (const ky_access_cmd_t cmd : {KY_ACCESS_CMD_GET, KY_ACCESS_CMD_GET_NEXT}) {
        expect_faults_in_order(
            "ky_router_utils_validate_mc_rpf_group_get", rpf_group_get, {.cmd = cmd}, {bad_id});
    }
}

/* What passes although it looks odd, and what each command does and does not look at. */
TEST_F(RouterValidateTest, CommandsAndBoundaries)
{
    constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;
    constexpr ky_access_cmd_t DELETE = KY_ACCESS_CMD_DELETE;
    constexpr ky_access_cmd_t DELETE_ALL = KY_ACCESS_CMD_DELETE_ALL;
    const ky_mc_route_key_t mixed = {source4, group6};
    const ky_mc_route_key_t not_multicast = {source4, source4};
    const ky_mc_route_key_t with_hole = {source4, ipv4(0xe0010001, 0xf0ff00ff)};
    const ky_mc_route_key_t broadcast = {source4, ipv4(~0U, ~0U)};
    ky_mc_route_get_filter_t ignored = {2, any4, 0x100, any4, 2, 1};
    ignored.source_addr.version = ignored.mc_group_addr.version = 9;
    ky_ip_prefix_t newest = any6;
    newest.version = ~0U;
    const struct {
        const char* label;
        Call call;
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
        {"token too large", route_set, {.attr = {0, 1, 0, 1, 0, 0, 1, 0x1000, 0}}, RANGE},
        {"container without RIFs", route_set, {.data = {0, 0, 7}}, GOOD},
        {"next, 129", route_get, {.cmd = KY_ACCESS_CMD_GET_NEXT, .count = 129}, RANGE},
        {"another command, 129", route_get, {.cmd = KY_ACCESS_CMD_READ, .count = 129}, GOOD},
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
        // What a signed comparison, a narrower flag or a longer list of commands would turn round.
        {"RPF action ~0", route_set, {.attr = {~0U, 1, 0, 1, 0, 0, 0, 0, 0}}, BAD},
        {"TTL command ~0", route_set, {.attr = {0, ~0U, 0, 1, 0, 0, 0, 0, 0}}, BAD},
        {"priority type ~0", route_set, {.attr = {0, 1, 0, ~0U, 0, 0, 0, 0, 0}}, BAD},
        {"drop list, group ~0", route_set, {.attr = {4, 1, 0, 1, 0, ~0U, 0, 0, 0}}, BAD},
        {"token mask, top bit", route_set, {.attr = {0, 1, 0, 1, 0, 0, 1, 0, 0x8000}}, RANGE},
        {"action ~0", route_set, {.data = {~0U, 0, 0}}, BAD},
        {"container, one RIF", route_set, {.data = {0, 1, 7}}, BAD},
        {"group version ~0", egress_rif_get, {.key = {source4, newest}}, RANGE},
        {"next of none", route_get, {.cmd = KY_ACCESS_CMD_GET_NEXT, .count = 0}, BAD},
        {"next of ~0", route_get, {.cmd = KY_ACCESS_CMD_GET_NEXT, .count = ~0U}, RANGE},
        {"count, filtered",
         route_get,
         {.cmd = KY_ACCESS_CMD_COUNT, .filter = {0, any4, 0, any4, 1, 1}, .count = 0},
         BAD},
        {"flags 0x101", route_get, {.filter = {0x101, newest, 0x101, newest, 0x101, 1}}, GOOD},
        {"filter source version ~0", route_get, {.filter = {1, newest, 0, any4, 0, 0}}, BAD},
        {"filter by any group", route_get, {.filter = {2, any4, 1, any4, 0, 0}}, RANGE},
        {"filter by any IPv6 group", route_get, {.filter = {0, any4, 1, any6, 0, 0}}, RANGE},
        {"filter with a hole",
         route_get,
         {.filter = {0, any4, 1, with_hole.mc_group_addr, 0, 0}},
         GOOD},
        {"egress edit of none", egress_rif_set, {.cmd = KY_ACCESS_CMD_EDIT, .count = 0}, GOOD},
        {"set counter 0", counter_bind_set, {.cmd = KY_ACCESS_CMD_SET, .id = 0}, GOOD},
        {"RPF group ~0", rpf_group_set, {.cmd = KY_ACCESS_CMD_SET, .id = ~0U}, BAD},
        {"edit of none", rpf_group_set, {.cmd = KY_ACCESS_CMD_EDIT, .vifs = {}}, GOOD},
        {"delete-all of a wrong type", rpf_group_set, {.cmd = DELETE_ALL, .vifs = {{4, 0}}}, BAD},
        {"count, any ID", rpf_group_get, {.cmd = KY_ACCESS_CMD_COUNT, .id = 512}, GOOD},
        {"first, any ID", rpf_group_get, {.cmd = KY_ACCESS_CMD_GET_FIRST, .id = 512}, GOOD},
    };
    for (const auto& [label, call, request, status] : cases) {
        EXPECT_EQ(call(request), status) << label;
        EXPECT_EQ(take_records().size(), status == GOOD ? 0U : 2U) << label;
    }
}

TEST_F(RouterValidateTest, PointersThatACommandDoesNotUseAreNotRead)
{
    const ky_mc_route_key_t key = {source4, group4};
    const ky_router_vinterface_t vif = {3, 0};
    for (const ky_status_t status : {
             ky_router_utils_validate_mc_route_set(
                 KY_ACCESS_CMD_DELETE_ALL, 0, nullptr, nullptr, nullptr),
             ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_DELETE, 0, &key, nullptr, nullptr),
             ky_router_utils_validate_mc_route_get(
                 KY_ACCESS_CMD_COUNT, 0, nullptr, nullptr, nullptr, nullptr),
             ky_router_utils_validate_mc_rpf_group_set(KY_ACCESS_CMD_CREATE, nullptr, &vif, 1),
             ky_router_utils_validate_mc_rpf_group_set(
                 KY_ACCESS_CMD_DELETE_ALL, nullptr, nullptr, 0),
             ky_router_utils_validate_mc_rpf_group_get(
                 KY_ACCESS_CMD_GET_FIRST, nullptr, nullptr, nullptr),
         }) {
        EXPECT_EQ(status, KY_STATUS_SUCCESS);
    }
}

TEST_F(RouterValidateTest, TracesSurroundTheMessageOnEveryPath)
{
    const std::pair<std::string, Call> calls[] = {
        {"mc_route_set", route_set},
        {"mc_route_get", route_get},
        {"mc_egress_rif_set", egress_rif_set},
        {"mc_egress_rif_get", egress_rif_get},
        {"mc_route_activity_get", activity_get},
        {"mc_route_counter_bind_set", counter_bind_set},
        {"mc_route_counter_bind_get", counter_bind_get},
        {"mc_rpf_group_set", rpf_group_set},
        {"mc_rpf_group_get", rpf_group_get},
    };
    KY_STORE(g_ky_log_module_func_enable, 1);
    EXPECT_EQ(ky_router_utils_log_verbosity_set(9), KY_STATUS_SUCCESS);
    EXPECT_SILENCE(); // the setter does not trace
    Request bad;
    bad.cmd = KY_ACCESS_CMD_GET;
    bad.key.mc_group_addr = ipv4(0x0a000001, ~0U);
    bad.id = 512;
    for (const auto& [name, call] : calls) {
        SCOPED_TRACE(name);
        const std::string function = "ky_router_utils_validate_" + name;
        const Records entered = said(31, function, function + " - entered \n");
        const Records left = said(31, function, function + " - left \n");
        EXPECT_EQ(call({}), KY_STATUS_SUCCESS);
        EXPECT_RECORDS(entered + left);

        const bool has_key = name.find("rpf") == std::string::npos;
        EXPECT_EQ(call(bad), has_key ? RANGE : BAD);
        const Records message =
            has_key ? said(
                          1, RANGES,
                          "Given MC mask 10.0.0.1/255.255.255.255 is not in the valid MC address "
                          "range\n")
                    : said(1, function, "Invalid RPF group ID 512 given\n");
        EXPECT_RECORDS(entered + message + left);
        ky_router_utils_log_verbosity_set(0);
        EXPECT_EQ(call(bad), has_key ? RANGE : BAD);
        EXPECT_SILENCE();
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
        const char* message;
    } cases[] = {
        {{source6, group6}, KY_STATUS_SUCCESS, nullptr},
        {{source6, any6}, KY_STATUS_SUCCESS, nullptr},
        {{source6, ipv6({0xff0e0000, 0, 0, 0}, {0xffff0000, 0, 0, 0})}, KY_STATUS_SUCCESS, nullptr},
        {{ipv6(zero, zero, 0), ipv6(zero, zero, 0)}, KY_STATUS_SUCCESS, nullptr},
        {{source6, ipv6({0xff0e0000, 0, 0, 1}, {0xff000000, 0, 0, 0})},
         BAD,
         "Given MC mask ff0e::1/ff00:: is not a valid mask\n"},
        {{with_hole, ipv6({0xfe0e0000, 1, 2, 3}, {~0U, ~0U, ~0U, 0})},
         RANGE,
         "Given MC mask fe0e::1:0:2:0:3/ffff:ffff:ffff:ffff:ffff:ffff:: is not in the valid MC "
         "address range\n"},
        {{with_hole, group6},
         BAD,
         "Given source address prefix ::/ffff:ffff::1:0:0 is not a valid IPv4 or IPv6 prefix\n"},
        {{ipv6(zero, zero, 3), ipv6({0xff000000, 0, 0, 0}, zero, 3)},
         BAD,
         "Given MC mask Invalid IP version/Invalid IP version is not a valid mask\n"},
    };
    for (const auto& [key, status, message] : cases) {
        EXPECT_EQ(egress_rif_get({.key = key}), status);
        EXPECT_RECORDS(message == nullptr ? Records{} : said(1, RANGES, message));
    }
}

} // namespace
