/* What the files of the replay program share: reading the words of a request, and the requests. */
#ifndef REPLAY_H
#define REPLAY_H

#include <ky_common.h>
#include <ky_router_utils_validate.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#define COUNT_OF(array) (sizeof(array) / sizeof((array)[0]))
#define WORDS_MAX 16

/* The words of a line; the ones it does not have are null. */
typedef struct words {
    size_t count;
    const char* word[WORDS_MAX];
} words_t;

/* ---- Reading: each says on standard error what it cannot read, and returns false then ---- */

/* Says why the line cannot be read, behind its number; returns false. */
__attribute__((format(printf, 1, 2))) bool unreadable(const char* format, ...);

bool read_number(const char* word, int64_t min, int64_t max, int64_t* number);
bool read_uint32(const char* word, uint32_t* number);

/* A value of an enumeration, as a number or by its name: blanks are written as underscores, hyphens
 * and underscores are one, and so are upper and lower case. */
bool read_value(const char* word, const char* (*name_of)(uint32_t value), uint32_t* value);
bool read_command(const char* word, ky_access_cmd_t* cmd);

/* An address with a length, a mask or nothing behind it: 10.1.0.0/16, 239.1.0.1/255.255.0.255. */
bool read_prefix(const char* word, ky_ip_prefix_t* prefix);

/* ---- Answering ---- */

/* Prints a status and its phrase; returns true. */
bool print_status(ky_status_t status);

/* ---- Requests: true if the line could be read ---- */

bool request_name(const words_t* words);
bool request_status(const words_t* words);
bool request_check(const words_t* words);
bool request_setting(const words_t* words);
bool request_verbosity(const words_t* words);
bool request_trace(const words_t* words);
bool request_port(const words_t* words);
bool request_route(const words_t* words);
bool request_egress(const words_t* words);
bool request_activity(const words_t* words);
bool request_counter(const words_t* words);
bool request_rpf_group(const words_t* words);
bool request_memory(const words_t* words);
bool request_register(const words_t* words);
bool request_deregister(const words_t* words);
bool request_event(const words_t* words);
bool request_adviser(const words_t* words);

extern unsigned line_number;

#endif
