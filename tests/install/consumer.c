/* A program of the library's users: it sees the installed headers only, as C and as C++. */
#include <ky_common.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <string.h>

#define KY_LOG_MODULE "CONSUMER"
#define KY_LOG_VERBOSITY consumer_verbosity_level

static uint32_t consumer_verbosity_level = KY_LOG_LEVEL_MAX;

static ky_status_t consume(uint32_t port)
{
    KY_TRACE_ENTRY();
    ky_status_t status = utils_check_device_id(1);
    if (status == KY_STATUS_SUCCESS && !is_port_type_valid(159, port)) {
        status = KY_FAIL(KY_STATUS_PARAM_ERROR, "port 0x%08X is refused\n", port);
    }
    KY_LOG_DEBUG("done\n");
    KY_TRACE_EXIT();
    return status;
}

int main(void)
{
    g_ky_log_module_func_enable = 1;
    const int good =
        consume(0x10000001) == KY_STATUS_SUCCESS && consume(0x40000001) == KY_STATUS_PARAM_ERROR &&
        strcmp(ky_access_cmd_str(KY_ACCESS_CMD_GET_FIRST), "GET FIRST") == 0 &&
        strcmp(ky_port_type_str(4), "CPU") == 0 &&
        ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_DELETE_ALL, 0, NULL, NULL, NULL) ==
            KY_STATUS_SUCCESS;
    return good ? 0 : 1;
}
