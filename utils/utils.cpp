// Function traces, argument checks and settings: module "UTILS".
#include "ky_utils.h"

#define KY_LOG_MODULE "UTILS"
#define KY_LOG_VERBOSITY utils_verbosity_level

namespace {

constinit uint32_t utils_verbosity_level = KY_LOG_LEVEL_DEFAULT;
constinit uint32_t utils_use_xm = 0;
constinit uint32_t utils_boot_mode = 0;

constexpr uint32_t BOOT_MODE_MAX = 5;

constexpr uint32_t MC_ID_MIN = 1;
constexpr uint32_t MC_ID_MAX = 65535;
constexpr uint32_t MSTP_INST_ID_MIN = 0;
constexpr uint32_t MSTP_INST_ID_MAX = 1024;
constexpr uint32_t MSTP_INST_PORT_STATE_MIN = 1;
constexpr uint32_t MSTP_INST_PORT_STATE_MAX = 3;
constexpr uint32_t SWID_MIN = 0;
constexpr uint32_t SWID_MAX = 7;
constexpr uint32_t SWID_ALSO_ACCEPTED = 254;
constexpr int32_t PORT_ADMIN_STATE_MIN = 1;
constexpr int32_t PORT_ADMIN_STATE_MAX = 2;
constexpr uint32_t DEVICE_ID_MIN = 1;
constexpr uint32_t DEVICE_ID_MAX = 253;
constexpr int32_t DEVICE_NODE_TYPE_MIN = 0;
constexpr int32_t DEVICE_NODE_TYPE_MAX = 5;

/* An argument of 8 or 16 bits, cut to its width. Callers need not clear the rest of the register
 * that carries it, yet clang trusts them to: only a value that it can't trace back is cut. */
template <typename Narrow> uint32_t cut(Narrow value)
{
    asm("" : "+r"(value));
    return value;
}

/* A failure that is logged and then leaves through the exported exit trace. */
#define UTILS_FAIL(status, ...) utils_ky_log_exit(KY_FAIL(status, __VA_ARGS__), __func__)

} // namespace

void utils_ky_log_enter(const char* function_name)
{
    if (KY_LOAD(g_ky_log_module_func_enable) != 0) {
        KY_LOG_DEBUG("%s - entered\n", function_name);
    }
}

ky_status_t utils_ky_log_exit(ky_status_t status, const char* function_name)
{
    if (KY_LOAD(g_ky_log_module_func_enable) != 0) {
        KY_LOG_DEBUG("%s - left\n", function_name);
    }
    return status;
}

ky_status_t utils_log_verbosity_level_set(uint32_t level)
{
    KY_TRACE_FUNCTION();
    KY_STORE(utils_verbosity_level, level);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_pointer(const void* pointer, const char* description)
{
    if (pointer == nullptr) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_NULL, "NULL Pointer (%s)\n",
            description != nullptr ? description : "no pointer description");
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_verbosity_level(uint32_t level)
{
    if (level > KY_LOG_LEVEL_MAX) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Verbosity level (%ld) is out of range : [%u .. %u]\n",
            static_cast<long>(level), KY_LOG_LEVEL_MIN, KY_LOG_LEVEL_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_array_length(uint32_t length, const char* description)
{
    if (length == 0) {
        return description != nullptr
                   ? UTILS_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, "Zero length (%s)\n", description)
                   : UTILS_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, "Zero length\n");
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_array_size(uint32_t size, const char* description)
{
    if (size == 0) {
        return description != nullptr
                   ? UTILS_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, "Zero size (%s)\n", description)
                   : UTILS_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, "Zero size\n");
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_mc_id(uint16_t mc_id)
{
    const uint32_t id = cut(mc_id);
    if (id < MC_ID_MIN) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Multicast ID (%u) exceeds range [%u..%u]\n", id,
            MC_ID_MIN, MC_ID_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_mstp_inst_id(uint16_t mstp_inst_id)
{
    const uint32_t id = cut(mstp_inst_id);
    if (id > MSTP_INST_ID_MAX) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "MSTP Instance ID (%u) exceeds range [%u..%u]\n", id,
            MSTP_INST_ID_MIN, MSTP_INST_ID_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_mstp_inst_port_state(uint32_t port_state)
{
    if (port_state < MSTP_INST_PORT_STATE_MIN || port_state > MSTP_INST_PORT_STATE_MAX) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE,
            "MSTP Instance Port-State (# %u) exceeds range [%u..%u]\n", port_state,
            MSTP_INST_PORT_STATE_MIN, MSTP_INST_PORT_STATE_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_swid(uint8_t swid)
{
    const uint32_t id = cut(swid);
    if (id > SWID_MAX && id != SWID_ALSO_ACCEPTED) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Switch ID (%u) exceeds range [%u..%u]\n", id, SWID_MIN,
            SWID_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_port_admin_state(int32_t admin_state)
{
    if (admin_state < PORT_ADMIN_STATE_MIN || admin_state > PORT_ADMIN_STATE_MAX) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE,
            "Port Administrative State (# %u) exceeds range [%u..%u]\n", admin_state,
            PORT_ADMIN_STATE_MIN, PORT_ADMIN_STATE_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_device_id(uint8_t device_id)
{
    const uint32_t id = cut(device_id);
    if (id < DEVICE_ID_MIN || id > DEVICE_ID_MAX) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Device ID (%u) exceeds range [%u..%u]\n", id,
            DEVICE_ID_MIN, DEVICE_ID_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_device_node_type(int32_t node_type)
{
    if (node_type < DEVICE_NODE_TYPE_MIN || node_type > DEVICE_NODE_TYPE_MAX) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Device Topology Type # (%u) exceeds range [%u..%u]\n",
            node_type, DEVICE_NODE_TYPE_MIN, DEVICE_NODE_TYPE_MAX);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_msg_size(uint32_t size, uint32_t limit)
{
    if (size == 0) {
        return KY_FAIL(KY_STATUS_MESSAGE_SIZE_ZERO, "Message size (%ub) is zero\n", size);
    }
    if (size > limit) {
        return KY_FAIL(
            KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT, "Message size (%ub) exceeds limit (%ub)\n", size,
            limit);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_use_xm_set(uint32_t use_xm)
{
    KY_TRACE_FUNCTION();
    KY_STORE(utils_use_xm, use_xm);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_use_xm_get(uint32_t* use_xm_p)
{
    KY_TRACE_FUNCTION();
    const ky_status_t status = utils_check_pointer(use_xm_p, "use_xm_p");
    if (status == KY_STATUS_SUCCESS) {
        *use_xm_p = KY_LOAD(utils_use_xm);
    }
    return status;
}

ky_status_t utils_boot_mode_set(uint32_t boot_mode)
{
    KY_TRACE_FUNCTION();
    if (boot_mode > BOOT_MODE_MAX) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE,
            "Failed to set issu mode, parameter boot_mode (%u) is exceed range. Max value (%u)\n",
            boot_mode, BOOT_MODE_MAX);
    }
    KY_STORE(utils_boot_mode, boot_mode);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_boot_mode_get(uint32_t* boot_mode_p)
{
    const ky_status_t status = utils_check_pointer(boot_mode_p, "boot_mode_p");
    if (status != KY_STATUS_SUCCESS) {
        return KY_FAIL(status, "failed to get issu mode, parameter boot_mode_p is NULL\n");
    }
    *boot_mode_p = KY_LOAD(utils_boot_mode);
    return KY_STATUS_SUCCESS;
}
