#!/usr/bin/env bash
# Installs what is missing, builds (Release), limits a real recording and draws its report and the panel.
#   ./run.sh                                   limits the demonstration recording
#   ./run.sh FILE [RENDER OPTIONS...]          limits FILE; options as of `qor-limiter render`
#   ./run.sh --install-user                    also installs the plug-ins for this user
# Results go to out/.
set -euo pipefail
cd "$(dirname "$0")"

install_user=
if [ "${1:-}" = --install-user ]; then
  install_user=yes
  shift
fi

scripts/install-packages.sh >&2
cmake --preset release >/dev/null
cmake --build --preset release --target qor-limiter

cli=build/release/src/hosts/cli/qor-limiter
mkdir -p out

if [ $# -gt 0 ]; then
  input=$1
  shift
  options=("$@")
else
  input=$(scripts/demo-recording.sh)
  # Loud and audible: the hyperbolic law, threshold well below the programme, gain made up by the trim.
  options=(--set threshold=0.55 --set knee=1 --set attack=0.2 --set release=0.35 --set trim=0.72)
fi

"$cli" render "$input" -o out/limited.wav --report out/report.png "${options[@]}"
"$cli" snapshot out/panel.png --scale 2

cat <<MSG

Input:   $input
Result:  $PWD/out/limited.wav
Report:  $PWD/out/report.png
Panel:   $PWD/out/panel.png
MSG
