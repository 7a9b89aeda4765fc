/* The requests about argument checks, settings, memory and ports; and how answers are printed.
 *
 * The program puts a log sink of its own in front of the logging library's, so that the library's
 * records stand among the answers. */
#include "kriolilglu.h"

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <inttypes.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

bool is_refused;
char* record_buffer;

/* A sequence that switches to a colour; empty unless standard output shows colours. */
static const char* colour(const char* sequence)
{
    const char* never = getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe): there is one thread
    return (never == NULL || never[0] == '\0') && isatty(STDOUT_FILENO) != 0 ? sequence : "";
}

void answer(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    fputs(line_number == 0 ? "" : "  ", stdout);
    vprintf(format, arguments);
    putchar('\n');
    va_end(arguments);
}

bool answer_with(ky_status_t status)
{
    is_refused = status != KY_STATUS_SUCCESS;
    answer(
        "%s%" PRIu32 " %s%s", colour(is_refused ? "\033[31m" : "\033[32m"), status,
        ky_status_str(status), colour("\033[m"));
    return true;
}

int ky_log(uint32_t severity_mask, const char* module, const char* format, ...)
{
    char text[RECORD_SIZE];
    char* record = record_buffer == NULL ? text : record_buffer;
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(record, RECORD_SIZE, format, arguments);
    va_end(arguments);
    char* end = strrchr(record, '\n');
    *(end == NULL ? record + strlen(record) : end) = '\0';
    if (record == text) {
        printf("%s%s ", colour("\033[33m"), KY_LOG_LEVEL_NAME(severity_mask));
        printf("%s: %s%s\n", module, text, colour("\033[m"));
    }
    return 0;
}

/* ---- check, setting, verbosity, trace ---- */

#define CHECK(name, ...)                                     \
    bool answer_check_##name(const request_t* request)       \
    {                                                        \
        return answer_with(utils_check_##name(__VA_ARGS__)); \
    }
CHECK(pointer, request->value[0] == 0 ? NULL : request, request->word[1])
CHECK(verbosity_level, request->value[0])
CHECK(array_length, request->value[0], request->word[1])
CHECK(array_size, request->value[0], request->word[1])
CHECK(mc_id, (uint16_t)request->value[0])
CHECK(mstp_inst_id, (uint16_t)request->value[0])
CHECK(mstp_inst_port_state, request->value[0])
CHECK(swid, (uint8_t)request->value[0])
CHECK(port_admin_state, (int32_t)request->value[0])
CHECK(device_id, (uint8_t)request->value[0])
CHECK(device_node_type, (int32_t)request->value[0])
CHECK(msg_size, request->value[0], request->value[1])

#define SETTING(name)                                                                              \
    bool answer_setting_##name(const request_t* request)                                           \
    {                                                                                              \
        uint32_t value = request->value[0];                                                        \
        answer_with(request->count == 1 ? utils_##name##_set(value) : utils_##name##_get(&value)); \
        if (request->count == 0) {                                                                 \
            answer(#name " = %" PRIu32, value);                                                    \
        }                                                                                          \
        return true;                                                                               \
    }
SETTING(use_xm)
SETTING(boot_mode)

#define VERBOSITY(module, call)                              \
    bool answer_verbosity_##module(const request_t* request) \
    {                                                        \
        uint32_t level = request->value[0];                  \
        return answer_with(call);                            \
    }
VERBOSITY(adviser, adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level))
VERBOSITY(utils, utils_log_verbosity_level_set(level))
VERBOSITY(ky_api_router, ky_router_utils_log_verbosity_set(level))
VERBOSITY(port_type_validate, port_type_validate_log_verbosity_level_set(level))

bool answer_trace(const request_t* request)
{
    KY_STORE(g_ky_log_module_func_enable, (int32_t)request->value[0]);
    answer("function traces are %s", request->word[0]);
    return true;
}

/* ---- memory: a block is known by the number that its get printed ---- */

#define BLOCKS_MAX 32
#define TYPES_MAX 64

static void* blocks[BLOCKS_MAX];
static char type_names[TYPES_MAX][32];

const char* memory_type_name(uint32_t type)
{
    return type < TYPES_MAX && type_names[type][0] != '\0' ? type_names[type] : "Unknown";
}

/* The summary of a type ends in its name. */
void learn_memory_type_names(void)
{
    char record[RECORD_SIZE] = "";
    record_buffer = record;
    utils_log_verbosity_level_set(KY_LOG_LEVEL_MAX);
    for (uint32_t type = 1;
         type < TYPES_MAX && utils_memory_print_summary(type) == KY_STATUS_SUCCESS; type++) {
        const char* name = strrchr(record, ' ');
        snprintf(type_names[type], sizeof type_names[type], "%s", name == NULL ? "" : name + 1);
    }
    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
    record_buffer = NULL;
}

bool answer_memory_get(const request_t* request)
{
    const uint32_t* of = request->value; /* a type, a size, a count */
    uint32_t block = 0;
    while (block < BLOCKS_MAX && blocks[block] != NULL) {
        block++;
    }
    if (block == BLOCKS_MAX) {
        return unreadable("there can be no more blocks than %d", BLOCKS_MAX);
    }
    const ky_status_t status = request->count == 2
                                   ? utils_memory_get(&blocks[block], of[1], of[0])
                                   : utils_clr_memory_get(&blocks[block], of[2], of[1], of[0]);
    if (status == KY_STATUS_SUCCESS) {
        answer("block %" PRIu32, block);
    }
    return answer_with(status);
}

bool answer_memory_put(const request_t* request)
{
    const uint32_t block = request->value[1];
    if (block >= BLOCKS_MAX || blocks[block] == NULL) {
        return unreadable("there is no block %" PRIu32, block);
    }
    const ky_status_t status = utils_memory_put(blocks[block], request->value[0]);
    if (status == KY_STATUS_SUCCESS) {
        blocks[block] = NULL;
    }
    return answer_with(status);
}

bool answer_memory_summary(const request_t* request)
{
    return answer_with(utils_memory_print_summary(request->value[0]));
}

bool answer_memory_report(const request_t* request)
{
    (void)request;
    return answer_with(utils_memory_dbg_dump(stdout));
}

/* ---- port: what the dictionary accepts is found by asking the check ---- */

#define ROW_MAX (PORT_TYPE_VALIDATION_ROWS - 2) /* the highest that is not a sentinel */
#define TYPE_SHIFT 28
#define TYPE_COUNT 16U

static bool is_accepted(uint32_t row, uint32_t log_port)
{
    char ignored[RECORD_SIZE];
    record_buffer = ignored;
    const bool accepted = is_port_type_valid(row, log_port) == 1;
    record_buffer = NULL;
    return accepted;
}

/* The types of port that a row accepts: static text, until the next call. */
static const char* accepted_types(uint32_t row)
{
    static char types[256];
    size_t length = 0;
    for (uint32_t type = 0; type < TYPE_COUNT; type++) {
        if (is_accepted(row, type << TYPE_SHIFT) && length < sizeof types) {
            length += (size_t)snprintf(
                types + length, sizeof types - length, "%s%s", length == 0 ? "" : ", ",
                ky_port_type_str(type));
        }
    }
    return length == 0 ? "nothing" : types;
}

/* The type that a row of this bit alone accepts; the first row is one while it is asked. */
const char* port_type_bit_name(uint32_t bit)
{
    port_type_validation_entry_t* row = &port_type_validation_table[1];
    const uint8_t kept = row->allowed_port_types;
    uint32_t type = bit <= UINT8_MAX && (bit & (bit - 1)) == 0 ? 0 : TYPE_COUNT;
    row->allowed_port_types = (uint8_t)bit;
    while (type < TYPE_COUNT && !is_accepted(1, type << TYPE_SHIFT)) {
        type++;
    }
    row->allowed_port_types = kept;
    return type == TYPE_COUNT ? "Unknown" : ky_port_type_str(type);
}

const char* port_function_name(uint32_t row)
{
    return row >= 1 && row <= ROW_MAX ? port_type_validation_table[row].func_name : "Unknown";
}

bool answer_port(const request_t* request)
{
    const uint32_t log_port = request->value[0];
    uint32_t row = request->value[1];
    if (request->count == 2) {
        is_refused = is_port_type_valid(row, log_port) == 0;
        answer(
            "%s: row %" PRIu32 " %s accepts %s", is_refused ? "refused" : "accepted", row,
            port_function_name(row), accepted_types(row));
        return true;
    }
    if (request->count == 1) {
        answer(
            "type %" PRIu32 " %s", log_port >> TYPE_SHIFT,
            ky_port_type_str(log_port >> TYPE_SHIFT));
    }
    is_refused = true; /* until a function accepts it */
    for (row = 1; row <= ROW_MAX; row++) {
        if (request->count == 0 || is_accepted(row, log_port)) {
            answer("%" PRIu32 " %s: %s", row, port_function_name(row), accepted_types(row));
            is_refused = false;
        }
    }
    if (is_refused) {
        answer("no function accepts it");
    }
    return true;
}
