#!/usr/bin/env bash
# Prints the path of the recording that run.sh limits without arguments: an electric guitar, recorded in stereo
# (16 bit, 44100 Hz, 10 s, published without restrictions), from the package sonic-pi-samples.
set -euo pipefail
package=sonic-pi-samples
name=guit_em9.flac

path=$(dpkg -L "$package" 2>/dev/null | grep -m1 "/$name\$" || true)
if [ -z "$path" ] || [ ! -r "$path" ]; then
  echo "demo-recording: the package $package with $name is not installed." >&2
  echo "Install it (apt-get install $package) or name a recording: ./run.sh FILE" >&2
  exit 1
fi
echo "$path"
