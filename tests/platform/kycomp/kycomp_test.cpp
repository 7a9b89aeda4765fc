// The stand-in for the component library, as far as the library depends on it.
#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace {

TEST(QpoolTest, ObjectsAreAlignedAndDoNotOverlap)
{
    constexpr size_t SIZE = 40; // no multiple of 16
    cl_qpool_t pool = {};
    ASSERT_EQ(cl_qpool_init(&pool, 3, 8, 3, SIZE, nullptr, nullptr, nullptr), 0);
    std::vector<char*> objects;
    while (auto* object = reinterpret_cast<char*>(cl_qpool_get(&pool))) {
        EXPECT_EQ(reinterpret_cast<uintptr_t>(object) % alignof(std::max_align_t), 0U);
        std::fill_n(object, SIZE, static_cast<char>(objects.size()));
        objects.push_back(object);
    }
    for (size_t i = 0; i < objects.size(); i++) {
        EXPECT_EQ(std::string(objects[i], SIZE), std::string(SIZE, static_cast<char>(i)));
    }
    cl_qpool_destroy(&pool);
    EXPECT_EQ(pool.state, 0U); // the accessors' assertions would report it
}

TEST(QpoolTest, RefusesWhatCannotBe)
{
    const size_t rows[][4] = {
        {8, 7, 1, 48},
        {1, 1, 1, sizeof(cl_pool_item_t) - 1},
        {0, 1, 1, SIZE_MAX},
        {SIZE_MAX / 16, 0, 0, 16},
        {SIZE_MAX / 16 + 2, 0, 0, 16}};
    cl_qpool_t pool = {};
    for (const auto& [min, max, grow, size] : rows) {
        EXPECT_NE(cl_qpool_init(&pool, min, max, grow, size, nullptr, nullptr, nullptr), 0);
    }
}

/* The height of a subtree; checks its balance. */
int height(const cl_qmap_t& map, const cl_map_item_t* item)
{
    if (item == cl_qmap_end(&map)) {
        return 0;
    }
    const int lower = height(map, item->child[0]);
    const int higher = height(map, item->child[1]);
    EXPECT_EQ(item->balance, higher - lower);
    EXPECT_LE(std::abs(item->balance), 1);
    return 1 + std::max(lower, higher);
}

TEST(QmapTest, IsAsAMapUnderRandomInsertsAndRemovals)
{
    cl_qmap_t map;
    cl_qmap_init(&map);
    cl_map_item_t items[64];
    cl_map_item_t surplus;
    std::map<uint64_t, cl_map_item_t*> expected;
    std::mt19937 random; // NOLINT(cert-msc32-c,cert-msc51-cpp): a failure is repeatable
    for (int i = 0; i < 5000 && !HasFailure(); i++) {
        cl_map_item_t* const item = &items[random() % 64];
        const uint64_t key =
            static_cast<uint64_t>(item - items) * 0x0410000000000001; // spans all 64 bits
        const bool is_there = expected.contains(key);
        if (random() % 2 == 0) {
            EXPECT_EQ(cl_qmap_remove(&map, key), is_there ? item : cl_qmap_end(&map));
            expected.erase(key);
        } else {
            EXPECT_EQ(cl_qmap_insert(&map, key, is_there ? &surplus : item), item);
            expected[key] = item;
        }
        const cl_map_item_t* next = cl_qmap_head(&map);
        for (const auto& [expected_key, expected_item] : expected) {
            ASSERT_EQ(next, expected_item);
            ASSERT_EQ(cl_qmap_get(&map, expected_key), expected_item);
            next = cl_qmap_next(next);
        }
        EXPECT_EQ(next, cl_qmap_end(&map));
        height(map, map.end.child[0]);
    }
}

TEST(AssertDeathTest, AccessorsReportAndGoOn)
{
    const cl_qmap_t map = {};
    EXPECT_EXIT(
        _Exit(cl_qmap_head(&map) == nullptr ? 0 : 1), testing::ExitedWithCode(0),
        "TRACE_CBUFF: ASSERT in complib/cl_qmap.h\\[[0-9]+\\]- cl_qmap_head\n"
        ".*TRACE_CBUFF: ASSERT - Retrieved a list of [1-9][0-9]* elements.\n"
        ".*TRACE_CBUFF: ASSERT - Element 0: .*\\].\n");
    EXPECT_DEATH(cl_qpool_put(nullptr, nullptr), "complib/cl_qpool.h.*- cl_qpool_put");
}

TEST(AssertTest, AMapThatIsNotInitialisedIsReportedAndEmpty)
{
    cl_qmap_t map = {};
    cl_map_item_t item = {};
    testing::internal::CaptureStderr();
    EXPECT_EQ(cl_qmap_get(&map, 0), cl_qmap_end(&map));
    EXPECT_EQ(cl_qmap_remove(&map, 0), cl_qmap_end(&map));
    cl_qmap_remove_item(&map, &item);
    EXPECT_EQ(utils_db_qmap_del(&map, nullptr, nullptr, nullptr), KY_STATUS_SUCCESS);
    EXPECT_EQ(map.count, 0U);
    EXPECT_EQ(cl_qmap_insert(&map, 0, &item), &item);
    EXPECT_EQ(cl_qmap_get(&map, 0), &item);
    const std::string report = testing::internal::GetCapturedStderr();
    for (const std::string function :
         {"cl_qmap_get", "cl_qmap_remove_item", "cl_is_qmap_empty", "cl_qmap_insert"}) {
        EXPECT_NE(report.find("- " + function + "\n"), std::string::npos) << report;
    }
}

} // namespace
