/* The requests about multicast: routes, egress RIFs, activity, counters and RPF groups.
 *
 * A key is two words, source and group: "10.1.0.0/16 239.1.1.0/24". */
#include "replay.h"

#include <ky_names.h>

#include <stdio.h>
#include <string.h>

static bool read_key(const words_t* words, size_t first, ky_mc_route_key_t* key)
{
    if (words->count < first + 2) {
        return unreadable("a source and a group are missing");
    }
    return read_prefix(words->word[first], &key->source_addr) &&
           read_prefix(words->word[first + 1], &key->mc_group_addr);
}

/* ---- Options: "name=value" ---- */

/* What one option fills in. */
typedef struct option {
    const char* name;
    const char* (*name_of)(uint32_t value); /* null for a plain number */
    uint32_t* number;                       /* null for a prefix */
    ky_ip_prefix_t* prefix;
    uint32_t* is_given; /* becomes 1; may be null */
} option_t;

static bool read_option(const char* word, const option_t* options, size_t count)
{
    const size_t length = strcspn(word, "=");
    for (size_t i = 0; i < count && word[length] == '='; i++) {
        const option_t* option = &options[i];
        if (strlen(option->name) != length || strncmp(word, option->name, length) != 0) {
            continue;
        }
        const char* value = word + length + 1;
        if (option->is_given != NULL) {
            *option->is_given = 1;
        }
        return option->number == NULL    ? read_prefix(value, option->prefix)
               : option->name_of == NULL ? read_uint32(value, option->number)
                                         : read_value(value, option->name_of, option->number);
    }
    return unreadable("there is no option '%s' here", word);
}

static bool read_options(const words_t* words, size_t first, const option_t* options, size_t count)
{
    for (size_t i = first; i < words->count; i++) {
        if (!read_option(words->word[i], options, count)) {
            return false;
        }
    }
    return true;
}

/* ---- route COMMAND [SOURCE GROUP] [OPTION...] ---- */

/* The reading commands: what to read is given by a key or by a filter. */
static bool route_get(const words_t* words, ky_access_cmd_t cmd)
{
    ky_mc_route_key_t key = {0};
    ky_mc_route_get_filter_t filter = {0};
    uint32_t entries = 1;
    const option_t options[] = {
        {"entries", NULL, &entries, NULL, NULL},
        {"source", NULL, NULL, &filter.source_addr, &filter.source_addr_valid},
        {"group", NULL, NULL, &filter.mc_group_addr, &filter.mc_group_addr_valid},
        {"by_rif", NULL, &filter.ingress_rif_valid, NULL, NULL},
        {"by_rif_in_groups", NULL, &filter.ingress_rif_incl_rpf_groups_valid, NULL, NULL},
    };
    // A get names its route; a filter would not be looked at.
    const bool has_key = cmd == KY_ACCESS_CMD_GET;
    if (has_key && !read_key(words, 2, &key)) {
        return false;
    }
    return read_options(words, has_key ? 4 : 2, options, has_key ? 1 : COUNT_OF(options)) &&
           print_status(
               ky_router_utils_validate_mc_route_get(cmd, 0, &key, &filter, NULL, &entries));
}

static bool route_set(const words_t* words, ky_access_cmd_t cmd)
{
    ky_mc_route_key_t key = {0};
    ky_mc_route_attr_t attr = {.ttl_cmd = 1, .prio_type = 1};
    ky_mc_route_data_t data = {.action = 2};
    uint32_t token = 0;
    uint32_t token_mask = KY_USER_TOKEN_MAX;
    const option_t options[] = {
        {"rpf", ky_router_rpf_action_str, &attr.rpf_action, NULL, NULL},
        {"rpf_group", NULL, &attr.rpf_group_id, NULL, NULL},
        {"prio", ky_router_prio_type_str, &attr.prio_type, NULL, NULL},
        {"ttl", ky_mc_router_ttl_cmd_str, &attr.ttl_cmd, NULL, NULL},
        {"token", NULL, &token, NULL, &attr.user_token_valid},
        {"token_mask", NULL, &token_mask, NULL, &attr.user_token_valid},
        {"action", ky_router_action_str, &data.action, NULL, NULL},
        {"rifs", NULL, &data.egress_rif_cnt, NULL, NULL},
        {"container", NULL, &data.egress_container_id, NULL, NULL},
    };
    const bool has_key = words->count > 2;
    if ((has_key && !read_key(words, 2, &key)) ||
        !read_options(words, 4, options, COUNT_OF(options))) {
        return false;
    }
    if (token > UINT16_MAX || token_mask > UINT16_MAX) {
        return unreadable("a user token and its mask have 16 bits");
    }
    attr.user_token_value = (uint16_t)token;
    attr.user_token_mask = (uint16_t)token_mask;
    return print_status(
        ky_router_utils_validate_mc_route_set(cmd, 0, has_key ? &key : NULL, &attr, &data));
}

bool request_route(const words_t* words)
{
    ky_access_cmd_t cmd = KY_ACCESS_CMD_NONE;
    if (!read_command(words->word[1], &cmd)) {
        return false;
    }
    switch (cmd) {
    case KY_ACCESS_CMD_GET:
    case KY_ACCESS_CMD_GET_FIRST:
    case KY_ACCESS_CMD_GET_NEXT:
    case KY_ACCESS_CMD_COUNT:
        return route_get(words, cmd);
    default:
        return route_set(words, cmd);
    }
}

/* ---- egress COMMAND SOURCE GROUP [COUNT], activity COMMAND SOURCE GROUP ---- */

bool request_egress(const words_t* words)
{
    ky_access_cmd_t cmd = KY_ACCESS_CMD_NONE;
    ky_mc_route_key_t key = {0};
    uint32_t count = 0;
    if (!read_command(words->word[1], &cmd) || !read_key(words, 2, &key) ||
        (words->word[4] != NULL && !read_uint32(words->word[4], &count))) {
        return false;
    }
    if (cmd == KY_ACCESS_CMD_GET && words->word[4] != NULL) {
        return unreadable("a get takes no count");
    }
    return print_status(
        cmd == KY_ACCESS_CMD_GET
            ? ky_router_utils_validate_mc_egress_rif_get(0, &key, NULL, NULL)
            : ky_router_utils_validate_mc_egress_rif_set(cmd, 0, &key, NULL, count));
}

bool request_activity(const words_t* words)
{
    ky_access_cmd_t cmd = KY_ACCESS_CMD_NONE;
    ky_mc_route_key_t key = {0};
    return read_command(words->word[1], &cmd) && read_key(words, 2, &key) &&
           print_status(ky_router_utils_validate_mc_route_activity_get(cmd, 0, &key, NULL));
}

/* ---- counter COMMAND SOURCE GROUP [COUNTER] ---- */

bool request_counter(const words_t* words)
{
    ky_access_cmd_t cmd = KY_ACCESS_CMD_NONE;
    ky_mc_route_key_t key = {0};
    uint32_t counter = 0;
    if (!read_command(words->word[1], &cmd) || !read_key(words, 2, &key) ||
        (words->word[4] != NULL && !read_uint32(words->word[4], &counter))) {
        return false;
    }
    if (cmd == KY_ACCESS_CMD_GET && words->word[4] != NULL) {
        return unreadable("a get takes no counter");
    }
    return print_status(
        cmd == KY_ACCESS_CMD_GET
            ? ky_router_utils_validate_mc_route_counter_bind_get(0, &key, NULL)
            : ky_router_utils_validate_mc_route_counter_bind_set(cmd, 0, &key, counter));
}

/* ---- rpf-group COMMAND GROUP [INTERFACE_TYPE...] ---- */

bool request_rpf_group(const words_t* words)
{
    ky_access_cmd_t cmd = KY_ACCESS_CMD_NONE;
    uint32_t group = 0;
    ky_router_vinterface_t vifs[WORDS_MAX] = {{0}};
    uint32_t count = 0;
    if (!read_command(words->word[1], &cmd) || !read_uint32(words->word[2], &group)) {
        return false;
    }
    for (size_t i = 3; i < words->count; i++) {
        if (!read_value(words->word[i], ky_router_vinterface_type_str, &vifs[count++].type)) {
            return false;
        }
    }
    const bool is_get =
        cmd == KY_ACCESS_CMD_GET || cmd == KY_ACCESS_CMD_GET_FIRST || cmd == KY_ACCESS_CMD_GET_NEXT;
    if (is_get && count != 0) {
        return unreadable("a get takes no interfaces");
    }
    return print_status(
        is_get ? ky_router_utils_validate_mc_rpf_group_get(cmd, &group, NULL, NULL)
               : ky_router_utils_validate_mc_rpf_group_set(cmd, &group, vifs, count));
}
