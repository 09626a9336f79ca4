#!/usr/bin/env bash
# Builds Tarnwick if need be and starts it on the user's own library.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

(
  cd "$top"
  ./scripts/setup.sh
  cmake --preset release
  cmake --build build/release --target bin/tarnwick
)
exec "$top/build/release/bin/tarnwick" "$@"
