#include "contract.h"

#include "allocation.h"

#include <ky_adviser.h>
#include <ky_utils.h>

#include <algorithm>
#include <fstream>

namespace {

/* Functions that a row has called, and exports that are no functions. */
std::set<std::string> have_rows = {"utils_mem_type_count_lock", "port_type_validation_table"};

/* Checks at the end, unless tests were selected, that a row has called every export. */
class EveryFunctionHasARow : public testing::Environment {
    void TearDown() override
    {
        std::ifstream map(SOURCE "/abi/kriolilglu.map");
        EXPECT_TRUE(map.is_open());
        for (std::string line; GTEST_FLAG_GET(filter) == "*" && std::getline(map, line);) {
            if (line.starts_with("    ") && line.ends_with(";") && line != "    *;") {
                const std::string name = line.substr(4, line.size() - 5);
                EXPECT_EQ(have_rows.count(name), 1U) << "no row calls the exported " << name;
            }
        }
    }
};

const auto* const at_end = testing::AddGlobalTestEnvironment(new EveryFunctionHasARow);

// ---- Out parameters ----

constexpr char GARBAGE = '\xA5';

} // namespace

AnyOut::AnyOut(size_t size) : bytes_(GUARD + size + GUARD)
{
    all.push_back(this);
}

AnyOut::~AnyOut()
{
    std::erase(all, this);
}

void AnyOut::fill()
{
    std::fill(bytes_.begin(), bytes_.end(), GARBAGE);
}

void AnyOut::check(const std::vector<Written>& writes) const
{
    const std::string found(bytes_.begin(), bytes_.end());
    std::string expected(found.size(), GARBAGE);
    const size_t size = found.size() - 2 * GUARD;
    for (const auto& [out, bytes] : writes) {
        if (out == this) {
            EXPECT_NE(found, expected) << "an out parameter is not written";
            expected.replace(GUARD, size, bytes.empty() ? found.substr(GUARD, size) : bytes);
        }
    }
    EXPECT_EQ(found, expected) << "an out parameter or its guard bytes";
}

// ---- The rows ----

void has_a_row(const std::string& function)
{
    have_rows.insert(function);
}

std::set<uint32_t> boundary_values(uint32_t min, uint32_t max)
{
    return {0,          min - 1,   min, max, max + 1, 0x100 + min, 0x10000 + min, 0x80000000 + min,
            0x80000000, 0xFFFFFFFF};
}

std::vector<ky_access_cmd_t> commands()
{
    std::vector<ky_access_cmd_t> all;
    for (uint32_t cmd = 0; cmd <= 40; cmd++) {
        all.push_back(static_cast<ky_access_cmd_t>(cmd));
        all.push_back(static_cast<ky_access_cmd_t>(cmd + 0x10000)); // wraps in 8 and 16 bits
    }
    all.push_back(static_cast<ky_access_cmd_t>(~0U));
    return all;
}

std::string event_name(uint32_t event)
{
    set_verbosity_and_flag(KY_LOG_LEVEL_DEFAULT, 0);
    adviser_register_event(KY_ACCESS_CMD_ADD, static_cast<adviser_event_t>(event), nullptr);
    const std::string text = take_log().back().text; // "Register to event 'NAME' param NULL given."
    return text.substr(text.find('\'') + 1, text.rfind('\'') - text.find('\'') - 1);
}

void ContractTest::SetUp()
{
    set_verbosity_and_flag(KY_LOG_LEVEL_DEFAULT, 0);
    utils_use_xm_set(0);
    utils_boot_mode_set(0);
    take_log();
}

std::string ContractTest::state()
{
    uint32_t boot_mode = 0;
    uint32_t use_xm = 0;
    take_log();
    utils_boot_mode_get(&boot_mode);
    utils_use_xm_get(&use_xm);
    utils_memory_dbg_dump(nullptr);
    std::string state =
        formatted("boot mode %u, use XM %u, blocks %ld\n", boot_mode, use_xm, live_blocks());
    for (const LogRecord& line : take_log()) {
        state += line.text.ends_with(" 0") ? "" : line.text + "\n";
    }
    return state;
}

void ContractTest::expect(const Row& row)
{
    const std::string function = row.label.substr(0, row.label.find('('));
    const auto other = module_.others.find(function);
    const Traces traces = other != module_.others.end() ? other->second : module_.traces;
    has_a_row(function);

    Log log = traced(function, row.log);
    if (traces != Traces::both && traces != Traces::entry) {
        log.erase(log.begin());
    }
    if (traces != Traces::both && traces != Traces::exit) {
        log.pop_back();
    }
    if (traces == Traces::of_failure && row.status != KY_STATUS_SUCCESS) {
        log = log + failure_trace(function);
    }
    const bool is_failure = std::ranges::any_of(
        log, [](const LogRecord& record) { return record.text.starts_with("fails in "); });
    const std::string state_before = state();
    for (const uint32_t level : {0U, 1U, 3U, 5U, 0x80000000U}) {
        for (const int32_t flag : {0, INT32_MIN}) {
            SCOPED_TRACE(formatted("%s at verbosity %u, flag %d", row.label.c_str(), level, flag));
            if (row.before) {
                row.before();
            }
            for (AnyOut* out : AnyOut::all) {
                out->fill();
            }
            verbosity = level;
            set_verbosity_and_flag(level, flag);
            fail_allocations_after(row.allocations);
            take_log();
            marks_exit = true;
            EXPECT_EQ(row.call(), row.status | (is_failure ? THROUGH_EXIT : 0));
            marks_exit = false;
            const Log found = take_log();
            fail_allocations_after(-1);
            EXPECT_EQ(locks_held(), 0);
            EXPECT_EQ(KY_LOAD(g_ky_log_module_func_enable), flag);
            EXPECT_EQ(found, filtered(log, module_.name, module_.source, level, flag));
            for (const AnyOut* out : AnyOut::all) {
                out->check(row.writes);
            }
            uint32_t kept = 0;
            KY_STORE(g_ky_log_module_func_enable, 0);
            adviser_log_verbosity_level(KY_ACCESS_CMD_GET, &kept);
            EXPECT_TRUE(kept == level && verbosity == level); // arguments are never changed
            set_verbosity_and_flag(0, 0);
            if (row.after) {
                row.after();
            }
        }
    }
    EXPECT_EQ(state(), state_before) << row.label;
}

void ContractTest::expect(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        expect(row);
    }
}
