// Maps of random keys: a lookup of a random key; a random record removed and inserted again.
#include "floor.h"
#include "ways.h"

#include <absl/container/btree_map.h>
#include <boost/intrusive/set.hpp>
#include <ky_utils.h>
#include <memory>

namespace {

/* The library's functions. */
struct Library {
    struct Record {
        cl_map_item_t item;
    };
    Library()
    {
        cl_qmap_init(&map);
    }
    void insert(uint64_t key, Record& record)
    {
        utils_db_qmap_item_ins(key, &map, &record.item);
    }
    const void* find(uint64_t key)
    {
        cl_map_item_t* item = nullptr;
        utils_qmap_get(&map, key, &item);
        return item;
    }
    void erase(uint64_t key)
    {
        cl_map_item_t* item = nullptr;
        utils_qmap_remove(&map, key, &item);
    }
    cl_qmap_t map;
};

/* The component library's, without a status. */
struct Floor : Library {
    void insert(uint64_t key, Record& record)
    {
        cl_qmap_insert(&map, key, &record.item);
    }
    const void* find(uint64_t key)
    {
        return cl_qmap_get(&map, key);
    }
    void erase(uint64_t key)
    {
        cl_qmap_remove(&map, key);
    }
};

struct Intrusive {
    struct Record : boost::intrusive::set_base_hook<
                        boost::intrusive::link_mode<boost::intrusive::normal_link>> {
        uint64_t key = 0;
    };
    struct KeyOf {
        using type = uint64_t;
        uint64_t operator()(const Record& record) const
        {
            return record.key;
        }
    };
    void insert(uint64_t key, Record& record)
    {
        record.key = key;
        set.insert(record);
    }
    const void* find(uint64_t key)
    {
        return &*set.find(key);
    }
    void erase(uint64_t key)
    {
        set.erase(key);
    }
    boost::intrusive::set<Record, boost::intrusive::key_of_value<KeyOf>> set;
};

struct BTree {
    struct Record {
        uint64_t payload[8];
    };
    void insert(uint64_t key, Record& record)
    {
        map.emplace(key, &record);
    }
    const void* find(uint64_t key)
    {
        return map.find(key)->second;
    }
    void erase(uint64_t key)
    {
        map.erase(key);
    }
    absl::btree_map<uint64_t, Record*> map;
};

constexpr size_t ORDER = 65536; // too long for a branch predictor to learn

template <typename Map> struct Filled {
    explicit Filled(size_t count)
        : keys(random_keys(count)), order(values_below(static_cast<uint32_t>(count), ORDER)),
          records(count)
    {
        for (size_t i = 0; i < count; i++) {
            map.insert(keys[i], records[i]);
        }
    }
    uint32_t any()
    {
        return order[next++ % ORDER];
    }
    std::vector<uint64_t> keys;
    std::vector<uint32_t> order;
    std::vector<typename Map::Record> records;
    Map map;
    size_t next = 0;
};

template <typename Map> void find(benchmark::State& state)
{
    const auto filled = std::make_unique<Filled<Map>>(static_cast<size_t>(state.range(0)));
    each(state, [&](size_t) { return filled->map.find(filled->keys[filled->any()]); });
}

template <typename Map> void replace(benchmark::State& state)
{
    const auto filled = std::make_unique<Filled<Map>>(static_cast<size_t>(state.range(0)));
    each(state, [&](size_t) {
        const uint32_t i = filled->any();
        filled->map.erase(filled->keys[i]);
        filled->map.insert(filled->keys[i], filled->records[i]);
        return i;
    });
}

void sizes(benchmark::internal::Benchmark* way)
{
    way->Arg(16)->Arg(255)->Arg(10000)->Arg(100000)->Arg(1000000);
}

} // namespace

BENCHMARK(find<Library>)->Name("map find/library")->Apply(sizes);
BENCHMARK(find<Floor>)->Name("map find/floor")->Apply(sizes);
BENCHMARK(find<Intrusive>)->Name("map find/Boost.Intrusive")->Apply(sizes);
BENCHMARK(find<BTree>)->Name("map find/B-tree")->Apply(sizes);
BENCHMARK(replace<Library>)->Name("map erase and insert/library")->Arg(255)->Arg(10000);
BENCHMARK(replace<Floor>)->Name("map erase and insert/floor")->Arg(255)->Arg(10000);
BENCHMARK(replace<Intrusive>)->Name("map erase and insert/Boost.Intrusive")->Arg(255)->Arg(10000);
