/* The requests about multicast: routes, egress RIFs, activity, counters and RPF groups. */
#include "names.h"
#include "output.h"
#include "request.h"
#include "words.h"

#include <ky_values.h>

#include <stdio.h>
#include <string.h>

static bool has_source(const request_t* request)
{
    return request->key.source_addr.version != KY_IP_VERSION_NONE;
}

static bool has_group(const request_t* request)
{
    return request->key.mc_group_addr.version != KY_IP_VERSION_NONE;
}

/* OPTION=VALUE, and what it fills in. */
typedef struct option {
    const char* name;
    uint32_t* number;
    const char* enumeration; /* null for a plain number */
    ky_ip_prefix_t* prefix;  /* null for a number */
} option_t;

static const char* option_name(const void* options, size_t index)
{
    return ((const option_t*)options)[index].name;
}

/* Reads the options behind the source and the group; those that there are end with a null name. */
static bool read_options(const request_t* request, const option_t* options)
{
    const names_t names = {"option", option_name, options};
    for (size_t i = 1; i < request->count; i++) {
        const char* value = strchr(request->text[i], '=');
        if (value == NULL) {
            continue;
        }
        char name[32];
        size_t index = 0;
        snprintf(name, sizeof name, "%.*s", (int)(value - request->text[i]), request->text[i]);
        if (!find(&names, name, &index)) {
            return no_such(&names, name);
        }
        const option_t* option = &options[index];
        value++;
        if (!(option->prefix != NULL        ? read_prefix(value, option->prefix)
              : option->enumeration != NULL ? read_value(option->enumeration, value, option->number)
                                            : read_number(value, 0, UINT32_MAX, option->number))) {
            return false;
        }
    }
    return true;
}

/* What to read is given by a key or by a filter: for GET, whose options end early, a filter would
 * not be looked at. */
static bool route_get(const request_t* request)
{
    ky_mc_route_get_filter_t filter = {0};
    uint32_t entries = 1;
    const ky_access_cmd_t cmd = request->value[0];
    const bool has_key = cmd == KY_ACCESS_CMD_GET;
    const option_t options[] = {
        {"entries", &entries, NULL, NULL},
        {has_key ? NULL : "source", NULL, NULL, &filter.source_addr},
        {"group", NULL, NULL, &filter.mc_group_addr},
        {"by_rif", &filter.ingress_rif_valid, NULL, NULL},
        {"by_rif_in_groups", &filter.ingress_rif_incl_rpf_groups_valid, NULL, NULL},
        {NULL, NULL, NULL, NULL},
    };
    if (has_key ? !has_group(request) : has_source(request)) {
        return report(has_key ? "a get takes a source and a group" : "it takes a filter alone");
    }
    if (!read_options(request, options)) {
        return false;
    }
    filter.source_addr_valid = filter.source_addr.version != 0;
    filter.mc_group_addr_valid = filter.mc_group_addr.version != 0;
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
        {NULL, NULL, NULL, NULL},
    };
    if (has_source(request) && !has_group(request)) {
        return report("a group is missing");
    }
    if (!read_options(request, options)) {
        return false;
    }
    if (token > UINT16_MAX || mask > UINT16_MAX) {
        return report("a user token and its mask have 16 bits");
    }
    attr.user_token_value = (uint16_t)token;
    attr.user_token_mask = (uint16_t)mask;
    const ky_mc_route_key_t* key = has_source(request) ? &request->key : NULL;
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
    return request->count <= count || report("it takes no '%s'", request->text[count]);
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
