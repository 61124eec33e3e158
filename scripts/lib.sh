# Functions that the scripts share; sourced, after `set -euo pipefail`.
# shellcheck shell=bash

# Root of the checkout, whatever folder a script is called from.
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*" >&2; }

die() {
  say "$*"
  exit 1
}

# packages_of GROUP...: the packages of these groups, one a line.
packages_of() {
  local group name
  while read -r group name _; do
    case " $* " in *" $group "*) printf '%s\n' "$name" ;; esac
  done <"$top/scripts/packages" | sort -u
}

# need_packages GROUP...: installs what is missing of these groups. apt is called only when something
# is; where it cannot be called, the line to run is printed.
need_packages() {
  local -a wanted missing=() as_root=()
  mapfile -t wanted < <(packages_of "$@")
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    # Another system: the tools come under other names, and CMake says what it does not find.
    say "not a Debian system, so nothing is installed; needed are: ${wanted[*]}"
    return 0
  fi
  local installed package
  installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null || true)
  for package in "${wanted[@]}"; do
    grep -qx -- "$package installed" <<<"$installed" || missing+=("$package")
  done
  ((${#missing[@]})) || return 0

  local line="apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null || ! { sudo -n true 2>/dev/null || [[ -t 0 && -t 2 ]]; }; then
      die "some packages are missing; as root, run: $line"
    fi
    as_root=(sudo)
  fi
  say "installing: ${missing[*]}"
  as_root+=(env DEBIAN_FRONTEND=noninteractive)
  if ! quietly "${as_root[@]}" apt-get -q update </dev/null ||
    ! quietly "${as_root[@]}" apt-get -q install -y --no-install-recommends "${missing[@]}" \
      </dev/null; then
    die "the packages could not be installed; as root, run: $line"
  fi
}

# quietly COMMAND...: its output is shown only when it fails.
quietly() {
  local log status=0
  log=$(mktemp)
  "$@" >"$log" 2>&1 || status=$?
  ((status == 0)) || cat "$log" >&2
  rm -f "$log"
  return "$status"
}

# configure_and_build PRESET [TARGET...]
configure_and_build() {
  local preset=$1
  shift
  local -a targets=()
  (($#)) && targets=(--target "$@")
  # From the checkout, where the presets are; the caller stays where it is, for the sake of the
  # relative paths among its arguments.
  quietly env -C "$top" cmake --preset "$preset" || die "preset $preset could not be configured"
  quietly env -C "$top" cmake --build --preset "$preset" "${targets[@]}" -j "$(nproc)" ||
    die "preset $preset could not be built"
}

# Processes and folders of the virtual screen, undone by leave_display.
display_pids=()
display_folder=

# add_cookie FILE SCREEN COOKIE: into a file of display_folder; not by the command line, which is
# everybody's to read.
add_cookie() {
  quietly xauth -f "$display_folder/$1" source - <<<"add $2 . $3" || die "no cookie for the screen"
}

# enter_display WIDTHxHEIGHT: starts a virtual screen with a window manager and points DISPLAY at it.
# Nothing of the user's desktop is used: no settings, no session bus, no clipboard. Who lacks the
# cookie, as other users of the machine do, can neither look at the screen nor type into it.
enter_display() {
  local size=$1 number='' cookie i
  display_folder=$(mktemp -d)
  trap leave_display EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM
  mkdir -p "$display_folder"/{config/gtk-3.0,home,runtime}
  : >"$display_folder/number"
  chmod 700 "$display_folder/runtime"
  # A blinking caret or a fading button would make two pictures of one state differ.
  printf '[Settings]\ngtk-cursor-blink=0\ngtk-enable-animations=0\n' \
    >"$display_folder/config/gtk-3.0/settings.ini"

  # The server goes by the cookie alone; the number beside it is for those who connect.
  cookie=$(mcookie)
  add_cookie server :0 "$cookie"
  # With -displayfd the server itself takes the first free number, and says it when it is ready.
  Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp \
    -auth "$display_folder/server" 3>"$display_folder/number" >"$display_folder/xvfb.log" 2>&1 &
  display_pids+=($!)
  for ((i = 0; i < 200; i++)); do
    number=$(<"$display_folder/number")
    [[ -n $number ]] && break
    kill -0 "${display_pids[0]}" 2>/dev/null || break
    sleep 0.1
  done
  if [[ -z $number ]]; then
    cat "$display_folder/xvfb.log" >&2
    die "the virtual screen did not start"
  fi

  add_cookie authority ":$number" "$cookie"
  unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS GTK_THEME GTK_MODULES
  unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME
  export DISPLAY=":$number" XAUTHORITY="$display_folder/authority"
  export HOME="$display_folder/home" XDG_RUNTIME_DIR="$display_folder/runtime"
  export XDG_CONFIG_DIRS="$display_folder/config:/etc/xdg"
  export LANG=C.UTF-8 LC_ALL=C.UTF-8 GDK_BACKEND=x11
  # There is no session bus: without these GTK looks for its accessibility and settings services.
  export NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory

  openbox --sm-disable >"$display_folder/openbox.log" 2>&1 &
  display_pids+=($!)
  for ((i = 0; i < 100; i++)); do
    xdotool get_desktop >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  cat "$display_folder/openbox.log" >&2
  die "the window manager did not start"
}

# stop PID: asks the process to end, and ends it when it has not within two seconds.
stop() {
  local i
  kill "$1" 2>/dev/null || return 0
  for ((i = 0; i < 40; i++)); do
    kill -0 "$1" 2>/dev/null || break
    sleep 0.05
  done
  kill -KILL "$1" 2>/dev/null || true
}

leave_display() {
  local status=$? i
  # Last started, first stopped: nothing complains of a screen that is gone.
  for ((i = ${#display_pids[@]} - 1; i >= 0; i--)); do
    stop "${display_pids[i]}"
  done
  [[ -n $display_folder ]] && rm -rf "$display_folder"
  return "$status"
}
