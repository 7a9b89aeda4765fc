// The dictionary of port types and its check.
#include "recorder.h"

#include <ky_port_type_validate.h>

#include <bit>
#include <map>

namespace {

class PortTypeTest : public RecordedTest {};

constexpr Module ports = {"PORT_TYPE_VALIDATE", "port_type_validate.cpp"};
const std::string check = "is_port_type_valid";

Records refused(uint32_t port, const std::string& reason)
{
    char text[100];
    snprintf(text, sizeof text, "Port 0x%08X invalid (Port type%s)\n", port, reason.c_str());
    return ports.said(1, check, text);
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
    const std::map<int, int> expected = {{0x03, 110}, {0x01, 22}, {0x13, 8}, {0x1f, 7},
                                         {0x0c, 6},   {0x0f, 6},  {0x21, 6}, {0x02, 3},
                                         {0x00, 2},   {0x0a, 2},  {0x07, 1}, {0x10, 1}};
    EXPECT_EQ(rows_of_mask, expected);
    EXPECT_EQ(fingerprint.value(), 0xc8c2d580ed18a210);
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
            EXPECT_OUTCOME(
                is_port_type_valid(row, port), accepted ? 1U : 0U,
                accepted ? Records{} : refused(port, reason));
        }
    }
}

TEST_F(PortTypeTest, OnlyTheRowsBetweenTheSentinelsAreAsked)
{
    for (const uint32_t row : {0U, 173U, 174U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        const std::string id = std::to_string(std::bit_cast<int32_t>(row));
        const std::string text =
            "enum_id invalid (Enum id " + id + " is not included in port validation dictionary)\n";
        EXPECT_OUTCOME(is_port_type_valid(row, 5), 0U, ports.said(1, check, text));
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
    const std::string setter = "port_type_validate_log_verbosity_level_set";
    const uint32_t port = 0x50000000;
    const Records message = refused(port, " is (N/A)");
    KY_STORE(g_ky_log_module_func_enable, 1);
    EXPECT_OUTCOME(port_type_validate_log_verbosity_level_set(~0U), GOOD, ports.left(setter));
    EXPECT_OUTCOME(is_port_type_valid(16, port), 0U, ports.around(check, message));
    EXPECT_OUTCOME(is_port_type_valid(16, 5), 1U, ports.around(check));
    EXPECT_OUTCOME(port_type_validate_log_verbosity_level_set(1), GOOD, ports.entered(setter));
    EXPECT_OUTCOME(is_port_type_valid(16, port), 0U, message);
    EXPECT_OUTCOME(port_type_validate_log_verbosity_level_set(0), GOOD, {});
    for (const uint32_t type : {0U, 1U, 5U}) {
        EXPECT_EQ(is_port_type_valid(3, type << 28), 0U);
    }
    EXPECT_OUTCOME(is_port_type_valid(0, 0), 0U, {});
}

} // namespace
