/* The requests about argument checks, settings, traces and memory. */
#include "request.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <inttypes.h>
#include <stdio.h>

/* ---- check, setting, verbosity, trace ---- */

ANSWER(
    check_pointer, utils_check_pointer(request->value[0] == 0 ? NULL : request, request->text[1]))
ANSWER(check_array_length, utils_check_array_length(request->value[0], request->text[1]))
ANSWER(check_array_size, utils_check_array_size(request->value[0], request->text[1]))
ANSWER(check_msg_size, utils_check_msg_size(request->value[0], request->value[1]))
ANSWER(check_verbosity_level, utils_check_verbosity_level(request->value[0]))
ANSWER(check_mc_id, utils_check_mc_id((uint16_t)request->value[0]))
ANSWER(check_mstp_inst_id, utils_check_mstp_inst_id((uint16_t)request->value[0]))
ANSWER(check_mstp_inst_port_state, utils_check_mstp_inst_port_state(request->value[0]))
ANSWER(check_swid, utils_check_swid((uint8_t)request->value[0]))
ANSWER(check_port_admin_state, utils_check_port_admin_state((int32_t)request->value[0]))
ANSWER(check_device_id, utils_check_device_id((uint8_t)request->value[0]))
ANSWER(check_device_node_type, utils_check_device_node_type((int32_t)request->value[0]))
ANSWER(verbosity_utils, utils_log_verbosity_level_set(request->value[0]))
ANSWER(verbosity_ky_api_router, ky_router_utils_log_verbosity_set(request->value[0]))
ANSWER(verbosity_port_type_validate, port_type_validate_log_verbosity_level_set(request->value[0]))
ANSWER(
    verbosity_adviser,
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, (uint32_t[]){request->value[0]}))

#define SETTING(name, ...)                                                                         \
    bool answer_setting_##name(const request_t* request)                                           \
    {                                                                                              \
        uint32_t value = request->value[0];                                                        \
        answer_with(request->count == 1 ? utils_##name##_set(value) : utils_##name##_get(&value)); \
        if (request->count == 0) {                                                                 \
            answer(#name " = " __VA_ARGS__);                                                       \
        }                                                                                          \
        return true;                                                                               \
    }
SETTING(use_xm, "%" PRIu32, value)
SETTING(boot_mode, "%s", value_text("boot_mode", value))

bool answer_trace(const request_t* request)
{
    KY_STORE(g_ky_log_module_func_enable, (int32_t)request->value[0]);
    answer("function traces are %s", request->text[0]);
    return true;
}

/* ---- memory: a block is known by the number that its get printed ---- */

static void* blocks[1024];
static uint32_t block_count;

bool answer_memory_get(const request_t* request)
{
    const uint32_t* of = request->value; /* a type, a size, a count */
    if (block_count == COUNT_OF(blocks)) {
        return report("there can be no more blocks than %" PRIu32, block_count);
    }
    void** block = &blocks[block_count];
    const ky_status_t status = request->count == 2
                                   ? utils_memory_get(block, of[1], of[0])
                                   : utils_clr_memory_get(block, of[2], of[1], of[0]);
    if (status == KY_STATUS_SUCCESS) {
        answer("block %" PRIu32, block_count++);
    }
    return answer_with(status);
}

bool answer_memory_put(const request_t* request)
{
    const uint32_t block = request->value[1];
    if (block >= block_count || blocks[block] == NULL) {
        return report("there is no block %" PRIu32, block);
    }
    const ky_status_t status = utils_memory_put(blocks[block], request->value[0]);
    if (status == KY_STATUS_SUCCESS) {
        blocks[block] = NULL;
    }
    return answer_with(status);
}

ANSWER(memory_summary, utils_memory_print_summary(request->value[0]))
ANSWER(memory_report, utils_memory_dbg_dump(stdout))
