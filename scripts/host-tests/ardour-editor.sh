#!/usr/bin/env bash
# Opens the VST3 plug-in's editor in Ardour's mixer, drags a knob, resizes, closes and opens it, saves, loads the session
# in another process, and removes the plug-in while its editor is open. Nobody sees the display.
#   scripts/host-tests/ardour-editor.sh [BUILD DIR]        default: build/release
# With PICTURES set to a folder, screenshots are left there.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
[ -n "${DISPLAY_GIVEN:-}" ] || DISPLAY_GIVEN=1 exec tests/support/with-xvfb.sh "$0" "$build"

work=$(mktemp -d)
host=
desktop=
finish() {
  [ -z "$host" ] || kill -KILL "$host" 2>/dev/null || true # it may stand in a dialog
  [ -z "$desktop" ] || kill "$desktop" 2>/dev/null || true
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
eventually() { # COMMAND...: until it succeeds, for forty seconds at most
  for _ in $(seq 200); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.2
  done
  return 1
}
xdo() { timeout -k 1 10 xdotool "$@" 2>/dev/null; }
keep() { # NAME WINDOW: leaves a screenshot for people
  [ -n "${PICTURES:-}" ] || return 0
  mkdir -p "$PICTURES"
  import -window "$2" "$PICTURES/ardour-$1.png"
}

# The host's settings and caches are this run's own: no questions at the start, a sound device that gives a steady
# level, the mixer in front.
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_CACHE_HOME=$work/home/.cache
export XDG_DATA_HOME=$work/home/.local/share NO_AT_BRIDGE=1
settings=$XDG_CONFIG_HOME/ardour7
mkdir -p "$settings" "$XDG_CACHE_HOME" "$XDG_DATA_HOME" "$HOME/.vst3"
touch "$settings/.a7"
device='DC -6dBFS (+.5)'
cat >"$settings/config" <<XML
<?xml version="1.0" encoding="UTF-8"?>
<Ardour>
 <Config>
  <Option name="hide-dummy-backend" value="0"/>
  <Option name="try-autostart-engine" value="1"/>
 </Config>
 <Extra><AudioMIDISetup><EngineStates>
  <State backend="None (Dummy)" driver="Normal Speed" device="$device" input-device="" output-device=""
   sample-rate="48000" buffer-size="1024" n-periods="0" input-latency="0" output-latency="0" lm-input="" lm-output=""
   active="1" use-buffered-io="0" midi-option="1 in, 1 out, Silence" lru="1"><MIDIDevices/></State>
 </EngineStates></AudioMIDISetup></Extra>
</Ardour>
XML

# Linked, not copied: the resources are found from where the bundle lies.
ln -s "$build/vst3/qor-limiter.vst3" "$HOME/.vst3/"
LD_LIBRARY_PATH=/usr/lib/ardour7 timeout -k 2 60 /usr/lib/ardour7/ardour-vst3-scanner -f -v \
  "$HOME/.vst3/qor-limiter.vst3" >"$work/scan.log" 2>&1 || fail "the scan"
ID=$(sed -n 's/.*<VST3Info uid="\([^"]*\)".*/\1/p' "$work/scan.log")
[ -n "$ID" ] || fail "the scan finds no plug-in"
session=$work/session/limited.ardour
cat >"$work/session.lua" <<LUA
local backend = AudioEngine:set_backend("None (Dummy)", "", "")
backend:set_driver("Normal Speed")
backend:set_device_name("$device")
backend:set_sample_rate(48000)
backend:set_buffer_size(1024)
local session = create_session("$work/session", "limited", 48000)
local tracks = session:new_audio_track(2, 2, nil, 1, "limited", ARDOUR.PresentationInfo.max_order,
  ARDOUR.TrackMode.Normal, true)
for track in tracks:iter() do
  local plugin = ARDOUR.LuaAPI.new_plugin(session, "$ID", ARDOUR.PluginType.VST3, "")
  assert(not plugin:isnil(), "the plug-in is not found")
  assert(track:add_processor_by_index(plugin, 0, nil, true) == 0, "the plug-in can't be added")
  for channel = 0, 1 do
    track:input():audio(channel):connect("system:capture_" .. channel + 1)
  end
  track:monitoring_control():set_value(1, PBD.GroupControlDisposition.NoGroup) -- hears its input
end
ARDOUR.LuaAPI.usleep(500000) -- the engine takes it over
session:save_state("")
close_session()
quit()
LUA
timeout -k 2 60 ardour7-lua "$work/session.lua" >"$work/session.log" 2>&1 </dev/null || true
grep -q 'type="vst3"' "$session" || fail "no session with the plug-in"

cat >"$work/session/instant.xml" <<XML
<?xml version="1.0" encoding="UTF-8"?>
<instant><Main x="0" y="0" w="1300" h="800" current-tab="mixer"/></instant>
XML

openbox >"$work/openbox.log" 2>&1 &
desktop=$!

window_of() { xdo search --onlyvisible "$@" | tail -n 1 | grep .; }
shown_editor() { window_of --class qor-limiter; }
no_editor() { ! shown_editor; }
start_host() {
  sed -i '/<EngineHints/d' "$session" # or it asks about the sound device
  ardour "$session" >"$work/ardour.log" 2>&1 &
  host=$!
  eventually window_of --name 'limited - Ardour' || fail "Ardour does not come up"
  main=$(window_of --name 'limited - Ardour')
  sleep 3 # the mixer is filled
}
# The first track's strip lies beside the lists on the left, its processors below four rows of buttons.
slot_x=340
slot_y=0
to_slot() { xdo mousemove --window "$main" $slot_x "$1"; }
open_editor() {
  local y
  for y in ${slot_y/#0/220 215 225 210 230 205 235 240 245}; do
    xdo windowactivate --sync "$main" || true
    to_slot "$y"
    xdo click --repeat 2 --delay 60 1
    for _ in $(seq 40); do
      shown_editor >/dev/null && slot_y=$y && break 2
      sleep 0.2
    done
  done
  take_editor
}
take_editor() {
  editor=$(shown_editor) || fail "the editor does not open"
  frame=$(window_of --name 'VST3')
  xdo windowmove --sync "$frame" 700 300 || true
  xdo mousemove 5 5
  sleep 1.5 # the first pictures
}
close_editor() {
  xdo windowactivate --sync "$frame" key alt+F4
  eventually no_editor || fail "the editor does not close"
}
picture() { import -window "$editor" "$work/$1.png" && keep "$1" "$editor"; }
# PICTURE: only the dial of the knob "gain", which stands still unless it is moved
knob() { convert "$work/$1.png" -crop 70x80+48+160 +repage "rgb:$work/$1.knob"; }
same_knob() { knob "$1" && knob "$2" && cmp -s "$work/$1.knob" "$work/$2.knob"; }
size_of() { xdo getwindowgeometry --shell "$1" | sed -n 's/^WIDTH=//p; s/^HEIGHT=//p' | paste -sd x; }
has_size() { [ "$(size_of "$1")" = "$2" ]; }
chunk() { sed -n 's|.*<chunk>\([^<]*\)</chunk>.*|\1|p' "$session" | base64 -d | tr '\0' '\n'; }
saved() { chunk | grep -a -A 1 -x "$1" | tail -n 1; }
is_saved() { [ "$(stat -c %y "$session")" != "$1" ] && grep -q '</Session>' "$session"; }
save() {
  local before
  before=$(stat -c %y "$session")
  xdo windowactivate --sync "$main" key ctrl+s
  eventually is_saved "$before" || fail "the session is not saved"
}
has_ended() { ! kill -0 "$1"; }
leave() {
  xdo windowactivate --sync "$main" key ctrl+q
  eventually has_ended "$host" || fail "Ardour does not end"
  wait "$host" || fail "Ardour ends with status $?"
  host=
}

echo "== editor"
start_host
open_editor
picture default
keep host "$frame"
has_size "$editor" 512x392 || fail "the editor is $(size_of "$editor") large"
colours=$(identify -format '%k' "$work/default.png")
[ "$colours" -gt 50 ] || fail "the editor shows $colours colours only"
echo "embedded, 512x392, $colours colours"

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
# 30 of the 200 points that are the full range, from the middle.
[[ $(saved trim) == 0.64999* ]] || fail "the session holds $(saved trim), not 0.65"
echo "the session holds the dragged value, $(saved trim)"

echo "== size"
bar=$(($(size_of "$frame" | cut -dx -f2) - 392)) # the host's own controls above the editor
xdo windowsize "$frame" 768 $((588 + bar))
eventually has_size "$editor" 768x588 || fail "the editor is $(size_of "$editor") large in a larger window"
sleep 1
picture large
xdo windowsize "$frame" 512 $((392 + bar))
eventually has_size "$editor" 512x392 || fail "the editor stays $(size_of "$editor") large"
echo "follows the host's window"

echo "== closed and opened"
for _ in 1 2 3 4 5; do
  close_editor
  open_editor
done
picture again
same_knob dragged again || fail "the knob stands elsewhere when the editor is opened again"
close_editor
leave

echo "== recall"
start_host
eventually shown_editor || fail "the editor is not open, as it was when the session was saved"
take_editor
picture recalled
same_knob dragged recalled || fail "the knob stands elsewhere after loading"

echo "== removal"
xdo windowactivate --sync "$main"
to_slot "$slot_y"
xdo click 1
sleep 0.5
xdo key Delete
eventually no_editor || fail "the editor stays when the plug-in is removed"
sleep 1
kill -0 "$host" || fail "the host does not live on"
save
grep -q 'type="vst3"' "$session" && fail "the plug-in was not removed"
leave
echo "== Ardour, the editor: all checks passed"
