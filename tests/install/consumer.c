/* A user's module, built against the installed headers alone: in any C and, by consumer.cpp, in any
 * C++. */
#include <ky_adviser.h>
#include <ky_common.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>
#include <ky_values.h>

#include <string.h>

#define KY_LOG_MODULE "CONSUMER"
#define KY_LOG_VERBOSITY consumer_verbosity_level

static uint32_t consumer_verbosity_level = KY_LOG_LEVEL_MAX;

static ky_status_t consume(uint32_t port)
{
    ky_status_t status = KY_STATUS_SUCCESS;
    const uint32_t level = KY_LOG_LEVEL(port);
    KY_TRACE_ENTRY();
    if (utils_check_device_id(1) == KY_STATUS_SUCCESS)
        status = is_port_type_valid(KY_PORT_ROW_VLAN_PORTS_SET, port)
                     ? KY_STATUS_SUCCESS
                     : KY_FAIL(KY_STATUS_PARAM_ERROR, "port 0x%08X is refused\n", port);
    else
        KY_LOG_ERROR("no device\n");
    KY_LOG_DEBUG("%u%s%u%s%u%s%u%s%u\n", 1U, "a", 2U, "b", 3U, "c", 4U, "d", level);
    KY_TRACE_EXIT();
    return status;
}

static int is_indexed(void)
{
    cl_map_item_t item;
    cl_qmap_t map;
    cl_qmap_init(&map);
    cl_qmap_insert(&map, 7, &item);
    return cl_qmap_head(&map) == &item && cl_qmap_next(&item) == cl_qmap_end(&map) &&
           utils_qmap_is_empty(&map) == KY_STATUS_DB_NOT_EMPTY;
}

int main(void)
{
    g_ky_log_module_func_enable = 1;
    return !(
        consume(0x10000001) == KY_STATUS_SUCCESS && consume(0x40000001) == KY_STATUS_PARAM_ERROR &&
        KY_LOG_LEVEL(KY_LOG_MASK_NOTICE) == KY_LOG_LEVEL_DEFAULT && is_indexed() &&
        strcmp(ky_access_cmd_str(KY_ACCESS_CMD_GET_FIRST), "GET FIRST") == 0 &&
        adviser_process_event(ADVISER_EVENT_PORT_ADDED, NULL) == KY_STATUS_DB_NOT_INITIALIZED &&
        ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_DELETE_ALL, 0, NULL, NULL, NULL) ==
            KY_STATUS_SUCCESS);
}
