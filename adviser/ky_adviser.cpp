// The registry of callbacks for life-cycle events: module "ADVISER".
#include "ky_adviser.h"

#include "ky_names.h"
#include "name_table.h"

#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>
#include <cstddef>

#define KY_LOG_MODULE "ADVISER"
#define KY_LOG_VERBOSITY adviser_verbosity_level

/* Fails with a message that ends with the name of the status. */
#define FAIL_BY_NAME(status, ...) KY_FAIL(status, __VA_ARGS__, ky_status_str(status))

namespace {

constinit uint32_t adviser_verbosity_level = KY_LOG_LEVEL_DEFAULT;

// ---- Events ----

constexpr adviser_event_t EVENT_MIN = ADVISER_EVENT_PORT_ADDED;
constexpr adviser_event_t ROLLED_BACK_EVENT = ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID;
constexpr adviser_event_t FAIL_EVENT = ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;

const char* adviser_event_str(adviser_event_t event)
{
    static constexpr NameTable<ADVISER_EVENT_MAX> table({
        {ADVISER_EVENT_NONE, "NONE"},
        {ADVISER_EVENT_PORT_ADDED, "PORT-ADDED"},
        {ADVISER_EVENT_PORT_DELETED, "PORT-DELETED"},
        {ADVISER_EVENT_SWID_ADDED, "SWID-ADDED"},
        {ADVISER_EVENT_SWID_DELETED, "SWID-DELETED"},
        {ADVISER_EVENT_PRE_DEVICE_ADDED, "PRE-DEVICE-ADDED"},
        {ADVISER_EVENT_DEVICE_ADDED, "DEVICE-ADDED"},
        {ADVISER_EVENT_DEVICE_READY, "DEVICE-READY"},
        {ADVISER_EVENT_PRE_DEVICE_DELETED, "PRE-DEVICE-DELETED"},
        {ADVISER_EVENT_DEVICE_DELETED, "DEVICE-DELETED"},
        {ADVISER_EVENT_PORT_ADDED_INTO_SWID, "PORT-ADDED-INTO-SWID"},
        {ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID, "PRE-PORT-DELETED-FROM-SWID"},
        {ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID, "PRE-FAILED-PORT-DELETED-FROM-SWID"},
        {ADVISER_EVENT_PORT_DELETED_FROM_SWID, "PORT-DELETED-FROM-SWID"},
        {ADVISER_EVENT_FID_ADDED, "FID-ADDED"},
        {ADVISER_EVENT_FID_DELETED, "FID-DELETED"},
        {ADVISER_EVENT_PORT_VID_ADDED, "PORT-VID-ADDED"},
        {ADVISER_EVENT_PORT_VID_DELETED, "PORT-VID-DELETED"},
        {ADVISER_EVENT_PREPARE_PROFILE, "PREPARE-PROFILE"},
        {ADVISER_EVENT_PORT_VLAN_MEMBERSHIP_ADD_E, "PORT-VLAN-MEMBERSHIP-ADD_E"},
        {ADVISER_EVENT_PORT_VLAN_MEMBERSHIP_DELETE_E, "PORT-VLAN-MEMBERSHIP-DELETE_E"},
        {ADVISER_EVENT_VPORT_BRIDGE_ADD, "VPORT_BRIDGE_ADD"},
        {ADVISER_EVENT_PRE_VPORT_BRIDGE_DELETE, "PRE_VPORT_BRIDGE_DELETE"},
        {ADVISER_EVENT_VPORT_BRIDGE_DELETE, "VPORT_BRIDGE_DELETE"},
        {ADVISER_EVENT_VPORT_BRIDGE_PENDING_PUSH, "VPORT_BRIDGE_PENDING_PUSH"},
        {ADVISER_EVENT_SPAN_SESSION_UPDATE, "SPAN_SESSION_UPDATE"},
        {ADVISER_EVENT_INGRESS_FILTER_CHANGE, "INGRESS_FILTER_CHANGE"},
        {ADVISER_EVENT_PRE_MC_CONTAINER_CHANGE, "PRE_MC_CONTAINER_CHANGE"},
        {ADVISER_EVENT_MC_CONTAINER_ERIF_POINTER_CHANGE, "MC_CONTAINER_ERIF_POINTER_CHANGE"},
        {ADVISER_EVENT_MC_CONTAINER_NVE_MC_POINTER_CHANGE, "MC_CONTAINER_NVE_MC_POINTER_CHANGE"},
        {ADVISER_EVENT_MC_CONTAINER_PORT_MC_POINTER_CHANGE, "MC_CONTAINER_PORT_MC_POINTER_CHANGE"},
        {ADVISER_EVENT_MC_CONTAINER_NEXT_HOPS_CHANGE, "MC_CONTAINER_NEXT_HOPS_CHANGE"},
        {ADVISER_EVENT_POST_RIF_ADD, "POST-RIF-ADD"},
        {ADVISER_EVENT_PRE_RIF_DELETE, "PRE-RIF-DELETE"},
        {ADVISER_EVENT_TUNNEL_DECAP_CHANGE, "TUNNEL_DECAP_CHANGE"},
        {ADVISER_EVENT_IPV6_CHANGE, "IPV6_CHANGE"},
        {ADVISER_EVENT_FDB_MC_MID_CHANGE, "FDB_MC_MID_CHANGE"},
        {ADVISER_EVENT_POST_LAG_REDIRECT_SET, "POST_LAG_REDIRECT_SET"},
        {ADVISER_EVENT_BRIDGE_TUNNEL_MAP_ADD, "BRIDGE_TUNNEL_MAP_ADD"},
        {ADVISER_EVENT_BRIDGE_TUNNEL_MAP_DELETE, "BRIDGE_TUNNEL_MAP_DELETE"},
        {ADVISER_EVENT_FDB_UC_MAC_ADD, "FDB_UC_MAC_ADD"},
        {ADVISER_EVENT_FDB_UC_MAC_DELETE, "FDB_UC_MAC_DELETE"},
        {ADVISER_EVENT_POST_KVD_HASH_NO_RESOURCES, "POST_KVD_HASH_NO_RESOURCES"},
        {ADVISER_EVENT_SDK_CLIENT_CLOSE, "SDK_CLIENT_CLOSE"},
        {ADVISER_EVENT_POST_PORT_OPER_DOWN_E, "POST_PORT_OPER_DOWN_E"},
        {ADVISER_EVENT_PORT_ADMIN_STATE, "PORT_ADMIN_STATE"},
        {ADVISER_EVENT_PRE_VPORT_BRIDGE_ADD, "PRE_VPORT_BRIDGE_ADD"},
        {ADVISER_EVENT_PRE_ISSU_END, "PRE_ISSU_END"},
        {ADVISER_EVENT_POST_RIF_ENABLE, "POST_RIF_ENABLE"},
        {ADVISER_EVENT_PRE_RIF_DISABLE, "PRE_RIF_DISABLE"},
        {ADVISER_EVENT_POST_TUNNEL_ATTRIBUTES_CHANGE, "POST_TUNNEL_ATTRIBUTES_CHANGE"},
        {ADVISER_EVENT_POST_ECMP_UPDATE, "POST_ECMP_UPDATE"},
    });
    return table.name_of(event, "UNKNOWN");
}

// ---- The registry ----

/* A registration. The pool item is first: a pool returns the start of an object as its item. */
struct advisor_t {
    cl_pool_item_t pool_item;
    cl_map_item_t map_item;
    adviser_cb_t callback;
};

static_assert(offsetof(advisor_t, pool_item) == 0);

constexpr uint32_t POOL_COUNT_MIN = 16;
constexpr uint32_t POOL_COUNT_MAX = 255;
constexpr uint32_t POOL_COUNT_GROW = 16;

constinit cl_qpool_t adviser_pool = {};
constinit cl_qmap_t adviser_event_map[ADVISER_EVENT_MAX + 1] = {}; // 0 and the fail event: unused
constinit uint32_t adviser_initialized = 0;

uint64_t key_of(adviser_cb_t callback)
{
    return reinterpret_cast<uintptr_t>(callback);
}

advisor_t* advisor_of(cl_map_item_t* item)
{
    return reinterpret_cast<advisor_t*>(
        reinterpret_cast<char*>(item) - offsetof(advisor_t, map_item));
}

/* A walk over the advisors of a map, in ascending order of callback addresses.
 *
 * A callback may change the registry during a walk. A walk therefore holds only the next advisor,
 * active walks form a list, and removing an advisor first advances each walk that holds it.
 * Invariant: a walk never reads a record that is not in its map. */
struct Walk {
    explicit Walk(const cl_qmap_t* map) : next(cl_qmap_head(map)), outer(innermost)
    {
        innermost = this;
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk()
    {
        innermost = outer;
    }

    /* Returns the next callback, and advances to the successor before it is called. */
    adviser_cb_t take()
    {
        cl_map_item_t* item = next;
        next = cl_qmap_next(item);
        return advisor_of(item)->callback;
    }

    /* Call it before removing an advisor from its map. */
    static void step_over(const cl_map_item_t* leaving)
    {
        for (Walk* walk = innermost; walk != nullptr; walk = walk->outer) {
            if (walk->next == leaving) {
                walk->next = cl_qmap_next(leaving);
            }
        }
    }

    cl_map_item_t* next;    // the end item after the last advisor
    Walk* outer;            // walks are on the stack: callbacks must return
    static Walk* innermost; // of the active walks
};

constinit Walk* Walk::innermost = nullptr;

inline ky_status_t __adviser_event_map_get(adviser_event_t event, cl_qmap_t** map_pp)
{
    KY_TRACE_FUNCTION();
    if (event < EVENT_MIN || event > ADVISER_EVENT_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, "Unsupported event (%d).\n", event);
    }
    *map_pp = &adviser_event_map[event == FAIL_EVENT ? ROLLED_BACK_EVENT : event];
    return KY_STATUS_SUCCESS;
}

bool __is_event_pre_fail_event(adviser_event_t event)
{
    KY_TRACE_FUNCTION();
    return event == FAIL_EVENT;
}

/* Whether a failure requires a fail event; that of DEVICE-DELETED does not exist. */
bool __is_event_pre_event(adviser_event_t event)
{
    KY_TRACE_FUNCTION();
    return event == ROLLED_BACK_EVENT || event == ADVISER_EVENT_DEVICE_DELETED;
}

ky_status_t __get_fail_event(adviser_event_t event, adviser_event_t* fail_event_p)
{
    KY_TRACE_FUNCTION();
    if (event != ROLLED_BACK_EVENT) {
        return KY_STATUS_ENTRY_NOT_FOUND;
    }
    *fail_event_p = FAIL_EVENT;
    return KY_STATUS_SUCCESS;
}

ky_status_t __adviser_add_event(adviser_event_t event, adviser_cb_t callback)
{
    KY_TRACE_FUNCTION();

    if (callback == nullptr) {
        return KY_FAIL(
            KY_STATUS_PARAM_NULL, "Register to event '%s' param NULL given.\n",
            adviser_event_str(event));
    }
    if (__is_event_pre_fail_event(event)) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "SDK flow error - should not register to pre fail event '%s'.\n",
            adviser_event_str(event));
    }
    cl_qmap_t* map = nullptr;
    if (const ky_status_t status = __adviser_event_map_get(event, &map);
        status != KY_STATUS_SUCCESS) {
        return status;
    }
    if (adviser_initialized == 0) {
        return FAIL_BY_NAME(
            KY_STATUS_DB_NOT_INITIALIZED, "Can't register to event '%s' (%s).\n",
            adviser_event_str(event));
    }
    if (cl_qmap_get(map, key_of(callback)) != cl_qmap_end(map)) {
        KY_LOG_NOTICE(
            "Can't add advisor to '%s' adviser (%s).\n", adviser_event_str(event),
            ky_status_str(KY_STATUS_ENTRY_ALREADY_EXISTS));
        return KY_STATUS_ENTRY_ALREADY_EXISTS;
    }
    auto* advisor = reinterpret_cast<advisor_t*>(cl_qpool_get(&adviser_pool));
    if (advisor == nullptr) {
        return FAIL_BY_NAME(KY_STATUS_NO_RESOURCES, "Can't allocate advisor at adviser (%s).\n");
    }
    advisor->callback = callback;
    cl_qmap_insert(map, key_of(callback), &advisor->map_item);
    KY_LOG_DEBUG("Advisor added to '%s' adviser.\n", adviser_event_str(event));
    return KY_STATUS_SUCCESS;
}

ky_status_t __adviser_remove_event(adviser_event_t event, adviser_cb_t callback)
{
    KY_TRACE_FUNCTION();

    cl_qmap_t* map = nullptr;
    if (const ky_status_t status = __adviser_event_map_get(event, &map);
        status != KY_STATUS_SUCCESS) {
        return status;
    }
    if (adviser_initialized == 0) {
        return FAIL_BY_NAME(
            KY_STATUS_DB_NOT_INITIALIZED, "Can't deregister from event '%s' (%s).\n",
            adviser_event_str(event));
    }
    cl_map_item_t* item = cl_qmap_get(map, key_of(callback));
    if (item == cl_qmap_end(map)) {
        return FAIL_BY_NAME(
            KY_STATUS_ENTRY_NOT_FOUND, "Can't delete advisor from '%s' adviser (%s).\n",
            adviser_event_str(event));
    }
    Walk::step_over(item);
    cl_qmap_remove(map, key_of(callback));
    cl_qpool_put(&adviser_pool, &advisor_of(item)->pool_item);
    KY_LOG_DEBUG("Advisor deleted from '%s' adviser.\n", adviser_event_str(event));
    return KY_STATUS_SUCCESS;
}

ky_status_t __adviser_event_map_delete_all(adviser_event_t event)
{
    KY_TRACE_FUNCTION();

    cl_qmap_t* map = nullptr;
    // LCOV_EXCL_START: callers pass valid events
    if (const ky_status_t status = __adviser_event_map_get(event, &map);
        status != KY_STATUS_SUCCESS) {
        return status;
    }
    // LCOV_EXCL_STOP
    for (cl_map_item_t* item = cl_qmap_head(map); item != cl_qmap_end(map);
         item = cl_qmap_head(map)) {
        Walk::step_over(item);
        cl_qmap_remove_item(map, item);
        cl_qpool_put(&adviser_pool, &advisor_of(item)->pool_item);
    }
    KY_LOG_DEBUG("Advisors deleted from '%s' adviser.\n", adviser_event_str(event));
    return KY_STATUS_SUCCESS;
}

} // namespace

// ---- Interface ----

ky_status_t adviser_init(void)
{
    KY_TRACE_FUNCTION();

    if (adviser_initialized == 1) {
        return FAIL_BY_NAME(KY_STATUS_DB_ALREADY_INITIALIZED, "Can't Init adviser (%s).\n");
    }
    if (cl_qpool_init(
            &adviser_pool, POOL_COUNT_MIN, POOL_COUNT_MAX, POOL_COUNT_GROW, sizeof(advisor_t),
            nullptr, nullptr, nullptr) != 0) {
        return KY_STATUS_NO_MEMORY;
    }
    for (uint32_t event = EVENT_MIN; event <= ADVISER_EVENT_MAX; event++) {
        if (event != FAIL_EVENT) {
            cl_qmap_init(&adviser_event_map[event]);
        }
    }
    KY_LOG_NOTICE("adviser Init Success.\n");
    adviser_initialized = 1;
    return KY_STATUS_SUCCESS;
}

ky_status_t adviser_deinit(void)
{
    KY_TRACE_FUNCTION();

    if (adviser_initialized == 0) {
        return FAIL_BY_NAME(KY_STATUS_DB_NOT_INITIALIZED, "Can't De-Init adviser (%s).\n");
    }
    for (uint32_t i = EVENT_MIN; i <= ADVISER_EVENT_MAX; i++) {
        const auto event = static_cast<adviser_event_t>(i);
        const ky_status_t status = __adviser_event_map_delete_all(event);
        if (status != KY_STATUS_SUCCESS) { // LCOV_EXCL_START: all these events are valid
            KY_LOG_ERROR(
                "Can't delete '%s' adviser (%s).\n", adviser_event_str(event),
                ky_status_str(status));
        } // LCOV_EXCL_STOP
        KY_LOG_INFO("Deleted '%s' adviser Successfully.\n", adviser_event_str(event));
    }
    cl_qpool_destroy(&adviser_pool);
    KY_LOG_NOTICE("adviser De-Init Success.\n");
    adviser_initialized = 0;
    return KY_STATUS_SUCCESS;
}

ky_status_t
adviser_register_event(ky_access_cmd_t cmd, adviser_event_t event, adviser_cb_t callback)
{
    KY_TRACE_FUNCTION();
    switch (cmd) {
    case KY_ACCESS_CMD_ADD:
        return __adviser_add_event(event, callback);
    case KY_ACCESS_CMD_DELETE:
        return __adviser_remove_event(event, callback);
    default:
        return KY_FAIL(
            KY_STATUS_CMD_UNSUPPORTED, "Unsupported access-command (%s)\n", ky_access_cmd_str(cmd));
    }
}

ky_status_t adviser_process_event(adviser_event_t event, void* event_data)
{
    KY_TRACE_FUNCTION();

    cl_qmap_t* map = nullptr;
    ky_status_t status = __adviser_event_map_get(event, &map);
    if (status != KY_STATUS_SUCCESS) {
        return status;
    }
    if (adviser_initialized == 0) {
        return FAIL_BY_NAME(
            KY_STATUS_DB_NOT_INITIALIZED, "Can't process event '%s' (%s).\n",
            adviser_event_str(event));
    }

    // Remember the callback, not the record, which may be freed when the callback returns.
    adviser_cb_t called = nullptr;
    const cl_map_item_t* const end = cl_qmap_end(map);
    {
        Walk walk(map);
        while (status == KY_STATUS_SUCCESS && walk.next != end) {
            called = walk.take();
            status = called(event, event_data);
        }
    }
    if (status == KY_STATUS_SUCCESS) {
        return KY_STATUS_SUCCESS;
    }

    KY_LOG_ERROR("Executing adviser for event %s failed.\n", adviser_event_str(event));
    if (!__is_event_pre_event(event)) {
        return status;
    }
    adviser_event_t fail_event = ADVISER_EVENT_NONE;
    if (__get_fail_event(event, &fail_event) != KY_STATUS_SUCCESS) {
        return KY_FAIL(status, "SDK Internal error: failed to get fail event of pre event.\n");
    }
    Walk rollback(map);
    while (rollback.next != end) {
        const adviser_cb_t callback = rollback.take();
        if (callback == called) {
            break;
        }
        const ky_status_t rollback_status = callback(fail_event, event_data);
        if (rollback_status != KY_STATUS_SUCCESS) {
            KY_LOG_ERROR("Adviser fail in rollback event %s.\n", ky_status_str(rollback_status));
        }
    }
    return status;
}

ky_status_t adviser_log_verbosity_level(ky_access_cmd_t cmd, uint32_t* level_p)
{
    KY_TRACE_ENTRY();
    switch (cmd) {
    case KY_ACCESS_CMD_SET:
        KY_STORE(adviser_verbosity_level, *level_p);
        return KY_STATUS_SUCCESS;
    case KY_ACCESS_CMD_GET:
        *level_p = KY_LOAD(adviser_verbosity_level);
        return KY_STATUS_SUCCESS;
    default:
        return KY_FAIL(
            KY_STATUS_CMD_UNSUPPORTED, "Reached default access command : [%s]",
            ky_access_cmd_str(cmd));
    }
}
