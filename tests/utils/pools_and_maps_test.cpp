// Pools, maps, and databases made of both.
#include "allocation.h"
#include "recorder.h"

#include <ky_utils.h>

#include <cstddef>

namespace {

constexpr Module utils = {"UTILS", "utils.cpp"};
constexpr ky_status_t NO_ROOM = KY_STATUS_NO_RESOURCES;

struct Record {
    cl_pool_item_t pool_item;
    int value;
    cl_map_item_t map_item;
};

void* record_of_item(cl_map_item_t* item)
{
    return reinterpret_cast<char*>(item) - offsetof(Record, map_item);
}

void* record_of_pool_item(cl_pool_item_t* item)
{
    return item;
}

cl_map_item_t* item_of_record(void* record)
{
    return &static_cast<Record*>(record)->map_item;
}

cl_pool_item_t* pool_item_of_record(void* record)
{
    return &static_cast<Record*>(record)->pool_item;
}

/* A database of at most 40 records, and shorthand for what is done with it. */
class DatabaseTest : public RecordedTest {
  protected:
    void SetUp() override
    {
        RecordedTest::SetUp();
        EXPECT_OUTCOME(
            utils_qpool_qmap_init(&pool, &map, 4, 40, 8, sizeof(Record), "test"), GOOD,
            utils.said(7, "utils_qpool_qmap_init", "Init test DB (Min: 4, Max: 40, Grow: 8)\n"));
    }
    void TearDown() override
    {
        cl_qpool_destroy(&pool);
        EXPECT_EQ(live_blocks(), 0);
        RecordedTest::TearDown();
    }
    ky_status_t add(uint64_t key, void** record)
    {
        return utils_db_qmap_item_add(
            key, &map, &pool, record_of_item, record_of_pool_item, item_of_record, record);
    }
    ky_status_t del(uint64_t key, void** record)
    {
        return utils_db_qmap_item_del(
            key, &map, &pool, record_of_item, pool_item_of_record, record);
    }
    cl_qpool_t pool;
    cl_qmap_t map;
};

TEST_F(DatabaseTest, StatusesResultsAndExitRecords)
{
    Record own = {};
    void* filed = nullptr;
    void* record = nullptr;
    cl_map_item_t* item = nullptr;
    ASSERT_EQ(add(5, &filed), GOOD);
    cl_map_item_t* const five = item_of_record(filed);
    cl_map_item_t* const end = cl_qmap_end(&map);
    const std::string no_exit;
    // clang-format off
    const struct {
        const char* label;
        Call call;
        ky_status_t status;
        cl_map_item_t* item;
        std::string exit; // the function whose exit record is expected
    } cases[] = {
        {CALL(utils_qmap_key_exists(&map, 5, &item)), GOOD, five, no_exit},
        {CALL(utils_qmap_key_exists(&map, 6, &item)), MISSING, end, no_exit},
        {CALL(utils_qmap_key_exists(&map, 6, nullptr)), MISSING, nullptr, no_exit},
        {CALL(utils_qmap_key_not_exists(&map, 5, &item)), PRESENT, five, no_exit},
        {CALL(utils_qmap_key_not_exists(&map, 6, &item)), GOOD, end, no_exit},
        {CALL(utils_qmap_key_not_exists(&map, 5, nullptr)), PRESENT, nullptr, no_exit},
        {CALL(utils_qmap_get(&map, 6, &item)), MISSING, end, no_exit},
        {CALL(utils_qmap_remove(&map, 6, &item)), MISSING, end, no_exit},
        {CALL(utils_db_qmap_item_get(6, &map, record_of_item, &record)), MISSING, nullptr,
         "utils_db_qmap_item_get"},
        {CALL(utils_db_qmap_item_get(5, &map, nullptr, nullptr)), GOOD, nullptr, no_exit},
        {CALL(utils_db_qmap_item_get(5, &map, record_of_item, nullptr)), GOOD, nullptr, no_exit},
        {CALL(utils_db_qmap_item_ins(5, &map, &own.map_item)), PRESENT, nullptr,
         "utils_db_qmap_item_ins"},
        {CALL(add(5, nullptr)), PRESENT, nullptr, "utils_db_qmap_item_add"},
        {CALL(add(8, nullptr)), GOOD, nullptr, no_exit},
        {CALL(del(8, nullptr)), GOOD, nullptr, no_exit},
        {CALL(del(6, &record)), MISSING, nullptr, "utils_db_qmap_item_del"},
        {CALL(utils_db_qmap_item_ins(7, &map, &own.map_item)), GOOD, nullptr, no_exit},
        {CALL(utils_qmap_remove(&map, 7, &item)), GOOD, &own.map_item, no_exit},
        {CALL(utils_db_qmap_item_ins(7, &map, &own.map_item)), GOOD, nullptr, no_exit},
        {CALL(utils_db_qmap_item_del(7, &map, &pool, nullptr, nullptr, &record)), GOOD, nullptr,
         no_exit},
        {CALL(utils_db_qmap_item_del(5, &map, &pool, record_of_item, nullptr, &record)), GOOD,
         nullptr, no_exit},
    };
    // clang-format on
    utils_log_verbosity_level_set(5);
    KY_STORE(g_ky_log_module_func_enable, 1);
    for (const auto& [label, call, status, expected_item, exit] : cases) {
        SCOPED_TRACE(label);
        item = nullptr;
        const Records left = utils.said(31, "utils_ky_log_exit", exit + " - left\n");
        EXPECT_OUTCOME(call(), status, exit.empty() ? Records{} : left);
        EXPECT_EQ(item, expected_item);
    }
    EXPECT_EQ(record, filed); // handed out, and kept from the pool
    const Records left = utils.left("utils_qmap_is_empty");
    EXPECT_OUTCOME(utils_qmap_is_empty(&map), GOOD, left);
    cl_qmap_insert(&map, 1, &own.map_item);
    EXPECT_OUTCOME(utils_qmap_is_empty(&map), KY_STATUS_DB_NOT_EMPTY, left);
    utils_log_verbosity_level_set(4);
    take_records();
    EXPECT_OUTCOME(utils_qmap_is_empty(&map), KY_STATUS_DB_NOT_EMPTY, {});
}

/* Fails every allocation once, from the first one on, until everything succeeds. */
TEST_F(DatabaseTest, EveryAllocationMayFail)
{
    cl_qpool_t other;
    const long before = live_blocks();
    long failures = 0;
    for (bool done = false; !done; failures++) {
        fail_allocations_after(failures);
        const ky_status_t status = utils_qpool_init(&other, 8, 32, 24, sizeof(Record), "other");
        if (status != GOOD) {
            EXPECT_EQ(status, KY_STATUS_NO_MEMORY);
            EXPECT_RECORDS(utils.said(1, "utils_qpool_init", "Init failure of other DB\n"));
            EXPECT_EQ(live_blocks(), before);
            continue;
        }
        cl_pool_item_t* item = nullptr;
        int taken = 0;
        while (utils_qpool_get(&item, &other) == GOOD) {
            taken++;
        }
        EXPECT_EQ(utils_qpool_get(&item, &other), NO_ROOM);
        EXPECT_EQ(item, nullptr);
        EXPECT_TRUE(taken == 8 || taken == 32);
        done = taken == 32;
        cl_qpool_destroy(&other);
        EXPECT_EQ(live_blocks(), before);
    }
    EXPECT_GE(failures, 3); // one at creation, one for growth, and none
    fail_allocations_after(-1);
    take_records();
    EXPECT_OUTCOME(
        utils_qpool_init(&other, 1, ~0U, ~1U, sizeof(Record), "large"), GOOD,
        utils.said(
            7, "utils_qpool_init", "Init large DB (Min: 1, Max: 4294967295, Grow: 4294967294)\n"));
    cl_qpool_destroy(&other);
    const auto left = [](const std::string& function) {
        return utils.said(31, "utils_ky_log_exit", function + " - left\n");
    };
    const auto failed = [&left](const std::string& function) {
        return utils.said(1, function, "Init failure of both DB\n") + left(function);
    };
    cl_qmap_t untouched = {};
    const auto init = [&] { return utils_qpool_init(&other, 16, 32, 16, sizeof(Record), "both"); };
    const auto init_both = [&] {
        return utils_qpool_qmap_init(&other, &untouched, 16, 32, 16, sizeof(Record), "both");
    };
    utils_log_verbosity_level_set(0);
    take_records();
    for (const Call& call : {Call(init), Call(init_both)}) {
        fail_allocations_after(-1);
        EXPECT_OUTCOME(call(), GOOD, {});
        cl_qpool_destroy(&other);
        fail_allocations_after(0);
        EXPECT_OUTCOME(call(), KY_STATUS_NO_MEMORY, {});
    }
    untouched = {};
    utils_log_verbosity_level_set(5);
    KY_STORE(g_ky_log_module_func_enable, 1);
    take_records();
    EXPECT_OUTCOME(init(), KY_STATUS_NO_MEMORY, failed("utils_qpool_init"));
    EXPECT_OUTCOME(init_both(), KY_STATUS_NO_MEMORY, failed("utils_qpool_qmap_init"));
    EXPECT_EQ(untouched.state, 0U);
    for (uint64_t key = 0; key < 4; key++) {
        EXPECT_EQ(add(key, nullptr), GOOD);
    }
    EXPECT_OUTCOME(add(4, nullptr), NO_ROOM, left("utils_db_qmap_item_add"));
    EXPECT_EQ(utils_qmap_key_exists(&map, 4, nullptr), MISSING);
    fail_allocations_after(-1);
    EXPECT_EQ(add(4, nullptr), GOOD);
}

} // namespace
