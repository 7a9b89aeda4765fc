/* The requests about names, checks, settings, verbosity and ports. */
#include "replay.h"

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <inttypes.h>
#include <stdio.h>
#include <string.h>

/* ---- name ENUMERATION VALUE, status CODE ---- */

static const struct enumeration {
    const char* name;
    const char* (*str)(uint32_t value);
} enumerations[] = {
// clang-format off
#define ENUMERATION(name) {#name, ky_##name##_str}
    // clang-format on
    ENUMERATION(status),
    ENUMERATION(access_cmd),
    ENUMERATION(chip_type),
    ENUMERATION(chip_rev),
    ENUMERATION(dev_node_type),
    ENUMERATION(swid_info_field_bit),
    ENUMERATION(boot_mode),
    ENUMERATION(health_cause),
    ENUMERATION(health_severity),
    ENUMERATION(event_generate_mode),
    ENUMERATION(lib_adviser_event_type),
    ENUMERATION(api_arb_policy),
    ENUMERATION(acl_search_type),
    ENUMERATION(tcam_opt_mode),
    ENUMERATION(tcam_opt_mode_param),
    ENUMERATION(extraction_point_type),
    ENUMERATION(port_type),
    ENUMERATION(port_mode),
    ENUMERATION(port_module_state),
    ENUMERATION(port_admin_state),
    ENUMERATION(port_oper_state),
    ENUMERATION(port_oper_speed),
    ENUMERATION(port_phy_speed),
    ENUMERATION(port_rate),
    ENUMERATION(port_mapping_mode),
    ENUMERATION(port_phys_loopback),
    ENUMERATION(port_phys_link_side),
    ENUMERATION(port_pause_policy_rx),
    ENUMERATION(port_pause_policy_tx),
    ENUMERATION(port_flow_ctrl_mode),
    ENUMERATION(port_flow_ctrl_prio),
    ENUMERATION(port_cntr_prio_tc),
    ENUMERATION(port_ber_fec_profile),
    ENUMERATION(port_ber_alarm_state),
    ENUMERATION(mgmt_phy_mod_pwr_attr_type),
    ENUMERATION(mgmt_phy_mod_pwr_mode),
    ENUMERATION(cos_buffer_max_mode),
    ENUMERATION(cos_port_buff_pool_direction),
    ENUMERATION(policer_ir_units),
    ENUMERATION(policer_rate_type),
    ENUMERATION(policer_meter_type),
    ENUMERATION(policer_action),
    ENUMERATION(ip_version),
    ENUMERATION(router_action),
    ENUMERATION(router_interface_type),
    ENUMERATION(router_vinterface_type),
    ENUMERATION(router_qos_mode),
    ENUMERATION(router_enable_state),
    ENUMERATION(router_rpf_action),
    ENUMERATION(router_prio_type),
    ENUMERATION(router_ecmp_hash_type),
    ENUMERATION(ecmp_type),
    ENUMERATION(ecmp_container_type),
    ENUMERATION(next_hop_type),
    ENUMERATION(object_type),
    ENUMERATION(mc_router_ttl_cmd),
    ENUMERATION(mc_next_hop_type),
    ENUMERATION(mc_container_type),
    ENUMERATION(tunnel_type),
    ENUMERATION(tunnel_direction),
    ENUMERATION(tunnel_underlay_domain_type),
    ENUMERATION(tunnel_ipinip_gre_mode),
    ENUMERATION(tunnel_decap_key_fields_type),
    ENUMERATION(span_type),
    ENUMERATION(span_drop_reason),
    ENUMERATION(tele_histogram_type),
    ENUMERATION(tele_histogram_mode),
    ENUMERATION(tele_threshold_type),
    ENUMERATION(host_ifc_trap_id),
    ENUMERATION(receive_dest_port),
    ENUMERATION(bridge_mode),
    ENUMERATION(bridge_multiple_vlan_mode),
    ENUMERATION(bridge_tunnel_counter_type),
    ENUMERATION(fm_fid_type),
    ENUMERATION(fdb_learn_mode),
    ENUMERATION(fdb_notify_type),
    ENUMERATION(mstp_mode),
    ENUMERATION(mstp_inst_port_state),
    ENUMERATION(mstp_exclude_port_state),
    ENUMERATION(vlan_qinq_prio_tag_mode),
    ENUMERATION(lag_hash_bit_number),
#undef ENUMERATION
};

bool request_name(const words_t* words)
{
    for (size_t i = 0; i < COUNT_OF(enumerations); i++) {
        if (strcmp(words->word[1], enumerations[i].name) == 0) {
            uint32_t value = 0;
            if (!read_uint32(words->word[2], &value)) {
                return false;
            }
            printf("  \"%s\"\n", enumerations[i].str(value));
            return true;
        }
    }
    return unreadable("there is no enumeration '%s'", words->word[1]);
}

bool request_status(const words_t* words)
{
    uint32_t code = 0;
    return read_uint32(words->word[1], &code) && print_status(code);
}

/* ---- check WHAT ... ---- */

static const struct check {
    const char* name;
    enum { TAKES_UINT8, TAKES_UINT16, TAKES_UINT32, TAKES_INT32, TAKES_COUNT } takes;
    union {
        ky_status_t (*UINT8)(uint8_t value);
        ky_status_t (*UINT16)(uint16_t value);
        ky_status_t (*UINT32)(uint32_t value);
        ky_status_t (*INT32)(int32_t value);
        ky_status_t (*COUNT)(uint32_t count, const char* description);
    } call;
} checks[] = {
// clang-format off
#define CHECK(name, type) {#name, TAKES_##type, {.type = utils_check_##name}}
    // clang-format on
    CHECK(verbosity_level, UINT32),
    CHECK(array_length, COUNT),
    CHECK(array_size, COUNT),
    CHECK(mc_id, UINT16),
    CHECK(mstp_inst_id, UINT16),
    CHECK(mstp_inst_port_state, UINT32),
    CHECK(swid, UINT8),
    CHECK(port_admin_state, INT32),
    CHECK(device_id, UINT8),
    CHECK(device_node_type, INT32),
#undef CHECK
};

static bool check_pointer(const words_t* words)
{
    const bool is_null = strcmp(words->word[2], "null") == 0;
    if (!is_null && strcmp(words->word[2], "set") != 0) {
        return unreadable("a pointer is 'null' or 'set', not '%s'", words->word[2]);
    }
    return print_status(utils_check_pointer(is_null ? NULL : words, words->word[3]));
}

static bool check_msg_size(const words_t* words)
{
    uint32_t size = 0;
    uint32_t limit = 0;
    if (words->word[3] == NULL) {
        return unreadable("a message size is checked against a limit");
    }
    return read_uint32(words->word[2], &size) && read_uint32(words->word[3], &limit) &&
           print_status(utils_check_msg_size(size, limit));
}

static bool check_number(const struct check* check, const words_t* words)
{
    static const struct {
        int64_t min;
        int64_t max;
    } range_of[] = {
        [TAKES_UINT8] = {0, UINT8_MAX},         [TAKES_UINT16] = {0, UINT16_MAX},
        [TAKES_UINT32] = {0, UINT32_MAX},       [TAKES_COUNT] = {0, UINT32_MAX},
        [TAKES_INT32] = {INT32_MIN, INT32_MAX},
    };
    if (words->word[3] != NULL && check->takes != TAKES_COUNT) {
        return unreadable("this check takes no '%s'", words->word[3]);
    }
    int64_t number = 0;
    if (!read_number(
            words->word[2], range_of[check->takes].min, range_of[check->takes].max, &number)) {
        return false;
    }
    switch (check->takes) {
    case TAKES_UINT8:
        return print_status(check->call.UINT8((uint8_t)number));
    case TAKES_UINT16:
        return print_status(check->call.UINT16((uint16_t)number));
    case TAKES_UINT32:
        return print_status(check->call.UINT32((uint32_t)number));
    case TAKES_INT32:
        return print_status(check->call.INT32((int32_t)number));
    case TAKES_COUNT:
        return print_status(check->call.COUNT((uint32_t)number, words->word[3]));
    }
    return false;
}

bool request_check(const words_t* words)
{
    if (strcmp(words->word[1], "pointer") == 0) {
        return check_pointer(words);
    }
    if (strcmp(words->word[1], "msg_size") == 0) {
        return check_msg_size(words);
    }
    for (size_t i = 0; i < COUNT_OF(checks); i++) {
        if (strcmp(words->word[1], checks[i].name) == 0) {
            return check_number(&checks[i], words);
        }
    }
    return unreadable("there is no check '%s'", words->word[1]);
}

/* ---- setting NAME [VALUE], verbosity MODULE LEVEL, trace on|off ---- */

bool request_setting(const words_t* words)
{
    const bool is_boot_mode = strcmp(words->word[1], "boot_mode") == 0;
    if (!is_boot_mode && strcmp(words->word[1], "use_xm") != 0) {
        return unreadable("there is no setting '%s'", words->word[1]);
    }
    uint32_t value = 0;
    if (words->word[2] != NULL) {
        return read_uint32(words->word[2], &value) &&
               print_status(is_boot_mode ? utils_boot_mode_set(value) : utils_use_xm_set(value));
    }
    print_status(is_boot_mode ? utils_boot_mode_get(&value) : utils_use_xm_get(&value));
    printf("  %s = %" PRIu32 "\n", words->word[1], value);
    return true;
}

static ky_status_t set_adviser_verbosity(uint32_t level)
{
    return adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
}

bool request_verbosity(const words_t* words)
{
    static const struct {
        const char* name;
        ky_status_t (*set)(uint32_t level);
    } modules[] = {
        {"ADVISER", set_adviser_verbosity},
        {"UTILS", utils_log_verbosity_level_set},
        {"KY_API_ROUTER", ky_router_utils_log_verbosity_set},
        {"PORT_TYPE_VALIDATE", port_type_validate_log_verbosity_level_set},
    };
    for (size_t i = 0; i < COUNT_OF(modules); i++) {
        if (strcmp(words->word[1], modules[i].name) == 0) {
            uint32_t level = 0;
            return read_uint32(words->word[2], &level) && print_status(modules[i].set(level));
        }
    }
    return unreadable("there is no log module '%s'", words->word[1]);
}

bool request_trace(const words_t* words)
{
    const bool on = strcmp(words->word[1], "on") == 0;
    if (!on && strcmp(words->word[1], "off") != 0) {
        return unreadable("function traces are 'on' or 'off', not '%s'", words->word[1]);
    }
    KY_STORE(g_ky_log_module_func_enable, on);
    printf("  function traces are %s\n", on ? "on" : "off");
    return true;
}

/* ---- port ROW|FUNCTION PORT ---- */

static bool find_row(const char* word, uint32_t* row)
{
    for (uint32_t i = 0; i < PORT_TYPE_VALIDATION_ROWS; i++) {
        if (strcmp(word, port_type_validation_table[i].func_name) == 0) {
            *row = i;
            return true;
        }
    }
    if (word[0] >= '0' && word[0] <= '9') {
        return read_uint32(word, row);
    }
    return unreadable("no API function '%s' is in the dictionary", word);
}

bool request_port(const words_t* words)
{
    uint32_t row = 0;
    uint32_t log_port = 0;
    if (!find_row(words->word[1], &row) || !read_uint32(words->word[2], &log_port)) {
        return false;
    }
    const uint32_t valid = is_port_type_valid(row, log_port);
    printf("  %" PRIu32 " %s\n", valid, valid ? "accepted" : "refused");
    return true;
}
