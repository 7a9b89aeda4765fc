// The registry of callbacks for life-cycle events: module "ADVISER".
#include "ky_adviser.h"

#include "ky_names.h"

#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>
#include <cstddef>
#include <iterator>

#define KY_LOG_MODULE "ADVISER"
#define KY_LOG_VERBOSITY adviser_verbosity_level

namespace {

constinit uint32_t adviser_verbosity_level = KY_LOG_LEVEL_DEFAULT;

// ---- Events ----

constexpr uint32_t NO_MAP = UINT32_MAX;
constexpr uint32_t MAP_COUNT = 50;
constexpr bool PRE_EVENT = true;

/* An event: its name, its map, and, for one announced ahead of the change, what to tell those that
 * had accepted it when another one has refused. */
struct Event {
    adviser_event_t event;
    char name[36]; // in place, so that the loader has nothing to do; the longest and its end
    uint32_t map;
    bool is_pre_event = false;
    adviser_event_t fail_event = ADVISER_EVENT_NONE;
};

// clang-format off
constexpr Event events[] = {
    {ADVISER_EVENT_NONE, "NONE", NO_MAP},
    {ADVISER_EVENT_PORT_ADDED, "PORT-ADDED", 0},
    {ADVISER_EVENT_PORT_DELETED, "PORT-DELETED", 1},
    {ADVISER_EVENT_SWID_ADDED, "SWID-ADDED", 2},
    {ADVISER_EVENT_SWID_DELETED, "SWID-DELETED", 3},
    {ADVISER_EVENT_PRE_DEVICE_ADDED, "PRE-DEVICE-ADDED", 4},
    {ADVISER_EVENT_DEVICE_ADDED, "DEVICE-ADDED", 5},
    {ADVISER_EVENT_DEVICE_READY, "DEVICE-READY", 6},
    {ADVISER_EVENT_PRE_DEVICE_DELETED, "PRE-DEVICE-DELETED", 7},
    {ADVISER_EVENT_DEVICE_DELETED, "DEVICE-DELETED", 8, PRE_EVENT},
    {ADVISER_EVENT_PORT_ADDED_INTO_SWID, "PORT-ADDED-INTO-SWID", 9},
    {ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID, "PRE-PORT-DELETED-FROM-SWID", 10, PRE_EVENT,
     ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID},
    {ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID, "PRE-FAILED-PORT-DELETED-FROM-SWID", 10},
    {ADVISER_EVENT_PORT_DELETED_FROM_SWID, "PORT-DELETED-FROM-SWID", 11},
    {ADVISER_EVENT_FID_ADDED, "FID-ADDED", 12},
    {ADVISER_EVENT_FID_DELETED, "FID-DELETED", 13},
    {ADVISER_EVENT_PORT_VID_ADDED, "PORT-VID-ADDED", 14},
    {ADVISER_EVENT_PORT_VID_DELETED, "PORT-VID-DELETED", 15},
    {ADVISER_EVENT_PREPARE_PROFILE, "PREPARE-PROFILE", 16},
    {ADVISER_EVENT_PORT_VLAN_MEMBERSHIP_ADD_E, "PORT-VLAN-MEMBERSHIP-ADD_E", 17},
    {ADVISER_EVENT_PORT_VLAN_MEMBERSHIP_DELETE_E, "PORT-VLAN-MEMBERSHIP-DELETE_E", 18},
    {ADVISER_EVENT_VPORT_BRIDGE_ADD, "VPORT_BRIDGE_ADD", 19},
    {ADVISER_EVENT_PRE_VPORT_BRIDGE_DELETE, "PRE_VPORT_BRIDGE_DELETE", 20},
    {ADVISER_EVENT_VPORT_BRIDGE_DELETE, "VPORT_BRIDGE_DELETE", 21},
    {ADVISER_EVENT_VPORT_BRIDGE_PENDING_PUSH, "VPORT_BRIDGE_PENDING_PUSH", 22},
    {ADVISER_EVENT_SPAN_SESSION_UPDATE, "SPAN_SESSION_UPDATE", 23},
    {ADVISER_EVENT_INGRESS_FILTER_CHANGE, "INGRESS_FILTER_CHANGE", 24},
    {ADVISER_EVENT_PRE_MC_CONTAINER_CHANGE, "PRE_MC_CONTAINER_CHANGE", 25},
    {ADVISER_EVENT_MC_CONTAINER_ERIF_POINTER_CHANGE, "MC_CONTAINER_ERIF_POINTER_CHANGE", 26},
    {ADVISER_EVENT_MC_CONTAINER_NVE_MC_POINTER_CHANGE, "MC_CONTAINER_NVE_MC_POINTER_CHANGE", 27},
    {ADVISER_EVENT_MC_CONTAINER_PORT_MC_POINTER_CHANGE, "MC_CONTAINER_PORT_MC_POINTER_CHANGE", 28},
    {ADVISER_EVENT_MC_CONTAINER_NEXT_HOPS_CHANGE, "MC_CONTAINER_NEXT_HOPS_CHANGE", 29},
    {ADVISER_EVENT_POST_RIF_ADD, "POST-RIF-ADD", 30},
    {ADVISER_EVENT_PRE_RIF_DELETE, "PRE-RIF-DELETE", 31},
    {ADVISER_EVENT_TUNNEL_DECAP_CHANGE, "TUNNEL_DECAP_CHANGE", 32},
    {ADVISER_EVENT_IPV6_CHANGE, "IPV6_CHANGE", 33},
    {ADVISER_EVENT_FDB_MC_MID_CHANGE, "FDB_MC_MID_CHANGE", 34},
    {ADVISER_EVENT_POST_LAG_REDIRECT_SET, "POST_LAG_REDIRECT_SET", 35},
    {ADVISER_EVENT_BRIDGE_TUNNEL_MAP_ADD, "BRIDGE_TUNNEL_MAP_ADD", 36},
    {ADVISER_EVENT_BRIDGE_TUNNEL_MAP_DELETE, "BRIDGE_TUNNEL_MAP_DELETE", 37},
    {ADVISER_EVENT_FDB_UC_MAC_ADD, "FDB_UC_MAC_ADD", 38},
    {ADVISER_EVENT_FDB_UC_MAC_DELETE, "FDB_UC_MAC_DELETE", 39},
    {ADVISER_EVENT_POST_KVD_HASH_NO_RESOURCES, "POST_KVD_HASH_NO_RESOURCES", 40},
    {ADVISER_EVENT_SDK_CLIENT_CLOSE, "SDK_CLIENT_CLOSE", 41},
    {ADVISER_EVENT_POST_PORT_OPER_DOWN_E, "POST_PORT_OPER_DOWN_E", 42},
    {ADVISER_EVENT_PORT_ADMIN_STATE, "PORT_ADMIN_STATE", 43},
    {ADVISER_EVENT_PRE_VPORT_BRIDGE_ADD, "PRE_VPORT_BRIDGE_ADD", 44},
    {ADVISER_EVENT_PRE_ISSU_END, "PRE_ISSU_END", 45},
    {ADVISER_EVENT_POST_RIF_ENABLE, "POST_RIF_ENABLE", 46},
    {ADVISER_EVENT_PRE_RIF_DISABLE, "PRE_RIF_DISABLE", 47},
    {ADVISER_EVENT_POST_TUNNEL_ATTRIBUTES_CHANGE, "POST_TUNNEL_ATTRIBUTES_CHANGE", 48},
    {ADVISER_EVENT_POST_ECMP_UPDATE, "POST_ECMP_UPDATE", 49},
};
// clang-format on

/* Row i is event i; the maps are numbered without a gap, and a fail event shares the map of its
 * pre-event, which stands in front of it. */
consteval bool events_are_sound()
{
    uint32_t maps = 0;
    for (uint32_t i = 0; i < std::size(events); i++) {
        const Event& event = events[i];
        const bool is_fail_event = i > 0 && events[i - 1].fail_event == event.event;
        const bool has_own_map = i > 0 && !is_fail_event;
        const uint32_t map = i == 0 ? NO_MAP : is_fail_event ? events[i - 1].map : maps;
        if (event.event != i || event.map != map ||
            (event.fail_event != ADVISER_EVENT_NONE &&
             (!event.is_pre_event || event.fail_event != i + 1))) {
            return false;
        }
        maps += has_own_map ? 1 : 0;
    }
    return maps == MAP_COUNT;
}

static_assert(std::size(events) == ADVISER_EVENT_MAX + 1);
static_assert(events_are_sound());

constexpr adviser_event_t EVENT_MIN = events[1].event;

const char* event_name(adviser_event_t event)
{
    return event <= ADVISER_EVENT_MAX ? events[event].name : "UNKNOWN";
}

// ---- The registry ----

/* A registration. The pool hands a record out by its start, so the pool's link comes first. */
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
constinit cl_qmap_t adviser_event_map[MAP_COUNT] = {};
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

/* A walk over the advisors of a map, in ascending order of their addresses.
 *
 * Callbacks run in the middle of a walk, and may change the registry as they like. A walk therefore
 * holds nothing but the advisor to come, all walks under way are known, and an advisor that leaves
 * is taken out of their way first. So a walk never looks at a record that is not in its map. */
class Walk {
  public:
    explicit Walk(cl_qmap_t* map) : map_(map), next_(cl_qmap_head(map)), outer_(innermost)
    {
        innermost = this;
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk()
    {
        innermost = outer_;
    }

    bool is_over() const
    {
        return next_ == cl_qmap_end(map_);
    }

    /* The next advisor. Its successor is taken first. */
    advisor_t* next()
    {
        cl_map_item_t* item = next_;
        next_ = cl_qmap_next(item);
        return advisor_of(item);
    }

    /* To be called before an advisor leaves its map. */
    static void step_over(const cl_map_item_t* leaving)
    {
        for (Walk* walk = innermost; walk != nullptr; walk = walk->outer_) {
            if (walk->next_ == leaving) {
                walk->next_ = cl_qmap_next(leaving);
            }
        }
    }

  private:
    static Walk* innermost; // on the stack, which is why callbacks must return

    cl_qmap_t* map_;
    cl_map_item_t* next_;
    Walk* outer_;
};

constinit Walk* Walk::innermost = nullptr;

/* The one way out of the registry. */
void drop(cl_qmap_t* map, advisor_t* advisor)
{
    Walk::step_over(&advisor->map_item);
    cl_qmap_remove_item(map, &advisor->map_item);
    cl_qpool_put(&adviser_pool, &advisor->pool_item);
}

inline ky_status_t __adviser_event_map_get(adviser_event_t event, cl_qmap_t** map_pp)
{
    KY_TRACE_FUNCTION();
    if (event < EVENT_MIN || event > ADVISER_EVENT_MAX) {
        return KY_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, "Unsupported event (%d).\n", event);
    }
    *map_pp = &adviser_event_map[events[event].map];
    return KY_STATUS_SUCCESS;
}

bool __is_event_pre_fail_event(adviser_event_t event)
{
    KY_TRACE_FUNCTION();
    return event == ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
}

/* This and the next one take an event that has a map. */
bool __is_event_pre_event(adviser_event_t event)
{
    KY_TRACE_FUNCTION();
    return events[event].is_pre_event;
}

ky_status_t __get_fail_event(adviser_event_t event, adviser_event_t* fail_event_p)
{
    KY_TRACE_FUNCTION();
    if (events[event].fail_event == ADVISER_EVENT_NONE) {
        return KY_STATUS_ENTRY_NOT_FOUND;
    }
    *fail_event_p = events[event].fail_event;
    return KY_STATUS_SUCCESS;
}

ky_status_t __adviser_add_event(adviser_event_t event, adviser_cb_t callback)
{
    KY_TRACE_FUNCTION();

    if (callback == nullptr) {
        return KY_FAIL(
            KY_STATUS_PARAM_NULL, "Register to event '%s' param NULL given.\n", event_name(event));
    }
    if (__is_event_pre_fail_event(event)) {
        return KY_FAIL(
            KY_STATUS_PARAM_ERROR, "SDK flow error - should not register to pre fail event '%s'.\n",
            event_name(event));
    }
    cl_qmap_t* map = nullptr;
    if (const ky_status_t status = __adviser_event_map_get(event, &map);
        status != KY_STATUS_SUCCESS) {
        return status;
    }
    if (adviser_initialized == 0) {
        return KY_FAIL(
            KY_STATUS_DB_NOT_INITIALIZED, "Can't register to event '%s' (%s).\n", event_name(event),
            ky_status_str(KY_STATUS_DB_NOT_INITIALIZED));
    }
    if (cl_qmap_get(map, key_of(callback)) != cl_qmap_end(map)) {
        KY_LOG_NOTICE(
            "Can't add advisor to '%s' adviser (%s).\n", event_name(event),
            ky_status_str(KY_STATUS_ENTRY_ALREADY_EXISTS));
        return KY_STATUS_ENTRY_ALREADY_EXISTS;
    }
    auto* advisor = reinterpret_cast<advisor_t*>(cl_qpool_get(&adviser_pool));
    if (advisor == nullptr) {
        return KY_FAIL(
            KY_STATUS_NO_RESOURCES, "Can't allocate advisor at adviser (%s).\n",
            ky_status_str(KY_STATUS_NO_RESOURCES));
    }
    advisor->callback = callback;
    cl_qmap_insert(map, key_of(callback), &advisor->map_item);
    KY_LOG_DEBUG("Advisor added to '%s' adviser.\n", event_name(event));
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
        return KY_FAIL(
            KY_STATUS_DB_NOT_INITIALIZED, "Can't deregister from event '%s' (%s).\n",
            event_name(event), ky_status_str(KY_STATUS_DB_NOT_INITIALIZED));
    }
    cl_map_item_t* item = cl_qmap_get(map, key_of(callback));
    if (item == cl_qmap_end(map)) {
        return KY_FAIL(
            KY_STATUS_ENTRY_NOT_FOUND, "Can't delete advisor from '%s' adviser (%s).\n",
            event_name(event), ky_status_str(KY_STATUS_ENTRY_NOT_FOUND));
    }
    drop(map, advisor_of(item));
    KY_LOG_DEBUG("Advisor deleted from '%s' adviser.\n", event_name(event));
    return KY_STATUS_SUCCESS;
}

ky_status_t __adviser_event_map_delete_all(adviser_event_t event)
{
    KY_TRACE_FUNCTION();

    cl_qmap_t* map = nullptr;
    if (const ky_status_t status = __adviser_event_map_get(event, &map);
        status != KY_STATUS_SUCCESS) { // not reached: called for events that have a map
        return status;
    }
    Walk walk(map);
    while (!walk.is_over()) {
        drop(map, walk.next());
    }
    KY_LOG_DEBUG("Advisors deleted from '%s' adviser.\n", event_name(event));
    return KY_STATUS_SUCCESS;
}

} // namespace

// ---- Interface ----

ky_status_t adviser_init(void)
{
    KY_TRACE_FUNCTION();

    if (adviser_initialized == 1) {
        return KY_FAIL(
            KY_STATUS_DB_ALREADY_INITIALIZED, "Can't Init adviser (%s).\n",
            ky_status_str(KY_STATUS_DB_ALREADY_INITIALIZED));
    }
    if (cl_qpool_init(
            &adviser_pool, POOL_COUNT_MIN, POOL_COUNT_MAX, POOL_COUNT_GROW, sizeof(advisor_t),
            nullptr, nullptr, nullptr) != 0) {
        return KY_STATUS_NO_MEMORY;
    }
    for (cl_qmap_t& map : adviser_event_map) {
        cl_qmap_init(&map);
    }
    KY_LOG_NOTICE("adviser Init Success.\n");
    adviser_initialized = 1;
    return KY_STATUS_SUCCESS;
}

ky_status_t adviser_deinit(void)
{
    KY_TRACE_FUNCTION();

    if (adviser_initialized == 0) {
        return KY_FAIL(
            KY_STATUS_DB_NOT_INITIALIZED, "Can't De-Init adviser (%s).\n",
            ky_status_str(KY_STATUS_DB_NOT_INITIALIZED));
    }
    for (uint32_t i = EVENT_MIN; i <= ADVISER_EVENT_MAX; i++) {
        const adviser_event_t event = events[i].event;
        const ky_status_t status = __adviser_event_map_delete_all(event);
        if (status != KY_STATUS_SUCCESS) { // not reached: every one of these events has a map
            KY_LOG_ERROR(
                "Can't delete '%s' adviser (%s).\n", event_name(event), ky_status_str(status));
        }
        KY_LOG_INFO("Deleted '%s' adviser Successfully.\n", event_name(event));
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
        return KY_FAIL(
            KY_STATUS_DB_NOT_INITIALIZED, "Can't process event '%s' (%s).\n", event_name(event),
            ky_status_str(KY_STATUS_DB_NOT_INITIALIZED));
    }

    // An advisor is known by its callback: its record may be gone when the callback returns.
    adviser_cb_t called = nullptr;
    {
        Walk walk(map);
        while (status == KY_STATUS_SUCCESS && !walk.is_over()) {
            called = walk.next()->callback;
            status = called(event, event_data);
        }
    }
    if (status == KY_STATUS_SUCCESS) {
        return KY_STATUS_SUCCESS;
    }

    KY_LOG_ERROR("Executing adviser for event %s failed.\n", event_name(event));
    if (!__is_event_pre_event(event)) {
        return status;
    }
    adviser_event_t fail_event = ADVISER_EVENT_NONE;
    if (__get_fail_event(event, &fail_event) != KY_STATUS_SUCCESS) {
        return KY_FAIL(status, "SDK Internal error: failed to get fail event of pre event.\n");
    }
    Walk rollback(map);
    while (!rollback.is_over()) {
        const adviser_cb_t callback = rollback.next()->callback;
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
