// Memory accounting compared with a reference model: blocks allocated and put, under their own and
// under other types, with and without failing allocations.
#include "allocation.h"
#include "fuzz.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace {

constexpr uint32_t TYPES = 18; // 0, which is invalid, and 1 to 17
constexpr ky_status_t RANGE = KY_STATUS_PARAM_EXCEEDS_RANGE;

std::array<uint64_t, TYPES> dumped;

struct Block {
    void* memory;
    uint32_t size;
    uint32_t type;
};

class Accounts {
  public:
    explicit Accounts(Input& input) : input_(input), verbosity_(choose_verbosity(input)) {}

    void take()
    {
        const uint32_t type = any_type();
        const bool is_array = input_.once_in(2);
        const uint32_t count = is_array ? any_size() : 1;
        const uint32_t size = any_size();
        const uint64_t bytes = uint64_t{count} * size;
        const bool has_memory = bytes < 100000 && !input_.once_in(16);
        void* const before = this;
        void* block = before;
        fail_allocations_after(has_memory ? -1 : 0);
        const ky_status_t status = is_array ? utils_clr_memory_get(&block, count, size, type)
                                            : utils_memory_get(&block, size, type);
        fail_allocations_after(-1);

        const bool is_type = type >= 1 && type < TYPES;
        const bool fits = bytes <= UINT32_MAX;
        REQUIRE(
            status == (!is_type || !fits ? RANGE
                       : has_memory      ? KY_STATUS_SUCCESS
                                         : KY_STATUS_NO_MEMORY));
        REQUIRE(status == KY_STATUS_SUCCESS || block == (is_type && fits ? nullptr : before));
        REQUIRE(take_errors() == (is_type && !fits && verbosity_ > 0));
        if (status == KY_STATUS_SUCCESS) {
            auto* const octets = static_cast<uint8_t*>(block);
            REQUIRE(!is_array || std::all_of(octets, octets + bytes, [](uint8_t octet) {
                return octet == 0;
            }));
            memset(block, 0xA5, static_cast<size_t>(bytes));
            held_[type] += bytes;
            blocks_.push_back({block, static_cast<uint32_t>(bytes), type});
        }
    }

    void give_back()
    {
        if (blocks_.empty()) {
            return;
        }
        std::swap(blocks_[any_block()], blocks_.back());
        const Block block = blocks_.back();
        const uint32_t type = input_.once_in(2) ? block.type : any_type();
        const bool is_type = type >= 1 && type < TYPES;
        const bool is_held = is_type && block.size <= held_[type];
        REQUIRE(
            utils_memory_put(block.memory, type) == (!is_type  ? RANGE
                                                     : is_held ? KY_STATUS_SUCCESS
                                                               : KY_STATUS_MEMORY_ERROR));
        REQUIRE(take_errors() == (is_type && !is_held && verbosity_ > 0));
        if (is_held) {
            if (void* other = nullptr; type != block.type) { // moves the bytes back to its type
                REQUIRE(utils_memory_get(&other, block.size, type) == KY_STATUS_SUCCESS);
                REQUIRE(utils_memory_put(other, block.type) == KY_STATUS_SUCCESS);
            }
            held_[block.type] -= block.size;
            blocks_.pop_back();
        }
    }

    void report()
    {
        const uint32_t type = any_type();
        REQUIRE(utils_memory_print_summary(type) == (type < TYPES ? KY_STATUS_SUCCESS : RANGE));
        REQUIRE(utils_memory_dbg_dump(nullptr) == KY_STATUS_SUCCESS);
        REQUIRE(take_errors() == 0);
        REQUIRE(dumped == held_);
        REQUIRE(live_blocks() == static_cast<long>(blocks_.size()));
    }

    void settle()
    {
        for (const auto& [memory, size, type] : blocks_) {
            REQUIRE(utils_memory_put(memory, type) == KY_STATUS_SUCCESS);
        }
        blocks_.clear();
        held_ = {};
        report();
    }

  private:
    uint32_t any_type()
    {
        return input_.one_of({1U, 2U, 3U, 16U, 17U, 0U, 18U, input_.any<uint32_t>()});
    }

    size_t any_block()
    {
        return input_.below(blocks_.size());
    }

    uint32_t any_size()
    {
        return input_.one_of(
            {0U, 1U, 3U, 100U, 65535U, 65536U, 65537U, ~0U, input_.any<uint32_t>() % 256,
             input_.any<uint32_t>()});
    }

    Input& input_;
    uint32_t verbosity_;
    std::vector<Block> blocks_;
    std::array<uint64_t, TYPES> held_ = {};
};

} // namespace

void dbg_utils_print_module_header(FILE*, const char*) {}

void dbg_utils_print_table_headline(FILE*, const dbg_utils_column_t*) {}

void dbg_utils_print_table_data_line(FILE*, const dbg_utils_column_t* columns)
{
    dumped[*static_cast<const uint32_t*>(columns[0].value)] =
        *static_cast<const uint64_t*>(columns[2].value);
}

void run(Input& input)
{
    Accounts accounts(input);
    while (!input.is_spent()) {
        const uint32_t act = input.below(8);
        act == 0 ? accounts.report() : act < 4 ? accounts.give_back() : accounts.take();
    }
    accounts.settle();
}
