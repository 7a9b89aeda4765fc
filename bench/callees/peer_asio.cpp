#include "peers.h"

#if PEER_BOOST
#include <bit>
#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>

namespace {

namespace ip = boost::asio::ip;

/* A network refuses a mask that is not contiguous; an address without bits outside its mask is its
 * network's own. */
bool is_ipv4_key(const ky_ipv4_prefix_t& source, const ky_ipv4_prefix_t& group)
{
    const ip::network_v4 sources(ip::address_v4(source.addr), ip::address_v4(source.mask));
    const ip::network_v4 groups(ip::address_v4(group.addr), ip::address_v4(group.mask));
    return groups.address().is_multicast() && groups.prefix_length() >= 4 &&
           groups.network() == groups.address() && sources.network() == sources.address();
}

ip::network_v6 network_of(const ky_ipv6_prefix_t& prefix)
{
    ip::address_v6::bytes_type bytes;
    for (size_t i = 0; i < bytes.size(); i++) {
        bytes[i] = static_cast<unsigned char>(prefix.addr[i / 4] >> (24 - 8 * (i % 4)));
    }
    int length = 0; // a mask that goes on behind a gap is not looked for
    for (size_t word = 0; word < 4 && length == static_cast<int>(32 * word); word++) {
        length += std::countl_one(prefix.mask[word]);
    }
    return {ip::address_v6(bytes), static_cast<unsigned short>(length)};
}

bool is_ipv6_key(const ky_ipv6_prefix_t& source, const ky_ipv6_prefix_t& group)
{
    const ip::network_v6 sources = network_of(source);
    const ip::network_v6 groups = network_of(group);
    return groups.address().is_multicast() && groups.prefix_length() >= 8 &&
           groups.network() == groups.address() && sources.network() == sources.address();
}

} // namespace

bool peer_route_key_by_asio(const ky_mc_route_key_t* key)
try {
    const auto& [source, group] = *key;
    if (source.version != group.version) {
        return false;
    }
    return source.version == 1 ? is_ipv4_key(source.prefix.ipv4, group.prefix.ipv4)
                               : is_ipv6_key(source.prefix.ipv6, group.prefix.ipv6);
} catch (const std::exception&) {
    return false;
}

#endif
