#include "words.h"

#include <ky_values.h>

#include <arpa/inet.h>
#include <ctype.h>
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

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

size_t find(const names_t* names, const char* word, size_t index)
{
    while (index < names->count && !is_named(word, names->at(names->list, index))) {
        index++;
    }
    return index;
}

/* The Levenshtein distance between a word and a name, or the first word of one. */
static size_t distance(const char* word, const char* name)
{
    size_t row[64]; /* of the word so far, to each beginning of the name */
    const size_t length = strnlen(name, COUNT_OF(row) - 1);
    const size_t first = strcspn(name, " ");
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
    return first < length && row[first] < row[length] ? row[first] : row[length];
}

/* Near are three names at most that contain the word, or differ from it by half of it at most. */
bool no_such(const names_t* names, const char* word)
{
    char near[256] = "";
    size_t count = 0;
    for (size_t limit = 1; limit <= strlen(word) / 2 && limit < 16; limit++) {
        for (size_t i = 0; i < names->count && count < 3; i++) {
            const char* name = names->at(names->list, i);
            if (name[0] != '\0' && (contains(name, word) ? 1 : distance(word, name)) == limit) {
                snprintf(
                    near + strlen(near), sizeof near - strlen(near), "%s%s",
                    count++ == 0 ? "; near it: " : ", ", name);
            }
        }
    }
    const bool is_like_a_number =
        strpbrk(word, "0123456789") != NULL && number_in(word) == NO_NUMBER;
    return report(
        "there is no %s '%s'%s", names->what, word,
        count == 0 && is_like_a_number ? ", which is not a number" : near);
}

/* ---- Numbers and addresses ---- */

int64_t number_in(const char* word)
{
    char* end = NULL;
    const int64_t number = strtoll(word, &end, strpbrk(word, "xX") != NULL ? 16 : 10);
    const bool has_digit = isdigit((unsigned char)word[word[0] == '-' ? 1 : 0]) != 0;
    return has_digit && *end == '\0' ? number : NO_NUMBER;
}

bool read_number(const char* word, int64_t min, int64_t max, uint32_t* number)
{
    const int64_t wide = number_in(word);
    *number = (uint32_t)wide;
    return (wide >= min && wide <= max) ||
           report("'%s' is not a number from %" PRId64 " to %" PRId64, word, min, max);
}

bool read_prefix(const char* word, ky_ip_prefix_t* prefix)
{
    const bool is_ipv4 = strchr(word, ':') == NULL;
    const int family = is_ipv4 ? AF_INET : AF_INET6;
    const uint32_t width = is_ipv4 ? 32 : 128;
    const char* slash = strchr(word, '/');
    const bool has_mask = slash != NULL && strpbrk(slash, ".:") != NULL;
    char text[64];
    uint32_t length = width;
    memset(prefix, 0, sizeof *prefix);
    prefix->version = is_ipv4 ? KY_IP_VERSION_IPV4 : KY_IP_VERSION_IPV6;
    uint32_t* const address = (uint32_t*)&prefix->prefix;
    uint32_t* const mask = address + width / 32;

    snprintf(text, sizeof text, "%.*s", (int)strcspn(word, "/"), word);
    if (inet_pton(family, text, address) != 1 ||
        (has_mask && inet_pton(family, slash + 1, mask) != 1)) {
        return report("'%s' is not an address, with a length or a mask", word);
    }
    if (slash != NULL && !has_mask && !read_number(slash + 1, 0, width, &length)) {
        return false;
    }
    for (uint32_t bit = 0; bit < length && !has_mask; bit++) {
        mask[bit / 32] |= htonl(UINT32_C(1) << (31 - bit % 32));
    }
    for (uint32_t i = 0; i < width / 32; i++) {
        address[i] = ntohl(address[i]);
        mask[i] = ntohl(mask[i]);
    }
    return true;
}
