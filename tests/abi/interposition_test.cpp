// A program that is not position-independent: the linker copies the library's table and lock into
// it, and both share these copies.
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

namespace {

cl_spinlock_t* acquired;

TEST(InterpositionTest, TheTableIsOneObject)
{
    EXPECT_EQ(is_port_type_valid(1, 0), 1U);
    port_type_validation_table[1].allowed_port_types = 0;
    EXPECT_EQ(is_port_type_valid(1, 0), 0U);
}

TEST(InterpositionTest, TheLockIsOneObject)
{
    void* block = nullptr;
    EXPECT_EQ(utils_memory_get(&block, 1, 1), KY_STATUS_SUCCESS);
    EXPECT_EQ(acquired, &utils_mem_type_count_lock);
    EXPECT_EQ(utils_memory_put(block, 1), KY_STATUS_SUCCESS);
}

} // namespace

void cl_spinlock_acquire(cl_spinlock_t* lock)
{
    acquired = lock;
    pthread_mutex_lock(&lock->mutex);
}
