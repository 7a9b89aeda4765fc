// Memory accounting.
#include "allocation.h"
#include "contract.h"

#include <ky_utils.h>
#include <ky_values.h>

#include <cstring>

namespace {

const Module module = {
    "UTILS", "utils.cpp", Traces::of_failure, {{"utils_memory_dbg_dump", Traces::none}}};

const char* const type_names[] = {
    "ALL",    "COS",      "TOPO", "PORT",    "MSTP",           "FDB",          "VLAN", "LAG",
    "ROUTER", "ACL",      "SPAN", "POLICER", "HOST-INTERFACE", "FLOW-COUNTER", "KVDL", "API",
    "TUNNEL", "TELEMETRY"};

constexpr uint32_t HUGE_BLOCK = 0xFFFFFFF0;
constexpr uint64_t HELD = 2 * uint64_t{HUGE_BLOCK};

/* Two huge blocks of COS are held throughout: counts have 64 bits. */
class MemoryTest : public ContractTest {
  protected:
    MemoryTest() : ContractTest(module) {}
    void SetUp() override
    {
        ContractTest::SetUp();
        ASSERT_EQ(utils_memory_get(&held, HUGE_BLOCK, KY_MEM_TYPE_COS), KY_STATUS_SUCCESS);
        ASSERT_EQ(utils_memory_get(&held_too, HUGE_BLOCK, KY_MEM_TYPE_COS), KY_STATUS_SUCCESS);
    }
    void TearDown() override
    {
        EXPECT_EQ(utils_memory_put(held, KY_MEM_TYPE_COS), KY_STATUS_SUCCESS);
        EXPECT_EQ(utils_memory_put(held_too, KY_MEM_TYPE_COS), KY_STATUS_SUCCESS);
        EXPECT_EQ(live_blocks(), 0);
    }
    void put_block(uint32_t type)
    {
        EXPECT_EQ(utils_memory_put(block.get(), type), KY_STATUS_SUCCESS);
    }
    void* held = nullptr;
    void* held_too = nullptr;
    Out<void*> block;
};

Log allocated(uint32_t size, uint32_t type, uint64_t total)
{
    const std::string bytes =
        formatted("Allocated %u bytes for memory type %s; ", size, type_names[type]);
    const std::string all = "Total memory for this type = " + std::to_string(total) + ";\n";
    return debug(bytes + all, "utils_memory_get");
}

Log summary(uint32_t first, const std::vector<uint64_t>& held)
{
    Log log = debug("====== MEMORY REPORT ======\n");
    for (const uint64_t bytes : held) {
        const std::string type = type_names[first++];
        log = log +
              debug("Allocated " + std::to_string(bytes) + " bytes for memory type " + type + "\n");
    }
    return log;
}

TEST_F(MemoryTest, BlocksAreHandedOutAndTakenBack)
{
    for (const uint32_t type : boundary_values(1, 17)) {
        for (const uint32_t size : {0U, 1U, 3U, 0x10001U}) {
            const bool is_type = type >= 1 && type <= 17;
            const uint64_t total = size + (type == KY_MEM_TYPE_COS ? HELD : 0);
            const std::string freed =
                is_type ? formatted("Freed %u bytes for memory type %s; ", size, type_names[type]) +
                              "Total memory for this type = " + std::to_string(total - size) + ";\n"
                        : "";
            const ky_status_t status = is_type ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_EXCEEDS_RANGE;
            void* given = nullptr;
            const auto fill_and_put = [&] {
                EXPECT_EQ(last_request(), size + 4);
                memset(block.get(), 0xFF, size);
                put_block(type);
            };
            expect({
                {CALL(utils_memory_get(block, size, type)), .status = status,
                 .log = is_type ? allocated(size, type, total) : Log{},
                 .writes = is_type ? std::vector{block.is_written()} : std::vector<Written>{},
                 .after = is_type ? fill_and_put : std::function<void()>{}},
                {CALL(utils_memory_put(is_type ? given : held, type)), .status = status,
                 .log = is_type ? debug(freed) : Log{},
                 .before =
                     [&] { is_type ? utils_memory_get(&given, size, type) : KY_STATUS_SUCCESS; }},
                {CALL(utils_memory_put(nullptr, type)),
                 .status = is_type ? KY_STATUS_PARAM_NULL : KY_STATUS_PARAM_EXCEEDS_RANGE,
                 .log = is_type ? null_pointer("Buffer pointer") : Log{}},
            });
        }
    }
}

TEST_F(MemoryTest, ArraysAreCleared)
{
    const auto expect_zeros = [&](size_t size) {
        EXPECT_EQ(memcmp(block.get(), std::string(size, '\0').data(), size), 0);
        EXPECT_EQ(last_request(), size + 4);
        put_block(2);
    };
    expect({
        {CALL(utils_clr_memory_get(block, 1000, 3, 2)), .log = allocated(3000, 2, 3000),
         .writes = {block.is_written()}, .after = [&] { expect_zeros(3000); }},
        {CALL(utils_clr_memory_get(block, 0, ~0U, 2)), .log = allocated(0, 2, 0),
         .writes = {block.is_written()}, .after = [&] { expect_zeros(0); }},
        {CALL(utils_clr_memory_get(block, ~0U, 0, 2)), .log = allocated(0, 2, 0),
         .writes = {block.is_written()}, .after = [&] { expect_zeros(0); }},
    });
}

TEST_F(MemoryTest, Refusals)
{
    const Log null = null_pointer("Buffer pointer");
    const Log get = failure_trace("utils_memory_get");
    const auto too_large = [](const std::string& what) {
        return error("Memory of " + what + " exceeds range\n");
    };
    expect({
        {CALL(utils_memory_get(nullptr, 1, 18)), .status = KY_STATUS_PARAM_EXCEEDS_RANGE},
        {CALL(utils_memory_get(nullptr, 1, 1)), .status = KY_STATUS_PARAM_NULL, .log = null},
        {CALL(utils_memory_get(block, 1, 1)), .status = KY_STATUS_NO_MEMORY,
         .writes = {block.is(nullptr)}, .allocations = 0},
        {CALL(utils_memory_get(block, ~0U, 1)), .status = KY_STATUS_NO_MEMORY,
         .writes = {block.is(nullptr)}, .allocations = 0,
         .after =
             [] {
                 EXPECT_EQ(last_request() == 0x100000003, sizeof(size_t) > 4); // size plus header
                 EXPECT_NE(last_request(), 3U); // that would have wrapped
             }},
        {CALL(utils_clr_memory_get(block, 1, 1, 18)), .status = KY_STATUS_PARAM_EXCEEDS_RANGE,
         .log = get},
        {CALL(utils_clr_memory_get(block, 2147483648, 2, 1)),
         .status = KY_STATUS_PARAM_EXCEEDS_RANGE,
         .log = too_large("2147483648 elements of 2 bytes")},
        {CALL(utils_clr_memory_get(block, 2, ~0U, 17)), .status = KY_STATUS_PARAM_EXCEEDS_RANGE,
         .log = too_large("2 elements of 4294967295 bytes")},
        {CALL(utils_clr_memory_get(block, 65536, 65536, 0)),
         .status = KY_STATUS_PARAM_EXCEEDS_RANGE, .log = get},
        {CALL(utils_clr_memory_get(block, 65536, 65536, 18)),
         .status = KY_STATUS_PARAM_EXCEEDS_RANGE, .log = get},
        {CALL(utils_clr_memory_get(nullptr, 65536, 65536, 1)), .status = KY_STATUS_PARAM_NULL,
         .log = null + get},
        {CALL(utils_clr_memory_get(block, 65535, 65537, 1)), .status = KY_STATUS_NO_MEMORY,
         .log = get, .writes = {block.is(nullptr)}, .allocations = 0},
        {CALL(utils_memory_put(held, KY_MEM_TYPE_TOPO)), .status = KY_STATUS_MEMORY_ERROR,
         .log = error("Block size exceeds total size for memory type TOPO\n")},
    });
}

TEST_F(MemoryTest, Reports)
{
    Log dump = {
        {0, "", formatted("%p header Utils memory dump", static_cast<void*>(stderr))},
        {0, "", formatted("%p headline index:9 name:20 mem_cnt:20", static_cast<void*>(stderr))}};
    std::vector<uint64_t> all;
    for (uint32_t type = 1; type <= 17; type++) {
        all.push_back(type == KY_MEM_TYPE_COS ? HELD : 0);
        const std::string line =
            formatted("%p data %u %s ", static_cast<void*>(stderr), type, type_names[type]);
        dump.push_back({0, "", line + std::to_string(all.back())});
    }
    expect({
        {CALL(utils_memory_dbg_dump(stderr)), .log = dump},
    });
    for (const uint32_t type : boundary_values(1, 17)) {
        expect(
            {CALL(utils_memory_print_summary(type)),
             .status = type <= 17 ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_EXCEEDS_RANGE,
             .log = type == 0    ? summary(1, all)
                    : type <= 17 ? summary(type, {all[type - 1]})
                                 : summary(0, {})});
    }
}

TEST_F(MemoryTest, CountsChangeUnderTheLock)
{
    const auto counts = [] {
        take_log();
        utils_memory_dbg_dump(nullptr);
        return take_log();
    };
    for (const int moment : {1, 2}) { // before and after the lock is held
        void* memory = nullptr;
        for (const bool gets : {true, false}) {
            Log at_moment;
            const Log before = counts();
            at_free_lock(moment, [&] { at_moment = counts(); });
            EXPECT_EQ(
                gets ? utils_memory_get(&memory, 10, 2) : utils_memory_put(memory, 2),
                KY_STATUS_SUCCESS);
            EXPECT_EQ(at_moment, moment == 1 ? before : counts());
        }
    }
}

/* Two blocks are put under a type that holds bytes for one of them: the first whenever the lock is
 * free while the second is put, or afterwards. */
TEST_F(MemoryTest, OfTwoThatGiveBackTooMuchOneIsRefused)
{
    for (const int moment : {1, 2, 3, 4}) {
        void* blocks[3] = {}; // the last one has the other type
        for (void*& each : blocks) {
            ASSERT_EQ(utils_memory_get(&each, 3, &each == &blocks[2] ? 3 : 2), KY_STATUS_SUCCESS);
        }
        uint32_t first = ~0U;
        const auto put_first = [&] { first = utils_memory_put(blocks[0], 3); };
        at_free_lock(moment, put_first);
        const ky_status_t second = utils_memory_put(blocks[1], 3);
        at_free_lock(0, nullptr);
        if (first == ~0U) {
            put_first();
        }
        EXPECT_EQ(first + second, KY_STATUS_MEMORY_ERROR) << moment; // the other succeeds
        EXPECT_EQ(
            utils_memory_put(blocks[first == KY_STATUS_SUCCESS ? 1 : 0], 2), KY_STATUS_SUCCESS);
        EXPECT_EQ(utils_memory_put(blocks[2], 2), KY_STATUS_SUCCESS);
    }
}

} // namespace
