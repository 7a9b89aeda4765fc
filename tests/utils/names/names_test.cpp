// The enum names, by structure and one fingerprint per table: a second copy of the texts would only
// repeat a mistake.
#include "contract.h"

#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <algorithm>
#include <bit>
#include <cctype>
#include <fstream>
#include <map>
#include <regex>
#include <utility>

namespace {

class NamesTest : public testing::Test {};

using Str = const char* (*)(uint32_t value);

/* The fingerprint covers the names of 0 to bound + 1. */
struct Enumeration {
    Str str;
    std::string name;
    uint32_t bound;
    uint64_t fingerprint;
};

/* Some take an enumeration: all are unsigned and 32 bits wide. */
template <typename Value> Str str_of(const char* (*str)(Value))
{
    static_assert(sizeof(Value) == sizeof(uint32_t) && static_cast<Value>(~0U) > Value{});
    return reinterpret_cast<Str>(str);
}

#define NAME(name, bound, fingerprint)                         \
    {                                                          \
        str_of(ky_##name##_str), #name, bound, 0x##fingerprint \
    }
// clang-format off
const Enumeration enumerations[] = {
    NAME(status, 104, 663d46e5ff1d1268), NAME(access_cmd, 37, b4b39a048ecb84f8),
    NAME(chip_type, 13, 7666c29bace18d04), NAME(chip_rev, 3, 97c26c16001040a9),
    NAME(dev_node_type, 7, c1fd883e67e2a0f2), NAME(swid_info_field_bit, 6, 7baf81c1c3d85f68),
    NAME(boot_mode, 6, 156c73446ceb314f), NAME(health_cause, 4, 246b8c31a75b1b92),
    NAME(health_severity, 3, 2b5e34e19e1d42d4), NAME(event_generate_mode, 4, 3a538fa01cbcc0a8),
    NAME(lib_adviser_event_type, 6, e1783b68a3a8fd32), NAME(api_arb_policy, 2, 976800b5f20b4cfe),
    NAME(acl_search_type, 2, 60420828f7f06207), NAME(tcam_opt_mode, 4, 90916d5ff1ad431e),
    NAME(tcam_opt_mode_param, 7, 5b88e21e29b948bb), NAME(port_type, 10, fb67efedd64cacbd),
    NAME(extraction_point_type, 19, 2d9f26175334d947), NAME(port_mode, 6, f1041e85fa66e276),
    NAME(port_module_state, 6, d9a47b3b726825b9), NAME(port_admin_state, 6, 872778a42b85579e),
    NAME(port_oper_state, 6, b192c5f7bccee98c), NAME(port_oper_speed, 26, 437cc5fe6d859183),
    NAME(port_phy_speed, 12, ccd268db31009d68), NAME(port_rate, 11, 78c0d88f4f3bb0e9),
    NAME(port_mapping_mode, 3, 5a3788d5c0f25694), NAME(port_phys_loopback, 6, 992e394efbc818c9),
    NAME(port_phys_link_side, 4, 4d22b7d6ea07e732), NAME(port_pause_policy_rx, 3, c706415c989dc6b4),
    NAME(port_pause_policy_tx, 3, c706415c989dc6b4), NAME(port_flow_ctrl_mode, 5, 706cf05d9fb58acd),
    NAME(port_flow_ctrl_prio, 9, 0a8ebcc0185d2813), NAME(port_cntr_prio_tc, 18, 138afd68b66cc162),
    NAME(port_ber_fec_profile, 5, c4264b4d91bf8611), NAME(cos_buffer_max_mode, 4, 6139060b9336fb0b),
    NAME(port_ber_alarm_state, 4, f2c6f00c746568de), NAME(policer_ir_units, 3, bff12b73c2f65dec),
    NAME(mgmt_phy_mod_pwr_attr_type, 2, adc6d52bd02ea21c), NAME(ip_version, 6, 21b5743489f54780),
    NAME(mgmt_phy_mod_pwr_mode, 5, 9d970bc025b03bb1), NAME(policer_rate_type, 4, 5e9a20983753ceaf),
    NAME(cos_port_buff_pool_direction, 3, dfdd73a902f9d123), NAME(ecmp_type, 5, 8a8690e7fa9461a1),
    NAME(policer_meter_type, 3, 2801c9a0e9a75e0b), NAME(policer_action, 5, 52d5e762688b2eca),
    NAME(router_action, 7, d1b1710c82b5db79), NAME(router_interface_type, 9, 7298ddad6592cfa0),
    NAME(router_vinterface_type, 6, 9d0a85a485c68ceb), NAME(router_qos_mode, 4, 7dd12253bf3f42e6),
    NAME(router_enable_state, 4, b7644d2bed3abffe), NAME(router_rpf_action, 7, 9f56b0af3de80ae3),
    NAME(router_prio_type, 4, ce515239df2f9104), NAME(router_ecmp_hash_type, 4, fa0898f68e880863),
    NAME(ecmp_container_type, 5, 4e47e91ddc5c24a6), NAME(next_hop_type, 7, aff33ba4841df02b),
    NAME(object_type, 6, 35b38312b7909f1b), NAME(mc_router_ttl_cmd, 4, 025a8dd9ccbdff29),
    NAME(mc_next_hop_type, 6, 9054e860edd81beb), NAME(mc_container_type, 7, 984de018b4f81416),
    NAME(tunnel_type, 19, eae20e123f345f91), NAME(tunnel_direction, 5, 9ef70f6584633db2),
    NAME(tunnel_underlay_domain_type, 3, 6d33b5a264123415), NAME(span_type, 8, 959866560ca3bb9a),
    NAME(tunnel_ipinip_gre_mode, 4, cb4219446845f328), NAME(span_drop_reason, 19, c73ac6292bf29e50),
    NAME(tunnel_decap_key_fields_type, 3, 125d7999a0e033bf), NAME(bridge_mode, 3, 57c345e4bacb6d6b),
    NAME(tele_histogram_type, 6, 2d7f969daf3bbc16), NAME(tele_histogram_mode, 3, 322a8bd2de3e4bb3),
    NAME(tele_threshold_type, 6, cf8f612556f9c715), NAME(host_ifc_trap_id, 627, 1acbaad582436977),
    NAME(receive_dest_port, 3, 981c8f02c3d610ce), NAME(fm_fid_type, 6, c34a2cc089364480),
    NAME(bridge_multiple_vlan_mode, 2, cbc36e825baff52c), NAME(fdb_learn_mode, 4, 8efe9351e374389c),
    NAME(bridge_tunnel_counter_type, 4, 819c016d23b01f81), NAME(mstp_mode, 5, 36c35a097b702db7),
    NAME(fdb_notify_type, 17, 0d896d08af4477c3), NAME(mstp_inst_port_state, 5, 63731a134fb9601e),
    NAME(mstp_exclude_port_state, 1, bcc0a8fe3353d8fd),
    NAME(vlan_qinq_prio_tag_mode, 3, f2f12a08ef2b587a),
    NAME(lag_hash_bit_number, 18, 6c05e5fe205134cf),
};
// clang-format on

TEST_F(NamesTest, TablesMatchTheirFingerprints)
{
    for (const auto& [str, name, bound, expected] : enumerations) {
        has_a_row("ky_" + name + "_str");
        uint64_t found = NO_TEXTS;
        for (uint32_t value = 0; value <= bound + 1; value++) {
            ASSERT_NE(str(value), nullptr) << name << " " << value;
            found = fingerprint(found, str(value));
        }
        EXPECT_EQ(found, expected) << name << ": " << std::hex << found;
    }
}

TEST_F(NamesTest, ValuesAboveTheBoundYieldTheDefault)
{
    for (const auto& [str, name, bound, fingerprint] : enumerations) {
        const std::string expected =
            name == "extraction_point_type" ? "Invalid extraction point" : "Unknown";
        for (const uint32_t value : {bound + 1, bound + 2, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
            EXPECT_EQ(str(value), expected) << name << " " << value;
        }
#if defined(__x86_64__) || defined(__aarch64__)
        // A caller may leave garbage in the upper half of the register.
        const auto any = reinterpret_cast<void (*)()>(str);
        const auto wide = reinterpret_cast<const char* (*)(uint64_t)>(any);
        EXPECT_EQ(wide(0xa5a5a5a500000000), str(0)) << name;
#endif
    }
}

/* The constants that the headers give to values, by enumeration and value. */
std::map<std::string, std::map<uint32_t, std::string>> constants_of_headers()
{
    static const std::regex enumeration("(?:enum |KY_ENUM\\()ky_(\\w+)_(?:values|t)\\b.*");
    static const std::regex constant("    (KY_\\w+) = (\\w+),");
    std::map<std::string, std::map<uint32_t, std::string>> all;
    for (const char* header : {SOURCE "/utils/ky_common.h", SOURCE "/utils/ky_values.h"}) {
        std::ifstream lines(header);
        std::string current;
        std::smatch found;
        for (std::string line; std::getline(lines, line);) {
            if (std::regex_match(line, found, enumeration)) {
                current = found[1];
            } else if (std::regex_match(line, found, constant)) {
                std::string& name =
                    all[current][static_cast<uint32_t>(std::stoul(found[2], nullptr, 0))];
                EXPECT_EQ(name, "") << "has the value of " << found[1];
                name = found[1];
            }
        }
    }
    return all;
}

/* What the library prints for a value. */
std::string printed(const std::string& enumeration, uint32_t value)
{
    if (enumeration == "mem_type") {
        utils_memory_print_summary(value);
        const std::string last = take_log().back().text;
        const size_t name = last.rfind(" type ");
        return value == 0                  ? "ALL" // for which each type is printed
               : name == std::string::npos ? ""
                                           : last.substr(name + 6, last.size() - name - 7);
    }
    if (enumeration == "port_row") {
        const bool is_row = value >= 1 && value <= PORT_TYPE_VALIDATION_ROWS - 2;
        const char* name = is_row ? port_type_validation_table[value].func_name : "";
        return name != nullptr ? name : "a row is missing";
    }
    if (enumeration == "port_type_bit") { // the types of port that the bit alone accepts
        uint8_t& bits = port_type_validation_table[1].allowed_port_types;
        const uint8_t saved = std::exchange(bits, std::has_single_bit(value) ? value : 0);
        std::string names;
        for (uint32_t type = 0; type < 16; type++) {
            names += is_port_type_valid(1, type << 28) == 1 ? ky_port_type_str(type) : "";
        }
        bits = saved;
        return names;
    }
    const auto* each = std::ranges::find(enumerations, enumeration, &Enumeration::name);
    return each != std::end(enumerations) ? each->str(value) : "no such enumeration";
}

/* The constant of a value that is printed so; empty if it has none. */
std::string constant_of(const std::string& enumeration, const std::string& name)
{
    std::string constant;
    for (const char each : "ky_" + enumeration + "_" + name + "_") {
        if (std::isalnum(each) != 0) {
            constant += static_cast<char>(std::toupper(each));
        } else if (constant.back() != '_') {
            constant += '_';
        }
    }
    constant.pop_back();
    return name == "" || name == "N/A" || name == "Unknown" ? "" : constant;
}

TEST_F(NamesTest, ConstantsFollowWhatIsPrinted)
{
    set_verbosity_and_flag(KY_LOG_LEVEL_MAX, 0);
    auto all = constants_of_headers();
    EXPECT_EQ(all.size(), 16U);
    for (auto& [enumeration, constants] : all) {
        for (uint32_t value = 0; value < 256; value++) {
            const std::string name = printed(enumeration, value);
            std::string expected = constant_of(enumeration, name);
            if (enumeration == "status" || enumeration == "access_cmd") { // named by hand
                expected = expected == "" ? "" : constants[value] == "" ? name : constants[value];
            }
            EXPECT_EQ(constants[value], expected) << enumeration << " " << value;
        }
    }
}

} // namespace
