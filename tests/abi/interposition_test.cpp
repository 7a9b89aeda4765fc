// A process that puts its own functions in front of the library, and shares its objects. It is not
// position-independent, so that the linker copies the table and the lock into the program.
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

static std::string left;

ky_status_t utils_ky_log_exit(ky_status_t status, const char* function_name)
{
    left += std::string(function_name) + " ";
    return static_cast<ky_status_t>(status + 1000);
}

namespace {

TEST(InterpositionTest, FailurePathsLeaveThroughTheExportedSymbol)
{
    EXPECT_EQ(utils_check_mc_id(0), 1014U);
    EXPECT_EQ(utils_check_pointer(nullptr, nullptr), 1012U);
    EXPECT_EQ(utils_check_array_length(0, nullptr), 1014U);
    EXPECT_EQ(utils_use_xm_get(nullptr), 1012U);
    EXPECT_EQ(
        left, "utils_check_mc_id utils_check_pointer utils_check_array_length "
              "utils_check_pointer ");
    left.clear();
    EXPECT_EQ(utils_check_msg_size(0, 0), 15U);
    EXPECT_EQ(utils_check_mc_id(1), 0U);
    EXPECT_EQ(left, "");
}

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
    EXPECT_FALSE(is_done); // the library waits for the program
    cl_spinlock_release(&utils_mem_type_count_lock);
    other.join();
}

} // namespace
