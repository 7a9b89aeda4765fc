// Thread-safe functions, called by eight threads while verbosity, settings and the trace flag
// change. The thread sanitizer detects the races that this test cannot.
#include "contract.h"
#include "record.h"
#include "tools.h"

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>
#include <ky_values.h>

namespace {

constexpr uint32_t ROUNDS = 1000;

const Module module = {"UTILS", "utils.cpp", Traces::none};

struct ThreadsTest : ContractTest {
    ThreadsTest() : ContractTest(module) {}
};

void change_what_all_read(uint32_t level)
{
    KY_STORE(g_ky_log_module_func_enable, level & 1);
    EXPECT_EQ(utils_log_verbosity_level_set(level), KY_STATUS_SUCCESS);
    EXPECT_EQ(ky_router_utils_log_verbosity_set(level), KY_STATUS_SUCCESS);
    EXPECT_EQ(port_type_validate_log_verbosity_level_set(level), KY_STATUS_SUCCESS);
    EXPECT_EQ(adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level), KY_STATUS_SUCCESS);
    EXPECT_EQ(adviser_log_verbosity_level(KY_ACCESS_CMD_GET, &level), KY_STATUS_SUCCESS);
    EXPECT_LE(level, 8U);
    EXPECT_EQ(utils_use_xm_set(level), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_use_xm_get(&level), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_boot_mode_set(level % 6), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_boot_mode_get(&level), KY_STATUS_SUCCESS);
    EXPECT_LT(level, 6U);
}

void take_and_give_back(uint32_t size)
{
    void* block = nullptr;
    void* array = nullptr;
    const uint32_t type = 1 + size % KY_MEM_TYPE_TELEMETRY;
    EXPECT_EQ(utils_memory_get(&block, size, type), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_clr_memory_get(&array, size, 3, type), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_memory_print_summary(KY_MEM_TYPE_ALL), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_memory_dbg_dump(nullptr), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_memory_put(array, type), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_memory_put(block, type), KY_STATUS_SUCCESS);
}

/* In a database of its own. */
void file_and_drop(cl_qpool_t* pool, cl_qmap_t* map, uint64_t key)
{
    EXPECT_EQ(
        utils_db_qmap_item_add(
            key, map, pool, record_of_item, record_of_pool_item, item_of_record, nullptr),
        KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_db_qmap_item_get(key, map, record_of_item, nullptr), KY_STATUS_SUCCESS);
    EXPECT_EQ(
        utils_db_qmap_item_del(key, map, pool, record_of_item, pool_item_of_record, nullptr),
        KY_STATUS_SUCCESS);
}

void check_and_name(uint32_t value)
{
    utils_ky_log_enter(__func__);
    EXPECT_EQ(utils_check_pointer(&value, "value"), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_check_array_length(0, "array"), KY_STATUS_PARAM_EXCEEDS_RANGE);
    EXPECT_EQ(utils_check_swid(static_cast<uint8_t>(value % 8)), KY_STATUS_SUCCESS);
    EXPECT_EQ(utils_check_msg_size(0, value), KY_STATUS_MESSAGE_SIZE_ZERO);
    EXPECT_STREQ(ky_status_str(KY_STATUS_TIMEOUT), "TIMEOUT");
    EXPECT_STREQ(ky_host_ifc_trap_id_str(value + 628), "Unknown");
    EXPECT_EQ(is_port_type_valid(KY_PORT_ROW_VLAN_PORTS_SET, 0x10000000 + value), 1U);
    EXPECT_EQ(is_port_type_valid(KY_PORT_ROW_VLAN_PORTS_SET, 0x40000000 + value), 0U);
    EXPECT_EQ(utils_ky_log_exit(KY_STATUS_PARAM_ERROR, __func__), KY_STATUS_PARAM_ERROR);
}

TEST_F(ThreadsTest, ConcurrentCallsAreSafe)
{
    const ky_mc_route_attr_t lpm = {0, 1, 0, KY_ROUTER_PRIO_TYPE_LPM, 0, 0, 0, 0, 0};
    const ky_mc_route_data_t data = {};
    const std::string before = state();
    in_threads(8, [&](uint32_t thread) {
        const uint32_t mask = ~(2U << thread); // is not contiguous
        const ky_mc_route_key_t ipv4 = {{1, {}}, {1, {.ipv4 = {0xE0000000, mask}}}};
        const ky_mc_route_key_t ipv6 = {{2, {}}, {2, {.ipv6 = {{0xFF000000}, {mask}}}}};
        cl_qpool_t pool;
        cl_qmap_t map;
        EXPECT_EQ(
            utils_qpool_qmap_init(&pool, &map, 1, 1, 0, sizeof(Object), "own"), KY_STATUS_SUCCESS);
        for (uint32_t i = 0; i < ROUNDS; i++) {
            if (i % 8 == 0) {
                change_what_all_read((thread + i / 8) % 9);
            }
            take_and_give_back(i);
            check_and_name(i);
            file_and_drop(&pool, &map, i);
            for (const ky_mc_route_key_t* key : {&ipv4, &ipv6}) {
                EXPECT_EQ(
                    ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_ADD, 0, key, &lpm, &data),
                    KY_STATUS_PARAM_ERROR);
                EXPECT_EQ(
                    ky_router_utils_validate_mc_route_get(
                        KY_ACCESS_CMD_GET, 0, key, nullptr, nullptr, &i),
                    i == 0 ? KY_STATUS_PARAM_ERROR : KY_STATUS_SUCCESS);
            }
        }
        cl_qpool_destroy(&pool);
    });
    set_verbosity_and_flag(0, 0);
    utils_use_xm_set(0);
    utils_boot_mode_set(0);
    EXPECT_EQ(state(), before); // counts are exact
}

} // namespace
