/* The requests about the adviser. Its modules are callbacks of this program, called what the requests
 * call them: they print that they were called, and answer as they were told. */
#include "replay.h"

#include <ky_adviser.h>
#include <ky_names.h>

#include <assert.h>
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char* const event_names[] = {
// clang-format off
#define EVENT(name) [ADVISER_EVENT_##name] = #name
    // clang-format on
    EVENT(NONE),
    EVENT(PORT_ADDED),
    EVENT(PORT_DELETED),
    EVENT(SWID_ADDED),
    EVENT(SWID_DELETED),
    EVENT(PRE_DEVICE_ADDED),
    EVENT(DEVICE_ADDED),
    EVENT(DEVICE_READY),
    EVENT(PRE_DEVICE_DELETED),
    EVENT(DEVICE_DELETED),
    EVENT(PORT_ADDED_INTO_SWID),
    EVENT(PRE_PORT_DELETED_FROM_SWID),
    EVENT(PRE_FAILED_PORT_DELETED_FROM_SWID),
    EVENT(PORT_DELETED_FROM_SWID),
    EVENT(FID_ADDED),
    EVENT(FID_DELETED),
    EVENT(PORT_VID_ADDED),
    EVENT(PORT_VID_DELETED),
    EVENT(PREPARE_PROFILE),
    EVENT(PORT_VLAN_MEMBERSHIP_ADD_E),
    EVENT(PORT_VLAN_MEMBERSHIP_DELETE_E),
    EVENT(VPORT_BRIDGE_ADD),
    EVENT(PRE_VPORT_BRIDGE_DELETE),
    EVENT(VPORT_BRIDGE_DELETE),
    EVENT(VPORT_BRIDGE_PENDING_PUSH),
    EVENT(SPAN_SESSION_UPDATE),
    EVENT(INGRESS_FILTER_CHANGE),
    EVENT(PRE_MC_CONTAINER_CHANGE),
    EVENT(MC_CONTAINER_ERIF_POINTER_CHANGE),
    EVENT(MC_CONTAINER_NVE_MC_POINTER_CHANGE),
    EVENT(MC_CONTAINER_PORT_MC_POINTER_CHANGE),
    EVENT(MC_CONTAINER_NEXT_HOPS_CHANGE),
    EVENT(POST_RIF_ADD),
    EVENT(PRE_RIF_DELETE),
    EVENT(TUNNEL_DECAP_CHANGE),
    EVENT(IPV6_CHANGE),
    EVENT(FDB_MC_MID_CHANGE),
    EVENT(POST_LAG_REDIRECT_SET),
    EVENT(BRIDGE_TUNNEL_MAP_ADD),
    EVENT(BRIDGE_TUNNEL_MAP_DELETE),
    EVENT(FDB_UC_MAC_ADD),
    EVENT(FDB_UC_MAC_DELETE),
    EVENT(POST_KVD_HASH_NO_RESOURCES),
    EVENT(SDK_CLIENT_CLOSE),
    EVENT(POST_PORT_OPER_DOWN_E),
    EVENT(PORT_ADMIN_STATE),
    EVENT(PRE_VPORT_BRIDGE_ADD),
    EVENT(PRE_ISSU_END),
    EVENT(POST_RIF_ENABLE),
    EVENT(PRE_RIF_DISABLE),
    EVENT(POST_TUNNEL_ATTRIBUTES_CHANGE),
    EVENT(POST_ECMP_UPDATE),
#undef EVENT
};
static_assert(COUNT_OF(event_names) == ADVISER_EVENT_MAX + 1, "an event has no name here");

static const char* event_name(uint32_t event)
{
    return event <= ADVISER_EVENT_MAX ? event_names[event] : "Unknown";
}

/* ---- Modules ---- */

enum answer {
    ANSWER_ACCEPT,
    ANSWER_REJECT,
    ANSWER_FAIL_ROLLBACK,
    ANSWER_LEAVE, /* accepts, and deregisters itself meanwhile */
};

static const char* answer_name(uint32_t answer)
{
    static const char* const names[] = {"accept", "reject", "fail rollback", "leave"};
    return answer < COUNT_OF(names) ? names[answer] : "Unknown";
}

#define MODULES_MAX 6
#define MODULE_NAME_SIZE 32

static struct module {
    char name[MODULE_NAME_SIZE];
    struct {
        uint32_t answer;
        ky_status_t status; /* to reject with */
    } told[ADVISER_EVENT_MAX + 1];
} modules[MODULES_MAX];

static ky_status_t called(adviser_cb_t callback, adviser_event_t event);

/* The adviser tells callbacks apart by their addresses, so each module has one of its own. */
// clang-format off
#define CALLBACK(number)                                                        \
    static ky_status_t callback_##number(adviser_event_t event, void* event_data) \
    {                                                                           \
        (void)event_data;                                                       \
        return called(callback_##number, event);                                \
    }
// clang-format on
CALLBACK(0)
CALLBACK(1)
CALLBACK(2)
CALLBACK(3)
CALLBACK(4)
CALLBACK(5)

/* Of the modules; in the order of their addresses, once start_adviser has run. */
static adviser_cb_t callbacks[MODULES_MAX] = {callback_0, callback_1, callback_2,
                                              callback_3, callback_4, callback_5};

static int compare_addresses(const void* a, const void* b)
{
    const uintptr_t left = (uintptr_t) * (const adviser_cb_t*)a;
    const uintptr_t right = (uintptr_t) * (const adviser_cb_t*)b;
    return left < right ? -1 : left > right;
}

static ky_status_t called(adviser_cb_t callback, adviser_event_t event)
{
    size_t number = 0;
    while (callbacks[number] != callback) {
        number++;
    }
    const struct module* module = &modules[number];
    const bool is_rollback = event == ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
    const uint32_t registered = is_rollback ? ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID : event;
    const uint32_t answer = module->told[registered].answer;
    ky_status_t status = KY_STATUS_SUCCESS;
    if (answer == ANSWER_REJECT && !is_rollback) {
        status = module->told[registered].status;
    } else if (answer == ANSWER_FAIL_ROLLBACK && is_rollback) {
        status = KY_STATUS_ERROR;
    } else if (answer == ANSWER_LEAVE && !is_rollback) {
        adviser_register_event(KY_ACCESS_CMD_DELETE, event, callback);
    }
    printf(
        "    %s hears %s: %" PRIu32 " %s\n", module->name, event_name(event), status,
        ky_status_str(status));
    return status;
}

/* The module of a name; one that is new takes a free place. */
static struct module* find_module(const char* name)
{
    if (strlen(name) >= MODULE_NAME_SIZE) {
        unreadable("'%s' is too long for a module", name);
        return NULL;
    }
    for (size_t i = 0; i < MODULES_MAX; i++) {
        if (modules[i].name[0] == '\0') {
            snprintf(modules[i].name, sizeof modules[i].name, "%s", name);
        }
        if (strcmp(modules[i].name, name) == 0) {
            return &modules[i];
        }
    }
    unreadable("there can be no more modules than %d", MODULES_MAX);
    return NULL;
}

/* ---- register EVENT MODULE [ANSWER], deregister EVENT MODULE, event EVENT, adviser init|deinit ---- */

/* The first request finds the adviser initialised, as in an SDK that is up. Modules are called in
 * the order in which they are first named. */
static void start_adviser(void)
{
    static bool is_started = false;
    if (!is_started) {
        is_started = true;
        qsort(callbacks, MODULES_MAX, sizeof callbacks[0], compare_addresses);
        adviser_init();
    }
}

static bool
change_registration(ky_access_cmd_t cmd, const words_t* words, uint32_t answer, ky_status_t status)
{
    uint32_t event = 0;
    if (!read_value(words->word[1], event_name, &event)) {
        return false;
    }
    struct module* module = find_module(words->word[2]);
    if (module == NULL) {
        return false;
    }
    start_adviser();
    const ky_status_t result = adviser_register_event(cmd, event, callbacks[module - modules]);
    if (result == KY_STATUS_SUCCESS) {
        module->told[event].answer = answer;
        module->told[event].status = status;
    }
    return print_status(result);
}

bool request_register(const words_t* words)
{
    uint32_t answer = ANSWER_ACCEPT;
    uint32_t status = KY_STATUS_RESOURCE_IN_USE;
    if ((words->word[3] != NULL && !read_value(words->word[3], answer_name, &answer)) ||
        (words->word[4] != NULL && !read_uint32(words->word[4], &status))) {
        return false;
    }
    if (words->word[4] != NULL && answer != ANSWER_REJECT) {
        return unreadable("a status goes with 'reject' alone");
    }
    return change_registration(KY_ACCESS_CMD_ADD, words, answer, status);
}

bool request_deregister(const words_t* words)
{
    return change_registration(KY_ACCESS_CMD_DELETE, words, ANSWER_ACCEPT, KY_STATUS_SUCCESS);
}

bool request_event(const words_t* words)
{
    uint32_t event = 0;
    if (!read_value(words->word[1], event_name, &event)) {
        return false;
    }
    start_adviser();
    return print_status(adviser_process_event(event, NULL));
}

bool request_adviser(const words_t* words)
{
    const bool is_init = strcmp(words->word[1], "init") == 0;
    if (!is_init && strcmp(words->word[1], "deinit") != 0) {
        return unreadable("the adviser knows 'init' and 'deinit', not '%s'", words->word[1]);
    }
    start_adviser();
    return print_status(is_init ? adviser_init() : adviser_deinit());
}
