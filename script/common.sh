# SPDX-FileCopyrightText: The Orvane authors
# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# Sourced by the scripts of this folder: where the repository is, and how a step is run and shown.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
logs=$root/build/logs
jobs=${ORVANE_JOBS:-$(nproc)}
mkdir -p "$logs"

# A CI clone lives at another path each time; with paths taken relative to it, the compiler cache still hits.
if [[ ${CI:-} == true ]]; then
  export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
fi

fail() {
  printf 'error: %s\n' "$*" >&2
  exit 1
}

# step NAME MINUTES COMMAND...
# Runs a command with its output in build/logs/NAME.log, for MINUTES at most. A failure shows the end of the
# log and ends the script.
step() {
  local name=$1 minutes=$2 started=$SECONDS status=0
  shift 2
  local log=$logs/${name//[^[:alnum:]]/-}.log
  # In a terminal the command stays in the foreground, so that Ctrl-C reaches it; elsewhere it gets a process
  # group of its own, so that a time-out ends all of it.
  local limit=(timeout --kill-after=10s)
  if [[ -t 1 ]]; then limit+=(--foreground); fi
  printf '%-36s ' "$name"
  "${limit[@]}" "${minutes}m" "$@" >"$log" 2>&1 </dev/null || status=$?
  if ((status == 0)); then
    printf 'ok  %4d s\n' $((SECONDS - started))
    return
  fi
  if ((status == 124)); then
    printf 'TIMED OUT after %d min\n' "$minutes"
  else
    printf 'FAILED (exit %d) after %d s\n' "$status" $((SECONDS - started))
  fi
  printf -- '---- the end of %s:\n' "${log#"$root"/}"
  # Without the lines of tests that passed.
  grep -vE '^ +Start +[0-9]+: | Passed +[0-9.]+ sec$' "$log" | tail -n "${ORVANE_LOG_LINES:-120}"
  printf -- '----\n'
  exit 1
}

# closing_lines NAME: what the test runner of that step said at its end.
closing_lines() {
  sed -n '/% tests passed/,$p' "$logs/${1//[^[:alnum:]]/-}.log"
}

configure() {
  step "configure $1" 5 cmake --preset "$@"
}

build() {
  local preset=$1
  shift
  step "build $preset" 40 cmake --build --preset "$preset" --parallel "$jobs" "$@"
}
