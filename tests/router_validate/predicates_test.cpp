// The predicates over addresses and masks, beside a second formulation of each that goes bit by
// bit. They are private: the source is compiled into this test.
#include "../../router_validate/ky_router_utils_validate.cpp" // NOLINT(bugprone-suspicious-include)

#include "tools.h"

#include <array>
#include <atomic>
#include <bit>
#include <memory>

namespace {

using Words = std::array<uint32_t, 4>;
using KeyWords = std::array<uint32_t, sizeof(ky_mc_route_key_t) / sizeof(uint32_t)>;

/* The bits of one or four words as text, the most significant one first. */
template <typename Range> std::string bits_of(const Range& words)
{
    std::string bits;
    for (const uint32_t word : words) {
        for (int i = 31; i >= 0; i--) {
            bits += (word >> i & 1) != 0 ? '1' : '0';
        }
    }
    return bits;
}

bool bits_are_contiguous(const std::string& mask)
{
    return mask.find("01") == std::string::npos;
}

bool bits_are_covered(const std::string& addr, const std::string& mask)
{
    for (size_t i = 0; i < addr.size(); i++) {
        if (addr[i] == '1' && mask[i] == '0') {
            return false;
        }
    }
    return true;
}

std::string addr_bits(const ky_ip_prefix_t& prefix)
{
    return prefix.version == 1 ? bits_of(Words{prefix.prefix.ipv4.addr}).substr(0, 32)
                               : bits_of(prefix.prefix.ipv6.addr);
}

std::string mask_bits(const ky_ip_prefix_t& prefix)
{
    return prefix.version == 1 ? bits_of(Words{prefix.prefix.ipv4.mask}).substr(0, 32)
                               : bits_of(prefix.prefix.ipv6.mask);
}

/* What a key check returns, by the bits. */
ky_status_t judged_by_bits(const ky_mc_route_key_t& key)
{
    const auto& [source, group] = key;
    if (group.version > 3 || source.version > 3) {
        return KY_STATUS_PARAM_EXCEEDS_RANGE;
    }
    if (group.version != source.version) {
        return KY_STATUS_PARAM_ERROR;
    }
    const std::string addr = addr_bits(group);
    const std::string mask = mask_bits(group);
    const std::string range = group.version == 1 ? "1110" : "11111111";
    const bool in_range = addr.starts_with(range);
    const bool is_any = (addr + mask).find('1') == std::string::npos;
    const bool is_broadcast = group.version == 1 && addr.find('0') == std::string::npos;
    if (!in_range && !is_any && !is_broadcast) {
        return KY_STATUS_PARAM_EXCEEDS_RANGE;
    }
    if (!bits_are_covered(addr_bits(source), mask_bits(source)) ||
        !bits_are_contiguous(mask_bits(source))) {
        return KY_STATUS_PARAM_ERROR;
    }
    const bool has_version = group.version == 1 || group.version == 2;
    const bool mask_is_valid = has_version && in_range &&
                               mask.starts_with(std::string(range.size(), '1')) &&
                               bits_are_covered(addr, mask);
    return is_any || mask_is_valid ? KY_STATUS_SUCCESS : KY_STATUS_PARAM_ERROR;
}

/* A prefix, often right and often wrong by a bit. */
ky_ip_prefix_t make(Random& random, uint32_t version, bool is_group)
{
    Words mask = {};
    const uint32_t length = random.below(4) == 0 ? (is_group ? 4 : 0) : random.below(129);
    for (uint32_t bit = 0; bit < length; bit++) {
        mask[bit / 32] |= 0x80000000U >> bit % 32;
    }
    Words addr = {};
    for (size_t i = 0; i < 4; i++) {
        addr[i] = static_cast<uint32_t>(random.any()) & mask[i];
    }
    if (is_group && random.below(8) != 0) {
        const uint32_t range = version == 1 ? 0xe0000000 : 0xff000000;
        const uint32_t range_mask = version == 1 ? 0xf0000000 : 0xff000000;
        addr[0] = (addr[0] & ~range_mask) | range;
    }
    if (random.below(16) == 0) {
        addr[0] = 0xffffffff;
    }
    if (random.below(8) == 0) {
        addr = mask = {};
    }
    for (Words* words : {&addr, &mask}) {
        if (random.below(4) == 0) {
            (*words)[random.below(4)] ^= 1U << random.below(32);
        }
    }
    ky_ip_prefix_t prefix;
    memset(&prefix, 0xa5, sizeof prefix); // an IPv4 prefix has anything behind it
    prefix.version = version;
    if (version == 1) {
        prefix.prefix.ipv4 = {addr[0], mask[0]};
    } else {
        memcpy(prefix.prefix.ipv6.addr, addr.data(), sizeof addr);
        memcpy(prefix.prefix.ipv6.mask, mask.data(), sizeof mask);
    }
    return prefix;
}

TEST(PredicatesTest, RandomKeysAreJudgedAsByTheirBits)
{
    Random random;
    ky_router_utils_log_verbosity_set(0);
    int passed = 0;
    constexpr int rounds = 100000;
    for (int i = 0; i < rounds; i++) {
        const uint32_t version = random.below(8) == 0 ? random.below(5) : 1 + random.below(2);
        const uint32_t other = random.below(32) == 0 ? random.below(5) : version;
        const ky_mc_route_key_t key = {make(random, version, false), make(random, other, true)};
        const auto before = std::bit_cast<KeyWords>(key);
        const ky_status_t status =
            ky_router_utils_validate_mc_egress_rif_get(0, &key, nullptr, nullptr);
        ASSERT_EQ(status, judged_by_bits(key))
            << "versions " << version << " and " << other << "\nsource "
            << addr_bits(key.source_addr) << "\n  mask " << mask_bits(key.source_addr)
            << "\n group " << addr_bits(key.mc_group_addr) << "\n  mask "
            << mask_bits(key.mc_group_addr);
        ASSERT_EQ(std::bit_cast<KeyWords>(key), before);
        passed += status == KY_STATUS_SUCCESS ? 1 : 0;
    }
    EXPECT_GT(passed, rounds / 10);
    EXPECT_LT(passed, rounds * 9 / 10);
    ky_router_utils_log_verbosity_set(KY_LOG_LEVEL_DEFAULT);
}

TEST(PredicatesTest, EveryIpv6MaskThatIsContiguousOrOffByABit)
{
    for (uint32_t length = 0; length <= 128; length++) {
        for (uint32_t flipped = 0; flipped <= 128; flipped++) {
            Words words = {};
            for (uint32_t bit = 0; bit < 128; bit++) {
                if ((bit < length) != (bit == flipped)) {
                    words[bit / 32] |= 0x80000000U >> bit % 32;
                }
            }
            // At the end of a block, where a read past the words does not go unseen.
            const auto mask = std::make_unique<uint32_t[]>(4);
            memcpy(mask.get(), words.data(), sizeof words);
            const auto& four = *reinterpret_cast<const uint32_t(*)[4]>(mask.get());
            EXPECT_EQ(__is_ipv6_mask_contiguous(four), bits_are_contiguous(bits_of(words)) ? 1 : 0)
                << length << " " << flipped;
        }
    }
}

TEST(PredicatesTest, NothingIsNotAPrefix)
{
    PrefixText text = {'x', '\0'};
    EXPECT_STREQ(__prefix_addr_to_str(nullptr, text), "NULL prefix");
    EXPECT_STREQ(__prefix_mask_to_str(nullptr, text), "NULL prefix");
    EXPECT_STREQ(text, "x");
    EXPECT_EQ(__is_mc_prefix_valid(nullptr), 0);
    EXPECT_EQ(__is_ipv4_mc_prefix_valid(nullptr), 0);
    EXPECT_EQ(__is_ipv6_mc_prefix_valid(nullptr), 0);
    // On their own the two rules judge the range as well.
    ky_ip_prefix_t prefix = {};
    EXPECT_EQ(__is_ipv4_mc_prefix_valid(&prefix), 0);
    EXPECT_EQ(__is_ipv6_mc_prefix_valid(&prefix), 0);
}

/* All of them; half a minute where nothing is optimised. */
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
            const bool is = __is_ipv4_mask_contiguous(mask) == 1;
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
