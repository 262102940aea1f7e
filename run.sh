#!/usr/bin/env bash
# Installs what is missing, builds (Release), limits a real recording and draws its report and the panel.
#   ./run.sh                                   limits the demonstration recording
#   ./run.sh FILE [RENDER OPTIONS...]          limits FILE; options as of `qor-limiter render`
#   ./run.sh --install-user [...]              also installs plug-ins and programs for this user
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
cmake --build --preset release --target products >&2

cli=build/release/src/hosts/cli/qor-limiter
mkdir -p out

if [ $# -gt 0 ]; then
  input=$1
  shift
  options=("$@")
else
  input=$(scripts/demo-recording.sh)
  # Clearly audible: the threshold law far down, the gain made up by the trim, the final limiter behind it.
  options=(--set threshold=0.2 --set attack=0.3 --set release=0.3 --set trim=0.9)
fi

# The caller's options come last, so that `-o` and `--report` can be given again.
"$cli" render "$input" -o out/limited.wav --report out/report.png ${options[@]+"${options[@]}"}
"$cli" snapshot out/panel.png --scale 2

cat <<MSG

Input:   $input
Result:  $PWD/out/limited.wav
Report:  $PWD/out/report.png
Panel:   $PWD/out/panel.png
MSG

if [ -n "$install_user" ]; then
  echo
  scripts/install-user.sh build/release
else
  cat <<MSG

Plug-ins (CLAP, LV2, VST3) are built. To install them for this user:   ./run.sh --install-user
                               To install them for everyone:           cmake --install build/release --prefix /usr/local
                               To make a Debian package:               (cd build/release && cpack -G DEB)
MSG
fi
