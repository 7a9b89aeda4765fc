/* An allocator that counts, fails on demand and returns garbage-filled blocks, and a lock that
 * tracks its holder and runs a hook: linked into a test, they interpose the component library's. */
#ifndef ALLOCATION_H
#define ALLOCATION_H

#include <cstddef>
#include <functional>

/* The number of blocks allocated and not freed. */
long live_blocks();

/* The size of the last request in bytes. A block is at most one MiB, even if more was requested. */
size_t last_request();

/* Makes all allocations after the next count fail until it is called again; -1 for none. */
void fail_allocations_after(long count);

/* The number of locks that this thread holds. */
int locks_held();

/* Runs a function once, just before the time-th lock acquisition from now (1: the next): the last
 * moment at which another thread could run. */
void before_lock(int time, std::function<void()> function);

#endif
