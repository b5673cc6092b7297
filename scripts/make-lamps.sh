#!/bin/sh
# Makes the lamp images in resources/ from their SVG sources; needs rsvg-convert (package librsvg2-bin).
cd "$(dirname "$0")/../resources" || exit 1
for source in led-circle-*.svg led_square_*.svg; do
    rsvg-convert -w 100 -h 100 "$source" -o "${source%.svg}.png" || exit 1
done
