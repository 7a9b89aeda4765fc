// Pools, maps, and databases made of both.
#include "allocation.h"
#include "recorder.h"

#include <ky_utils.h>

#include <cstddef>
#include <map>
#include <random>

namespace {

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
        ASSERT_EQ(
            utils_qpool_qmap_init(&pool, &map, 4, 40, 8, sizeof(Record), "test"),
            KY_STATUS_SUCCESS);
        EXPECT_RECORDS(
            said(7, "utils_qpool_qmap_init", "Init test DB (Min: 4, Max: 40, Grow: 8)\n"));
    }
    void TearDown() override
    {
        cl_qpool_destroy(&pool);
        EXPECT_EQ(live_blocks(), 0);
        RecordedTest::TearDown();
    }
    static Records said(uint32_t mask, const std::string& function, const std::string& text)
    {
        return statement(mask, "UTILS", "utils.cpp", function, text);
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

TEST_F(DatabaseTest, RandomChangesAgreeWithAModel)
{
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    std::map<uint64_t, void*> model;
    for (int i = 0; i < 20000; i++) {
        const uint64_t key = random() % 60;
        const auto found = model.find(key);
        const bool present = found != model.end();
        void* record = &record;
        cl_map_item_t* item = nullptr;
        switch (random() % 5) {
        case 0:
        case 1: {
            const ky_status_t status = add(key, &record);
            if (present) {
                ASSERT_EQ(status, KY_STATUS_ENTRY_ALREADY_EXISTS);
                ASSERT_EQ(record, found->second);
            } else if (model.size() == 40) {
                ASSERT_EQ(status, KY_STATUS_NO_RESOURCES);
            } else {
                ASSERT_EQ(status, KY_STATUS_SUCCESS);
                model[key] = record;
            }
            break;
        }
        case 2:
            ASSERT_EQ(del(key, &record), present ? KY_STATUS_SUCCESS : KY_STATUS_ENTRY_NOT_FOUND);
            if (present) {
                ASSERT_EQ(record, found->second);
                model.erase(found);
            }
            break;
        case 3:
            ASSERT_EQ(
                utils_qmap_get(&map, key, &item),
                present ? KY_STATUS_SUCCESS : KY_STATUS_ENTRY_NOT_FOUND);
            ASSERT_EQ(item, present ? item_of_record(found->second) : cl_qmap_end(&map));
            ASSERT_EQ(
                utils_db_qmap_item_get(key, &map, record_of_item, &record),
                present ? KY_STATUS_SUCCESS : KY_STATUS_ENTRY_NOT_FOUND);
            ASSERT_EQ(record, present ? found->second : static_cast<void*>(&record));
            break;
        default:
            ASSERT_EQ(
                utils_qmap_is_empty(&map),
                model.empty() ? KY_STATUS_SUCCESS : KY_STATUS_DB_NOT_EMPTY);
            break;
        }
    }
    auto expected = model.begin();
    for (cl_map_item_t* item = cl_qmap_head(&map); item != cl_qmap_end(&map);
         item = cl_qmap_next(item), expected++) {
        ASSERT_EQ(record_of_item(item), expected->second);
    }
    EXPECT_EQ(expected, model.end());
    EXPECT_EQ(
        utils_db_qmap_del(&map, &pool, record_of_item, pool_item_of_record), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_qmap_is_empty(&map), KY_STATUS_SUCCESS);
    for (uint64_t key = 0; key < 40; key++) { // the pool holds every record again
        EXPECT_EQ(add(key, nullptr), KY_STATUS_SUCCESS);
    }
}

TEST_F(DatabaseTest, StatusesResultsAndExitRecords)
{
    Record own = {};
    Record* filed = nullptr;
    cl_map_item_t* item = nullptr;
    ASSERT_EQ(add(5, reinterpret_cast<void**>(&filed)), KY_STATUS_SUCCESS);
    cl_map_item_t* const five = item_of_record(filed);
    cl_map_item_t* const end = cl_qmap_end(&map);
    void* record = nullptr;

    const struct {
        const char* exit; // the function whose exit record is expected, or null
        std::function<ky_status_t()> call;
        ky_status_t status;
        cl_map_item_t* item;
    } cases[] = {
        {nullptr, [&] { return utils_qmap_key_exists(&map, 5, &item); }, KY_STATUS_SUCCESS, five},
        {nullptr, [&] { return utils_qmap_key_exists(&map, 6, &item); }, KY_STATUS_ENTRY_NOT_FOUND,
         end},
        {nullptr, [&] { return utils_qmap_key_exists(&map, 6, nullptr); },
         KY_STATUS_ENTRY_NOT_FOUND, nullptr},
        {nullptr, [&] { return utils_qmap_key_not_exists(&map, 5, &item); },
         KY_STATUS_ENTRY_ALREADY_EXISTS, five},
        {nullptr, [&] { return utils_qmap_key_not_exists(&map, 6, &item); }, KY_STATUS_SUCCESS,
         end},
        {nullptr, [&] { return utils_qmap_key_not_exists(&map, 5, nullptr); },
         KY_STATUS_ENTRY_ALREADY_EXISTS, nullptr},
        {nullptr, [&] { return utils_qmap_get(&map, 6, &item); }, KY_STATUS_ENTRY_NOT_FOUND, end},
        {nullptr, [&] { return utils_qmap_remove(&map, 6, &item); }, KY_STATUS_ENTRY_NOT_FOUND,
         end},
        {"utils_db_qmap_item_get",
         [&] { return utils_db_qmap_item_get(6, &map, record_of_item, &record); },
         KY_STATUS_ENTRY_NOT_FOUND, nullptr},
        {nullptr, [&] { return utils_db_qmap_item_get(5, &map, nullptr, nullptr); },
         KY_STATUS_SUCCESS, nullptr},
        {"utils_db_qmap_item_ins", [&] { return utils_db_qmap_item_ins(5, &map, &own.map_item); },
         KY_STATUS_ENTRY_ALREADY_EXISTS, nullptr},
        {"utils_db_qmap_item_add", [&] { return add(5, nullptr); }, KY_STATUS_ENTRY_ALREADY_EXISTS,
         nullptr},
        {"utils_db_qmap_item_del", [&] { return del(6, &record); }, KY_STATUS_ENTRY_NOT_FOUND,
         nullptr},
        {nullptr, [&] { return utils_db_qmap_item_ins(7, &map, &own.map_item); }, KY_STATUS_SUCCESS,
         nullptr},
        {nullptr, [&] { return utils_qmap_remove(&map, 7, &item); }, KY_STATUS_SUCCESS,
         &own.map_item},
        {nullptr, [&] { return utils_db_qmap_item_ins(7, &map, &own.map_item); }, KY_STATUS_SUCCESS,
         nullptr},
        {nullptr, [&] { return utils_db_qmap_item_del(7, &map, &pool, nullptr, nullptr, &record); },
         KY_STATUS_SUCCESS, nullptr},
        {nullptr,
         [&] { return utils_db_qmap_item_del(5, &map, &pool, record_of_item, nullptr, &record); },
         KY_STATUS_SUCCESS, nullptr},
    };
    utils_log_verbosity_level_set(5);
    KY_STORE(g_ky_log_module_func_enable, 1);
    int number = 0;
    for (const auto& [exit, call, status, expected_item] : cases) {
        SCOPED_TRACE("case " + std::to_string(number++));
        item = nullptr;
        EXPECT_EQ(call(), status);
        EXPECT_EQ(item, expected_item);
        EXPECT_RECORDS(
            exit == nullptr ? Records{}
                            : said(31, "utils_ky_log_exit", std::string(exit) + " - left\n"));
    }
    EXPECT_EQ(record, filed); // handed out, and kept from the pool
    const Records left = said(31, "utils_qmap_is_empty", "utils_qmap_is_empty - left \n");
    EXPECT_EQ(utils_qmap_is_empty(&map), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(left);
    cl_qmap_insert(&map, 1, &own.map_item);
    EXPECT_EQ(utils_qmap_is_empty(&map), KY_STATUS_DB_NOT_EMPTY);
    EXPECT_RECORDS(left);
}

/* Fails every allocation once, from the first one on, until everything succeeds. */
TEST_F(DatabaseTest, EveryAllocationMayFail)
{
    cl_qpool_t other;
    const long before = live_blocks();
    long failures = 0;
    for (bool done = false; !done; failures++) {
        fail_allocations_after(failures);
        const ky_status_t status = utils_qpool_init(&other, 16, 32, 16, sizeof(Record), "other");
        if (status != KY_STATUS_SUCCESS) {
            EXPECT_EQ(status, KY_STATUS_NO_MEMORY);
            EXPECT_RECORDS(said(1, "utils_qpool_init", "Init failure of other DB\n"));
            EXPECT_EQ(live_blocks(), before);
            continue;
        }
        cl_pool_item_t* item = nullptr;
        int taken = 0;
        while (utils_qpool_get(&item, &other) == KY_STATUS_SUCCESS) {
            taken++;
        }
        EXPECT_EQ(item, nullptr);
        EXPECT_TRUE(taken == 16 || taken == 32);
        done = taken == 32;
        cl_qpool_destroy(&other);
        EXPECT_EQ(live_blocks(), before);
    }
    EXPECT_GE(failures, 3); // one at creation, one for growth, and none
    fail_allocations_after(0);
    cl_qmap_t untouched = {};
    EXPECT_EQ(
        utils_qpool_qmap_init(&other, &untouched, 16, 32, 16, sizeof(Record), "both"),
        KY_STATUS_NO_MEMORY);
    EXPECT_EQ(untouched.state, 0U);
    for (uint64_t key = 0; key < 4; key++) {
        EXPECT_EQ(add(key, nullptr), KY_STATUS_SUCCESS);
    }
    EXPECT_EQ(add(4, nullptr), KY_STATUS_NO_RESOURCES);
    EXPECT_EQ(utils_qmap_key_exists(&map, 4, nullptr), KY_STATUS_ENTRY_NOT_FOUND);
    fail_allocations_after(-1);
    EXPECT_EQ(add(4, nullptr), KY_STATUS_SUCCESS);
}

} // namespace
