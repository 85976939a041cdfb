#!/usr/bin/env bash
# Takes the pictures of the documents anew: those that the tour leaves behind.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
cmake --preset release
cmake --build --preset release --parallel "$(nproc)" --target blockhouse
tests/journeys/tour.sh build/release/bin/blockhouse build/release/journeys/pictures
mkdir -p docs/images
for name in splash editor find count popup search directories options placement log; do
  # Without the time, so that a picture that looks the same is the same.
  convert "build/release/journeys/pictures/$name.png" -strip -define png:exclude-chunks=date,time "docs/images/$name.png"
done
