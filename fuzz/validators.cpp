// The nine validators of multicast calls, given any words: no more is read than a call says, nothing is
// written, and what fails says so once. Which answer is right is not judged here.
#include "fuzz.h"

#include <ky_router_utils_validate.h>

#include <cstring>
#include <iterator>
#include <memory>
#include <vector>

namespace {

uint32_t word(Input& input)
{
    static const uint32_t words[] = {0, 1, 2, 3, 4, 5, ~0U, 0xE0000000, 0xFF000000, 0xFF00FFFF};
    const uint32_t choice = input.below(std::size(words) + 1);
    return choice < std::size(words) ? words[choice] : input.any<uint32_t>();
}

/* Records of any words, in a block of their very size; they stay as they are. */
template <typename Record> class Given {
  public:
    explicit Given(Input& input, size_t count = 1) : words_(count * sizeof(Record) / 4)
    {
        for (uint32_t& each : words_) {
            each = word(input);
        }
        records_ = std::make_unique<Record[]>(count);
        if (count > 0) {
            memcpy(records_.get(), words_.data(), words_.size() * 4);
        }
    }
    explicit Given(const Record& record)
        : words_(sizeof(Record) / 4), records_(std::make_unique<Record[]>(1))
    {
        records_[0] = record;
        memcpy(words_.data(), &record, sizeof record);
    }
    Given(const Given&) = delete;
    Given& operator=(const Given&) = delete;
    ~Given()
    {
        REQUIRE(words_.empty() || memcmp(records_.get(), words_.data(), words_.size() * 4) == 0);
    }
    Record* get() const
    {
        return records_.get();
    }

  private:
    std::vector<uint32_t> words_;
    std::unique_ptr<Record[]> records_;
};

/* A key that passes, or any. */
Given<ky_mc_route_key_t> key_of(Input& input)
{
    static const ky_mc_route_key_t good = {
        {.version = 1, .prefix = {.ipv4 = {0x0A000000, 0xFF000000}}},
        {.version = 1, .prefix = {.ipv4 = {0xEF010000, 0xFFFF0000}}}};
    if (input.once_in(2)) {
        return Given<ky_mc_route_key_t>(input);
    }
    return Given<ky_mc_route_key_t>(good);
}

/* What must not be read. */
template <typename Record> Record* unread()
{
    return reinterpret_cast<Record*>(16);
}

} // namespace

void run(Input& input)
{
    const uint32_t verbosity = choose_verbosity(input);
    const auto judge = [verbosity](ky_status_t status) { // one message, if it fails
        REQUIRE(take_errors() == (status != KY_STATUS_SUCCESS && verbosity > 0));
    };
    const auto cmd = static_cast<ky_access_cmd_t>(input.below(41));
    const auto key = key_of(input);
    const Given<uint32_t> number(input);
    void* const nothing = unread<void>();
    switch (input.below(4)) {
    case 0: {
        const bool reads_all = cmd == KY_ACCESS_CMD_ADD || cmd == KY_ACCESS_CMD_EDIT;
        const bool has_key = !input.once_in(16);
        const Given<ky_mc_route_attr_t> attr(input);
        const Given<ky_mc_route_data_t> data(input);
        judge(ky_router_utils_validate_mc_route_set(
            cmd, 0, has_key ? key.get() : nullptr,
            reads_all ? attr.get() : unread<ky_mc_route_attr_t>(),
            reads_all ? data.get() : unread<ky_mc_route_data_t>()));
        break;
    }
    case 1: {
        const bool is_get = cmd == KY_ACCESS_CMD_GET;
        const bool has_filter = !input.once_in(4);
        const Given<ky_mc_route_get_filter_t> filter(input);
        judge(ky_router_utils_validate_mc_route_get(
            cmd, 0, is_get ? key.get() : unread<ky_mc_route_key_t>(),
            is_get       ? unread<ky_mc_route_get_filter_t>()
            : has_filter ? filter.get()
                         : nullptr,
            nothing, cmd == KY_ACCESS_CMD_COUNT ? unread<uint32_t>() : number.get()));
        break;
    }
    case 2: {
        const bool set_reads = cmd != KY_ACCESS_CMD_CREATE && cmd != KY_ACCESS_CMD_DELETE_ALL;
        const bool get_reads = cmd == KY_ACCESS_CMD_GET || cmd == KY_ACCESS_CMD_GET_NEXT;
        const uint32_t count = input.below(6);
        const Given<ky_router_vinterface_t> list(input, count);
        judge(ky_router_utils_validate_mc_rpf_group_set(
            cmd, set_reads ? number.get() : unread<uint32_t>(),
            count > 0 ? list.get() : unread<ky_router_vinterface_t>(), count));
        judge(ky_router_utils_validate_mc_rpf_group_get(
            cmd, get_reads ? number.get() : unread<uint32_t>(), nothing, nothing));
        break;
    }
    default:
        judge(
            ky_router_utils_validate_mc_egress_rif_set(cmd, 0, key.get(), nothing, *number.get()));
        judge(ky_router_utils_validate_mc_egress_rif_get(0, key.get(), nothing, nothing));
        judge(ky_router_utils_validate_mc_route_activity_get(cmd, 0, key.get(), nothing));
        judge(ky_router_utils_validate_mc_route_counter_bind_set(cmd, 0, key.get(), *number.get()));
        judge(ky_router_utils_validate_mc_route_counter_bind_get(0, key.get(), nothing));
    }
}
