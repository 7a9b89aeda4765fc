// The catalogue: every enum-name function and its table. A value up to the bound that has no row
// yields an empty string.
#include "ky_names.h"

#include "ky_values.h"
#include "name_table.h"

// ---- Status codes ----

const char* ky_status_str(ky_status_t value)
{
    static constexpr NameTable<104> table({
        {KY_STATUS_SUCCESS, "Success"},
        {KY_STATUS_ERROR, "Internal Error"},
        {KY_STATUS_SDK_NOT_INITIALIZED, "Korlan SDK wasn't Initialized"},
        {KY_STATUS_INVALID_HANDLE, "Invalid Handle"},
        {KY_STATUS_COMM_ERROR, "Communication Error"},
        {KY_STATUS_NO_RESOURCES, "No More Resources"},
        {KY_STATUS_NO_MEMORY, "No More Memory"},
        {KY_STATUS_MEMORY_ERROR, "Memory Error"},
        {KY_STATUS_CMD_ERROR, "Command Error"},
        {KY_STATUS_CMD_INCOMPLETE, "Command Not Completed"},
        {KY_STATUS_CMD_UNSUPPORTED, "Command Unsupported"},
        {KY_STATUS_CMD_UNPERMITTED, "Command Unpermitted"},
        {KY_STATUS_PARAM_NULL, "Parameter NULL"},
        {KY_STATUS_PARAM_ERROR, "Parameter Error"},
        {KY_STATUS_PARAM_EXCEEDS_RANGE, "Parameter Exceeds Range"},
        {KY_STATUS_MESSAGE_SIZE_ZERO, "Message Size Exceeds Limit"},
        {KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT, "Message Size Exceeds Limit"},
        {KY_STATUS_DB_ALREADY_INITIALIZED, "Database Already Initialized"},
        {KY_STATUS_DB_NOT_INITIALIZED, "Database Wasn't Initialized"},
        {KY_STATUS_DB_NOT_EMPTY, "Database Not Empty"},
        {KY_STATUS_END_OF_DB, "End of Database"},
        {KY_STATUS_ENTRY_NOT_FOUND, "Entry Not Found"},
        {KY_STATUS_ENTRY_ALREADY_EXISTS, "Entry Already Exists"},
        {KY_STATUS_ENTRY_NOT_BOUND, "Entry Not Bound"},
        {KY_STATUS_ENTRY_ALREADY_BOUND, "Entry Already bound"},
        {KY_STATUS_WRONG_POLICER_TYPE, "Wrong Policer Type"},
        {KY_STATUS_UNEXPECTED_EVENT_TYPE, "Unexpected event type"},
        {KY_STATUS_TRAP_ID_NOT_CONFIGURED, "Trap ID not configured"},
        {KY_STATUS_INT_COMM_CLOSE, "Internal Communication close"},
        {KY_STATUS_RESOURCE_IN_USE, "Resource is in use"},
        {KY_STATUS_TRAP_ID_ALREADY_ASSOCIATED,
         "Trap ID is already associated to another trap priority"},
        {KY_STATUS_ALREADY_INITIALIZED, "Already initialized"},
        {KY_STATUS_TIMEOUT, "TIMEOUT"},
        {KY_STATUS_MODULE_UNINITIALIZED, "Module is uninitialized"},
        {KY_STATUS_UNSUPPORTED, "Operation Unsupported"},
        {KY_STATUS_UTILS_RETURNED_NON_ZERO, "Utils return status is Non-Zero"},
        {KY_STATUS_PARTIALLY_COMPLETE, "Partially complete"},
        {KY_STATUS_ACCEPTED, "Accepted"},
        {KY_STATUS_ISSU_IN_PROGRESS, "ISSU in progress"},
        {KY_STATUS_DRIVER_RETURNED_NON_ZERO, "Driver's Return Status is Non-Zero"},
    });
    return table.name_of(value);
}

// ---- Access commands ----

const char* ky_access_cmd_str(ky_access_cmd_t value)
{
    static constexpr NameTable<37> table({
        {KY_ACCESS_CMD_NONE, "NONE"},
        {KY_ACCESS_CMD_ADD, "ADD"},
        {KY_ACCESS_CMD_EDIT, "EDIT"},
        {KY_ACCESS_CMD_DELETE, "DELETE"},
        {KY_ACCESS_CMD_DELETE_ALL, "DELETE ALL"},
        {KY_ACCESS_CMD_SOFT_ADD, "SOFT ADD"},
        {KY_ACCESS_CMD_SOFT_EDIT, "SOFT EDIT"},
        {KY_ACCESS_CMD_SOFT_DELETE, "SOFT DELETE"},
        {KY_ACCESS_CMD_TEST, "TEST"},
        {KY_ACCESS_CMD_APPLY, "APPLY"},
        {KY_ACCESS_CMD_ENABLE, "ENABLE"},
        {KY_ACCESS_CMD_DISABLE, "DISABLE"},
        {KY_ACCESS_CMD_CREATE, "CREATE"},
        {KY_ACCESS_CMD_DESTROY, "DESTROY"},
        {KY_ACCESS_CMD_COUNT, "COUNT"},
        {KY_ACCESS_CMD_SET, "SET"},
        {KY_ACCESS_CMD_UNSET, "UNSET"},
        {KY_ACCESS_CMD_GET, "GET"},
        {KY_ACCESS_CMD_GET_NEXT, "GET NEXT"},
        {KY_ACCESS_CMD_REGISTER, "REGISTER"},
        {KY_ACCESS_CMD_DEREGISTER, "DEREGISTER"},
        {KY_ACCESS_CMD_GET_ALL, "GET ALL"},
        {KY_ACCESS_CMD_TEST_HW, "TEST HW"},
        {KY_ACCESS_CMD_ADD_PORTS, "ADD PORTS"},
        {KY_ACCESS_CMD_DELETE_PORTS, "DELETE PORTS"},
        {KY_ACCESS_CMD_BIND, "BIND"},
        {KY_ACCESS_CMD_UNBIND, "UNBIND"},
        {KY_ACCESS_CMD_GET_FIRST, "GET FIRST"},
        {KY_ACCESS_CMD_REPLACE_ALL_PORTS, "REPLACE ALL PORTS"},
        {KY_ACCESS_CMD_DELETE_ALL_PORTS, "DELETE ALL PORTS"},
        {KY_ACCESS_CMD_READY, "READY"},
        {KY_ACCESS_CMD_READ, "READ"},
        {KY_ACCESS_CMD_READ_CLEAR, "READ CLEAR"},
        {KY_ACCESS_CMD_CLEAR, "CLEAR"},
        {KY_ACCESS_CMD_DELETE_PORT, "DELETE PORT"},
        {KY_ACCESS_CMD_MARK, "MARK"},
    });
    return table.name_of(value);
}

// ---- Devices and chips ----

const char* ky_chip_type_str(ky_chip_type_t value)
{
    static constexpr NameTable<13> table({
        {0, "CHIP_TYPE_UNKNOWN"},
        {1, "CHIP_TYPE_KORLAN_A2"},
        {2, "Unknown chip type"},
        {3, "CHIP_TYPE_KORLAN_A1"},
        {4, "CHIP_TYPE_KORLAN_A0"},
        {5, "CHIP_TYPE_BRISEL"},
        {6, "CHIP_TYPE_VELDOR"},
        {7, "CHIP_TYPE_BRISEL2"},
        {8, "CHIP_TYPE_VELDOR_A1"},
        {9, "CHIP_TYPE_SWITCH_VELDOR2"},
        {10, "CHIP_TYPE_SWITCH_PELLAN"},
        {11, "CHIP_TYPE_SWITCH_VELDOR3"},
    });
    return table.name_of(value);
}

const char* ky_chip_rev_str(ky_chip_rev_t value)
{
    static constexpr NameTable<3> table({
        {0, "Unknown"},
        {1, "CHIP_REV_KY_A0"},
        {2, "CHIP_REV_KY_A1"},
        {3, "CHIP_REV_KY_A2"},
    });
    return table.name_of(value);
}

const char* ky_dev_node_type_str(ky_dev_node_type_t value)
{
    static constexpr NameTable<7> table({
        {KY_DEV_NODE_TYPE_ALL, "ALL"},
        {KY_DEV_NODE_TYPE_LEAF_LOCAL, "LEAF_LOCAL"},
        {KY_DEV_NODE_TYPE_SPINE_LOCAL, "SPINE_LOCAL"},
        {KY_DEV_NODE_TYPE_LEAF, "LEAF"},
        {KY_DEV_NODE_TYPE_SPINE, "SPINE"},
        {KY_DEV_NODE_TYPE_HYBRID, "HYBRID"},
    });
    return table.name_of(value);
}

const char* ky_swid_info_field_bit_str(ky_swid_info_field_bit_t value)
{
    static constexpr NameTable<6> table({
        {0, "None"},
        {1, "ID"},
        {2, "Learning"},
        {3, "N/A"},
        {4, "Host Trap Group"},
    });
    return table.name_of(value);
}

// ---- Boot, health and events ----

const char* ky_boot_mode_str(ky_boot_mode_t value)
{
    static constexpr NameTable<6> table({
        {KY_BOOT_MODE_DISABLED, "Disabled"},
        {KY_BOOT_MODE_NORMAL, "Normal"},
        {KY_BOOT_MODE_FAST, "Fast"},
        {KY_BOOT_MODE_ISSU_NORMAL, "ISSU Normal"},
        {KY_BOOT_MODE_ISSU_FAST, "ISSU Fast"},
        {KY_BOOT_MODE_ISSU_START, "ISSU start"},
    });
    return table.name_of(value);
}

const char* ky_health_cause_str(ky_health_cause_t value)
{
    static constexpr NameTable<4> table({
        {0, "none"},
        {1, "FW health issue"},
        {2, "go bit not cleared"},
        {3, "command interface completion timeout"},
        {4, "timeout in FW response"},
    });
    return table.name_of(value);
}

const char* ky_health_severity_str(ky_health_severity_t value)
{
    static constexpr NameTable<3> table({
        {0, "critical"},
        {1, "error"},
        {2, "warning"},
        {3, "notice"},
    });
    return table.name_of(value);
}

const char* ky_event_generate_mode_str(ky_event_generate_mode_t value)
{
    static constexpr NameTable<4> table({
        {0, "Don't Generate"},
        {1, "Generate"},
        {2, "Generate Single Event"},
    });
    return table.name_of(value);
}

const char* ky_lib_adviser_event_type_str(ky_lib_adviser_event_type_t value)
{
    static constexpr NameTable<6> table({
        {0, "N/A"},
        {1, "Port Added"},
        {2, "Port Deleted"},
        {3, "Port Added to LAG"},
        {4, "Port Deleted from LAG"},
    });
    return table.name_of(value);
}

// ---- API arbitration, ACL, TCAM and extraction points ----

const char* ky_api_arb_policy_str(ky_api_arb_policy_t value)
{
    static constexpr NameTable<2> table({
        {0, "KY_API_ARB_POLICY_PROTOCOL"},
        {1, "KY_API_ARB_POLICY_CLIENT"},
        {2, "KY_API_ARB_POLICY_CMD_PRIORITY"},
    });
    return table.name_of(value);
}

const char* ky_acl_search_type_str(ky_acl_search_type_t value)
{
    static constexpr NameTable<2> table({
        {0, "KY_API_ACL_SEARCH_TYPE_SERIAL"},
        {1, "KY_API_ACL_SEARCH_TYPE_PARALLEL"},
        {2, "KY_API_ACL_SEARCH_TYPE_LAST"},
    });
    return table.name_of(value);
}

const char* ky_tcam_opt_mode_str(ky_tcam_opt_mode_t value)
{
    static constexpr NameTable<4> table({
        {0, "Dynamic"},
        {1, "Static"},
        {2, "Disabled"},
    });
    return table.name_of(value);
}

const char* ky_tcam_opt_mode_param_str(ky_tcam_opt_mode_param_t value)
{
    static constexpr NameTable<7> table({
        {0, "None"},
        {1, "FWS_64B"},
        {2, "FWS_128B"},
        {3, "FWS_256B"},
        {4, "FWS_512B"},
        {5, "FWS_1024B"},
    });
    return table.name_of(value);
}

const char* ky_extraction_point_type_str(ky_extraction_point_type_t value)
{
    static constexpr NameTable<19> table({
        {0, "None"},
        {1, "L2 start of header"},
        {2, "L2 ether type"},
        {3, "IPV4 start of header"},
        {4, "IPV4 start of payload"},
        {5, "ARP start of header"},
        {6, "IPV6 start of header"},
        {7, "IPV6 start of payload"},
        {8, "MPLS start of header"},
        {9, "MPLS start of payload"},
        {10, "GRE payload"},
        {11, "UDP payload"},
        {12, "Inner L2 start of header"},
        {13, "Inner L2 ether type"},
        {14, "Inner IPV4 start of header"},
        {15, "Inner IPV4 start of payload"},
        {16, "Inner IPV6 start of header"},
        {17, "Inner IPV6 start of payload"},
        {18, "Inner UDP payload"},
        {19, "Last"},
    });
    return table.name_of(value, "Invalid extraction point");
}

// ---- Ports ----

const char* ky_port_type_str(ky_port_type_t value)
{
    static constexpr NameTable<10> table({
        {KY_PORT_TYPE_NETWORK, "Network"},
        {KY_PORT_TYPE_LAG, "LAG"},
        {KY_PORT_TYPE_VPORT, "Vport"},
        {KY_PORT_TYPE_VLAG, "VLAG"},
        {KY_PORT_TYPE_CPU, "CPU"},
        {5, "N/A"},
        {6, "N/A"},
        {7, "N/A"},
        {KY_PORT_TYPE_NVE, "NVE"},
    });
    return table.name_of(value);
}

const char* ky_port_mode_str(ky_port_mode_t value)
{
    static constexpr NameTable<6> table({
        {0, "External"},
        {1, "Stacking"},
        {2, "TCA Connector"},
        {3, "CPU"},
        {4, "NVE"},
    });
    return table.name_of(value);
}

const char* ky_port_module_state_str(ky_port_module_state_t value)
{
    static constexpr NameTable<6> table({
        {0, "Initializing"},
        {1, "Plugged"},
        {2, "Unplugged"},
        {3, "PluggedWithError"},
        {4, "PluggedDisabled"},
    });
    return table.name_of(value);
}

const char* ky_port_admin_state_str(ky_port_admin_state_t value)
{
    static constexpr NameTable<6> table({
        {0, "N/A"},
        {KY_PORT_ADMIN_STATE_UP, "Up"},
        {KY_PORT_ADMIN_STATE_DOWN, "Down"},
        {KY_PORT_ADMIN_STATE_UP_ONCE, "Up Once"},
    });
    return table.name_of(value);
}

const char* ky_port_oper_state_str(ky_port_oper_state_t value)
{
    static constexpr NameTable<6> table({
        {0, "N/A"},
        {1, "Up"},
        {2, "Down"},
        {3, "N/A"},
        {4, "Down by Port Failure"},
    });
    return table.name_of(value);
}

const char* ky_port_oper_speed_str(ky_port_oper_speed_t value)
{
    // clang-format off
    static constexpr NameTable<26> table({
        {0, "N/A"},
        {1, "1GB_CX_SGMII"},
        {2, "1GB_KX"},
        {3, "10GB_CX4_XAUI"},
        {4, "10GB_KX4"},
        {5, "10GB_KR"},
        {6, "20GB_KR2"},
        {7, "40GB_CR4"},
        {8, "40GB_KR4"},
        {9, "56GB_KR4"},
        {10, "56GB_KX4"},
        {11, "10GB_CR"},
        {12, "10GB_SR"},
        {13, "10GB_ER_LR"},
        {14, "40GB_SR4"},
        {15, "40GB_LR4_ER4"},
        {16, "100GB_CR4"},
        {17, "100GB_SR4"},
        {18, "100GB_KR4"},
        {19, "100GB_LR4_ER4"},
        {20, "25GB_CR"},
        {21, "25GB_KR"},
        {22, "25GB_SR"},
        {23, "50GB_CR2"},
        {24, "50GB_KR2"},
        {25, "50GB_SR2"},
        {26, "NOT_SUPPORTED"},
    });
    // clang-format on
    return table.name_of(value);
}

const char* ky_port_phy_speed_str(ky_port_phy_speed_t value)
{
    static constexpr NameTable<12> table({
        {0, "10Gb"},
        {1, "40Gb"},
        {2, "25Gb"},
        {3, "50Gb"},
        {4, "100Gb"},
        {5, "56Gb"},
        {6, "200Gb"},
        {7, "1Gb"},
        {8, "50Gb_1X"},
        {9, "100Gb_2X"},
        {10, "400Gb_8X"},
    });
    return table.name_of(value);
}

const char* ky_port_rate_str(ky_port_rate_t value)
{
    static constexpr NameTable<11> table({
        {0, "Not connected"},
        {1, "100M"},
        {2, "1G"},
        {3, "10G"},
        {4, "25G"},
        {5, "40G"},
        {6, "50Gx1"},
        {7, "50Gx2"},
        {8, "100Gx2"},
        {9, "100Gx4"},
        {10, "200Gx4"},
        {11, "400Gx8"},
    });
    return table.name_of(value);
}

const char* ky_port_mapping_mode_str(ky_port_mapping_mode_t value)
{
    static constexpr NameTable<3> table({
        {0, "Disable"},
        {1, "Enable"},
    });
    return table.name_of(value);
}

// ---- Physical layer ----

const char* ky_port_phys_loopback_str(ky_port_phys_loopback_t value)
{
    static constexpr NameTable<6> table({
        {0, "LOOPBACK_DISABLED"},
        {1, "EXTERNAL_LOOPBACK_ENABLED"},
        {2, "INTERNAL_LOOPBACK_ENABLED"},
        {3, "BOTH_LOOPBACKS_ENABLED"},
        {4, "INTERNAL_LR_LOOPBACK_ENABLED"},
    });
    return table.name_of(value);
}

const char* ky_port_phys_link_side_str(ky_port_phys_link_side_t value)
{
    static constexpr NameTable<4> table({
        {0, "EXTERNAL_LINK_SIDE"},
        {1, "INTERNAL_NEAR_LINK_SIDE"},
        {2, "INTERNAL_FAR_LINK_SIDE"},
    });
    return table.name_of(value);
}

const char* ky_port_pause_policy_rx_str(ky_port_pause_policy_rx_t value)
{
    static constexpr NameTable<3> table({
        {0, "DISABLE"},
        {1, "ENABLE"},
    });
    return table.name_of(value);
}

const char* ky_port_pause_policy_tx_str(ky_port_pause_policy_tx_t value)
{
    static constexpr NameTable<3> table({
        {0, "DISABLE"},
        {1, "ENABLE"},
    });
    return table.name_of(value);
}

const char* ky_port_flow_ctrl_mode_str(ky_port_flow_ctrl_mode_t value)
{
    static constexpr NameTable<5> table({
        {0, "TX_DIS_RX_DIS"},
        {1, "TX_EN_RX_DIS"},
        {2, "TX_DIS_RX_EN"},
        {3, "TX_EN_RX_EN"},
    });
    return table.name_of(value);
}

const char* ky_port_flow_ctrl_prio_str(ky_port_flow_ctrl_prio_t value)
{
    static constexpr NameTable<9> table({
        {0, "PRIO_0"},
        {1, "PRIO_1"},
        {2, "PRIO_2"},
        {3, "PRIO_3"},
        {4, "PRIO_4"},
        {5, "PRIO_5"},
        {6, "PRIO_6"},
        {7, "PRIO_7"},
    });
    return table.name_of(value);
}

const char* ky_port_cntr_prio_tc_str(ky_port_cntr_prio_tc_t value)
{
    static constexpr NameTable<18> table({
        {0, "PRIORITY 0"},
        {1, "PRIORITY 1"},
        {2, "PRIORITY 2"},
        {3, "PRIORITY 3"},
        {4, "PRIORITY 4"},
        {5, "PRIORITY 5"},
        {6, "PRIORITY 6"},
        {7, "PRIORITY 7"},
        {8, "PRIORITY 8"},
        {9, "PRIORITY 9"},
        {10, "PRIORITY 10"},
        {11, "PRIORITY 11"},
        {12, "PRIORITY 12"},
        {13, "PRIORITY 13"},
        {14, "PRIORITY 14"},
        {15, "PRIORITY 15"},
        {16, "PRIORITY 16"},
    });
    return table.name_of(value);
}

const char* ky_port_ber_fec_profile_str(ky_port_ber_fec_profile_t value)
{
    static constexpr NameTable<5> table({
        {0, "Pre RS-FEC"},
        {1, "Pre FC-FEC"},
        {2, "No FEC/Post FEC"},
    });
    return table.name_of(value);
}

const char* ky_port_ber_alarm_state_str(ky_port_ber_alarm_state_t value)
{
    static constexpr NameTable<4> table({
        {0, "Not Armed"},
        {1, "Normal"},
        {2, "Warning"},
        {3, "Alarm"},
        {4, "Clear"},
    });
    return table.name_of(value);
}

const char* ky_mgmt_phy_mod_pwr_attr_type_str(ky_mgmt_phy_mod_pwr_attr_type_t value)
{
    static constexpr NameTable<2> table({
        {0, "PWR_ATTR_PWR_MODE"},
        {1, "PWR_ATTR_MIN"},
        {2, "PWR_ATTR_MAX"},
    });
    return table.name_of(value);
}

const char* ky_mgmt_phy_mod_pwr_mode_str(ky_mgmt_phy_mod_pwr_mode_t value)
{
    static constexpr NameTable<5> table({
        {0, "PWR_MODE_INVALID"},
        {1, "PWR_MODE_LOW"},
        {2, "PWR_MODE_HIGH"},
        {3, "PWR_MODE_AUTO"},
        {4, "PWR_MODE_MIN"},
        {5, "PWR_MODE_MAX"},
    });
    return table.name_of(value);
}

// ---- Class of service and policers ----

const char* ky_cos_buffer_max_mode_str(ky_cos_buffer_max_mode_t value)
{
    static constexpr NameTable<4> table({
        {0, "Static"},
        {1, "Dynamic"},
        {2, "Buffer Units"},
    });
    return table.name_of(value);
}

const char* ky_cos_port_buff_pool_direction_str(ky_cos_port_buff_pool_direction_t value)
{
    static constexpr NameTable<3> table({
        {0, "Ingress"},
        {1, "Egress"},
    });
    return table.name_of(value);
}

const char* ky_policer_ir_units_str(ky_policer_ir_units_t value)
{
    static constexpr NameTable<3> table({
        {0, "10^6"},
        {1, "10^3"},
    });
    return table.name_of(value);
}

const char* ky_policer_rate_type_str(ky_policer_rate_type_t value)
{
    static constexpr NameTable<4> table({
        {0, "KY"},
        {1, "Single"},
        {2, "Dual"},
    });
    return table.name_of(value);
}

const char* ky_policer_meter_type_str(ky_policer_meter_type_t value)
{
    static constexpr NameTable<3> table({
        {0, "Packets"},
        {1, "Traffic"},
    });
    return table.name_of(value);
}

// Two values share a name.
const char* ky_policer_action_str(ky_policer_action_t value)
{
    static constexpr NameTable<5> table({
        {0, "Forward"},
        {1, "Discard"},
        {2, "Set Color"},
        {3, "Set Color"},
    });
    return table.name_of(value);
}

// ---- Routing ----

const char* ky_ip_version_str(ky_ip_version_t value)
{
    static constexpr NameTable<6> table({
        {KY_IP_VERSION_NONE, "None"},
        {KY_IP_VERSION_IPV4, "IPv4"},
        {KY_IP_VERSION_IPV6, "IPv6"},
        {KY_IP_VERSION_IPV4_IPV6, "IPv4&IPv6"},
        {KY_IP_VERSION_IPV4_IPV6_RESTORE_VLAN, "IPv4&IPv6 Restore vlan"},
    });
    return table.name_of(value);
}

const char* ky_router_action_str(ky_router_action_t value)
{
    static constexpr NameTable<7> table({
        {KY_ROUTER_ACTION_DROP, "Drop"},
        {KY_ROUTER_ACTION_TRAP, "Trap"},
        {KY_ROUTER_ACTION_FORWARD, "Forward"},
        {KY_ROUTER_ACTION_TRAP_AND_FORWARD, "Trap and Forward"},
        {KY_ROUTER_ACTION_SPAN, "Span"},
    });
    return table.name_of(value);
}

const char* ky_router_interface_type_str(ky_router_interface_type_t value)
{
    static constexpr NameTable<9> table({
        {0, "VLAN"},
        {1, "Port Vlan"},
        {2, "VPort"},
        {3, "Pkey"},
        {4, "Bridge Port"},
        {5, "Bridge"},
        {6, "Loopback"},
    });
    return table.name_of(value);
}

const char* ky_router_vinterface_type_str(ky_router_vinterface_type_t value)
{
    static constexpr NameTable<6> table({
        {KY_ROUTER_VINTERFACE_TYPE_RIF, "RIF"},
        {KY_ROUTER_VINTERFACE_TYPE_IP_IN_IP, "IP in IP"},
        {KY_ROUTER_VINTERFACE_TYPE_MPLS, "MPLS"},
        {KY_ROUTER_VINTERFACE_TYPE_NVE, "NVE"},
        {KY_ROUTER_VINTERFACE_TYPE_VXLAN, "VXLAN"},
    });
    return table.name_of(value);
}

const char* ky_router_qos_mode_str(ky_router_qos_mode_t value)
{
    static constexpr NameTable<4> table({
        {0, "NOP"},
        {1, "Prio from DSCP"},
        {2, "Reserve Prio"},
    });
    return table.name_of(value);
}

const char* ky_router_enable_state_str(ky_router_enable_state_t value)
{
    static constexpr NameTable<4> table({
        {0, "DISABLE"},
        {1, "ENABLE"},
        {2, "No FWD"},
    });
    return table.name_of(value);
}

const char* ky_router_rpf_action_str(ky_router_rpf_action_t value)
{
    static constexpr NameTable<7> table({
        {KY_ROUTER_RPF_ACTION_DISABLED, "Disabled"},
        {KY_ROUTER_RPF_ACTION_DROP, "Drop"},
        {KY_ROUTER_RPF_ACTION_TRAP, "Trap"},
        {KY_ROUTER_RPF_ACTION_DIRECTIONAL, "Directional"},
        {KY_ROUTER_RPF_ACTION_DROP_LIST, "Drop List"},
        {KY_ROUTER_RPF_ACTION_TRAP_LIST, "Trap List"},
    });
    return table.name_of(value);
}

const char* ky_router_prio_type_str(ky_router_prio_type_t value)
{
    static constexpr NameTable<4> table({
        {0, "N/A"},
        {KY_ROUTER_PRIO_TYPE_MANUAL, "MANUAL"},
        {KY_ROUTER_PRIO_TYPE_LPM, "LPM"},
    });
    return table.name_of(value);
}

const char* ky_router_ecmp_hash_type_str(ky_router_ecmp_hash_type_t value)
{
    static constexpr NameTable<4> table({
        {0, "CRC"},
        {1, "Xor"},
        {2, "Random"},
    });
    return table.name_of(value);
}

const char* ky_ecmp_type_str(ky_ecmp_type_t value)
{
    static constexpr NameTable<5> table({
        {0, "Static"},
        {1, "Resilient"},
        {2, "Consistent"},
        {3, "Dynamic"},
    });
    return table.name_of(value);
}

const char* ky_ecmp_container_type_str(ky_ecmp_container_type_t value)
{
    static constexpr NameTable<5> table({
        {0, "IP"},
        {1, "MPLS"},
        {2, "NVE Flood"},
        {3, "NVE MC"},
    });
    return table.name_of(value);
}

const char* ky_next_hop_type_str(ky_next_hop_type_t value)
{
    static constexpr NameTable<7> table({
        {0, "N/A"},
        {1, "IP"},
        {2, "Tunnel Encapsulation"},
        {3, "MC Container"},
        {4, "MPLS"},
        {5, "MPLS Ingress LER"},
    });
    return table.name_of(value);
}

const char* ky_object_type_str(ky_object_type_t value)
{
    static constexpr NameTable<6> table({
        {0, "VRID"},
        {1, "RIF"},
        {2, "ECMP"},
        {3, "Tunnel"},
        {4, "Tunnel map object"},
    });
    return table.name_of(value);
}

// ---- Multicast ----

const char* ky_mc_router_ttl_cmd_str(ky_mc_router_ttl_cmd_t value)
{
    static constexpr NameTable<4> table({
        {0, "N/A"},
        {KY_MC_ROUTER_TTL_CMD_DEC, "Dec"},
        {KY_MC_ROUTER_TTL_CMD_SET, "Set"},
    });
    return table.name_of(value);
}

const char* ky_mc_next_hop_type_str(ky_mc_next_hop_type_t value)
{
    static constexpr NameTable<6> table({
        {0, "N/A"},
        {1, "VIF"},
        {2, "Logical Port"},
        {3, "ECMP"},
        {4, "Tunnel ENCAP IP"},
    });
    return table.name_of(value);
}

const char* ky_mc_container_type_str(ky_mc_container_type_t value)
{
    static constexpr NameTable<7> table({
        {0, "N/A"},
        {1, "ERIF"},
        {2, "NVE Flood"},
        {3, "Bridge MC"},
        {4, "Port"},
        {5, "VLAN UNAWARE"},
    });
    return table.name_of(value);
}

// ---- Tunnels ----

const char* ky_tunnel_type_str(ky_tunnel_type_t value)
{
    static constexpr NameTable<19> table({
        {0, "IPinIP P2P IPv4 in IPv4"},
        {1, "IPinIP P2P IPv4 in GRE"},
        {2, "IPinIP P2P IPv6 in IPv4"},
        {3, "IPinIP P2P IPv6 in IPv4 with GRE"},
        {4, "IPinIP P2P IPv4 in IPv6"},
        {5, "IPinIP P2P IPv4 in IPv6 with GRE"},
        {6, "IPinIP P2P IPv6 in IPv6"},
        {7, "IPinIP P2P IPv6 in IPv6 with GRE"},
        {8, "NVE VXLAN"},
        {9, "NVE VXLAN GPE"},
        {10, "NVE GENEVE"},
        {11, "NVE NVGRE"},
        {12, "NVE VXLAN IPv6"},
        {13, "NVE NVGRE IPv6"},
    });
    return table.name_of(value);
}

const char* ky_tunnel_direction_str(ky_tunnel_direction_t value)
{
    static constexpr NameTable<5> table({
        {0, "None"},
        {1, "Encap"},
        {2, "Decap"},
        {3, "Symmetric"},
    });
    return table.name_of(value);
}

const char* ky_tunnel_underlay_domain_type_str(ky_tunnel_underlay_domain_type_t value)
{
    static constexpr NameTable<3> table({
        {0, "VRID"},
        {1, "RIF"},
    });
    return table.name_of(value);
}

// The bound is the whole table, not its first two values.
const char* ky_tunnel_ipinip_gre_mode_str(ky_tunnel_ipinip_gre_mode_t value)
{
    static constexpr NameTable<4> table({
        {0, "Enabled"},
        {1, "Enabled with Key"},
        {2, "Enabled with Key Hash"},
    });
    return table.name_of(value);
}

const char* ky_tunnel_decap_key_fields_type_str(ky_tunnel_decap_key_fields_type_t value)
{
    static constexpr NameTable<3> table({
        {0, "DIP"},
        {1, "DIP SIP"},
    });
    return table.name_of(value);
}

// ---- Mirroring ----

const char* ky_span_type_str(ky_span_type_t value)
{
    static constexpr NameTable<8> table({
        {0, "N/A"},
        {1, "KY_SPAN_TYPE_LOCAL_IB"},
        {2, "KY_SPAN_TYPE_REMOTE_IB"},
        {3, "KY_SPAN_TYPE_LOCAL_ETH_TYPE1"},
        {4, "KY_SPAN_TYPE_REMOTE_ETH_VLAN_TYPE1"},
        {5, "KY_SPAN_TYPE_REMOTE_ETH_L2_TYPE1"},
        {6, "KY_SPAN_TYPE_REMOTE_ETH_L3_TYPE1"},
        {7, "KY_SPAN_TYPE_MIN"},
        {8, "KY_SPAN_TYPE_MAX"},
    });
    return table.name_of(value);
}

const char* ky_span_drop_reason_str(ky_span_drop_reason_t value)
{
    static constexpr NameTable<19> table({
        {0, "All Router Drops"},
        {1, "Ingress Packet"},
        {2, "Ingress Switch"},
        {3, "Lookup Switch"},
        {4, "Ingress Router"},
        {5, "Ingress LSR"},
        {6, "Router"},
        {7, "Router 2"},
        {8, "Router 3"},
        {9, "LSR"},
        {10, "LSR 2"},
        {11, "LSR 3"},
        {12, "Decap"},
        {13, "Overlay Switch"},
        {14, "Isolation"},
        {15, "Non Routed"},
        {16, "Egress LSR"},
        {17, "MC Scope"},
    });
    return table.name_of(value);
}

// ---- Telemetry ----

const char* ky_tele_histogram_type_str(ky_tele_histogram_type_t value)
{
    static constexpr NameTable<6> table({
        {0, "N/A"},
        {1, "Port Queue Depth"},
        {2, "Port TC Queue Depth"},
        {3, "Port PG Queue Depth"},
        {4, "Port TC Latency"},
    });
    return table.name_of(value);
}

const char* ky_tele_histogram_mode_str(ky_tele_histogram_mode_t value)
{
    static constexpr NameTable<3> table({
        {0, "Linear"},
        {1, "Exponential"},
    });
    return table.name_of(value);
}

const char* ky_tele_threshold_type_str(ky_tele_threshold_type_t value)
{
    static constexpr NameTable<6> table({
        {0, "N/A"},
        {1, "Port TC"},
        {2, "Port PG"},
        {3, "Latency Port TC"},
        {4, "Latency MC SP"},
        {6, "Port"},
    });
    return table.name_of(value);
}

// ---- Host interface ----

// NOLINTNEXTLINE(readability-function-size)
const char* ky_host_ifc_trap_id_str(ky_host_ifc_trap_id_t value)
{
    static constexpr auto table = NameTable<627>::sparse({
        {1, "KY_GENERAL_FDB"},
        {2, "KY_GENERAL_DR_IPC"},
        {4, "KY_GENERAL_DR_RES"},
        {5, "KY_GENERAL_ETH_EMAD"},
        {6, "KY_FDB"},
        {8, "KY_PUDE"},
        {9, "KY_PMPE"},
        {10, "KY_FLAE"},
        {11, "KY_FORE"},
        {12, "KY_TMPW"},
        {13, "KY_CPUWD"},

        {16, "KY_STP"},
        {17, "KY_LACP"},
        {18, "KY_EAPOL"},
        {19, "KY_LLDP"},
        {20, "KY_MMRP"},
        {21, "KY_MVRP"},
        {22, "KY_RPVST"},
        {24, "KY_UDLD"},
        {25, "KY_DHCP"},
        {32, "KY_FCOE_FIP"},
        {40, "KY_PTP_EVENT"},
        {41, "KY_PTP_GENERAL"},
        {45, "KY_PTP_ING_EVENT"},
        {46, "KY_PTP_EGR_EVENT"},
        {47, "KY_QUEUE_THRESHOLD_CROSSED"},
        {48, "KY_IGMP_QUERY"},
        {49, "KY_IGMP_V1_REPORT"},
        {50, "KY_IGMP_V2_REPORT"},
        {51, "KY_IGMP_V2_LEAVE"},
        {52, "KY_IGMP_V3_REPORT"},
        {53, "KY_USER_ETH_CONF_TYPE0"},
        {54, "KY_USER_ETH_CONF_TYPE1"},
        {56, "KY_PACKET_SAMPLING"},
        {59, "KY_FDB_MISMATCH"},
        {63, "KY_MIRROR"},
        {64, "KY_DECAP_ECN0"},
        {65, "KY_DECAP_ECN1"},

        {72, "KY_USER_ICMPV6_CONF_TYPE0"},
        {73, "KY_USER_ICMPV6_CONF_TYPE1"},
        {74, "KY_USER_OVERLAY_ICMPV6_CONF_TYPE"},
        {79, "KY_RARP"},
        {80, "KY_ARP_REQUEST"},
        {81, "KY_ARP_RESPONSE"},
        {82, "KY_L3_MTU_ERROR"},
        {83, "KY_L3_TTL_ERROR"},
        {84, "KY_L3_LB_ERROR"},
        {85, "KY_OSPF"},
        {86, "KY_RIP_V1"},
        {87, "KY_RIP_V2"},
        {88, "KY_PIM"},
        {89, "KY_VRRP"},
        {90, "KY_RESERVED_MC"},
        {91, "KY_IPBC"},
        {92, "KY_L3_RPF"},
        {93, "KY_L3_ASSERT"},
        {94, "KY_INFINIBAND_EXTERNAL_SMA"},
        {95, "KY_IP2ME"},
        {96, "KY_IPV6_UNSPEC_ADDR"},
        {97, "KY_IPV6_LINK_LOCAL_DST"},
        {98, "KY_IPV6_LINK_LOCAL_SRC"},
        {99, "KY_IPV6_ALL_NODES_LINK"},
        {100, "KY_IPV6_OSPF"},
        {101, "KY_IPV6_MLD_V1_V2"},
        {102, "KY_IPV6_MLD_V1_REPORT"},
        {103, "KY_IPV6_MLD_V1_DONE"},
        {104, "KY_IPV6_MLD_V2_REPORT"},
        {105, "KY_IPV6_DHCP"},
        {106, "KY_IPV6_ROUTER_SOLICITATION"},
        {107, "KY_IPV6_ROUTER_ADVERTISEMENT"},
        {108, "KY_IPV6_NEIGH_SOLICITATION"},
        {109, "KY_IPV6_NEIGH_ADVERTISEMENT"},
        {110, "KY_IPV6_REDIRECTION"},
        {111, "KY_IPV6_ALL_ROUTERS_LINK"},
        {122, "KY_VRRP_IPV6"},
        {123, "KY_IPV6_UNSPEC_SIP"},
        {124, "KY_IPV6_UNSPEC_DIP"},

        {136, "KY_IPV4_BGP"},
        {137, "KY_IPV6_BGP"},
        {143, "KY_IPV4_DHCP"},
        {144, "KY_HOST_MISS_IPV4"},
        {146, "KY_HOST_MISS_IPV6"},

        {152, "KY_MPLS_ILM_MISS"},
        {153, "KY_MPLS_LDP"},
        {154, "KY_MPLS_LB_LSP_PING"},
        {160, "KY_MPLS_ILM0"},
        {161, "KY_MPLS_ILM1"},
        {168, "KY_MPLS_NHLFE0"},
        {169, "KY_MPLS_NHLFE1"},

        {176, "KY_DECAP_ENCAP"},
        {177, "KY_IPIP_DECAP_ERROR"},
        {178, "KY_IPIP_ERROR"},
        {182, "KY_NVE_DECAP_IGMP"},
        {184, "KY_NVE_DECAP_ARP"},
        {185, "KY_NVE_DECAP_TAG_ERROR"},
        {186, "KY_NVE_IPV4_DHCP"},
        {187, "KY_NVE_IPV6_DHCP"},
        {188, "KY_NVE_DECAP_FRAG_ERROR"},
        {189, "KY_NVE_ENCAP_ARP"},
        {190, "KY_USER_NVE_DECAP_ETH"},
        {191, "KY_NVE_DECAP_MLD"},
        {192, "KY_TRAP_ID_IP2ME_CUSTOM0"},
        {193, "KY_TRAP_ID_IP2ME_CUSTOM1"},

        {208, "KY_BFD_IPV4"},
        {209, "KY_BFD_IPV6"},
        {210, "KY_SSH_IPV4"},
        {211, "KY_SSH_IPV6"},
        {212, "KY_PING_IPV4"},
        {213, "KY_PING_IPV6"},
        {214, "KY_ROUTER_ALERT_IPV4"},
        {215, "KY_ROUTER_ALERT_IPV6"},
        {218, "KY_SNMP_IPV4"},
        {219, "KY_SNMP_IPV6"},
        {224, "KY_ROUTER_ARPBC"},
        {225, "KY_ROUTER_ARPUC"},
        {226, "KY_ROUTER_RARP"},

        {240, "KY_INFINIBAND_QP0"},
        {241, "KY_INFINIBAND_QP1"},
        {242, "KY_INFINIBAND_OTHER_QPS"},
        {247, "KY_INFINIBAND_IN_NV_ACCESS_REG"},
        {248, "KY_INFINIBAND_IB_FMAD_RCV"},
        {257, "KY_BER_MONITOR"},
        {258, "KY_INFINIBAND_RESET_CMD"},
        {259, "KY_PACKET_RECEIVED"},

        {272, "KY_DISCARD_ING_PACKET"},
        {273, "KY_DISCARD_ING_SWITCH"},
        {274, "KY_DISCARD_LOOKUP_SWITCH"},
        {275, "KY_DISCARD_ING_ROUTER"},
        {276, "KY_DISCARD_ING_LSR"},
        {277, "KY_DISCARD_ROUTER"},
        {278, "KY_DISCARD_LSR"},
        {279, "KY_DISCARD_DEC"},
        {280, "KY_DISCARD_OVERLAY_SWITCH"},
        {281, "KY_DISCARD_ISOLATION"},
        {282, "KY_DISCARD_NON_ROUTED"},
        {283, "KY_DISCARD_EGR_LSR"},
        {284, "KY_DISCARD_MC_SCOPE"},
        {304, "KY_DISCARD_ROUTER2"},
        {305, "KY_DISCARD_ROUTER3"},
        {306, "KY_DISCARD_LSR2"},
        {307, "KY_DISCARD_LSR3"},
        {320, "KY_DISCARD_ING_PACKET_SMAC_MC"},
        {321, "KY_DISCARD_ING_PACKET_SMAC_DMAC"},
        {322, "KY_DISCARD_ING_PACKET_RSV_MAC"},
        {328, "KY_DISCARD_ING_SWITCH_VTAG_ALLOW"},
        {329, "KY_DISCARD_ING_SWITCH_VLAN"},
        {330, "KY_DISCARD_ING_SWITCH_STP"},
        {336, "KY_DISCARD_LOOKUP_SWITCH_UC"},
        {337, "KY_DISCARD_LOOKUP_SWITCH_MC_NULL"},
        {338, "KY_DISCARD_LOOKUP_SWITCH_LB"},
        {339, "KY_DISCARD_LOOKUP_SWITCH_NO_PORTS"},
        {352, "KY_DISCARD_ING_ROUTER_NO_HDR"},
        {353, "KY_DISCARD_ING_ROUTER_UC_DIP_MC_DMAC"},
        {354, "KY_DISCARD_ING_ROUTER_DIP_LB"},
        {355, "KY_DISCARD_ING_ROUTER_SIP_MC"},
        {356, "KY_DISCARD_ING_ROUTER_SIP_CLASS_E"},
        {357, "KY_DISCARD_ING_ROUTER_SIP_LB"},
        {358, "KY_DISCARD_ING_ROUTER_SIP_UNSP"},
        {359, "KY_DISCARD_ING_ROUTER_IP_HDR"},
        {360, "KY_DISCARD_ING_ROUTER_MC_DMAC"},
        {361, "KY_DISCARD_ING_ROUTER_SIP_DIP"},
        {362, "KY_DISCARD_ING_ROUTER_SIP_BC"},
        {363, "KY_DISCARD_ING_ROUTER_DIP_LOCAL_NET"},
        {364, "KY_DISCARD_ING_ROUTER_DIP_LINK_LOCAL"},
        {365, "KY_DISCARD_ING_ROUTER_SIP_LINK_LOCAL"},
        {368, "KY_DISCARD_ING_LSR_NO_LABEL"},
        {369, "KY_DISCARD_ING_LSR_UC_ET"},
        {370, "KY_DISCARD_ING_LSR_MC_DMAC"},
        {376, "KY_DISCARD_ROUTER_IRIF_EN"},
        {377, "KY_DISCARD_ROUTER_ERIF_EN"},
        {378, "KY_DISCARD_ROUTER_ERIF_FWD"},
        {379, "KY_DISCARD_ROUTER_LPM4"},
        {380, "KY_DISCARD_ROUTER_LPM6"},
        {384, "KY_DISCARD_LSR_MIN_LABEL"},
        {385, "KY_DISCARD_LSR_MAX_LABEL"},
        {386, "KY_DISCARD_LSR_LB"},
        {392, "KY_DISCARD_DEC_PKT"},
        {393, "KY_DISCARD_DEC_DIS"},
        {400, "KY_DISCARD_OVERLAY_SWITCH_SMAC_MC"},
        {401, "KY_DISCARD_OVERLAY_SWITCH_SMAC_DMAC"},
        {424, "KY_DISCARD_EGR_LSR_NO_LABEL"},
        {425, "KY_DISCARD_EGR_LSR_NO_IP"},
        {426, "KY_DISCARD_EGR_LSR_PHP_NO_IP"},
        {432, "KY_DISCARD_MC_SCOPE_IPV6_0"},
        {433, "KY_DISCARD_MC_SCOPE_IPV6_1"},

        {448, "KY_L3_UC_IP_BASE (prio 0)"},
        {449, "KY_L3_UC_IP_BASE (prio 1)"},
        {450, "KY_L3_UC_IP_BASE (prio 2)"},
        {451, "KY_L3_UC_IP_BASE (prio 3)"},
        {453, "KY_L3_MC_IP_BASE"},
        {458, "KY_L3_NEIGH_IP_BASE (prio 0)"},
        {459, "KY_L3_NEIGH_IP_BASE (prio 1)"},
        {460, "KY_L3_NEIGH_IP_BASE (prio 2)"},
        {461, "KY_L3_NEIGH_IP_BASE (prio 3)"},
        {463, "KY_ACL_LOG"},
        {490, "KY_SYS_ACL_DROP"},
        {491, "KY_ACL_DROP"},
        {492, "KY_IGMP_V3_P0"},
        {493, "KY_IGMP_V3_P1"},
        {494, "KY_DECAP_TABLE_1"},
        {495, "KY_DECAP_TABLE_0"},

        {512, "KY_SIGNAL"},
        {513, "KY_NEW_DEV_ADD"},
        {514, "KY_MAC_LEARNING"},
        {515, "KY_MAC_AGING"},
        {516, "KY_NEED_TO_RESOLVE_ARP"},
        {517, "KY_NO_NEED_TO_RESOLVE_ARP"},
        {518, "KY_FDB_EVENT"},
        {519, "KY_RM_SDK_TABLE_THRESHOLD_EVENT"},
        {520, "KY_RM_HW_TABLE_THRESHOLD_EVENT"},
        {521, "KY_FDB_SRC_MISS"},
        {522, "KY_ROUTER_NEIGH_ACTIVITY"},
        {523, "KY_ASYNC_API_COMPLETE_EVENT"},
        {524, "KY_ROUTER_MC_ACTIVITY"},
        {525, "KY_FDB_IP_ADDR_ACTIVITY"},
        {526, "KY_TRANSACTION_ERROR"},
        {527, "KY_BFD_TIMEOUT_EVENT"},
        {528, "KY_BFD_PACKET_EVENT"},
        {529, "KY_OBJECT_DELETED_EVENT"},

        {544, "KY_MIRROR_AGENT0"},
        {545, "KY_MIRROR_AGENT1"},
        {546, "KY_MIRROR_AGENT2"},
        {547, "KY_MIRROR_AGENT3"},
        {548, "KY_MIRROR_AGENT4"},
        {549, "KY_MIRROR_AGENT5"},
        {550, "KY_MIRROR_AGENT6"},
        {551, "KY_MIRROR_AGENT7"},
        {561, "KY_PORT_ADDED"},
        {562, "KY_PORT_DELETED"},
        {563, "KY_PORT_ADDED_TO_LAG"},
        {564, "KY_PORT_REMOVED_FROM_LAG"},

        {576, "KY_TRAP_ID_USER_CONF_SWITCH0"},
        {577, "KY_TRAP_ID_USER_CONF_SWITCH1"},
        {578, "KY_TRAP_ID_USER_CONF_SWITCH2"},
        {579, "KY_TRAP_ID_USER_CONF_SWITCH3"},
        {592, "KY_TRAP_ID_USER_CONF_ROUTER0"},
        {593, "KY_TRAP_ID_USER_CONF_ROUTER1"},
        {594, "KY_TRAP_ID_USER_CONF_ROUTER2"},
        {595, "KY_TRAP_ID_USER_CONF_ROUTER3"},
        {608, "KY_TRAP_ID_USER_CONF_SWITCH_ENC0"},
        {609, "KY_TRAP_ID_USER_CONF_SWITCH_ENC1"},
        {610, "KY_TRAP_ID_USER_CONF_SWITCH_ENC2"},
        {611, "KY_TRAP_ID_USER_CONF_SWITCH_ENC3"},
        {624, "KY_TRAP_ID_USER_CONF_SWITCH_DEC0"},
        {625, "KY_TRAP_ID_USER_CONF_SWITCH_DEC1"},
        {626, "KY_TRAP_ID_USER_CONF_SWITCH_DEC2"},
        {627, "KY_TRAP_ID_USER_CONF_SWITCH_DEC3"},
    });
    return table.name_of(value);
}

const char* ky_receive_dest_port_str(ky_receive_dest_port_t value)
{
    static constexpr NameTable<3> table({
        {0, "Invalid"},
        {1, "Multi Port"},
        {2, "Network Port"},
        {3, "LAG Port"},
    });
    return table.name_of(value);
}

// ---- Bridges and filtering identifiers ----

const char* ky_bridge_mode_str(ky_bridge_mode_t value)
{
    static constexpr NameTable<3> table({});
    return table.name_of(value);
}

const char* ky_bridge_multiple_vlan_mode_str(ky_bridge_multiple_vlan_mode_t value)
{
    static constexpr NameTable<2> table({
        {0, "HOMOGENEOUS MODE"},
        {1, "NON HOMOGENEOUS MODE"},
    });
    return table.name_of(value);
}

const char* ky_bridge_tunnel_counter_type_str(ky_bridge_tunnel_counter_type_t value)
{
    static constexpr NameTable<4> table({
        {0, "KY_BRIDGE_COUNTER_TUNNEL_DECAP_E"},
        {1, "KY_BRIDGE_COUNTER_TUNNEL_ENCAP_UC_E"},
        {2, "KY_BRIDGE_COUNTER_TUNNEL_ENCAP_MC_E"},
    });
    return table.name_of(value);
}

const char* ky_fm_fid_type_str(ky_fm_fid_type_t value)
{
    static constexpr NameTable<6> table({
        {0, "INVALID FID"},
        {1, "VLAN non-rewritable"},
        {2, "VLAN rewritable"},
        {3, "Bridge rewritable"},
        {4, "RIF"},
    });
    return table.name_of(value);
}

// ---- Forwarding database ----

const char* ky_fdb_learn_mode_str(ky_fdb_learn_mode_t value)
{
    static constexpr NameTable<4> table({
        {0, "DONT LEARN"},
        {1, "AUTO LEARN"},
        {2, "CONTROL LEARN"},
    });
    return table.name_of(value);
}

const char* ky_fdb_notify_type_str(ky_fdb_notify_type_t value)
{
    static constexpr NameTable<17> table({
        {0, "N/A"},
        {1, "New MAC LAG"},
        {2, "New MAC Port"},
        {3, "Aged MAC LAG"},
        {4, "Aged MAC Port"},
        {5, "Flush All"},
        {6, "Flush LAG"},
        {7, "Flush Port"},
        {8, "Flush FID"},
        {9, "Flush LAG FID"},
        {10, "Flush Port FID"},
        {11, "New MAC Tunnel"},
        {12, "Aged MAC Tunnel"},
        {13, "Renew MAC LAG"},
        {14, "Renew MAC Port"},
        {15, "Renew MAC Tunnel"},
    });
    return table.name_of(value);
}

// ---- Spanning tree ----

const char* ky_mstp_mode_str(ky_mstp_mode_t value)
{
    static constexpr NameTable<5> table({
        {0, "None"},
        {1, "MSTP"},
        {2, "RSTP"},
        {3, "PVRST"},
    });
    return table.name_of(value);
}

const char* ky_mstp_inst_port_state_str(ky_mstp_inst_port_state_t value)
{
    static constexpr NameTable<5> table({
        {0, "N/A"},
        {KY_MSTP_INST_PORT_STATE_DISCARDING, "Discarding"},
        {KY_MSTP_INST_PORT_STATE_LEARNING, "Learning"},
        {KY_MSTP_INST_PORT_STATE_FORWARDING, "Forwarding"},
    });
    return table.name_of(value);
}

const char* ky_mstp_exclude_port_state_str(ky_mstp_exclude_port_state_t value)
{
    static constexpr NameTable<1> table({
        {0, "Normal"},
        {1, "Forwarding"},
    });
    return table.name_of(value);
}

// ---- VLAN and LAG ----

const char* ky_vlan_qinq_prio_tag_mode_str(ky_vlan_qinq_prio_tag_mode_t value)
{
    static constexpr NameTable<3> table({
        {0, "Push"},
        {1, "Overwrite"},
    });
    return table.name_of(value);
}

const char* ky_lag_hash_bit_number_str(ky_lag_hash_bit_number_t value)
{
    // clang-format off
    static constexpr NameTable<18> table({
        {0, "INGRESS_PORT"},
        {1, "SMAC_IP"},
        {2, "SMAC_NON_IP"},
        {3, "DMAC_IP"},
        {4, "DMAC_NON_IP"},
        {5, "ETHER_IP"},
        {6, "ETHER_NON_IP"},
        {7, "VID_IP"},
        {8, "VID_NON_IP"},
        {9, "SRC_IP"},
        {10, "DST_IP"},
        {11, "L4_SRC_PORT"},
        {12, "L4_DST_PORT"},
        {13, "L3_PROTOCOL"},
        {14, "IPV6_FLOW_LABEL"},
        {15, "FCoE SRC ID"},
        {16, "FCoE DEST ID"},
        {17, "FCoE ORIG EX ID"},
        {18, "DESTINATION_QP"},
    });
    // clang-format on
    return table.name_of(value);
}
