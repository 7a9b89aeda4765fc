// Private predicates that calls of the validators do not reach, or too seldom. The source is
// compiled into this test.
#include "../../router_validate/ky_router_utils_validate.cpp" // NOLINT(bugprone-suspicious-include)

#include <gtest/gtest.h>

namespace {

TEST(PredicatesTest, NothingIsNotAPrefix)
{
    PrefixText text = {'x', '\0'};
    EXPECT_STREQ(__prefix_addr_to_str(nullptr, text.data()), "NULL prefix");
    EXPECT_STREQ(__prefix_mask_to_str(nullptr, text.data()), "NULL prefix");
    EXPECT_STREQ(text.data(), "x");
    EXPECT_EQ(__is_mc_prefix_valid(nullptr), 0);
    EXPECT_EQ(__is_ipv4_mc_prefix_valid(nullptr), 0);
    EXPECT_EQ(__is_ipv6_mc_prefix_valid(nullptr), 0);
    // Called alone, both predicates check the range too.
    ky_ip_prefix_t prefix = {};
    EXPECT_EQ(__is_ipv4_mc_prefix_valid(&prefix), 0);
    EXPECT_EQ(__is_ipv6_mc_prefix_valid(&prefix), 0);
}

} // namespace
