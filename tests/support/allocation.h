/* An allocator that counts and fails, and a lock that others come before: linked into a test, they
 * stand in front of the component library's. */
#ifndef ALLOCATION_H
#define ALLOCATION_H

#include <cstddef>
#include <functional>

/* Blocks allocated and not freed. */
long live_blocks();

/* What was last asked for, in bytes. */
size_t last_request();

/* Lets this many allocations succeed, and then none until it is called again; -1 for all. */
void fail_allocations_after(long count);

/* Runs a function once, when a lock is about to be taken next: another thread could not come later. */
void before_next_lock(std::function<void()> function);

#endif
