#!/usr/bin/env bash
# Builds every libFuzzer target of bench/fuzz in a clang build of its own and
# runs each for a bounded time, then prints executions and crashes per
# target. Not part of the test suite: it takes minutes and needs clang.
#
#   bench/fuzz.sh                 60 seconds per target
#   FUZZ_SECONDS=300 bench/fuzz.sh
#   bench/fuzz.sh 10 settings     10 seconds, only targets whose name has "settings"
#
# Inputs that crash are kept in build-fuzz/artifacts/<target>/, the corpus
# grows in build-fuzz/corpus/<target>/ from run to run. Exits non-zero when a
# target crashed.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$here"
seconds="${1:-${FUZZ_SECONDS:-60}}"
filter="${2:-}"
dir="${FUZZ_BUILD_DIR:-build-fuzz}"
jobs="${FUZZ_JOBS:-2}"

for tool in clang clang++; do
    if ! command -v "$tool" >/dev/null; then
        echo "fuzz.sh: $tool is missing (apt-get install clang libclang-rt-14-dev)" >&2
        exit 2
    fi
done

launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B "$dir" -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DZELMOR_FUZZ=ON -DZELMOR_CMAKE_PROGRAM="$(command -v cmake)" "${launcher[@]}" >/dev/null
cmake --build "$dir" --target fuzz_targets -j"$jobs"

# Targets that touch files (the defaults tool) do so under here, never in
# the real temporary folder or the user's settings.
scratch="$here/$dir/fuzz-scratch"
rm -rf "$scratch"
mkdir -p "$scratch"

printf '\n%-28s %14s %8s\n' target executions crashes
status=0
for program in "$dir"/fuzz/fuzz_*; do
    [ -x "$program" ] || continue
    name="$(basename "$program")"
    [[ -z "$filter" || "$name" == *"$filter"* ]] || continue
    corpus="$dir/corpus/$name"
    artifacts="$dir/artifacts/$name"
    log="$dir/logs/$name.log"
    mkdir -p "$corpus" "$artifacts" "$(dirname "$log")"
    before="$(find "$artifacts" -type f | wc -l)"
    # Qt keeps caches until exit, which the leak checker would report.
    TMPDIR="$scratch" HOME="$scratch" XDG_CONFIG_HOME="$scratch/config" QT_QPA_PLATFORM=offscreen \
    ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 \
    UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
        "$program" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
        -artifact_prefix="$artifacts/" "$corpus" >"$log" 2>&1 || true
    executions="$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)"
    # A crash ends the run before the final figures; take the last progress line.
    [ -n "$executions" ] || executions="$(grep -oE '^#[0-9]+' "$log" | tail -1 | tr -d '#')"
    crashes=$(( $(find "$artifacts" -type f | wc -l) - before ))
    printf '%-28s %14s %8s\n' "$name" "${executions:-?}" "$crashes"
    if ((crashes > 0)); then
        status=1
        grep -m3 -E 'ERROR|runtime error|deadly signal' "$log" | sed 's/^/    /' || true
    fi
done
rm -rf "$scratch"
exit "$status"
