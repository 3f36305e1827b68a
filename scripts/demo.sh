#!/usr/bin/env bash
# The canbus module's whole road on one machine: a simulated CAN box on a
# pseudo-terminal plays a scenario, the module (loaded as the head unit loads it)
# reads the frames, acknowledges them and turns them into records, keys and prompts.
#
# Usage: scripts/demo.sh [id] [--duration S]
#   id            vehicle protocol of the catalogue (default 27)
#   --duration S  seconds the host runs before the demo ends (default 8)
# Environment: CANBUS_BUILD_DIR, the build folder to use (default build/).
set -euo pipefail
cd "$(dirname "$0")/.."

id=27
duration=8
while [ $# -gt 0 ]; do
    case "$1" in
        --duration)
            [ $# -ge 2 ] || { echo "demo.sh: --duration wants seconds" >&2; exit 2; }
            duration=$2; shift 2 ;;
        --duration=*) duration=${1#*=}; shift ;;
        -h|--help) sed -n '2,10p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
        [0-9]*) id=$1; shift ;;
        *) echo "demo.sh: unknown argument '$1' (try --help)" >&2; exit 2 ;;
    esac
done
[[ "$duration" =~ ^[0-9]+([.][0-9]+)?$ ]] || { echo "demo.sh: --duration wants seconds, not '$duration'" >&2; exit 2; }

scripts/deps.sh
build=${CANBUS_BUILD_DIR:-build}
echo "== building canbox-sim, canbus-host and the plug-in in $build/ =="
cmake -S . -B "$build" >/dev/null
cmake --build "$build" --target canbus-host canbox-sim canbusmodule -j "$(nproc 2>/dev/null || echo 2)" >/dev/null
sim=$build/tools/canbox-sim/canbox-sim
host=$build/tools/canbus-host/canbus-host

work=$(mktemp -d)
sim_pid=
cleanup() {
    [ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

# The short tour of a protocol if it has one, else all its scenarios.
scenario=()
[ -f "scenarios/$id/tour.json" ] && scenario=(--scenario tour)

cat <<TEXT
== protocol $id, for $duration s ==
  box  | the simulated CAN box: 'send' frames it writes, 'recv' what it reads from the
       | head unit (acknowledgements, link frames), each decoded and in hex
  host | the module: 'trace read/write' are the bytes it reads and writes on the serial
       | line (it acknowledges a frame before it acts on it, so its 'write' of the
       | ack comes first); 'air' 'doors' 'body' 'radar' are records (the fields that
       | changed), 'key' a key it injects, 'signal' a signal to the applications or a
       | platform call
TEXT

# Each tool counts time from its own start; side by side the order of lines says more.
untimed='s/^ +[0-9]+\.[0-9]{3}  //'
# The box outlives the host (it is stopped at the end); its own limit only guards
# against a demo that was killed.
sim_duration=$(awk -v d="$duration" 'BEGIN { print d + 10 }')
"$sim" --protocol "$id" "${scenario[@]}" --link "$work/canbox" --duration "$sim_duration" --loop \
    > >(sed -u -E "$untimed; s/^/box  | /") 2>&1 &
sim_pid=$!
for _ in $(seq 50); do
    [ -e "$work/canbox" ] && break
    sleep 0.1
done
[ -e "$work/canbox" ] || { echo "demo.sh: the box simulator did not start" >&2; exit 1; }

# The tour reverses at about 4 s: put the head unit in reverse as a driver would.
commands() {
    if [ -n "${scenario[*]}" ]; then
        sleep 3.8
        echo "reverse on"
    fi
}
set +e
commands | "$host" --protocol "$id" --port "$work/canbox" --data-dir "$work/data" \
    --duration "$duration" --trace 2>&1 | sed -u -E "$untimed; s/^/host | /"
status=${PIPESTATUS[1]}
set -e
sleep 0.3
echo "== done (host exit code $status) =="
exit "$status"
