#define SPDLOG_ACTIVE_LEVEL SPDLOG_LEVEL_DEBUG // compiled in, and suppressed by the logger's level

#include "eight_statements.h"
#include "peers.h"

#if PEER_SPDLOG
#include <spdlog/spdlog.h>

#define STATEMENT(text) SPDLOG_DEBUG(text " {} of {} is up", a, b)

uint32_t peer_statements_by_spdlog(uint32_t a, uint32_t b)
{
    EIGHT_STATEMENTS
    return a;
}

#endif
