#!/usr/bin/env bash
# Builds the release program and measures its start and the cost of playing. Options go to startup.py.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/release
[ -e $build/build.ninja ] || cmake --preset release >/dev/null
cmake --build $build -- --quiet
python=$(sed -n 's/^CARDSONG_PYTHON:FILEPATH=//p' $build/CMakeCache.txt)
exec "$python" -B bench/startup.py $build/cardsong "$@"
