/* A module of the SDK to start your own from: IPTV, where a port watches a multicast channel.
 *
 * Names that begin with ky_, utils_, adviser_ or is_port_, in either case, are the library's, those
 * with cl_ the component library's; replace all others. The source is C and C++. Like the adviser,
 * pools and maps, the module is not thread-safe: its callers take turns. */
#define KY_LOG_MODULE "IPTV"
#define KY_LOG_VERBOSITY iptv_verbosity_level

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>
#include <ky_values.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>

#define PORT_LEAVES ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID
#define PORT_STAYS ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID
#define PORT_HAS_LEFT ADVISER_EVENT_PORT_DELETED_FROM_SWID
#define NO_PORT 0xFFFFFFFF

static uint32_t iptv_verbosity_level = KY_LOG_LEVEL_DEFAULT;

static ky_status_t iptv_log_verbosity_level_set(uint32_t level)
{
    const ky_status_t status = utils_check_verbosity_level(level);
    if (status == KY_STATUS_SUCCESS) {
        KY_STORE(iptv_verbosity_level, level);
    }
    return status;
}

/* ---- The database: a viewer for each port that watches, filed under the port ---- */

typedef struct viewer {
    cl_pool_item_t pool_item; /* first: the pool hands a record out by its start */
    cl_map_item_t map_item;
    ky_mc_route_key_t channel;
    void* samples; /* an array of uint32_t */
} viewer_t;

static cl_qpool_t viewer_pool;
static cl_qmap_t viewer_map;
static uint32_t leaving_port = NO_PORT;

static void* viewer_of_map_item(cl_map_item_t* item)
{
    return (char*)item - offsetof(viewer_t, map_item);
}

static void* viewer_of_pool_item(cl_pool_item_t* item)
{
    return item;
}

static cl_map_item_t* map_item_of_viewer(void* viewer)
{
    return &((viewer_t*)viewer)->map_item;
}

static cl_pool_item_t* pool_item_of_viewer(void* viewer)
{
    return &((viewer_t*)viewer)->pool_item;
}

/* ---- Joining a channel ---- */

/* Pointers first, then ranges, then the rest; each check has logged why it fails. */
static ky_status_t check_join(uint32_t log_port, const ky_mc_route_key_t* channel, uint32_t samples)
{
    ky_mc_route_attr_t attr;
    ky_mc_route_data_t data;
    ky_status_t status = utils_check_pointer(channel, "channel");
    if (status != KY_STATUS_SUCCESS) {
        return status;
    }
    status = utils_check_array_length(samples, "samples");
    if (status != KY_STATUS_SUCCESS) {
        return status;
    }
    if (!is_port_type_valid(KY_PORT_ROW_SDK_MC_CONTAINER_SET, log_port)) {
        return KY_STATUS_PARAM_ERROR;
    }
    if (log_port == leaving_port) {
        return KY_FAIL(KY_STATUS_RESOURCE_IN_USE, "Port 0x%08X is about to leave\n", log_port);
    }
    memset(&attr, 0, sizeof attr);
    attr.rpf_action = KY_ROUTER_RPF_ACTION_DISABLED;
    attr.ttl_cmd = KY_MC_ROUTER_TTL_CMD_DEC;
    attr.prio_type = KY_ROUTER_PRIO_TYPE_MANUAL;
    memset(&data, 0, sizeof data);
    data.action = KY_ROUTER_ACTION_FORWARD;
    data.egress_rif_cnt = 1;
    return ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_ADD, 0, channel, &attr, &data);
}

static ky_status_t iptv_join(uint32_t log_port, const ky_mc_route_key_t* channel, uint32_t samples)
{
    void* record = NULL;
    KY_TRACE_ENTRY();
    ky_status_t status = check_join(log_port, channel, samples);
    if (status == KY_STATUS_SUCCESS) {
        status = utils_db_qmap_item_add(
            log_port, &viewer_map, &viewer_pool, viewer_of_map_item, viewer_of_pool_item,
            map_item_of_viewer, &record);
    }
    if (status == KY_STATUS_SUCCESS) {
        viewer_t* viewer = (viewer_t*)record;
        viewer->channel = *channel; /* the pool does not clear its records */
        status = utils_clr_memory_get(
            &viewer->samples, samples, sizeof(uint32_t), KY_MEM_TYPE_TELEMETRY);
        if (status != KY_STATUS_SUCCESS) { /* what was done is undone */
            utils_db_qmap_item_del(
                log_port, &viewer_map, &viewer_pool, viewer_of_map_item, pool_item_of_viewer, NULL);
        }
    }
    KY_TRACE_EXIT();
    return status;
}

/* ---- The module's life ---- */

/* The advisor: a port that watches may not leave. One that may is closed for new viewers until it
 * has left, or until the rollback: another advisor has vetoed, or the deletion has failed. */
static ky_status_t on_port(adviser_event_t event, void* event_data)
{
    const uint32_t log_port = *(const uint32_t*)event_data;
    if (event != PORT_LEAVES) {
        leaving_port = leaving_port == log_port ? NO_PORT : leaving_port;
        return KY_STATUS_SUCCESS;
    }
    if (utils_qmap_key_exists(&viewer_map, log_port, NULL) == KY_STATUS_SUCCESS) {
        return KY_FAIL(KY_STATUS_RESOURCE_IN_USE, "Port 0x%08X watches a channel\n", log_port);
    }
    leaving_port = log_port;
    return KY_STATUS_SUCCESS;
}

static ky_status_t iptv_init(void)
{
    KY_TRACE_ENTRY();
    ky_status_t status =
        utils_qpool_qmap_init(&viewer_pool, &viewer_map, 4, 64, 4, sizeof(viewer_t), "IPTV viewer");
    if (status == KY_STATUS_SUCCESS) {
        status = adviser_register_event(KY_ACCESS_CMD_ADD, PORT_LEAVES, on_port);
        if (status == KY_STATUS_SUCCESS) {
            status = adviser_register_event(KY_ACCESS_CMD_ADD, PORT_HAS_LEFT, on_port);
            if (status != KY_STATUS_SUCCESS) {
                adviser_register_event(KY_ACCESS_CMD_DELETE, PORT_LEAVES, on_port);
            }
        }
        if (status != KY_STATUS_SUCCESS) {
            cl_qpool_destroy(&viewer_pool);
        }
    }
    KY_TRACE_EXIT();
    return status;
}

static void iptv_deinit(void)
{
    KY_TRACE_ENTRY();
    adviser_register_event(KY_ACCESS_CMD_DELETE, PORT_LEAVES, on_port);
    adviser_register_event(KY_ACCESS_CMD_DELETE, PORT_HAS_LEFT, on_port);
    for (cl_map_item_t* item = cl_qmap_head(&viewer_map); item != cl_qmap_end(&viewer_map);
         item = cl_qmap_next(item)) {
        utils_memory_put(
            ((const viewer_t*)viewer_of_map_item(item))->samples, KY_MEM_TYPE_TELEMETRY);
    }
    utils_db_qmap_del(&viewer_map, &viewer_pool, viewer_of_map_item, pool_item_of_viewer);
    cl_qpool_destroy(&viewer_pool); /* a map needs no end */
    KY_TRACE_EXIT();
}

/* ---- The process around the module ---- */

static int failures = 0;

static void expect(const char* call, ky_status_t found, ky_status_t expected)
{
    printf("%s: %s\n", call, ky_status_str(found));
    failures += found != expected;
}

#define EXPECT(call, expected) expect(#call, call, expected)

int main(void)
{
    const ky_ip_prefix_t sender = {
        KY_IP_VERSION_IPV4, {{0x0A010203, 0xFFFFFFFF}}}; /* 10.1.2.3/32 */
    const ky_mc_route_key_t news = {sender, {KY_IP_VERSION_IPV4, {{0xEF010101, 0xFFFFFFFF}}}};
    const ky_mc_route_key_t unicast = {sender, sender};
    uint32_t port = 0x00010001;
    uint32_t other = 0x00010002;
    uint32_t third = 0x00010003;
    setvbuf(stdout, NULL, _IOLBF, 0); /* in order with the messages on standard error */

    EXPECT(adviser_init(), KY_STATUS_SUCCESS);
    EXPECT(iptv_init(), KY_STATUS_SUCCESS);
    EXPECT(iptv_log_verbosity_level_set(9), KY_STATUS_PARAM_EXCEEDS_RANGE);

    EXPECT(iptv_join(port, &news, 0), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT(iptv_join(0x40000000, &news, 60), KY_STATUS_PARAM_ERROR);
    EXPECT(iptv_join(port, &unicast, 60), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT(iptv_join(port, &news, 60), KY_STATUS_SUCCESS);
    EXPECT(iptv_join(port, &news, 60), KY_STATUS_ENTRY_ALREADY_EXISTS);

    EXPECT(adviser_process_event(PORT_LEAVES, &port), KY_STATUS_RESOURCE_IN_USE);
    EXPECT(adviser_process_event(PORT_LEAVES, &other), KY_STATUS_SUCCESS);
    EXPECT(iptv_join(other, &news, 60), KY_STATUS_RESOURCE_IN_USE);
    EXPECT(adviser_process_event(PORT_STAYS, &other), KY_STATUS_SUCCESS); /* the deletion failed */
    EXPECT(iptv_join(other, &news, 60), KY_STATUS_SUCCESS);
    EXPECT(adviser_process_event(PORT_LEAVES, &third), KY_STATUS_SUCCESS);
    EXPECT(adviser_process_event(PORT_HAS_LEFT, &third), KY_STATUS_SUCCESS);
    EXPECT(iptv_join(third, &news, 60), KY_STATUS_SUCCESS); /* a new port of that number */

    iptv_deinit();
    EXPECT(adviser_deinit(), KY_STATUS_SUCCESS);
    EXPECT(utils_memory_dbg_dump(stdout), KY_STATUS_SUCCESS);
    return failures != 0;
}
