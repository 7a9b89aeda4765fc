/* The requests about names and status codes. */
#include "kriolilglu.h"

#include <ky_names.h>

#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#define VALUE_MAX UINT16_MAX /* the highest one that is looked at; no enumeration comes near it */

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
    {"memory_type", memory_type_name},
    {"port_function", port_function_name},
    {"port_type_bit", port_type_bit_name},
};

/* Finds one by its name or that of its type or function: port_mode, ky_port_mode_t. */
static const enumeration_t* find_enumeration(const char* word)
{
    static char name[64];
    const size_t prefix = strncmp(word, "ky_", 3) == 0 ? 3 : 0;
    snprintf(name, sizeof name, "%s", word + prefix);
    char* suffix = strrchr(name, '_');
    if (prefix != 0 && suffix != NULL && strstr("_str _t", suffix) != NULL) {
        *suffix = '\0';
    }
    return FIND("enumeration", name, enumerations);
}

/* Whether the library names the value otherwise than one that cannot exist. */
static bool has_name(const enumeration_t* enumeration, uint32_t value)
{
    return strcmp(enumeration->name_of(value), enumeration->name_of(UINT32_MAX)) != 0;
}

bool read_value(const char* word, const char* enumeration, uint32_t* value)
{
    const enumeration_t* found = FIND(NULL, enumeration, enumerations);
    nearest_t nearest = {.word = word};
    if (found == NULL || is_number(word)) {
        return found == NULL || read_uint32(word, value);
    }
    for (*value = 0; *value <= VALUE_MAX; (*value)++) {
        if (has_name(found, *value)) {
            if (is_named(word, found->name_of(*value))) {
                return true;
            }
            offer(&nearest, found->name_of(*value));
        }
    }
    return no_such(found->name, &nearest);
}

/* Lists the values whose names contain a text, behind a prefix; returns how many there are. */
static size_t list(const enumeration_t* enumeration, const char* text, const char* prefix)
{
    size_t count = 0;
    for (uint32_t value = 0; value <= VALUE_MAX; value++) {
        const char* name = enumeration->name_of(value);
        if (contains(name, text) && has_name(enumeration, value)) {
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
        count += list(&enumerations[i], request->word[0], enumerations[i].name);
    }
    is_refused = count == 0;
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
    const enumeration_t* named = find_enumeration(request->word[0]);
    if (named == NULL || request->count == 1) {
        return named != NULL && list(named, "", "") != 0;
    }
    if (!read_value(request->word[1], named->name, &value)) {
        return false;
    }
    answer("%" PRIu32 " \"%s\"", value, named->name_of(value));
    return true;
}

bool answer_status(const request_t* request)
{
    answer("%" PRIu32 " %s", request->value[0], ky_status_str(request->value[0]));
    return true;
}
