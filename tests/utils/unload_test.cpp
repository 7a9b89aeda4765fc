// The library is loaded, used and unloaded repeatedly.
#include <ky_adviser.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <malloc.h>

namespace {

constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;
uint32_t calls;

ky_status_t count(adviser_event_t, void*)
{
    calls++;
    return GOOD;
}

#define FIND(library, function) reinterpret_cast<decltype(&(function))>(dlsym(library, #function))

TEST(UnloadTest, NothingIsLeftBehind)
{
    constexpr uint32_t WARM_UP = 50; // until malloc's and the loader's caches are full
    constexpr uint32_t LOADS = 100;
    size_t before = 0;
    for (uint32_t loads = 1; loads <= LOADS; loads++) {
        void* library = dlopen(LIBRARY, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr);
        uint32_t value = 1; // errors only
        EXPECT_EQ(FIND(library, adviser_log_verbosity_level)(KY_ACCESS_CMD_SET, &value), GOOD);
        EXPECT_EQ(FIND(library, utils_use_xm_get)(&value), GOOD);
        EXPECT_EQ(value, 0U); // as at the first load
        EXPECT_EQ(FIND(library, utils_use_xm_set)(1), GOOD);
        void* block = nullptr;
        EXPECT_EQ(FIND(library, utils_memory_get)(&block, 100, 1), GOOD);
        EXPECT_EQ(FIND(library, utils_memory_put)(block, 1), GOOD);
        EXPECT_EQ(FIND(library, adviser_init)(), GOOD);
        const auto add = FIND(library, adviser_register_event);
        EXPECT_EQ(add(KY_ACCESS_CMD_ADD, ADVISER_EVENT_FID_ADDED, count), GOOD);
        EXPECT_EQ(FIND(library, adviser_process_event)(ADVISER_EVENT_FID_ADDED, nullptr), GOOD);
        EXPECT_EQ(FIND(library, adviser_deinit)(), GOOD);
        EXPECT_EQ(dlclose(library), 0);
        EXPECT_EQ(dlopen(LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
        ASSERT_EQ(calls, loads);
        before = loads == WARM_UP ? mallinfo2().uordblks : before;
    }
    // The smallest block takes four times as much.
    EXPECT_LT(mallinfo2().uordblks, before + (LOADS - WARM_UP) * sizeof(void*));
}

} // namespace
