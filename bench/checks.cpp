// An argument check that passes.
#include "bench.h"

#include "callees/floor.h"
#include "callees/peers.h"

#include <cstdlib>
#include <ky_utils.h>

namespace {

template <typename Check> void enter_check(const char* name, Check check)
{
    enter("argument check that passes", name, [check, ids = values_below(253)](size_t i) {
        if (!check(static_cast<uint8_t>(1 + ids[i]))) {
            abort();
        }
    });
}

} // namespace

void enter_checks()
{
    enter_check("library", [](uint8_t device_id) {
        return utils_check_device_id(device_id) == KY_STATUS_SUCCESS;
    });
    enter_check(
        "floor", [](uint8_t device_id) { return floor_check(device_id) == KY_STATUS_SUCCESS; });
    enter_check(
        "std::error_code", [](uint8_t device_id) { return !peer_check_by_error_code(device_id); });
#if PEER_ABSL
    enter_check("absl::Status", [](uint8_t device_id) {
        return peer_check_by_absl_status(device_id).ok();
    });
#endif
#if PEER_BOOST
    enter_check("Boost.Outcome", [](uint8_t device_id) {
        return peer_check_by_outcome(device_id).has_value();
    });
#endif
}
