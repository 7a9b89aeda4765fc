// Objects of 64 bytes got from a pool, 16 at a time, and put back.
#include "floor.h"
#include "ways.h"

#include <boost/pool/pool.hpp>
#include <ky_utils.h>

namespace {

constexpr size_t OBJECT_SIZE = 64;
constexpr size_t BURST = 16;

/* Gets a burst and puts it back in the same order. */
template <typename Get, typename Put> void burst(benchmark::State& state, Get get, Put put)
{
    void* objects[BURST];
    for (auto _ : state) {
        for (void*& object : objects) {
            object = get();
        }
        benchmark::DoNotOptimize(objects);
        for (void* object : objects) {
            put(object);
        }
    }
    state.SetItemsProcessed(state.iterations() * int64_t{BURST});
}

cl_qpool_t pool; // static, like those of the SDK's modules
boost::pool<> boost_pool(OBJECT_SIZE, BURST);

void put(void* object)
{
    cl_qpool_put(&pool, static_cast<cl_pool_item_t*>(object));
}

void library(benchmark::State& state)
{
    cl_qpool_init(&pool, BURST, BURST, 0, OBJECT_SIZE, nullptr, nullptr, nullptr);
    const auto get = [] {
        cl_pool_item_t* item = nullptr;
        utils_qpool_get(&item, &pool);
        return item;
    };
    burst(state, get, put);
    cl_qpool_destroy(&pool);
}

void floor(benchmark::State& state)
{
    cl_qpool_init(&pool, BURST, BURST, 0, OBJECT_SIZE, nullptr, nullptr, nullptr);
    burst(
        state, [] { return floor_pool_get(&pool); }, put);
    cl_qpool_destroy(&pool);
}

void boost_pool_inline(benchmark::State& state)
{
    burst(
        state, [] { return boost_pool.malloc(); }, [](void* object) { boost_pool.free(object); });
}

} // namespace

BENCHMARK(library)->Name("pool get and put/library");
BENCHMARK(floor)->Name("pool get and put/floor");
BENCHMARK(boost_pool_inline)->Name("pool get and put/boost::pool");
