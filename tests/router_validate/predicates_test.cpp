// Private predicates that calls of the validators do not reach, or too seldom. The source is
// compiled into this test.
#include "../../router_validate/ky_router_utils_validate.cpp" // NOLINT(bugprone-suspicious-include)

#include "tools.h"

#include <gtest/gtest.h>

#include <atomic>
#include <bit>

namespace {

TEST(PredicatesTest, NothingIsNotAPrefix)
{
    PrefixText text = {'x', '\0'};
    EXPECT_STREQ(__prefix_addr_to_str(nullptr, text), "NULL prefix");
    EXPECT_STREQ(__prefix_mask_to_str(nullptr, text), "NULL prefix");
    EXPECT_STREQ(text, "x");
    EXPECT_EQ(__is_mc_prefix_valid(nullptr), 0);
    EXPECT_EQ(__is_ipv4_mc_prefix_valid(nullptr), 0);
    EXPECT_EQ(__is_ipv6_mc_prefix_valid(nullptr), 0);
    // Called alone, both predicates check the range too.
    ky_ip_prefix_t prefix = {};
    EXPECT_EQ(__is_ipv4_mc_prefix_valid(&prefix), 0);
    EXPECT_EQ(__is_ipv6_mc_prefix_valid(&prefix), 0);
}

/* Half a minute without optimisation. */
TEST(ExhaustiveTest, EveryIpv4Mask)
{
    constexpr uint64_t end = uint64_t{1} << 32;
    const uint32_t parts = std::max(1U, std::thread::hardware_concurrency());
    std::atomic<uint64_t> wrong = 0;
    std::atomic<uint64_t> right = 0;
    in_threads(parts, [&](uint32_t part) {
        uint64_t mismatches = 0;
        uint64_t contiguous = 0;
        for (uint64_t i = end * part / parts; i < end * (part + 1) / parts; i++) {
            const auto mask = static_cast<uint32_t>(i);
            const bool is = is_contiguous(mask);
            mismatches += is != (std::countl_one(mask) == std::popcount(mask)) ? 1 : 0;
            contiguous += is ? 1 : 0;
        }
        wrong += mismatches;
        right += contiguous;
    });
    EXPECT_EQ(wrong, 0U);
    EXPECT_EQ(right, 33U);
}

} // namespace
