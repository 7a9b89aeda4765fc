/* The requests, and what they have in common: the arguments, values by their names, statuses. */
#ifndef REQUEST_H
#define REQUEST_H

#include "words.h"

#define WORDS_MAX 16

/* A request's arguments, as its form names them. What is not given is null or 0. */
typedef struct request {
    size_t count;
    const char* text[WORDS_MAX];
    uint32_t value[WORDS_MAX]; /* of a number, a name or an alternative */
    ky_mc_route_key_t key;     /* SOURCE and GROUP */
} request_t;

/* Answers a request; false if it was not understood, which has been reported then. */
typedef bool answer_t(const request_t* request);
#define REQUEST(function, ...) answer_t answer_##function;
#include "requests.inc"
#undef REQUEST

/* Prints what a call returned, and notes whether it was refused; returns true. */
bool answer_with(ky_status_t status);

/* Defines the function of a request that makes one call. */
#define ANSWER(name, call)                       \
    bool answer_##name(const request_t* request) \
    {                                            \
        (void)request;                           \
        return answer_with(call);                \
    }

/* Learns the names that the library prints in messages alone; before anything else is called. */
void learn_names(void);
const char* adviser_event_name(uint32_t event);

/* The bit of each type of port, and the types of such bits: static text, until the next call. */
extern uint8_t port_type_bits[16];
const char* port_type_bit_name(uint32_t bits);

/* A value, its constant and its name: static text, until the next call. */
const char* value_text(const char* enumeration, uint32_t value);

/* The next value that a word names, from *value on. */
bool find_value(const char* enumeration, const char* word, uint32_t* value);

/* Reads what a placeholder stands for: a value of an enumeration, by its number, constant or name,
 * or a plain number, perhaps of so many bits: UINT8. */
bool read_value(const char* placeholder, const char* word, uint32_t* value);

#endif
