// Objects of 64 bytes taken from a pool and given back: one at a time, and 255 at a time.
#include "bench.h"

#include <cstdlib>
#include <ky_utils.h>
#include <utility>

#if PEER_BOOST
#include <boost/pool/pool.hpp>
#endif

namespace {

constexpr size_t OBJECT_SIZE = 64;
constexpr size_t BURST = 255;

class Library {
  public:
    Library()
    {
        cl_qpool_init(&pool_, BURST, 0, BURST, OBJECT_SIZE, nullptr, nullptr, nullptr);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library()
    {
        cl_qpool_destroy(&pool_);
    }
    void* get()
    {
        return cl_qpool_get(&pool_);
    }
    void put(void* object)
    {
        cl_qpool_put(&pool_, static_cast<cl_pool_item_t*>(object));
    }

  protected:
    cl_qpool_t pool_;
};

/* The get that returns a status, through the library. */
class LibraryWithStatus : public Library {
  public:
    void* get()
    {
        cl_pool_item_t* item = nullptr;
        utils_qpool_get(&item, &pool_);
        return item;
    }
};

class Floor {
  public:
    Floor()
    {
        for (Object& object : objects_) {
            put(&object);
        }
    }
    void* get()
    {
        Object* object = free_;
        if (object != nullptr) {
            free_ = object->next;
        }
        return object;
    }
    void put(void* object)
    {
        auto* freed = static_cast<Object*>(object);
        freed->next = free_;
        free_ = freed;
    }

  private:
    struct Object {
        Object* next;
        char rest[OBJECT_SIZE - sizeof(Object*)];
    };
    Object objects_[BURST];
    Object* free_ = nullptr;
};

struct Malloc {
    void* get()
    {
        return malloc(OBJECT_SIZE);
    }
    void put(void* object)
    {
        free(object);
    }
};

#if PEER_BOOST
class BoostPool {
  public:
    void* get()
    {
        return pool_.malloc();
    }
    void put(void* object)
    {
        pool_.free(object);
    }

  private:
    boost::pool<> pool_ = boost::pool<>(OBJECT_SIZE, BURST);
};
#endif

template <typename Pool> Pool pool; // static, as those of the SDK's modules are

template <typename Pool> void enter_pool(const char* name)
{
    enter("pool get and put", name, [](size_t) {
        void* object = pool<Pool>.get();
        benchmark::DoNotOptimize(object);
        pool<Pool>.put(object);
    });
    enter({"pool get and put, 255 in a row", name, BURST, [] {
               return Prepared{[order = values_below(BURST, BURST)] {
                   void* objects[BURST];
                   for (void*& object : objects) {
                       object = pool<Pool>.get();
                   }
                   for (size_t i = 0; i < BURST; i++) { // in any other order than they came
                       std::swap(objects[i], objects[order[i]]);
                   }
                   for (void* object : objects) {
                       pool<Pool>.put(object);
                   }
               }};
           }});
}

} // namespace

void enter_pools()
{
    enter_pool<Library>("library");
    enter_pool<LibraryWithStatus>("library, utils_qpool_get");
    enter_pool<Floor>("floor");
    enter_pool<Malloc>("malloc");
#if PEER_BOOST
    enter_pool<BoostPool>("boost::pool");
#endif
}
