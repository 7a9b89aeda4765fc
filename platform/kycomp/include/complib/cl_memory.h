/* Memory from the component library, whose own objects take theirs here too, by these symbols. */
#ifndef COMPLIB_CL_MEMORY_H
#define COMPLIB_CL_MEMORY_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Allocates memory, aligned for any type, not cleared.
 *
 *  @param size  in bytes
 *  @return      the memory, or null if there is none
 */
void* cl_malloc(size_t size);

/** Gives memory back that cl_malloc handed out; null is nothing to give. */
void cl_free(void* memory);

#ifdef __cplusplus
}
#endif

/* CL_POISON(memory, size) makes AddressSanitizer report any access, until CL_UNPOISON. */
#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define CL_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define CL_ADDRESS_SANITIZER
#endif

#ifdef CL_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#define CL_POISON(memory, size) __asan_poison_memory_region(memory, size)
#define CL_UNPOISON(memory, size) __asan_unpoison_memory_region(memory, size)
#else
#define CL_POISON(memory, size) ((void)(memory), (void)(size))
#define CL_UNPOISON(memory, size) ((void)(memory), (void)(size))
#endif

#endif
