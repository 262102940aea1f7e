#!/usr/bin/env bash
# Has a sequencer from Debian load the plug-in into a session, opens its editor, drags a knob, saves, and loads the
# session in another process. Nobody sees the display or hears the sound server. Debian builds it without VST3.
#   scripts/host-tests/qtractor.sh [BUILD DIR [FORMAT]]        default: build/release CLAP; LV2 is known too
# With PICTURES set to a folder, screenshots are left there.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
format=${2:-CLAP}
[ -n "${DISPLAY_GIVEN:-}" ] || DISPLAY_GIVEN=1 exec tests/support/with-xvfb.sh "$0" "$build" "$format"

work=$(mktemp -d)
pids=()
host=
finish() {
  [ -z "$host" ] || kill -KILL "$host" 2>/dev/null || true # it may stand in a dialog
  # Not so the server, which has a place among the machine's few to give back.
  [ ${#pids[@]} -eq 0 ] || kill "${pids[@]}" 2>/dev/null || true
  wait
  rm -rf "$work"
}
trap finish EXIT
fail() {
  echo "FAILED: $*" >&2
  tail -n 15 "$work"/*.log >&2 2>/dev/null || true
  keep failure root
  exit 1
}
eventually() { # COMMAND...: until it succeeds, for twenty seconds at most
  for _ in $(seq 100); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.2
  done
  return 1
}
xdo() { timeout -k 1 10 xdotool "$@" 2>/dev/null; }
keep() { # NAME WINDOW: leaves a screenshot for people
  [ -n "${PICTURES:-}" ] || return 0
  mkdir -p "$PICTURES"
  import -window "$2" "$PICTURES/qtractor-$format-$1.png"
}

# The host's settings and caches are this run's own.
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_CACHE_HOME=$work/home/.cache
export XDG_DATA_HOME=$work/home/.local/share XDG_RUNTIME_DIR=$work/run JACK_DEFAULT_SERVER=qor-limiter-qtractor-$$
mkdir -p "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_DATA_HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
case $format in
  CLAP) object=$build/clap/qor-limiter.clap ;;
  LV2) object=urn:qor:limiter LV2_PATH=$build/lv2 && export LV2_PATH ;;
  *) fail "format $format: CLAP and LV2 are known" ;;
esac
# qtractor insists on a MIDI sequencer.
cc -shared -fPIC -o "$work/alsa-seq-stub.so" scripts/host-tests/alsa-seq-stub.c
openbox >"$work/openbox.log" 2>&1 &
pids+=($!)
jackd -n "$JACK_DEFAULT_SERVER" -r -d dummy -r 48000 -p 1024 >"$work/jack.log" 2>&1 &
pids+=($!)
eventually jack_lsp || fail "jackd does not come up"

session=$work/limited.qtr
cat >"$session" <<XML
<!DOCTYPE qtractorSession>
<session name="limited" version="Qtractor 0.9.31">
 <properties><directory>$work</directory><sample-rate>48000</sample-rate></properties>
 <devices>
  <audio-engine>
   <audio-bus name="Master" mode="duplex">
    <channels>2</channels>
    <output-plugins>
     <plugin type="$format"><filename>$object</filename><index>0</index><activated>1</activated></plugin>
    </output-plugins>
   </audio-bus>
  </audio-engine>
 </devices>
</session>
XML

window_of() { xdo search --onlyvisible "$@" | tail -n 1 | grep .; }
shown_mixer() { window_of --name '^Mixer'; }
shown_editor() { window_of --class qor-limiter; }
start_host() {
  LD_PRELOAD=$work/alsa-seq-stub.so qtractor "$session" >"$work/qtractor.log" 2>&1 &
  host=$!
  eventually window_of --name 'limited\.qtr' || fail "qtractor does not come up"
  main=$(window_of --name 'limited\.qtr')
}
press() { # KEY: in the main window
  xdo windowactivate --sync "$main" || fail "the main window can't be brought to the front"
  xdo key --window 0 "$1"
}
# The plug-in stands first in the master's list, at the mixer's right end; the list's place depends on the fonts.
open_editor() {
  shown_mixer >/dev/null || press F9
  eventually shown_mixer || fail "the mixer does not open"
  local mixer width y
  mixer=$(shown_mixer)
  width=$(xdo getwindowgeometry --shell "$mixer" | sed -n 's/^WIDTH=//p')
  for y in 48 44 52 40 56; do
    xdo windowactivate --sync "$mixer"
    xdo mousemove --window "$mixer" $((width - 118)) $y click --repeat 2 --delay 50 1
    for _ in $(seq 10); do
      shown_editor >/dev/null && break 2
      sleep 0.2
    done
  done
  editor=$(shown_editor) || fail "the editor does not open"
  xdo mousemove 5 5
  sleep 1.5 # the first pictures
}
picture() { import -window "$editor" "$work/$1.png" && keep "$1" "$editor"; }
# PICTURE: only the dial of the knob "gain", which stands still unless it is moved
knob() { convert "$work/$1.png" -crop 70x80+48+160 +repage "rgb:$work/$1.knob"; }
same_knob() { knob "$1" && knob "$2" && cmp -s "$work/$1.knob" "$work/$2.knob"; }
saved() { sed -n 's|.*<param [^>]*name="'"$1"'"[^>]*>\([^<]*\)</param>.*|\1|p' "$session"; }
is_saved() { [ "$(stat -c %y "$session")" != "$1" ] && grep -q '</session>' "$session"; }
save() {
  local before
  before=$(stat -c %y "$session")
  press ctrl+s
  eventually is_saved "$before" || fail "the session is not saved"
}
has_ended() { ! kill -0 "$1"; }
leave() { # with the editor open
  press alt+F4
  eventually has_ended "$host" || fail "qtractor does not end"
  wait "$host" || fail "qtractor ends with status $?"
  host=
}

echo "== editor"
start_host
open_editor
picture default
keep screen root
size=$(identify -format '%wx%h' "$work/default.png")
[ "$size" = 512x392 ] || fail "the editor is $size large"
colours=$(identify -format '%k' "$work/default.png")
[ "$colours" -gt 50 ] || fail "the editor shows $colours colours only"
echo "embedded, $size, $colours colours"

echo "== resize"
# The host's window is made wider than the panel's proportions; the editor keeps them.
frame=$(window_of --name '^QOR Limiter - Master Out') || fail "the editor's own window is not there"
xdo windowsize "$frame" 900 612
is_large() {
  import -window "$editor" "$work/large.png"
  [ "$(identify -format '%w' "$work/large.png")" -ge 780 ] && [ "$(identify -format '%k' "$work/large.png")" -gt 50 ]
}
eventually is_large || fail "the editor stays as it is: $(identify -format '%wx%h' "$work/large.png")"
sleep 1
picture large
echo "$(identify -format '%wx%h' "$work/large.png")"
xdo windowsize "$frame" 512 392
is_small() { import -window "$editor" "$work/small.png" && [ "$(identify -format '%wx%h' "$work/small.png")" = 512x392 ]; }
eventually is_small || fail "the editor does not shrink again: $(identify -format '%wx%h' "$work/small.png")"
sleep 1

echo "== drag"
xdo mousemove --window "$editor" 83 200 mousedown 1
for y in 195 190 185 180 175 170; do
  xdo mousemove --window "$editor" 83 $y
  sleep 0.05
done
xdo mouseup 1 mousemove 5 5
sleep 1
picture dragged
same_knob default dragged && fail "the knob does not turn"
save
value=$(saved Trim)
# 30 of the 200 points that are the full range, from the middle.
[ "$value" = 0.65 ] || fail "the session holds $value, not 0.65"
echo "the session holds the dragged value, $value"
leave

echo "== recall"
# Without the values that the host keeps, the plug-in's own state alone brings the knob back.
[ "$format" = LV2 ] || sed -i '/<param /d' "$session"
start_host
open_editor
picture recalled
same_knob dragged recalled || fail "the knob stands elsewhere after loading"
# The wheel over another knob, so that there is something to save.
xdo mousemove --window "$editor" 83 93 click 4 mousemove 5 5
sleep 1
save
[ "$(saved Trim)" = "$value" ] || fail "saved again, the session holds $(saved Trim)"
[ "$(saved Attack)" = 0.11 ] || fail "the wheel's step is not in the session: $(saved Attack)"
echo "the knob stands where it was dragged, and the session saved again holds $value"
leave
echo "== $format in qtractor: all checks passed"
