#!/usr/bin/env bash
# Runs dictations with loopback only, and with a network interface that counts sent packets.
#
#   offline.sh TEST-PROGRAM FILTER
#
# Needs permission to create network namespaces; without it prints a message and exits with 77.
set -euo pipefail
program=$1 filter=$2

unshare --net true 2>/dev/null || { echo "network namespaces are not permitted here: SKIPPED"; exit 77; }

echo "Loopback only"
unshare --net -- bash -euc 'ip link set lo up; [ -z "$(ip route show)" ]; exec "$@"' - "$program" --gtest_filter="$filter"

echo "With a default route"
unshare --net -- bash -euc '
  ip link set lo up
  ip link add out type veth peer name elsewhere
  # Do not count neighbour discovery by the kernel.
  echo 1 > /proc/sys/net/ipv6/conf/out/disable_ipv6
  echo 1 > /proc/sys/net/ipv6/conf/elsewhere/disable_ipv6
  ip link set out up; ip link set elsewhere up
  ip address add 198.51.100.2/24 dev out
  ip neighbour add 198.51.100.1 lladdr 02:00:00:00:00:01 dev out
  ip route add default via 198.51.100.1
  # From the kernel, since /sys shows the namespace in which it was mounted.
  sent() { ip -json -statistics link show dev out |
    python3 -c "import json, sys; print(json.load(sys.stdin)[0][\"stats64\"][\"tx\"][\"packets\"])"; }
  before=$(sent)
  "$@"
  after=$(sent)
  echo "packets sent out: $((after - before))"
  [ "$after" -eq "$before" ]
  # Prove that the counter works: this one packet must be counted.
  (exec 3<>/dev/udp/192.0.2.1/9; echo x >&3) || true
  [ "$(sent)" -gt "$after" ]
' - "$program" --gtest_filter="$filter" 
