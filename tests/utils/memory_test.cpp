// Memory accounting.
#include "allocation.h"
#include "recorder.h"
#include "tools.h"

#include <ky_utils.h>

#include <cstring>

namespace {

class MemoryTest : public RecordedTest {};

constexpr Module utils = {"UTILS", "utils.cpp"};

const char* const type_names[] = {
    "ALL",    "COS",      "TOPO", "PORT",    "MSTP",           "FDB",          "VLAN", "LAG",
    "ROUTER", "ACL",      "SPAN", "POLICER", "HOST-INTERFACE", "FLOW-COUNTER", "KVDL", "API",
    "TUNNEL", "TELEMETRY"};

using Held = uint64_t[18]; // in bytes, by type

Records report(const Held& held, uint32_t first, uint32_t last)
{
    const char* function = "utils_memory_print_summary";
    Records records = utils.said(31, function, "====== MEMORY REPORT ======\n");
    for (uint32_t type = first; type <= last; type++) {
        const std::string bytes = std::to_string(held[type]);
        const std::string text = "Allocated " + bytes + " bytes for memory type ";
        records = records + utils.said(31, function, text + type_names[type] + "\n");
    }
    return records;
}

/* What the library says that each type holds. */
void expect_held(const Held& held)
{
    utils_log_verbosity_level_set(5);
    take_records();
    EXPECT_OUTCOME(utils_memory_print_summary(0), GOOD, report(held, 1, 17));
    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
}

TEST_F(MemoryTest, BlocksAreCountedAndSaidAtDebugLevel)
{
    void* block = nullptr;
    void* empty = nullptr;
    const auto said = [](const std::string& function, const std::string& verb, int held) {
        const std::string text = verb +
                                 " 100 bytes for memory type PORT; Total memory for this "
                                 "type = " +
                                 std::to_string(held) + ";\n";
        return utils.said(31, function, text);
    };
    utils_log_verbosity_level_set(5);
    EXPECT_OUTCOME(
        utils_memory_get(&block, 100, 3), GOOD, said("utils_memory_get", "Allocated", 100));
    memset(block, 0xa5, 100);
    EXPECT_EQ(utils_memory_get(&empty, 0, 17), GOOD);
    EXPECT_NE(empty, nullptr);
    EXPECT_EQ(live_blocks(), 2);
    take_records();
    EXPECT_OUTCOME(utils_memory_print_summary(3), GOOD, report({0, 0, 0, 100}, 3, 3));
    EXPECT_OUTCOME(utils_memory_put(block, 3), GOOD, said("utils_memory_put", "Freed", 0));
    EXPECT_EQ(utils_memory_put(empty, 17), GOOD);
    EXPECT_EQ(live_blocks(), 0);

    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
    take_records();
    EXPECT_EQ(utils_clr_memory_get(&block, 1000, 3, 1), GOOD);
    const std::string zeros(3000, '\0');
    EXPECT_EQ(memcmp(block, zeros.data(), zeros.size()), 0);
    EXPECT_EQ(utils_memory_put(block, 1), GOOD);
    EXPECT_OUTCOME(utils_memory_print_summary(0), GOOD, {});
}

TEST_F(MemoryTest, FailuresChangeNothingAndLeaveThroughTheExitRecord)
{
    void* block = nullptr;
    ASSERT_EQ(utils_memory_get(&block, 10, 1), GOOD);
    void* out = nullptr;
    void* const kept = &block;
    const auto left = [](const std::string& function) {
        return utils.said(31, "utils_ky_log_exit", function + " - left\n");
    };
    const Records get = left("utils_memory_get");
    const Records clr = left("utils_clr_memory_get");
    const Records put = left("utils_memory_put");
    const Records null = utils.said(1, "utils_check_pointer", "NULL Pointer (Buffer pointer)\n") +
                         left("utils_check_pointer");
    const std::string summary = "utils_memory_print_summary";
    const Records unreported =
        utils.said(31, summary, "====== MEMORY REPORT ======\n") + left(summary);
    const auto too_large = [&clr](const std::string& what) {
        const std::string text = "Memory of " + what + " exceeds range\n";
        return utils.said(1, "utils_clr_memory_get", text) + clr;
    };
    const Records wrong_type =
        utils.said(1, "utils_memory_put", "Block size exceeds total size for memory type TOPO\n");
    constexpr ky_status_t FULL = KY_STATUS_NO_MEMORY;
    // clang-format off
    const struct {
        const char* label;
        Call call;
        ky_status_t status;
        Records records;
        void* out;
    } cases[] = {
        {CALL(utils_memory_get(&out, 1, 0)), RANGE, get, kept},
        {CALL(utils_memory_get(nullptr, 1, 18)), RANGE, get, kept},
        {CALL(utils_memory_get(nullptr, 1, 1)), NIL, null + get, kept},
        {CALL(utils_memory_get(&out, ~0U, 1)), FULL, get, nullptr},
        {CALL(utils_clr_memory_get(&out, 1, 1, 18)), RANGE, get + clr, kept},
        {CALL(utils_clr_memory_get(&out, 2147483648, 2, 1)), RANGE,
         too_large("2147483648 elements of 2 bytes"), kept},
        {CALL(utils_clr_memory_get(&out, 2, ~0U, 1)), RANGE,
         too_large("2 elements of 4294967295 bytes"), kept},
        {CALL(utils_clr_memory_get(&out, 65536, 65536, 0)), RANGE, get + clr, kept},
        {CALL(utils_clr_memory_get(nullptr, 65536, 65536, 1)), NIL, null + get + clr, kept},
        {CALL(utils_clr_memory_get(&out, 65535, 65537, 1)), FULL, get + clr, nullptr},
        {CALL(utils_memory_put(block, 0)), RANGE, put, kept},
        {CALL(utils_memory_put(nullptr, 18)), RANGE, put, kept},
        {CALL(utils_memory_put(nullptr, 1)), NIL, null + put, kept},
        {CALL(utils_memory_put(block, 2)), KY_STATUS_MEMORY_ERROR, wrong_type + put, kept},
        {CALL(utils_memory_print_summary(18)), RANGE, unreported, kept},
    };
    // clang-format on
    fail_allocations_after(0);
    for (const auto& [label, call, status, records, expected_out] : cases) {
        for (const uint32_t verbosity : {0U, 5U}) {
            SCOPED_TRACE(testing::Message() << label << " at " << verbosity);
            out = kept;
            utils_log_verbosity_level_set(verbosity);
            KY_STORE(g_ky_log_module_func_enable, 1);
            EXPECT_OUTCOME(call(), status, verbosity == 0 ? Records{} : records);
            EXPECT_EQ(out, expected_out);
            KY_STORE(g_ky_log_module_func_enable, 0);
            expect_held({0, 10});
        }
    }
    EXPECT_EQ(utils_memory_get(&out, ~0U, 1), FULL);
    EXPECT_EQ(last_request() == 0x100000003, sizeof(size_t) > 4); // size and header
    EXPECT_NE(last_request(), 3U);                                // wrapped
    fail_allocations_after(-1);
    EXPECT_EQ(utils_memory_put(block, 1), GOOD);
    EXPECT_EQ(live_blocks(), 0);
}

/* Two blocks are given back under a type that holds one of them, the second one when the first is
 * about to be counted. */
TEST_F(MemoryTest, OfTwoThatGiveBackTooMuchOneIsRefused)
{
    void* blocks[3] = {};
    for (uint32_t i = 0; i < 3; i++) {
        ASSERT_EQ(utils_memory_get(&blocks[i], 10, i == 0 ? 1 : 2), GOOD);
    }
    before_next_lock([&blocks] { EXPECT_EQ(utils_memory_put(blocks[1], 1), GOOD); });
    EXPECT_EQ(utils_memory_put(blocks[2], 1), KY_STATUS_MEMORY_ERROR);
    before_next_lock(nullptr);
    take_records();
    expect_held({0, 0, 20});
    EXPECT_EQ(utils_memory_put(blocks[0], 2), GOOD);
    EXPECT_EQ(utils_memory_put(blocks[2], 2), GOOD);
    EXPECT_EQ(live_blocks(), 0);
}

TEST_F(MemoryTest, CountsAreExactAfterManyThreads)
{
    void* kept[8] = {};
    in_threads(8, [&kept](uint32_t thread) {
        for (uint32_t i = 0; i < 2000; i++) {
            void* block = nullptr;
            const uint32_t type = 1 + (thread + i) % 3;
            EXPECT_EQ(utils_memory_get(&block, i, type), GOOD);
            EXPECT_EQ(utils_memory_put(block, type), GOOD);
            if (i % 500 == 0) {
                utils_log_verbosity_level_set(i / 500 + 2);
                utils_memory_print_summary(0);
            }
        }
        EXPECT_EQ(utils_memory_get(&kept[thread], 7, 5), GOOD);
    });
    expect_held({0, 0, 0, 0, 0, 56});
    for (void* block : kept) {
        EXPECT_EQ(utils_memory_put(block, 5), GOOD);
    }
    expect_held({});
}

TEST_F(MemoryTest, DumpPrintsEveryType)
{
    void* block = nullptr;
    ASSERT_EQ(utils_memory_get(&block, 4096, 12), GOOD);
    std::string expected = "\nUtils memory dump\nindex     name                 mem_cnt"
                           "              \n";
    for (uint32_t type = 1; type <= 17; type++) {
        char row[64];
        snprintf(
            row, sizeof row, "%-9u %-20s %-20u \n", type, type_names[type], type == 12 ? 4096 : 0);
        expected += row;
    }
    EXPECT_EQ(
        printed([](FILE* stream) { EXPECT_EQ(utils_memory_dbg_dump(stream), GOOD); }), expected);
    EXPECT_EQ(utils_memory_put(block, 12), GOOD);
}

} // namespace
