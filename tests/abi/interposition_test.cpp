// A program that is not position-independent: the linker copies the library's table and lock into
// it, and both share these copies.
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

TEST(InterpositionTest, TheTableIsOneObject)
{
    EXPECT_EQ(is_port_type_valid(1, 0), 1U);
    port_type_validation_table[1].allowed_port_types = 0;
    EXPECT_EQ(is_port_type_valid(1, 0), 0U);
}

TEST(InterpositionTest, TheLockIsOneObject)
{
    std::atomic<bool> is_done = false;
    cl_spinlock_acquire(&utils_mem_type_count_lock);
    std::thread other([&] {
        void* block = nullptr;
        utils_memory_get(&block, 1, 1);
        is_done = true;
        utils_memory_put(block, 1);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(is_done); // blocked by the program's lock
    cl_spinlock_release(&utils_mem_type_count_lock);
    other.join();
}

} // namespace
