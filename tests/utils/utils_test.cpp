// The argument checks and the settings.
#include "recorder.h"

#include <ky_utils.h>

namespace {

constexpr Module utils = {"UTILS", "utils.cpp"};

class UtilsTest : public RecordedTest {};

/* A call as a caller makes it whose compiler leaves rubbish above a narrow argument. */
template <typename Narrow>
ky_status_t call_with_rubbish(ky_status_t (*check)(Narrow), uint32_t argument)
{
    const auto any = reinterpret_cast<void (*)()>(check);
    return reinterpret_cast<ky_status_t (*)(uint32_t)>(any)(argument);
}

#define CHECK(call) #call, [&] { return utils_check_##call; }
#define RUBBISH(check, argument) \
#check, [] { return call_with_rubbish(utils_check_##check, argument); }

TEST_F(UtilsTest, ChecksAcceptInSilence)
{
    // clang-format off
    const std::pair<const char*, Call> calls[] = {
        {CHECK(pointer("", "object"))}, {CHECK(pointer("", nullptr))}, {CHECK(verbosity_level(0))},
        {CHECK(verbosity_level(8))}, {CHECK(array_length(1, nullptr))},
        {CHECK(array_length(~0U, "list"))}, {CHECK(array_size(1, nullptr))}, {CHECK(mc_id(1))},
        {CHECK(mc_id(65535))}, {CHECK(mstp_inst_id(0))}, {CHECK(mstp_inst_id(1024))},
        {RUBBISH(mstp_inst_id, 0x10400)}, {CHECK(mstp_inst_port_state(1))},
        {CHECK(mstp_inst_port_state(3))}, {CHECK(swid(0))}, {CHECK(swid(7))}, {CHECK(swid(254))},
        {RUBBISH(swid, 0xa5a5a507)}, {CHECK(port_admin_state(1))}, {CHECK(port_admin_state(2))},
        {CHECK(device_id(1))}, {CHECK(device_id(253))}, {RUBBISH(device_id, 0x101)},
        {CHECK(device_node_type(0))}, {CHECK(device_node_type(5))}, {CHECK(msg_size(4, 4))},
        {CHECK(msg_size(~0U, ~0U))},
    };
    // clang-format on
    KY_STORE(g_ky_log_module_func_enable, 1);
    utils_log_verbosity_level_set(9);
    take_records();
    for (const auto& [label, call] : calls) {
        EXPECT_OUTCOME(call(), GOOD, {}) << label;
    }
}

TEST_F(UtilsTest, ChecksRefuseWithOneMessageAndAnExitRecordWhenTraced)
{
    constexpr ky_status_t ZERO = KY_STATUS_MESSAGE_SIZE_ZERO;
    constexpr ky_status_t LIMIT = KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT;
    // clang-format off
    const struct {
        std::string label;
        Call call;
        ky_status_t status;
        const char* text;
    } refusals[] = {
        {CHECK(pointer(nullptr, "thing")), NIL, "NULL Pointer (thing)\n"},
        {CHECK(pointer(nullptr, nullptr)), NIL, "NULL Pointer (no pointer description)\n"},
        {CHECK(verbosity_level(9)), RANGE, "Verbosity level (9) is out of range : [0 .. 8]\n"},
        {CHECK(verbosity_level(~0U)), RANGE,
         "Verbosity level (4294967295) is out of range : [0 .. 8]\n"},
        {CHECK(array_length(0, "list")), RANGE, "Zero length (list)\n"},
        {CHECK(array_length(0, nullptr)), RANGE, "Zero length\n"},
        {CHECK(array_size(0, "list")), RANGE, "Zero size (list)\n"},
        {CHECK(array_size(0, nullptr)), RANGE, "Zero size\n"},
        {CHECK(mc_id(0)), RANGE, "Multicast ID (0) exceeds range [1..65535]\n"},
        {RUBBISH(mc_id, 0x10000), RANGE, "Multicast ID (0) exceeds range [1..65535]\n"},
        {CHECK(mstp_inst_id(1025)), RANGE, "MSTP Instance ID (1025) exceeds range [0..1024]\n"},
        {CHECK(mstp_inst_port_state(0)), RANGE,
         "MSTP Instance Port-State (# 0) exceeds range [1..3]\n"},
        {CHECK(mstp_inst_port_state(4)), RANGE,
         "MSTP Instance Port-State (# 4) exceeds range [1..3]\n"},
        {CHECK(mstp_inst_port_state(~0U)), RANGE,
         "MSTP Instance Port-State (# 4294967295) exceeds range [1..3]\n"},
        {CHECK(swid(8)), RANGE, "Switch ID (8) exceeds range [0..7]\n"},
        {CHECK(swid(253)), RANGE, "Switch ID (253) exceeds range [0..7]\n"},
        {RUBBISH(swid, 0x1ff), RANGE, "Switch ID (255) exceeds range [0..7]\n"},
        {CHECK(port_admin_state(0)), RANGE,
         "Port Administrative State (# 0) exceeds range [1..2]\n"},
        {CHECK(port_admin_state(3)), RANGE,
         "Port Administrative State (# 3) exceeds range [1..2]\n"},
        {CHECK(port_admin_state(-1)), RANGE,
         "Port Administrative State (# 4294967295) exceeds range [1..2]\n"},
        {CHECK(device_id(254)), RANGE, "Device ID (254) exceeds range [1..253]\n"},
        {RUBBISH(device_id, 0x100), RANGE, "Device ID (0) exceeds range [1..253]\n"},
        {CHECK(device_node_type(6)), RANGE, "Device Topology Type # (6) exceeds range [0..5]\n"},
        {CHECK(device_node_type(-1)), RANGE,
         "Device Topology Type # (4294967295) exceeds range [0..5]\n"},
        {CHECK(msg_size(0, 0)), ZERO, "Message size (0b) is zero\n"},
        {CHECK(msg_size(~0U, ~1U)), LIMIT,
         "Message size (4294967295b) exceeds limit (4294967294b)\n"},
    };
    // clang-format on
    for (const auto& [label, call, status, text] : refusals) {
        SCOPED_TRACE(label);
        const std::string function = "utils_check_" + label.substr(0, label.find('('));
        const Records message = utils.said(1, function, text);
        const Records exit = utils.said(31, "utils_ky_log_exit", function + " - left\n");
        const Records traced = function == "utils_check_msg_size" ? message : message + exit;
        for (const auto& [verbosity, flag, expected] :
             {std::tuple{0U, 1, Records{}}, {1U, 1, message}, {5U, 0, message}, {5U, 1, traced}}) {
            utils_log_verbosity_level_set(verbosity);
            KY_STORE(g_ky_log_module_func_enable, flag);
            take_records();
            EXPECT_OUTCOME(call(), status, expected);
            KY_STORE(g_ky_log_module_func_enable, 0);
        }
    }
}

TEST_F(UtilsTest, SettingsKeepWhatTheyAccept)
{
    uint32_t value = 77;
    for (const uint32_t use_xm : {7U, ~0U, 0U}) {
        EXPECT_EQ(utils_use_xm_set(use_xm), GOOD);
        EXPECT_EQ(utils_use_xm_get(&value), GOOD);
        EXPECT_EQ(value, use_xm);
    }
    EXPECT_EQ(utils_boot_mode_set(5), GOOD);
    utils_log_verbosity_level_set(0);
    EXPECT_EQ(utils_boot_mode_set(6), RANGE);
    EXPECT_EQ(utils_boot_mode_get(nullptr), NIL);
    EXPECT_OUTCOME(utils_boot_mode_get(&value), GOOD, {});
    EXPECT_EQ(value, 5U);
    EXPECT_EQ(utils_boot_mode_set(0), GOOD);
}

TEST_F(UtilsTest, SettingsTraceAsTheyAreMeantTo)
{
    const std::string setter = "utils_boot_mode_set";
    const auto null = [](const std::string& name) {
        return utils.said(1, "utils_check_pointer", "NULL Pointer (" + name + ")\n") +
               utils.said(31, "utils_ky_log_exit", "utils_check_pointer - left\n");
    };
    uint32_t value = 0;
    utils_log_verbosity_level_set(5);
    KY_STORE(g_ky_log_module_func_enable, 1);

    // clang-format off
    EXPECT_OUTCOME(utils_use_xm_set(0), GOOD, utils.around("utils_use_xm_set"));
    EXPECT_OUTCOME(utils_use_xm_get(nullptr), NIL,
        utils.around("utils_use_xm_get", null("use_xm_p")));
    EXPECT_OUTCOME(utils_boot_mode_set(~0U), RANGE, utils.around(setter, utils.said(1, setter,
        "Failed to set issu mode, parameter boot_mode (4294967295) is exceed range. "
        "Max value (5)\n")));
    EXPECT_OUTCOME(utils_boot_mode_get(&value), GOOD, {});
    EXPECT_OUTCOME(utils_boot_mode_get(nullptr), NIL, null("boot_mode_p") + utils.said(1,
        "utils_boot_mode_get", "failed to get issu mode, parameter boot_mode_p is NULL\n"));
    const std::string level_set = "utils_log_verbosity_level_set";
    EXPECT_OUTCOME(utils_log_verbosity_level_set(3), GOOD, utils.entered(level_set));
    EXPECT_OUTCOME(utils_log_verbosity_level_set(~0U), GOOD, utils.left(level_set));
    // clang-format on
}

} // namespace
