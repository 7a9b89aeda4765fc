/* Memory allocation. The component library itself allocates through these symbols. */
#ifndef COMPLIB_CL_MEMORY_H
#define COMPLIB_CL_MEMORY_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Allocates memory, aligned for any type and uninitialised.
 *
 *  @param size  in bytes
 *  @return      the memory, or null if memory is short
 */
void* cl_malloc(size_t size);

/** Frees memory of cl_malloc; null is a no-op. */
void cl_free(void* memory);

#ifdef __cplusplus
}
#endif

#endif
