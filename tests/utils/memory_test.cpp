// Memory accounting.
#include "allocation.h"
#include "recorder.h"

#include <ky_utils.h>

#include <cstring>
#include <random>
#include <thread>

namespace {

class MemoryTest : public RecordedTest {};

Records said(uint32_t mask, const std::string& function, const std::string& text)
{
    return statement(mask, "UTILS", "utils.cpp", function, text);
}

const char* const type_names[] = {
    "ALL",    "COS",      "TOPO", "PORT",    "MSTP",           "FDB",          "VLAN", "LAG",
    "ROUTER", "ACL",      "SPAN", "POLICER", "HOST-INTERFACE", "FLOW-COUNTER", "KVDL", "API",
    "TUNNEL", "TELEMETRY"};

Records report(const uint64_t (&held)[18], uint32_t first, uint32_t last)
{
    const char* function = "utils_memory_print_summary";
    Records records = said(31, function, "====== MEMORY REPORT ======\n");
    for (uint32_t type = first; type <= last; type++) {
        records = records + said(
                                31, function,
                                "Allocated " + std::to_string(held[type]) +
                                    " bytes for memory type " + type_names[type] + "\n");
    }
    return records;
}

/* What the library says that each type holds. */
void expect_held(const uint64_t (&held)[18])
{
    utils_log_verbosity_level_set(5);
    take_records();
    EXPECT_EQ(utils_memory_print_summary(0), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(report(held, 1, 17));
    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
}

TEST_F(MemoryTest, BlocksAreCountedAndSaidAtDebugLevel)
{
    utils_log_verbosity_level_set(5);
    void* block = nullptr;
    void* empty = nullptr;
    EXPECT_EQ(utils_memory_get(&block, 100, 3), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(said(
        31, "utils_memory_get",
        "Allocated 100 bytes for memory type PORT; Total memory for this type = 100;\n"));
    memset(block, 0xa5, 100);
    EXPECT_EQ(utils_memory_get(&empty, 0, 17), KY_STATUS_SUCCESS);
    EXPECT_NE(empty, nullptr);
    EXPECT_EQ(live_blocks(), 2);
    take_records();
    EXPECT_EQ(utils_memory_print_summary(3), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(report({0, 0, 0, 100}, 3, 3));
    EXPECT_EQ(utils_memory_put(block, 3), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(said(
        31, "utils_memory_put",
        "Freed 100 bytes for memory type PORT; Total memory for this type = 0;\n"));
    EXPECT_EQ(utils_memory_put(empty, 17), KY_STATUS_SUCCESS);
    EXPECT_EQ(live_blocks(), 0);

    EXPECT_EQ(utils_clr_memory_get(&block, 1000, 3, 1), KY_STATUS_SUCCESS);
    const std::string zeros(3000, '\0');
    EXPECT_EQ(memcmp(block, zeros.data(), zeros.size()), 0);
    EXPECT_EQ(utils_memory_put(block, 1), KY_STATUS_SUCCESS);

    utils_log_verbosity_level_set(KY_LOG_LEVEL_DEFAULT);
    take_records();
    EXPECT_EQ(utils_memory_get(&block, 1, 1), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_memory_put(block, 1), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_memory_print_summary(0), KY_STATUS_SUCCESS);
    EXPECT_SILENCE();
}

TEST_F(MemoryTest, FailuresChangeNothingAndLeaveThroughTheExitRecord)
{
    void* block = nullptr;
    ASSERT_EQ(utils_memory_get(&block, 10, 1), KY_STATUS_SUCCESS);
    void* const untouched = &block;
    void* out = untouched;
    const auto left = [](const std::string& function) {
        return said(31, "utils_ky_log_exit", function + " - left\n");
    };
    const Records get = left("utils_memory_get");
    const Records clr = left("utils_clr_memory_get");
    const Records put = left("utils_memory_put");
    const Records null = said(1, "utils_check_pointer", "NULL Pointer (Buffer pointer)\n") +
                         left("utils_check_pointer");
    const Records header = said(31, "utils_memory_print_summary", "====== MEMORY REPORT ======\n");
    const Records too_large =
        said(1, "utils_clr_memory_get", "Memory of 65536 elements of 65536 bytes exceeds range\n");
    const Records wrong_type =
        said(1, "utils_memory_put", "Block size exceeds total size for memory type TOPO\n");
    const struct {
        const char* label;
        std::function<ky_status_t()> call;
        ky_status_t status;
        Records records;
        void* out;
    } cases[] = {
        {"get 0", [&] { return utils_memory_get(&out, 1, 0); }, KY_STATUS_PARAM_EXCEEDS_RANGE, get,
         untouched},
        {"get 18", [&] { return utils_memory_get(nullptr, 1, 18); }, KY_STATUS_PARAM_EXCEEDS_RANGE,
         get, untouched},
        {"get null", [&] { return utils_memory_get(nullptr, 1, 1); }, KY_STATUS_PARAM_NULL,
         null + get, untouched},
        {"get, no memory", [&] { return utils_memory_get(&out, ~0U, 1); }, KY_STATUS_NO_MEMORY, get,
         nullptr},
        {"clr 18", [&] { return utils_clr_memory_get(&out, 1, 1, 18); },
         KY_STATUS_PARAM_EXCEEDS_RANGE, get + clr, untouched},
        {"clr 2^32", [&] { return utils_clr_memory_get(&out, 65536, 65536, 1); },
         KY_STATUS_PARAM_EXCEEDS_RANGE, too_large + clr, untouched},
        {"clr 2^32 - 1", [&] { return utils_clr_memory_get(&out, 65535, 65537, 1); },
         KY_STATUS_NO_MEMORY, get + clr, nullptr},
        {"put 0", [&] { return utils_memory_put(block, 0); }, KY_STATUS_PARAM_EXCEEDS_RANGE, put,
         untouched},
        {"put 18", [&] { return utils_memory_put(nullptr, 18); }, KY_STATUS_PARAM_EXCEEDS_RANGE,
         put, untouched},
        {"put null", [&] { return utils_memory_put(nullptr, 1); }, KY_STATUS_PARAM_NULL, null + put,
         untouched},
        {"put as 2", [&] { return utils_memory_put(block, 2); }, KY_STATUS_MEMORY_ERROR,
         wrong_type + put, untouched},
        {"report 18", [&] { return utils_memory_print_summary(18); }, KY_STATUS_PARAM_EXCEEDS_RANGE,
         header + left("utils_memory_print_summary"), untouched},
    };
    fail_allocations_after(0);
    for (const auto& [label, call, status, records, expected_out] : cases) {
        SCOPED_TRACE(label);
        out = untouched;
        utils_log_verbosity_level_set(5);
        KY_STORE(g_ky_log_module_func_enable, 1);
        EXPECT_EQ(call(), status);
        EXPECT_RECORDS(records);
        EXPECT_EQ(out, expected_out);
        KY_STORE(g_ky_log_module_func_enable, 0);
        expect_held({0, 10});
    }
    fail_allocations_after(-1);
    EXPECT_EQ(utils_memory_put(block, 1), KY_STATUS_SUCCESS);
    EXPECT_EQ(live_blocks(), 0);
}

TEST_F(MemoryTest, RandomBlocksAgreeWithAModel)
{
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](uint32_t end) { return static_cast<uint32_t>(random()) % end; };
    struct Block {
        void* memory;
        uint32_t size;
        uint32_t type;
    };
    std::vector<Block> blocks;
    uint64_t held[18] = {};
    for (int i = 0; i < 20000; i++) {
        if (blocks.empty() || below(100) < 51) {
            Block block = {nullptr, below(below(8) == 0 ? 5000 : 50), 1 + below(17)};
            const bool cleared = below(2) == 0;
            ASSERT_EQ(
                cleared ? utils_clr_memory_get(&block.memory, block.size, 1, block.type)
                        : utils_memory_get(&block.memory, block.size, block.type),
                KY_STATUS_SUCCESS);
            memset(block.memory, 0xff, block.size);
            held[block.type] += block.size;
            blocks.push_back(block);
        } else {
            const size_t victim = below(static_cast<uint32_t>(blocks.size()));
            const Block block = blocks[victim];
            const uint32_t type = below(8) == 0 ? 1 + below(17) : block.type;
            const bool fits = block.size <= held[type];
            ASSERT_EQ(
                utils_memory_put(block.memory, type),
                fits ? KY_STATUS_SUCCESS : KY_STATUS_MEMORY_ERROR);
            if (fits) {
                held[type] -= block.size;
                blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(victim));
            }
        }
        ASSERT_EQ(live_blocks(), static_cast<long>(blocks.size()));
    }
    expect_held(held);
    // Types whose blocks went elsewhere may hold too little for their own, until the others are
    // back.
    for (size_t left = blocks.size(); left != 0 && !blocks.empty(); left--) {
        for (uint32_t type = 1; type <= 17 && !blocks.empty(); type++) {
            while (!blocks.empty() &&
                   utils_memory_put(blocks.back().memory, type) == KY_STATUS_SUCCESS) {
                blocks.pop_back();
            }
        }
    }
    for (const Block& block : blocks) {
        free(static_cast<char*>(block.memory) - 4);
    }
}

TEST_F(MemoryTest, CountsAreExactAfterManyThreads)
{
    std::vector<std::thread> threads;
    std::vector<void*> kept(8);
    for (uint32_t thread = 0; thread < 8; thread++) {
        threads.emplace_back([thread, &kept] {
            for (uint32_t i = 0; i < 2000; i++) {
                void* block = nullptr;
                const uint32_t type = 1 + (thread + i) % 3;
                EXPECT_EQ(utils_memory_get(&block, i, type), KY_STATUS_SUCCESS);
                EXPECT_EQ(utils_memory_put(block, type), KY_STATUS_SUCCESS);
                if (i % 500 == 0) {
                    utils_log_verbosity_level_set(i / 500 + 2);
                    utils_memory_print_summary(0);
                }
            }
            EXPECT_EQ(utils_memory_get(&kept[thread], 7, 5), KY_STATUS_SUCCESS);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    expect_held({0, 0, 0, 0, 0, 56});
    for (void* block : kept) {
        EXPECT_EQ(utils_memory_put(block, 5), KY_STATUS_SUCCESS);
    }
    expect_held({});
}

TEST_F(MemoryTest, DumpPrintsEveryType)
{
    void* block = nullptr;
    ASSERT_EQ(utils_memory_get(&block, 4096, 12), KY_STATUS_SUCCESS);
    char* text = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&text, &size);
    EXPECT_EQ(utils_memory_dbg_dump(stream), KY_STATUS_SUCCESS);
    fclose(stream);
    std::string expected = "\nUtils memory dump\nindex     name                 mem_cnt"
                           "              \n";
    for (uint32_t type = 1; type <= 17; type++) {
        char row[64];
        snprintf(
            row, sizeof row, "%-9u %-20s %-20u \n", type, type_names[type], type == 12 ? 4096 : 0);
        expected += row;
    }
    EXPECT_EQ(text, expected);
    free(text);
    EXPECT_EQ(utils_memory_put(block, 12), KY_STATUS_SUCCESS);
}

} // namespace
