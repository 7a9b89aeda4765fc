// Log statements that a module's verbosity suppresses, and traces that are off.
#include "bench.h"

#include "callees/floor.h"
#include "callees/module.h"
#include "callees/peers.h"

#include <ky_utils.h>
#include <syslog.h>

namespace {

using Statements = uint32_t (*)(uint32_t, uint32_t);

void enter_eight(const char* name, Statements statements)
{
    enter({"suppressed statement", name, 8 * TIMES, [statements] {
               return Prepared{[statements] {
                   uint32_t sum = 0;
                   for (uint32_t i = 0; i < TIMES; i++) {
                       sum = statements(sum, i);
                   }
                   benchmark::DoNotOptimize(sum);
               }};
           }});
}

} // namespace

void enter_statements()
{
    enter_eight("library", module_statements);
    enter_eight("floor", floor_statements);
    setlogmask(LOG_UPTO(LOG_NOTICE));
    enter_eight("syslog", peer_statements_by_syslog);
#if PEER_GLOG
    enter_eight("glog VLOG", peer_statements_by_glog);
#endif
#if PEER_SPDLOG
    enter_eight("spdlog", peer_statements_by_spdlog);
#endif
#if PEER_BOOST_LOG
    peer_boost_log_setup();
    enter_eight("Boost.Log", peer_statements_by_boost_log);
#endif

    const char* operation = "function with a suppressed statement";
    const auto call = [](Statements statements) {
        return [statements](size_t i) {
            benchmark::DoNotOptimize(statements(static_cast<uint32_t>(i), 1));
        };
    };
    enter(operation, "library", call(module_statement));
    enter(operation, "floor", call(floor_statement));

    operation = "traced function, traces off";
    enter(operation, "library", [](size_t i) {
        benchmark::DoNotOptimize(utils_use_xm_set(static_cast<uint32_t>(i)));
    });
    enter(operation, "floor", [](size_t i) {
        benchmark::DoNotOptimize(floor_traced(static_cast<uint32_t>(i)));
    });
}
