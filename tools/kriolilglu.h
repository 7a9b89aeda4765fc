/* What the files of the command share: a request, reading its words, and answering it. */
#ifndef KRIOLILGLU_H
#define KRIOLILGLU_H

#include <ky_common.h>
#include <ky_router_utils_validate.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#define COUNT_OF(array) (sizeof(array) / sizeof((array)[0]))
#define WORDS_MAX 16

/* A request's arguments, as its form names them. What is not given is null or 0. */
typedef struct request {
    size_t count;
    const char* word[WORDS_MAX + 1]; /* options, OPTION=VALUE, follow those that are counted */
    uint32_t value[WORDS_MAX + 1];   /* of a number, a name or an alternative */
    ky_mc_route_key_t key;           /* SOURCE and GROUP */
} request_t;

/* Answers a request; false if it was not understood, which has been reported then. */
typedef bool answer_t(const request_t* request);
#define REQUEST(function, name, form, text) answer_t answer_##function;
#include "requests.inc"
#undef REQUEST

/* ---- Reading: a function that returns bool returns false after it has reported the fault ---- */

extern unsigned line_number; /* of the input; 0 for a request given as arguments */

/* Reports why a request is not understood; returns false. */
__attribute__((format(printf, 1, 2))) bool unreadable(const char* format, ...);

/* Case does not count, nor do blanks, hyphens and underscores differ. */
bool is_named(const char* word, const char* name);
bool begins(const char* name, const char* word);
bool contains(const char* name, const char* word);

/* The names that are nearest to a word: a search offers each name that it passes, and reports them
 * if none is the one. */
typedef struct nearest {
    const char* word;
    struct near_name {
        const char* name;
        size_t distance;
    } near[3];
} nearest_t;

void offer(nearest_t* nearest, const char* name);
bool no_such(const char* what, const nearest_t* nearest);

/* The row of a table that has a name; each row begins with its name. If there
 * is none it is null, after a report about "what", if that is not null. */
#define FIND(what, word, table) find(what, word, table, COUNT_OF(table), sizeof((table)[0]))
const void* find(const char* what, const char* word, const void* table, size_t count, size_t size);

bool is_number(const char* word, int64_t* number);
bool read_number(const char* word, int64_t min, int64_t max, int64_t* number);
bool read_uint32(const char* word, uint32_t* number);

/* A value of an enumeration, by its number or its name. */
bool is_enumeration(const char* name);
bool read_value(const char* word, const char* enumeration, uint32_t* value);

/* An address with a length, a mask or nothing behind it: 10.1.0.0/16, 239.1.0.1/255.255.0.255. */
bool read_prefix(const char* word, ky_ip_prefix_t* prefix);

extern bool is_refused; /* by the library */

/* Prints a line of an answer. */
__attribute__((format(printf, 1, 2))) void answer(const char* format, ...);

/* Prints what a call returned, and notes whether it was refused; returns true. */
bool answer_with(ky_status_t status);

/* If not null, receives each record of the library, which goes to standard output otherwise. */
#define RECORD_SIZE 4096
extern char* record_buffer;

/* The name of a value, or "Unknown". What the library prints in messages alone is learnt from them
 * first, once. */
void prepare_adviser(void);
void learn_memory_type_names(void);
const char* event_name(uint32_t event);
const char* memory_type_name(uint32_t type);
const char* port_function_name(uint32_t row);
const char* port_type_bit_name(uint32_t bit);

#endif
