// The adviser compared with a reference model of registrations, calls and rollbacks: its functions
// in any order, from outside and from callbacks, with and without failing allocations. Arguments that
// are always refused are left to the adviser's test.
#undef NDEBUG // assertions are the model's checks

#include "allocation.h"
#include "callbacks.h"

#include <ky_adviser.h>

#include <array>
#include <cassert>
#include <initializer_list>
#include <span>

namespace {

// ---- Input ----

/* Decisions, one byte each; a spent input decides for zero and the first choice. */
std::span<const uint8_t> input;

uint32_t below(size_t end)
{
    const uint32_t byte = input.empty() ? 0 : input.front();
    input = input.subspan(input.empty() ? 0 : 1);
    return byte % static_cast<uint32_t>(end);
}

bool once_in(size_t times)
{
    return below(times) == times - 1; // never for a spent input
}

template <typename T> T one_of(std::initializer_list<T> choices)
{
    return choices.begin()[below(choices.size())];
}

// ---- Model ----

constexpr adviser_event_t PRE = ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID;
constexpr adviser_event_t PRE_FAILED = ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
constexpr uint32_t REGISTRATIONS_MAX = 255;
constexpr uint32_t CALLBACKS = 8;
constexpr uint32_t NONE = CALLBACKS;

using Set = uint32_t; // of callbacks by their places in address order: bit 0 is the lowest

struct Registry {
    bool is_initialised = false;
    std::array<Set, ADVISER_EVENT_MAX + 1> registered = {}; // by event; a fail event's by its event
    uint32_t registrations = 0;                             // for all events
};

/* An active walk: of an event, and then of its rollback. */
struct Walk {
    adviser_event_t event;
    Walk* outer;
    ky_status_t status;             // that processing the event returns
    adviser_event_t passed = event; // to callbacks
    uint32_t failed = NONE;         // the callback that starts the rollback
    uint32_t next = 0;              // the lowest place that may be called
    Set changed = 0;                // since it began: may be called or not
};

Registry registry;
Walk* innermost = nullptr;
uint32_t errors = 0; // that the calls so far report, less those in the log

void act();

uint32_t list_of(uint32_t event)
{
    return event == PRE_FAILED ? PRE : event;
}

bool is_registered(uint32_t event, uint32_t place)
{
    return (registry.registered[list_of(event)] >> place & 1) == 1;
}

/* No advisor registered throughout the walk, from its next place up to end, has been skipped. */
void require_none_left_out(const Walk& walk, uint32_t end)
{
    const Set throughout = registry.registered[list_of(walk.event)] & ~walk.changed;
    assert((throughout & ~0U << walk.next & ~(~0U << end)) == 0);
}

ky_status_t call(size_t callback, adviser_event_t event, void* event_data)
{
    const auto place = static_cast<uint32_t>(callback);
    Walk& walk = *innermost;
    assert(event == walk.passed && event_data == &registry && is_registered(event, place));
    assert(place >= walk.next && place != walk.failed);
    require_none_left_out(walk, place);
    walk.next = place + 1;
    if (once_in(2)) {
        act();
    }
    const ky_status_t status = one_of(
        {KY_STATUS_SUCCESS, KY_STATUS_SUCCESS, KY_STATUS_SUCCESS, KY_STATUS_ERROR,
         KY_STATUS_RESOURCE_IN_USE});
    if (status != KY_STATUS_SUCCESS && walk.failed == NONE) {
        walk = {walk.event, walk.outer, status, PRE_FAILED, place}; // starts the rollback
    } else if (status != KY_STATUS_SUCCESS) {
        errors++; // and the rollback continues
    }
    return status;
}

// ---- Calls ----

adviser_event_t any_event()
{
    return one_of({ADVISER_EVENT_PORT_ADDED, PRE, PRE, PRE_FAILED, ADVISER_EVENT_DEVICE_DELETED});
}

void init()
{
    const bool has_memory = !once_in(8);
    fail_allocations_after(has_memory ? -1 : static_cast<long>(below(2)));
    const ky_status_t status = adviser_init();
    fail_allocations_after(-1);
    if (registry.is_initialised) {
        assert(status == KY_STATUS_DB_ALREADY_INITIALIZED);
        errors++;
    } else {
        assert(status == KY_STATUS_SUCCESS || (status == KY_STATUS_NO_MEMORY && !has_memory));
        registry.is_initialised = status == KY_STATUS_SUCCESS;
    }
}

void deinit()
{
    const ky_status_t status = adviser_deinit();
    assert(status == (registry.is_initialised ? KY_STATUS_SUCCESS : KY_STATUS_DB_NOT_INITIALIZED));
    errors += status != KY_STATUS_SUCCESS;
    registry = {};
}

/* The status of registering or deregistering, if allocations succeed. */
ky_status_t expected(bool adds, adviser_event_t event, uint32_t place)
{
    const bool is_there = is_registered(event, place);
    const bool is_full = registry.registrations == REGISTRATIONS_MAX;
    return adds && place == NONE         ? KY_STATUS_PARAM_NULL
           : adds && event == PRE_FAILED ? KY_STATUS_PARAM_ERROR
           : !registry.is_initialised    ? KY_STATUS_DB_NOT_INITIALIZED
           : !adds && !is_there          ? KY_STATUS_ENTRY_NOT_FOUND
           : adds && is_there            ? KY_STATUS_ENTRY_ALREADY_EXISTS
           : adds && is_full             ? KY_STATUS_NO_RESOURCES
                                         : KY_STATUS_SUCCESS;
}

void change(bool adds, adviser_event_t event, uint32_t place, bool has_memory)
{
    const ky_status_t promised = expected(adds, event, place);
    fail_allocations_after(has_memory ? -1 : 0);
    const ky_status_t status = adviser_register_event(
        adds ? KY_ACCESS_CMD_ADD : KY_ACCESS_CMD_DELETE, event,
        place == NONE ? nullptr : Callbacks<CALLBACKS, call>::at(place));
    fail_allocations_after(-1);
    if (status != KY_STATUS_SUCCESS) {
        const bool lacks_memory = promised == KY_STATUS_SUCCESS && adds && !has_memory;
        assert(status == (lacks_memory ? KY_STATUS_NO_RESOURCES : promised));
        errors += status != KY_STATUS_ENTRY_ALREADY_EXISTS;
        return;
    }
    assert(promised == KY_STATUS_SUCCESS);
    registry.registered[list_of(event)] ^= 1U << place;
    registry.registrations += adds ? 1 : ~0U;
    for (Walk* walk = innermost; walk != nullptr; walk = walk->outer) {
        walk->changed |= list_of(walk->event) == list_of(event) ? 1U << place : 0;
    }
}

void register_or_deregister()
{
    const bool adds = once_in(2);
    const uint32_t place = below(CALLBACKS + 1);
    const adviser_event_t event = any_event();
    change(adds, event, place, !once_in(8));
}

/* So that the pool grows and is exhausted. */
void register_for_all_events()
{
    const uint32_t place = below(CALLBACKS);
    const bool has_memory = !once_in(8);
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        change(true, static_cast<adviser_event_t>(event), place, has_memory);
    }
}

void process()
{
    const adviser_event_t event = any_event();
    Walk walk = {
        event, innermost,
        registry.is_initialised ? KY_STATUS_SUCCESS : KY_STATUS_DB_NOT_INITIALIZED};
    innermost = &walk;
    const ky_status_t status = adviser_process_event(event, &registry);
    innermost = walk.outer;
    assert(status == walk.status);
    errors += status != KY_STATUS_SUCCESS;
    // DEVICE-DELETED requires a fail event, and has none.
    errors += event == ADVISER_EVENT_DEVICE_DELETED && walk.failed != NONE;
    if (walk.failed == NONE || event == PRE) {
        require_none_left_out(walk, is_registered(event, walk.failed) ? walk.failed : CALLBACKS);
    }
}

void act()
{
    one_of(
        {register_or_deregister, register_or_deregister, register_or_deregister, process, process,
         register_for_all_events, init, deinit})();
}

} // namespace

int ky_log(uint32_t severity_mask, const char*, const char*, ...)
{
    errors -= severity_mask == KY_LOG_MASK_ERROR;
    return 0;
}

int ky_trace_cbuff_log(const char*, ...)
{
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    input = {data, size};
    uint32_t verbosity = one_of<uint32_t>({KY_LOG_LEVEL_MAX, KY_LOG_LEVEL(KY_LOG_MASK_ERROR)});
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &verbosity);
    KY_STORE(g_ky_log_module_func_enable, 1);
    init();
    while (!input.empty()) {
        act();
        assert(errors == 0);
    }
    deinit();
    assert(live_blocks() == 0);
    return 0;
}
