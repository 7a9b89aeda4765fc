#include "eight_statements.h"
#include "peers.h"

#if PEER_BOOST_LOG
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_logger.hpp>
#include <boost/log/trivial.hpp>

namespace {

using boost::log::trivial::severity_level;

boost::log::sources::severity_logger<severity_level>& logger()
{
    static boost::log::sources::severity_logger<severity_level> made;
    return made;
}

} // namespace

void peer_boost_log_setup()
{
    boost::log::core::get()->set_filter(boost::log::trivial::severity >= boost::log::trivial::info);
}

#define STATEMENT(text) \
    BOOST_LOG_SEV(to, boost::log::trivial::debug) << text " " << a << " of " << b << " is up"

uint32_t peer_statements_by_boost_log(uint32_t a, uint32_t b)
{
    auto& to = logger();
    EIGHT_STATEMENTS
    return a;
}

#endif
