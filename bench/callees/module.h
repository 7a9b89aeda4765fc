/* What stands in a module of the SDK that uses the library's headers: suppressed statements. */
#ifndef MODULE_H
#define MODULE_H

#include <ky_common.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Eight statements between additions, and one. */
KY_EXPORT uint32_t module_statements(uint32_t a, uint32_t b);
KY_EXPORT uint32_t module_statement(uint32_t a, uint32_t b);

#ifdef __cplusplus
}
#endif

#endif
