/* The requests about multicast: routes, egress RIFs, activity, counters and RPF groups. */
#include "kriolilglu.h"

#include <stdio.h>
#include <string.h>

/* OPTION=VALUE, and what it fills in. */
typedef struct option {
    const char* name;
    uint32_t* number;
    const char* enumeration; /* null for a plain number */
    ky_ip_prefix_t* prefix;  /* null for a number */
} option_t;

static bool read_options(const request_t* request, const option_t* options, size_t count)
{
    for (const char* const* each = request->word + request->count; *each != NULL; each++) {
        char name[32] = "";
        sscanf(*each, "%31[^=]", name);
        const char* value = strchr(*each, '=') + 1;
        const option_t* option = find("option", name, options, count, sizeof options[0]);
        if (option == NULL) {
            return false;
        }
        if (!(option->prefix != NULL ? read_prefix(value, option->prefix)
              : option->enumeration == NULL
                  ? read_uint32(value, option->number)
                  : read_value(value, option->enumeration, option->number))) {
            return false;
        }
    }
    return true;
}

/* What to read is given by a key or by a filter: for GET, a filter would not be looked at. */
static bool route_get(const request_t* request)
{
    ky_mc_route_get_filter_t filter = {0};
    uint32_t entries = 1;
    const option_t options[] = {
        {"entries", &entries, NULL, NULL},
        {"source", NULL, NULL, &filter.source_addr},
        {"group", NULL, NULL, &filter.mc_group_addr},
        {"by_rif", &filter.ingress_rif_valid, NULL, NULL},
        {"by_rif_in_groups", &filter.ingress_rif_incl_rpf_groups_valid, NULL, NULL},
    };
    const ky_access_cmd_t cmd = request->value[0];
    const bool has_key = cmd == KY_ACCESS_CMD_GET;
    if (request->count != (has_key ? 3 : 1)) {
        return unreadable(has_key ? "a get takes a source and a group" : "it takes a filter alone");
    }
    if (!read_options(request, options, has_key ? 1 : COUNT_OF(options))) {
        return false;
    }
    filter.source_addr_valid = filter.source_addr.version != 0;
    filter.mc_group_addr_valid = filter.mc_group_addr.version != 0;
    return answer_with(
        ky_router_utils_validate_mc_route_get(cmd, 0, &request->key, &filter, NULL, &entries));
}

static bool route_set(const request_t* request)
{
    ky_mc_route_attr_t attr = {.ttl_cmd = 1, .prio_type = 1, .user_token_valid = 1};
    ky_mc_route_data_t data = {.action = 2};
    uint32_t token = 0;
    uint32_t mask = KY_USER_TOKEN_MAX;
    const option_t options[] = {
        {"rpf", &attr.rpf_action, "router_rpf_action", NULL},
        {"rpf_group", &attr.rpf_group_id, NULL, NULL},
        {"prio", &attr.prio_type, "router_prio_type", NULL},
        {"ttl", &attr.ttl_cmd, "mc_router_ttl_cmd", NULL},
        {"token", &token, NULL, NULL},
        {"token_mask", &mask, NULL, NULL},
        {"action", &data.action, "router_action", NULL},
        {"rifs", &data.egress_rif_cnt, NULL, NULL},
        {"container", &data.egress_container_id, NULL, NULL},
    };
    if (request->count == 2) {
        return unreadable("a group is missing");
    }
    if (!read_options(request, options, COUNT_OF(options))) {
        return false;
    }
    if (token > UINT16_MAX || mask > UINT16_MAX) {
        return unreadable("a user token and its mask have 16 bits");
    }
    attr.user_token_value = (uint16_t)token;
    attr.user_token_mask = (uint16_t)mask;
    const ky_mc_route_key_t* key = request->count == 3 ? &request->key : NULL;
    return answer_with(
        ky_router_utils_validate_mc_route_set(request->value[0], 0, key, &attr, &data));
}

static bool reads(ky_access_cmd_t cmd)
{
    return cmd == KY_ACCESS_CMD_GET || cmd == KY_ACCESS_CMD_GET_FIRST ||
           cmd == KY_ACCESS_CMD_GET_NEXT || cmd == KY_ACCESS_CMD_COUNT;
}

bool answer_route(const request_t* request)
{
    return reads(request->value[0]) ? route_get(request) : route_set(request);
}

/* ---- egress, activity, counter, rpf-group: a get takes nothing behind what it is about ---- */

static bool takes_none(const request_t* request, size_t count)
{
    return request->count <= count || unreadable("it takes no '%s'", request->word[count]);
}

bool answer_egress(const request_t* request)
{
    const ky_access_cmd_t cmd = request->value[0];
    if (cmd == KY_ACCESS_CMD_GET) {
        return takes_none(request, 3) && answer_with(ky_router_utils_validate_mc_egress_rif_get(
                                             0, &request->key, NULL, NULL));
    }
    return answer_with(
        ky_router_utils_validate_mc_egress_rif_set(cmd, 0, &request->key, NULL, request->value[3]));
}

bool answer_activity(const request_t* request)
{
    return answer_with(
        ky_router_utils_validate_mc_route_activity_get(request->value[0], 0, &request->key, NULL));
}

bool answer_counter(const request_t* request)
{
    const ky_access_cmd_t cmd = request->value[0];
    if (cmd == KY_ACCESS_CMD_GET) {
        return takes_none(request, 3) &&
               answer_with(
                   ky_router_utils_validate_mc_route_counter_bind_get(0, &request->key, NULL));
    }
    return answer_with(ky_router_utils_validate_mc_route_counter_bind_set(
        cmd, 0, &request->key, request->value[3]));
}

bool answer_rpf_group(const request_t* request)
{
    const ky_access_cmd_t cmd = request->value[0];
    const uint32_t* group = &request->value[1];
    if (reads(cmd)) {
        return takes_none(request, 2) &&
               answer_with(ky_router_utils_validate_mc_rpf_group_get(cmd, group, NULL, NULL));
    }
    ky_router_vinterface_t vifs[WORDS_MAX] = {{0}};
    const size_t count = request->count - 2;
    for (size_t i = 0; i < count; i++) {
        vifs[i].type = request->value[2 + i];
    }
    return answer_with(
        ky_router_utils_validate_mc_rpf_group_set(cmd, group, vifs, (uint32_t)count));
}
