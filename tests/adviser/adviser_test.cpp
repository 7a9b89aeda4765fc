// The adviser: its registry, its walks, and callbacks that change the registry under them.
#include "allocation.h"
#include "recorder.h"

#include <ky_adviser.h>
#include <ky_names.h>

#include <algorithm>
#include <array>
#include <map>

namespace {

constexpr Module adviser = {"ADVISER", "ky_adviser.cpp"};
constexpr adviser_event_t PRE_DELETED = ADVISER_EVENT_PRE_PORT_DELETED_FROM_SWID;       // 11
constexpr adviser_event_t PRE_FAILED = ADVISER_EVENT_PRE_FAILED_PORT_DELETED_FROM_SWID; // 12
constexpr uint32_t BEYOND = ADVISER_EVENT_MAX + 1;
constexpr ky_access_cmd_t ADD = KY_ACCESS_CMD_ADD;
constexpr ky_access_cmd_t DELETE = KY_ACCESS_CMD_DELETE;
const std::string lookup = "__adviser_event_map_get";
constexpr ky_status_t CLOSED = KY_STATUS_DB_NOT_INITIALIZED;

/* What a callback does, told which one it is in the order of addresses. */
std::function<ky_status_t(size_t, adviser_event_t, void*)> behaviour;

size_t place_of(adviser_cb_t self);

template <size_t I> ky_status_t callback(adviser_event_t event, void* data)
{
    return behaviour(place_of(callback<I>), event, data);
}

template <size_t... I>
std::array<adviser_cb_t, sizeof...(I)> sorted_callbacks(std::index_sequence<I...>)
{
    std::array<adviser_cb_t, sizeof...(I)> all = {callback<I>...};
    std::sort(all.begin(), all.end(), std::less<>());
    return all;
}

const auto callbacks = sorted_callbacks(std::make_index_sequence<256>());

size_t place_of(adviser_cb_t self)
{
    const auto found = std::lower_bound(callbacks.begin(), callbacks.end(), self, std::less<>());
    return static_cast<size_t>(found - callbacks.begin());
}

adviser_event_t event_of(uint32_t value)
{
    return static_cast<adviser_event_t>(value);
}

ky_status_t add(uint32_t event, size_t who)
{
    return adviser_register_event(ADD, event_of(event), callbacks[who]);
}

ky_status_t remove(uint32_t event, size_t who)
{
    return adviser_register_event(DELETE, event_of(event), callbacks[who]);
}

ky_status_t process(uint32_t event, void* data = nullptr)
{
    return adviser_process_event(event_of(event), data);
}

void set_verbosity(uint32_t level)
{
    EXPECT_EQ(adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level), GOOD);
}

/* A call that fails changes nothing, so it is made in silence first. Traces are asked for, yet none
 * is written below debug level. */
void expect_failure(const char* label, const Call& call, ky_status_t status, const Records& records)
{
    KY_STORE(g_ky_log_module_func_enable, 1);
    for (const uint32_t verbosity : {0U, KY_LOG_LEVEL_DEFAULT}) {
        set_verbosity(verbosity);
        EXPECT_OUTCOME(call(), status, verbosity == 0 ? Records{} : records) << label;
    }
    KY_STORE(g_ky_log_module_func_enable, 0);
}

/* An initialised adviser, and a list of who was called for what: "3(11) ". */
class AdviserTest : public RecordedTest {
  protected:
    void SetUp() override
    {
        RecordedTest::SetUp();
        EXPECT_OUTCOME(
            adviser_init(), GOOD, adviser.said(7, "adviser_init", "adviser Init Success.\n"));
        behaviour = [this](size_t self, adviser_event_t event, void* data) {
            EXPECT_EQ(data, expected_data);
            return note(self, event);
        };
    }
    void TearDown() override
    {
        take_records();
        KY_STORE(g_ky_log_module_func_enable, 1); // no trace at this verbosity
        EXPECT_OUTCOME(
            adviser_deinit(), GOOD,
            adviser.said(7, "adviser_deinit", "adviser De-Init Success.\n"));
        EXPECT_EQ(live_blocks(), 0);
        RecordedTest::TearDown();
    }
    ky_status_t note(size_t self, adviser_event_t event)
    {
        const std::string call = std::to_string(self) + "(" + std::to_string(event) + ") ";
        calls += call;
        const auto answer = answers.find(call);
        return answer == answers.end() ? GOOD : answer->second;
    }
    std::string calls;
    std::map<std::string, ky_status_t> answers;
    void* expected_data = nullptr;
};

TEST_F(AdviserTest, RegistrationStatusesAndMessages)
{
    const std::string adding = "__adviser_add_event";
    const std::string removing = "__adviser_remove_event";
    const std::string calling = "adviser_register_event";
    const adviser_cb_t a = callbacks[0];
    ASSERT_EQ(add(1, 0), GOOD);
    ASSERT_EQ(add(11, 0), GOOD);
    // clang-format off
    const struct {
        ky_access_cmd_t cmd;
        uint32_t event;
        adviser_cb_t callback;
        ky_status_t status;
        uint32_t mask;
        std::string function;
        std::string text;
    } cases[] = {
        {ADD, 1, a, PRESENT, 7, adding,
         "Can't add advisor to 'PORT-ADDED' adviser (Entry Already Exists).\n"},
        {ADD, 2, a, GOOD, 0, "", ""},
        {ADD, 0, nullptr, NIL, 1, adding, "Register to event 'NONE' param NULL given.\n"},
        {ADD, 12, nullptr, NIL, 1, adding,
         "Register to event 'PRE-FAILED-PORT-DELETED-FROM-SWID' param NULL given.\n"},
        {ADD, 60, nullptr, NIL, 1, adding, "Register to event 'UNKNOWN' param NULL given.\n"},
        {ADD, 12, a, BAD, 1, adding, "SDK flow error - should not register to pre fail event "
         "'PRE-FAILED-PORT-DELETED-FROM-SWID'.\n"},
        {ADD, 0, a, RANGE, 1, lookup, "Unsupported event (0).\n"},
        {ADD, BEYOND, a, RANGE, 1, lookup, "Unsupported event (" + std::to_string(BEYOND) + ").\n"},
        {DELETE, ~0U, a, RANGE, 1, lookup, "Unsupported event (-1).\n"},
        {DELETE, 3, a, MISSING, 1, removing,
         "Can't delete advisor from 'SWID-ADDED' adviser (Entry Not Found).\n"},
        {DELETE, ADVISER_EVENT_MAX, nullptr, MISSING, 1, removing,
         "Can't delete advisor from 'POST_ECMP_UPDATE' adviser (Entry Not Found).\n"},
        {DELETE, 12, a, GOOD, 0, "", ""},
        {DELETE, 11, a, MISSING, 1, removing,
         "Can't delete advisor from 'PRE-PORT-DELETED-FROM-SWID' adviser (Entry Not Found).\n"},
        {KY_ACCESS_CMD_REGISTER, 1, a, KY_STATUS_CMD_UNSUPPORTED, 1, calling,
         "Unsupported access-command (REGISTER)\n"},
    };
    // clang-format on
    for (const auto& [cmd, event, callback, status, mask, function, text] : cases) {
        SCOPED_TRACE(std::string(ky_access_cmd_str(cmd)) + " " + std::to_string(event));
        if (status == GOOD) {
            EXPECT_OUTCOME(adviser_register_event(cmd, event_of(event), callback), GOOD, {});
            continue;
        }
        const auto call = [c = cmd, e = event_of(event), cb = callback] {
            return adviser_register_event(c, e, cb);
        };
        expect_failure(text.c_str(), call, status, adviser.said(mask, function, text));
    }
    expect_failure(
        CALL(adviser_init()), KY_STATUS_DB_ALREADY_INITIALIZED,
        adviser.said(1, "adviser_init", "Can't Init adviser (Database Already Initialized).\n"));
    expect_failure(
        CALL(adviser_log_verbosity_level(DELETE, nullptr)), KY_STATUS_CMD_UNSUPPORTED,
        adviser.said(
            1, "adviser_log_verbosity_level", "Reached default access command : [DELETE]"));
}

TEST_F(AdviserTest, TwoHundredAndFiftyFiveRegistrationsAndNoMore)
{
    for (uint32_t i = 0; i < 255; i++) {
        ASSERT_EQ(add(i % 11 + 1, i), GOOD) << i;
        ASSERT_EQ(live_blocks(), i / 16 + 1) << i; // steps of 16, the last one of 15
    }
    const std::string text = "Can't allocate advisor at adviser (No More Resources).\n";
    expect_failure(
        CALL(add(1, 255)), KY_STATUS_NO_RESOURCES, adviser.said(1, "__adviser_add_event", text));
    EXPECT_EQ(remove(2, 1), GOOD);
    EXPECT_EQ(add(1, 255), GOOD);
}

TEST_F(AdviserTest, EveryAllocationMayFail)
{
    long point = -1; // the first allocation, then the second, until the run needs no more
    for (bool has_failed = true; has_failed;) {
        SCOPED_TRACE(++point);
        ASSERT_EQ(adviser_deinit(), GOOD);
        ASSERT_EQ(live_blocks(), 0);
        take_records();
        fail_allocations_after(point);
        has_failed = point == 0;
        if (has_failed) {
            EXPECT_OUTCOME(adviser_init(), KY_STATUS_NO_MEMORY, {});
            EXPECT_EQ(process(1), CLOSED);
            fail_allocations_after(-1);
        }
        ASSERT_EQ(adviser_init(), GOOD);
        for (uint32_t who = 0; who < 255; who++) {
            if (add(1, who) != GOOD) {
                has_failed = true;
                calls.clear();
                EXPECT_EQ(process(1), GOOD);
                EXPECT_EQ(std::count(calls.begin(), calls.end(), '('), who);
                fail_allocations_after(-1);
                ASSERT_EQ(add(1, who), GOOD);
            }
        }
        fail_allocations_after(-1);
    }
    EXPECT_EQ(point, 16); // one at creation, and one for each step of growth
}

TEST_F(AdviserTest, CallbacksRunInOrderUntilOneFails)
{
    for (const uint32_t event : {1U, 9U, 11U}) {
        for (const size_t i : {2U, 0U, 3U, 1U}) {
            ASSERT_EQ(add(event, i), GOOD);
        }
    }
    const auto said = [](const std::string& text) {
        return adviser.said(1, "adviser_process_event", text);
    };
    const auto failed = [said](const std::string& name) {
        return said("Executing adviser for event " + name + " failed.\n");
    };
    const Records pre_failed = failed("PRE-PORT-DELETED-FROM-SWID");
    const Records no_fail_event =
        said("SDK Internal error: failed to get fail event of pre event.\n");
    const Records rollbacks = said("Adviser fail in rollback event Entry Not Found.\n") +
                              said("Adviser fail in rollback event Unknown.\n");
    constexpr ky_status_t ERROR = KY_STATUS_ERROR;
    constexpr auto ODD = static_cast<ky_status_t>(4711);
    // clang-format off
    const struct {
        uint32_t event;
        std::map<std::string, ky_status_t> answers;
        ky_status_t status;
        std::string calls;
        Records records;
    } cases[] = {
        {1, {}, GOOD, "0(1) 1(1) 2(1) 3(1) ", {}},
        {1, {{"1(1) ", ODD}}, ODD, "0(1) 1(1) ", failed("PORT-ADDED")},
        {2, {}, GOOD, "", {}},
        {9, {{"2(9) ", ERROR}}, ERROR, "0(9) 1(9) 2(9) ", failed("DEVICE-DELETED") + no_fail_event},
        {11, {{"2(11) ", ERROR}}, ERROR, "0(11) 1(11) 2(11) 0(12) 1(12) ", pre_failed},
        {11, {{"0(11) ", ERROR}}, ERROR, "0(11) ", pre_failed},
        {11, {{"2(11) ", BAD}, {"0(12) ", MISSING}, {"1(12) ", ODD}}, BAD,
         "0(11) 1(11) 2(11) 0(12) 1(12) ", pre_failed + rollbacks},
        {12, {{"1(12) ", ERROR}}, ERROR, "0(12) 1(12) ",
         failed("PRE-FAILED-PORT-DELETED-FROM-SWID")},
        {0, {}, RANGE, "", adviser.said(1, lookup, "Unsupported event (0).\n")},
        {BEYOND, {}, RANGE, "",
         adviser.said(1, lookup, "Unsupported event (" + std::to_string(BEYOND) + ").\n")},
    };
    // clang-format on
    for (void* data : {static_cast<void*>(this), static_cast<void*>(nullptr)}) {
        expected_data = data;
        KY_STORE(g_ky_log_module_func_enable, data == nullptr ? 0 : 1); // no trace in either case
        for (const auto& [event, given, status, expected, records] : cases) {
            SCOPED_TRACE("event " + std::to_string(event));
            answers = given;
            calls.clear();
            EXPECT_OUTCOME(process(event, data), status, records);
            EXPECT_EQ(calls, expected);
        }
    }
}

TEST_F(AdviserTest, EveryFunctionTraces)
{
    const std::string calling = "adviser_register_event";
    const std::string processing = "adviser_process_event";
    const std::string level_of = "adviser_log_verbosity_level";
    const Records looked_up = adviser.around(lookup);
    const Records added = adviser.said(
        31, "__adviser_add_event", "Advisor added to 'PRE-PORT-DELETED-FROM-SWID' adviser.\n");
    const Records failed = adviser.said(
        1, processing, "Executing adviser for event PRE-PORT-DELETED-FROM-SWID failed.\n");
    const Records removed = adviser.said(
        31, "__adviser_remove_event",
        "Advisor deleted from 'PRE-FAILED-PORT-DELETED-FROM-SWID' adviser.\n");
    const Records again =
        adviser.said(1, "adviser_init", "Can't Init adviser (Database Already Initialized).\n");
    const Records unsupported =
        adviser.said(1, level_of, "Reached default access command : [DELETE]");
    const auto around = [](const std::string& function, const Records& within = {}) {
        return adviser.around(function, within);
    };
    set_verbosity(5);
    KY_STORE(g_ky_log_module_func_enable, 1);

    // clang-format off
    EXPECT_OUTCOME(add(11, 0), GOOD, around(calling, around("__adviser_add_event",
        around("__is_event_pre_fail_event") + looked_up + added)));
    answers["0(11) "] = KY_STATUS_ERROR;
    EXPECT_OUTCOME(process(11), KY_STATUS_ERROR, around(processing,
        looked_up + failed + around("__is_event_pre_event") + around("__get_fail_event")));
    EXPECT_OUTCOME(remove(12, 0), GOOD,
        around(calling, around("__adviser_remove_event", looked_up + removed)));
    EXPECT_OUTCOME(adviser_init(), KY_STATUS_DB_ALREADY_INITIALIZED, around("adviser_init", again));
    uint32_t level = 9;
    EXPECT_OUTCOME(adviser_log_verbosity_level(KY_ACCESS_CMD_GET, &level), GOOD,
        adviser.entered(level_of));
    EXPECT_EQ(level, 5U);
    EXPECT_OUTCOME(adviser_log_verbosity_level(DELETE, &level), KY_STATUS_CMD_UNSUPPORTED,
        adviser.entered(level_of) + unsupported);
    // clang-format on

    EXPECT_EQ(adviser_deinit(), GOOD);
    const Records all = take_records();
    // Traces; six for each event; the notice.
    EXPECT_EQ(all.size(), 2U * (2 + ADVISER_EVENT_MAX * 6 + 1));
    const std::string deleted =
        "log 15 ADVISER: Deleted 'PRE-FAILED-PORT-DELETED-FROM-SWID' adviser Successfully.\n";
    EXPECT_EQ(std::count(all.begin(), all.end(), deleted), 1);
    EXPECT_EQ(adviser_init(), GOOD);
    KY_STORE(g_ky_log_module_func_enable, 0);
    set_verbosity(KY_LOG_LEVEL_DEFAULT);
}

TEST_F(AdviserTest, EveryEventHasItsNameItsMapAndItsClass)
{
    Fingerprint fingerprint; // of what is said of every event, when it fails and at the end
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        if (event != 12) {
            ASSERT_EQ(add(event, 0), GOOD);
            ASSERT_EQ(add(event, 1), GOOD);
        }
        const std::string second = "1(" + std::to_string(event) + ") ";
        const std::string expected = "0(" + std::to_string(event) + ") " + second;
        answers[second] = KY_STATUS_ERROR;
        calls.clear();
        EXPECT_EQ(process(event), KY_STATUS_ERROR);
        EXPECT_EQ(calls, event == 11 ? expected + "0(12) " : expected);
    }
    set_verbosity(5);
    EXPECT_EQ(adviser_deinit(), GOOD);
    for (const std::string& record : take_records()) {
        fingerprint.add(record.c_str());
    }
    EXPECT_EQ(fingerprint.value(), 0x2ee8ca525507510e);
    set_verbosity(KY_LOG_LEVEL_DEFAULT);
    EXPECT_EQ(adviser_init(), GOOD);
}

TEST_F(AdviserTest, WithoutARegistryCallsAreRefusedAfterTheirOtherChecks)
{
    ASSERT_EQ(adviser_deinit(), GOOD);
    take_records();
    const auto refused = [](const std::string& function, const std::string& text) {
        return adviser.said(1, function, "Can't " + text + " (Database Wasn't Initialized).\n");
    };
    // clang-format off
    expect_failure(CALL(adviser_deinit()), CLOSED, refused("adviser_deinit", "De-Init adviser"));
    expect_failure(CALL(add(1, 0)), CLOSED,
        refused("__adviser_add_event", "register to event 'PORT-ADDED'"));
    expect_failure(CALL(remove(1, 0)), CLOSED,
        refused("__adviser_remove_event", "deregister from event 'PORT-ADDED'"));
    expect_failure(CALL(process(1)), CLOSED,
        refused("adviser_process_event", "process event 'PORT-ADDED'"));
    // clang-format on
    EXPECT_EQ(adviser_register_event(ADD, event_of(1), nullptr), NIL);
    EXPECT_EQ(add(12, 0), BAD);
    EXPECT_EQ(add(BEYOND, 0), RANGE);
    EXPECT_EQ(remove(0, 0), RANGE);
    EXPECT_EQ(process(BEYOND), RANGE);
    EXPECT_EQ(adviser_init(), GOOD);
    EXPECT_EQ(process(1), GOOD);
    EXPECT_EQ(calls, "");
}

/* What a callback does to its neighbours while it runs, in a registry of five. */
TEST_F(AdviserTest, AdvisorsThatLeaveDuringAWalkAreNotCalled)
{
    using Action = std::function<void()>;
    const auto drop = [](size_t who) -> Action { return [who] { remove(PRE_DELETED, who); }; };
    const Action end = [] { adviser_deinit(); };
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
        {"the failing one, in the rollback", 1, PRE_FAILED, drop(3),
         all + "0(12) 1(12) 2(12) 4(12) "},
        {"the next one, in the rollback", 0, PRE_FAILED, drop(1), all + "0(12) 2(12) "},
        {"the next one, whose record another event takes", 1, PRE_DELETED,
         [&] { drop(2)(); add(1, 9); }, "0(11) 1(11) 3(11) 0(12) 1(12) "},
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
        ASSERT_EQ(adviser_init(), GOOD);
        for (size_t i = 0; i < 5; i++) {
            ASSERT_EQ(add(PRE_DELETED, i), GOOD);
        }
        calls.clear();
        behaviour = [&](size_t self, adviser_event_t event, void*) {
            if (self == row.actor && event == row.during) {
                row.action();
            }
            return note(self, event);
        };
        process(PRE_DELETED);
        EXPECT_EQ(calls, row.calls);
    }
}

} // namespace
