#!/bin/sh
# replay_test.sh STORY COMMAND...: the story replays as the file beside it says, and lines that cannot be
# read are reported with their numbers while the others are answered.
set -eu

story=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$@" "$story" > "$work/output" 2>&1 || { echo "the story does not replay"; exit 1; }
# Compilers differ about the line that a statement of several lines stands in.
if ! sed 's/\[[0-9]*\]- /[L]- /' "$work/output" | diff "${story%.txt}.out" -; then
    echo "the story's output is not as in ${story%.txt}.out (<)"
    exit 1
fi

status=0
output=$(printf '%b\r\n' \
    'status 14 # a comment' 'nonsense' 'check device_id 256' 'check device_id -1' '' \
    'name port_mode 4294967296' 'name port_mode 0xFFFFFFFF' 'port nobody 0' 'port 16' \
    'port vlan_ports_set 0x40000000' 'status 0x' 'check swid 7seven' \
    'a a a a a a a a a a a a a a a a a' 'check device_id 1 2' 'check mc_id +1' \
    'status 7\0 6' 'route ADD 10.0.0.0/33 239.0.0.0/8' 'route ADD 10.0.0.0/8 239.0.0.0/255.0.0' \
    'route ADD 10.0.0.0/8' 'route JUMP 10.0.0.0/8 239.0.0.0/8' \
    'route ADD 10.0.0.0/8 ff0e::/ffff:: prio=low' 'route ADD 10.0.0.0/8 239.0.0.0/8 colour=red' \
    'route add 2001:db8::/ffff:ffff:: ff0e::/16 rpf=Drop_List rpf_group=512' \
    'route GET_FIRST source=10.0.0.1/8' 'rpf-group SET 3 IP_in_IP 4' \
    'register NO-SUCH-EVENT fdb' 'register port_added fdb maybe' 'register 1 fdb leave' \
    'event PORT-ADDED' 'deregister 1 fdb' 'adviser deinit' 'event 1' 'memory put PORT 0' \
    'memory get PORT' 'memory get 18 4' 'memory get PORT 0x10000 0x10000' 'egress GET ::/0 ff00::/8 1' \
    'memory get PORT many' 'memory get PORT 1 -1' 'register 1 a_name_of_more_than_31_characters' |
    "$@" - 2>&1) || status=$?
expected='> status 14 # a comment
  14 Parameter Exceeds Range
> nonsense
line 2: there is no request '\''nonsense'\''
> check device_id 256
line 3: '\''256'\'' is not a number from 0 to 255
> check device_id -1
line 4: '\''-1'\'' is not a number from 0 to 255

> name port_mode 4294967296
line 6: '\''4294967296'\'' is not a number from 0 to 4294967295
> name port_mode 0xFFFFFFFF
  "Unknown"
> port nobody 0
line 8: no API function '\''nobody'\'' is in the dictionary
> port 16
line 9: it is '\''port ROW|FUNCTION PORT'\''
> port vlan_ports_set 0x40000000
ERROR   PORT_TYPE_VALIDATE: Port 0x40000000 invalid (Port type(CPU) is unsupported)
  0 refused
> status 0x
line 11: '\''0x'\'' is not a number from 0 to 4294967295
> check swid 7seven
line 12: '\''7seven'\'' is not a number from 0 to 255
> a a a a a a a a a a a a a a a a a
line 13: more than 16 words
> check device_id 1 2
line 14: this check takes no '\''2'\''
> check mc_id +1
line 15: '\''+1'\'' is not a number from 0 to 65535
> status 7
line 16: it holds a null character
> route ADD 10.0.0.0/33 239.0.0.0/8
line 17: '\''33'\'' is not a number from 0 to 32
> route ADD 10.0.0.0/8 239.0.0.0/255.0.0
line 18: '\''255.0.0'\'' is not an address or mask of this kind
> route ADD 10.0.0.0/8
line 19: a source and a group are missing
> route JUMP 10.0.0.0/8 239.0.0.0/8
line 20: nothing is called '\''JUMP'\'' here
> route ADD 10.0.0.0/8 ff0e::/ffff:: prio=low
line 21: nothing is called '\''low'\'' here
> route ADD 10.0.0.0/8 239.0.0.0/8 colour=red
line 22: there is no option '\''colour=red'\'' here
> route add 2001:db8::/ffff:ffff:: ff0e::/16 rpf=Drop_List rpf_group=512
ERROR   KY_API_ROUTER: Invalid RPF group 512 given. Valid RPF group must be given when RPF action is DROP_LIST or TRAP_LIST
  13 Parameter Error
> route GET_FIRST source=10.0.0.1/8
ERROR   KY_API_ROUTER: Given filter source address prefix 10.0.0.1/255.0.0.0 is not a valid IPv4 or IPv6 prefix
  13 Parameter Error
> rpf-group SET 3 IP_in_IP 4
ERROR   KY_API_ROUTER: Invalid VIF type VXLAN given for VIF index 1
  13 Parameter Error
> register NO-SUCH-EVENT fdb
line 26: nothing is called '\''NO-SUCH-EVENT'\'' here
> register port_added fdb maybe
line 27: nothing is called '\''maybe'\'' here
> register 1 fdb leave
NOTICE  ADVISER: adviser Init Success.
  0 Success
> event PORT-ADDED
    fdb hears PORT_ADDED: 0 Success
  0 Success
> deregister 1 fdb
ERROR   ADVISER: Can'\''t delete advisor from '\''PORT-ADDED'\'' adviser (Entry Not Found).
  21 Entry Not Found
> adviser deinit
NOTICE  ADVISER: adviser De-Init Success.
  0 Success
> event 1
ERROR   ADVISER: Can'\''t process event '\''PORT-ADDED'\'' (Database Wasn'\''t Initialized).
  18 Database Wasn'\''t Initialized
> memory put PORT 0
line 33: there is no block 0
> memory get PORT
line 34: a size is missing
> memory get 18 4
  14 Parameter Exceeds Range
> memory get PORT 0x10000 0x10000
ERROR   UTILS: Memory of 65536 elements of 65536 bytes exceeds range
  14 Parameter Exceeds Range
> egress GET ::/0 ff00::/8 1
line 37: a get takes no count
> memory get PORT many
line 38: '\''many'\'' is not a number from 0 to 4294967295
> memory get PORT 1 -1
line 39: '\''-1'\'' is not a number from 0 to 4294967295
> register 1 a_name_of_more_than_31_characters
line 40: '\''a_name_of_more_than_31_characters'\'' is too long for a module
26 of 40 lines could not be read'
if [ "$output" != "$expected" ] || [ "$status" != 1 ]; then
    printf 'exit status %s, output:\n%s\n' "$status" "$output"
    exit 1
fi

"$@" "$story" > /dev/full 2> /dev/null && { echo "a full disk goes unnoticed"; exit 1; }
"$@" /nonexistent > /dev/null 2>&1 && { echo "a missing file goes unnoticed"; exit 1; }
exit 0
