/** @file
 * Printable names of enumeration values.
 *
 * Each function takes a value of the type that it is named after and returns its name: a static
 * string that is never null, and that the caller neither frees nor modifies. The name is "Unknown"
 * for a value above the range, and empty for a value in the range that has no name, unless the
 * function states otherwise. The functions are thread-safe and async-signal-safe, and neither log
 * nor trace.
 *
 * `ky_common.h` has constants for statuses and access commands, `ky_values.h` for the values that
 * functions of the library take. `kriolilglu name TYPE` prints the values of a type. */
#ifndef KY_NAMES_H
#define KY_NAMES_H

#include "ky_common.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @name Status codes
 *  @{ */

/** Names a status code. @table status
 *  @param value 0 to 104 @return its name */
const char* ky_status_str(ky_status_t value);

/** @} */

/** @name Access commands
 *  @{ */

/** Names an access command. @table access_cmd
 *  @param value 0 to 37 @return its name */
const char* ky_access_cmd_str(ky_access_cmd_t value);

/** @} */

/** @name Devices and chips
 *  @{ */

typedef uint32_t ky_chip_type_t;
/** Names a type of switch chip. @param value 0 to 13 @return its name */
const char* ky_chip_type_str(ky_chip_type_t value);

typedef uint32_t ky_chip_rev_t;
/** Names a revision of a switch chip. @param value 0 to 3; 0 is "Unknown" too @return its name */
const char* ky_chip_rev_str(ky_chip_rev_t value);

typedef uint32_t ky_dev_node_type_t;
/** Names the type of a device's node in the topology. @param value 0 to 7 @return its name */
const char* ky_dev_node_type_str(ky_dev_node_type_t value);

typedef uint32_t ky_swid_info_field_bit_t;
/** Names a field of a switch partition's record. @param value 0 to 6 @return its name */
const char* ky_swid_info_field_bit_str(ky_swid_info_field_bit_t value);

/** @} */

/** @name Boot, health and events
 *  @{ */

typedef uint32_t ky_boot_mode_t;
/** Names a boot mode. @param value 0 to 6 @return its name */
const char* ky_boot_mode_str(ky_boot_mode_t value);

typedef uint32_t ky_health_cause_t;
/** Names the cause of a health event. @param value 0 to 4 @return its name */
const char* ky_health_cause_str(ky_health_cause_t value);

typedef uint32_t ky_health_severity_t;
/** Names the severity of a health event. @param value 0 to 3 @return its name */
const char* ky_health_severity_str(ky_health_severity_t value);

typedef uint32_t ky_event_generate_mode_t;
/** Names a mode of event generation. @param value 0 to 4 @return its name */
const char* ky_event_generate_mode_str(ky_event_generate_mode_t value);

typedef uint32_t ky_lib_adviser_event_type_t;
/** Names a type of adviser event. @param value 0 to 6 @return its name */
const char* ky_lib_adviser_event_type_str(ky_lib_adviser_event_type_t value);

/** @} */

/** @name API arbitration, ACL, TCAM and extraction points
 *  @{ */

typedef uint32_t ky_api_arb_policy_t;
/** Names a policy of API arbitration. @param value 0 to 2 @return its name */
const char* ky_api_arb_policy_str(ky_api_arb_policy_t value);

typedef uint32_t ky_acl_search_type_t;
/** Names an order of ACL search. @param value 0 to 2 @return its name */
const char* ky_acl_search_type_str(ky_acl_search_type_t value);

typedef uint32_t ky_tcam_opt_mode_t;
/** Names a mode of TCAM optimisation. @param value 0 to 4 @return its name */
const char* ky_tcam_opt_mode_str(ky_tcam_opt_mode_t value);

typedef uint32_t ky_tcam_opt_mode_param_t;
/** Names a parameter of TCAM optimisation. @param value 0 to 7 @return its name */
const char* ky_tcam_opt_mode_param_str(ky_tcam_opt_mode_param_t value);

typedef uint32_t ky_extraction_point_type_t;
/** Names the point of a packet that extraction starts from. @param value 0 to 19
 *  @return its name; "Invalid extraction point" for a larger value */
const char* ky_extraction_point_type_str(ky_extraction_point_type_t value);

/** @} */

/** @name Ports
 *  @{ */

typedef uint32_t ky_port_type_t;
/** Names the type of a port, bits 31 to 28 of its ID. @param value 0 to 10 @return its name */
const char* ky_port_type_str(ky_port_type_t value);

typedef uint32_t ky_port_mode_t;
/** Names the mode of a port. @param value 0 to 6 @return its name */
const char* ky_port_mode_str(ky_port_mode_t value);

typedef uint32_t ky_port_module_state_t;
/** Names the state of a port's module. @param value 0 to 6 @return its name */
const char* ky_port_module_state_str(ky_port_module_state_t value);

typedef uint32_t ky_port_admin_state_t;
/** Names the administrative state of a port. @param value 0 to 6 @return its name */
const char* ky_port_admin_state_str(ky_port_admin_state_t value);

typedef uint32_t ky_port_oper_state_t;
/** Names the operational state of a port. @param value 0 to 6 @return its name */
const char* ky_port_oper_state_str(ky_port_oper_state_t value);

typedef uint32_t ky_port_oper_speed_t;
/** Names the operational speed of a port. @param value 0 to 26 @return its name */
const char* ky_port_oper_speed_str(ky_port_oper_speed_t value);

typedef uint32_t ky_port_phy_speed_t;
/** Names the speed of a port's physical layer. @param value 0 to 12 @return its name */
const char* ky_port_phy_speed_str(ky_port_phy_speed_t value);

typedef uint32_t ky_port_rate_t;
/** Names the rate of a port. @param value 0 to 11 @return its name */
const char* ky_port_rate_str(ky_port_rate_t value);

typedef uint32_t ky_port_mapping_mode_t;
/** Names the mapping mode of a port. @param value 0 to 3 @return its name */
const char* ky_port_mapping_mode_str(ky_port_mapping_mode_t value);

/** @} */

/** @name Physical layer
 *  @{ */

typedef uint32_t ky_port_phys_loopback_t;
/** Names the physical loopback of a port. @param value 0 to 6 @return its name */
const char* ky_port_phys_loopback_str(ky_port_phys_loopback_t value);

typedef uint32_t ky_port_phys_link_side_t;
/** Names a side of a port's physical link. @param value 0 to 4 @return its name */
const char* ky_port_phys_link_side_str(ky_port_phys_link_side_t value);

typedef uint32_t ky_port_pause_policy_rx_t;
/** Names the policy for received pause frames. @param value 0 to 3 @return its name */
const char* ky_port_pause_policy_rx_str(ky_port_pause_policy_rx_t value);

typedef uint32_t ky_port_pause_policy_tx_t;
/** Names the policy for sent pause frames. @param value 0 to 3 @return its name */
const char* ky_port_pause_policy_tx_str(ky_port_pause_policy_tx_t value);

typedef uint32_t ky_port_flow_ctrl_mode_t;
/** Names a mode of flow control. @param value 0 to 5 @return its name */
const char* ky_port_flow_ctrl_mode_str(ky_port_flow_ctrl_mode_t value);

typedef uint32_t ky_port_flow_ctrl_prio_t;
/** Names a priority under flow control. @param value 0 to 9 @return its name */
const char* ky_port_flow_ctrl_prio_str(ky_port_flow_ctrl_prio_t value);

typedef uint32_t ky_port_cntr_prio_tc_t;
/** Names the priority that a port counter belongs to. @param value 0 to 18 @return its name */
const char* ky_port_cntr_prio_tc_str(ky_port_cntr_prio_tc_t value);

typedef uint32_t ky_port_ber_fec_profile_t;
/** Names the error-correction profile of bit-error-rate monitoring.
 *  @param value 0 to 5 @return its name */
const char* ky_port_ber_fec_profile_str(ky_port_ber_fec_profile_t value);

typedef uint32_t ky_port_ber_alarm_state_t;
/** Names the alarm state of bit-error-rate monitoring. @param value 0 to 4 @return its name */
const char* ky_port_ber_alarm_state_str(ky_port_ber_alarm_state_t value);

typedef uint32_t ky_mgmt_phy_mod_pwr_attr_type_t;
/** Names a power attribute of a physical module. @param value 0 to 2 @return its name */
const char* ky_mgmt_phy_mod_pwr_attr_type_str(ky_mgmt_phy_mod_pwr_attr_type_t value);

typedef uint32_t ky_mgmt_phy_mod_pwr_mode_t;
/** Names the power mode of a physical module. @param value 0 to 5 @return its name */
const char* ky_mgmt_phy_mod_pwr_mode_str(ky_mgmt_phy_mod_pwr_mode_t value);

/** @} */

/** @name Class of service and policers
 *  @{ */

typedef uint32_t ky_cos_buffer_max_mode_t;
/** Names how the maximum of a buffer is given. @param value 0 to 4 @return its name */
const char* ky_cos_buffer_max_mode_str(ky_cos_buffer_max_mode_t value);

typedef uint32_t ky_cos_port_buff_pool_direction_t;
/** Names the direction of a port's buffer pool. @param value 0 to 3 @return its name */
const char* ky_cos_port_buff_pool_direction_str(ky_cos_port_buff_pool_direction_t value);

typedef uint32_t ky_policer_ir_units_t;
/** Names the unit of a policer's information rate. @param value 0 to 3 @return its name */
const char* ky_policer_ir_units_str(ky_policer_ir_units_t value);

typedef uint32_t ky_policer_rate_type_t;
/** Names the rate type of a policer. @param value 0 to 4 @return its name */
const char* ky_policer_rate_type_str(ky_policer_rate_type_t value);

typedef uint32_t ky_policer_meter_type_t;
/** Names what a policer meters. @param value 0 to 3 @return its name */
const char* ky_policer_meter_type_str(ky_policer_meter_type_t value);

typedef uint32_t ky_policer_action_t;
/** Names the action of a policer. @param value 0 to 5 @return its name */
const char* ky_policer_action_str(ky_policer_action_t value);

/** @} */

/** @name Routing
 *  @{ */

typedef uint32_t ky_ip_version_t;
/** Names an IP version. @param value 0 to 6 @return its name */
const char* ky_ip_version_str(ky_ip_version_t value);

typedef uint32_t ky_router_action_t;
/** Names an action of the router. @param value 0 to 7 @return its name */
const char* ky_router_action_str(ky_router_action_t value);

typedef uint32_t ky_router_interface_type_t;
/** Names the type of a router interface. @param value 0 to 9 @return its name */
const char* ky_router_interface_type_str(ky_router_interface_type_t value);

typedef uint32_t ky_router_vinterface_type_t;
/** Names the type of a virtual router interface. @param value 0 to 6 @return its name */
const char* ky_router_vinterface_type_str(ky_router_vinterface_type_t value);

typedef uint32_t ky_router_qos_mode_t;
/** Names a QoS mode of the router. @param value 0 to 4 @return its name */
const char* ky_router_qos_mode_str(ky_router_qos_mode_t value);

typedef uint32_t ky_router_enable_state_t;
/** Names whether the router is enabled. @param value 0 to 4 @return its name */
const char* ky_router_enable_state_str(ky_router_enable_state_t value);

typedef uint32_t ky_router_rpf_action_t;
/** Names an action of the reverse-path check. @param value 0 to 7 @return its name */
const char* ky_router_rpf_action_str(ky_router_rpf_action_t value);

typedef uint32_t ky_router_prio_type_t;
/** Names how a route's priority is set. @param value 0 to 4 @return its name */
const char* ky_router_prio_type_str(ky_router_prio_type_t value);

typedef uint32_t ky_router_ecmp_hash_type_t;
/** Names the hash of an ECMP choice. @param value 0 to 4 @return its name */
const char* ky_router_ecmp_hash_type_str(ky_router_ecmp_hash_type_t value);

typedef uint32_t ky_ecmp_type_t;
/** Names a type of ECMP container. @param value 0 to 5 @return its name */
const char* ky_ecmp_type_str(ky_ecmp_type_t value);

typedef uint32_t ky_ecmp_container_type_t;
/** Names what an ECMP container holds. @param value 0 to 5 @return its name */
const char* ky_ecmp_container_type_str(ky_ecmp_container_type_t value);

typedef uint32_t ky_next_hop_type_t;
/** Names the type of a next hop. @param value 0 to 7 @return its name */
const char* ky_next_hop_type_str(ky_next_hop_type_t value);

typedef uint32_t ky_object_type_t;
/** Names the type of a router object. @param value 0 to 6 @return its name */
const char* ky_object_type_str(ky_object_type_t value);

/** @} */

/** @name Multicast
 *  @{ */

typedef uint32_t ky_mc_router_ttl_cmd_t;
/** Names what a multicast route does to the time to live. @param value 0 to 4 @return its name */
const char* ky_mc_router_ttl_cmd_str(ky_mc_router_ttl_cmd_t value);

typedef uint32_t ky_mc_next_hop_type_t;
/** Names the type of a multicast next hop. @param value 0 to 6 @return its name */
const char* ky_mc_next_hop_type_str(ky_mc_next_hop_type_t value);

typedef uint32_t ky_mc_container_type_t;
/** Names the type of a multicast container. @param value 0 to 7 @return its name */
const char* ky_mc_container_type_str(ky_mc_container_type_t value);

/** @} */

/** @name Tunnels
 *  @{ */

typedef uint32_t ky_tunnel_type_t;
/** Names the type of a tunnel. @param value 0 to 19 @return its name */
const char* ky_tunnel_type_str(ky_tunnel_type_t value);

typedef uint32_t ky_tunnel_direction_t;
/** Names the direction of a tunnel. @param value 0 to 5 @return its name */
const char* ky_tunnel_direction_str(ky_tunnel_direction_t value);

typedef uint32_t ky_tunnel_underlay_domain_type_t;
/** Names the type of a tunnel's underlay domain. @param value 0 to 3 @return its name */
const char* ky_tunnel_underlay_domain_type_str(ky_tunnel_underlay_domain_type_t value);

typedef uint32_t ky_tunnel_ipinip_gre_mode_t;
/** Names the GRE mode of an IP-in-IP tunnel. @param value 0 to 4 @return its name */
const char* ky_tunnel_ipinip_gre_mode_str(ky_tunnel_ipinip_gre_mode_t value);

typedef uint32_t ky_tunnel_decap_key_fields_type_t;
/** Names the key fields of a tunnel's decapsulation. @param value 0 to 3 @return its name */
const char* ky_tunnel_decap_key_fields_type_str(ky_tunnel_decap_key_fields_type_t value);

/** @} */

/** @name Mirroring
 *  @{ */

typedef uint32_t ky_span_type_t;
/** Names the type of a mirroring session. @param value 0 to 8 @return its name */
const char* ky_span_type_str(ky_span_type_t value);

typedef uint32_t ky_span_drop_reason_t;
/** Names the reason why a mirrored packet was dropped. @param value 0 to 19 @return its name */
const char* ky_span_drop_reason_str(ky_span_drop_reason_t value);

/** @} */

/** @name Telemetry
 *  @{ */

typedef uint32_t ky_tele_histogram_type_t;
/** Names the type of a telemetry histogram. @param value 0 to 6 @return its name */
const char* ky_tele_histogram_type_str(ky_tele_histogram_type_t value);

typedef uint32_t ky_tele_histogram_mode_t;
/** Names the mode of a telemetry histogram. @param value 0 to 3 @return its name */
const char* ky_tele_histogram_mode_str(ky_tele_histogram_mode_t value);

typedef uint32_t ky_tele_threshold_type_t;
/** Names the type of a telemetry threshold. @param value 0 to 6 @return its name */
const char* ky_tele_threshold_type_str(ky_tele_threshold_type_t value);

/** @} */

/** @name Host interface
 *  @{ */

typedef uint32_t ky_host_ifc_trap_id_t;
/** Names a host-interface trap ID. @param value 0 to 627
 *  @return its name; "Unknown" for a value that has none */
const char* ky_host_ifc_trap_id_str(ky_host_ifc_trap_id_t value);

typedef uint32_t ky_receive_dest_port_t;
/** Names the kind of destination port of a received packet. @param value 0 to 3 @return its name */
const char* ky_receive_dest_port_str(ky_receive_dest_port_t value);

/** @} */

/** @name Bridges and filtering identifiers
 *  @{ */

typedef uint32_t ky_bridge_mode_t;
/** Names a bridge mode. @param value 0 to 3, none with a name @return the empty string */
const char* ky_bridge_mode_str(ky_bridge_mode_t value);

typedef uint32_t ky_bridge_multiple_vlan_mode_t;
/** Names the multiple-VLAN mode of a bridge. @param value 0 to 2 @return its name */
const char* ky_bridge_multiple_vlan_mode_str(ky_bridge_multiple_vlan_mode_t value);

typedef uint32_t ky_bridge_tunnel_counter_type_t;
/** Names the type of a bridge's tunnel counter. @param value 0 to 4 @return its name */
const char* ky_bridge_tunnel_counter_type_str(ky_bridge_tunnel_counter_type_t value);

typedef uint32_t ky_fm_fid_type_t;
/** Names the type of a filtering identifier. @param value 0 to 6 @return its name */
const char* ky_fm_fid_type_str(ky_fm_fid_type_t value);

/** @} */

/** @name Forwarding database
 *  @{ */

typedef uint32_t ky_fdb_learn_mode_t;
/** Names a learning mode of the forwarding database. @param value 0 to 4 @return its name */
const char* ky_fdb_learn_mode_str(ky_fdb_learn_mode_t value);

typedef uint32_t ky_fdb_notify_type_t;
/** Names the type of a forwarding-database notification. @param value 0 to 17 @return its name */
const char* ky_fdb_notify_type_str(ky_fdb_notify_type_t value);

/** @} */

/** @name Spanning tree
 *  @{ */

typedef uint32_t ky_mstp_mode_t;
/** Names a spanning-tree mode. @param value 0 to 5 @return its name */
const char* ky_mstp_mode_str(ky_mstp_mode_t value);

typedef uint32_t ky_mstp_inst_port_state_t;
/** Names the state of a port in a spanning-tree instance. @param value 0 to 5 @return its name */
const char* ky_mstp_inst_port_state_str(ky_mstp_inst_port_state_t value);

typedef uint32_t ky_mstp_exclude_port_state_t;
/** Names the state of a port excluded from spanning tree. @param value 0 to 1 @return its name */
const char* ky_mstp_exclude_port_state_str(ky_mstp_exclude_port_state_t value);

/** @} */

/** @name VLAN and LAG
 *  @{ */

typedef uint32_t ky_vlan_qinq_prio_tag_mode_t;
/** Names the priority-tagging mode of VLAN Q-in-Q. @param value 0 to 3 @return its name */
const char* ky_vlan_qinq_prio_tag_mode_str(ky_vlan_qinq_prio_tag_mode_t value);

typedef uint32_t ky_lag_hash_bit_number_t;
/** Names a field of the LAG hash. @param value 0 to 18 @return its name */
const char* ky_lag_hash_bit_number_str(ky_lag_hash_bit_number_t value);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
