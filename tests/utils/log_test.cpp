// The log statement and the traces, from C and from C++, at every level.
#include "log_module.h"
#include "recorder.h"
#include "tools.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

#include <bit>

namespace {

constexpr uint32_t all_levels[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0x80000000, 0xffffffff};

struct Language {
    const char* source;
    const log_module_t& module;
} const languages[] = {
    {"log_module.c", log_module_in_c},
    {"log_module.cpp", log_module_in_cpp},
};

/* Statements of a module; all of them pass. */
Log by_test(const Log& log, const std::string& source)
{
    return filtered(log, "TEST", source, ~0U, 1);
}

/* The traces of a function that pass. */
Log let_through(const std::string& function, bool entry, bool exit)
{
    return (entry ? entry_trace(function) : Log{}) + (exit ? exit_trace(function) : Log{});
}

class LogTest : public testing::Test {
  protected:
    void SetUp() override
    {
        set_verbosity_and_flag(KY_LOG_LEVEL_DEFAULT, 0);
        take_log();
    }
};

TEST_F(LogTest, StatementReachesBothSinksFromItsLevelOn)
{
    constexpr uint32_t masks[] = {1, 3, 7, 15, 31, 63, 127, 255, 1023};
    for (const auto& [source, module] : languages) {
        for (const uint32_t at : all_levels) {
            SCOPED_TRACE(std::string(source) + " at " + std::to_string(at));
            Log expected;
            for (const uint32_t mask : masks) {
                if (static_cast<uint32_t>(std::popcount(mask)) <= at) {
                    expected.push_back({mask, "say_at_all_levels", "said -7\n"});
                }
            }
            module.set_verbosity(at);
            module.say_at_all_levels(-7);
            EXPECT_EQ(take_log(), by_test(expected, source));
        }
    }
}

TEST_F(LogTest, StatementTakesNoneToNineteenValuesAndYieldsAStatus)
{
    for (const auto& [source, module] : languages) {
        SCOPED_TRACE(source);
        const uint32_t number = 4000000000;
        module.set_verbosity(1);
        module.say_bare();
        EXPECT_EQ(take_log(), by_test(error("bare\n", "say_bare"), source));
        module.say_much();
        EXPECT_EQ(take_log(), by_test(error("1a2b3c4d5e6f7g8h9i10\n", "say_much"), source));
        EXPECT_EQ(module.fail(&number), 13U);
        EXPECT_EQ(take_log(), by_test(error("4000000000 is wrong\n", "fail"), source));
        module.set_verbosity(0);
        EXPECT_EQ(module.fail(nullptr), 13U);
        EXPECT_EQ(take_log(), Log{});
    }
}

TEST_F(LogTest, TracesNeedTheFlagAndDebugLevelEachInItsTurn)
{
    std::vector<std::pair<uint32_t, int32_t>> gates;
    for (const uint32_t level : all_levels) {
        for (const int32_t flag : {0, 1, 0x10000, -1}) {
            gates.emplace_back(level, flag);
        }
    }
    const auto open = [](uint32_t level, int32_t flag) { return level >= 5 && flag != 0; };
    for (const auto& [source, module] : languages) {
        for (const auto& [level, flag] : gates) {
            for (const auto& [new_level, new_flag] : gates) {
                SCOPED_TRACE(
                    formatted("%s, %u %d to %u %d", source, level, flag, new_level, new_flag));
                KY_STORE(g_ky_log_module_func_enable, flag);
                module.set_verbosity(level);
                ASSERT_EQ(module.traced(new_level, new_flag), 13U);
                const Log log = let_through("traced", open(level, flag), open(new_level, new_flag));
                ASSERT_EQ(take_log(), by_test(log, source));
            }
        }
    }
}

/* The entry is filtered at the old level, the exit at the new one. */
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
        for (const uint32_t before : all_levels) {
            for (const uint32_t after : all_levels) {
                SCOPED_TRACE(formatted("%s, %u to %u", setter.name, before, after));
                in_threads(1, [&](uint32_t) { set_verbosity_and_flag(before, 1); });
                take_log();
                EXPECT_EQ(setter.set(after), KY_STATUS_SUCCESS);
                const Log log = let_through(
                    setter.name, setter.traces_entry && before >= 5,
                    setter.traces_exit && after >= 5);
                EXPECT_EQ(take_log(), filtered(log, setter.module, setter.source, 9, 1));
            }
        }
    }
}

} // namespace
