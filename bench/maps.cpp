// Maps of 16 to a million records with random keys.
#include "bench.h"

#include <algorithm>
#include <ky_utils.h>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

#if PEER_BOOST
#include <boost/intrusive/set.hpp>
#endif
#if PEER_ABSL
#include <absl/container/btree_map.h>
#endif

namespace {

/* As many maps are worked on in turn as make up so many records, so that a run takes its time. */
constexpr size_t RECORDS_MIN = 4096;
constexpr size_t LOOK_UPS = 16384;

// ---- Maps, each with a record type of its own ----

/* The library's functions. */
class Library {
  public:
    struct Record {
        cl_map_item_t item;
        uint64_t payload = 0;
    };
    Library()
    {
        cl_qmap_init(&map_);
    }
    void clear()
    {
        cl_qmap_init(&map_);
    }
    void get_and_insert(uint64_t key, Record& record)
    {
        utils_db_qmap_item_ins(key, &map_, &record.item);
    }
    void insert(uint64_t key, Record& record)
    {
        cl_qmap_insert(&map_, key, &record.item);
    }
    Record* find(uint64_t key)
    {
        cl_map_item_t* item = nullptr;
        utils_qmap_get(&map_, key, &item);
        return reinterpret_cast<Record*>(item);
    }
    void erase(uint64_t key)
    {
        cl_map_item_t* item = nullptr;
        utils_qmap_remove(&map_, key, &item);
    }
    uint64_t walk()
    {
        uint64_t sum = 0;
        for (cl_map_item_t* item = cl_qmap_head(&map_); item != cl_qmap_end(&map_);
             item = cl_qmap_next(item)) {
            sum += reinterpret_cast<Record*>(item)->payload;
        }
        return sum;
    }

  protected:
    cl_qmap_t map_;
};

/* The component library's, without a status. */
class Floor : public Library {
  public:
    void get_and_insert(uint64_t key, Record& record)
    {
        if (cl_qmap_get(&map_, key) == &map_.end) {
            cl_qmap_insert(&map_, key, &record.item);
        }
    }
    Record* find(uint64_t key)
    {
        return reinterpret_cast<Record*>(cl_qmap_get(&map_, key));
    }
    void erase(uint64_t key)
    {
        cl_qmap_remove(&map_, key);
    }
    uint64_t walk()
    {
        uint64_t sum = 0;
        for (cl_map_item_t* item = map_.end.next; item != &map_.end; item = item->next) {
            sum += reinterpret_cast<Record*>(item)->payload;
        }
        return sum;
    }
};

/* Maps of the standard library's kind, which hold the records themselves. */
template <template <typename...> typename Map> class Holding {
  public:
    struct Record {
        uint64_t payload = 0;
    };
    void clear()
    {
        map_.clear();
    }
    void get_and_insert(uint64_t key, Record& record)
    {
        if (map_.find(key) == map_.end()) {
            map_.emplace(key, record);
        }
    }
    void insert(uint64_t key, Record& record)
    {
        map_.emplace(key, record);
    }
    Record* find(uint64_t key)
    {
        return &map_.find(key)->second;
    }
    void erase(uint64_t key)
    {
        map_.erase(key);
    }
    uint64_t walk()
    {
        uint64_t sum = 0;
        for (const auto& [key, record] : map_) {
            sum += record.payload;
        }
        return sum;
    }

  private:
    Map<uint64_t, Record> map_;
};

#if PEER_BOOST
class BoostIntrusive {
  public:
    struct Record : boost::intrusive::set_base_hook<
                        boost::intrusive::link_mode<boost::intrusive::normal_link>> {
        uint64_t key = 0;
        uint64_t payload = 0;
    };
    void clear()
    {
        set_.clear();
    }
    void get_and_insert(uint64_t key, Record& record)
    {
        if (set_.find(key) == set_.end()) {
            insert(key, record);
        }
    }
    void insert(uint64_t key, Record& record)
    {
        record.key = key;
        set_.insert(record);
    }
    Record* find(uint64_t key)
    {
        return &*set_.find(key);
    }
    void erase(uint64_t key)
    {
        set_.erase(key);
    }
    uint64_t walk()
    {
        uint64_t sum = 0;
        for (const Record& record : set_) {
            sum += record.payload;
        }
        return sum;
    }

  private:
    struct KeyOf {
        using type = uint64_t;
        uint64_t operator()(const Record& record) const
        {
            return record.key;
        }
    };
    boost::intrusive::set<Record, boost::intrusive::key_of_value<KeyOf>> set_;
};
#endif

// ---- What is done with them ----

/* Records of one kind, each with its key and the map that it belongs to. */
template <typename Map> class Maps {
  public:
    explicit Maps(size_t count)
        : count_(count), maps_((RECORDS_MIN + count - 1) / count), records_(maps_.size() * count),
          keys_(records_.size()), order_(records_.size()), random_(count)
    {
        std::generate(keys_.begin(), keys_.end(), [this] { return random_(); });
        std::iota(order_.begin(), order_.end(), 0U);
        fill();
    }

    /* Calls a function for every record, one map after the other. */
    template <typename Do> void for_each(Do act)
    {
        for (const uint32_t i : order_) {
            act(maps_[i / count_], keys_[i], records_[i]);
        }
    }

    /* Gives the records of each map an order that no predictor knows. */
    void shuffle()
    {
        const auto count = static_cast<ptrdiff_t>(count_);
        for (auto first = order_.begin(); first != order_.end(); first += count) {
            std::shuffle(first, first + count, random_);
        }
    }

    void clear()
    {
        for (Map& map : maps_) {
            map.clear();
        }
    }

    void fill()
    {
        clear();
        shuffle();
        for_each([](Map& map, uint64_t key, auto& record) { map.insert(key, record); });
    }

    /* Some keys of the first map. */
    std::vector<uint64_t> some_keys()
    {
        std::vector<uint64_t> some(LOOK_UPS);
        std::generate(some.begin(), some.end(), [this] { return keys_[random_() % count_]; });
        return some;
    }

    Map& first()
    {
        return maps_[0];
    }

    uint64_t walk()
    {
        uint64_t sum = 0;
        for (Map& map : maps_) {
            sum += map.walk();
        }
        return sum;
    }

  private:
    size_t count_;
    std::vector<Map> maps_;
    std::vector<typename Map::Record> records_;
    std::vector<uint64_t> keys_;
    std::vector<uint32_t> order_;
    std::mt19937_64 random_;
};

template <typename Map> Maps<Map>& maps_of(size_t count) // made once, since a million take a while
{
    static std::map<size_t, Maps<Map>> made;
    return made.try_emplace(count, count).first->second;
}

template <typename Map> void enter_map(const char* name, size_t count)
{
    const size_t records = (RECORDS_MIN + count - 1) / count * count;
    const auto enter_way = [name, count](const char* operation, size_t times, auto prepare) {
        enter(
            {std::string("map ") + operation + ", " + std::to_string(count) + " keys", name, times,
             [count, prepare] { return prepare(maps_of<Map>(count)); }});
    };
    const auto enter_look_ups = [enter_way](const char* operation, auto look_up) {
        enter_way(operation, LOOK_UPS, [look_up](Maps<Map>& maps) {
            maps.fill();
            auto keys = std::make_shared<std::vector<uint64_t>>();
            return Prepared{
                [&maps, keys, look_up] {
                    uint64_t last = 0;
                    for (const uint64_t key : *keys) {
                        last = look_up(maps.first(), key, last);
                    }
                    benchmark::DoNotOptimize(last);
                },
                [&maps, keys] { *keys = maps.some_keys(); }};
        });
    };
    const auto enter_change = [enter_way,
                               records](const char* operation, auto change, bool filled) {
        enter_way(operation, records, [change, filled](Maps<Map>& maps) {
            return Prepared{
                [&maps, change] { maps.for_each(change); },
                [&maps, filled] {
                    filled ? maps.fill() : maps.clear();
                    maps.shuffle();
                }};
        });
    };

    enter_look_ups("find", [](Map& map, uint64_t key, uint64_t) {
        benchmark::DoNotOptimize(map.find(key));
        return uint64_t{0};
    });
    enter_look_ups("find, each after the last", [](Map& map, uint64_t key, uint64_t last) {
        return map.find(key + last)->payload; // which is 0
    });
    enter_change(
        "get and insert",
        [](Map& map, uint64_t key, auto& record) { map.get_and_insert(key, record); }, false);
    enter_change(
        "insert alone", [](Map& map, uint64_t key, auto& record) { map.insert(key, record); },
        false);
    enter_change(
        "erase", [](Map& map, uint64_t key, auto&) { map.erase(key); }, true);
    enter_way("walk", records, [](Maps<Map>& maps) {
        maps.fill();
        return Prepared{[&maps] { benchmark::DoNotOptimize(maps.walk()); }};
    });
}

} // namespace

void enter_maps()
{
    for (const size_t count : {16U, 255U, 10000U, 100000U, 1000000U}) {
        enter_map<Library>("library", count);
        enter_map<Floor>("floor", count);
        enter_map<Holding<std::map>>("std::map", count);
#if PEER_BOOST
        enter_map<BoostIntrusive>("Boost.Intrusive set", count);
#endif
#if PEER_ABSL
        enter_map<Holding<absl::btree_map>>("absl::btree_map", count);
#endif
    }
}
