// Memory taken and given back, by one thread and by two.
#include "bench.h"

#include "callees/floor.h"
#include "callees/peers.h"

#include <cstdio>
#include <cstdlib>
#include <ky_utils.h>
#include <memory_resource>

#if PEER_TALLOC
#include <talloc.h>
#endif
#if PEER_JEMALLOC
#include <dlfcn.h>
#endif

namespace {

constexpr uint32_t TYPE = 8;

struct Library {
    static void* get(uint32_t size)
    {
        void* block = nullptr;
        utils_memory_get(&block, size, TYPE);
        return block;
    }
    static void put(void* block, uint32_t)
    {
        utils_memory_put(block, TYPE);
    }
};

struct Floor {
    static void* get(uint32_t size)
    {
        return floor_memory_get(size, TYPE);
    }
    static void put(void* block, uint32_t)
    {
        floor_memory_put(block, TYPE);
    }
};

struct WithoutLock {
    static void* get(uint32_t size)
    {
        return peer_memory_get_without_lock(size, TYPE);
    }
    static void put(void* block, uint32_t)
    {
        peer_memory_put_without_lock(block, TYPE);
    }
};

struct Malloc {
    static void* get(uint32_t size)
    {
        return malloc(size);
    }
    static void put(void* block, uint32_t)
    {
        free(block);
    }
};

struct SynchronizedPool {
    static std::pmr::synchronized_pool_resource& resource()
    {
        static std::pmr::synchronized_pool_resource made;
        return made;
    }
    static void* get(uint32_t size)
    {
        return resource().allocate(size);
    }
    static void put(void* block, uint32_t size)
    {
        resource().deallocate(block, size);
    }
};

#if PEER_TALLOC
struct Talloc {
    static void* get(uint32_t size)
    {
        return talloc_size(context(), size);
    }
    static void put(void* block, uint32_t)
    {
        talloc_free(block);
    }
    static void* context() // one for each thread: they are not safe to share
    {
        thread_local void* made = talloc_new(nullptr);
        return made;
    }
};
#endif

#if PEER_JEMALLOC
/* Loaded aside: linked, it would serve every other allocation of the program. */
struct Jemalloc {
    static void* get(uint32_t size)
    {
        return malloc_of_it(size);
    }
    static void put(void* block, uint32_t)
    {
        free_of_it(block);
    }
    static void load()
    {
        void* library = dlopen("libjemalloc.so.2", RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            fprintf(stderr, "bench: %s\n", dlerror());
            fprintf(stderr, "bench: set GLIBC_TUNABLES=glibc.rtld.optional_static_tls=16384\n");
            exit(1);
        }
        malloc_of_it = reinterpret_cast<void* (*)(size_t)>(dlsym(library, "malloc"));
        free_of_it = reinterpret_cast<void (*)(void*)>(dlsym(library, "free"));
    }
    static inline void* (*malloc_of_it)(size_t) = nullptr;
    static inline void (*free_of_it)(void*) = nullptr;
};
#endif

template <typename Allocator>
void enter_allocator(const std::string& operation, const char* name, uint32_t size, int threads)
{
    enter(
        {operation, name, TIMES,
         [size] {
             return Prepared{[size] {
                 for (size_t i = 0; i < TIMES; i++) {
                     void* block = Allocator::get(size);
                     benchmark::DoNotOptimize(block);
                     Allocator::put(block, size);
                 }
             }};
         },
         threads});
}

} // namespace

void enter_memory()
{
#if PEER_JEMALLOC
    Jemalloc::load();
#endif
    for (const int threads : {1, 2}) {
        for (const uint32_t size : {16U, 100U, 1024U, 65536U}) {
            const std::string operation = "memory get and put, " + std::to_string(size) + " bytes" +
                                          (threads == 1 ? "" : ", 2 threads");
            enter_allocator<Library>(operation, "library", size, threads);
            enter_allocator<Floor>(operation, "floor", size, threads);
#if PEER_TALLOC
            enter_allocator<Talloc>(operation, "talloc", size, threads);
#endif
            enter_allocator<SynchronizedPool>(operation, "pmr synchronized pool", size, threads);
            enter_allocator<WithoutLock>(operation, "accounting without lock", size, threads);
            enter_allocator<Malloc>(operation, "malloc", size, threads);
#if PEER_JEMALLOC
            enter_allocator<Jemalloc>(operation, "jemalloc", size, threads);
#endif
        }
    }
}
