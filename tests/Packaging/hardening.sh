#!/usr/bin/env bash
# Checks that the installed programs were built with hardening.
#
#   hardening.sh BUILD [unoptimised]
set -euo pipefail
build=$1
if [ "${2:-}" = unoptimised ]; then
  echo "SKIPPED: this build is unoptimised or has sanitizers; only release builds are checked."
  exit 77
fi
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cmake --install "$build" --prefix "$folder" >/dev/null

failures=0
# expect WHAT PATTERN COMMAND…: the command's output must have a line that matches.
expect() {
  local what=$1 pattern=$2
  shift 2
  if ! grep -qE -- "$pattern" <<<"$("$@")"; then
    echo "$program: no $what" >&2
    failures=1
  fi
}
export LC_ALL=C
for program in "$folder/bin/talmo" "$folder/bin/talmoctl"; do
  expect "position-independent executable" 'Type: +DYN' readelf -hW "$program"
  expect "RELRO" 'GNU_RELRO' readelf -lW "$program"
  expect "immediate binding" 'FLAGS_1.*NOW' readelf -dW "$program"
  expect "stack without execution" 'GNU_STACK.* RW ' readelf -lW "$program"
  expect "stack protector" '__stack_chk_fail' readelf -W --dyn-syms "$program"
  expect "fortified call" '__[a-z]+_chk(@| )' readelf -W --dyn-syms "$program"
  if [ "$(uname -m)" = x86_64 ]; then
    expect "control-flow enforcement in main()" 'endbr64' objdump --disassemble=main "$program"
  fi
done
exit $failures
