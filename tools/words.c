#include "words.h"

#include "output.h"

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

bool find(const names_t* names, const char* word, size_t* index)
{
    const char* name = names->at(names->list, *index);
    while (name != NULL && !is_named(word, name)) {
        name = names->at(names->list, ++*index);
    }
    return name != NULL;
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

/* How far a word is from a name, or from the first word of one. */
static size_t difference(const char* word, const char* name)
{
    const size_t whole = distance(word, name, strlen(name));
    const size_t first = distance(word, name, strcspn(name, " "));
    return contains(name, word) ? 1 : first < whole ? first : whole;
}

bool no_such(const names_t* names, const char* word)
{
    char near[256] = "";
    size_t count = 0;
    const size_t half = strlen(word) < 32 ? strlen(word) / 2 : 16;
    for (size_t limit = 1; limit <= half; limit++) {
        const char* name = NULL;
        for (size_t i = 0; count < 3 && (name = names->at(names->list, i)) != NULL; i++) {
            if (name[0] != '\0' && difference(word, name) == limit) {
                snprintf(
                    near + strlen(near), sizeof near - strlen(near), "%s%s",
                    count++ == 0 ? "; near it: " : ", ", name);
            }
        }
    }
    return report("there is no %s '%s'%s", names->what, word, near);
}

/* ---- Numbers and addresses ---- */

bool is_number(const char* word, int64_t* number)
{
    char* end = NULL;
    *number = strtoll(word, &end, strpbrk(word, "xX") != NULL ? 16 : 10);
    return isdigit((unsigned char)word[word[0] == '-' ? 1 : 0]) != 0 && *end == '\0';
}

bool read_number(const char* word, int64_t min, int64_t max, uint32_t* number)
{
    int64_t wide = 0;
    const bool ok = is_number(word, &wide) && wide >= min && wide <= max;
    *number = (uint32_t)wide;
    return ok || report("'%s' is not a number from %" PRId64 " to %" PRId64, word, min, max);
}

bool read_prefix(const char* word, ky_ip_prefix_t* prefix)
{
    const bool is_ipv4 = strchr(word, ':') == NULL;
    const int family = is_ipv4 ? AF_INET : AF_INET6;
    const uint32_t width = is_ipv4 ? 32 : 128;
    memset(prefix, 0, sizeof *prefix);
    prefix->version = is_ipv4 ? KY_IP_VERSION_IPV4 : KY_IP_VERSION_IPV6;
    uint32_t* address = is_ipv4 ? &prefix->prefix.ipv4.addr : prefix->prefix.ipv6.addr;
    uint32_t* mask = is_ipv4 ? &prefix->prefix.ipv4.mask : prefix->prefix.ipv6.mask;

    char text[64];
    snprintf(text, sizeof text, "%s", word);
    char* slash = strchr(text, '/');
    const char* behind = slash == NULL ? NULL : slash + 1;
    text[strcspn(text, "/")] = '\0';
    const bool has_mask = behind != NULL && strpbrk(behind, ".:") != NULL;
    uint32_t length = width;
    if (strlen(word) >= sizeof text || inet_pton(family, text, address) != 1 ||
        (has_mask && inet_pton(family, behind, mask) != 1)) {
        return report("'%s' is not an address, with a length or a mask", word);
    }
    if (behind != NULL && !has_mask && !read_number(behind, 0, width, &length)) {
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
