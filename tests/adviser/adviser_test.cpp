// The adviser: its registry, its walks, and callbacks that change the registry under them.
#include "allocation.h"
#include "recorder.h"

#include <ky_adviser.h>
#include <ky_names.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <random>
#include <set>

namespace {

constexpr size_t CALLBACK_COUNT = 256;
constexpr adviser_event_t PRE_DELETED = ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID;
constexpr adviser_event_t PRE_FAILED = ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID;
constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;

/* What a callback does, told which one it is in the order of addresses. */
std::function<ky_status_t(size_t, adviser_event_t, void*)> behaviour;

ky_status_t behave(adviser_cb_t callback, adviser_event_t event, void* data);

template <size_t> ky_status_t callback(adviser_event_t event, void* data);

template <size_t... I>
std::array<adviser_cb_t, sizeof...(I)> sorted_callbacks(std::index_sequence<I...>)
{
    std::array<adviser_cb_t, sizeof...(I)> all = {callback<I>...};
    std::sort(all.begin(), all.end(), std::less<>());
    return all;
}

/* Callbacks in ascending order of their addresses. */
const auto callbacks = sorted_callbacks(std::make_index_sequence<CALLBACK_COUNT>());

template <size_t I> ky_status_t callback(adviser_event_t event, void* data)
{
    return behave(callback<I>, event, data);
}

ky_status_t behave(adviser_cb_t self, adviser_event_t event, void* data)
{
    const auto found = std::lower_bound(callbacks.begin(), callbacks.end(), self, std::less<>());
    return behaviour(static_cast<size_t>(found - callbacks.begin()), event, data);
}

ky_status_t add(adviser_event_t event, adviser_cb_t self)
{
    return adviser_register_event(KY_ACCESS_CMD_ADD, event, self);
}

ky_status_t remove(adviser_event_t event, adviser_cb_t self)
{
    return adviser_register_event(KY_ACCESS_CMD_DELETE, event, self);
}

adviser_event_t event_of(uint32_t value)
{
    return static_cast<adviser_event_t>(value);
}

Records said(uint32_t mask, const std::string& function, const std::string& text)
{
    return statement(mask, "ADVISER", "ky_adviser.cpp", function, text);
}

void set_verbosity(uint32_t level)
{
    EXPECT_EQ(adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level), GOOD);
}

/* An initialised adviser, and a list of who was called with what: "3(11)". */
class AdviserTest : public RecordedTest {
  protected:
    void SetUp() override
    {
        RecordedTest::SetUp();
        ASSERT_EQ(adviser_init(), GOOD);
        EXPECT_RECORDS(said(7, "adviser_init", "adviser Init Success.\n"));
        behaviour = [this](size_t self, adviser_event_t event, void* data) {
            EXPECT_EQ(data, expected_data);
            calls.push_back(std::to_string(self) + "(" + std::to_string(event) + ")");
            const auto answer = answers.find({self, event});
            return answer == answers.end() ? GOOD : answer->second;
        };
    }
    void TearDown() override
    {
        take_records();
        EXPECT_EQ(adviser_deinit(), GOOD);
        EXPECT_RECORDS(said(7, "adviser_deinit", "adviser De-Init Success.\n"));
        EXPECT_EQ(live_blocks(), 0);
        RecordedTest::TearDown();
    }
    using Calls = std::vector<std::string>;
    Calls process(adviser_event_t event, ky_status_t expected)
    {
        calls.clear();
        EXPECT_EQ(adviser_process_event(event, expected_data), expected);
        return calls;
    }
    Calls calls;
    std::map<std::pair<size_t, adviser_event_t>, ky_status_t> answers;
    void* expected_data = this;
};

TEST_F(AdviserTest, RegistrationStatusesAndMessages)
{
    const std::string adding = "__adviser_add_event";
    const std::string removing = "__adviser_remove_event";
    const std::string lookup = "__adviser_event_map_get";
    const adviser_cb_t a = callbacks[0];
    ASSERT_EQ(add(ADVISER_EVENT_PORT_ADDED, a), GOOD);
    ASSERT_EQ(add(PRE_DELETED, a), GOOD);
    const struct {
        ky_access_cmd_t cmd;
        uint32_t event;
        adviser_cb_t callback;
        ky_status_t status;
        Records records;
    } cases[] = {
        {KY_ACCESS_CMD_ADD, 1, a, KY_STATUS_ENTRY_ALREADY_EXISTS,
         said(7, adding, "Can't add advisor to 'PORT-ADDED' adviser (Entry Already Exists).\n")},
        {KY_ACCESS_CMD_ADD, 2, a, GOOD, {}},
        {KY_ACCESS_CMD_ADD, 0, nullptr, KY_STATUS_PARAM_NULL,
         said(1, adding, "Register to event 'NONE' param NULL given.\n")},
        {KY_ACCESS_CMD_ADD, 12, nullptr, KY_STATUS_PARAM_NULL,
         said(
             1, adding,
             "Register to event 'PRE-FAILED-PORT-DELETED-FROM-SWID' param NULL given.\n")},
        {KY_ACCESS_CMD_ADD, 60, nullptr, KY_STATUS_PARAM_NULL,
         said(1, adding, "Register to event 'UNKNOWN' param NULL given.\n")},
        {KY_ACCESS_CMD_ADD, 12, a, KY_STATUS_PARAM_ERROR,
         said(
             1, adding,
             "SDK flow error - should not register to pre fail event "
             "'PRE-FAILED-PORT-DELETED-FROM-SWID'.\n")},
        {KY_ACCESS_CMD_ADD, 0, a, KY_STATUS_PARAM_EXCEEDS_RANGE,
         said(1, lookup, "Unsupported event (0).\n")},
        {KY_ACCESS_CMD_ADD, 52, a, KY_STATUS_PARAM_EXCEEDS_RANGE,
         said(1, lookup, "Unsupported event (52).\n")},
        {KY_ACCESS_CMD_DELETE, ~0U, a, KY_STATUS_PARAM_EXCEEDS_RANGE,
         said(1, lookup, "Unsupported event (-1).\n")},
        {KY_ACCESS_CMD_DELETE, 3, a, KY_STATUS_ENTRY_NOT_FOUND,
         said(1, removing, "Can't delete advisor from 'SWID-ADDED' adviser (Entry Not Found).\n")},
        {KY_ACCESS_CMD_DELETE, 51, nullptr, KY_STATUS_ENTRY_NOT_FOUND,
         said(
             1, removing,
             "Can't delete advisor from 'POST_ECMP_UPDATE' adviser (Entry Not Found).\n")},
        {KY_ACCESS_CMD_DELETE, 12, a, GOOD, {}},
        {KY_ACCESS_CMD_DELETE, 11, a, KY_STATUS_ENTRY_NOT_FOUND,
         said(
             1, removing,
             "Can't delete advisor from 'PRE-PORT-DELETED-FROM-SWID' adviser (Entry Not "
             "Found).\n")},
        {KY_ACCESS_CMD_REGISTER, 1, a, KY_STATUS_CMD_UNSUPPORTED,
         said(1, "adviser_register_event", "Unsupported access-command (REGISTER)\n")},
    };
    for (const auto& [cmd, event, callback, status, records] : cases) {
        SCOPED_TRACE(std::string(ky_access_cmd_str(cmd)) + " " + std::to_string(event));
        EXPECT_EQ(adviser_register_event(cmd, event_of(event), callback), status);
        EXPECT_RECORDS(records);
    }
}

TEST_F(AdviserTest, TwoHundredAndFiftyFiveRegistrationsAndNoMore)
{
    for (uint32_t i = 0; i < 255; i++) {
        ASSERT_EQ(add(event_of(i % 11 + 1), callbacks[i]), GOOD) << i;
    }
    EXPECT_EQ(add(ADVISER_EVENT_PORT_ADDED, callbacks[255]), KY_STATUS_NO_RESOURCES);
    EXPECT_RECORDS(
        said(1, "__adviser_add_event", "Can't allocate advisor at adviser (No More Resources).\n"));
    EXPECT_EQ(remove(event_of(2), callbacks[1]), GOOD);
    EXPECT_EQ(add(ADVISER_EVENT_PORT_ADDED, callbacks[255]), GOOD);
}

TEST_F(AdviserTest, EveryAllocationMayFail)
{
    ASSERT_EQ(adviser_deinit(), GOOD);
    fail_allocations_after(0);
    take_records();
    EXPECT_EQ(adviser_init(), KY_STATUS_NO_MEMORY);
    EXPECT_SILENCE();
    EXPECT_EQ(
        adviser_process_event(ADVISER_EVENT_PORT_ADDED, nullptr), KY_STATUS_DB_NOT_INITIALIZED);
    fail_allocations_after(-1);
    ASSERT_EQ(adviser_init(), GOOD);
    fail_allocations_after(0);
    size_t registered = 0;
    while (add(ADVISER_EVENT_PORT_ADDED, callbacks[registered]) == GOOD) {
        registered++;
    }
    EXPECT_EQ(registered, 16U);
    EXPECT_EQ(process(ADVISER_EVENT_PORT_ADDED, GOOD).size(), 16U);
    fail_allocations_after(-1);
    EXPECT_EQ(add(ADVISER_EVENT_PORT_ADDED, callbacks[registered]), GOOD);
}

TEST_F(AdviserTest, CallbacksRunInOrderUntilOneFails)
{
    const adviser_event_t events[] = {
        ADVISER_EVENT_PORT_ADDED, ADVISER_EVENT_DEVICE_DELETED, PRE_DELETED};
    for (const adviser_event_t event : events) {
        for (const size_t i : {2U, 0U, 3U, 1U}) {
            ASSERT_EQ(add(event, callbacks[i]), GOOD);
        }
    }
    const auto failed = [](const char* name) {
        return said(
            1, "adviser_process_event",
            std::string("Executing adviser for event ") + name + " failed.\n");
    };
    const auto rollback = [](const char* status) {
        return said(
            1, "adviser_process_event",
            std::string("Adviser fail in rollback event ") + status + ".\n");
    };
    const Records no_fail_event = said(
        1, "adviser_process_event", "SDK Internal error: failed to get fail event of pre event.\n");
    const auto odd = static_cast<ky_status_t>(4711);
    const struct {
        uint32_t event;
        std::map<std::pair<size_t, adviser_event_t>, ky_status_t> answers;
        ky_status_t status;
        Calls calls;
        Records records;
    } cases[] = {
        {1, {}, GOOD, {"0(1)", "1(1)", "2(1)", "3(1)"}, {}},
        {1, {{{1, event_of(1)}, odd}}, odd, {"0(1)", "1(1)"}, failed("PORT-ADDED")},
        {2, {}, GOOD, {}, {}},
        {9,
         {{{2, event_of(9)}, KY_STATUS_ERROR}},
         KY_STATUS_ERROR,
         {"0(9)", "1(9)", "2(9)"},
         failed("DEVICE-DELETED") + no_fail_event},
        {11,
         {{{2, PRE_DELETED}, KY_STATUS_RESOURCE_IN_USE}},
         KY_STATUS_RESOURCE_IN_USE,
         {"0(11)", "1(11)", "2(11)", "0(12)", "1(12)"},
         failed("PRE-PORT-DELETED-FROM-SWID")},
        {11,
         {{{0, PRE_DELETED}, KY_STATUS_ERROR}},
         KY_STATUS_ERROR,
         {"0(11)"},
         failed("PRE-PORT-DELETED-FROM-SWID")},
        {11,
         {{{2, PRE_DELETED}, KY_STATUS_PARAM_ERROR},
          {{0, PRE_FAILED}, KY_STATUS_ENTRY_NOT_FOUND},
          {{1, PRE_FAILED}, odd}},
         KY_STATUS_PARAM_ERROR,
         {"0(11)", "1(11)", "2(11)", "0(12)", "1(12)"},
         failed("PRE-PORT-DELETED-FROM-SWID") + rollback("Entry Not Found") + rollback("Unknown")},
        {12,
         {{{1, PRE_FAILED}, KY_STATUS_ERROR}},
         KY_STATUS_ERROR,
         {"0(12)", "1(12)"},
         failed("PRE-FAILED-PORT-DELETED-FROM-SWID")},
        {0,
         {},
         KY_STATUS_PARAM_EXCEEDS_RANGE,
         {},
         said(1, "__adviser_event_map_get", "Unsupported event (0).\n")},
        {52,
         {},
         KY_STATUS_PARAM_EXCEEDS_RANGE,
         {},
         said(1, "__adviser_event_map_get", "Unsupported event (52).\n")},
    };
    for (const auto& [event, given, status, expected, records] : cases) {
        SCOPED_TRACE("event " + std::to_string(event));
        answers = given;
        EXPECT_EQ(process(event_of(event), status), expected);
        EXPECT_RECORDS(records);
        expected_data = nullptr;
    }
}

TEST_F(AdviserTest, EveryFunctionTraces)
{
    const auto trace = [](const std::string& function, const char* verb) {
        return said(31, function, function + " - " + verb + " \n");
    };
    const auto around = [&trace](const std::string& function, const Records& within = {}) {
        return trace(function, "entered") + within + trace(function, "left");
    };
    const Records lookup = around("__adviser_event_map_get");
    set_verbosity(5);
    KY_STORE(g_ky_log_module_func_enable, 1);

    EXPECT_EQ(add(PRE_DELETED, callbacks[0]), GOOD);
    const Records added =
        said(31, "__adviser_add_event", "Advisor added to 'PRE-PORT-DELETED-FROM-SWID' adviser.\n");
    EXPECT_RECORDS(around(
        "adviser_register_event",
        around("__adviser_add_event", around("__is_event_pre_fail_event") + lookup + added)));

    answers[{0, PRE_DELETED}] = KY_STATUS_ERROR;
    process(PRE_DELETED, KY_STATUS_ERROR);
    const Records failed = said(
        1, "adviser_process_event",
        "Executing adviser for event PRE-PORT-DELETED-FROM-SWID failed.\n");
    EXPECT_RECORDS(around(
        "adviser_process_event",
        lookup + failed + around("__is_event_pre_event") + around("__get_fail_event")));

    EXPECT_EQ(remove(PRE_FAILED, callbacks[0]), GOOD);
    const Records removed = said(
        31, "__adviser_remove_event",
        "Advisor deleted from 'PRE-FAILED-PORT-DELETED-FROM-SWID' adviser.\n");
    EXPECT_RECORDS(
        around("adviser_register_event", around("__adviser_remove_event", lookup + removed)));

    EXPECT_EQ(adviser_init(), KY_STATUS_DB_ALREADY_INITIALIZED);
    EXPECT_RECORDS(around(
        "adviser_init",
        said(1, "adviser_init", "Can't Init adviser (Database Already Initialized).\n")));

    uint32_t level = 9;
    EXPECT_EQ(adviser_log_verbosity_level(KY_ACCESS_CMD_GET, &level), GOOD);
    EXPECT_EQ(level, 5U);
    EXPECT_RECORDS(trace("adviser_log_verbosity_level", "entered"));
    EXPECT_EQ(adviser_log_verbosity_level(KY_ACCESS_CMD_DELETE, &level), KY_STATUS_CMD_UNSUPPORTED);
    EXPECT_RECORDS(
        trace("adviser_log_verbosity_level", "entered") +
        said(1, "adviser_log_verbosity_level", "Reached default access command : [DELETE]"));

    EXPECT_EQ(adviser_deinit(), GOOD);
    const Records all = take_records();
    EXPECT_EQ(all.size(), 2U * (2 + 51 * 6 + 1)); // traces; six for each event; the notice
    EXPECT_EQ(
        std::count(
            all.begin(), all.end(),
            "log 15 ADVISER: Deleted 'PRE-FAILED-PORT-DELETED-FROM-SWID' adviser Successfully.\n"),
        1);
    EXPECT_EQ(adviser_init(), GOOD);
    KY_STORE(g_ky_log_module_func_enable, 0);
    set_verbosity(KY_LOG_LEVEL_DEFAULT);
}

TEST_F(AdviserTest, WithoutARegistryCallsAreRefusedAfterTheirOtherChecks)
{
    ASSERT_EQ(adviser_deinit(), GOOD);
    take_records();
    const adviser_cb_t a = callbacks[0];
    const auto refused = [](const std::string& function, const std::string& text) {
        return said(1, function, text + " (Database Wasn't Initialized).\n");
    };
    EXPECT_EQ(adviser_deinit(), KY_STATUS_DB_NOT_INITIALIZED);
    EXPECT_RECORDS(refused("adviser_deinit", "Can't De-Init adviser"));
    EXPECT_EQ(add(event_of(1), a), KY_STATUS_DB_NOT_INITIALIZED);
    EXPECT_RECORDS(refused("__adviser_add_event", "Can't register to event 'PORT-ADDED'"));
    EXPECT_EQ(remove(event_of(1), a), KY_STATUS_DB_NOT_INITIALIZED);
    EXPECT_RECORDS(refused("__adviser_remove_event", "Can't deregister from event 'PORT-ADDED'"));
    EXPECT_EQ(adviser_process_event(event_of(1), nullptr), KY_STATUS_DB_NOT_INITIALIZED);
    EXPECT_RECORDS(refused("adviser_process_event", "Can't process event 'PORT-ADDED'"));
    EXPECT_EQ(add(event_of(1), nullptr), KY_STATUS_PARAM_NULL);
    EXPECT_EQ(add(PRE_FAILED, a), KY_STATUS_PARAM_ERROR);
    EXPECT_EQ(add(event_of(52), a), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_EQ(remove(event_of(0), a), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_EQ(adviser_process_event(event_of(52), nullptr), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_EQ(adviser_register_event(KY_ACCESS_CMD_SET, event_of(1), a), KY_STATUS_CMD_UNSUPPORTED);
    EXPECT_EQ(adviser_init(), GOOD);
    EXPECT_EQ(process(event_of(1), GOOD), Calls{});
}

/* What a callback does to its neighbours while it runs, in a registry of five. */
TEST_F(AdviserTest, AdvisorsThatLeaveDuringAWalkAreNotCalled)
{
    using Action = std::function<void()>;
    const struct {
        const char* label;
        size_t actor;
        adviser_event_t during;
        Action action;
        Calls calls;
    } cases[] = {
        {"itself",
         1,
         PRE_DELETED,
         [] { remove(PRE_DELETED, callbacks[1]); },
         {"0(11)", "1(11)", "2(11)", "3(11)", "0(12)", "2(12)"}},
        {"the next one",
         1,
         PRE_DELETED,
         [] { remove(PRE_DELETED, callbacks[2]); },
         {"0(11)", "1(11)", "3(11)", "0(12)", "1(12)"}},
        {"the next two",
         0,
         PRE_DELETED,
         [] {
             remove(PRE_DELETED, callbacks[1]);
             remove(PRE_DELETED, callbacks[2]);
         },
         {"0(11)", "3(11)", "0(12)"}},
        {"the one before",
         2,
         PRE_DELETED,
         [] { remove(PRE_DELETED, callbacks[1]); },
         {"0(11)", "1(11)", "2(11)", "3(11)", "0(12)", "2(12)"}},
        {"the failing one, itself",
         3,
         PRE_DELETED,
         [] { remove(PRE_DELETED, callbacks[3]); },
         {"0(11)", "1(11)", "2(11)", "3(11)", "0(12)", "1(12)", "2(12)", "4(12)"}},
        {"the failing one, in the rollback",
         1,
         PRE_FAILED,
         [] { remove(PRE_DELETED, callbacks[3]); },
         {"0(11)", "1(11)", "2(11)", "3(11)", "0(12)", "1(12)", "2(12)", "4(12)"}},
        {"the next one, in the rollback",
         0,
         PRE_FAILED,
         [] { remove(PRE_DELETED, callbacks[1]); },
         {"0(11)", "1(11)", "2(11)", "3(11)", "0(12)", "2(12)"}},
        {"the next one, whose record another event takes",
         1,
         PRE_DELETED,
         [] {
             remove(PRE_DELETED, callbacks[2]);
             add(ADVISER_EVENT_PORT_ADDED, callbacks[9]);
         },
         {"0(11)", "1(11)", "3(11)", "0(12)", "1(12)"}},
        {"all", 1, PRE_DELETED, [] { adviser_deinit(); }, {"0(11)", "1(11)"}},
        {"all, in the rollback",
         1,
         PRE_FAILED,
         [] { adviser_deinit(); },
         {"0(11)", "1(11)", "2(11)", "3(11)", "0(12)", "1(12)"}},
        {"all, and others come",
         1,
         PRE_DELETED,
         [] {
             adviser_deinit();
             adviser_init();
             add(PRE_DELETED, callbacks[7]);
         },
         {"0(11)", "1(11)"}},
    };
    for (const auto& [label, actor, during, action, expected] : cases) {
        SCOPED_TRACE(label);
        adviser_deinit();
        ASSERT_EQ(adviser_init(), GOOD);
        for (size_t i = 0; i < 5; i++) {
            ASSERT_EQ(add(PRE_DELETED, callbacks[i]), GOOD);
        }
        calls.clear();
        behaviour = [&, actor = actor, during = during,
                     &act = action](size_t self, adviser_event_t event, void*) {
            calls.push_back(std::to_string(self) + "(" + std::to_string(event) + ")");
            if (self == actor && event == during) {
                act();
            }
            return self == 3 && event == PRE_DELETED ? KY_STATUS_ERROR : GOOD;
        };
        adviser_process_event(PRE_DELETED, nullptr);
        EXPECT_EQ(calls, expected);
    }
}

/* Random calls from outside and from inside callbacks, beside a model of who is registered. */
TEST_F(AdviserTest, NothingDoneFromACallbackBreaksTheRegistry)
{
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](size_t end) { return random() % end; };
    const auto map_of = [](uint32_t event) { return event == 12 ? 11 : event; };
    std::map<uint32_t, std::set<size_t>> registered;
    uint64_t called = 0;
    int depth = 0;

    const std::function<void()> act = [&] {
        const auto event = static_cast<uint32_t>(8 + below(6)); // two pre-events among them
        const size_t who = below(24);
        std::set<size_t>& here = registered[map_of(event)];
        switch (below(16)) {
        default: {
            const bool fresh = event != 12 && here.insert(who).second;
            EXPECT_EQ(
                add(event_of(event), callbacks[who]), event == 12 ? KY_STATUS_PARAM_ERROR
                                                      : fresh     ? GOOD
                                                                  : KY_STATUS_ENTRY_ALREADY_EXISTS);
            break;
        }
        case 0:
        case 1:
        case 2:
        case 3:
        case 4: {
            const bool present = here.contains(who);
            EXPECT_EQ(
                remove(event_of(event), callbacks[who]),
                present ? GOOD : KY_STATUS_ENTRY_NOT_FOUND);
            here.erase(who);
            break;
        }
        case 5:
        case 6:
        case 7:
            if (depth < 4) {
                adviser_process_event(event_of(event), nullptr);
            }
            break;
        case 8:
            if (below(8) == 0) {
                EXPECT_EQ(adviser_deinit(), GOOD);
                EXPECT_EQ(adviser_init(), GOOD);
                registered.clear();
            }
            break;
        }
    };
    behaviour = [&](size_t self, adviser_event_t event, void*) {
        EXPECT_TRUE(registered[map_of(event)].contains(self)) << self << " for " << event;
        called++;
        depth++;
        for (size_t i = below(3); i > 0; i--) {
            act();
        }
        depth--;
        return below(6) == 0 ? KY_STATUS_ERROR : GOOD;
    };
    set_verbosity(0);
    for (int i = 0; i < 20000 && !HasFailure(); i++) {
        act();
    }
    EXPECT_GT(called, 1000U);
    behaviour = [&](size_t self, adviser_event_t event, void*) {
        EXPECT_EQ(registered[map_of(event)].erase(self), 1U);
        return GOOD;
    };
    for (const uint32_t event : {8U, 9U, 10U, 11U, 13U}) {
        EXPECT_EQ(adviser_process_event(event_of(event), nullptr), GOOD);
        EXPECT_TRUE(registered[event].empty()) << event;
    }
    set_verbosity(KY_LOG_LEVEL_DEFAULT);
}

} // namespace
