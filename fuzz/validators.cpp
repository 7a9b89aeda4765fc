// The nine validators of multicast calls, given any words: no more is read than a call says, and
// nothing is written. What they answer is not judged here.
#include "fuzz.h"

#include <ky_router_utils_validate.h>

#include <vector>

namespace {

/* A record of any words, in a block of its very size; it stays as it is. */
template <typename Record> class Given {
  public:
    explicit Given(Input& input, size_t count = 1) : words_(count * sizeof(Record) / 4)
    {
        for (uint32_t& word : words_) {
            word = input.one_of(
                {0U, 1U, 2U, 3U, 4U, ~0U, 0xE0000000U, 0xFF000000U, 0xFF00FFFFU,
                 input.any<uint32_t>()});
        }
        words_.shrink_to_fit();
        copy_ = words_;
    }
    Given(const Given&) = delete;
    Given& operator=(const Given&) = delete;
    ~Given()
    {
        REQUIRE(words_ == copy_);
    }
    Record* get()
    {
        return reinterpret_cast<Record*>(words_.data());
    }
    operator Record*()
    {
        return get();
    }

  private:
    std::vector<uint32_t> words_;
    std::vector<uint32_t> copy_;
};

/* What must not be read. */
template <typename Record> Record* unread()
{
    return reinterpret_cast<Record*>(16);
}

} // namespace

void run(Input& input)
{
    choose_verbosity(input);
    const auto cmd = static_cast<ky_access_cmd_t>(input.below(41));
    Given<ky_mc_route_key_t> key(input);
    Given<uint32_t> number(input);
    switch (input.below(4)) {
    case 0: {
        const bool reads_all = cmd == KY_ACCESS_CMD_ADD || cmd == KY_ACCESS_CMD_EDIT;
        Given<ky_mc_route_attr_t> attr(input);
        Given<ky_mc_route_data_t> data(input);
        ky_router_utils_validate_mc_route_set(
            cmd, 0, input.once_in(16) ? nullptr : key.get(),
            reads_all ? attr : unread<ky_mc_route_attr_t>(),
            reads_all ? data : unread<ky_mc_route_data_t>());
        break;
    }
    case 1: {
        const bool is_get = cmd == KY_ACCESS_CMD_GET;
        Given<ky_mc_route_get_filter_t> filter(input);
        ky_router_utils_validate_mc_route_get(
            cmd, 0, is_get ? key : unread<ky_mc_route_key_t>(),
            is_get             ? unread<ky_mc_route_get_filter_t>()
            : input.once_in(4) ? nullptr
                               : filter.get(),
            unread<void>(), cmd == KY_ACCESS_CMD_COUNT ? unread<uint32_t>() : number);
        break;
    }
    case 2: {
        const bool set_reads = cmd != KY_ACCESS_CMD_CREATE && cmd != KY_ACCESS_CMD_DELETE_ALL;
        const bool get_reads = cmd == KY_ACCESS_CMD_GET || cmd == KY_ACCESS_CMD_GET_NEXT;
        const uint32_t count = input.below(6);
        Given<ky_router_vinterface_t> list(input, count);
        ky_router_utils_validate_mc_rpf_group_set(
            cmd, set_reads ? number : unread<uint32_t>(),
            count > 0 ? list : unread<ky_router_vinterface_t>(), count);
        ky_router_utils_validate_mc_rpf_group_get(
            cmd, get_reads ? number : unread<uint32_t>(), unread<void>(), unread<void>());
        break;
    }
    default:
        ky_router_utils_validate_mc_egress_rif_set(cmd, 0, key, unread<void>(), *number);
        ky_router_utils_validate_mc_egress_rif_get(0, key, unread<void>(), unread<void>());
        ky_router_utils_validate_mc_route_activity_get(cmd, 0, key, unread<void>());
        ky_router_utils_validate_mc_route_counter_bind_set(cmd, 0, key, *number);
        ky_router_utils_validate_mc_route_counter_bind_get(0, key, unread<void>());
    }
}
