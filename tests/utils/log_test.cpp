// The log statement and the traces, from C and from C++, at every level.
#include "contract.h"
#include "log_module.h"
#include "tools.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <bit>

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

/* What the modules in C and C++ say, if all of it passes. */
Said by_test(const Said& said)
{
    return passing(said, "TEST", "log_module.inc", ~0U, 1);
}

class LogTest : public ContractTest {};

TEST_F(LogTest, StatementReachesBothSinksFromItsLevelOn)
{
    constexpr uint32_t masks[] = {1, 3, 7, 15, 31, 63, 127, 255, 1023};
    for (const auto& [label, module] : languages) {
        for (const uint32_t at : all_levels) {
            SCOPED_TRACE(std::string(label) + " at " + std::to_string(at));
            Said expected;
            for (const uint32_t mask : masks) {
                if (static_cast<uint32_t>(std::popcount(mask)) <= at) {
                    expected.push_back({mask, "say_at_all_levels", "said -7\n"});
                }
            }
            module.set_verbosity(at);
            module.say_at_all_levels(-7);
            EXPECT_EQ(take_said(), by_test(expected));
        }
    }
}

TEST_F(LogTest, StatementTakesNoneToNineArgumentsAndYieldsAStatus)
{
    for (const auto& [label, module] : languages) {
        SCOPED_TRACE(label);
        const uint32_t number = 4000000000;
        module.set_verbosity(1);
        module.say_bare();
        EXPECT_EQ(take_said(), by_test(error("bare\n", "say_bare")));
        module.say_much();
        EXPECT_EQ(take_said(), by_test(error("1a2b3c4d5\n", "say_much")));
        EXPECT_EQ(module.fail(&number), 13U);
        EXPECT_EQ(take_said(), by_test(error("4000000000 is wrong\n", "fail")));
        module.set_verbosity(0);
        EXPECT_EQ(module.fail(nullptr), 13U);
        EXPECT_EQ(take_said(), Said{});
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
    const auto open = [](const Gates& before, const Gates& after) {
        const Said traces = around("traced");
        Said said;
        if (before.flag != 0 && before.level >= 5) {
            said.push_back(traces.front());
        }
        if (after.flag != 0 && after.level >= 5) {
            said.push_back(traces.back());
        }
        return said;
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
                ASSERT_EQ(take_said(), by_test(open(before, after)));
            }
        }
    }
}

/* The entry is judged at the level before, the exit at the level after. */
TEST_F(LogTest, EachModulesSetterTakesAnyLevelAndTracesWithBoth)
{
    const struct {
        const char* name;
        const char* module;
        const char* source;
        std::function<ky_status_t(uint32_t)> set;
        bool traces_entry;
        bool traces_exit;
    } setters[] = {
        {"utils_log_verbosity_level_set", "UTILS", "utils.cpp", utils_log_verbosity_level_set, true,
         true},
        {"port_type_validate_log_verbosity_level_set", "PORT_TYPE_VALIDATE",
         "port_type_validate.cpp", port_type_validate_log_verbosity_level_set, true, true},
        {"ky_router_utils_log_verbosity_set", "KY_API_ROUTER", "ky_router_utils_validate.cpp",
         ky_router_utils_log_verbosity_set, false, false},
        {"adviser_log_verbosity_level", "ADVISER", "ky_adviser.cpp",
         [](uint32_t level) { return adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level); },
         true, false},
    };
    for (const auto& setter : setters) {
        const Said traces = around(setter.name);
        for (const uint32_t before : all_levels) {
            for (const uint32_t after : all_levels) {
                SCOPED_TRACE(text("%s, %u to %u", setter.name, before, after));
                in_threads(1, [&](uint32_t) { set_verbosity_and_flag(before, 1); });
                take_said();
                EXPECT_EQ(setter.set(after), GOOD);
                Said said;
                if (setter.traces_entry && before >= 5) {
                    said.push_back(traces.front());
                }
                if (setter.traces_exit && after >= 5) {
                    said.push_back(traces.back());
                }
                EXPECT_EQ(take_said(), passing(said, setter.module, setter.source, 9, 1));
            }
        }
    }
}

} // namespace
