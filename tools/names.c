/* The enumerations, and the requests about them: name and status. */
#include "names.h"

#include "output.h"
#include "request.h"
#include "words.h"

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <inttypes.h>
#include <stdio.h>
#include <string.h>

/* ---- Names that are in messages alone ---- */

#define LEARNT_MAX 64
#define TYPE_COUNT 16

static char event_names[LEARNT_MAX][LEARNT_MAX];
static char mem_type_names[LEARNT_MAX][LEARNT_MAX];
static uint8_t port_type_bits[TYPE_COUNT];

/* Without a registry, the adviser refuses each event by its name; the summary of a type of memory
 * ends in its name; a row that accepts a single bit accepts a single type of port. */
void learn_names(void)
{
    char record[RECORD_SIZE] = "";
    record_buffer = record;
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        adviser_process_event(event, NULL);
        sscanf(record, "Can't process event '%63[^']", event_names[event]);
    }
    utils_log_verbosity_level_set(KY_LOG_LEVEL_MAX);
    for (uint32_t type = 1; utils_memory_print_summary(type) == KY_STATUS_SUCCESS; type++) {
        sscanf(strrchr(record, ' '), "%63s", mem_type_names[type]);
    }
    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
    uint8_t* accepted = &port_type_validation_table[1].allowed_port_types;
    const uint8_t kept = *accepted;
    for (uint32_t type = 0; type < TYPE_COUNT; type++) {
        for (*accepted = 1; *accepted != 0; *accepted = (uint8_t)(*accepted << 1)) {
            port_type_bits[type] |= is_port_type_valid(1, type << 28) == 1 ? *accepted : 0;
        }
    }
    *accepted = kept;
    record_buffer = NULL;
}

const char* event_name(uint32_t event)
{
    return event < LEARNT_MAX ? event_names[event] : "Unknown";
}

static const char* mem_type_name(uint32_t type)
{
    return type < LEARNT_MAX ? mem_type_names[type] : "Unknown";
}

const char* port_row_name(uint32_t row)
{
    return row >= 1 && row < PORT_TYPE_VALIDATION_ROWS - 1
               ? port_type_validation_table[row].func_name
               : "Unknown";
}

uint32_t port_type_bit(uint32_t type)
{
    return type < TYPE_COUNT ? port_type_bits[type] : 0;
}

const char* port_types(uint32_t bits)
{
    static char types[128];
    size_t length = 0;
    uint32_t nameless = bits;
    for (uint32_t type = 0; type < TYPE_COUNT; type++) {
        nameless &= ~port_type_bit(type);
    }
    for (uint32_t type = 0; type < TYPE_COUNT && nameless == 0; type++) {
        if ((bits & port_type_bit(type)) != 0 && length < sizeof types) {
            length += (size_t)snprintf(
                types + length, sizeof types - length, "%s%s", length == 0 ? "" : ", ",
                ky_port_type_str(type));
        }
    }
    return length == 0 ? "Unknown" : types;
}

/* ---- Enumerations ---- */

#define VALUE_MAX 2047 /* the highest one that is looked at; no enumeration comes near it */

typedef struct enumeration {
    const char* name;
    const char* (*name_of)(uint32_t value);
} enumeration_t;

static const enumeration_t enumerations[] = {
// clang-format off
#define ENUMERATION(name) {#name, ky_##name##_str},
#include "enumerations.inc" /* one for each function ky_*_str that the library exports */
    // clang-format on
    {"adviser_event", event_name},
    {"mem_type", mem_type_name},
    {"port_row", port_row_name},
    {"port_type_bit", port_types},
};

static const char* enumeration_name(const void* list, size_t index)
{
    return index < COUNT_OF(enumerations) ? ((const enumeration_t*)list)[index].name : NULL;
}

static const names_t enumeration_names = {"enumeration", enumeration_name, enumerations};

bool is_enumeration(const char* name)
{
    size_t index = 0;
    return find(&enumeration_names, name, &index);
}

/* Finds one by its name or that of its type or function: port_mode, ky_port_mode_t. */
static const enumeration_t* find_enumeration(const char* word)
{
    char name[64];
    size_t index = 0;
    snprintf(name, sizeof name, "%s", begins(word, "ky_") ? word + 3 : word);
    char* suffix = strrchr(name, '_');
    if (suffix != NULL && (is_named(suffix, "_t") || is_named(suffix, "_str"))) {
        *suffix = '\0';
    }
    if (!find(&enumeration_names, name, &index)) {
        no_such(&enumeration_names, name);
        return NULL;
    }
    return &enumerations[index];
}

/* The name of a value; empty if the library prints that of a value that cannot exist. */
static const char* name_of(const enumeration_t* enumeration, uint32_t value)
{
    const char* name = enumeration->name_of(value);
    return strcmp(name, enumeration->name_of(UINT32_MAX)) == 0 ? "" : name;
}

/* The name of a value that a list shows: a mask of several bits is not among them. */
static const char* listed_name(const void* enumeration, size_t value)
{
    const enumeration_t* of = enumeration;
    const bool is_mask = of->name_of == port_types && (value & (value - 1)) != 0;
    return value > VALUE_MAX ? NULL : is_mask ? "" : name_of(of, (uint32_t)value);
}

static names_t names_of(const enumeration_t* enumeration)
{
    return (names_t){enumeration->name, listed_name, enumeration};
}

bool find_value(const char* enumeration, const char* word, uint32_t* value)
{
    const names_t names = names_of(find_enumeration(enumeration));
    size_t index = 0;
    const bool ok = find(&names, word, &index);
    *value = (uint32_t)index;
    return ok;
}

bool read_value(const char* enumeration, const char* word, uint32_t* value)
{
    int64_t number = 0;
    if (is_number(word, &number)) {
        return read_number(word, 0, UINT32_MAX, value);
    }
    const names_t names = names_of(find_enumeration(enumeration));
    return find_value(enumeration, word, value) || no_such(&names, word);
}

/* Lists the values whose names contain a text, behind a prefix; returns how many there are. */
static size_t list(const enumeration_t* enumeration, const char* text, const char* prefix)
{
    size_t count = 0;
    for (uint32_t value = 0; value <= VALUE_MAX; value++) {
        const char* name = listed_name(enumeration, value);
        if (name[0] != '\0' && contains(name, text)) {
            answer("%s%s%" PRIu32 " \"%s\"", prefix, *prefix == '\0' ? "" : " ", value, name);
            count++;
        }
    }
    return count;
}

bool answer_name_search(const request_t* request)
{
    size_t count = 0;
    for (size_t i = 0; i < COUNT_OF(enumerations); i++) {
        count += list(&enumerations[i], request->text[0], enumerations[i].name);
    }
    is_refused = count == 0;
    if (is_refused) {
        report("no value has '%s' in its name", request->text[0]);
    }
    return true;
}

bool answer_name(const request_t* request)
{
    uint32_t value = 0;
    if (request->count == 0) {
        for (size_t i = 0; i < COUNT_OF(enumerations); i++) {
            answer("%s", enumerations[i].name);
        }
        return true;
    }
    const enumeration_t* named = find_enumeration(request->text[0]);
    if (named == NULL || request->count == 1) {
        return named != NULL && list(named, "", "") != 0;
    }
    if (!read_value(named->name, request->text[1], &value)) {
        return false;
    }
    is_refused = name_of(named, value)[0] == '\0';
    answer("%" PRIu32 " \"%s\"", value, named->name_of(value));
    return true;
}

bool answer_status(const request_t* request)
{
    const uint32_t code = request->value[0];
    const enumeration_t status = {"status", ky_status_str};
    is_refused = name_of(&status, code)[0] == '\0';
    answer("%" PRIu32 " %s", code, ky_status_str(code));
    return true;
}

bool answer_with(ky_status_t status)
{
    is_refused = status != KY_STATUS_SUCCESS;
    answer(
        "%s%" PRIu32 " %s%s", colour(is_refused ? "\033[31m" : "\033[32m"), status,
        ky_status_str(status), colour("\033[m"));
    return true;
}
