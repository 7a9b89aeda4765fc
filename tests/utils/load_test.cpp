// The state at load, in a process that has set nothing.
#include "recorder.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <gtest/gtest.h>

TEST(LoadTest, SettingsAreZeroAndModulesSpeakButDoNotTrace)
{
    KY_STORE(g_ky_log_module_func_enable, 1);
    uint32_t value = 77;
    EXPECT_EQ(utils_boot_mode_get(&value), KY_STATUS_SUCCESS);
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(utils_use_xm_get(&value), KY_STATUS_SUCCESS);
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(adviser_log_verbosity_level(KY_ACCESS_CMD_GET, &value), KY_STATUS_SUCCESS);
    EXPECT_EQ(value, KY_LOG_LEVEL_DEFAULT);
    EXPECT_EQ(take_log(), Log{});
    // The lock is a free mutex and the state of an initialised object.
    const std::string mutex(
        reinterpret_cast<const char*>(&utils_mem_type_count_lock), sizeof(pthread_mutex_t));
    EXPECT_EQ(mutex, std::string(sizeof(pthread_mutex_t), '\0'));
    EXPECT_EQ(utils_mem_type_count_lock.state, 2U);

    EXPECT_EQ(utils_check_mc_id(0), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_EQ(is_port_type_valid(0, 0), 0U);
    EXPECT_EQ(
        ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_ADD, 0, nullptr, nullptr, nullptr),
        KY_STATUS_PARAM_NULL);
    cl_qpool_t pool;
    EXPECT_EQ(utils_qpool_init(&pool, 1, 1, 0, 64, "test"), KY_STATUS_SUCCESS); // logs a notice
    cl_qpool_destroy(&pool);
    EXPECT_EQ(take_log().size(), 5U);
}
