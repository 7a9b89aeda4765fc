// Pools, maps, and databases made of both.
#include "allocation.h"
#include "contract.h"
#include "record.h"

#include <ky_utils.h>

namespace {

const Module module = {
    "UTILS",
    "utils.cpp",
    Traces::none,
    {{"utils_qpool_init", Traces::of_failure},
     {"utils_qpool_qmap_init", Traces::of_failure},
     {"utils_qmap_is_empty", Traces::exit},
     {"utils_db_qmap_item_get", Traces::of_failure},
     {"utils_db_qmap_item_ins", Traces::of_failure},
     {"utils_db_qmap_item_add", Traces::of_failure},
     {"utils_db_qmap_item_del", Traces::of_failure}}};

constexpr uint64_t LARGE = 0x100000005; // 5 in its low half

#define ADD(key, pool, out) \
    utils_db_qmap_item_add( \
        key, &map, pool, record_of_item, record_of_pool_item, item_of_record, out)
#define DEL(key, pool_item_of, out) \
    utils_db_qmap_item_del(key, &map, &pool, record_of_item, pool_item_of, out)

/* A database of eight records, one of them in use under key 5; and a pool that must grow. */
class DatabaseTest : public ContractTest {
  protected:
    DatabaseTest() : ContractTest(module) {}
    void SetUp() override
    {
        ContractTest::SetUp();
        ASSERT_EQ(
            utils_qpool_qmap_init(&pool, &map, 8, 8, 0, sizeof(Object), "test"), KY_STATUS_SUCCESS);
        ASSERT_EQ(utils_qpool_init(&empty, 0, 8, 1, sizeof(Object), "empty"), KY_STATUS_SUCCESS);
        ASSERT_EQ(add(5, &filed), KY_STATUS_SUCCESS);
    }
    void TearDown() override
    {
        cl_qpool_destroy(&pool);
        cl_qpool_destroy(&empty);
        EXPECT_EQ(live_blocks(), 0);
    }
    std::string state() override
    {
        std::string state = ContractTest::state();
        for (cl_map_item_t* item = cl_qmap_head(&map); item != cl_qmap_end(&map);
             item = cl_qmap_next(item)) {
            state += formatted("%p under %u\n", record_of_item(item), uint32_t(item->key));
        }
        std::vector<cl_pool_item_t*> in_pool;
        while (cl_pool_item_t* item = cl_qpool_get(&pool)) {
            in_pool.push_back(item);
        }
        state += formatted("%zu in the pool\n", in_pool.size());
        for (; !in_pool.empty(); in_pool.pop_back()) {
            cl_qpool_put(&pool, in_pool.back());
        }
        return state;
    }
    ky_status_t add(uint64_t key, void** record)
    {
        return ADD(key, &pool, record);
    }
    ky_status_t del(uint64_t key, void** record)
    {
        return DEL(key, pool_item_of_record, record);
    }
    cl_qpool_t pool;
    cl_qpool_t empty;
    cl_qmap_t map;
    void* filed = nullptr;
};

TEST_F(DatabaseTest, Maps)
{
    Out<cl_map_item_t*> item;
    Record own = {};
    cl_map_item_t* const five = item_of_record(filed);
    cl_map_item_t* const end = cl_qmap_end(&map);
    const auto insert = [&] { utils_db_qmap_item_ins(LARGE, &map, &own.map_item); };
    const auto remove = [&] { cl_qmap_remove_item(&map, &own.map_item); };
    const auto expect_gone = [&] { EXPECT_EQ(cl_qmap_get(&map, LARGE), end); };
    cl_qmap_t none;
    cl_qmap_init(&none);
    expect({
        {CALL(utils_qmap_key_exists(&map, 5, item)), .writes = {item.is(five)}},
        {CALL(utils_qmap_key_exists(&map, 5, nullptr))},
        {CALL(utils_qmap_key_exists(&map, LARGE, item)), .status = KY_STATUS_ENTRY_NOT_FOUND,
         .writes = {item.is(end)}},
        {CALL(utils_qmap_key_exists(&map, LARGE, nullptr)), .status = KY_STATUS_ENTRY_NOT_FOUND},
        {CALL(utils_qmap_key_not_exists(&map, 5, item)), .status = KY_STATUS_ENTRY_ALREADY_EXISTS,
         .writes = {item.is(five)}},
        {CALL(utils_qmap_key_not_exists(&map, 5, nullptr)),
         .status = KY_STATUS_ENTRY_ALREADY_EXISTS},
        {CALL(utils_qmap_key_not_exists(&map, LARGE, item)), .writes = {item.is(end)}},
        {CALL(utils_qmap_get(&map, 5, item)), .writes = {item.is(five)}},
        {CALL(utils_qmap_get(&map, LARGE, item)), .status = KY_STATUS_ENTRY_NOT_FOUND,
         .writes = {item.is(end)}},
        {CALL(utils_qmap_key_exists(&map, UINT64_MAX, item)), .status = KY_STATUS_ENTRY_NOT_FOUND,
         .writes = {item.is(end)}}, // whose own key is this
        {CALL(utils_qmap_remove(&map, LARGE, item)), .status = KY_STATUS_ENTRY_NOT_FOUND,
         .writes = {item.is(end)}},
        {CALL(utils_qmap_remove(&map, LARGE, item)), .writes = {item.is(&own.map_item)},
         .before = insert, .after = expect_gone},
        {CALL(utils_db_qmap_item_ins(LARGE, &map, &own.map_item)), .after = remove},
        {CALL(utils_db_qmap_item_ins(5, &map, &own.map_item)),
         .status = KY_STATUS_ENTRY_ALREADY_EXISTS},
        {CALL(utils_db_qmap_item_ins(5, &map, five)), .status = KY_STATUS_ENTRY_ALREADY_EXISTS},
        {CALL(utils_qmap_is_empty(&none))},
        {CALL(utils_db_qmap_del(&none, &pool, record_of_item, pool_item_of_record))},
        {CALL(utils_qmap_is_empty(&map)), .status = KY_STATUS_DB_NOT_EMPTY},
    });
}

TEST_F(DatabaseTest, Records)
{
    Out<void*> record;
    void* added = nullptr;
    const auto add_large = [&] { ASSERT_EQ(add(LARGE, &added), KY_STATUS_SUCCESS); };
    const auto del_large = [&] { ASSERT_EQ(del(LARGE, nullptr), KY_STATUS_SUCCESS); };
    const auto put_large = [&] { cl_qpool_put(&pool, pool_item_of_record(added)); };
    const auto expect_it_is_filed = [&] {
        EXPECT_EQ(cl_qmap_get(&map, LARGE), item_of_record(record.get()));
        del_large();
    };
    const auto put_record = [&] {
        EXPECT_EQ(record.get(), added);
        put_large();
    };
    expect({
        {CALL(utils_db_qmap_item_get(5, &map, record_of_item, record)),
         .writes = {record.is(filed)}},
        {CALL(utils_db_qmap_item_get(5, &map, record_of_item, nullptr))},
        {CALL(utils_db_qmap_item_get(5, &map, nullptr, record))},
        {CALL(utils_db_qmap_item_get(LARGE, &map, record_of_item, record)),
         .status = KY_STATUS_ENTRY_NOT_FOUND},
        {CALL(utils_db_qmap_item_get(LARGE, &map, nullptr, record)),
         .status = KY_STATUS_ENTRY_NOT_FOUND},
        {CALL(ADD(LARGE, &pool, record)), .writes = {record.is_written()},
         .after = expect_it_is_filed},
        {CALL(ADD(LARGE, &pool, nullptr)), .after = del_large},
        {CALL(ADD(5, &pool, record)), .status = KY_STATUS_ENTRY_ALREADY_EXISTS,
         .writes = {record.is(filed)}},
        {CALL(ADD(5, &pool, nullptr)), .status = KY_STATUS_ENTRY_ALREADY_EXISTS},
        {CALL(ADD(5, &empty, record)), .status = KY_STATUS_ENTRY_ALREADY_EXISTS,
         .writes = {record.is(filed)}},
        {CALL(ADD(LARGE, &empty, record)), .status = KY_STATUS_NO_RESOURCES, .allocations = 0},
        {CALL(DEL(LARGE, pool_item_of_record, record)), .writes = {record.is_written()},
         .before = add_large, .after = [&] { EXPECT_EQ(record.get(), added); }},
        {CALL(DEL(LARGE, pool_item_of_record, nullptr)), .before = add_large},
        {CALL(DEL(LARGE, nullptr, record)), .writes = {record.is_written()}, .before = add_large,
         .after = put_record},
        {CALL(utils_db_qmap_item_del(LARGE, &map, &pool, nullptr, pool_item_of_record, record)),
         .before = add_large, .after = put_large},
        {CALL(DEL(LARGE, pool_item_of_record, record)), .status = KY_STATUS_ENTRY_NOT_FOUND},
    });
    cl_qmap_t other;
    cl_qmap_init(&other);
    std::vector<uint64_t> keys;
    static std::vector<uint64_t>* const dropped = &keys;
    const auto fill = [&] {
        for (const uint64_t key : {3U, 1U, 2U}) {
            cl_pool_item_t* const item = cl_qpool_get(&pool);
            cl_qmap_insert(&other, key, item_of_record(record_of_pool_item(item)));
        }
    };
    const utils_map_item_to_record_t noted = [](cl_map_item_t* item) {
        dropped->push_back(item->key);
        return record_of_item(item);
    };
    expect(
        {CALL(utils_db_qmap_del(&other, &pool, noted, pool_item_of_record)), .before = fill,
         .after = [&] {
             EXPECT_EQ(utils_qmap_is_empty(&other), KY_STATUS_SUCCESS);
             EXPECT_EQ(std::exchange(keys, {}), (std::vector<uint64_t>{1, 2, 3}));
         }});
}

TEST_F(DatabaseTest, Pools)
{
    Out<cl_pool_item_t*> item;
    Out<cl_qmap_t> new_map;
    Out<cl_qpool_t> new_pool;
    const auto put = [&] { cl_qpool_put(&pool, item.get()); };
    const auto destroy = [&] {
        EXPECT_EQ(last_request() / 70000, 3U);
        for (int i = 0; i < 5; i++) {
            EXPECT_NE(cl_qpool_get(new_pool), nullptr);
        }
        EXPECT_EQ(last_request() / 70000, 1U);
        EXPECT_EQ(cl_qpool_get(new_pool), nullptr);
        cl_qpool_destroy(new_pool);
    };
    const auto destroy_large = [&] {
        fail_allocations_after(0);
        EXPECT_EQ(cl_qpool_get(new_pool), nullptr);
        fail_allocations_after(-1);
        EXPECT_EQ(last_request() / 70000 == 0x80000001, sizeof(size_t) > 4); // attempted growth
        cl_qpool_destroy(new_pool);
    };
    const std::string name(200, 'x');
    const Log made = notice("Init new DB (Min: 3, Max: 5, Grow: 1)\n");
    const Log large = notice("Init " + name + " DB (Min: 0, Max: 4294967295, Grow: 2147483649)\n");
    const Log full = error("Init failure of " + name + " DB\n");
    expect({
        {CALL(utils_qpool_get(item, &pool)), .writes = {item.is_written()}, .after = put},
        {CALL(utils_qpool_get(item, &empty)), .status = KY_STATUS_NO_RESOURCES,
         .writes = {item.is(nullptr)}, .allocations = 0},
        {CALL(utils_qpool_init(new_pool, 3, 5, 1, 70000, "new")), .log = made,
         .writes = {new_pool.is_written()}, .after = destroy},
        {CALL(utils_qpool_init(new_pool, 1, 0, 0, 70000, "new")), // no maximum
         .log = notice("Init new DB (Min: 1, Max: 0, Grow: 0)\n"),
         .writes = {new_pool.is_written()}, .after = [&] { cl_qpool_destroy(new_pool); }},
        {CALL(utils_qpool_init(new_pool, 3, 5, 1, 70000, name.c_str())),
         .status = KY_STATUS_NO_MEMORY, .log = full, .allocations = 0},
        {CALL(utils_qpool_init(new_pool, 6, 5, 1, 70000, name.c_str())),
         .status = KY_STATUS_NO_MEMORY, .log = full},
        {CALL(utils_qpool_init(new_pool, 0, ~0U, 0x80000001, 70000, name.c_str())), .log = large,
         .writes = {new_pool.is_written()}, .after = destroy_large},
        {CALL(utils_qpool_qmap_init(new_pool, new_map, 0, ~0U, 0x80000001, 70000, name.c_str())),
         .log = large, .writes = {new_pool.is_written(), new_map.is_written()},
         .after = destroy_large},
        {CALL(utils_qpool_qmap_init(new_pool, new_map, 3, 5, 1, 70000, "new")), .log = made,
         .writes = {new_pool.is_written(), new_map.is_written()}, .after = destroy},
        {CALL(utils_qpool_qmap_init(new_pool, new_map, 3, 5, 1, 70000, name.c_str())),
         .status = KY_STATUS_NO_MEMORY, .log = full, .allocations = 0},
    });
}

} // namespace
