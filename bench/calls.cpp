// Lookups and checks that succeed.
#include "floor.h"
#include "peers.h"
#include "ways.h"

#include <cstring>
#include <ky_names.h>
#include <ky_utils.h>

#define WAY(name, ...) BENCHMARK_CAPTURE(each, way, [](size_t i) { __VA_ARGS__; })->Name(name)

uint32_t statements_of_library(uint32_t a, uint32_t b);
uint32_t statements_of_floor(uint32_t a, uint32_t b);
uint32_t statements_of_glog(uint32_t a, uint32_t b);

namespace {

const auto values = values_below(105);
const auto ids = values_below(253);
const auto ports = accepted_ports();
const auto ipv4 = route_keys(1);
const auto ipv6 = route_keys(2);

uint8_t device(size_t i)
{
    return static_cast<uint8_t>(1 + ids[i]);
}

ky_status_t key(const ky_mc_route_key_t& key)
{
    return ky_router_utils_validate_mc_route_counter_bind_get(0, &key, nullptr);
}

ky_status_t route(const ky_mc_route_key_t& key)
{
    return ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_ADD, 0, &key, &ATTRIBUTES, &DATA);
}

} // namespace

WAY("name/library", return ky_host_ifc_trap_id_str(values[i]));
WAY("name/floor", return floor_name(values[i]));
WAY("name/strerrordesc_np", return strerrordesc_np(static_cast<int>(values[i])));

WAY("eight suppressed statements/library", return statements_of_library(values[i], 1));
WAY("eight suppressed statements/floor", return statements_of_floor(values[i], 1));
WAY("eight suppressed statements/glog", return statements_of_glog(values[i], 1));

WAY("traced setter/library", return utils_use_xm_set(values[i]));
WAY("traced setter/floor", return floor_traced(values[i]));

WAY("argument check/library", return utils_check_device_id(device(i)) == KY_STATUS_SUCCESS);
WAY("argument check/floor", return floor_check(device(i)) == KY_STATUS_SUCCESS);
WAY("argument check/Boost.Outcome", return peer_check(device(i)).has_value());

WAY("port type/library", return is_port_type_valid(ports[i].enum_id, ports[i].log_port));
WAY("port type/floor", return floor_port_type(ports[i].enum_id, ports[i].log_port));
WAY("port type/switch", return peer_port_type(ports[i].enum_id, ports[i].log_port));

WAY("multicast key IPv4/library", return key(ipv4[i]));
WAY("multicast key IPv4/floor", return floor_route_key(&ipv4[i]));
WAY("multicast key IPv6/library", return key(ipv6[i]));
WAY("multicast key IPv6/floor", return floor_route_key(&ipv6[i]));
WAY("multicast route IPv4/library", return route(ipv4[i]));
WAY("multicast route IPv4/floor", return floor_route(&ipv4[i], &ATTRIBUTES, &DATA));
WAY("multicast route IPv6/library", return route(ipv6[i]));
WAY("multicast route IPv6/floor", return floor_route(&ipv6[i], &ATTRIBUTES, &DATA));
