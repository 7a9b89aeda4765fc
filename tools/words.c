/* Reading the words of a request, and the requests about names. */
#include "kriolilglu.h"

#include <ky_names.h>

#include <arpa/inet.h>
#include <ctype.h>
#include <inttypes.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

unsigned line_number;

bool unreadable(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    fprintf(stderr, line_number == 0 ? "kriolilglu: " : "line %u: ", line_number);
    vfprintf(stderr, format, arguments);
    fputc('\n', stderr);
    va_end(arguments);
    return false;
}

/* ---- Names, and those near a word ---- */

/* A character of a name, as all ways to write it. */
static int plain(char c)
{
    return c == ' ' || c == '-' ? '_' : toupper((unsigned char)c);
}

bool begins(const char* name, const char* word)
{
    for (; *word != '\0' && plain(*name) == plain(*word); name++) {
        word++;
    }
    return *word == '\0';
}

bool is_named(const char* word, const char* name)
{
    return *name != '\0' && strlen(word) == strlen(name) && begins(name, word);
}

bool contains(const char* name, const char* word)
{
    for (; *name != '\0' && !begins(name, word); name++) {}
    return begins(name, word);
}

/* The Levenshtein distance to the first characters of a name. */
static size_t distance(const char* word, const char* name, size_t length)
{
    size_t row[64]; /* of the word so far, to each beginning of the name */
    length = length < COUNT_OF(row) ? length : COUNT_OF(row) - 1;
    for (size_t j = 0; j <= length; j++) {
        row[j] = j;
    }
    for (size_t i = 0; word[i] != '\0'; i++) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 1; j <= length; j++) {
            const size_t change = diagonal + (plain(word[i]) != plain(name[j - 1]));
            const size_t step = (row[j] < row[j - 1] ? row[j] : row[j - 1]) + 1;
            diagonal = row[j];
            row[j] = change < step ? change : step;
        }
    }
    return row[length];
}

void offer(nearest_t* nearest, const char* name)
{
    const size_t whole = distance(nearest->word, name, strlen(name));
    const size_t first = distance(nearest->word, name, strcspn(name, " "));
    struct near_name next = {name, first < whole ? first : whole};
    next.distance = contains(name, nearest->word) ? 1 : next.distance;
    for (size_t i = 0; i < COUNT_OF(nearest->near) && name[0] != '\0'; i++) {
        const struct near_name kept = nearest->near[i];
        if (kept.name == NULL || next.distance < kept.distance) {
            nearest->near[i] = next;
            next = kept;
        }
    }
}

bool no_such(const char* what, const nearest_t* nearest)
{
    char near[256] = "";
    for (size_t i = 0; i < COUNT_OF(nearest->near) && nearest->near[i].name != NULL; i++) {
        snprintf(
            near + strlen(near), sizeof near - strlen(near), "%s%s", i == 0 ? "; near it: " : ", ",
            nearest->near[i].name);
    }
    return unreadable("there is no %s '%s'%s", what, nearest->word, near);
}

const void* find(const char* what, const char* word, const void* table, size_t count, size_t size)
{
    nearest_t nearest = {.word = word};
    for (const char* row = table; row != (const char*)table + count * size; row += size) {
        const char* name = NULL;
        memcpy(&name, row, sizeof name);
        if (is_named(word, name)) {
            return row;
        }
        offer(&nearest, name);
    }
    if (what != NULL) {
        no_such(what, &nearest);
    }
    return NULL;
}

/* ---- Numbers and addresses ---- */

bool is_number(const char* word, int64_t* number)
{
    char* end = NULL;
    *number = strtoll(word, &end, strchr(word, 'x') != NULL ? 16 : 10);
    return isdigit((unsigned char)word[word[0] == '-' ? 1 : 0]) != 0 && *end == '\0';
}

bool read_number(const char* word, int64_t min, int64_t max, int64_t* number)
{
    return (is_number(word, number) && *number >= min && *number <= max) ||
           unreadable("'%s' is not a number from %" PRId64 " to %" PRId64, word, min, max);
}

bool read_uint32(const char* word, uint32_t* number)
{
    int64_t wide = 0;
    const bool ok = read_number(word, 0, UINT32_MAX, &wide);
    *number = (uint32_t)wide;
    return ok;
}

bool read_prefix(const char* word, ky_ip_prefix_t* prefix)
{
    char address[64];
    const size_t length = strcspn(word, "/");
    snprintf(address, sizeof address, "%.*s", (int)length, word);
    const char* mask = word[length] == '\0' ? "" : word + length + 1;
    const bool is_ipv4 = strchr(address, ':') == NULL;
    const int family = is_ipv4 ? AF_INET : AF_INET6;
    const size_t count = is_ipv4 ? 1 : 4;
    uint32_t* const words[] = {
        is_ipv4 ? &prefix->prefix.ipv4.addr : prefix->prefix.ipv6.addr,
        is_ipv4 ? &prefix->prefix.ipv4.mask : prefix->prefix.ipv6.mask};
    const bool has_mask = strpbrk(mask, ".:") != NULL;
    int64_t bits = (int64_t)count * 32;

    prefix->version = is_ipv4 ? 1 : 2;
    if (inet_pton(family, address, words[0]) != 1 ||
        (has_mask && inet_pton(family, mask, words[1]) != 1) || length >= sizeof address) {
        return unreadable("'%s' is not an address, with a length or a mask", word);
    }
    if (!has_mask && word[length] != '\0' && !read_number(mask, 0, bits, &bits)) {
        return false;
    }
    for (size_t i = 0; i < count; i++, bits -= 32) {
        words[0][i] = ntohl(words[0][i]);
        words[1][i] = has_mask    ? ntohl(words[1][i])
                      : bits <= 0 ? 0
                      : bits < 32 ? UINT32_MAX << (32 - bits)
                                  : UINT32_MAX;
    }
    return true;
}

/* ---- Enumerations, and the requests name and status ---- */

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
    char name[64];
    snprintf(name, sizeof name, "%s", begins(word, "ky_") ? word + 3 : word);
    char* suffix = strrchr(name, '_');
    if (suffix != NULL && (is_named(suffix, "_t") || is_named(suffix, "_str"))) {
        *suffix = '\0';
    }
    return FIND("enumeration", name, enumerations);
}

bool is_enumeration(const char* name)
{
    return FIND(NULL, name, enumerations) != NULL;
}

/* Whether the library names the value otherwise than one that cannot exist; perhaps by no text. */
static bool has_name(const enumeration_t* enumeration, uint32_t value)
{
    return strcmp(enumeration->name_of(value), enumeration->name_of(UINT32_MAX)) != 0;
}

bool read_value(const char* word, const char* enumeration, uint32_t* value)
{
    const enumeration_t* found = find_enumeration(enumeration);
    nearest_t nearest = {.word = word};
    int64_t number = 0;
    if (is_number(word, &number)) {
        return read_uint32(word, value);
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
    if (is_refused) {
        unreadable("no value has '%s' in its name", request->word[0]);
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
    const enumeration_t* named = find_enumeration(request->word[0]);
    if (named == NULL || request->count == 1) {
        return named != NULL && list(named, "", "") != 0;
    }
    if (!read_value(request->word[1], named->name, &value)) {
        return false;
    }
    is_refused = !has_name(named, value) || named->name_of(value)[0] == '\0';
    answer("%" PRIu32 " \"%s\"", value, named->name_of(value));
    return true;
}

bool answer_status(const request_t* request)
{
    const uint32_t code = request->value[0];
    const enumeration_t status = {"status", ky_status_str};
    is_refused = !has_name(&status, code) || ky_status_str(code)[0] == '\0';
    answer("%" PRIu32 " %s", code, ky_status_str(code));
    return true;
}
