/* Reading words: names, numbers and prefixes. A function that reads returns false after it has
 * reported why it cannot. */
#ifndef WORDS_H
#define WORDS_H

#include "output.h"

#include <ky_router_utils_validate.h>

#include <stddef.h>

#define COUNT_OF(array) (sizeof(array) / sizeof((array)[0]))

/* Case does not count, nor do blanks, hyphens and underscores differ. */
bool begins(const char* name, const char* word);
bool contains(const char* name, const char* word);
bool is_named(const char* word, const char* name);

/* What a word may be: a list of names, some perhaps empty. */
typedef struct names {
    const char* what;
    const char* (*at)(const void* list, size_t index);
    const void* list;
    size_t count;
} names_t;

/* The index of the next name, from one on, that is the word; the count if none is. */
size_t find(const names_t* names, const char* word, size_t index);

/* Reports that no name is the word, and which are near it; returns false. */
bool no_such(const names_t* names, const char* word);

/* The number that a word is, decimal or hexadecimal. */
#define NO_NUMBER INT64_MIN
int64_t number_in(const char* word);
bool read_number(const char* word, int64_t min, int64_t max, uint32_t* number);

/* An address with a length, a mask or nothing behind it: 10.1.0.0/16, 239.1.0.1/255.255.0.255. */
bool read_prefix(const char* word, ky_ip_prefix_t* prefix);

#endif
