/* The requests about the adviser. Its modules are callbacks of this program, which have the names
 * that requests give them: they print how they are called, and answer as they are told. */
#include "request.h"

#include <ky_adviser.h>

#include <stdlib.h>
#include <string.h>

#define NAME_SIZE 64
#define EVENT_COUNT (ADVISER_EVENT_MAX + 1)

/* What a module does when it is called for an event. */
struct behaviour {
    ky_status_t status;
    ky_status_t in_rollback;
    bool leaves; /* deregisters itself */
};

static ky_status_t called(adviser_cb_t callback, adviser_event_t event);

/* The adviser tells callbacks apart by their addresses, so each module has one of its own. */
#define CALLBACKS(X) X(0) X(1) X(2) X(3) X(4) X(5)
#define CALLBACK(number)                                                                \
    static ky_status_t callback_##number(adviser_event_t event, void* event_data)       \
    {                                                                                   \
        return event_data == NULL ? called(callback_##number, event) : KY_STATUS_ERROR; \
    }
#define MODULE(number) {.callback = callback_##number},
CALLBACKS(CALLBACK)

/* The adviser calls callbacks in the order of their addresses: sorted, that is the order in which
 * the requests first name the modules. */
static struct module {
    adviser_cb_t callback;
    char name[NAME_SIZE];
    struct behaviour at[EVENT_COUNT];
} modules[] = {CALLBACKS(MODULE)};

static int compare_addresses(const void* a, const void* b)
{
    const uintptr_t left = (uintptr_t)((const struct module*)a)->callback;
    const uintptr_t right = (uintptr_t)((const struct module*)b)->callback;
    return left < right ? -1 : left > right;
}

static ky_status_t called(adviser_cb_t callback, adviser_event_t event)
{
    const struct module* module = modules;
    while (module->callback != callback) {
        module++;
    }
    const bool is_rollback = event == ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
    const struct behaviour* here =
        &module->at[is_rollback ? ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID : event % EVENT_COUNT];
    const ky_status_t status = is_rollback ? here->in_rollback : here->status;
    if (here->leaves && !is_rollback) {
        adviser_register_event(KY_ACCESS_CMD_DELETE, event, callback);
    }
    answer(
        "  %s is called with %s: %s", module->name, adviser_event_name(event),
        value_text("status", status));
    return status;
}

/* The module of a name; a new one takes a free place. */
static struct module* find_module(const char* name)
{
    qsort(modules, COUNT_OF(modules), sizeof modules[0], compare_addresses);
    for (size_t i = 0; i < COUNT_OF(modules) && strlen(name) < NAME_SIZE; i++) {
        if (modules[i].name[0] == '\0') {
            memcpy(modules[i].name, name, strlen(name) + 1);
        }
        if (strcmp(modules[i].name, name) == 0) {
            return &modules[i];
        }
    }
    report("there are six modules already, or '%s' has more than 63 characters", name);
    return NULL;
}

/* ---- adviser, register, deregister, event ---- */

ANSWER(adviser, request->value[0] == 0 ? adviser_init() : adviser_deinit())
ANSWER(event, adviser_process_event(request->value[0], NULL))

bool answer_register(const request_t* request)
{
    enum { ACCEPT, REJECT, FAIL_ROLLBACK, LEAVE }; /* as in the form */
    const uint32_t event = request->value[0];
    const uint32_t what = request->value[2];
    if (request->count == 4 && what != REJECT) {
        return report("a status goes with 'reject' alone");
    }
    struct module* module = find_module(request->text[1]);
    if (module == NULL) {
        return false;
    }
    const ky_status_t status = adviser_register_event(KY_ACCESS_CMD_ADD, event, module->callback);
    if (status == KY_STATUS_SUCCESS) {
        module->at[event % EVENT_COUNT] = (struct behaviour){
            .status = request->count == 4 ? request->value[3]
                      : what == REJECT    ? KY_STATUS_RESOURCE_IN_USE
                                          : KY_STATUS_SUCCESS,
            .in_rollback = what == FAIL_ROLLBACK ? KY_STATUS_ERROR : KY_STATUS_SUCCESS,
            .leaves = what == LEAVE,
        };
    }
    return answer_with(status);
}

bool answer_deregister(const request_t* request)
{
    const struct module* module = find_module(request->text[1]);
    return module != NULL && answer_with(adviser_register_event(
                                 KY_ACCESS_CMD_DELETE, request->value[0], module->callback));
}
