#include "eight_statements.h"
#include "peers.h"

#if PEER_GLOG
#include <glog/logging.h>

#define STATEMENT(text) VLOG(1) << text " " << a << " of " << b << " is up"

uint32_t peer_statements_by_glog(uint32_t a, uint32_t b)
{
    EIGHT_STATEMENTS
    return a;
}

#endif
