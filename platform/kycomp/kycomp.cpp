// The stand-in for the SDK's component library.
#include <complib/cl_memory.h>
#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>
#include <complib/cl_spinlock.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// ---- Memory and lock ----

void* cl_malloc(size_t size)
{
    return malloc(size);
}

void cl_free(void* memory)
{
    free(memory);
}

void cl_spinlock_acquire(cl_spinlock_t* lock)
{
    pthread_mutex_lock(&lock->mutex);
}

void cl_spinlock_release(cl_spinlock_t* lock)
{
    pthread_mutex_unlock(&lock->mutex);
}

// ---- Quick map ----
//
// An AVL tree whose items also form a ring in key order. The end item closes the ring, is the
// root's parent, and replaces every missing child: no pointer is ever null. As a missing child its
// parent is written, but never read.

namespace {

using Item = cl_map_item_t;

/* Reports a map that is not initialised as the inline accessors do; returns its end item. Callers
 * end with this call, so that they need no stack frame for it. */
[[gnu::cold, gnu::noinline]] Item* report_unusable(
    const cl_qmap_t* map, const char* function = __builtin_FUNCTION(), int line = __builtin_LINE())
{
    cl_assert_report(__FILE_NAME__, line, function);
    return const_cast<Item*>(&map->end);
}

/* Initialises the map, which would otherwise lose the item. */
// NOLINTNEXTLINE(misc-no-recursion): once, because the map is initialised then
[[gnu::cold, gnu::noinline]] Item* insert_into_unusable(cl_qmap_t* map, uint64_t key, Item* item)
{
    report_unusable(map, "cl_qmap_insert");
    cl_qmap_init(map);
    return cl_qmap_insert(map, key, item);
}

/* Selects a child by a conditional move: no branch to mispredict, and both children are loaded in
 * parallel with the key that selects. Without the two asm statements the compiler emits a
 * branch. */
inline Item* child_of(const Item* item, bool is_higher)
{
    Item* child = item->child[0];
    Item* higher = item->child[1];
    asm("" : "+r"(child), "+r"(higher));
    child = is_higher ? higher : child;
    asm("" : "+r"(child));
    return child;
}

void adopt(Item* parent, int side, Item* child)
{
    parent->child[side] = child;
    child->parent = parent;
}

/* Replaces an item by a subtree under the item's parent. */
void replace(const Item* item, Item* subtree)
{
    adopt(item->parent, item->parent->child[1] == item, subtree);
}

/* Rotates an item's child into the item's place, and the item below it; returns the child. */
Item* lift_child(Item* item, int side)
{
    Item* child = item->child[side];
    replace(item, child);
    adopt(item, side, child->child[!side]);
    adopt(child, !side, item);
    // Balances counted towards that side, from the heights of the three subtrees:
    const int sign = side == 1 ? 1 : -1;
    const int outward = sign * child->balance;
    const int balance = sign * item->balance - 1 - std::max(outward, 0);
    item->balance = sign * balance;
    child->balance = sign * (outward - 1 + std::min(balance, 0));
    return child;
}

/* Rebalances from an item upwards, after the height of its child on one side has changed by 1 or
 * -1. */
void rebalance(const Item* end, Item* item, int side, int change)
{
    while (item != end) {
        item->balance += side == 1 ? change : -change;
        if (item->balance < -1 || item->balance > 1) {
            const int high = item->balance > 0;
            Item* child = item->child[high];
            if (child->balance * item->balance < 0) { // double rotation
                lift_child(child, !high);
            }
            item = lift_child(item, high);
        }
        // Balanced after growth, or unbalanced after a loss: the item's own height is unchanged.
        if ((item->balance == 0) == (change > 0)) {
            break;
        }
        side = item->parent->child[1] == item;
        item = item->parent;
    }
}

} // namespace

void cl_qmap_init(cl_qmap_t* map)
{
    Item* end = &map->end;
    // The highest key, so that insert never takes the end item of an empty map for a lower key.
    *end = {{end, end}, UINT64_MAX, end, end, end, 0};
    map->count = 0;
    map->state = CL_INITIALIZED;
}

cl_map_item_t* cl_qmap_get(const cl_qmap_t* map, uint64_t key)
{
    if (map->state != CL_INITIALIZED) {
        return report_unusable(map);
    }
    const Item* item = map->end.child[0];
    while (item != &map->end && item->key != key) {
        item = child_of(item, item->key < key);
    }
    return const_cast<Item*>(item);
}

// NOLINTNEXTLINE(misc-no-recursion): as above
cl_map_item_t* cl_qmap_insert(cl_qmap_t* map, uint64_t key, cl_map_item_t* item)
{
    if (map->state != CL_INITIALIZED) {
        return insert_into_unusable(map, key, item);
    }
    Item* end = &map->end;
    Item* parent = end;
    int side = 0;
    if (end->prev->key < key) { // ascending keys are common
        parent = end->prev;
        side = 1;
    } else {
        for (Item* at = end->child[0]; at != end; at = child_of(at, side != 0)) {
            if (at->key == key) {
                return at;
            }
            parent = at;
            side = at->key < key;
        }
    }
    Item* next = side == 1 ? parent->next : parent;
    *item = {{end, end}, key, parent, next, next->prev, 0};
    item->prev->next = item;
    next->prev = item;
    parent->child[side] = item;
    map->count++;
    rebalance(end, parent, side, 1);
    return item;
}

cl_map_item_t* cl_qmap_remove(cl_qmap_t* map, uint64_t key)
{
    Item* item = cl_qmap_get(map, key);
    if (item != &map->end) {
        cl_qmap_remove_item(map, item);
    }
    return item;
}

void cl_qmap_remove_item(cl_qmap_t* map, cl_map_item_t* item)
{
    if (map->state != CL_INITIALIZED) {
        report_unusable(map);
        return;
    }
    Item* end = &map->end;
    item->prev->next = item->next;
    item->next->prev = item->prev;
    map->count--;

    Item* parent = item->parent; // where the tree shrinks
    int side = parent->child[1] == item;
    if (item->child[0] == end || item->child[1] == end) {
        replace(item, item->child[item->child[0] == end]);
    } else {
        Item* heir = item->next; // the in-order successor has no lower child
        parent = heir->parent == item ? heir : heir->parent;
        side = heir->parent == item;
        replace(heir, heir->child[1]);
        replace(item, heir);
        adopt(heir, 0, item->child[0]);
        adopt(heir, 1, item->child[1]);
        heir->balance = item->balance;
    }
    rebalance(end, parent, side, -1);
}

// ---- Quick pool ----

/* Non-null if the process has AddressSanitizer, even if this library is built without it. */
extern "C" [[gnu::weak]] void __asan_poison_memory_region(const volatile void*, size_t);
extern "C" [[gnu::weak]] void __asan_unpoison_memory_region(const volatile void*, size_t);

namespace {

/* Precedes the objects, and aligns them for any type. */
struct alignas(std::max_align_t) Chunk : cl_pool_chunk {};

constexpr size_t ALIGNMENT = alignof(Chunk);

cl_pool_item_t* object_at(Chunk* chunk, size_t object_size, size_t index)
{
    char* objects = reinterpret_cast<char*>(chunk + 1);
    return reinterpret_cast<cl_pool_item_t*>(objects + index * object_size);
}

void put_poisoned(cl_qpool_t* pool, cl_pool_item_t* item)
{
    item->next = pool->free_items;
    pool->free_items = item;
    __asan_poison_memory_region(item, pool->object_size);
}

/* Destroys the created objects of a chunk, its first ones, and frees it. */
void destroy_chunk(const cl_qpool_t* pool, Chunk* chunk, size_t created)
{
    if (pool->state == CL_POISONING) {
        __asan_unpoison_memory_region(chunk + 1, chunk->count * pool->object_size);
    }
    for (size_t i = 0; pool->destructor != nullptr && i < created; i++) {
        pool->destructor(object_at(chunk, pool->object_size, i), pool->context);
    }
    cl_free(chunk);
}

/* Adds objects to a pool that has none free; on failure the pool is unchanged. */
bool grow(cl_qpool_t* pool, size_t count)
{
    size_t size = 0;
    if (__builtin_mul_overflow(count, pool->object_size, &size) ||
        __builtin_add_overflow(size, sizeof(Chunk), &size)) {
        return false;
    }
    auto* chunk = static_cast<Chunk*>(cl_malloc(size));
    if (chunk == nullptr) {
        return false;
    }
    *chunk = {{pool->chunks, count, put_poisoned}};
    for (size_t i = 0; pool->initializer != nullptr && i < count; i++) {
        if (pool->initializer(object_at(chunk, pool->object_size, i), pool->context) != 0) {
            destroy_chunk(pool, chunk, i);
            return false;
        }
    }
    pool->chunks = chunk;
    pool->count += count;
    for (size_t i = count; i-- > 0;) { // so that gets return ascending addresses
        cl_qpool_put(pool, object_at(chunk, pool->object_size, i));
    }
    return true;
}

} // namespace

int cl_qpool_init(
    cl_qpool_t* pool, size_t min_count, size_t max_count, size_t grow_count, size_t object_size,
    cl_pool_initializer_t initializer, cl_pool_destructor_t destructor, const void* context)
{
    if (max_count == 0) {
        max_count = SIZE_MAX;
    }
    if (min_count > max_count || object_size < sizeof(cl_pool_item_t) ||
        object_size > SIZE_MAX - (ALIGNMENT - 1)) {
        return -1;
    }
    cl_qpool_t made = {};
    made.state = __asan_poison_memory_region != nullptr ? CL_POISONING : CL_INITIALIZED;
    made.max_count = max_count;
    made.grow_count = grow_count;
    made.object_size = (object_size + ALIGNMENT - 1) / ALIGNMENT * ALIGNMENT;
    made.initializer = initializer;
    made.destructor = destructor;
    made.context = context;
    if (min_count != 0 && !grow(&made, min_count)) {
        return -1;
    }
    *pool = made;
    return 0;
}

cl_pool_item_t* cl_qcpool_get(cl_qpool_t* pool)
{
    if (pool->free_items == nullptr) {
        const size_t room = pool->max_count - pool->count;
        const size_t count = pool->grow_count < room ? pool->grow_count : room;
        if (count == 0 || !grow(pool, count)) {
            return nullptr;
        }
    }
    cl_pool_item_t* item = pool->free_items;
    if (pool->state == CL_POISONING) {
        __asan_unpoison_memory_region(item, pool->object_size);
    }
    pool->free_items = item->next;
    return item;
}

void cl_qcpool_destroy(cl_qpool_t* pool)
{
    while (auto* chunk = static_cast<Chunk*>(pool->chunks)) {
        pool->chunks = chunk->next;
        destroy_chunk(pool, chunk, chunk->count);
    }
    *pool = {};
}
