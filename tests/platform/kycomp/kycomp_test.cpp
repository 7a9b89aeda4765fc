// The stand-in for the component library.
#include "tools.h"

#include <complib/cl_memory.h>
#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>
#include <complib/cl_spinlock.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <map>
#include <set>

static std::map<void*, size_t> blocks; // given out by cl_malloc, with their sizes
static int allocations_to_failure = -1;
static std::vector<std::string> reports; // line numbers in them read "L"
static bool has_no_symbols;              // as where there is no memory for them

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): libc's are reserved
char** backtrace_symbols(void* const* frames, int count) noexcept
{
    static const auto real =
        reinterpret_cast<decltype(&backtrace_symbols)>(dlsym(RTLD_NEXT, "backtrace_symbols"));
    return has_no_symbols ? nullptr : real(frames, count);
}

void* cl_malloc(size_t size)
{
    static const auto real = reinterpret_cast<decltype(&cl_malloc)>(dlsym(RTLD_NEXT, "cl_malloc"));
    void* block = allocations_to_failure-- == 0 ? nullptr : real(size);
    if (block != nullptr) {
        blocks[block] = size;
    }
    return block;
}

void cl_free(void* memory)
{
    static const auto real = reinterpret_cast<decltype(&cl_free)>(dlsym(RTLD_NEXT, "cl_free"));
    ASSERT_EQ(blocks.count(memory), 1U);
    memset(memory, 0xee, blocks[memory]); // none of it may be poisoned any more
    blocks.erase(memory);
    real(memory);
}

int ky_log(uint32_t, const char* module, const char* format, ...)
{
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    std::string report = std::string(module) + ": " + text;
    if (const size_t line = report.find('['); strncmp(format, "ASSERT in", 9) == 0) {
        report.replace(line + 1, report.find(']') - line - 1, "L");
    }
    fputs(report.c_str(), stderr);
    reports.push_back(report);
    return 0;
}

namespace {

/* Checks a subtree and returns its height. */
int checked_height(const cl_qmap_t& map, const cl_map_item_t* item)
{
    if (item == &map.end) {
        return 0;
    }
    int heights[2];
    for (int side : {0, 1}) {
        const cl_map_item_t* child = item->child[side];
        heights[side] = checked_height(map, child);
        EXPECT_TRUE(child == &map.end || child->parent == item);
    }
    EXPECT_EQ(item->balance, heights[1] - heights[0]);
    EXPECT_LE(abs(item->balance), 1);
    return 1 + std::max(heights[0], heights[1]);
}

using Model = std::map<uint64_t, cl_map_item_t*>;

/* Compares a map with a model, both ways, and checks its tree. */
void check(const cl_qmap_t& map, const Model& model)
{
    const cl_map_item_t* end = cl_qmap_end(&map);
    ASSERT_EQ(map.count, model.size());
    ASSERT_EQ(cl_is_qmap_empty(&map), model.empty());
    const cl_map_item_t* item = cl_qmap_head(&map);
    const cl_map_item_t* prev = end;
    for (const auto& [key, expected] : model) {
        ASSERT_EQ(item, expected);
        ASSERT_EQ(item->key, key);
        ASSERT_EQ(item->prev, prev);
        ASSERT_EQ(cl_qmap_get(&map, key), item);
        prev = item;
        item = cl_qmap_next(item);
    }
    ASSERT_EQ(item, end);
    ASSERT_EQ(end->prev, prev);
    checked_height(map, end->child[0]);
    ASSERT_EQ(reports, std::vector<std::string>{});
}

class QmapTest : public testing::Test {
  protected:
    void SetUp() override
    {
        cl_qmap_init(&map_);
    }

    /* Inserts an absent key, or removes a present one, in one of two ways; and checks. */
    void toggle(uint64_t key, bool by_key)
    {
        const auto found = model_.find(key);
        if (found == model_.end()) {
            cl_map_item_t* item = model_[key] = new cl_map_item_t;
            memset(item, 0xa5, sizeof *item);
            ASSERT_EQ(cl_qmap_get(&map_, key), cl_qmap_end(&map_));
            ASSERT_EQ(cl_qmap_remove(&map_, key), cl_qmap_end(&map_));
            ASSERT_EQ(cl_qmap_insert(&map_, key, item), item);
        } else {
            cl_map_item_t other = {};
            ASSERT_EQ(cl_qmap_insert(&map_, key, &other), found->second);
            if (by_key) {
                ASSERT_EQ(cl_qmap_remove(&map_, key), found->second);
            } else {
                cl_qmap_remove_item(&map_, found->second);
            }
            delete found->second; // the map is done with it: AddressSanitizer would tell
            model_.erase(found);
        }
        check(map_, model_);
    }

    cl_qmap_t map_;
    Model model_;
};

TEST_F(QmapTest, BehavesAsAnOrderedMapDoes)
{
    Random random;
    for (const uint32_t keys : {8U, 40U, 300U}) {
        for (int step = 0; step < 3000 && !HasFatalFailure(); step++) {
            // Both ends of the range, or all over it.
            const uint64_t key = random.below(keys);
            toggle(keys == 8 ? key - 4 : key * 0x123456789abcdef1, step % 2 == 0);
        }
    }
    while (!model_.empty() && !HasFatalFailure()) {
        toggle(cl_qmap_head(&map_)->key, false);
    }
}

struct Object {
    cl_pool_item_t item;
    char content[32]; // together no multiple of 16
};

int init(cl_qpool_t& pool, size_t min, size_t max, size_t grow, size_t size = sizeof(Object))
{
    return cl_qpool_init(&pool, min, max, grow, size, nullptr, nullptr, nullptr);
}

/* Takes all that a pool has; each object is aligned, and filled with its own pattern. */
std::vector<Object*> take_all(cl_qpool_t& pool)
{
    std::vector<Object*> objects;
    while (cl_pool_item_t* item = objects.size() < 1000 ? cl_qpool_get(&pool) : nullptr) {
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
    constexpr int STEPS = 16; // the last one of 15
    for (int failing = 0; failing <= STEPS; failing++) {
        allocations_to_failure = failing;
        cl_qpool_t pool = {};
        if (failing == 0) {
            EXPECT_NE(init(pool, 16, 255, 16), 0);
            EXPECT_EQ(pool.state, 0U);
            continue;
        }
        ASSERT_EQ(init(pool, 16, 255, 16), 0);
        EXPECT_EQ(blocks.size(), 1U);
        std::vector<Object*> objects = take_all(pool);
        EXPECT_EQ(objects.size(), std::min(failing * 16, 255));
        EXPECT_TRUE(std::is_sorted(objects.begin(), objects.begin() + 16, std::less<>()));
        for (Object* object : objects) {
            cl_qpool_put(&pool, &object->item);
        }
        EXPECT_EQ(take_all(pool).size(), 255U); // the failure left the pool as it was
        EXPECT_EQ(blocks.size(), STEPS);
        cl_qpool_put(&pool, &objects[7]->item);
        EXPECT_EQ(cl_qpool_get(&pool), &objects[7]->item);
        EXPECT_EQ(cl_qpool_get(&pool), nullptr);
        cl_qpool_destroy(&pool);
        EXPECT_TRUE(blocks.empty());
        EXPECT_EQ(pool.state, 0U); // the accessors would report it
    }
    allocations_to_failure = -1;
}

TEST(QpoolTest, JudgesCountsAndSizes)
{
    struct {
        size_t min, max, grow, size;
        int objects; // -1 for a refusal
    } const rows[] = {
        // clang-format off
        {0, 0, 0, 48, 0}, {3, 3, 5, 48, 3}, {3, 7, 0, 48, 3}, {0, 7, 16, 48, 7}, {8, 7, 1, 48, -1},
        {1, 1, 1, sizeof(cl_pool_item_t) - 1, -1}, {0, 1, 1, SIZE_MAX, -1},
        {SIZE_MAX / 16, 0, 0, 16, -1}, {SIZE_MAX / 2, 0, 0, 48, -1},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        cl_qpool_t pool = {};
        const bool made = init(pool, row.min, row.max, row.grow, row.size) == 0;
        ASSERT_EQ(made, row.objects >= 0);
        if (made) {
            EXPECT_EQ(take_all(pool).size(), row.objects);
            cl_qpool_destroy(&pool);
        }
        EXPECT_TRUE(blocks.empty());
    }
}

TEST(QpoolTest, CallsInitializerAndDestructorOncePerObject)
{
    static std::set<void*> living;
    const auto create = [](void* object, const void* limit) {
        const bool full = living.size() == *static_cast<const size_t*>(limit);
        return full || !living.insert(object).second ? 1 : 0;
    };
    const auto destroy = [](void* object, const void*) {
        memset(object, 0, sizeof(Object)); // it may be touched
        EXPECT_EQ(living.erase(object), 1U);
    };
    const size_t limit = 6;
    cl_qpool_t pool;
    ASSERT_EQ(cl_qpool_init(&pool, 4, 0, 4, sizeof(Object), create, destroy, &limit), 0);
    EXPECT_EQ(take_all(pool).size(), 4U); // the second step fails half-way
    EXPECT_EQ(living.size(), 4U);
    cl_qpool_destroy(&pool);
    EXPECT_EQ(living.size() + blocks.size(), 0U);
}

/* Checks the reports of one assertion, and leaves none behind. */
void expect_assertion(const std::string& place)
{
    const size_t count = reports.size() - 2;
    ASSERT_GT(reports.size(), 3U);
    EXPECT_EQ(reports[0], "TRACE_CBUFF: ASSERT in complib/" + place + "\n");
    const std::string start = "TRACE_CBUFF: ASSERT - ";
    EXPECT_EQ(reports[1], start + "Retrieved a list of " + std::to_string(count) + " elements.\n");
    for (size_t i = 0; i < count; i++) {
        EXPECT_TRUE(reports[i + 2].starts_with(start + "Element " + std::to_string(i) + ": "));
        EXPECT_TRUE(reports[i + 2].ends_with("].\n"));
    }
    reports.clear();
}

TEST(AssertDeathTest, AccessorsReportAndGoOn)
{
    cl_qmap_t map = {};
    EXPECT_EQ(cl_qmap_end(&map), &map.end);
    expect_assertion("cl_qmap.h[L]- cl_qmap_end");
    EXPECT_EQ(cl_qmap_head(&map), nullptr);
    expect_assertion("cl_qmap.h[L]- cl_qmap_head");
    EXPECT_EQ(cl_is_qmap_empty(&map), 1);
    expect_assertion("cl_qmap.h[L]- cl_is_qmap_empty");
    cl_qpool_t pool = {};
    EXPECT_EQ(cl_qpool_get(&pool), nullptr);
    expect_assertion("cl_qpool.h[L]- cl_qpool_get");
    cl_qpool_destroy(&pool);
    expect_assertion("cl_qpool.h[L]- cl_qpool_destroy");
    has_no_symbols = true;
    cl_qmap_end(&map);
    has_no_symbols = false;
    EXPECT_EQ(reports.size(), 2U);
    reports.clear();
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    EXPECT_DEATH(exit(cl_qmap_next(nullptr)->balance), "complib/cl_qmap.h.*- cl_qmap_next");
    EXPECT_DEATH(cl_qpool_put(nullptr, nullptr), "complib/cl_qpool.h.*- cl_qpool_put");
}

TEST(SpinlockTest, LetsOneThreadInAtATime)
{
    static cl_spinlock_t lock = {PTHREAD_MUTEX_INITIALIZER, CL_INITIALIZED};
    int inside = 0;
    in_threads(4, [&inside](uint32_t) {
        for (int i = 0; i < 50000; i++) {
            cl_spinlock_acquire(&lock);
            inside++;
            cl_spinlock_release(&lock);
        }
    });
    EXPECT_EQ(inside, 200000);
}

} // namespace
