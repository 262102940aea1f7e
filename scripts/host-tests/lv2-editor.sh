#!/usr/bin/env bash
# Moves everything that the editor has in a host with a window manager, and reads from the host's saved states what has
# arrived at the ports; compares the sound with the command line's and the needles with the command line's picture.
#   scripts/host-tests/lv2-editor.sh [BUILD DIR]        default: build/release
# With PICTURES set to a folder, screenshots are left there.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
[ -n "${DISPLAY_GIVEN:-}" ] || DISPLAY_GIVEN=1 exec tests/support/with-xvfb.sh "$0" "$build"
cli=$build/src/hosts/cli/qor-limiter
probe=$build/tests/hosts/standalone/jack-probe
uri=urn:qor:limiter
client=limiter

work=$(mktemp -d)
pids=()
trap 'kill "${pids[@]}" 2>/dev/null || true; rm -rf "$work"' EXIT
export JACK_DEFAULT_SERVER=qor-limiter-editor-$$ LV2_PATH=$build/lv2:/usr/lib/lv2
export HOME=$work XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work/run
export GDK_BACKEND=x11 NO_AT_BRIDGE=1 GTK_CSD=0 LC_ALL=C.UTF-8
mkdir -p "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR"

fail() {
  echo "FAILED: $*" >&2
  import -window root "${PICTURES:-/tmp}/lv2-editor-failed.png" 2>/dev/null || true
  tail -n 5 "$work"/*.log >&2 2>/dev/null || true
  exit 1
}
eventually() { # COMMAND...: until it succeeds, for ten seconds at most
  for _ in $(seq 100); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  return 1
}
picture() { # NAME [WINDOW]
  [ -z "${PICTURES:-}" ] || { mkdir -p "$PICTURES"; import -window "${2:-root}" "$PICTURES/$1.png"; }
}

# --- the host ---

scale=1 # pixels per point

find_editor() {
  editor=$(xdotool search --onlyvisible --class '^qor-limiter$' | tail -1) && [ -n "$editor" ]
}
host_has_keyboard() { [ "$(xdotool getactivewindow)" = "$window" ] && [ "$(xdotool getwindowfocus -f)" != "$editor" ]; }
start_host() {
  stdbuf -oL jalv.gtk3 --print-controls --jack-name "$client" "$uri" >"$work/jalv.log" 2>&1 &
  host=$!
  pids+=("$host")
  eventually find_editor || fail "the host shows no editor"
  window=$(xdotool search --onlyvisible --name '^QOR Limiter$' | while read -r id; do
    [ "$id" = "$editor" ] || echo "$id"
  done | tail -1)
  eventually host_has_keyboard || xdotool windowactivate --sync "$window"
  sleep 0.5
}
stop_host() {
  kill -TERM "$host"
  wait "$host" 2>/dev/null || true
  eventually bash -c "! jack_lsp | grep -q ^$client:" || fail "the host's ports stay behind"
}
size_of() { # WINDOW
  xdotool getwindowgeometry --shell "$1" | awk -F= '/^WIDTH/ {w = $2} /^HEIGHT/ {print w "x" $2}'
}
has_size() { [ "$(size_of "$editor")" = "$1" ]; }

# --- hands; places are points of the editor's ---

at() { echo "mousemove --window $editor $(($1 * scale)) $(($2 * scale)) sleep 0.1"; }
click() { # X Y
  # shellcheck disable=SC2046 # words
  xdotool $(at "$1" "$2") mousedown 1 sleep 0.1 mouseup 1 sleep 0.3
}
drag() { # X Y DX DY, in four moves
  local steps="" i
  for i in 1 2 3 4; do steps+=" $(at $(($1 + $3 * i / 4)) $(($2 + $4 * i / 4)))"; done
  # shellcheck disable=SC2046,SC2086
  xdotool $(at "$1" "$2") mousedown 1 sleep 0.1 $steps mouseup 1 sleep 0.3
}
wheel() { # X Y BUTTON TIMES
  # shellcheck disable=SC2046
  xdotool $(at "$1" "$2") click --repeat "$4" --delay 60 "$3" sleep 0.3
}
enter() { # TEXT: into the field that is open
  xdotool key ctrl+a sleep 0.1 type --delay 30 -- "$1"
  xdotool sleep 0.2 key Return sleep 0.3
}

# --- what stands at the ports ---

saves=0
declare -A want=([attack]=0.1 [release]=0.5 [threshold]=0.8 [knee]=0.5 [trim]=0.5 [mix]=1 [mode]=0 [bypass]=0
  [audition]=0 [input_filter_hp]=0 [input_filter_lp]=1 [final_limiter]=1 [enabled]=1)
want_preset() { # NAME
  local symbol value
  for symbol in "${!want[@]}"; do
    [ "$symbol" = enabled ] && continue
    value=$("$cli" presets show "$1" | awk -v name="${symbol//_/}" '$1 == name {print $2}')
    want[$symbol]=${value:?no $symbol in the preset $1}
  done
}
index_of_preset() { # NAME: how many stand before it
  "$cli" presets | awk -v name="$1" '$1 == "factory" {sub(/^factory +/, ""); if ($0 == name) print n + 0; n++}'
}
dialog() { xdotool search --onlyvisible --name '^Save State$'; }
no_dialog() { ! dialog; }
# The host saves through its menu's key, which only reaches it while the editor leaves the keyboard to it.
save() {
  state=$work/state-$((saves += 1))
  eventually host_has_keyboard || fail "the host does not get the keyboard back"
  xdotool key ctrl+s
  eventually dialog || fail "the host does not open its dialog"
  sleep 0.5
  xdotool type --delay 10 "$state"
  for _ in 1 2 3 4 5; do
    xdotool sleep 0.5 key Return sleep 0.7
    no_dialog && break
  done
  eventually test -s "$state/state.ttl" || fail "the host saves no state"
  eventually no_dialog
}
port() { # SYMBOL
  awk -v symbol="\"$1\"" '$1 == "lv2:symbol" {found = $2 == symbol} found && $1 == "pset:value" {print $2}' "$state/state.ttl"
}
# Every port against `want`.
check() { # WHAT [TOLERANCE]
  local symbol value
  save
  for symbol in "${!want[@]}"; do
    value=$(port "$symbol")
    [ -n "$value" ] || fail "$1: the host has no value of $symbol"
    awk -v a="$value" -v b="${want[$symbol]}" -v t="${2:-0.00001}" 'BEGIN {d = a - b; exit !(d <= t && d >= -t)}' ||
      fail "$1: $symbol is $value, not ${want[$symbol]}"
  done
  echo "$1: $(for symbol in "${!want[@]}"; do printf '%s %g, ' "$symbol" "$(port "$symbol")"; done)"
}

jackd -n "$JACK_DEFAULT_SERVER" -r -d dummy -r 48000 -p 256 >"$work/jack.log" 2>&1 &
pids+=($!)
openbox --sm-disable >"$work/openbox.log" 2>&1 &
pids+=($!)
eventually jack_lsp || fail "jackd does not come up"
eventually xprop -root _NET_SUPPORTING_WM_CHECK || fail "openbox does not come up"

echo "== scale 1"
start_host
has_size 512x392 || fail "the editor has $(size_of "$editor") pixels, not 512x392"
check "at first"

echo "== knobs"
drag 84 93 0 -40;  want[attack]=0.3
drag 183 93 0 40;  want[release]=0.3
drag 330 93 -40 0; want[threshold]=0.6
drag 429 93 40 0;  want[knee]=0.7
drag 84 201 20 -20; want[trim]=0.7
drag 429 201 0 60; want[mix]=0.7
check "dragged"
picture dragged

echo "== wheel"
wheel 84 93 4 3;   want[attack]=0.33
wheel 183 93 5 2;  want[release]=0.28
xdotool keydown shift
wheel 330 93 4 5;  want[threshold]=0.605
xdotool keyup shift
check "turned"

echo "== typed values"
click 429 132; enter "12.5";    want[knee]=0.125
click 84 239;  enter "-3 dB";   want[trim]=0.425
click 429 239; picture typing;  enter "100 %"; want[mix]=1
click 84 132;  enter "nothing" # refused
click 183 132; xdotool type 99; xdotool key Escape # left
check "typed"

echo "== buttons"
click 89 283;  want[bypass]=1
click 425 282; want[audition]=1
check "pressed"
picture pressed
click 89 283;  want[bypass]=0
click 425 282; want[audition]=0
check "pressed again"

echo "== strip"
click 214 355; picture mode-menu; xdotool key Down sleep 0.2 key Return sleep 0.3; want[mode]=1
click 316 355; want[final_limiter]=0
drag 41 378 28 0;  want[input_filter_hp]=0.2
click 452 378; enter "60"; want[input_filter_lp]=0.6
# The threshold takes on the law that the knee stands for, as it does on the command line.
wheel 330 93 4 1; wheel 330 93 5 1
check "strip"
picture strip

echo "== sound"
# The recording through the plug-in as the ports stand, against the command line with the same values.
sounds_alike() { # WHAT
  local symbol settings=()
  for symbol in knee attack release threshold trim mix mode bypass audition input_filter_hp input_filter_lp final_limiter; do
    settings+=(--set "${symbol//_/}=$(port "$symbol")")
  done
  "$cli" render "$work/in.wav" -o "$work/cli.wav" "${settings[@]}" >/dev/null
  "$probe" "$work/in.wav" "$work/cli.wav" "$client" || fail "$1: the host and the command line sound different"
}
source=$(scripts/demo-recording.sh)
sox "$source" -r 48000 -e floating-point -b 32 "$work/in.wav" trim 0 5
sounds_alike "what was set in the editor"

echo "== presets"
click 87 355
xdotool key --repeat "$(index_of_preset "Telephone Band")" --delay 60 Down sleep 0.2
picture preset-menu
xdotool key Return sleep 0.3
want_preset "Telephone Band"
check "chosen in the editor"
# One that the host sets moves the editor: a knob goes on from where it has put it.
xdotool mousemove --window "$window" 60 12 click 1 sleep 0.5
xdotool key --repeat 9 --delay 60 Down sleep 0.3 # in an order of the host's own
picture host-presets
xdotool key Return sleep 0.7
chosen=$(xdotool getwindowname "$window") # "QOR Limiter - " and the preset's name
[ "${chosen#* - }" != "$chosen" ] || fail "the host has chosen no preset"
want_preset "${chosen#* - }"
check "chosen in the host: ${chosen#* - }"
picture host-preset-shown
wheel 84 93 4 1; wheel 330 93 5 1
want[attack]=$(awk -v v="${want[attack]}" 'BEGIN {print v + 0.01}')
want[threshold]=$(awk -v v="${want[threshold]}" 'BEGIN {print v - 0.01}')
check "turned on from there"

echo "== meters"
# A steady sound gives steady needles, where the command line draws them for the values of the output ports.
sox -n -r 48000 -c 2 -e floating-point -b 32 "$work/sine.wav" synth 4.8 sine 1000 gain -1
meter() { grep "^$1 = " "$work/jalv.log" | tail -1 | cut -d' ' -f3; }
differing() { # PICTURE: how many pixels of the panel
  compare -metric AE -fuzz 15% "$work/shown.png[$((512 * scale))x$((340 * scale))+0+0]" "$work/$1.png" null: 2>&1 || true
}
shows_the_meters() { # PICTURE'S NAME
  local symbol settings=() meters right=no
  for symbol in knee attack release threshold trim mix bypass audition; do
    settings+=(--set "$symbol=$(port "$symbol")")
  done
  "$cli" snapshot "$work/other.png" --scale "$scale" --meters 0.5,0.5,0.1,0.1 "${settings[@]}" >/dev/null
  "$probe" --play "$work/sine.wav" "$client" &
  local player=$!
  pids+=("$player")
  sleep 2
  # A busy machine drops periods of the sound, which the needles show; several looks find a steady one.
  for _ in 1 2 3 4 5 6 7 8 9 10; do
    sleep 1
    picture "$1"
    import -window "$editor" "$work/shown.png"
    meters=$(meter gain_1),$(meter gain_2),$(meter peak_1),$(meter peak_2)
    "$cli" snapshot "$work/expected.png" --scale "$scale" --meters "$meters" "${settings[@]}" >/dev/null
    [ "$meters" != 1.000000,1.000000,0.000000,0.000000 ] || continue
    [ "$(differing expected)" -ge $((20 * scale * scale)) ] || { right=yes; break; }
  done
  kill "$player"
  [ $right = yes ] || fail "the needles are not at $meters"
  [ "$(differing other)" -gt $((200 * scale * scale)) ] || fail "needles elsewhere make no difference"
  echo "meters $meters: $(differing expected) pixels of the panel differ"
}
shows_the_meters music

echo "== sizes"
frame=$(($(size_of "$window" | cut -dx -f2) - 392)) # what the host has above the editor
resize() { # WIDTH HEIGHT of the editor, in pixels
  xdotool windowsize --sync "$window" "$1" $(($2 + frame))
  eventually has_size "$1x$2" || fail "the editor has $(size_of "$editor") pixels, not $1x$2"
  sleep 0.5
}
resize 1024 784
picture large
scale=2 # the picture is that much larger, so are the ways of the hand; a knob's way grows with the square
drag 183 93 0 -40
want[release]=$(awk -v v="${want[release]}" 'BEGIN {print v + 0.1}')
check "dragged at twice the size"
scale=1
resize 900 500
picture wide
wheel 330 119 4 2 # bars of 123 pixels beside the panel, which is 1.275 times its size
want[release]=$(awk -v v="${want[release]}" 'BEGIN {print v + 0.02}')
check "turned between bars"
resize 300 240
picture small
resize 512 392
picture back
stop_host

echo "== scale 2"
scale=2
xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER $'Xft.dpi:\t192\n'
start_host
has_size 1024x784 || fail "the editor has $(size_of "$editor") pixels, not 1024x784"
want=([attack]=0.1 [release]=0.5 [threshold]=0.8 [knee]=0.5 [trim]=0.5 [mix]=1 [mode]=0 [bypass]=0
  [audition]=0 [input_filter_hp]=0 [input_filter_lp]=1 [final_limiter]=1 [enabled]=1)
drag 84 93 0 -40;  want[attack]=0.3
drag 330 93 -60 0; want[threshold]=0.5
drag 84 201 20 0;  want[trim]=0.6
click 429 132; enter "33"; want[knee]=0.33
click 425 282; want[audition]=1
drag 428 378 -28 0; want[input_filter_lp]=0.8
check "dragged and typed"
click 425 282; want[audition]=0
check "pressed again"
shows_the_meters music-2
stop_host
echo "== LV2 editor: all checks passed"
