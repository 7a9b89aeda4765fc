// The function traces, the argument checks and the settings.
#include "contract.h"
#include "tools.h"

#include <ky_utils.h>

namespace {

const Module module = {
    "UTILS",
    "utils.cpp",
    Traces::of_failure,
    {{"utils_ky_log_enter", Traces::none},
     {"utils_ky_log_exit", Traces::none},
     {"utils_log_verbosity_level_set", Traces::both},
     {"utils_check_msg_size", Traces::none},
     {"utils_use_xm_set", Traces::both},
     {"utils_use_xm_get", Traces::both},
     {"utils_boot_mode_set", Traces::both},
     {"utils_boot_mode_get", Traces::none}}};

class UtilsTest : public ContractTest {
  protected:
    UtilsTest() : ContractTest(module) {}
};

TEST_F(UtilsTest, TracesAndVerbosity)
{
    expect({
        {CALL(utils_ky_log_exit(KY_STATUS_PARAM_ERROR, "somebody")),
         .status = KY_STATUS_PARAM_ERROR, .log = failure_trace("somebody")},
        {CALL(utils_ky_log_exit(KY_STATUS_SUCCESS, "somebody")), .log = failure_trace("somebody")},
        {CALL(utils_log_verbosity_level_set(verbosity))},
    });
    Log entered = debug("somebody - entered\n");
    entered[0].is_trace = true;
    const auto enter = [] {
        utils_ky_log_enter("somebody");
        return KY_STATUS_SUCCESS;
    };
    expect({.label = "utils_ky_log_enter(\"somebody\")", .call = enter, .log = entered});
}

TEST_F(UtilsTest, ChecksOfPointersAndSizes)
{
    expect({
        {CALL(utils_check_pointer(reinterpret_cast<void*>(1), nullptr))},
        {CALL(utils_check_pointer(nullptr, "")), .status = KY_STATUS_PARAM_NULL,
         .log = error("NULL Pointer ()\n")},
        {CALL(utils_check_pointer(nullptr, nullptr)), .status = KY_STATUS_PARAM_NULL,
         .log = error("NULL Pointer (no pointer description)\n")},
        {CALL(utils_check_msg_size(0, 0)), .status = KY_STATUS_MESSAGE_SIZE_ZERO,
         .log = error("Message size (0b) is zero\n")},
        {CALL(utils_check_msg_size(0, 5)), .status = KY_STATUS_MESSAGE_SIZE_ZERO,
         .log = error("Message size (0b) is zero\n")},
        {CALL(utils_check_msg_size(4, 4))},
        {CALL(utils_check_msg_size(4, ~0U))},
        {CALL(utils_check_msg_size(1, 0)), .status = KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT,
         .log = error("Message size (1b) exceeds limit (0b)\n")},
        {CALL(utils_check_msg_size(0x80010000, 4)), .status = KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT,
         .log = error("Message size (2147549184b) exceeds limit (4b)\n")},
    });
    for (const char* const list : {"list", "", static_cast<const char*>(nullptr)}) {
        const std::string of_list = list == nullptr ? "\n" : formatted(" (%s)\n", list);
        expect({
            {CALL(utils_check_array_length(0, list)), .status = KY_STATUS_PARAM_EXCEEDS_RANGE,
             .log = error("Zero length" + of_list)},
            {CALL(utils_check_array_size(0, list)), .status = KY_STATUS_PARAM_EXCEEDS_RANGE,
             .log = error("Zero size" + of_list)},
        });
    }
    for (const uint32_t size : {1U, 0x100U, 0x10000U, 0x80000000U, ~0U}) {
        expect({
            {CALL(utils_check_array_length(size, "list"))},
            {CALL(utils_check_array_size(size, nullptr))},
        });
    }
}

/* Calls a check as a caller that leaves garbage above a narrow argument. */
template <typename Argument> std::function<uint32_t(uint32_t)> wide(ky_status_t (*check)(Argument))
{
    if constexpr (sizeof(Argument) == sizeof(uint32_t)) {
        return [check](uint32_t argument) { return check(static_cast<Argument>(argument)); };
    }
    return [any = reinterpret_cast<void (*)()>(check)](uint32_t argument) {
        return reinterpret_cast<ky_status_t (*)(uint32_t)>(any)(argument);
    };
}

TEST_F(UtilsTest, ChecksOfRanges)
{
#define CHECK(name) "utils_check_" #name, wide(utils_check_##name)
#define MESSAGE(format) [](uint32_t value) { return formatted(format, value); }
    // clang-format off
    const struct {
        std::string function;
        std::function<uint32_t(uint32_t)> check;
        uint32_t width; // of the argument, as a mask
        uint32_t min;
        uint32_t max;
        std::string (*message)(uint32_t value);
    } rows[] = {
        {CHECK(verbosity_level), ~0U, 0, 8,
         MESSAGE("Verbosity level (%u) is out of range : [0 .. 8]\n")},
        {CHECK(mc_id), 0xFFFF, 1, 65535, MESSAGE("Multicast ID (%u) exceeds range [1..65535]\n")},
        {CHECK(mstp_inst_id), 0xFFFF, 0, 1024,
         MESSAGE("MSTP Instance ID (%u) exceeds range [0..1024]\n")},
        {CHECK(mstp_inst_port_state), ~0U, 1, 3,
         MESSAGE("MSTP Instance Port-State (# %u) exceeds range [1..3]\n")},
        {CHECK(swid), 0xFF, 0, 7, MESSAGE("Switch ID (%u) exceeds range [0..7]\n")},
        {CHECK(swid), 0xFF, 254, 254, MESSAGE("Switch ID (%u) exceeds range [0..7]\n")},
        {CHECK(port_admin_state), ~0U, 1, 2,
         MESSAGE("Port Administrative State (# %u) exceeds range [1..2]\n")},
        {CHECK(device_id), 0xFF, 1, 253, MESSAGE("Device ID (%u) exceeds range [1..253]\n")},
        {CHECK(device_node_type), ~0U, 0, 5,
         MESSAGE("Device Topology Type # (%u) exceeds range [0..5]\n")},
    };
    // clang-format on
    for (const auto& [function, check, width, min, max, message] : rows) {
        for (const uint32_t argument : boundary_values(min, max)) {
            const uint32_t value = argument & width;
            const bool is_good =
                (value >= min && value <= max) || (function == "utils_check_swid" && value <= 7);
            const auto call = [check = check, argument] { return check(argument); };
            expect({
                .label = function + formatted("(%u)", argument),
                .call = call,
                .status = is_good ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_EXCEEDS_RANGE,
                .log = is_good ? Log{} : error(message(value)),
            });
        }
    }
}

TEST_F(UtilsTest, Settings)
{
    Out<uint32_t> word;
    const std::string no_mode = "failed to get issu mode, parameter boot_mode_p is NULL\n";
    const auto restore = [] {
        utils_use_xm_set(0);
        utils_boot_mode_set(0);
    };
    expect({
        {CALL(utils_use_xm_get(nullptr)), .status = KY_STATUS_PARAM_NULL,
         .log = null_pointer("use_xm_p")},
        {CALL(utils_boot_mode_get(nullptr)), .status = KY_STATUS_PARAM_NULL,
         .log = null_pointer("boot_mode_p") + error(no_mode)},
    });
    for (const uint32_t value : boundary_values(0, 5)) {
        const bool is_mode = value <= 5;
        const std::string refused =
            formatted(
                "Failed to set issu mode, parameter boot_mode (%u) is exceed range. ", value) +
            "Max value (5)\n";
        const auto set = [&] { // settings are process-wide, not per thread
            in_threads(1, [&](uint32_t) {
                utils_use_xm_set(value);
                utils_boot_mode_set(value);
            });
        };
        const auto expect_only = [&](uint32_t use_xm, uint32_t boot_mode) {
            const std::string expected = formatted("boot mode %u, use XM %u,", boot_mode, use_xm);
            EXPECT_EQ(state().substr(0, expected.size()), expected);
            restore();
        };
        expect({
            {CALL(utils_use_xm_set(value)), .after = [&] { expect_only(value, 0); }},
            {CALL(utils_use_xm_get(word)), .writes = {word.is(value)}, .before = set,
             .after = restore},
            {CALL(utils_boot_mode_get(word)), .writes = {word.is(is_mode ? value : 0)},
             .before = set, .after = restore},
            {CALL(utils_boot_mode_set(value)),
             .status = is_mode ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_EXCEEDS_RANGE,
             .log = is_mode ? Log{} : error(refused), .before = [] { utils_boot_mode_set(3); },
             .after = [&] { expect_only(0, is_mode ? value : 3); }},
        });
    }
}

} // namespace
