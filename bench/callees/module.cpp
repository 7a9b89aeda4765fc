#include "module.h"
#include "eight_statements.h"

#define KY_LOG_MODULE "MODULE"
#define KY_LOG_VERBOSITY module_verbosity_level

namespace {

uint32_t module_verbosity_level = KY_LOG_LEVEL_DEFAULT;

} // namespace

#define STATEMENT(text) KY_LOG_DEBUG(text " %u of %u is up\n", a, b)

uint32_t module_statements(uint32_t a, uint32_t b)
{
    EIGHT_STATEMENTS
    return a;
}

uint32_t module_statement(uint32_t a, uint32_t b)
{
    STATEMENT("port");
    a += b;
    return a;
}
