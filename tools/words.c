/* Reading the words of a request. */
#include "kriolilglu.h"

#include <arpa/inet.h>
#include <ctype.h>
#include <errno.h>
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

static bool begins(const char* name, const char* word)
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

/* How many characters must be put in, taken out or changed; 1 for a part of the name. */
static size_t distance(const char* word, const char* name)
{
    enum { LENGTH_MAX = 64 };
    size_t row[LENGTH_MAX + 1]; /* of the word so far, to each beginning of the name */
    size_t length = 0;
    if (contains(name, word)) {
        return 1;
    }
    for (; length < LENGTH_MAX && name[length] != '\0'; length++) {
        row[length] = length;
    }
    row[length] = length;
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
    const size_t first = strcspn(name, " "); /* of two words, one may do */
    return first < length && row[first] < row[length] ? row[first] : row[length];
}

void offer(nearest_t* nearest, const char* name)
{
    struct near_name next = {name, distance(nearest->word, name)};
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
    size_t length = 0;
    for (size_t i = 0; i < COUNT_OF(nearest->near) && nearest->near[i].name != NULL; i++) {
        length += (size_t)snprintf(
            near + length, sizeof near - length, "%s%s", i == 0 ? "; near it: " : ", ",
            nearest->near[i].name);
    }
    return unreadable("there is no %s '%s'%s", what, nearest->word, near);
}

const void* find(const char* what, const char* word, const void* table, size_t count, size_t size)
{
    nearest_t nearest = {.word = word};
    for (const char* row = table; row != (const char*)table + count * size; row += size) {
        const char* const* name = (const void*)row;
        if (is_named(word, *name)) {
            return row;
        }
        offer(&nearest, *name);
    }
    if (what != NULL) {
        no_such(what, &nearest);
    }
    return NULL;
}

/* ---- Numbers and addresses ---- */

bool is_number(const char* word)
{
    return isdigit((unsigned char)word[word[0] == '-' ? 1 : 0]) != 0;
}

bool read_number(const char* word, int64_t min, int64_t max, int64_t* number)
{
    char* end = NULL;
    errno = 0;
    *number = strtoll(word, &end, strchr(word, 'x') != NULL ? 16 : 10);
    if (!is_number(word) || *end != '\0' || errno != 0 || *number < min || *number > max) {
        return unreadable("'%s' is not a number from %" PRId64 " to %" PRId64, word, min, max);
    }
    return true;
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
    char address[64] = "";
    char mask[64] = "";
    sscanf(word, "%63[^/]/%63s", address, mask);
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
        (has_mask && inet_pton(family, mask, words[1]) != 1)) {
        return unreadable("'%s' is not an address, with a length or a mask", word);
    }
    if (!has_mask && strchr(word, '/') != NULL && !read_number(mask, 0, bits, &bits)) {
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
