#!/bin/sh
# replay_test.sh REPLAY STORY: the story replays without a fault, and lines that cannot be read are
# reported with their numbers while the others are answered.
set -eu

replay=$1
"$replay" "$2" > /dev/null 2>&1 || { echo "the story does not replay"; exit 1; }

status=0
output=$(printf '%s\r\n' \
    'status 14 # a comment' 'nonsense' 'check device_id 256' 'check device_id -1' '' \
    'name port_mode 4294967296' 'name port_mode 0xFFFFFFFF' 'port nobody 0' 'port 16' \
    'port vlan_ports_set 0x40000000' 'status 0x' 'check swid 7seven' \
    'a a a a a a a a a a a a a a a a a' | "$replay" - 2>&1) || status=$?
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
9 of 13 lines could not be read'
if [ "$output" != "$expected" ] || [ "$status" != 1 ]; then
    printf 'exit status %s, output:\n%s\n' "$status" "$output"
    exit 1
fi

"$replay" /nonexistent > /dev/null 2>&1 && { echo "a missing file goes unnoticed"; exit 1; }
exit 0
