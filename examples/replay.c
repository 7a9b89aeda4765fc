/* Replays requests from a text file through the library and prints what it answers.
 *
 *     replay FILE      reads a file; "-" is standard input
 *
 * A request is a line of words: "check device_id 254". "#" starts a comment; numbers are decimal,
 * or hexadecimal behind "0x". Each line is printed as it stands, below it what the library logged,
 * as the logging library writes it, and what it returned. A line that cannot be read is reported
 * with its number and skipped; the exit status is then 1. */
#include <ky_common.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <errno.h>
#include <inttypes.h>
#include <stdarg.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define COUNT_OF(array) (sizeof(array) / sizeof((array)[0]))

/* ---- Words ---- */

#define WORDS_MAX 16

/* The words of a line; the ones it does not have are null. */
typedef struct words {
    size_t count;
    const char* word[WORDS_MAX];
} words_t;

static unsigned line_number;

/* Says why the line cannot be read: the answer of a request that could not be made. */
__attribute__((format(printf, 1, 2))) static bool unreadable(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    fprintf(stderr, "line %u: ", line_number);
    vfprintf(stderr, format, arguments);
    fputc('\n', stderr);
    va_end(arguments);
    return false;
}

static bool read_number(const char* word, int64_t min, int64_t max, int64_t* number)
{
    const char* digits = word[0] == '-' ? word + 1 : word;
    const int base = strncmp(digits, "0x", 2) == 0 ? 16 : 10;
    char* end = NULL;
    errno = 0;
    *number = strtoll(word, &end, base);
    if (end == word || *end != '\0' || errno != 0 || *number < min || *number > max) {
        return unreadable("'%s' is not a number from %" PRId64 " to %" PRId64, word, min, max);
    }
    return true;
}

static bool read_uint32(const char* word, uint32_t* number)
{
    int64_t wide = 0;
    const bool ok = read_number(word, 0, UINT32_MAX, &wide);
    *number = (uint32_t)wide;
    return ok;
}

/* ---- Answers ---- */

static bool print_status(ky_status_t status)
{
    printf("  %" PRIu32 " %s\n", status, ky_status_str(status));
    return true;
}

/* ---- name ENUMERATION VALUE, status CODE ---- */

static const struct enumeration {
    const char* name;
    const char* (*str)(uint32_t value);
} enumerations[] = {
    {"status", ky_status_str},
    {"access_cmd", ky_access_cmd_str},
    {"chip_type", ky_chip_type_str},
    {"chip_rev", ky_chip_rev_str},
    {"dev_node_type", ky_dev_node_type_str},
    {"swid_info_field_bit", ky_swid_info_field_bit_str},
    {"boot_mode", ky_boot_mode_str},
    {"health_cause", ky_health_cause_str},
    {"health_severity", ky_health_severity_str},
    {"event_generate_mode", ky_event_generate_mode_str},
    {"lib_adviser_event_type", ky_lib_adviser_event_type_str},
    {"api_arb_policy", ky_api_arb_policy_str},
    {"acl_search_type", ky_acl_search_type_str},
    {"tcam_opt_mode", ky_tcam_opt_mode_str},
    {"tcam_opt_mode_param", ky_tcam_opt_mode_param_str},
    {"extraction_point_type", ky_extraction_point_type_str},
    {"port_type", ky_port_type_str},
    {"port_mode", ky_port_mode_str},
    {"port_module_state", ky_port_module_state_str},
    {"port_admin_state", ky_port_admin_state_str},
    {"port_oper_state", ky_port_oper_state_str},
    {"port_oper_speed", ky_port_oper_speed_str},
    {"port_phy_speed", ky_port_phy_speed_str},
    {"port_rate", ky_port_rate_str},
    {"port_mapping_mode", ky_port_mapping_mode_str},
    {"port_phys_loopback", ky_port_phys_loopback_str},
    {"port_phys_link_side", ky_port_phys_link_side_str},
    {"port_pause_policy_rx", ky_port_pause_policy_rx_str},
    {"port_pause_policy_tx", ky_port_pause_policy_tx_str},
    {"port_flow_ctrl_mode", ky_port_flow_ctrl_mode_str},
    {"port_flow_ctrl_prio", ky_port_flow_ctrl_prio_str},
    {"port_cntr_prio_tc", ky_port_cntr_prio_tc_str},
    {"port_ber_fec_profile", ky_port_ber_fec_profile_str},
    {"port_ber_alarm_state", ky_port_ber_alarm_state_str},
    {"mgmt_phy_mod_pwr_attr_type", ky_mgmt_phy_mod_pwr_attr_type_str},
    {"mgmt_phy_mod_pwr_mode", ky_mgmt_phy_mod_pwr_mode_str},
    {"cos_buffer_max_mode", ky_cos_buffer_max_mode_str},
    {"cos_port_buff_pool_direction", ky_cos_port_buff_pool_direction_str},
    {"policer_ir_units", ky_policer_ir_units_str},
    {"policer_rate_type", ky_policer_rate_type_str},
    {"policer_meter_type", ky_policer_meter_type_str},
    {"policer_action", ky_policer_action_str},
    {"ip_version", ky_ip_version_str},
    {"router_action", ky_router_action_str},
    {"router_interface_type", ky_router_interface_type_str},
    {"router_vinterface_type", ky_router_vinterface_type_str},
    {"router_qos_mode", ky_router_qos_mode_str},
    {"router_enable_state", ky_router_enable_state_str},
    {"router_rpf_action", ky_router_rpf_action_str},
    {"router_prio_type", ky_router_prio_type_str},
    {"router_ecmp_hash_type", ky_router_ecmp_hash_type_str},
    {"ecmp_type", ky_ecmp_type_str},
    {"ecmp_container_type", ky_ecmp_container_type_str},
    {"next_hop_type", ky_next_hop_type_str},
    {"object_type", ky_object_type_str},
    {"mc_router_ttl_cmd", ky_mc_router_ttl_cmd_str},
    {"mc_next_hop_type", ky_mc_next_hop_type_str},
    {"mc_container_type", ky_mc_container_type_str},
    {"tunnel_type", ky_tunnel_type_str},
    {"tunnel_direction", ky_tunnel_direction_str},
    {"tunnel_underlay_domain_type", ky_tunnel_underlay_domain_type_str},
    {"tunnel_ipinip_gre_mode", ky_tunnel_ipinip_gre_mode_str},
    {"tunnel_decap_key_fields_type", ky_tunnel_decap_key_fields_type_str},
    {"span_type", ky_span_type_str},
    {"span_drop_reason", ky_span_drop_reason_str},
    {"tele_histogram_type", ky_tele_histogram_type_str},
    {"tele_histogram_mode", ky_tele_histogram_mode_str},
    {"tele_threshold_type", ky_tele_threshold_type_str},
    {"host_ifc_trap_id", ky_host_ifc_trap_id_str},
    {"receive_dest_port", ky_receive_dest_port_str},
    {"bridge_mode", ky_bridge_mode_str},
    {"bridge_multiple_vlan_mode", ky_bridge_multiple_vlan_mode_str},
    {"bridge_tunnel_counter_type", ky_bridge_tunnel_counter_type_str},
    {"fm_fid_type", ky_fm_fid_type_str},
    {"fdb_learn_mode", ky_fdb_learn_mode_str},
    {"fdb_notify_type", ky_fdb_notify_type_str},
    {"mstp_mode", ky_mstp_mode_str},
    {"mstp_inst_port_state", ky_mstp_inst_port_state_str},
    {"mstp_exclude_port_state", ky_mstp_exclude_port_state_str},
    {"vlan_qinq_prio_tag_mode", ky_vlan_qinq_prio_tag_mode_str},
    {"lag_hash_bit_number", ky_lag_hash_bit_number_str},
};

static bool request_name(const words_t* words)
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

static bool request_status(const words_t* words)
{
    uint32_t code = 0;
    return read_uint32(words->word[1], &code) && print_status(code);
}

/* ---- check WHAT ... ---- */

static const struct check {
    const char* name;
    enum { TAKES_UINT8, TAKES_UINT16, TAKES_UINT32, TAKES_INT32, TAKES_COUNT } takes;
    union {
        ky_status_t (*uint8)(uint8_t value);
        ky_status_t (*uint16)(uint16_t value);
        ky_status_t (*uint32)(uint32_t value);
        ky_status_t (*int32)(int32_t value);
        ky_status_t (*count)(uint32_t count, const char* description);
    } call;
} checks[] = {
    {"verbosity_level", TAKES_UINT32, {.uint32 = utils_check_verbosity_level}},
    {"array_length", TAKES_COUNT, {.count = utils_check_array_length}},
    {"array_size", TAKES_COUNT, {.count = utils_check_array_size}},
    {"mc_id", TAKES_UINT16, {.uint16 = utils_check_mc_id}},
    {"mstp_inst_id", TAKES_UINT16, {.uint16 = utils_check_mstp_inst_id}},
    {"mstp_inst_port_state", TAKES_UINT32, {.uint32 = utils_check_mstp_inst_port_state}},
    {"swid", TAKES_UINT8, {.uint8 = utils_check_swid}},
    {"port_admin_state", TAKES_INT32, {.int32 = utils_check_port_admin_state}},
    {"device_id", TAKES_UINT8, {.uint8 = utils_check_device_id}},
    {"device_node_type", TAKES_INT32, {.int32 = utils_check_device_node_type}},
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
    int64_t number = 0;
    if (!read_number(
            words->word[2], range_of[check->takes].min, range_of[check->takes].max, &number)) {
        return false;
    }
    switch (check->takes) {
    case TAKES_UINT8:
        return print_status(check->call.uint8((uint8_t)number));
    case TAKES_UINT16:
        return print_status(check->call.uint16((uint16_t)number));
    case TAKES_UINT32:
        return print_status(check->call.uint32((uint32_t)number));
    case TAKES_INT32:
        return print_status(check->call.int32((int32_t)number));
    case TAKES_COUNT:
        return print_status(check->call.count((uint32_t)number, words->word[3]));
    }
    return false;
}

static bool request_check(const words_t* words)
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

static bool request_setting(const words_t* words)
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

static bool request_verbosity(const words_t* words)
{
    static const struct {
        const char* name;
        ky_status_t (*set)(uint32_t level);
    } modules[] = {
        {"UTILS", utils_log_verbosity_level_set},
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

static bool request_trace(const words_t* words)
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

static bool request_port(const words_t* words)
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

/* ---- Lines ---- */

static const struct request {
    const char* name;
    size_t words_min; /* its own name included */
    size_t words_max;
    const char* usage;
    bool (*make)(const words_t* words);
} requests[] = {
    {"name", 3, 3, "ENUMERATION VALUE", request_name},
    {"status", 2, 2, "CODE", request_status},
    {"check", 3, 4, "WHAT VALUE [DESCRIPTION|LIMIT]", request_check},
    {"setting", 2, 3, "use_xm|boot_mode [VALUE]", request_setting},
    {"verbosity", 3, 3, "MODULE LEVEL", request_verbosity},
    {"trace", 2, 2, "on|off", request_trace},
    {"port", 3, 3, "ROW|FUNCTION PORT", request_port},
};

static bool replay_line(char* line)
{
    line[strcspn(line, "\r\n")] = '\0';
    const size_t start = strspn(line, " \t");
    const bool is_request = line[start] != '\0' && line[start] != '#';
    printf("%s%s\n", is_request ? "> " : "", line);

    line[strcspn(line, "#")] = '\0';
    words_t words = {0};
    char* rest = NULL;
    for (char* word = strtok_r(line, " \t", &rest); word != NULL;
         word = strtok_r(NULL, " \t", &rest)) {
        if (words.count == WORDS_MAX) {
            return unreadable("more than %d words", WORDS_MAX);
        }
        words.word[words.count++] = word;
    }
    if (words.count == 0) {
        return true;
    }
    for (size_t i = 0; i < COUNT_OF(requests); i++) {
        if (strcmp(words.word[0], requests[i].name) == 0) {
            if (words.count < requests[i].words_min || words.count > requests[i].words_max) {
                return unreadable("it is '%s %s'", requests[i].name, requests[i].usage);
            }
            return requests[i].make(&words);
        }
    }
    return unreadable("there is no request '%s'", words.word[0]);
}

static int usage(void)
{
    fputs("usage: replay FILE|-\n\nThe requests of a file, one a line:\n", stderr);
    for (size_t i = 0; i < COUNT_OF(requests); i++) {
        fprintf(stderr, "  %-9s %s\n", requests[i].name, requests[i].usage);
    }
    return 2;
}

int main(int argc, char** argv)
{
    if (argc != 2 || strcmp(argv[1], "--help") == 0) {
        return usage();
    }
    FILE* input = strcmp(argv[1], "-") == 0 ? stdin : fopen(argv[1], "r");
    if (input == NULL) {
        perror(argv[1]);
        return 2;
    }
    setvbuf(stdout, NULL, _IOLBF, 0); /* so that answers and messages keep their order */

    char* line = NULL;
    size_t size = 0;
    unsigned unread = 0;
    while (getline(&line, &size, input) != -1) {
        line_number++;
        if (!replay_line(line)) {
            unread++;
        }
    }
    free(line);
    if (ferror(input)) {
        perror(argv[1]);
        return 2;
    }
    if (input != stdin) {
        fclose(input);
    }
    if (unread != 0) {
        fprintf(stderr, "%u of %u lines could not be read\n", unread, line_number);
        return 1;
    }
    return 0;
}
