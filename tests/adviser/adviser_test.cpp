// The adviser: its registry, its walks, and callbacks that change the registry under them.
#include "allocation.h"
#include "callbacks.h"
#include "contract.h"

#include <ky_adviser.h>
#include <ky_names.h>

#include <map>

namespace {

constexpr adviser_event_t PRE_DELETED = ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID;       // 11
constexpr adviser_event_t PRE_FAILED = ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID; // 12
constexpr ky_access_cmd_t ADD = KY_ACCESS_CMD_ADD;
constexpr ky_access_cmd_t DELETE = KY_ACCESS_CMD_DELETE;

const Module module = {
    "ADVISER", "ky_adviser.cpp", Traces::both, {{"adviser_log_verbosity_level", Traces::entry}}};

/* What a callback does, given its rank in address order. */
std::function<ky_status_t(size_t, adviser_event_t, void*)> behaviour;

ky_status_t called(size_t who, adviser_event_t event, void* data)
{
    return behaviour(who, event, data);
}

adviser_cb_t callback(size_t who)
{
    return Callbacks<256, called>::at(who);
}

adviser_event_t event_of(uint32_t value)
{
    return static_cast<adviser_event_t>(value);
}

ky_status_t add(uint32_t event, size_t who)
{
    return adviser_register_event(ADD, event_of(event), callback(who));
}

ky_status_t remove(uint32_t event, size_t who)
{
    return adviser_register_event(DELETE, event_of(event), callback(who));
}

ky_status_t process(uint32_t event, void* data = nullptr)
{
    return adviser_process_event(event_of(event), data);
}

/* An adviser with callbacks 0 to 3 for events 1, 9 and 11, and a list of the calls: "3(11) " is
 * callback 3 for event 11. */
class AdviserTest : public ContractTest {
  protected:
    AdviserTest() : ContractTest(module) {}
    void SetUp() override
    {
        ContractTest::SetUp();
        open();
        behaviour = [this](size_t self, adviser_event_t event, void* data) {
            EXPECT_EQ(data, expected_data);
            return note(self, event);
        };
    }
    void TearDown() override
    {
        EXPECT_EQ(adviser_deinit(), KY_STATUS_SUCCESS);
        EXPECT_EQ(live_blocks(), 0);
    }
    static void open()
    {
        ASSERT_EQ(adviser_init(), KY_STATUS_SUCCESS);
        for (const uint32_t event : {1U, 9U, 11U}) {
            for (const size_t who : {2U, 0U, 3U, 1U}) {
                ASSERT_EQ(add(event, who), KY_STATUS_SUCCESS);
            }
        }
    }
    static void close()
    {
        ASSERT_EQ(adviser_deinit(), KY_STATUS_SUCCESS);
    }
    ky_status_t note(size_t self, adviser_event_t event)
    {
        const std::string call = std::to_string(self) + "(" + std::to_string(event) + ") ";
        calls += call;
        const auto answer = answers.find(call);
        return answer == answers.end() ? KY_STATUS_SUCCESS : answer->second;
    }
    std::string state() override // includes the callbacks that would be called
    {
        std::string state = ContractTest::state();
        answers.clear();
        calls.clear();
        for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
            EXPECT_EQ(process(event, expected_data), KY_STATUS_SUCCESS);
        }
        return state + std::exchange(calls, {});
    }
    std::string calls;
    std::map<std::string, ky_status_t> answers;
    void* expected_data = nullptr;
};

/* The records of the functions that the exported ones call. */
Log in_lookup(const Log& within = {})
{
    return traced("__adviser_event_map_get", within);
}

Log in_add(const Log& within)
{
    return traced("__adviser_add_event", within);
}

Log in_remove(const Log& within)
{
    return traced("__adviser_remove_event", within);
}

const Log pre_fail = traced("__is_event_pre_fail_event");
const Log no_fail_event = traced("__get_fail_event") +
                          error("SDK Internal error: failed to get fail event of pre event.\n");

TEST_F(AdviserTest, Commands)
{
    const adviser_cb_t a = callback(0);
    Out<uint32_t> level;
    const std::string place = "to pre fail event 'PRE-FAILED-PORT-DELETED-FROM-SWID'.\n";
    expect({
        {CALL(adviser_init()), .status = KY_STATUS_DB_ALREADY_INITIALIZED,
         .log = error("Can't Init adviser (Database Already Initialized).\n")},
        {CALL(adviser_init()), .log = notice("adviser Init Success.\n"), .before = close,
         .after =
             [] {
                 close();
                 open();
             }},
        {CALL(adviser_init()), .status = KY_STATUS_NO_MEMORY, .allocations = 0, .before = close,
         .after = open},
        {CALL(adviser_register_event(ADD, event_of(1), a)),
         .status = KY_STATUS_ENTRY_ALREADY_EXISTS,
         .log = in_add(
             pre_fail + in_lookup() +
             notice("Can't add advisor to 'PORT-ADDED' adviser (Entry Already Exists).\n"))},
        {CALL(adviser_register_event(ADD, event_of(12), nullptr)), .status = KY_STATUS_PARAM_NULL,
         .log = in_add(error("Register to event 'PRE-FAILED-PORT-DELETED-FROM-SWID' param NULL "
                             "given.\n"))},
        {CALL(adviser_register_event(ADD, event_of(60), nullptr)), .status = KY_STATUS_PARAM_NULL,
         .log = in_add(error("Register to event 'UNKNOWN' param NULL given.\n"))},
        {CALL(adviser_register_event(ADD, PRE_FAILED, a)), .status = KY_STATUS_PARAM_ERROR,
         .log = in_add(pre_fail + error("SDK flow error - should not register " + place))},
        {CALL(adviser_register_event(DELETE, event_of(3), a)), .status = KY_STATUS_ENTRY_NOT_FOUND,
         .log = in_remove(
             in_lookup() +
             error("Can't delete advisor from 'SWID-ADDED' adviser (Entry Not Found).\n"))},
        {CALL(adviser_register_event(DELETE, event_of(51), nullptr)),
         .status = KY_STATUS_ENTRY_NOT_FOUND,
         .log = in_remove(
             in_lookup() +
             error("Can't delete advisor from 'POST_ECMP_UPDATE' adviser (Entry Not Found).\n"))},
        {CALL(adviser_register_event(DELETE, PRE_FAILED, a)),
         .log = in_remove(
             in_lookup() + debug("Advisor deleted from "
                                 "'PRE-FAILED-PORT-DELETED-FROM-SWID' adviser.\n")),
         .after = [] { EXPECT_EQ(add(11, 0), KY_STATUS_SUCCESS); }},
        {CALL(adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &verbosity))},
    });
    for (const uintptr_t bit : {uintptr_t{1}, ~(UINTPTR_MAX >> 1)}) { // every address bit counts
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it is never called
        const auto other = reinterpret_cast<adviser_cb_t>(reinterpret_cast<uintptr_t>(a) ^ bit);
        EXPECT_EQ(adviser_register_event(DELETE, event_of(1), other), KY_STATUS_ENTRY_NOT_FOUND);
    }
    for (const ky_access_cmd_t cmd : commands()) {
        const std::string name = ky_access_cmd_str(cmd);
        if (cmd != ADD && cmd != DELETE) {
            expect(
                {CALL(adviser_register_event(cmd, event_of(0), nullptr)),
                 .status = KY_STATUS_CMD_UNSUPPORTED,
                 .log = error("Unsupported access-command (" + name + ")\n"), .before = close,
                 .after = open});
        }
        const bool gets = cmd == KY_ACCESS_CMD_GET;
        if (cmd != KY_ACCESS_CMD_SET) {
            expect(
                {CALL(adviser_log_verbosity_level(
                     cmd, gets ? static_cast<uint32_t*>(level) : nullptr)),
                 .status = gets ? KY_STATUS_SUCCESS : KY_STATUS_CMD_UNSUPPORTED,
                 .log = gets ? Log{} : error("Reached default access command : [" + name + "]"),
                 .writes = gets ? std::vector{level.is_written()} : std::vector<Written>{},
                 .after = [&] { EXPECT_TRUE(!gets || level.get() == verbosity); }});
        }
    }
}

TEST_F(AdviserTest, EventsAndTheirRange)
{
    for (const uint32_t event : boundary_values(1, ADVISER_EVENT_MAX)) {
        const bool is_event = event >= 1 && event <= ADVISER_EVENT_MAX;
        const char* const name = event == 1 ? "PORT-ADDED" : "POST_ECMP_UPDATE";
        const Log found =
            is_event
                ? in_lookup()
                : in_lookup(error(formatted("Unsupported event (%d).\n", static_cast<int>(event))));
        const auto done = [&](const char* verb) {
            return is_event ? debug(formatted("Advisor %s '%s' adviser.\n", verb, name)) : Log{};
        };
        const auto closed = [&](const char* verb) {
            const char* const why = "Database Wasn't Initialized";
            return is_event ? error(formatted("Can't %s event '%s' (%s).\n", verb, name, why))
                            : Log{};
        };
        const auto add_it = [&] { is_event ? add(event, 9) : KY_STATUS_SUCCESS; };
        const auto remove_it = [&] { is_event ? remove(event, 9) : KY_STATUS_SUCCESS; };
        const ky_status_t status = is_event ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_EXCEEDS_RANGE;
        const ky_status_t refused =
            is_event ? KY_STATUS_DB_NOT_INITIALIZED : KY_STATUS_PARAM_EXCEEDS_RANGE;
        expect({
            {CALL(adviser_register_event(ADD, event_of(event), callback(9))), .status = status,
             .log = in_add(pre_fail + found + done("added to")), .after = remove_it},
            {CALL(adviser_register_event(DELETE, event_of(event), callback(9))), .status = status,
             .log = in_remove(found + done("deleted from")), .before = add_it},
            {CALL(adviser_process_event(event_of(event), nullptr)), .status = status, .log = found},
            {CALL(adviser_register_event(ADD, event_of(event), callback(9))), .status = refused,
             .log = in_add(pre_fail + found + closed("register to")), .before = close,
             .after = open},
            {CALL(adviser_register_event(DELETE, event_of(event), callback(9))), .status = refused,
             .log = in_remove(found + closed("deregister from")), .before = close, .after = open},
            {CALL(adviser_process_event(event_of(event), nullptr)), .status = refused,
             .log = found + closed("process"), .before = close, .after = open},
        });
    }
    const std::string no_registry = "(Database Wasn't Initialized).\n";
    expect({
        {CALL(adviser_deinit()), .status = KY_STATUS_DB_NOT_INITIALIZED,
         .log = error("Can't De-Init adviser " + no_registry), .before = close, .after = open},
        {CALL(adviser_register_event(ADD, event_of(1), nullptr)), .status = KY_STATUS_PARAM_NULL,
         .log = in_add(error("Register to event 'PORT-ADDED' param NULL given.\n")),
         .before = close, .after = open},
        {CALL(adviser_register_event(ADD, PRE_FAILED, callback(0))),
         .status = KY_STATUS_PARAM_ERROR,
         .log = in_add(
             pre_fail + error("SDK flow error - should not register to pre fail event "
                              "'PRE-FAILED-PORT-DELETED-FROM-SWID'.\n")),
         .before = close, .after = open},
    });
}

TEST_F(AdviserTest, TwoHundredAndFiftyFiveRegistrationsAndNoMore)
{
    close();
    ASSERT_EQ(adviser_init(), KY_STATUS_SUCCESS);
    const Log full = in_add(
        pre_fail + in_lookup() + error("Can't allocate advisor at adviser (No More Resources).\n"));
    for (uint32_t i = 0; i < 255; i++) {
        if (i % 16 == 0 && i > 0) { // grows by 16, finally by 15
            expect(
                {CALL(adviser_register_event(ADD, event_of(1), callback(255))),
                 .status = KY_STATUS_NO_RESOURCES, .log = full, .allocations = 0});
        }
        ASSERT_EQ(add(i % 11 + 1, i), KY_STATUS_SUCCESS) << i;
        ASSERT_EQ(live_blocks(), i / 16 + 1) << i;
    }
    expect(
        {CALL(adviser_register_event(ADD, event_of(1), callback(255))),
         .status = KY_STATUS_NO_RESOURCES, .log = full});
    EXPECT_EQ(add(1, 0), KY_STATUS_ENTRY_ALREADY_EXISTS);
    calls.clear();
    answers = {
        {"252(11) ",
         KY_STATUS_ERROR}}; // the last one of 23: all are called, and all others rolled back
    EXPECT_EQ(process(11), KY_STATUS_ERROR);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), ' '), 23 + 22);
    EXPECT_EQ(remove(2, 1), KY_STATUS_SUCCESS);
    EXPECT_EQ(add(1, 255), KY_STATUS_SUCCESS);
}

TEST_F(AdviserTest, CallbacksRunInOrderUntilOneFails)
{
    const auto failed = [](const std::string& name) {
        return in_lookup() + error("Executing adviser for event " + name + " failed.\n") +
               traced("__is_event_pre_event");
    };
    const Log pre_failed = failed("PRE-PORT-DELETED-FROM-SWID") + traced("__get_fail_event");
    const Log rollbacks = error("Adviser fail in rollback event Entry Not Found.\n") +
                          error("Adviser fail in rollback event Unknown.\n");
    constexpr auto ODD = static_cast<ky_status_t>(0x80000000);
    // clang-format off
    const struct {
        uint32_t event;
        std::map<std::string, ky_status_t> answers;
        ky_status_t status;
        std::string calls;
        Log log;
    } rows[] = {
        {1, {}, KY_STATUS_SUCCESS, "0(1) 1(1) 2(1) 3(1) ", in_lookup()},
        {1, {{"1(1) ", ODD}}, ODD, "0(1) 1(1) ", failed("PORT-ADDED")},
        {2, {}, KY_STATUS_SUCCESS, "", in_lookup()},
        {9, {{"2(9) ", KY_STATUS_ACCEPTED}}, KY_STATUS_ACCEPTED, "0(9) 1(9) 2(9) ",
         failed("DEVICE-DELETED") + no_fail_event},
        {11, {{"2(11) ", KY_STATUS_ERROR}}, KY_STATUS_ERROR, "0(11) 1(11) 2(11) 0(12) 1(12) ",
         pre_failed},
        {11, {{"0(11) ", KY_STATUS_ERROR}}, KY_STATUS_ERROR, "0(11) ", pre_failed},
        {11,
         {{"2(11) ", KY_STATUS_PARAM_ERROR},
          {"0(12) ", KY_STATUS_ENTRY_NOT_FOUND},
          {"1(12) ", ODD}},
         KY_STATUS_PARAM_ERROR, "0(11) 1(11) 2(11) 0(12) 1(12) ", pre_failed + rollbacks},
        {12, {{"1(12) ", KY_STATUS_ERROR}}, KY_STATUS_ERROR, "0(12) 1(12) ",
         failed("PRE-FAILED-PORT-DELETED-FROM-SWID")},
    };
    // clang-format on
    for (const auto& row : rows) {
        expected_data = &answers;
        expect(
            {CALL(adviser_process_event(event_of(row.event), &answers)), .status = row.status,
             .log = row.log, .before = [&] { answers = row.answers; },
             .after = [&] { EXPECT_EQ(std::exchange(calls, {}), row.calls); }});
    }
}

TEST_F(AdviserTest, EveryEventHasItsNameItsMapAndItsClass)
{
    close();
    ASSERT_EQ(adviser_init(), KY_STATUS_SUCCESS);
    Log deleted;
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        if (event != 12) {
            ASSERT_EQ(add(event, 0), KY_STATUS_SUCCESS);
            ASSERT_EQ(add(event, 1), KY_STATUS_SUCCESS);
        }
        const std::string second = "1(" + std::to_string(event) + ") ";
        const std::string expected = "0(" + std::to_string(event) + ") " + second;
        answers[second] = KY_STATUS_ERROR;
        const std::string name = event_name(event);
        calls.clear();
        EXPECT_EQ(process(event), KY_STATUS_ERROR);
        EXPECT_EQ(calls, event == 11 ? expected + "0(12) " : expected);
        const Log failed = error("Executing adviser for event " + name + " failed.\n") +
                           (event == 9 ? no_fail_event : Log{});
        EXPECT_EQ(
            take_log(),
            filtered(traced("adviser_process_event", failed), module.name, module.source, 3, 0));
        deleted = deleted +
                  traced(
                      "__adviser_event_map_delete_all",
                      in_lookup() + debug("Advisors deleted from '" + name + "' adviser.\n")) +
                  Log{{KY_LOG_MASK_INFO, "", "Deleted '" + name + "' adviser Successfully.\n"}};
    }
    close();
    open();
    expect(
        {CALL(adviser_deinit()), .log = deleted + notice("adviser De-Init Success.\n"),
         .after = open});
}

/* A callback changes the registration of its neighbours while it runs, in a registry of five. */
TEST_F(AdviserTest, AdvisorsThatLeaveDuringAWalkAreNotCalled)
{
    using Action = std::function<void()>;
    const auto drop = [](size_t who) -> Action { return [who] { remove(PRE_DELETED, who); }; };
    const Action end = [] { adviser_deinit(); };
    bool is_within = false; // a walk within a walk
    const Action nest = [&] {
        const bool was_within = std::exchange(is_within, true);
        was_within ? KY_STATUS_PARAM_ERROR : process(PRE_DELETED);
        drop(was_within ? 2 : 3)();
    };
    const std::string all = "0(11) 1(11) 2(11) 3(11) ";
    // clang-format off
    const struct {
        const char* label;
        size_t actor;
        adviser_event_t during;
        Action action;
        std::string calls;
    } cases[] = {
        {"itself", 1, PRE_DELETED, drop(1), all + "0(12) 2(12) "},
        {"the next one", 1, PRE_DELETED, drop(2), "0(11) 1(11) 3(11) 0(12) 1(12) "},
        {"the next two", 0, PRE_DELETED, [&] { drop(1)(); drop(2)(); }, "0(11) 3(11) 0(12) "},
        {"the one before", 2, PRE_DELETED, drop(1), all + "0(12) 2(12) "},
        {"the failing one, itself", 3, PRE_DELETED, drop(3), all + "0(12) 1(12) 2(12) 4(12) "},
        {"the failing one, whose record another takes", 3, PRE_DELETED,
         [&] { drop(3)(); EXPECT_EQ(add(PRE_DELETED, 9), KY_STATUS_SUCCESS); },
         all + "0(12) 1(12) 2(12) 4(12) 9(12) "},
        {"the failing one, in the rollback", 1, PRE_FAILED, drop(3),
         all + "0(12) 1(12) 2(12) 4(12) "},
        {"the next one, in the rollback", 0, PRE_FAILED, drop(1), all + "0(12) 2(12) "},
        {"the next one, whose record another event takes", 1, PRE_DELETED,
         [&] { drop(2)(); EXPECT_EQ(add(1, 9), KY_STATUS_SUCCESS); },
         "0(11) 1(11) 3(11) 0(12) 1(12) "},
        {"the next one, within a walk and behind it", 1, PRE_DELETED, nest,
         "0(11) 0(11) 1(11) 3(11) 0(12) 1(12) 1(11) 4(11) "},
        {"all", 1, PRE_DELETED, end, "0(11) 1(11) "},
        {"all, in the rollback", 1, PRE_FAILED, end, all + "0(12) 1(12) "},
        {"all, and others come", 1, PRE_DELETED,
         [&] { end(); adviser_init(); add(PRE_DELETED, 7); }, "0(11) 1(11) "},
    };
    // clang-format on
    answers["3(11) "] = KY_STATUS_ERROR;
    for (const auto& row : cases) {
        SCOPED_TRACE(row.label);
        adviser_deinit();
        ASSERT_EQ(adviser_init(), KY_STATUS_SUCCESS);
        for (size_t i = 0; i < 5; i++) {
            ASSERT_EQ(add(PRE_DELETED, i), KY_STATUS_SUCCESS);
        }
        calls.clear();
        behaviour = [&](size_t self, adviser_event_t event, void*) {
            if (self == row.actor && event == row.during) {
                row.action();
            }
            return note(self, event);
        };
        EXPECT_EQ(
            process(PRE_DELETED),
            row.calls.ends_with("(12) ") ? KY_STATUS_ERROR : KY_STATUS_SUCCESS);
        EXPECT_EQ(calls, row.calls);
    }
}

} // namespace
