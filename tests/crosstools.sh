#!/usr/bin/env bash
# In a cross build: the plug-in is built for the target, and the target's canbus-host,
# run under the emulator, loads it and decodes what the target's canbox-sim sends it
# over a pseudo-terminal.
# Usage: crosstools.sh PLUGIN HOST SIM SCENARIO-DIR EMULATOR [EMULATOR-ARG ...]
set -euo pipefail
plugin=$1 host=$2 sim=$3 scenarios=$4
shift 4
emulator=("$@")

described=$(file -L "$plugin")
echo "$described"
case "$described" in
    *"ELF 32-bit LSB shared object, ARM, EABI5"*) ;;
    *) echo "crosstools.sh: the plug-in is not a 32-bit ARM library" >&2; exit 1 ;;
esac

work=$(mktemp -d)
sim_pid=
cleanup() {
    [ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null
    wait 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT

"${emulator[@]}" "$sim" -p 27 --scenario "$scenarios/27/climate.json" --link "$work/canbox" \
    --duration 60 --quiet >"$work/sim.out" 2>&1 &
sim_pid=$!
for _ in $(seq 150); do
    [ -e "$work/canbox" ] && break
    sleep 0.2
done
[ -e "$work/canbox" ] || { echo "crosstools.sh: canbox-sim did not start" >&2; cat "$work/sim.out" >&2; exit 1; }

"${emulator[@]}" "$host" --plugin "$plugin" -p 27 --port "$work/canbox" --json --duration 6 \
    --data-dir "$work/data" >"$work/host.out" 2>&1 || { cat "$work/host.out" >&2; exit 1; }
# The scenario's second frame: the air on with A/C; the module acknowledged it first.
grep -E '"record": ?"air"' "$work/host.out" | grep -E '"airAC": ?1[,}]' | head -n1 ||
    { echo "crosstools.sh: canbus-host showed no climate record with A/C on" >&2; cat "$work/host.out" >&2; exit 1; }
echo "canbus-host (ARM, under ${emulator[0]##*/}) decoded canbox-sim's climate scenario over a pseudo-terminal"
