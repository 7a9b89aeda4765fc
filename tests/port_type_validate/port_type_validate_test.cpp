// The dictionary of port types and its check.
#include "contract.h"

#include <ky_port_type_validate.h>
#include <ky_values.h>

#include <bit>

namespace {

const Module module = {"PORT_TYPE_VALIDATE", "port_type_validate.cpp", Traces::both};

class PortTypeTest : public ContractTest {
  protected:
    PortTypeTest() : ContractTest(module) {}
};

constexpr uint32_t ROW = KY_PORT_ROW_COS_PORT_DEFAULT_PRIO_SET;
constexpr uint32_t LAST = PORT_TYPE_VALIDATION_ROWS - 2;

/* Every row against every type, compared with a second formulation of the rule. */
TEST_F(PortTypeTest, EveryRowJudgesEveryTypeByItsMask)
{
    static const struct {
        uint8_t bit;
        const char* name;
    } types[16] = {{0x01, "Network"}, {0x02, "LAG"},  {0x04, "Vport"}, {0x08, "VLAG"},
                   {0x20, "CPU"},     {0, "N/A"},     {0, "N/A"},      {0, "N/A"},
                   {0x10, "NVE"},     {0, ""},        {0, ""},         {0, "Unknown"},
                   {0, "Unknown"},    {0, "Unknown"}, {0, "Unknown"},  {0, "Unknown"}};
    for (uint32_t row = 1; row <= LAST; row++) {
        for (uint32_t type = 0; type < 16; type++) {
            const auto& [bit, name] = types[type];
            const uint32_t port = type << 28 | (row * 0x01234567 & 0x0fffffff);
            const bool accepted = (port_type_validation_table[row].allowed_port_types & bit) != 0;
            const std::string named = name;
            const std::string reason = bit == 0    ? " is (" + named + ")"
                                       : type == 0 ? " " + named + " is unsupported"
                                                   : "(" + named + ") is unsupported";
            const std::string refused =
                formatted("Port 0x%08X invalid (Port type%s)\n", port, reason.c_str());
            expect(
                {CALL(is_port_type_valid(row, port)), .status = accepted ? 1U : 0U,
                 .log = accepted ? Log{} : error(refused)});
        }
    }
}

TEST_F(PortTypeTest, OnlyTheRowsBetweenTheSentinelsAreAsked)
{
    for (const uint32_t row : boundary_values(1, LAST)) {
        const bool is_row = row >= 1 && row <= LAST;
        const std::string id = std::to_string(std::bit_cast<int32_t>(row));
        const std::string text =
            "enum_id invalid (Enum id " + id + " is not included in port validation dictionary)\n";
        expect(
            {CALL(is_port_type_valid(row, is_row ? 5 : 0x50000005)), .status = is_row ? 1U : 0U,
             .log = is_row ? Log{} : error(text)});
    }
    // The table is read at each call, and its names never.
    auto& row = port_type_validation_table[ROW];
    const auto saved = row;
    row = {nullptr, KY_PORT_TYPE_BIT_VPORT};
    expect({
        {CALL(is_port_type_valid(ROW, 5)), .status = 0,
         .log = error("Port 0x00000005 invalid (Port type Network is unsupported)\n")},
        {CALL(is_port_type_valid(ROW, 0x20000005)), .status = 1},
        {CALL(port_type_validate_log_verbosity_level_set(verbosity))},
    });
    // It is read after the entry trace, whose sink may write the row.
    set_verbosity_and_flag(KY_LOG_LEVEL_MAX, 1);
    at_record = [&] { row.allowed_port_types = KY_PORT_TYPE_BIT_NETWORK; };
    EXPECT_EQ(is_port_type_valid(ROW, 5), 1U);
    EXPECT_EQ(take_log().size(), 2U);
    at_record = nullptr;
    row = saved;
}

} // namespace
