#!/bin/sh
# Renders the icons into the add-in's text directory; needs rsvg-convert (package librsvg2-bin).
cd "$(dirname "$0")" && for icon in *.svg; do rsvg-convert -w 32 -h 32 -o "../text/resource/${icon%.svg}.png" "$icon"; done
