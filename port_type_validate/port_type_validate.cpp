// The dictionary of accepted port types and its check: module "PORT_TYPE_VALIDATE".
#include "ky_port_type_validate.h"

#include "ky_names.h"
#include "ky_values.h"

#define KY_LOG_MODULE "PORT_TYPE_VALIDATE"
#define KY_LOG_VERBOSITY port_type_validate_verbosity_level

namespace {

constinit uint32_t port_type_validate_verbosity_level = KY_LOG_LEVEL_DEFAULT;

/* The port types of a row. Their bits are not in the order of the type values. */
constexpr uint8_t none = 0;
constexpr uint8_t network = KY_PORT_TYPE_BIT_NETWORK;
constexpr uint8_t lag = KY_PORT_TYPE_BIT_LAG;
constexpr uint8_t vport = KY_PORT_TYPE_BIT_VPORT;
constexpr uint8_t vlag = KY_PORT_TYPE_BIT_VLAG;
constexpr uint8_t nve = KY_PORT_TYPE_BIT_NVE;
constexpr uint8_t cpu = KY_PORT_TYPE_BIT_CPU;

/* The bit of each port type; bits 31 to 28 of a logical port are the index. */
constexpr uint8_t bit_of_port_type[16] = {network, lag, vport, vlag, cpu, none, none, none, nve};

bool is_enum_id(uint32_t enum_id) // of a row other than the two sentinels
{
    return enum_id >= 1 && enum_id <= PORT_TYPE_VALIDATION_ROWS - 2;
}

bool is_accepted(uint32_t enum_id, uint32_t log_port)
{
    return is_enum_id(enum_id) && (port_type_validation_table[enum_id].allowed_port_types &
                                   bit_of_port_type[log_port >> 28]) != 0;
}

/* The check with its traces and messages; log records name the exported function. */
[[gnu::cold, gnu::noinline]] uint32_t
check_and_tell(const char* function, uint32_t enum_id, uint32_t log_port)
{
    KY_TRACE_IN(function, "entered");
    const bool accepted = is_accepted(enum_id, log_port); // after the trace: its sink may write
    const uint32_t bit = bit_of_port_type[log_port >> 28];
    if (!is_enum_id(enum_id)) {
        KY_LOG_IN(
            function, KY_LOG_MASK_ERROR,
            "enum_id invalid (Enum id %d is not included in port validation dictionary)\n",
            enum_id);
    } else if (bit == none) {
        KY_LOG_IN(
            function, KY_LOG_MASK_ERROR, "Port 0x%08X invalid (Port type is (%s))\n", log_port,
            ky_port_type_str(log_port >> 28));
    } else if (!accepted && bit == network) {
        KY_LOG_IN(
            function, KY_LOG_MASK_ERROR, "Port 0x%08X invalid (Port type %s is unsupported)\n",
            log_port, ky_port_type_str(log_port >> 28));
    } else if (!accepted) {
        KY_LOG_IN(
            function, KY_LOG_MASK_ERROR, "Port 0x%08X invalid (Port type(%s) is unsupported)\n",
            log_port, ky_port_type_str(log_port >> 28));
    }
    KY_TRACE_IN(function, "left");
    return accepted ? 1 : 0;
}

} // namespace

uint32_t is_port_type_valid(uint32_t enum_id, uint32_t log_port)
{
    // Hot path: an accepted port, traces off; needs no stack frame.
    if (!KY_TRACE_WANTED() && is_accepted(enum_id, log_port)) {
        return 1;
    }
    return check_and_tell(__func__, enum_id, log_port);
}

ky_status_t port_type_validate_log_verbosity_level_set(uint32_t level)
{
    KY_TRACE_FUNCTION();
    KY_STORE(port_type_validate_verbosity_level, level);
    return KY_STATUS_SUCCESS;
}

/* The dictionary: each API function and the port types that it accepts; a row's index is the
 * function's enum id. */
// clang-format off
constinit port_type_validation_entry_t port_type_validation_table[PORT_TYPE_VALIDATION_ROWS] = {
    {"port_type_validation_min", none},
    {"sdk_mc_container_set", network | lag | vport | vlag},
    {"sdk_mc_container_get", network | lag | vport | vlag},
    {"__sdk_tunnel_check_attr", nve},
    {"sdk_tele_impl_histogram_set", network | cpu},
    {"sdk_tele_impl_histogram_get", network | cpu},
    {"sdk_tele_impl_histogram_iter_get", network | cpu},
    {"sdk_tele_impl_histogram_data_get", network | cpu},
    {"sdk_tele_impl_threshold_set", network | lag},
    {"sdk_tele_impl_threshold_get", network | lag},
    /* 10 */
    {"sdk_tele_impl_threshold_crossed_data_get", network},
    {"__ky_acl_bind_port", network | lag},
    {"__ky_acl_unbind_port", network | lag},
    {"__ky_acl_bind_port_get", network | lag},
    {"__sdk_bridge_port_set_validate", vport | vlag},
    {"cos_buff_type_statistics_get_veldor", network},
    {"cos_port_default_prio_set", network | lag},
    {"cos_port_default_prio_get", network | lag},
    {"cos_port_tc_prio_map_set_ky", network | lag},
    {"cos_port_tc_prio_map_set_sdk", network | lag},
    /* 20 */
    {"cos_port_tc_prio_map_get", network | lag},
    {"cos_port_trust_set", network | lag},
    {"cos_port_trust_get", network | lag},
    {"cos_port_buff_map_set_ky", network},
    {"cos_port_buff_map_set_sdk", network},
    {"cos_port_buff_map_get", network},
    {"ky_cos_qcn_port_profile_bind_set", network | lag},
    {"ky_cos_qcn_port_profile_bind_get", network | lag},
    {"cos_port_type_buff_set_veldor", network},
    {"cos_port_type_buff_get_veldor", network},
    /* 30 */
    {"cos_port_type_shared_buff_set_veldor", network},
    {"cos_port_type_shared_buff_get_veldor", network},
    {"cos_port_default_color_set_sdk", network | lag},
    {"cos_port_default_color_get_sdk", network | lag},
    {"cos_port_default_pcpdei_set_sdk", network | lag},
    {"cos_port_default_pcpdei_get_sdk", network | lag},
    {"cos_port_pcpdei_to_prio_set_sdk", network | lag},
    {"cos_port_pcpdei_to_prio_get_sdk", network | lag},
    {"cos_port_exp_to_prio_set_sdk", network | lag},
    {"cos_port_exp_to_prio_get_sdk", network | lag},
    /* 40 */
    {"cos_port_dscp_to_prio_set_sdk", network | lag},
    {"cos_port_dscp_to_prio_get_sdk", network | lag},
    {"cos_port_rewrite_enable_set_sdk", network | lag},
    {"cos_port_rewrite_enable_get_sdk", network | lag},
    {"cos_port_prio_to_pcpdei_rewrite_set_sdk", network | lag},
    {"cos_port_prio_to_pcpdei_rewrite_get_sdk", network | lag},
    {"cos_port_prio_to_dscp_rewrite_set_sdk", network | lag},
    {"cos_port_prio_to_dscp_rewrite_get_sdk", network | lag},
    {"cos_port_prio_to_exp_rewrite_set_sdk", network | lag},
    {"cos_port_prio_to_exp_rewrite_get_sdk", network | lag},
    /* 50 */
    {"cos_port_ets_element_set_sdk", network | lag},
    {"cos_port_ets_element_get_sdk", network | lag},
    {"cos_port_tc_mcaware_set_sdk", network | lag},
    {"cos_port_tc_mcaware_get_sdk", network | lag},
    {"cos_redecn_tc_enable_set", network | lag},
    {"cos_redecn_tc_enable_get", network | lag},
    {"cos_redecn_profile_tc_bind_set", network | lag},
    {"cos_redecn_profile_tc_bind_get", network | lag},
    {"cos_redecn_rate_based_set", network | lag},
    {"cos_redecn_rate_based_get", network | lag},
    /* 60 */
    {"cos_redecn_counters_get", network | lag},
    {"cos_redecn_per_port_tc_red_counter_get", network | lag},
    {"cos_redecn_per_port_ecn_counter_get", network | lag},
    {"fdb_uc_mac_addr_port_count", network | lag | vport | vlag | nve},
    {"fdb_uc_limit_port_set", network | lag | vport | vlag | nve},
    {"fdb_uc_limit_port_get", network | lag | vport | vlag | nve},
    {"fdb_flush_port_fid_set", network | lag | vport | vlag | nve},
    {"fdb_learn_rate_limit_set", network | lag | vport | vlag | nve},
    {"fdb_port_learn_mode_set", network | lag | vport | vlag | nve},
    {"fdb_port_learn_mode_get", network | lag | vport | vlag | nve},
    /* 70 */
    {"fdb_src_miss_protect_set", network | lag},
    {"fdb_src_miss_protect_get", network | lag},
    {"host_ifc_trap_filter_set", network | lag},
    {"host_ifc_trap_id_channel_filter_set", network | lag},
    {"host_ifc_port_vlan_trap_id_register_set", network | lag},
    {"ky_lag_port_group_set", network},
    {"ky_lag_port_group_get", lag | vlag},
    {"ky_lag_port_collector_set", network},
    {"ky_lag_port_collector_get", network},
    {"ky_lag_port_distributor_set", network},
    /* 80 */
    {"ky_lag_port_distributor_get", network},
    {"lag_redirect_set", lag | vlag},
    {"lag_redirected_lags_get", lag},
    {"lag_distributor_list_set_sdk", lag},
    {"lag_distributor_list_get_sdk", lag},
    {"ky_lag_port_hash_params_set", network | lag},
    {"ky_lag_port_hash_params_get", network | lag},
    {"mstp_inst_port_state_set", network | lag | vport | vlag},
    {"mstp_inst_port_state_get", network | lag | vport | vlag},
    {"rstp_port_state_set", network | lag},
    /* 90 */
    {"rstp_port_state_get", network | lag},
    {"mstp_exclude_port_state_set", network | lag},
    {"mstp_exclude_port_state_get", network | lag},
    {"port_map_set", network | lag},
    {"port_map_get", network | lag},
    {"port_swid_alloc_set", network | lag},
    {"port_swid_alloc_get", network | lag | nve},
    {"port_mode_set", network | lag},
    {"port_mode_get", network | lag},
    {"port_mtu_set", network | lag},
    /* 100 */
    {"port_mtu_get", network | lag},
    {"port_speed_set", network | lag},
    {"port_speed_get", network | lag},
    {"port_rate_oper_get", network | lag},
    {"port_rate_admin_set", network | lag},
    {"port_rate_capab_get", network | lag},
    {"port_fec_capabilities_get", network | lag | vport},
    {"port_phys_addr_get", network | lag},
    {"port_phys_addr_set", network},
    {"port_phys_loopback_set", network | lag},
    /* 110 */
    {"port_phys_loopback_get", network | lag},
    {"port_state_set", network | lag | vport | vlag},
    {"port_state_get", network | lag | vport | vlag},
    {"port_flow_ctrl_conf_set", network | lag},
    {"port_flow_ctrl_conf_get", network | lag},
    {"port_cli_cntr_get_ky", network | lag},
    {"port_cli_cntr_get_veldor", network | lag},
    {"port_per_prio_cntr_get_ky", network | lag},
    {"port_per_prio_cntr_get_sdk", network | lag},
    {"port_cntr_clear", network | lag},
    /* 120 */
    {"port_internal_init", network},
    {"port_internal_deinit", network},
    {"ky_policer_storm_control_set_impl", network | lag},
    {"ky_policer_storm_control_set", network | lag},
    {"ky_policer_storm_control_get", network | lag},
    {"sdk_port_storm_control_set", network | lag},
    {"sdk_policer_storm_control_get", network | lag},
    {"port_sflow_set", network | lag},
    {"port_sflow_set_generic", network | lag},
    {"port_sflow_get_policer", network | lag},
    /* 130 */
    {"port_sflow_get_generic", network | lag},
    {"port_sflow_get_stats_generic", network | lag},
    {"port_loopback_filter_set", network | lag | nve},
    {"port_loopback_filter_get", network | lag | nve},
    {"port_isolate_clear", network | lag | nve},
    {"port_isolate_set", network | lag | nve},
    {"port_isolate_get", network | lag | nve},
    {"port_vport_set", network | lag},
    {"port_vport_get", network | lag},
    {"port_vport_base_get", vport | vlag},
    /* 140 */
    {"port_vport_counter_bind_set", vport | vlag},
    {"port_vport_counter_bind_get", vport | vlag},
    {"port_vport_mirror_set", vport | vlag},
    {"port_vport_mirror_get", vport | vlag},
    {"port_phy_mode_set", network},
    {"port_phy_mode_get", network},
    {"port_forwarding_mode_set", network | lag},
    {"port_forwarding_mode_get", network | lag},
    {"port_crc_params_set", network},
    {"port_crc_params_get", network},
    /* 150 */
    {"port_phy_info_get", network},
    {"sdk_router_ecmp_port_hash_params_set", network | lag},
    {"sdk_router_ecmp_port_hash_params_get", network | lag},
    {"span_analyzer_set", network | cpu},
    {"span_analyzer_get", network | cpu},
    {"span_mirror_set_common", network | lag},
    {"span_mirror_get_common", network | lag},
    {"span_mirror_state_set_common", network | lag},
    {"span_mirror_state_get_common", network | lag},
    {"vlan_ports_set", network | lag},
    /* 160 */
    {"vlan_port_multi_vlans_set", network | lag},
    {"vlan_port_prio_tagged_set", network | lag},
    {"vlan_port_prio_tagged_get", network | lag},
    {"vlan_ingr_filter_ports_set", network | lag},
    {"vlan_ingr_filter_ports_get", network | lag},
    {"vlan_port_pvid_set", network | lag},
    {"vlan_port_pvid_get", network | lag},
    {"vlan_port_accptd_frm_types_set", network | lag},
    {"vlan_port_accptd_frm_types_get", network | lag},
    {"vlan_qinq_mode_set", network | lag | nve},
    /* 170 */
    {"vlan_qinq_mode_get", network | lag | nve},
    {"vlan_qinq_outer_prio_mode_set", network | lag},
    {"vlan_qinq_outer_prio_mode_get", network | lag},
    {"port_type_validation_max", none},
};
// clang-format on
