# shellcheck shell=bash
# What a journey needs: a screen of its own, the program on it, a hand and an eye. Sourced by bash scripts.
#
# Coordinates are pixels. An area is "x,y,width,height" inside the window it is used with; a colour is "rrggbb".
# Every wait polls until what is waited for is there, and fails loudly after its time is up.
#
#   journey_begin <artefact folder>    first of all; the folder takes screenshots and logs
#   start_display <size> [option...]   Xvfb on a free number, with a window manager; size as in 1280x800x24
#   start_program <binary>             sets program_pid; with BLOCKHOUSE_RUNNER set, that program runs it
# Everything that was started ends with the script.

declare -a started_pids=()
artefacts=""
program_pid=""
poll_seconds=0.05

journey_begin() {
  artefacts=$1
  mkdir -p "$artefacts"
  started_pids=()
  trap 'end_everything' EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM
}

# Children first: the program before its window manager, and that before the screen under both.
end_everything() {
  local i pid
  for ((i = ${#started_pids[@]} - 1; i >= 0; i--)); do
    pid=${started_pids[i]}
    kill "$pid" 2>/dev/null || continue
    wait "$pid" 2>/dev/null || true
  done
  started_pids=()
}

say() { printf '%s\n' "$*"; }

fail() {
  say "FAILED: $*" >&2
  if [[ -n ${DISPLAY:-} && -n $artefacts ]] && screenshot "$artefacts/failure.png" 2>/dev/null; then
    say "  what was on the screen: $artefacts/failure.png" >&2
  fi
  if [[ -n $artefacts && -s $artefacts/program.log ]]; then
    say "  what the program said:" >&2
    sed 's/^/    /' "$artefacts/program.log" | tail -n 40 >&2
  fi
  exit 1
}

# wait_for <seconds> <what> <command...>: runs the command until it succeeds.
wait_for() {
  local seconds=$1 what=$2 deadline
  shift 2
  deadline=$((SECONDS + seconds + 1))
  until "$@"; do
    ((SECONDS < deadline)) || fail "no $what within $seconds seconds"
    program_has_not_died || fail "the program ended while waiting for $what"
    sleep "$poll_seconds"
  done
}

program_has_not_died() { [[ -z $program_pid ]] || kill -0 "$program_pid" 2>/dev/null; }

# ---- the screen -----------------------------------------------------------------------------------------------

start_display() {
  local size=$1 number="$artefacts/display_number"
  shift
  : >"$number"
  Xvfb -displayfd 3 -screen 0 "$size" -nolisten tcp -noreset "$@" 3>"$number" >"$artefacts/xvfb.log" 2>&1 &
  started_pids+=($!)
  wait_for 20 "virtual screen" test -s "$number"
  DISPLAY=":$(<"$number")"
  rm "$number"
  export DISPLAY
  unset WAYLAND_DISPLAY
  openbox --sm-disable >"$artefacts/openbox.log" 2>&1 &
  started_pids+=($!)
  wait_for 20 "window manager" window_manager_answers
}

window_manager_answers() { xdotool get_num_desktops >/dev/null 2>&1; }

# import asks for a click when the window it is to look at has gone, and nobody is there to click.
look() { timeout 20 import -silent "$@" </dev/null; }

# screenshot <file> [window]
screenshot() { look -window "${2:-root}" "$1"; }

# pixels <window> <area>: one "rr gg bb" line a pixel, row by row, the area lying wholly in the window. Who reads them
# reads them all: with pipefail, a reader that stops early makes the pipe fail.
pixels() {
  local x y width height
  IFS=, read -r x y width height <<<"$2"
  look -window "$1" -crop "${width}x${height}+$x+$y" +repage -depth 8 rgb:- | od -An -v -w3 -tx1
}

# settled <command...>: waits until what the command prints has stopped changing.
settled() {
  local before="" now still=0 deadline=$((SECONDS + 15))
  while ((still < 3)); do
    now=$("$@")
    if [[ $now == "$before" ]]; then still=$((still + 1)); else still=0; fi
    before=$now
    ((SECONDS < deadline)) || fail "this never comes to rest: $*"
    sleep "$poll_seconds"
  done
}

# snapshot <window> <area>: a text that stands for how the area looks. Beware of areas with a blinking caret.
snapshot() { pixels "$1" "$2" | cksum; }

# count_colour <window> <area> <colour>
count_colour() { pixels "$1" "$2" | grep -c "${3:0:2} ${3:2:2} ${3:4:2}" || true; }

has_colour() { (($(count_colour "$1" "$2" "$3") >= ${4:-1})); }

lacks_colour() { (($(count_colour "$1" "$2" "$3") == 0)); }

# rows_of_colour <window> <area> <colour>: "first last" row that holds the colour.
rows_of_colour() {
  local width
  IFS=, read -r _ _ width _ <<<"$2"
  pixels "$1" "$2" | awk -v width="$width" -v colour=" ${3:0:2} ${3:2:2} ${3:4:2}" '
    BEGIN { first = -1 }
    $0 == colour { last = int((NR - 1) / width); if (first < 0) first = last }
    END { if (first < 0) exit 1; print first, last }'
}

# colour_runs <window> <area> <colour>: for each line of text that holds the colour, from the top: "first last white",
# the colour's first and last column in the area and how many white pixels follow the last one. Neighbouring lines that
# end in the same column count as one.
colour_runs() {
  local width
  IFS=, read -r _ _ width _ <<<"$2"
  pixels "$1" "$2" | awk -v width="$width" -v colour=" ${3:0:2} ${3:2:2} ${3:4:2}" '
    function close_line() { if (last >= 0) print first, last, white; last = -1 }
    BEGIN { last = -1 }
    {
      column = (NR - 1) % width
      if (column == 0) { row_first = -1; row_last = -1; follows = 0; row_white = 0 }
      if ($0 == colour) { if (row_first < 0) row_first = column; row_last = column; row_white = 0; follows = 1 }
      else if (follows && $0 == " ff ff ff") row_white++
      else follows = 0
      if (column == width - 1) {
        if (row_last != last) { close_line(); first = row_first; last = row_last; white = row_white }
        else if (last >= 0) {
          if (row_first < first) first = row_first
          if (row_white < white) white = row_white
        }
      }
    }
    END { close_line() }'
}

# changed_columns <window> <area> <before file>: "first last" column that differs from the pixels saved before.
changed_columns() {
  local width
  IFS=, read -r _ _ width _ <<<"$2"
  pixels "$1" "$2" | paste -d'|' "$3" - | awk -F'|' -v width="$width" '
    BEGIN { first = -1 }
    $1 != $2 { c = (NR - 1) % width; if (first < 0 || c < first) first = c; if (c > last) last = c }
    END { if (first < 0) exit 1; print first, last }'
}

# changed_rows <window> <area> <before file>: the same for rows.
changed_rows() {
  local width
  IFS=, read -r _ _ width _ <<<"$2"
  pixels "$1" "$2" | paste -d'|' "$3" - | awk -F'|' -v width="$width" '
    BEGIN { first = -1 }
    $1 != $2 { last = int((NR - 1) / width); if (first < 0) first = last }
    END { if (first < 0) exit 1; print first, last }'
}

# ---- the program ----------------------------------------------------------------------------------------------

start_program() {
  local platform=(env QT_QPA_PLATFORM=xcb)
  [[ -z ${BLOCKHOUSE_RUNNER:-} ]] || platform=(env -u QT_QPA_PLATFORM "$BLOCKHOUSE_RUNNER")
  QT_ACCESSIBILITY=0 "${platform[@]}" "$1" >"$artefacts/program.log" 2>&1 </dev/null &
  program_pid=$!
  started_pids+=("$program_pid")
}

# end_program <main window>: closes the window as a user does and returns the program's exit code.
end_program() {
  local pid=$program_pid
  program_pid=""
  xdotool windowactivate --sync "$1" key alt+F4
  wait_for 15 "end of the program" has_ended "$pid"
  wait "$pid"
}

has_ended() { ! kill -0 "$1" 2>/dev/null; }

# window_named <regular expression>: the id of the program's visible window with that title.
window_named() {
  xdotool search --onlyvisible --name "$1" 2>/dev/null | awk 'NR == 1 { print; found = 1 } END { exit !found }'
}

is_a_splash_window() { xprop -id "$1" _NET_WM_WINDOW_TYPE 2>/dev/null | grep -q '= _NET_WM_WINDOW_TYPE_SPLASH'; }

# lies_above <window> <other window>
lies_above() {
  xprop -root _NET_CLIENT_LIST_STACKING | tr -cs '0-9a-fx' '\n' | grep '^0x' |
    awk -v upper="$(printf '0x%x' "$1")" -v lower="$(printf '0x%x' "$2")" '
      $1 == lower { seen = 1 }
      $1 == upper { above = seen }
      END { exit !above }'
}

no_window_named() { ! window_named "$1" >/dev/null; }

visible_windows() { xdotool search --onlyvisible --name '' 2>/dev/null | sort; }

# new_window <list of windows before>: a window that was not there then. Tool tips are too low to count.
new_window() {
  local id height
  for id in $(comm -13 "$1" <(visible_windows)); do
    read -r _ height <<<"$(window_size "$id" 2>/dev/null)"
    if ((${height:-0} >= 40)); then
      echo "$id"
      return 0
    fi
  done
  return 1
}

no_new_window() { ! new_window "$1" >/dev/null; }

# window_sized <width> <height>: the id of a visible window of just that size.
window_sized() {
  local id WIDTH HEIGHT
  for id in $(xdotool search --onlyvisible --name '' 2>/dev/null); do
    eval "$(xdotool getwindowgeometry --shell "$id" 2>/dev/null | grep -E '^(WIDTH|HEIGHT)=[0-9]+$')"
    if [[ ${WIDTH:-} == "$1" && ${HEIGHT:-} == "$2" ]]; then
      echo "$id"
      return 0
    fi
  done
  return 1
}

# window_size <window>: "width height"
window_size() {
  xdotool getwindowgeometry --shell "$1" | awk -F= '/^WIDTH/ { w = $2 } /^HEIGHT/ { h = $2 } END { print w, h }'
}

resize_window() {
  xdotool windowsize "$1" "$2" "$3"
  wait_for 10 "window of $2 x $3" has_size "$1" "$2 $3"
}

has_size() { [[ $(window_size "$1") == "$2" ]]; }

# ---- the hand -------------------------------------------------------------------------------------------------

point_at() { xdotool mousemove --window "$1" "$2" "$3"; }

click() { xdotool mousemove --window "$1" "$2" "$3" click 1; }

double_click() { xdotool mousemove --window "$1" "$2" "$3" click --repeat 2 --delay 60 1; }

# press_key <key...>: to whatever has the keyboard.
press_key() { xdotool key --delay 20 "$@"; }
