// Times each operation by the library and by its strongest alternative, which is called as its
// users call it. Benchmarks are named OPERATION/WAY or OPERATION/WAY/SIZE.
#include "inputs.h"

#include <benchmark/benchmark.h>
#include <boost/intrusive/set.hpp>
#include <boost/pool/pool.hpp>
#include <cstring>
#include <glog/logging.h>
#include <memory>
#include <sigc++/sigc++.h>
#include <string>
#include <talloc.h>
#include <thread>
#include <unistd.h>

namespace {

/* Calls once(i) for each input, repeatedly. The compiler must assume that its results are used. */
template <typename Once> void each(benchmark::State& state, Once once)
{
    for (auto _ : state) {
        for (size_t i = 0; i < INPUTS; i++) {
            benchmark::DoNotOptimize(once(i));
        }
    }
    state.SetItemsProcessed(state.iterations() * int64_t{INPUTS});
}

#define TIME(name, ...) \
    BENCHMARK_CAPTURE(each, , []([[maybe_unused]] size_t i) { __VA_ARGS__; })->Name(name)

const auto values = values_below(105);

TIME("name of a value/strerrordesc_np", return strerrordesc_np(static_cast<int>(values[i])));

#define LOG_BY_GLOG(text) VLOG(1) << text " " << a << " of " << b << " is up", a += b;

[[gnu::noinline]] uint32_t log_by_glog(uint32_t a, uint32_t b)
{
    FOUR(LOG_BY_GLOG);
    FOUR(LOG_BY_GLOG);
    return a;
}

TIME("eight suppressed log statements/glog", return log_by_glog(values[i], 1));

boost::pool<> pool(64, 16);

TIME("pool, get and put/boost::pool", void* object = pool.malloc();
     benchmark::DoNotOptimize(object); pool.free(object); return object);

// ---- Memory ----

int block_of_talloc(size_t)
{
    thread_local void* const context = talloc_new(nullptr); // not thread-safe
    void* block = talloc_size(context, 100);
    benchmark::DoNotOptimize(block);
    return talloc_free(block);
}

/* From now on the process is multi-threaded for the C library. */
void start_thread(const benchmark::State&)
{
    [[maybe_unused]] static auto* const sleeping = new std::thread([] { pause(); });
}

#define BLOCK(name, way) BENCHMARK_CAPTURE(each, , block_of_##way)->Name(name "/" #way)
BLOCK("memory, get and put", talloc);
BLOCK("memory, beside a sleeping thread", library)->Setup(start_thread);
BLOCK("memory, beside a sleeping thread", talloc)->Setup(start_thread);
BLOCK("memory, two threads at once", library)->Threads(2)->UseRealTime();
BLOCK("memory, two threads at once", talloc)->Threads(2)->UseRealTime();

// ---- Maps of random keys ----

struct Library {
    using Record = cl_map_item_t;
    void insert(uint64_t key, Record& record)
    {
        utils_db_qmap_item_ins(key, &map, &record);
    }
    const Record* find(uint64_t key)
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
    cl_qmap_t map = {};
    Library()
    {
        cl_qmap_init(&map);
    }
};

using namespace boost::intrusive;

struct Item : set_base_hook<link_mode<normal_link>> {
    uint64_t key = 0;
};

struct KeyOf {
    using type = uint64_t;
    uint64_t operator()(const Item& item) const
    {
        return item.key;
    }
};

struct Intrusive : set<Item, key_of_value<KeyOf>> {
    using Record = Item;
    void insert(uint64_t key, Record& record)
    {
        record.key = key;
        set::insert(record);
    }
};

/* A map whose keys are asked for in random order. */
template <typename Map> struct Filled {
    explicit Filled(const benchmark::State& state)
        : keys(random_keys(static_cast<size_t>(state.range(0)))), records(keys.size()),
          order(values_below(static_cast<uint32_t>(keys.size()), ORDER))
    {
        for (size_t i = 0; i < keys.size(); i++) {
            map.insert(keys[i], records[i]);
        }
    }
    uint32_t any()
    {
        return order[next++ % ORDER];
    }
    static constexpr size_t ORDER = 65536; // too long for a branch predictor to learn
    std::vector<uint64_t> keys;
    std::vector<typename Map::Record> records;
    std::vector<uint32_t> order;
    Map map;
    size_t next = 0;
};

/* In this form GCC searches Boost.Intrusive's set with conditional moves, in half the time. */
template <typename Map> void find(benchmark::State& state)
{
    const auto filled = std::make_unique<Filled<Map>>(state);
    each(state, [&](size_t) { return &*filled->map.find(filled->keys[filled->any()]); });
}

template <typename Map> void replace(benchmark::State& state)
{
    const auto filled = std::make_unique<Filled<Map>>(state);
    each(state, [&](size_t) {
        const uint32_t i = filled->any();
        filled->map.erase(filled->keys[i]);
        filled->map.insert(filled->keys[i], filled->records[i]);
        return i;
    });
}

#define MAPS(function, name, ...)                                     \
    BENCHMARK(function<Library>)->Name(name "/library")->__VA_ARGS__; \
    BENCHMARK(function<Intrusive>)->Name(name "/Boost.Intrusive")->__VA_ARGS__
MAPS(find, "lookup in a map, keys", RangeMultiplier(10)->Range(10, 100000));
MAPS(replace, "remove and insert, keys", Arg(100)->Arg(10000));

// ---- Events ----

void event_of_library(benchmark::State& state)
{
    adviser_init();
    register_up_to(static_cast<size_t>(state.range(0)));
    each(state, [](size_t) { return adviser_process_event(EVENT, &sum); });
    adviser_deinit();
}

void event_of_libsigcxx(benchmark::State& state)
{
    sigc::signal<ky_status_t(adviser_event_t, void*)> signal;
    for (size_t i = 0; i < static_cast<size_t>(state.range(0)); i++) {
        signal.connect(sigc::ptr_fun(callbacks[i]));
    }
    each(state, [&signal](size_t) { return signal.emit(EVENT, &sum); });
}

#define EVENTS(way) BENCHMARK(way)->RangeMultiplier(4)->Range(1, 255)
EVENTS(event_of_library)->Name("event, callbacks/library");
EVENTS(event_of_libsigcxx)->Name("event, callbacks/libsigc++");

} // namespace

int main(int argc, char** argv)
{
    uint32_t level = 0;
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    benchmark::AddCustomContext("compiler", COMPILER);
    for_each_operation([](const std::string& name, auto once) {
        benchmark::RegisterBenchmark(
            (name + "/library").c_str(), [once](benchmark::State& state) { each(state, once); });
    });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
