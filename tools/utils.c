/* The requests about argument checks, settings, traces and memory. */
#include "names.h"
#include "output.h"
#include "request.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <inttypes.h>
#include <stdio.h>

/* ---- check, setting, verbosity, trace ---- */

#define CHECK(name, ...)                                     \
    bool answer_check_##name(const request_t* request)       \
    {                                                        \
        return answer_with(utils_check_##name(__VA_ARGS__)); \
    }
CHECK(pointer, request->value[0] == 0 ? NULL : request, request->text[1])
CHECK(verbosity_level, request->value[0])
CHECK(array_length, request->value[0], request->text[1])
CHECK(array_size, request->value[0], request->text[1])
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
    answer("function traces are %s", request->text[0]);
    return true;
}

/* ---- memory: a block is known by the number that its get printed ---- */

#define BLOCKS_MAX 32

static void* blocks[BLOCKS_MAX];

bool answer_memory_get(const request_t* request)
{
    const uint32_t* of = request->value; /* a type, a size, a count */
    uint32_t block = 0;
    while (block < BLOCKS_MAX && blocks[block] != NULL) {
        block++;
    }
    if (block == BLOCKS_MAX) {
        return report("there can be no more blocks than %d", BLOCKS_MAX);
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
        return report("there is no block %" PRIu32, block);
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
