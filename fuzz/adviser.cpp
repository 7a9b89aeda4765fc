// The adviser compared with a reference model of registrations, calls and rollbacks: its functions
// in any order, from outside and from callbacks, with and without failing allocations.
#undef NDEBUG // assertions are the model's checks

#include "allocation.h"
#include "callbacks.h"

#include <ky_adviser.h>
#include <ky_utils.h>

#include <array>
#include <cassert>
#include <cstdarg>
#include <cstdio>
#include <initializer_list>
#include <span>

namespace {

// ---- Input ----

/* Decisions, one byte each; a spent input decides for zero and the first choice. */
std::span<const uint8_t> input;

uint8_t any_byte()
{
    const uint8_t byte = input.empty() ? 0 : input.front();
    input = input.subspan(input.empty() ? 0 : 1);
    return byte;
}

uint32_t below(size_t end)
{
    return any_byte() % static_cast<uint32_t>(end);
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
constexpr uint32_t DEPTH_MAX = 3; // of callbacks that process events
constexpr uint32_t CALLBACKS = 8;
constexpr uint32_t NONE = CALLBACKS;

using Set = uint32_t; // of callbacks by their places in address order: bit 0 is the lowest

/* An active walk: of an event, and then of its rollback. */
struct Walk {
    adviser_event_t event;
    Walk* outer;
    adviser_event_t passed = event;         // to callbacks
    uint32_t next = 0;                      // the lowest place that may be called
    Set changed = 0;                        // since it began: may be called or not
    uint32_t failed = NONE;                 // the callback that starts the rollback
    ky_status_t status = KY_STATUS_SUCCESS; // that it returned
};

struct Model {
    bool is_initialised = false;
    std::array<Set, ADVISER_EVENT_MAX + 1> registered = {}; // by event; a fail event's by its event
    uint32_t registrations = 0;                             // for all events
    Walk* walk = nullptr;                                   // the innermost one
    uint32_t depth = 0;
    uint32_t errors = 0; // that the calls so far report,
    uint32_t logged = 0; // and those in the log
};

Model model;

void act();

uint32_t list_of(uint32_t event)
{
    return event == PRE_FAILED ? PRE : event;
}

bool is_registered(uint32_t event, uint32_t place)
{
    return (model.registered[list_of(event)] >> place & 1) == 1;
}

/* No advisor registered throughout the walk, from its next place up to end, has been skipped. */
void require_none_left_out(const Walk& walk, uint32_t end)
{
    const Set throughout = model.registered[list_of(walk.event)] & ~walk.changed;
    assert((throughout & ~0U << walk.next & ~(~0U << end)) == 0);
}

ky_status_t call(size_t callback, adviser_event_t event, void* event_data)
{
    const auto place = static_cast<uint32_t>(callback);
    assert(event_data == &model && model.is_initialised && model.walk != nullptr);
    Walk& walk = *model.walk;
    assert(event == walk.passed && is_registered(event, place));
    assert(place >= walk.next && place != walk.failed);
    require_none_left_out(walk, place);
    walk.next = place + 1;
    if (model.depth < DEPTH_MAX && once_in(2)) {
        act();
    }
    const ky_status_t status = one_of(
        {KY_STATUS_SUCCESS, KY_STATUS_SUCCESS, KY_STATUS_SUCCESS, KY_STATUS_ERROR,
         KY_STATUS_RESOURCE_IN_USE});
    if (status != KY_STATUS_SUCCESS && walk.failed == NONE) {
        walk = {walk.event, walk.outer, PRE_FAILED, 0, 0, place, status}; // starts the rollback
    } else if (status != KY_STATUS_SUCCESS) {
        model.errors++; // and the rollback continues
    }
    return status;
}

// ---- Calls ----

adviser_event_t any_event()
{
    return static_cast<adviser_event_t>(one_of<uint32_t>(
        {1, PRE, PRE, PRE_FAILED, 9, ADVISER_EVENT_MAX, 0, ADVISER_EVENT_MAX + 1, any_byte()}));
}

void init()
{
    const bool has_memory = !once_in(8);
    fail_allocations_after(has_memory ? -1 : static_cast<long>(below(2)));
    const ky_status_t status = adviser_init();
    fail_allocations_after(-1);
    if (model.is_initialised) {
        assert(status == KY_STATUS_DB_ALREADY_INITIALIZED);
        model.errors++;
    } else if (status == KY_STATUS_SUCCESS) {
        model.is_initialised = true;
    } else {
        assert(status == KY_STATUS_NO_MEMORY && !has_memory && live_blocks() == 0);
    }
}

void deinit()
{
    const ky_status_t status = adviser_deinit();
    assert(status == (model.is_initialised ? KY_STATUS_SUCCESS : KY_STATUS_DB_NOT_INITIALIZED));
    assert(live_blocks() == 0);
    model.errors += status != KY_STATUS_SUCCESS;
    model.is_initialised = false;
    model.registered = {};
    model.registrations = 0;
}

/* The status with which every use of an event is refused, if it is. */
ky_status_t refusal(uint32_t event)
{
    return event < 1 || event > ADVISER_EVENT_MAX ? KY_STATUS_PARAM_EXCEEDS_RANGE
           : !model.is_initialised                ? KY_STATUS_DB_NOT_INITIALIZED
                                                  : KY_STATUS_SUCCESS;
}

/* The expected status of registering or deregistering, if allocations succeed. */
ky_status_t expected(ky_access_cmd_t cmd, adviser_event_t event, uint32_t place)
{
    const bool adds = cmd == KY_ACCESS_CMD_ADD;
    if (!adds && cmd != KY_ACCESS_CMD_DELETE) {
        return KY_STATUS_CMD_UNSUPPORTED;
    }
    if (adds && place == NONE) {
        return KY_STATUS_PARAM_NULL;
    }
    if (adds && event == PRE_FAILED) {
        return KY_STATUS_PARAM_ERROR;
    }
    if (refusal(event) != KY_STATUS_SUCCESS) {
        return refusal(event);
    }
    if (!adds) {
        return is_registered(event, place) ? KY_STATUS_SUCCESS : KY_STATUS_ENTRY_NOT_FOUND;
    }
    return is_registered(event, place)                ? KY_STATUS_ENTRY_ALREADY_EXISTS
           : model.registrations == REGISTRATIONS_MAX ? KY_STATUS_NO_RESOURCES
                                                      : KY_STATUS_SUCCESS;
}

void change(ky_access_cmd_t cmd, adviser_event_t event, uint32_t place, bool has_memory)
{
    const bool adds = cmd == KY_ACCESS_CMD_ADD;
    const ky_status_t promised = expected(cmd, event, place);
    fail_allocations_after(has_memory ? -1 : 0);
    const ky_status_t status = adviser_register_event(
        cmd, event, place == NONE ? nullptr : Callbacks<CALLBACKS, call>::at(place));
    fail_allocations_after(-1);
    if (status != KY_STATUS_SUCCESS) {
        const bool lacks_memory = promised == KY_STATUS_SUCCESS && adds && !has_memory;
        assert(status == (lacks_memory ? KY_STATUS_NO_RESOURCES : promised));
        model.errors += status != KY_STATUS_ENTRY_ALREADY_EXISTS;
        return;
    }
    assert(promised == KY_STATUS_SUCCESS);
    model.registered[list_of(event)] ^= 1U << place;
    model.registrations += adds ? 1 : ~0U;
    for (Walk* walk = model.walk; walk != nullptr; walk = walk->outer) {
        walk->changed |= list_of(walk->event) == list_of(event) ? 1U << place : 0;
    }
}

void register_or_deregister()
{
    const auto cmd = one_of(
        {KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_DELETE, KY_ACCESS_CMD_DELETE,
         KY_ACCESS_CMD_SET});
    const uint32_t place = below(CALLBACKS + 1);
    const adviser_event_t event = any_event();
    change(cmd, event, place, !once_in(8));
}

/* So that the pool grows and is exhausted. */
void register_for_all_events()
{
    const uint32_t place = below(CALLBACKS);
    const bool has_memory = !once_in(8);
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        change(KY_ACCESS_CMD_ADD, static_cast<adviser_event_t>(event), place, has_memory);
    }
}

void process()
{
    const adviser_event_t event = any_event();
    const ky_status_t refused = refusal(event);
    Walk walk = {event, model.walk};
    model.walk = &walk;
    model.depth++;
    const ky_status_t status = adviser_process_event(event, &model);
    model.depth--;
    model.walk = walk.outer;

    const bool failed = walk.status != KY_STATUS_SUCCESS;
    assert(status == (refused != KY_STATUS_SUCCESS ? refused : walk.status));
    model.errors += status != KY_STATUS_SUCCESS;
    // DEVICE-DELETED requires a fail event, and has none.
    model.errors += event == ADVISER_EVENT_DEVICE_DELETED && failed;
    if (refused == KY_STATUS_SUCCESS && (!failed || event == PRE)) {
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

int ky_log(uint32_t severity_mask, const char*, const char* format, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    assert(length > 0 && length < static_cast<int>(sizeof text) && text[length - 1] == '\n');
    assert(locks_held() == 0);
    model.logged += severity_mask == KY_LOG_MASK_ERROR;
    return 0;
}

int ky_trace_cbuff_log(const char*, ...) // it would take half of the time
{
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    input = {data, size};
    uint32_t verbosity = one_of({3U, 3U, 0U, 1U, 5U, 8U, 0xFFFFFFFFU});
    utils_log_verbosity_level_set(verbosity);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &verbosity);
    KY_STORE(g_ky_log_module_func_enable, once_in(2) ? 1 : 0);
    model = {};
    init();
    while (!input.empty()) {
        act();
        assert(model.logged == (verbosity > 0 ? model.errors : 0));
    }
    if (model.is_initialised) {
        deinit();
    }
    assert(live_blocks() == 0);
    return 0;
}
