// The dictionary of port types and its check.
#include "recorder.h"

#include <ky_port_type_validate.h>

#include <bit>
#include <map>

namespace {

class PortTypeTest : public RecordedTest {};

Records said(uint32_t mask, const std::string& function, const std::string& text)
{
    return statement(mask, "PORT_TYPE_VALIDATE", "port_type_validate.cpp", function, text);
}

std::string refusal(uint32_t port, const std::string& reason)
{
    char number[16];
    snprintf(number, sizeof number, "0x%08X", port);
    return std::string("Port ") + number + " invalid (Port type" + reason + ")\n";
}

TEST_F(PortTypeTest, DictionaryIsAsItWas)
{
    std::map<int, int> rows_of_mask;
    Fingerprint fingerprint;
    for (const auto& [func_name, allowed_port_types] : port_type_validation_table) {
        ASSERT_NE(func_name, nullptr);
        fingerprint.add(func_name);
        fingerprint.add(std::to_string(allowed_port_types).c_str());
        rows_of_mask[allowed_port_types]++;
    }
    EXPECT_EQ(
        rows_of_mask, (std::map<int, int>{
                          {0x03, 110},
                          {0x01, 22},
                          {0x13, 8},
                          {0x1f, 7},
                          {0x0c, 6},
                          {0x0f, 6},
                          {0x21, 6},
                          {0x02, 3},
                          {0x00, 2},
                          {0x0a, 2},
                          {0x07, 1},
                          {0x10, 1}}));
    EXPECT_EQ(fingerprint.text(), "c8c2d580ed18a210");
}

/* Every row against every type, beside a second formulation of the rule. */
TEST_F(PortTypeTest, EveryRowJudgesEveryTypeByItsMask)
{
    static const struct {
        uint8_t bit;
        const char* name;
    } types[16] = {{0x01, "Network"}, {0x02, "LAG"},  {0x04, "Vport"}, {0x08, "VLAG"},
                   {0x20, "CPU"},     {0, "N/A"},     {0, "N/A"},      {0, "N/A"},
                   {0x10, "NVE"},     {0, ""},        {0, ""},         {0, "Unknown"},
                   {0, "Unknown"},    {0, "Unknown"}, {0, "Unknown"},  {0, "Unknown"}};
    for (uint32_t row = 1; row <= 172; row++) {
        for (uint32_t type = 0; type < 16; type++) {
            const uint32_t port = type << 28 | (row * 0x01234567 & 0x0fffffff);
            SCOPED_TRACE("row " + std::to_string(row) + ", type " + std::to_string(type));
            const std::string name = types[type].name;
            const bool accepted =
                (port_type_validation_table[row].allowed_port_types & types[type].bit) != 0;
            const std::string reason = types[type].bit == 0 ? " is (" + name + ")"
                                       : type == 0          ? " " + name + " is unsupported"
                                                            : "(" + name + ") is unsupported";
            ASSERT_EQ(is_port_type_valid(row, port), accepted ? 1U : 0U);
            ASSERT_EQ(
                take_records(),
                accepted ? Records{} : said(1, "is_port_type_valid", refusal(port, reason)));
        }
    }
}

TEST_F(PortTypeTest, OnlyTheRowsBetweenTheSentinelsAreAsked)
{
    for (const uint32_t row : {0U, 173U, 174U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        EXPECT_EQ(is_port_type_valid(row, 5), 0U);
        EXPECT_RECORDS(said(
            1, "is_port_type_valid",
            "enum_id invalid (Enum id " + std::to_string(std::bit_cast<int32_t>(row)) +
                " is not included in port validation dictionary)\n"));
    }
    EXPECT_EQ(is_port_type_valid(172, 5), 1U);
    // What the table holds when it is asked is what counts, and its names never do.
    auto& row = port_type_validation_table[16];
    const auto saved = row;
    row = {nullptr, 0x04};
    EXPECT_EQ(is_port_type_valid(16, 5), 0U);
    EXPECT_EQ(is_port_type_valid(16, 0x20000005), 1U);
    row = saved;
}

TEST_F(PortTypeTest, TracesAndVerbosity)
{
    const std::string check = "is_port_type_valid";
    const std::string setter = "port_type_validate_log_verbosity_level_set";
    const Records refused = said(1, check, "Port 0x50000000 invalid (Port type is (N/A))\n");

    KY_STORE(g_ky_log_module_func_enable, 1);
    EXPECT_EQ(port_type_validate_log_verbosity_level_set(0xffffffff), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(said(31, setter, setter + " - left \n"));
    is_port_type_valid(16, 0x50000000);
    EXPECT_RECORDS(
        said(31, check, check + " - entered \n") + refused + said(31, check, check + " - left \n"));
    EXPECT_EQ(port_type_validate_log_verbosity_level_set(1), KY_STATUS_SUCCESS);
    EXPECT_RECORDS(said(31, setter, setter + " - entered \n"));
    is_port_type_valid(16, 0x50000000);
    EXPECT_RECORDS(refused);
    EXPECT_EQ(port_type_validate_log_verbosity_level_set(0), KY_STATUS_SUCCESS);
    for (const uint32_t type : {0U, 1U, 5U}) {
        EXPECT_EQ(is_port_type_valid(3, type << 28), 0U);
    }
    EXPECT_EQ(is_port_type_valid(0, 0), 0U);
    EXPECT_SILENCE();
}

} // namespace
