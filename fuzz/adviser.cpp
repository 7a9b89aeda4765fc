// The adviser compared with a reference model of registrations, calls and rollbacks: its functions
// in any order, from outside and from callbacks, with and without failing allocations.
#include "allocation.h"
#include "callbacks.h"
#include "fuzz.h"

#include <ky_adviser.h>

#include <array>
#include <iterator>

namespace {

constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;
constexpr adviser_event_t PRE = ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID;
constexpr adviser_event_t PRE_FAILED = ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
constexpr uint32_t REGISTRATIONS_MAX = 255;
constexpr uint32_t DEPTH_MAX = 3; // of callbacks that process events

/* A set of callbacks by their ranks in address order: bit 0 is the lowest address. */
using Set = uint32_t;
constexpr uint32_t CALLBACKS = 8;
constexpr uint32_t NOBODY = CALLBACKS;

Set from(uint32_t place) // this place and all above
{
    return ~0U << place;
}

/* An active walk: of an event, and then of its rollback. */
struct Walk {
    adviser_event_t event;
    Walk* outer;
    adviser_event_t told = event; // the event that callbacks receive
    uint32_t next = 0;            // the lowest place that may be called
    Set late = 0;                 // changed since it began: may be called or not
    uint32_t refused = NOBODY;    // that has failed
    ky_status_t answer = GOOD;    // and its status
};

struct Model {
    Input& input;
    bool is_heard; // errors are logged
    bool is_initialised = false;
    std::array<Set, ADVISER_EVENT_MAX + 1> registered = {}; // by event; a fail event's by its event
    uint32_t registrations = 0;                             // for all events
    Walk* walk = nullptr;                                   // the innermost one
    uint32_t depth = 0;
    uint32_t errors = 0; // expected in the log
};

Model* model;

void act();

uint32_t list_of(uint32_t event)
{
    return event == PRE_FAILED ? PRE : event;
}

bool is_event(uint32_t event)
{
    return event >= 1 && event <= ADVISER_EVENT_MAX;
}

/* No advisor registered throughout the walk, from its next place up to end, has been skipped. */
void require_none_left_out(const Walk& walk, uint32_t end)
{
    const Set there = model->registered[list_of(walk.event)] & ~walk.late;
    REQUIRE((there & from(walk.next) & ~from(end)) == 0);
}

ky_status_t call(size_t who, adviser_event_t event, void* event_data)
{
    const auto place = static_cast<uint32_t>(who);
    REQUIRE(event_data == model && model->is_initialised && model->walk != nullptr);
    Walk& walk = *model->walk;
    REQUIRE(event == walk.told);
    REQUIRE((model->registered[list_of(event)] >> place & 1) == 1);
    REQUIRE(place >= walk.next && place != walk.refused);
    require_none_left_out(walk, place);
    walk.next = place + 1;
    if (model->depth < DEPTH_MAX && model->input.once_in(2)) {
        act();
    }
    const ky_status_t status =
        model->input.one_of({GOOD, GOOD, GOOD, KY_STATUS_ERROR, KY_STATUS_RESOURCE_IN_USE});
    if (status != GOOD && walk.refused == NOBODY) {
        walk = {walk.event, walk.outer, PRE_FAILED, 0, 0, place, status}; // starts the rollback
    } else if (status != GOOD) {
        model->errors++; // and the rollback continues
    }
    return status;
}

using AllCallbacks = Callbacks<CALLBACKS, call>;

adviser_event_t any_event()
{
    return static_cast<adviser_event_t>(model->input.one_of<uint32_t>(
        {1, PRE, PRE, PRE_FAILED, 9, ADVISER_EVENT_MAX, 0, ADVISER_EVENT_MAX + 1,
         model->input.any<uint8_t>()}));
}

void init()
{
    const bool has_memory = !model->input.once_in(8);
    fail_allocations_after(has_memory ? -1 : static_cast<long>(model->input.below(2)));
    const ky_status_t status = adviser_init();
    fail_allocations_after(-1);
    if (model->is_initialised) {
        REQUIRE(status == KY_STATUS_DB_ALREADY_INITIALIZED);
        model->errors++;
        return;
    }
    REQUIRE(status == GOOD || (status == KY_STATUS_NO_MEMORY && !has_memory && live_blocks() == 0));
    model->is_initialised = status == GOOD;
}

void deinit()
{
    const ky_status_t status = adviser_deinit();
    REQUIRE(status == (model->is_initialised ? GOOD : KY_STATUS_DB_NOT_INITIALIZED));
    model->errors += status != GOOD;
    model->is_initialised = false;
    model->registered = {};
    model->registrations = 0;
    REQUIRE(live_blocks() == 0);
}

/* The expected status of registering or deregistering, if allocations succeed. */
ky_status_t expected(ky_access_cmd_t cmd, adviser_event_t event, uint32_t place)
{
    const bool adds = cmd == KY_ACCESS_CMD_ADD;
    if (!adds && cmd != KY_ACCESS_CMD_DELETE) {
        return KY_STATUS_CMD_UNSUPPORTED;
    }
    if (adds && place == NOBODY) {
        return KY_STATUS_PARAM_NULL;
    }
    if (adds && event == PRE_FAILED) {
        return KY_STATUS_PARAM_ERROR;
    }
    if (!is_event(event)) {
        return KY_STATUS_PARAM_EXCEEDS_RANGE;
    }
    if (!model->is_initialised) {
        return KY_STATUS_DB_NOT_INITIALIZED;
    }
    const bool is_there = (model->registered[list_of(event)] >> place & 1) == 1;
    if (!adds || is_there) {
        return !is_there ? KY_STATUS_ENTRY_NOT_FOUND : adds ? KY_STATUS_ENTRY_ALREADY_EXISTS : GOOD;
    }
    return model->registrations == REGISTRATIONS_MAX ? KY_STATUS_NO_RESOURCES : GOOD;
}

void change(ky_access_cmd_t cmd, adviser_event_t event, uint32_t place, bool has_memory)
{
    const ky_status_t promised = expected(cmd, event, place);
    fail_allocations_after(has_memory ? -1 : 0);
    const ky_status_t status =
        adviser_register_event(cmd, event, place == NOBODY ? nullptr : AllCallbacks::at(place));
    fail_allocations_after(-1);
    const bool lacks_memory = promised == GOOD && cmd == KY_ACCESS_CMD_ADD && !has_memory;
    REQUIRE(status == promised || (lacks_memory && status == KY_STATUS_NO_RESOURCES));
    model->errors += status != GOOD && status != KY_STATUS_ENTRY_ALREADY_EXISTS;
    if (status != GOOD) {
        return;
    }
    const uint32_t list = list_of(event);
    model->registered[list] ^= 1U << place;
    model->registrations += cmd == KY_ACCESS_CMD_ADD ? 1 : ~0U;
    for (Walk* walk = model->walk; walk != nullptr; walk = walk->outer) {
        if (list_of(walk->event) == list) {
            walk->late |= 1U << place;
        }
    }
}

void register_or_deregister()
{
    const auto cmd = model->input.one_of(
        {KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_ADD, KY_ACCESS_CMD_DELETE, KY_ACCESS_CMD_DELETE,
         KY_ACCESS_CMD_SET});
    const uint32_t place = model->input.below(CALLBACKS + 1);
    const adviser_event_t event = any_event();
    change(cmd, event, place, !model->input.once_in(8));
}

/* So that the pool grows and is exhausted. */
void register_for_all_events()
{
    const uint32_t place = model->input.below(CALLBACKS);
    const bool has_memory = !model->input.once_in(8);
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        change(KY_ACCESS_CMD_ADD, static_cast<adviser_event_t>(event), place, has_memory);
    }
}

void process()
{
    const adviser_event_t event = any_event();
    const ky_status_t refusal = !is_event(event)         ? KY_STATUS_PARAM_EXCEEDS_RANGE
                                : !model->is_initialised ? KY_STATUS_DB_NOT_INITIALIZED
                                                         : GOOD;
    Walk walk = {event, model->walk};
    model->walk = &walk;
    model->depth++;
    const ky_status_t status = adviser_process_event(event, model);
    model->depth--;
    model->walk = walk.outer;

    REQUIRE(status == (refusal != GOOD ? refusal : walk.answer));
    model->errors += status != GOOD;
    // DEVICE-DELETED requires a fail event, and has none.
    model->errors += event == ADVISER_EVENT_DEVICE_DELETED && walk.answer != GOOD;
    if (refusal == GOOD && (walk.answer == GOOD || event == PRE)) {
        const bool is_there = (model->registered[list_of(event)] >> walk.refused & 1) == 1;
        require_none_left_out(walk, is_there ? walk.refused : CALLBACKS);
    }
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
        deinit};
    acts[model->input.below(std::size(acts))]();
}

} // namespace

void run(Input& input)
{
    Model this_model = {input, choose_verbosity(input) > 0};
    model = &this_model;
    init();
    while (!input.is_spent()) {
        act();
        REQUIRE(take_errors() == (model->is_heard ? model->errors : 0));
        model->errors = 0;
    }
    if (model->is_initialised) {
        deinit();
    }
    REQUIRE(live_blocks() == 0);
}
