/* The requests about the adviser. Its modules are callbacks of this program, which have the names
 * that requests give them: they print how they are called, and answer as they are told. */
#include "kriolilglu.h"

#include <ky_adviser.h>
#include <ky_names.h>

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define EVENTS_MAX 64
#define NAME_SIZE 64

static char event_names[EVENTS_MAX][NAME_SIZE];

const char* event_name(uint32_t event)
{
    return event < EVENTS_MAX && event_names[event][0] != '\0' ? event_names[event] : "Unknown";
}

/* What a module is told to answer to an event: numbered as in the form of "register". */
struct told {
    enum { ACCEPT, REJECT, FAIL_ROLLBACK, LEAVE } answer;
    ky_status_t status; /* to reject with */
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
    struct told told[EVENTS_MAX];
} modules[] = {CALLBACKS(MODULE)};

static int compare_addresses(const void* a, const void* b)
{
    const uintptr_t left = (uintptr_t)((const struct module*)a)->callback;
    const uintptr_t right = (uintptr_t)((const struct module*)b)->callback;
    return left < right ? -1 : left > right;
}

/* Orders the modules, and learns the names of events: without a registry, the adviser refuses
 * each by its name. */
void prepare_adviser(void)
{
    char record[RECORD_SIZE] = "";
    record_buffer = record;
    for (uint32_t event = 1;
         event < EVENTS_MAX && adviser_process_event(event, NULL) == KY_STATUS_DB_NOT_INITIALIZED;
         event++) {
        sscanf(record, "Can't process event '%63[^']", event_names[event]);
    }
    record_buffer = NULL;
    qsort(modules, COUNT_OF(modules), sizeof modules[0], compare_addresses);
}

static ky_status_t called(adviser_cb_t callback, adviser_event_t event)
{
    const struct module* module = modules;
    while (module->callback != callback) {
        module++;
    }
    const bool is_rollback = event == ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
    const uint32_t registered =
        is_rollback ? ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID : event % EVENTS_MAX;
    const struct told* told = &module->told[registered];
    ky_status_t status = KY_STATUS_SUCCESS;
    if (told->answer == REJECT && !is_rollback) {
        status = told->status;
    } else if (told->answer == FAIL_ROLLBACK && is_rollback) {
        status = KY_STATUS_ERROR;
    } else if (told->answer == LEAVE && !is_rollback) {
        adviser_register_event(KY_ACCESS_CMD_DELETE, event, callback);
    }
    answer(
        "  %s is called with %s: %" PRIu32 " %s", module->name, event_name(event), status,
        ky_status_str(status));
    return status;
}

/* The module of a name; a new one takes a free place. */
static struct module* find_module(const char* name)
{
    for (size_t i = 0; i < COUNT_OF(modules) && strlen(name) < NAME_SIZE; i++) {
        if (modules[i].name[0] == '\0') {
            memcpy(modules[i].name, name, strlen(name) + 1);
        }
        if (strcmp(modules[i].name, name) == 0) {
            return &modules[i];
        }
    }
    unreadable(
        "there is no room for a module '%s': %zu names of %d characters are the limit", name,
        COUNT_OF(modules), NAME_SIZE - 1);
    return NULL;
}

/* ---- adviser, register, deregister, event ---- */

bool answer_adviser(const request_t* request)
{
    return answer_with(request->value[0] == 0 ? adviser_init() : adviser_deinit());
}

bool answer_register(const request_t* request)
{
    if (request->count == 4 && request->value[2] != REJECT) {
        return unreadable("a status goes with 'reject' alone");
    }
    struct module* module = find_module(request->word[1]);
    if (module == NULL) {
        return false;
    }
    const uint32_t event = request->value[0];
    const ky_status_t status = adviser_register_event(KY_ACCESS_CMD_ADD, event, module->callback);
    if (status == KY_STATUS_SUCCESS) {
        struct told* told = &module->told[event % EVENTS_MAX];
        told->answer = request->value[2];
        told->status = request->count == 4 ? request->value[3] : KY_STATUS_RESOURCE_IN_USE;
    }
    return answer_with(status);
}

bool answer_deregister(const request_t* request)
{
    const struct module* module = find_module(request->word[1]);
    return module != NULL && answer_with(adviser_register_event(
                                 KY_ACCESS_CMD_DELETE, request->value[0], module->callback));
}

bool answer_event(const request_t* request)
{
    return answer_with(adviser_process_event(request->value[0], NULL));
}
