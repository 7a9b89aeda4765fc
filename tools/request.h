/* A request, and the functions that answer one. */
#ifndef REQUEST_H
#define REQUEST_H

#include <ky_router_utils_validate.h>

#include <stdbool.h>
#include <stddef.h>

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
#define REQUEST(function, name, form, text) answer_t answer_##function;
#include "requests.inc"
#undef REQUEST

#endif
