/* The requests about accounted memory. A block is known by the number that its get printed. */
#include "replay.h"

#include <ky_utils.h>

#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#define BLOCKS_MAX 32

static void* blocks[BLOCKS_MAX];

static const char* type_name(uint32_t type)
{
    static const char* const names[] = {
        "ALL",    "COS",       "TOPO", "PORT",    "MSTP",           "FDB",          "VLAN", "LAG",
        "ROUTER", "ACL",       "SPAN", "POLICER", "HOST-INTERFACE", "FLOW-COUNTER", "KVDL", "API",
        "TUNNEL", "TELEMETRY",
    };
    return type < COUNT_OF(names) ? names[type] : "Unknown";
}

/* memory get TYPE SIZE, memory get TYPE COUNT SIZE: the second one is cleared. */
static bool memory_get(const words_t* words, uint32_t type)
{
    uint32_t number = 0;
    while (number < BLOCKS_MAX && blocks[number] != NULL) {
        number++;
    }
    if (number == BLOCKS_MAX) {
        return unreadable("there can be no more blocks than %d", BLOCKS_MAX);
    }
    uint32_t count = 0;
    uint32_t size = 0;
    if (words->word[3] == NULL) {
        return unreadable("a size is missing");
    }
    if (!read_uint32(words->word[3], &count) ||
        (words->word[4] != NULL && !read_uint32(words->word[4], &size))) {
        return false;
    }
    const ky_status_t status = words->word[4] == NULL
                                   ? utils_memory_get(&blocks[number], count, type)
                                   : utils_clr_memory_get(&blocks[number], count, size, type);
    if (status == KY_STATUS_SUCCESS) {
        printf("  block %" PRIu32 "\n", number);
    }
    return print_status(status);
}

/* memory put TYPE BLOCK */
static bool memory_put(const words_t* words, uint32_t type)
{
    uint32_t number = 0;
    if (words->word[3] == NULL || words->word[4] != NULL) {
        return unreadable("it is 'memory put TYPE BLOCK'");
    }
    if (!read_uint32(words->word[3], &number)) {
        return false;
    }
    if (number >= BLOCKS_MAX || blocks[number] == NULL) {
        return unreadable("there is no block %" PRIu32, number);
    }
    const ky_status_t status = utils_memory_put(blocks[number], type);
    if (status == KY_STATUS_SUCCESS) {
        blocks[number] = NULL;
    }
    return print_status(status);
}

bool request_memory(const words_t* words)
{
    if (strcmp(words->word[1], "report") == 0 && words->count == 2) {
        return print_status(utils_memory_dbg_dump(stdout));
    }
    uint32_t type = 0;
    if (words->word[2] == NULL) {
        return unreadable("a memory type is missing");
    }
    if (!read_value(words->word[2], type_name, &type)) {
        return false;
    }
    if (strcmp(words->word[1], "get") == 0) {
        return memory_get(words, type);
    }
    if (strcmp(words->word[1], "put") == 0) {
        return memory_put(words, type);
    }
    if (strcmp(words->word[1], "summary") == 0 && words->count == 3) {
        return print_status(utils_memory_print_summary(type));
    }
    return unreadable("memory knows 'get', 'put', 'summary' and 'report'");
}
