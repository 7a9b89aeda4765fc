// The adviser as a state machine: its functions in any order, from outside and from callbacks, with
// and without memory, beside a model of who is registered.
#include "allocation.h"
#include "fuzz.h"

#include <ky_adviser.h>

#include <array>
#include <set>
#include <utility>

namespace {

constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;
constexpr adviser_event_t PRE = ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID;
constexpr adviser_event_t PRE_FAILED = ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
constexpr size_t REGISTRATIONS_MAX = 255;
constexpr uint32_t DEPTH_MAX = 3; // of callbacks that process events

void act();

/* One input's run. */
struct Run {
    Input& input;
    uint32_t verbosity;
    bool is_initialised = false;
    std::set<std::pair<uint32_t, adviser_cb_t>> registered = {}; // by event; fail events by theirs
    uint32_t depth = 0;
    uint32_t acts = 0;
    struct Walks { // of the innermost call to process an event
        adviser_event_t event = ADVISER_EVENT_NONE;
        uint32_t heard = 0;            // callbacks called for it
        uint32_t rolled_back = 0;      // and with its fail event
        uint32_t refused = 0;          // of these, those that failed
        adviser_cb_t called = nullptr; // last for the event
        ky_status_t answer = GOOD;     // and what it has answered
    } walks = {};
};

Run* run;

uint32_t list_of(uint32_t event)
{
    return event == PRE_FAILED ? PRE : event;
}

uint32_t registrations_for(uint32_t event)
{
    return static_cast<uint32_t>(std::ranges::count_if(
        run->registered, [event](const auto& each) { return each.first == list_of(event); }));
}

template <size_t Number> ky_status_t callback(adviser_event_t event, void* event_data)
{
    REQUIRE(event_data == run);
    REQUIRE(run->is_initialised);
    REQUIRE(run->registered.contains({list_of(event), callback<Number>}));
    if (run->depth < DEPTH_MAX && run->input.ConsumeBool()) {
        act();
    }
    const ky_status_t status = run->input.PickValueInArray<ky_status_t>(
        {GOOD, GOOD, GOOD, KY_STATUS_ERROR, KY_STATUS_RESOURCE_IN_USE});
    Run::Walks& walks = run->walks;
    if (event == walks.event) {
        REQUIRE(std::less<>()(walks.called, callback<Number>)); // in the order of addresses
        walks.heard++;
        walks.called = callback<Number>;
        walks.answer = status;
    } else { // a rollback
        REQUIRE(walks.answer != GOOD && callback<Number> != walks.called);
        walks.rolled_back++;
        walks.refused += status != GOOD;
    }
    return status;
}

template <size_t... Numbers> constexpr auto callbacks_of(std::index_sequence<Numbers...>)
{
    return std::array<adviser_cb_t, sizeof...(Numbers)>{callback<Numbers>...};
}

constexpr auto callbacks = callbacks_of(std::make_index_sequence<8>());

adviser_event_t any_event()
{
    return static_cast<adviser_event_t>(run->input.PickValueInArray<uint32_t>(
        {1, PRE, PRE, PRE_FAILED, 9, ADVISER_EVENT_MAX, 0, ADVISER_EVENT_MAX + 1,
         run->input.ConsumeIntegralInRange<uint32_t>(0, 255)}));
}

bool draw_memory()
{
    return run->input.ConsumeIntegralInRange(0, 7) != 0;
}

void init()
{
    const bool has_memory = draw_memory();
    fail_allocations_after(has_memory ? -1 : run->input.ConsumeIntegralInRange(0, 1));
    const ky_status_t status = adviser_init();
    fail_allocations_after(-1);
    if (run->is_initialised) {
        REQUIRE(status == KY_STATUS_DB_ALREADY_INITIALIZED);
    } else {
        REQUIRE(status == GOOD || (status == KY_STATUS_NO_MEMORY && !has_memory));
        REQUIRE(status == GOOD || live_blocks() == 0);
    }
    REQUIRE(take_errors() == (run->is_initialised && run->verbosity > 0));
    run->is_initialised = run->is_initialised || status == GOOD;
}

void deinit()
{
    const ky_status_t status = adviser_deinit();
    REQUIRE(status == (run->is_initialised ? GOOD : KY_STATUS_DB_NOT_INITIALIZED));
    REQUIRE(take_errors() == (!run->is_initialised && run->verbosity > 0));
    run->is_initialised = false;
    run->registered.clear();
    REQUIRE(live_blocks() == 0);
}

/* What registering, or deregistering, must answer if there is memory. */
ky_status_t expected(ky_access_cmd_t cmd, adviser_event_t event, adviser_cb_t callback)
{
    const bool adds = cmd == KY_ACCESS_CMD_ADD;
    const bool is_there = run->registered.contains({list_of(event), callback});
    if (!adds && cmd != KY_ACCESS_CMD_DELETE) {
        return KY_STATUS_CMD_UNSUPPORTED;
    }
    if (adds && callback == nullptr) {
        return KY_STATUS_PARAM_NULL;
    }
    if (adds && event == PRE_FAILED) {
        return KY_STATUS_PARAM_ERROR;
    }
    if (event < 1 || event > ADVISER_EVENT_MAX) {
        return KY_STATUS_PARAM_EXCEEDS_RANGE;
    }
    if (!run->is_initialised) {
        return KY_STATUS_DB_NOT_INITIALIZED;
    }
    if (adds && is_there) {
        return KY_STATUS_ENTRY_ALREADY_EXISTS;
    }
    if (adds && run->registered.size() == REGISTRATIONS_MAX) {
        return KY_STATUS_NO_RESOURCES;
    }
    return adds || is_there ? GOOD : KY_STATUS_ENTRY_NOT_FOUND;
}

void change(ky_access_cmd_t cmd, adviser_event_t event, adviser_cb_t callback, bool has_memory)
{
    const ky_status_t promised = expected(cmd, event, callback);
    fail_allocations_after(has_memory ? -1 : 0);
    const ky_status_t status = adviser_register_event(cmd, event, callback);
    fail_allocations_after(-1);
    REQUIRE(
        status == promised || (promised == GOOD && cmd == KY_ACCESS_CMD_ADD && !has_memory &&
                               status == KY_STATUS_NO_RESOURCES));
    const bool is_error = status != GOOD && status != KY_STATUS_ENTRY_ALREADY_EXISTS;
    REQUIRE(take_errors() == (is_error && run->verbosity > 0));
    if (status == GOOD && cmd == KY_ACCESS_CMD_ADD) {
        run->registered.insert({list_of(event), callback});
    } else if (status == GOOD) {
        run->registered.erase({list_of(event), callback});
    }
}

void register_or_deregister()
{
    const auto cmd = run->input.PickValueInArray<ky_access_cmd_t>(
        {KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_DELETE, KY_ACCESS_CMD_DELETE,
         KY_ACCESS_CMD_SET});
    const size_t who = run->input.ConsumeIntegralInRange<size_t>(0, callbacks.size());
    const adviser_event_t event = any_event();
    change(cmd, event, who < callbacks.size() ? callbacks[who] : nullptr, draw_memory());
}

/* So that the pool grows, and ends. */
void register_for_all_events()
{
    const size_t who = run->input.ConsumeIntegralInRange<size_t>(0, callbacks.size() - 1);
    const bool has_memory = draw_memory();
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        change(KY_ACCESS_CMD_ADD, static_cast<adviser_event_t>(event), callbacks[who], has_memory);
    }
}

void process()
{
    const adviser_event_t event = any_event();
    const bool is_event = event >= 1 && event <= ADVISER_EVENT_MAX;
    const bool is_initialised = run->is_initialised;
    const auto outer = std::exchange(run->walks, {.event = event});
    const uint32_t acts = run->acts;
    run->depth++;
    const ky_status_t status = adviser_process_event(event, run);
    run->depth--;
    const auto walks = std::exchange(run->walks, outer);

    REQUIRE(
        status == (!is_event         ? KY_STATUS_PARAM_EXCEEDS_RANGE
                   : !is_initialised ? KY_STATUS_DB_NOT_INITIALIZED
                                     : walks.answer));
    const uint32_t errors = take_errors();
    if (run->acts != acts) {
        return; // callbacks have changed who is registered
    }
    REQUIRE(status != GOOD || walks.heard == registrations_for(event));
    REQUIRE(walks.rolled_back == (event == PRE && walks.answer != GOOD ? walks.heard - 1 : 0));
    // DEVICE-DELETED is said to have a fail event, and has none.
    const bool lacks_fail_event = event == ADVISER_EVENT_DEVICE_DELETED && walks.answer != GOOD;
    const uint32_t messages = (status != GOOD) + lacks_fail_event + walks.refused;
    REQUIRE(errors == (run->verbosity > 0 ? messages : 0));
}

void verbosity()
{
    uint32_t level = 0;
    REQUIRE(adviser_log_verbosity_level(KY_ACCESS_CMD_GET, &level) == GOOD);
    REQUIRE(level == run->verbosity);
    REQUIRE(adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level) == GOOD);
}

void act()
{
    static void (*const acts[])() = {
        register_or_deregister,
        register_or_deregister,
        register_or_deregister,
        process,
        process,
        register_for_all_events,
        init,
        deinit,
        verbosity};
    run->acts++;
    take_errors();
    acts[run->input.ConsumeIntegralInRange<size_t>(0, std::size(acts) - 1)]();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input input(data, size);
    Run this_run{input, choose_verbosity(input)};
    run = &this_run;
    init();
    while (input.remaining_bytes() > 0) {
        act();
        REQUIRE(traces_are_balanced());
    }
    if (run->is_initialised) {
        deinit();
    }
    REQUIRE(live_blocks() == 0 && traces_are_balanced());
    return 0;
}
