/* The requests about multicast: routes, egress RIFs, activity, counters and RPF groups. */
#include "request.h"

#include <ky_values.h>

#include <stdio.h>
#include <string.h>

/* OPTION=VALUE, and what it fills in. */
typedef struct option {
    const char* name;
    const char* placeholder;
    uint32_t* value;
    ky_ip_prefix_t* prefix; /* null for a value */
} option_t;

static const char* option_name(const void* options, size_t index)
{
    return ((const option_t*)options)[index].name;
}

/* Reads the arguments that are options; the others are the command, the source and the group. */
static bool read_options(const request_t* request, const option_t* options, size_t count)
{
    const names_t names = {"option", option_name, options, count};
    for (size_t i = 0; i < request->count; i++) {
        char name[32] = "";
        const char* equals = strchr(request->text[i], '=');
        if (equals == NULL) {
            continue;
        }
        sscanf(request->text[i], "%31[^=]", name);
        const size_t index = find(&names, name, 0);
        if (index == count) {
            return no_such(&names, name);
        }
        const option_t* option = &options[index];
        if (!(option->prefix != NULL
                  ? read_prefix(equals + 1, option->prefix)
                  : read_value(option->placeholder, equals + 1, option->value))) {
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
        {"entries", "UINT32", &entries, NULL},
        {"source", "SOURCE", NULL, &filter.source_addr},
        {"group", "GROUP", NULL, &filter.mc_group_addr},
        {"by_rif", "UINT32", &filter.ingress_rif_valid, NULL},
        {"by_rif_in_groups", "UINT32", &filter.ingress_rif_incl_rpf_groups_valid, NULL},
    };
    const ky_access_cmd_t cmd = request->value[0];
    const bool has_key = request->key.source_addr.version != KY_IP_VERSION_NONE;
    if (has_key != (cmd == KY_ACCESS_CMD_GET)) {
        return report(has_key ? "it takes a filter alone" : "a get takes a source and a group");
    }
    if (!read_options(request, options, has_key ? 1 : COUNT_OF(options))) {
        return false;
    }
    filter.source_addr_valid = filter.source_addr.version != KY_IP_VERSION_NONE;
    filter.mc_group_addr_valid = filter.mc_group_addr.version != KY_IP_VERSION_NONE;
    return answer_with(
        ky_router_utils_validate_mc_route_get(cmd, 0, &request->key, &filter, NULL, &entries));
}

static bool route_set(const request_t* request)
{
    ky_mc_route_attr_t attr = {
        .ttl_cmd = KY_MC_ROUTER_TTL_CMD_DEC,
        .prio_type = KY_ROUTER_PRIO_TYPE_MANUAL,
        .user_token_valid = 1};
    ky_mc_route_data_t data = {.action = KY_ROUTER_ACTION_FORWARD};
    const bool has_key = request->key.source_addr.version != KY_IP_VERSION_NONE;
    uint32_t token = 0;
    uint32_t mask = KY_USER_TOKEN_MAX;
    const option_t options[] = {
        {"rpf", "router_rpf_action", &attr.rpf_action, NULL},
        {"rpf_group", "UINT32", &attr.rpf_group_id, NULL},
        {"prio", "router_prio_type", &attr.prio_type, NULL},
        {"ttl", "mc_router_ttl_cmd", &attr.ttl_cmd, NULL},
        {"token", "UINT16", &token, NULL},
        {"token_mask", "UINT16", &mask, NULL},
        {"action", "router_action", &data.action, NULL},
        {"rifs", "UINT32", &data.egress_rif_cnt, NULL},
        {"container", "UINT32", &data.egress_container_id, NULL},
    };
    if (!read_options(request, options, COUNT_OF(options))) {
        return false;
    }
    attr.user_token_value = (uint16_t)token;
    attr.user_token_mask = (uint16_t)mask;
    return answer_with(ky_router_utils_validate_mc_route_set(
        request->value[0], 0, has_key ? &request->key : NULL, &attr, &data));
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
    return request->count <= count || report("it takes no '%s'", request->text[count]);
}

ANSWER(
    activity,
    ky_router_utils_validate_mc_route_activity_get(request->value[0], 0, &request->key, NULL))

#define GET_OR_SET(name, get, set)                                                   \
    bool answer_##name(const request_t* request)                                     \
    {                                                                                \
        const ky_access_cmd_t cmd = request->value[0];                               \
        const ky_mc_route_key_t* key = &request->key;                                \
        return cmd == KY_ACCESS_CMD_GET ? takes_none(request, 3) && answer_with(get) \
                                        : answer_with(set);                          \
    }
GET_OR_SET(
    egress, ky_router_utils_validate_mc_egress_rif_get(0, key, NULL, NULL),
    ky_router_utils_validate_mc_egress_rif_set(cmd, 0, key, NULL, request->value[3]))
GET_OR_SET(
    counter, ky_router_utils_validate_mc_route_counter_bind_get(0, key, NULL),
    ky_router_utils_validate_mc_route_counter_bind_set(cmd, 0, key, request->value[3]))

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
