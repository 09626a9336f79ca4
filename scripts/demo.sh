#!/usr/bin/env bash
# Shows Tarnwick on a made-up DJ library: installs what is missing, builds, makes the library and
# opens the window on it. Where there is no display it renders every screen to a picture instead.
#
#   scripts/demo.sh            keeps the library of the last time, and what was done to it
#   scripts/demo.sh --fresh    makes it anew
#
# The demo's home and data folder lie in build/demo: the user's own library is never touched.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

fresh=no
case ${1:-} in
  '') ;;
  --fresh) fresh=yes ;;
  *) echo "demo.sh: unknown option $1 (known: --fresh)" >&2; exit 2 ;;
esac

bin=$PWD/build/release/bin
tools=$PWD/build/release/tools
demo=$PWD/build/demo

./scripts/setup.sh
cmake --preset release
cmake --build build/release \
  --target bin/tarnwick bin/tarnwick-cli tools/demo_library tools/screenshots

# The mark comes last, so that a library whose making was cut short is made again.
if [ $fresh = yes ] || [ ! -e "$demo/made" ]; then
  rm -rf "$demo"
  mkdir -p "$demo"
  "$tools/demo_library" --tracks 2000 --seed 7 --out "$demo/home"
  touch "$demo/made"
fi

# Runs a program that takes build/demo/home for the user's home. The X server's key stays where the
# user's own home has it.
in_demo() {
  local key=${XAUTHORITY:-${HOME:-}/.Xauthority}
  env -u XDG_CONFIG_HOME -u XDG_CACHE_HOME -u XDG_STATE_HOME XAUTHORITY="$key" \
    HOME="$demo/home" XDG_DATA_HOME="$demo/data" "$@"
}

# A community for the demo: a Signal server whose invented DJs play some of the library. It goes when
# this script ends, and begins anew each time.
serve_signal() {
  in_demo "$bin/tarnwick-cli" --json scan >"$demo/scan.json"
  : >"$demo/signal.txt"
  python3 -B tools/signal_server/signal_server.py --seed-djs 40 --seed-scan "$demo/scan.json" \
    >"$demo/signal.txt" &
  trap 'kill $!' EXIT
  for _ in {1..100}; do
    [ -s "$demo/signal.txt" ] && break
    sleep 0.1
  done
  in_demo "$bin/tarnwick-cli" signal set --server "$(sed 's/.* //' "$demo/signal.txt")"
}

serve_signal
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  echo "Opening Tarnwick on the demo library in $demo/home"
  in_demo TARNWICK_AUTOSCAN=1 "$bin/tarnwick"
  exit
fi

echo "There is no display here: rendering every screen to a picture instead."
in_demo QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software \
  "$tools/screenshots" --out "$demo/pictures"
echo "The pictures lie in $demo/pictures:"
(cd "$demo/pictures" && printf '  %s\n' *.png)
echo
in_demo "$bin/tarnwick-cli" score
echo
in_demo "$bin/tarnwick-cli" signal landing | sed -n 1,10p
