// The stand-in for the component library, as far as the library depends on it; the database model
// tests its maps.
#include "allocation.h"

#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>

static std::vector<std::string> reports;

int ky_log(uint32_t, const char* module, const char* format, ...)
{
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    reports.push_back(std::string(module) + ": " + text);
    fputs(reports.back().c_str(), stderr);
    return 0;
}

namespace {

struct Object {
    cl_pool_item_t item;
    char content[32]; // total size is no multiple of 16
};

/* Gets every object of a pool; checks its alignment and fills it with a pattern of its own. */
std::vector<Object*> take_all(cl_qpool_t& pool)
{
    std::vector<Object*> objects;
    while (cl_pool_item_t* item = cl_qpool_get(&pool)) {
        EXPECT_EQ(reinterpret_cast<uintptr_t>(item) % alignof(std::max_align_t), 0U);
        memset(item, static_cast<int>(objects.size() + 1), sizeof(Object));
        objects.push_back(reinterpret_cast<Object*>(item));
    }
    for (size_t i = 0; i < objects.size(); i++) {
        const std::string expected(sizeof(Object), static_cast<char>(i + 1));
        EXPECT_EQ(memcmp(objects[i], expected.data(), sizeof(Object)), 0);
    }
    return objects;
}

TEST(QpoolTest, GrowsStepByStepAndSurvivesEveryAllocationFailure)
{
    constexpr long STEPS = 16; // the last one of 15
    for (long failing = 0; failing <= STEPS; failing++) {
        cl_qpool_t pool = {};
        fail_allocations_after(failing);
        const int refused =
            cl_qpool_init(&pool, 16, 255, 16, sizeof(Object), nullptr, nullptr, nullptr);
        ASSERT_EQ(refused != 0, failing == 0);
        if (refused == 0) {
            const std::vector<Object*> objects = take_all(pool);
            EXPECT_EQ(objects.size(), std::min(failing * 16, 255L));
            fail_allocations_after(-1);
            for (Object* object : objects) {
                cl_qpool_put(&pool, &object->item);
            }
            EXPECT_EQ(take_all(pool).size(), 255U); // a failure leaves the pool unchanged
            EXPECT_EQ(live_blocks(), STEPS);
            cl_qpool_put(&pool, &objects[7]->item);
            EXPECT_EQ(cl_qpool_get(&pool), &objects[7]->item);
            cl_qpool_destroy(&pool);
        }
        EXPECT_EQ(live_blocks(), 0);
        EXPECT_EQ(pool.state, 0U); // the accessors' assertions would report it
    }
    fail_allocations_after(-1);
}

TEST(QpoolTest, RefusesWhatCannotBe)
{
    const struct {
        size_t min, max, grow, size;
    } rows[] = {
        {8, 7, 1, 48},
        {1, 1, 1, sizeof(cl_pool_item_t) - 1},
        {0, 1, 1, SIZE_MAX},
        {SIZE_MAX / 16, 0, 0, 16},
        {SIZE_MAX / 2, 0, 0, 48}};
    for (const auto& [min, max, grow, size] : rows) {
        cl_qpool_t pool = {};
        EXPECT_NE(cl_qpool_init(&pool, min, max, grow, size, nullptr, nullptr, nullptr), 0);
        EXPECT_EQ(live_blocks(), 0);
    }
}

TEST(AssertDeathTest, AccessorsReportAndGoOn)
{
    cl_qmap_t map = {};
    EXPECT_EQ(cl_qmap_head(&map), nullptr);
    ASSERT_GT(reports.size(), 3U);
    const std::string count = std::to_string(reports.size() - 2);
    EXPECT_TRUE(reports[0].starts_with("TRACE_CBUFF: ASSERT in complib/cl_qmap.h["));
    EXPECT_TRUE(reports[0].ends_with("]- cl_qmap_head\n"));
    EXPECT_EQ(reports[1], "TRACE_CBUFF: ASSERT - Retrieved a list of " + count + " elements.\n");
    EXPECT_TRUE(reports[2].starts_with("TRACE_CBUFF: ASSERT - Element 0: "));
    EXPECT_TRUE(reports[2].ends_with("].\n"));
    EXPECT_DEATH(cl_qpool_put(nullptr, nullptr), "complib/cl_qpool.h.*- cl_qpool_put");
}

} // namespace
