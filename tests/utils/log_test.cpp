// The log statement and the traces, from C and from C++, at every level.
#include "log_module.h"
#include "recorder.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

namespace {

constexpr uint32_t all_levels[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0x80000000, 0xffffffff};

struct Language {
    const char* label;
    const log_module_t& module;
} const languages[] = {
    {"C", log_module_in_c},
    {"C++", log_module_in_cpp},
    {"C++, by call", log_module_in_cpp_by_call},
};

constexpr Module test = {"TEST", "log_module.inc"};
constexpr Module utils = {"UTILS", "utils.cpp"};

class LogTest : public RecordedTest {};

TEST_F(LogTest, StatementReachesBothSinksFromItsLevelOn)
{
    constexpr uint32_t masks[] = {1, 3, 7, 15, 31, 63, 127, 255, 511};
    for (const auto& [label, module] : languages) {
        for (const uint32_t verbosity : all_levels) {
            SCOPED_TRACE(std::string(label) + " at " + std::to_string(verbosity));
            Records expected;
            for (uint32_t level = 1; level <= 9 && level <= verbosity; level++) {
                expected = expected + test.said(masks[level - 1], "say_at_all_levels", "said -7\n");
            }
            module.set_verbosity(verbosity);
            module.say_at_all_levels(-7);
            EXPECT_RECORDS(expected);
        }
    }
}

TEST_F(LogTest, StatementTakesNoneToNineArgumentsAndYieldsAStatus)
{
    for (const auto& [label, module] : languages) {
        SCOPED_TRACE(label);
        module.set_verbosity(1);
        module.say_bare();
        EXPECT_RECORDS(test.said(1, "say_bare", "bare\n"));
        module.say_much();
        EXPECT_RECORDS(test.said(1, "say_much", "1a2b3c4d5\n"));
        EXPECT_OUTCOME(module.fail(4000000000), 13U, test.said(1, "fail", "4000000000 is wrong\n"));
        module.set_verbosity(0);
        EXPECT_OUTCOME(module.fail(1), 13U, {});
    }
}

TEST_F(LogTest, TracesNeedTheFlagAndDebugLevelEachInItsTurn)
{
    struct Gates {
        uint32_t level;
        int32_t flag;
    };
    std::vector<Gates> gates;
    for (const uint32_t level : all_levels) {
        for (const int32_t flag : {0, 1, 0x10000, -1}) {
            gates.push_back({level, flag});
        }
    }
    const auto if_open = [](const Gates& at, const Records& records) {
        return at.flag != 0 && at.level >= 5 ? records : Records{};
    };
    for (const auto& [label, module] : languages) {
        for (const Gates& before : gates) {
            for (const Gates& after : gates) {
                SCOPED_TRACE(
                    std::string(label) + ", flag " + std::to_string(before.flag) + " to " +
                    std::to_string(after.flag) + ", level " + std::to_string(before.level) +
                    " to " + std::to_string(after.level));
                KY_STORE(g_ky_log_module_func_enable, before.flag);
                module.set_verbosity(before.level);
                ASSERT_EQ(module.traced(after.level, after.flag), 13U);
                ASSERT_EQ(
                    take_records(),
                    if_open(before, test.entered("traced")) + if_open(after, test.left("traced")));
            }
        }
    }
}

/* The entry is judged at the level before, the exit at the level after. */
TEST_F(LogTest, EachModulesSetterTakesAnyLevelAndTracesWithBoth)
{
    const struct {
        std::string name;
        Module module;
        std::function<ky_status_t(uint32_t)> set;
        bool traces_entry;
        bool traces_exit;
    } setters[] = {
        {"utils_log_verbosity_level_set", utils, utils_log_verbosity_level_set, true, true},
        {"port_type_validate_log_verbosity_level_set",
         {"PORT_TYPE_VALIDATE", "port_type_validate.cpp"},
         port_type_validate_log_verbosity_level_set,
         true,
         true},
        {"ky_router_utils_log_verbosity_set",
         {"KY_API_ROUTER", "ky_router_utils_validate.cpp"},
         ky_router_utils_log_verbosity_set,
         false,
         false},
        {"adviser_log_verbosity_level",
         {"ADVISER", "ky_adviser.cpp"},
         [](uint32_t level) { return adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level); },
         true,
         false},
    };
    for (const auto& [name, module, set, traces_entry, traces_exit] : setters) {
        for (const uint32_t before : all_levels) {
            for (const uint32_t after : all_levels) {
                SCOPED_TRACE(name + ", " + std::to_string(before) + " to " + std::to_string(after));
                KY_STORE(g_ky_log_module_func_enable, 0);
                EXPECT_EQ(set(before), GOOD);
                KY_STORE(g_ky_log_module_func_enable, 1);
                const bool enters = traces_entry && before >= 5;
                const bool leaves = traces_exit && after >= 5;
                EXPECT_OUTCOME(
                    set(after), GOOD,
                    (enters ? module.entered(name) : Records{}) +
                        (leaves ? module.left(name) : Records{}));
            }
        }
    }
}

TEST_F(LogTest, ExportedTracesNameTheirCallerAndPassTheStatusThrough)
{
    for (const int32_t flag : {0, 1, -1}) {
        for (const uint32_t verbosity : all_levels) {
            SCOPED_TRACE("flag " + std::to_string(flag) + " at " + std::to_string(verbosity));
            KY_STORE(g_ky_log_module_func_enable, 0);
            utils_log_verbosity_level_set(verbosity);
            KY_STORE(g_ky_log_module_func_enable, flag);
            utils_ky_log_enter("somebody");
            EXPECT_EQ(utils_ky_log_exit(KY_STATUS_PARAM_ERROR, "somebody"), KY_STATUS_PARAM_ERROR);
            const Records expected = utils.said(31, "utils_ky_log_enter", "somebody - entered\n") +
                                     utils.said(31, "utils_ky_log_exit", "somebody - left\n");
            EXPECT_RECORDS(flag != 0 && verbosity >= 5 ? expected : Records{});
        }
    }
}

} // namespace
