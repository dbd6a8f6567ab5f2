#!/usr/bin/env bash
# Runs dictations where there is no network but loopback, and where there is one that counts what is sent.
#
#   offline.sh TEST-PROGRAM FILTER
#
# Needs the right to make network namespaces; says so and ends with 77 where that is missing.
set -euo pipefail
program=$1 filter=$2

unshare --net true 2>/dev/null || { echo "no network namespaces may be made here: SKIPPED"; exit 77; }

echo "Loopback alone"
unshare --net -- bash -euc 'ip link set lo up; [ -z "$(ip route show)" ]; exec "$@"' - "$program" --gtest_filter="$filter"

echo "With a route that leads out"
unshare --net -- bash -euc '
  ip link set lo up
  ip link add out type veth peer name elsewhere
  # Neighbour discovery of the kernel itself is not what is counted.
  echo 1 > /proc/sys/net/ipv6/conf/out/disable_ipv6
  echo 1 > /proc/sys/net/ipv6/conf/elsewhere/disable_ipv6
  ip link set out up; ip link set elsewhere up
  ip address add 198.51.100.2/24 dev out
  ip neighbour add 198.51.100.1 lladdr 02:00:00:00:00:01 dev out
  ip route add default via 198.51.100.1
  # Asked of the kernel, since /sys shows the namespace in which it was mounted.
  sent() { ip -json -statistics link show dev out |
    python3 -c "import json, sys; print(json.load(sys.stdin)[0][\"stats64\"][\"tx\"][\"packets\"])"; }
  before=$(sent)
  "$@"
  after=$(sent)
  echo "packets sent out: $((after - before))"
  [ "$after" -eq "$before" ]
  # The counter counts: this one packet must show.
  (exec 3<>/dev/udp/192.0.2.1/9; echo x >&3) || true
  [ "$(sent)" -gt "$after" ]
' - "$program" --gtest_filter="$filter" 
