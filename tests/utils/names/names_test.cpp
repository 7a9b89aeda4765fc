// The enum names, by their structure and one fingerprint a table: a second copy of the texts would
// only repeat a mistake.
#include "recorder.h"

#include <ky_names.h>

namespace {

class NamesTest : public RecordedTest {};

/* ky_status_str and ky_access_cmd_str, seen as the others are. */
const char* status_str(uint32_t value)
{
    return ky_status_str(static_cast<ky_status_t>(value));
}

const char* access_cmd_str(uint32_t value)
{
    return ky_access_cmd_str(static_cast<ky_access_cmd_t>(value));
}

/* The fingerprint goes over the texts from 0 to bound + 1. */
const struct Enumeration {
    const char* (*str)(uint32_t value);
    const char* name;
    uint32_t bound;
    const char* fingerprint;
} enumerations[] = {
    {status_str, "status", 104, "663d46e5ff1d1268"},
    {access_cmd_str, "access_cmd", 37, "b4b39a048ecb84f8"},
    {ky_chip_type_str, "chip_type", 13, "7666c29bace18d04"},
    {ky_chip_rev_str, "chip_rev", 3, "97c26c16001040a9"},
    {ky_dev_node_type_str, "dev_node_type", 7, "c1fd883e67e2a0f2"},
    {ky_swid_info_field_bit_str, "swid_info_field_bit", 6, "7baf81c1c3d85f68"},
    {ky_boot_mode_str, "boot_mode", 6, "156c73446ceb314f"},
    {ky_health_cause_str, "health_cause", 4, "246b8c31a75b1b92"},
    {ky_health_severity_str, "health_severity", 3, "2b5e34e19e1d42d4"},
    {ky_event_generate_mode_str, "event_generate_mode", 4, "3a538fa01cbcc0a8"},
    {ky_lib_adviser_event_type_str, "lib_adviser_event_type", 6, "e1783b68a3a8fd32"},
    {ky_api_arb_policy_str, "api_arb_policy", 2, "976800b5f20b4cfe"},
    {ky_acl_search_type_str, "acl_search_type", 2, "60420828f7f06207"},
    {ky_tcam_opt_mode_str, "tcam_opt_mode", 4, "90916d5ff1ad431e"},
    {ky_tcam_opt_mode_param_str, "tcam_opt_mode_param", 7, "5b88e21e29b948bb"},
    {ky_extraction_point_type_str, "extraction_point_type", 19, "2d9f26175334d947"},
    {ky_port_type_str, "port_type", 10, "fb67efedd64cacbd"},
    {ky_port_mode_str, "port_mode", 6, "f1041e85fa66e276"},
    {ky_port_module_state_str, "port_module_state", 6, "d9a47b3b726825b9"},
    {ky_port_admin_state_str, "port_admin_state", 6, "872778a42b85579e"},
    {ky_port_oper_state_str, "port_oper_state", 6, "b192c5f7bccee98c"},
    {ky_port_oper_speed_str, "port_oper_speed", 26, "437cc5fe6d859183"},
    {ky_port_phy_speed_str, "port_phy_speed", 12, "ccd268db31009d68"},
    {ky_port_rate_str, "port_rate", 11, "78c0d88f4f3bb0e9"},
    {ky_port_mapping_mode_str, "port_mapping_mode", 3, "5a3788d5c0f25694"},
    {ky_port_phys_loopback_str, "port_phys_loopback", 6, "992e394efbc818c9"},
    {ky_port_phys_link_side_str, "port_phys_link_side", 4, "4d22b7d6ea07e732"},
    {ky_port_pause_policy_rx_str, "port_pause_policy_rx", 3, "c706415c989dc6b4"},
    {ky_port_pause_policy_tx_str, "port_pause_policy_tx", 3, "c706415c989dc6b4"},
    {ky_port_flow_ctrl_mode_str, "port_flow_ctrl_mode", 5, "706cf05d9fb58acd"},
    {ky_port_flow_ctrl_prio_str, "port_flow_ctrl_prio", 9, "0a8ebcc0185d2813"},
    {ky_port_cntr_prio_tc_str, "port_cntr_prio_tc", 18, "138afd68b66cc162"},
    {ky_port_ber_fec_profile_str, "port_ber_fec_profile", 5, "c4264b4d91bf8611"},
    {ky_port_ber_alarm_state_str, "port_ber_alarm_state", 4, "f2c6f00c746568de"},
    {ky_mgmt_phy_mod_pwr_attr_type_str, "mgmt_phy_mod_pwr_attr_type", 2, "adc6d52bd02ea21c"},
    {ky_mgmt_phy_mod_pwr_mode_str, "mgmt_phy_mod_pwr_mode", 5, "9d970bc025b03bb1"},
    {ky_cos_buffer_max_mode_str, "cos_buffer_max_mode", 4, "6139060b9336fb0b"},
    {ky_cos_port_buff_pool_direction_str, "cos_port_buff_pool_direction", 3, "dfdd73a902f9d123"},
    {ky_policer_ir_units_str, "policer_ir_units", 3, "bff12b73c2f65dec"},
    {ky_policer_rate_type_str, "policer_rate_type", 4, "5e9a20983753ceaf"},
    {ky_policer_meter_type_str, "policer_meter_type", 3, "2801c9a0e9a75e0b"},
    {ky_policer_action_str, "policer_action", 5, "52d5e762688b2eca"},
    {ky_ip_version_str, "ip_version", 6, "21b5743489f54780"},
    {ky_router_action_str, "router_action", 7, "d1b1710c82b5db79"},
    {ky_router_interface_type_str, "router_interface_type", 9, "7298ddad6592cfa0"},
    {ky_router_vinterface_type_str, "router_vinterface_type", 6, "9d0a85a485c68ceb"},
    {ky_router_qos_mode_str, "router_qos_mode", 4, "7dd12253bf3f42e6"},
    {ky_router_enable_state_str, "router_enable_state", 4, "b7644d2bed3abffe"},
    {ky_router_rpf_action_str, "router_rpf_action", 7, "9f56b0af3de80ae3"},
    {ky_router_prio_type_str, "router_prio_type", 4, "ce515239df2f9104"},
    {ky_router_ecmp_hash_type_str, "router_ecmp_hash_type", 4, "fa0898f68e880863"},
    {ky_ecmp_type_str, "ecmp_type", 5, "8a8690e7fa9461a1"},
    {ky_ecmp_container_type_str, "ecmp_container_type", 5, "4e47e91ddc5c24a6"},
    {ky_next_hop_type_str, "next_hop_type", 7, "aff33ba4841df02b"},
    {ky_object_type_str, "object_type", 6, "35b38312b7909f1b"},
    {ky_mc_router_ttl_cmd_str, "mc_router_ttl_cmd", 4, "025a8dd9ccbdff29"},
    {ky_mc_next_hop_type_str, "mc_next_hop_type", 6, "9054e860edd81beb"},
    {ky_mc_container_type_str, "mc_container_type", 7, "984de018b4f81416"},
    {ky_tunnel_type_str, "tunnel_type", 19, "eae20e123f345f91"},
    {ky_tunnel_direction_str, "tunnel_direction", 5, "9ef70f6584633db2"},
    {ky_tunnel_underlay_domain_type_str, "tunnel_underlay_domain_type", 3, "6d33b5a264123415"},
    {ky_tunnel_ipinip_gre_mode_str, "tunnel_ipinip_gre_mode", 4, "cb4219446845f328"},
    {ky_tunnel_decap_key_fields_type_str, "tunnel_decap_key_fields_type", 3, "125d7999a0e033bf"},
    {ky_span_type_str, "span_type", 8, "959866560ca3bb9a"},
    {ky_span_drop_reason_str, "span_drop_reason", 19, "c73ac6292bf29e50"},
    {ky_tele_histogram_type_str, "tele_histogram_type", 6, "2d7f969daf3bbc16"},
    {ky_tele_histogram_mode_str, "tele_histogram_mode", 3, "322a8bd2de3e4bb3"},
    {ky_tele_threshold_type_str, "tele_threshold_type", 6, "cf8f612556f9c715"},
    {ky_host_ifc_trap_id_str, "host_ifc_trap_id", 627, "1acbaad582436977"},
    {ky_receive_dest_port_str, "receive_dest_port", 3, "981c8f02c3d610ce"},
    {ky_bridge_mode_str, "bridge_mode", 3, "57c345e4bacb6d6b"},
    {ky_bridge_multiple_vlan_mode_str, "bridge_multiple_vlan_mode", 2, "cbc36e825baff52c"},
    {ky_bridge_tunnel_counter_type_str, "bridge_tunnel_counter_type", 4, "819c016d23b01f81"},
    {ky_fm_fid_type_str, "fm_fid_type", 6, "c34a2cc089364480"},
    {ky_fdb_learn_mode_str, "fdb_learn_mode", 4, "8efe9351e374389c"},
    {ky_fdb_notify_type_str, "fdb_notify_type", 17, "0d896d08af4477c3"},
    {ky_mstp_mode_str, "mstp_mode", 5, "36c35a097b702db7"},
    {ky_mstp_inst_port_state_str, "mstp_inst_port_state", 5, "63731a134fb9601e"},
    {ky_mstp_exclude_port_state_str, "mstp_exclude_port_state", 1, "bcc0a8fe3353d8fd"},
    {ky_vlan_qinq_prio_tag_mode_str, "vlan_qinq_prio_tag_mode", 3, "f2f12a08ef2b587a"},
    {ky_lag_hash_bit_number_str, "lag_hash_bit_number", 18, "6c05e5fe205134cf"},
};

TEST_F(NamesTest, TablesAreAsTheyWere)
{
    EXPECT_EQ(std::size(enumerations), 81U);
    for (const auto& [str, name, bound, expected] : enumerations) {
        Fingerprint fingerprint;
        for (uint32_t value = 0; value <= bound + 1; value++) {
            ASSERT_NE(str(value), nullptr) << name << " " << value;
            fingerprint.add(str(value));
        }
        EXPECT_EQ(fingerprint.text(), expected) << name;
    }
}

TEST_F(NamesTest, ValuesAboveTheBoundYieldTheDefault)
{
    for (const auto& [str, name, bound, fingerprint] : enumerations) {
        const std::string expected =
            std::string(name) == "extraction_point_type" ? "Invalid extraction point" : "Unknown";
        for (const uint32_t value : {bound + 1, bound + 2, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
            EXPECT_EQ(str(value), expected) << name << " " << value;
        }
        // A caller may leave anything in the half of the register that the value does not own.
        const auto any = reinterpret_cast<void (*)()>(str);
        const auto wide = reinterpret_cast<const char* (*)(uint64_t)>(any);
        EXPECT_EQ(wide(0xa5a5a5a500000000), str(0)) << name;
    }
}

TEST_F(NamesTest, IrregularEntriesReadAsTheyShould)
{
    EXPECT_STREQ(ky_status_str(KY_STATUS_MESSAGE_SIZE_ZERO), "Message Size Exceeds Limit");
    EXPECT_STREQ(status_str(39), "");
    EXPECT_STREQ(status_str(104), "");
    EXPECT_STREQ(access_cmd_str(37), "");
    EXPECT_STREQ(ky_chip_rev_str(0), "Unknown");
    EXPECT_STREQ(ky_router_action_str(4), "");
    EXPECT_STREQ(ky_policer_action_str(3), "Set Color");
    EXPECT_STREQ(ky_bridge_mode_str(3), "");
    EXPECT_STREQ(ky_tunnel_ipinip_gre_mode_str(2), "Enabled with Key Hash");
    EXPECT_STREQ(ky_tunnel_ipinip_gre_mode_str(4), "");
    EXPECT_STREQ(ky_host_ifc_trap_id_str(0), "Unknown");
    EXPECT_STREQ(ky_host_ifc_trap_id_str(452), "Unknown");
    EXPECT_STREQ(ky_host_ifc_trap_id_str(453), "KY_L3_MC_IP_BASE");
    EXPECT_SILENCE();
}

} // namespace
