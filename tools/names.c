/* The enumerations, and the requests about them. */
#include "request.h"

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>
#include <ky_values.h>

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* ---- Names that are in messages alone ---- */

static char event_names[ADVISER_EVENT_MAX + 1][64];
static char mem_type_names[64][64];
uint8_t port_type_bits[16];

/* Without a registry, the adviser refuses each event by its name; the summary of a type of memory
 * ends in its name; a row of one bit accepts one type of port. */
void learn_names(void)
{
    char record[RECORD_SIZE] = "";
    record_buffer = record;
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        adviser_process_event(event, NULL);
        sscanf(record, "Can't process event '%63[^']", event_names[event]);
    }
    utils_log_verbosity_level_set(KY_LOG_LEVEL_MAX);
    for (uint32_t type = 1; type < COUNT_OF(mem_type_names); type++) {
        utils_memory_print_summary(type);
        sscanf(record, "%*[^:]: Allocated %*u bytes for memory type %63s", mem_type_names[type]);
    }
    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
    uint8_t* accepted = &port_type_validation_table[1].allowed_port_types;
    const uint8_t kept = *accepted;
    for (uint32_t type = 0; type < COUNT_OF(port_type_bits); type++) {
        for (*accepted = 1; *accepted != 0; *accepted = (uint8_t)(*accepted << 1)) {
            port_type_bits[type] |= is_port_type_valid(1, type << 28) == 1 ? *accepted : 0;
        }
    }
    *accepted = kept;
    record_buffer = NULL;
}

const char* adviser_event_name(uint32_t event)
{
    return event < COUNT_OF(event_names) ? event_names[event] : "Unknown";
}

static const char* mem_type_name(uint32_t type)
{
    return type < COUNT_OF(mem_type_names) ? mem_type_names[type] : "Unknown";
}

static const char* port_row_name(uint32_t row)
{
    const bool is_row = row >= 1 && row < PORT_TYPE_VALIDATION_ROWS - 1;
    return is_row ? port_type_validation_table[row].func_name : "Unknown";
}

const char* port_type_bit_name(uint32_t bits)
{
    static char types[256];
    size_t length = 0;
    for (uint32_t type = 0; type < COUNT_OF(port_type_bits); type++) {
        if ((bits & port_type_bits[type]) != 0) {
            length += (size_t)snprintf(
                types + length, sizeof types - length, "%s%s", length == 0 ? "" : ", ",
                ky_port_type_str(type));
            bits &= ~(uint32_t)port_type_bits[type];
        }
    }
    return length == 0 || bits != 0 ? "Unknown" : types;
}

/* ---- Enumerations ---- */

#define VALUES_MAX 2048 /* no enumeration comes near it */

#include "constants.inc" /* the constants of the headers, by their values */

typedef struct enumeration {
    const char* name;
    const char* (*name_of)(uint32_t value);
    const char (*constants)[64];
    size_t constant_count;
} enumeration_t;

static const enumeration_t enumerations[] = {
#define ENUMERATION(name, name_of) {#name, name_of, name##_constants, COUNT_OF(name##_constants)},
#include "enumerations.inc"
};

static const char* enumeration_name(const void* list, size_t index)
{
    return ((const enumeration_t*)list)[index].name;
}

static const names_t enumeration_names = {
    "enumeration", enumeration_name, enumerations, COUNT_OF(enumerations)};

/* The one of a name, or of the name of its type or function: port_mode, ky_port_mode_t. */
static const enumeration_t* find_enumeration(const char* word)
{
    char name[64];
    snprintf(name, sizeof name, "%s", begins(word, "ky_") ? word + 3 : word);
    char* suffix = strrchr(name, '_');
    if (suffix != NULL && (is_named(suffix, "_t") || is_named(suffix, "_str"))) {
        *suffix = '\0';
    }
    const size_t index = find(&enumeration_names, name, 0);
    return index < COUNT_OF(enumerations) ? &enumerations[index] : NULL;
}

/* Empty if there is none, as the name is. */
static const char* constant_of(const enumeration_t* enumeration, uint32_t value)
{
    return value < enumeration->constant_count ? enumeration->constants[value] : "";
}

static const char* name_of(const enumeration_t* enumeration, uint32_t value)
{
    const char* none = enumeration->name_of(UINT32_MAX);
    const char* name = enumeration->name_of(value);
    return strcmp(name, none) == 0 ? "" : name;
}

static bool is_value(const enumeration_t* enumeration, uint32_t value)
{
    return name_of(enumeration, value)[0] != '\0' || constant_of(enumeration, value)[0] != '\0';
}

/* What the words for values are: the names and the constants by turns. A mask of several bits is
 * not among them. */
static const char* value_name(const void* list, size_t index)
{
    const enumeration_t* enumeration = list;
    const uint32_t value = (uint32_t)index / 2;
    const bool is_mask = enumeration->name_of == port_type_bit_name && (value & (value - 1)) != 0;
    return index % 2 != 0 ? constant_of(enumeration, value)
           : is_mask      ? ""
                          : name_of(enumeration, value);
}

static names_t names_of(const enumeration_t* enumeration)
{
    static size_t counts[COUNT_OF(enumerations)]; /* of values; 0 as long as nobody has asked */
    size_t* count = &counts[enumeration - enumerations];
    *count = *count == 0 ? VALUES_MAX : *count;
    for (; *count > 1 && !is_value(enumeration, (uint32_t)*count - 1); --*count) {}
    return (names_t){enumeration->name, value_name, enumeration, 2 * *count};
}

bool find_value(const char* enumeration, const char* word, uint32_t* value)
{
    const names_t names = names_of(find_enumeration(enumeration));
    *value = (uint32_t)find(&names, word, 2 * (size_t)*value) / 2;
    return *value < names.count / 2;
}

bool read_value(const char* placeholder, const char* word, uint32_t* value)
{
    const enumeration_t* enumeration = find_enumeration(placeholder);
    if (enumeration == NULL) {
        const long bits = strtol(placeholder + strcspn(placeholder, "0123456789"), NULL, 10);
        return read_number(word, 0, UINT32_MAX >> (bits == 0 ? 0 : 32 - bits), value);
    }
    if (number_in(word) != NO_NUMBER) {
        return read_number(word, INT32_MIN, UINT32_MAX, value);
    }
    *value = 0;
    const names_t names = names_of(enumeration);
    return find_value(placeholder, word, value) || no_such(&names, word);
}

const char* value_text(const char* enumeration, uint32_t value)
{
    static char text[256];
    const enumeration_t* of = find_enumeration(enumeration);
    const char* constant = constant_of(of, value);
    snprintf(
        text, sizeof text, "%" PRIu32 "%s%s \"%s\"", value, constant[0] == '\0' ? "" : " ",
        constant, of->name_of(value));
    return text;
}

bool answer_with(ky_status_t status)
{
    is_refused = status != KY_STATUS_SUCCESS;
    answer(
        "%s%s%s", colour(is_refused ? "\033[31m" : "\033[32m"), value_text("status", status),
        colour("\033[m"));
    return true;
}

/* ---- name, status ---- */

/* Lists the values that are a number or have a text in their names. */
static bool list(const enumeration_t* first, size_t count, const char* text)
{
    const int64_t number = number_in(text);
    is_refused = true;
    for (const enumeration_t* it = first; it != first + count; it++) {
        const names_t names = names_of(it);
        for (size_t i = 0; i < names.count; i += 2) {
            const char* name = value_name(it, i);
            const char* constant = value_name(it, i + 1);
            if ((name[0] != '\0' || constant[0] != '\0') &&
                (number != NO_NUMBER ? (size_t)number == i / 2
                                     : contains(name, text) || contains(constant, text))) {
                answer(
                    "%s%s%s", count == 1 ? "" : it->name, count == 1 ? "" : " ",
                    value_text(it->name, (uint32_t)i / 2));
                is_refused = false;
            }
        }
    }
    return !is_refused || !report("there is no such value");
}

bool answer_name_search(const request_t* request)
{
    return list(enumerations, COUNT_OF(enumerations), request->text[0]);
}

/* Answers a number with its value, and a name with all values that have it. */
static bool answer_values(const enumeration_t* enumeration, const request_t* request, size_t first)
{
    for (size_t i = first; i < request->count; i++) {
        uint32_t value = 0;
        if (!read_value(enumeration->name, request->text[i], &value)) {
            return false;
        }
        do {
            is_refused = is_refused || !is_value(enumeration, value);
            answer("%s", value_text(enumeration->name, value++));
        } while (number_in(request->text[i]) == NO_NUMBER &&
                 find_value(enumeration->name, request->text[i], &value));
    }
    return true;
}

bool answer_name(const request_t* request)
{
    if (request->count == 0) {
        for (size_t i = 0; i < COUNT_OF(enumerations); i++) {
            answer("%s", enumerations[i].name);
        }
        return true;
    }
    const enumeration_t* enumeration = find_enumeration(request->text[0]);
    if (enumeration == NULL) {
        return no_such(&enumeration_names, request->text[0]);
    }
    return request->count == 1 ? list(enumeration, 1, "") : answer_values(enumeration, request, 1);
}

bool answer_status(const request_t* request)
{
    return answer_values(find_enumeration("status"), request, 0);
}
