#!/usr/bin/env bash
# Installs what is missing, builds, runs scripts/check and then every test, with no display.
# Arguments go to ctest: scripts/test.sh -R crate runs the tests with "crate" in their name.
# TARNWICK_PRESET=asan (or tsan) does the same under the sanitizers.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset=${TARNWICK_PRESET:-dev}
jobs=$(nproc 2>/dev/null || getconf _NPROCESSORS_ONLN)

./scripts/setup.sh --interop
cmake --preset "$preset"
cmake --build --preset "$preset" --parallel "$jobs"

checked=yes
./scripts/check --preset "$preset" || checked=no

status=0
scripts/at_home "$preset" \
  ctest --test-dir "build/$preset" --output-on-failure --no-tests=error -j"$jobs" "$@" ||
  status=$?

if [ $checked = no ]; then
  echo "scripts/check found faults: they stand above the tests." >&2
  status=1
fi
exit $status
