// A database (one pool, one map) compared with a model, with and without failing allocations.
#include "allocation.h"
#include "fuzz.h"
#include "record.h"

#include <map>

namespace {

constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;
constexpr ky_status_t MISSING = KY_STATUS_ENTRY_NOT_FOUND;
constexpr ky_status_t PRESENT = KY_STATUS_ENTRY_ALREADY_EXISTS;

class Database {
  public:
    Database(Input& input, uint32_t max) : input_(input), max_(max) {}

    void add(uint64_t key)
    {
        const bool has_memory = !input_.once_in(8);
        const long blocks = live_blocks();
        void* record = this;
        fail_allocations_after(has_memory ? -1 : 0);
        const ky_status_t status = utils_db_qmap_item_add(
            key, &map, &pool, record_of_item, record_of_pool_item, item_of_record, &record);
        fail_allocations_after(-1);
        if (records_.contains(key)) {
            REQUIRE(status == PRESENT && record == records_[key] && live_blocks() == blocks);
        } else if (status == GOOD) {
            REQUIRE(records_.size() < max_);
            records_[key] = static_cast<Record*>(record);
            records_[key]->payload = ~key;
        } else {
            REQUIRE(status == KY_STATUS_NO_RESOURCES && record == this);
            REQUIRE(!has_memory || records_.size() == max_);
        }
    }

    void remove(uint64_t key)
    {
        const bool keeps_record = input_.once_in(2);
        void* record = this;
        const ky_status_t status = utils_db_qmap_item_del(
            key, &map, &pool, record_of_item, keeps_record ? nullptr : pool_item_of_record,
            &record);
        REQUIRE(status == (records_.contains(key) ? GOOD : MISSING));
        REQUIRE(status == GOOD || record == this);
        if (status == GOOD) {
            REQUIRE(record == records_[key]);
            records_.erase(key);
            if (keeps_record) { // the caller owns it: inserts it again or puts it back
                auto* const kept = static_cast<Record*>(record);
                REQUIRE(kept->payload == ~key);
                if (input_.once_in(2)) {
                    REQUIRE(utils_db_qmap_item_ins(key, &map, &kept->map_item) == GOOD);
                    records_[key] = kept;
                } else {
                    cl_qpool_put(&pool, pool_item_of_record(kept));
                }
            }
        }
    }

    void look_up(uint64_t key)
    {
        const bool is_there = records_.contains(key);
        cl_map_item_t* item = nullptr;
        REQUIRE(utils_qmap_get(&map, key, &item) == (is_there ? GOOD : MISSING));
        REQUIRE(item == (is_there ? &records_[key]->map_item : cl_qmap_end(&map)));
        REQUIRE(utils_qmap_key_exists(&map, key, nullptr) == (is_there ? GOOD : MISSING));
        REQUIRE(utils_qmap_key_not_exists(&map, key, &item) == (is_there ? PRESENT : GOOD));
        void* record = this;
        REQUIRE(
            utils_db_qmap_item_get(key, &map, record_of_item, &record) ==
            (is_there ? GOOD : MISSING));
        REQUIRE(is_there ? static_cast<Record*>(record)->payload == ~key : record == this);
    }

    void take_out(uint64_t key)
    {
        cl_map_item_t* item = nullptr;
        const bool is_there = records_.contains(key);
        REQUIRE(utils_qmap_remove(&map, key, &item) == (is_there ? GOOD : MISSING));
        if (is_there) {
            REQUIRE(utils_db_qmap_item_ins(key, &map, item) == GOOD);
            REQUIRE(utils_db_qmap_item_ins(key, &map, item) == PRESENT);
        }
    }

    void check() const
    {
        REQUIRE(utils_qmap_is_empty(&map) == (records_.empty() ? GOOD : KY_STATUS_DB_NOT_EMPTY));
        const cl_map_item_t* item = cl_qmap_head(&map);
        for (const auto& [key, record] : records_) {
            REQUIRE(item == &record->map_item);
            item = cl_qmap_next(item);
        }
        REQUIRE(item == cl_qmap_end(&map));
    }

    void clear()
    {
        REQUIRE(utils_db_qmap_del(&map, &pool, record_of_item, pool_item_of_record) == GOOD);
        records_.clear();
        check();
    }

    static inline cl_qpool_t pool;
    static inline cl_qmap_t map;

  private:
    Input& input_;
    uint32_t max_;
    std::map<uint64_t, Record*> records_;
};

} // namespace

void run(Input& input)
{
    const uint32_t verbosity = choose_verbosity(input);
    const uint32_t min = input.below(21);
    const uint32_t max = input.once_in(4) ? 0 : min + input.below(21);
    const uint32_t grow = input.below(8);
    const bool has_memory = input.once_in(2);

    fail_allocations_after(has_memory ? -1 : static_cast<long>(input.below(4)));
    const ky_status_t status = utils_qpool_qmap_init(
        &Database::pool, &Database::map, min, max, grow, sizeof(Object), "fuzzed");
    fail_allocations_after(-1);
    REQUIRE(status == GOOD || (status == KY_STATUS_NO_MEMORY && !has_memory && live_blocks() == 0));
    REQUIRE(take_errors() == (status != GOOD && verbosity > 0));
    if (status != GOOD) {
        return;
    }
    Database database(input, grow == 0 ? min : max == 0 ? UINT32_MAX : max);
    while (!input.is_spent()) {
        const uint64_t key = uint64_t{input.below(31)} * 0x0840000000000001; // spans all 64 bits
        const uint32_t act = input.below(16);
        act == 0  ? database.clear()
        : act < 2 ? database.take_out(key)
        : act < 5 ? database.remove(key)
        : act < 7 ? database.look_up(key)
                  : database.add(key);
    }
    database.check();
    database.clear();
    cl_qpool_destroy(&Database::pool);
    REQUIRE(live_blocks() == 0 && take_errors() == 0);
}
