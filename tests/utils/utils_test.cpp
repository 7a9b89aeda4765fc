// The argument checks and the settings.
#include "recorder.h"

#include <ky_utils.h>

#include <functional>
#include <thread>

namespace {

class UtilsTest : public RecordedTest {};

Records said(uint32_t mask, const std::string& function, const std::string& text)
{
    return statement(mask, "UTILS", "utils.cpp", function, text);
}

Records entered(const std::string& function)
{
    return said(31, function, function + " - entered \n");
}

Records left(const std::string& function)
{
    return said(31, function, function + " - left \n");
}

/* A call as a caller makes it whose compiler leaves rubbish above a narrow argument. */
template <typename Narrow>
ky_status_t call_with_rubbish(ky_status_t (*check)(Narrow), uint32_t argument)
{
    const auto any = reinterpret_cast<void (*)()>(check);
    return reinterpret_cast<ky_status_t (*)(uint32_t)>(any)(argument);
}

TEST_F(UtilsTest, ChecksAcceptInSilence)
{
    const int object = 0;
    const std::pair<const char*, std::function<ky_status_t()>> calls[] = {
        {"pointer", [&] { return utils_check_pointer(&object, "object"); }},
        {"pointer, no description", [&] { return utils_check_pointer(&object, nullptr); }},
        {"verbosity 0", [] { return utils_check_verbosity_level(0); }},
        {"verbosity 8", [] { return utils_check_verbosity_level(8); }},
        {"length 1", [] { return utils_check_array_length(1, nullptr); }},
        {"length 2^32-1", [] { return utils_check_array_length(0xffffffff, "list"); }},
        {"size 1", [] { return utils_check_array_size(1, nullptr); }},
        {"mc id 1", [] { return utils_check_mc_id(1); }},
        {"mc id 65535", [] { return utils_check_mc_id(65535); }},
        {"mstp 0", [] { return utils_check_mstp_inst_id(0); }},
        {"mstp 1024", [] { return utils_check_mstp_inst_id(1024); }},
        {"mstp 0x10400", [] { return call_with_rubbish(utils_check_mstp_inst_id, 0x10400); }},
        {"port state 1", [] { return utils_check_mstp_inst_port_state(1); }},
        {"port state 3", [] { return utils_check_mstp_inst_port_state(3); }},
        {"swid 0", [] { return utils_check_swid(0); }},
        {"swid 7", [] { return utils_check_swid(7); }},
        {"swid 254", [] { return utils_check_swid(254); }},
        {"swid 0x107", [] { return call_with_rubbish(utils_check_swid, 0xa5a5a507); }},
        {"admin state 1", [] { return utils_check_port_admin_state(1); }},
        {"admin state 2", [] { return utils_check_port_admin_state(2); }},
        {"device 1", [] { return utils_check_device_id(1); }},
        {"device 253", [] { return utils_check_device_id(253); }},
        {"device 0x101", [] { return call_with_rubbish(utils_check_device_id, 0x101); }},
        {"node type 0", [] { return utils_check_device_node_type(0); }},
        {"node type 5", [] { return utils_check_device_node_type(5); }},
        {"size at limit", [] { return utils_check_msg_size(4, 4); }},
        {"largest size", [] { return utils_check_msg_size(0xffffffff, 0xffffffff); }},
    };
    KY_STORE(g_ky_log_module_func_enable, 1);
    utils_log_verbosity_level_set(9);
    take_records();
    for (const auto& [label, call] : calls) {
        EXPECT_EQ(call(), KY_STATUS_SUCCESS) << label;
        EXPECT_SILENCE() << label;
    }
}

struct Refusal {
    std::string call;
    std::function<ky_status_t()> make;
    ky_status_t status;
    std::string message;
};

constexpr ky_status_t RANGE = KY_STATUS_PARAM_EXCEEDS_RANGE;

// clang-format off
#define CALL(call) #call, [] { return call; }
const Refusal refusals[] = {
    {CALL(utils_check_pointer(nullptr, "thing")), KY_STATUS_PARAM_NULL, "NULL Pointer (thing)\n"},
    {CALL(utils_check_pointer(nullptr, nullptr)), KY_STATUS_PARAM_NULL,
     "NULL Pointer (no pointer description)\n"},
    {CALL(utils_check_verbosity_level(9)), RANGE,
     "Verbosity level (9) is out of range : [0 .. 8]\n"},
    {CALL(utils_check_verbosity_level(0xffffffff)), RANGE,
     "Verbosity level (4294967295) is out of range : [0 .. 8]\n"},
    {CALL(utils_check_array_length(0, "list")), RANGE, "Zero length (list)\n"},
    {CALL(utils_check_array_length(0, nullptr)), RANGE, "Zero length\n"},
    {CALL(utils_check_array_size(0, "list")), RANGE, "Zero size (list)\n"},
    {CALL(utils_check_array_size(0, nullptr)), RANGE, "Zero size\n"},
    {CALL(utils_check_mc_id(0)), RANGE, "Multicast ID (0) exceeds range [1..65535]\n"},
    {CALL(call_with_rubbish(utils_check_mc_id, 0x10000)), RANGE,
     "Multicast ID (0) exceeds range [1..65535]\n"},
    {CALL(utils_check_mstp_inst_id(1025)), RANGE,
     "MSTP Instance ID (1025) exceeds range [0..1024]\n"},
    {CALL(utils_check_mstp_inst_port_state(0)), RANGE,
     "MSTP Instance Port-State (# 0) exceeds range [1..3]\n"},
    {CALL(utils_check_mstp_inst_port_state(4)), RANGE,
     "MSTP Instance Port-State (# 4) exceeds range [1..3]\n"},
    {CALL(utils_check_swid(8)), RANGE, "Switch ID (8) exceeds range [0..7]\n"},
    {CALL(utils_check_swid(253)), RANGE, "Switch ID (253) exceeds range [0..7]\n"},
    {CALL(call_with_rubbish(utils_check_swid, 0x1ff)), RANGE,
     "Switch ID (255) exceeds range [0..7]\n"},
    {CALL(utils_check_port_admin_state(0)), RANGE,
     "Port Administrative State (# 0) exceeds range [1..2]\n"},
    {CALL(utils_check_port_admin_state(3)), RANGE,
     "Port Administrative State (# 3) exceeds range [1..2]\n"},
    {CALL(utils_check_port_admin_state(-1)), RANGE,
     "Port Administrative State (# 4294967295) exceeds range [1..2]\n"},
    {CALL(utils_check_device_id(254)), RANGE, "Device ID (254) exceeds range [1..253]\n"},
    {CALL(call_with_rubbish(utils_check_device_id, 0x100)), RANGE,
     "Device ID (0) exceeds range [1..253]\n"},
    {CALL(utils_check_device_node_type(6)), RANGE,
     "Device Topology Type # (6) exceeds range [0..5]\n"},
    {CALL(utils_check_device_node_type(-1)), RANGE,
     "Device Topology Type # (4294967295) exceeds range [0..5]\n"},
    {CALL(utils_check_msg_size(0, 0)), KY_STATUS_MESSAGE_SIZE_ZERO, "Message size (0b) is zero\n"},
    {CALL(utils_check_msg_size(5, 4)), KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT,
     "Message size (5b) exceeds limit (4b)\n"},
};
#undef CALL
// clang-format on

/* The name of the check that a call makes, with rubbish or without. */
std::string function_of(const std::string& call)
{
    const size_t start = call.find("utils_check_");
    return call.substr(start, call.find_first_of("(,", start) - start);
}

TEST_F(UtilsTest, ChecksRefuseWithOneMessageAndAnExitRecordWhenTraced)
{
    for (const auto& [call, make, status, text] : refusals) {
        SCOPED_TRACE(call);
        const std::string function = function_of(call);
        const Records message = said(1, function, text);
        const Records exit = said(31, "utils_ky_log_exit", function + " - left\n");
        const Records traced = function == "utils_check_msg_size" ? message : message + exit;
        for (const auto& [verbosity, flag, expected] :
             {std::tuple{0U, 1, Records{}}, {1U, 1, message}, {5U, 0, message}, {5U, 1, traced}}) {
            utils_log_verbosity_level_set(verbosity);
            KY_STORE(g_ky_log_module_func_enable, flag);
            take_records();
            EXPECT_EQ(make(), status);
            EXPECT_RECORDS(expected);
            KY_STORE(g_ky_log_module_func_enable, 0);
        }
    }
}

TEST_F(UtilsTest, SettingsKeepWhatTheyAccept)
{
    uint32_t value = 77;
    for (const uint32_t use_xm : {7U, 0xffffffffU, 0U}) {
        EXPECT_EQ(utils_use_xm_set(use_xm), KY_STATUS_SUCCESS);
        EXPECT_EQ(utils_use_xm_get(&value), KY_STATUS_SUCCESS);
        EXPECT_EQ(value, use_xm);
    }
    EXPECT_EQ(utils_boot_mode_set(5), KY_STATUS_SUCCESS);
    EXPECT_SILENCE();
    EXPECT_EQ(utils_boot_mode_set(6), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_RECORDS(said(
        1, "utils_boot_mode_set",
        "Failed to set issu mode, parameter boot_mode (6) is exceed range. "
        "Max value (5)\n"));
    utils_log_verbosity_level_set(0);
    EXPECT_EQ(utils_boot_mode_set(6), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_EQ(utils_boot_mode_get(nullptr), KY_STATUS_PARAM_NULL);
    EXPECT_SILENCE();
    EXPECT_EQ(utils_boot_mode_get(&value), KY_STATUS_SUCCESS);
    EXPECT_EQ(value, 5U);
    EXPECT_EQ(utils_boot_mode_set(0), KY_STATUS_SUCCESS);
}

TEST_F(UtilsTest, SettingsTraceAsTheyAreMeantTo)
{
    const Records null_message = said(1, "utils_check_pointer", "NULL Pointer (use_xm_p)\n");
    const Records check_left = said(31, "utils_ky_log_exit", "utils_check_pointer - left\n");
    uint32_t value = 0;

    utils_log_verbosity_level_set(5);
    KY_STORE(g_ky_log_module_func_enable, 1);

    EXPECT_EQ(utils_use_xm_set(0), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(entered("utils_use_xm_set") + left("utils_use_xm_set"));
    EXPECT_EQ(utils_use_xm_get(nullptr), KY_STATUS_PARAM_NULL);
    EXPECT_RECORDS(
        entered("utils_use_xm_get") + null_message + check_left + left("utils_use_xm_get"));
    EXPECT_EQ(utils_boot_mode_set(99), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_RECORDS(
        entered("utils_boot_mode_set") +
        said(
            1, "utils_boot_mode_set",
            "Failed to set issu mode, parameter boot_mode (99) is exceed "
            "range. Max value (5)\n") +
        left("utils_boot_mode_set"));
    EXPECT_EQ(utils_boot_mode_get(&value), KY_STATUS_SUCCESS);
    EXPECT_SILENCE();
    EXPECT_EQ(utils_boot_mode_get(nullptr), KY_STATUS_PARAM_NULL);
    EXPECT_RECORDS(
        said(1, "utils_check_pointer", "NULL Pointer (boot_mode_p)\n") + check_left +
        said(1, "utils_boot_mode_get", "failed to get issu mode, parameter boot_mode_p is NULL\n"));

    EXPECT_EQ(utils_log_verbosity_level_set(3), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(entered("utils_log_verbosity_level_set"));
    EXPECT_EQ(utils_log_verbosity_level_set(0xffffffff), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(left("utils_log_verbosity_level_set"));
}

TEST_F(UtilsTest, AnyThreadMayCallAnythingAtAnyTime)
{
    std::vector<std::thread> threads;
    for (uint32_t thread = 0; thread < 8; thread++) {
        threads.emplace_back([thread] {
            for (uint32_t i = 0; i < 200; i++) {
                uint32_t value = 0;
                KY_STORE(g_ky_log_module_func_enable, static_cast<int32_t>(i % 2));
                utils_log_verbosity_level_set((thread + i) % 7);
                EXPECT_EQ(utils_boot_mode_set(thread % 6), KY_STATUS_SUCCESS);
                EXPECT_EQ(utils_boot_mode_get(&value), KY_STATUS_SUCCESS);
                EXPECT_LT(value, 6U);
                EXPECT_EQ(utils_use_xm_set(i), KY_STATUS_SUCCESS);
                EXPECT_EQ(utils_use_xm_get(&value), KY_STATUS_SUCCESS);
                EXPECT_EQ(utils_check_mc_id(0), KY_STATUS_PARAM_EXCEEDS_RANGE);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
