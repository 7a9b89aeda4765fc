/* Reading the words of a request. */
#include "replay.h"

#include <ky_names.h>

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
    fprintf(stderr, "line %u: ", line_number);
    vfprintf(stderr, format, arguments);
    fputc('\n', stderr);
    va_end(arguments);
    return false;
}

static bool is_number(const char* word)
{
    return isdigit((unsigned char)word[word[0] == '-' ? 1 : 0]) != 0;
}

bool read_number(const char* word, int64_t min, int64_t max, int64_t* number)
{
    const char* digits = word[0] == '-' ? word + 1 : word;
    const int base = strncmp(digits, "0x", 2) == 0 ? 16 : 10;
    char* end = NULL;
    errno = 0;
    *number = strtoll(word, &end, base);
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

/* A character of a name, as all ways to write it. */
static int plain(char c)
{
    return c == ' ' || c == '-' ? '_' : toupper((unsigned char)c);
}

static bool is_named(const char* word, const char* name)
{
    size_t i = 0;
    while (name[i] != '\0' && plain(word[i]) == plain(name[i])) {
        i++;
    }
    return i != 0 && name[i] == '\0' && word[i] == '\0';
}

bool read_value(const char* word, const char* (*name_of)(uint32_t value), uint32_t* value)
{
    if (is_number(word)) {
        return read_uint32(word, value);
    }
    for (*value = 0; strcmp(name_of(*value), "Unknown") != 0; (*value)++) {
        if (is_named(word, name_of(*value))) {
            return true;
        }
    }
    return unreadable("nothing is called '%s' here", word);
}

bool read_command(const char* word, ky_access_cmd_t* cmd)
{
    return read_value(word, ky_access_cmd_str, cmd);
}

/* The mask of so many leading bits, in the words of an address. */
static void set_mask(uint32_t* words, size_t count, uint32_t length)
{
    for (size_t i = 0; i < count; i++) {
        const uint32_t bits = length < 32 ? length : 32;
        words[i] = bits == 0 ? 0 : UINT32_MAX << (32 - bits);
        length -= bits;
    }
}

static bool read_address(int family, const char* word, uint32_t* words, size_t count)
{
    if (inet_pton(family, word, words) != 1) {
        return unreadable("'%s' is not an address or mask of this kind", word);
    }
    for (size_t i = 0; i < count; i++) {
        words[i] = ntohl(words[i]);
    }
    return true;
}

bool read_prefix(const char* word, ky_ip_prefix_t* prefix)
{
    char address[64];
    const size_t length = strcspn(word, "/");
    if (length >= sizeof address) {
        return unreadable("'%s' is too long for a prefix", word);
    }
    memcpy(address, word, length);
    address[length] = '\0';

    const bool is_ipv4 = strchr(address, ':') == NULL;
    const int family = is_ipv4 ? AF_INET : AF_INET6;
    const size_t count = is_ipv4 ? 1 : 4;
    uint32_t* addr = is_ipv4 ? &prefix->prefix.ipv4.addr : prefix->prefix.ipv6.addr;
    uint32_t* mask = is_ipv4 ? &prefix->prefix.ipv4.mask : prefix->prefix.ipv6.mask;
    const int64_t bits = is_ipv4 ? 32 : 128;

    prefix->version = is_ipv4 ? 1 : 2;
    if (!read_address(family, address, addr, count)) {
        return false;
    }
    const char* behind = word[length] == '/' ? word + length + 1 : NULL;
    if (behind != NULL && strpbrk(behind, ".:") != NULL) {
        return read_address(family, behind, mask, count);
    }
    int64_t mask_length = bits;
    if (behind != NULL && !read_number(behind, 0, bits, &mask_length)) {
        return false;
    }
    set_mask(mask, count, (uint32_t)mask_length);
    return true;
}

bool print_status(ky_status_t status)
{
    printf("  %" PRIu32 " %s\n", status, ky_status_str(status));
    return true;
}
