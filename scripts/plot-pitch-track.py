#!/usr/bin/env python3
"""Draws a pitch track and its notes as an SVG: the frames of `tahrir-cli notes --frames`
as dots (their shade the voiced probability), the notes as bars with their MIDI number.

usage: plot-pitch-track.py FRAMES.txt NOTES.txt OUT.svg [TITLE]
Convert to PNG with ImageMagick: convert OUT.svg OUT.png
"""
import math
import sys

NAMES = ["C", "C#", "D", "Eb", "E", "F", "F#", "G", "G#", "A", "Bb", "B"]


def midi(hz):
    return 69 + 12 * math.log2(hz / 440.0)


def read_rows(path):
    with open(path) as f:
        return [[float(v) for v in line.split("\t")] for line in f if line.strip()]


def main():
    frames, notes = read_rows(sys.argv[1]), read_rows(sys.argv[2])
    title = sys.argv[4] if len(sys.argv) > 4 else ""
    voiced = [midi(hz) for _, hz, _ in frames if hz > 0]
    low, high = math.floor(min(voiced)) - 1, math.ceil(max(voiced)) + 1
    end = frames[-1][0]
    width, height, left, top, bottom = 1400, 520, 60, 40, 40
    x = lambda t: left + (width - left - 20) * t / end
    y = lambda m: top + (height - top - bottom) * (high - m) / (high - low)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}">',
           f'<rect width="{width}" height="{height}" fill="white"/>',
           f'<text x="{left}" y="24" font-family="sans-serif" font-size="16">{title}</text>']
    for m in range(low, high + 1):
        out.append(f'<line x1="{left}" y1="{y(m):.1f}" x2="{width - 20}" y2="{y(m):.1f}" '
                   f'stroke="#ddd"/>')
        out.append(f'<text x="{left - 8}" y="{y(m) + 4:.1f}" font-family="sans-serif" '
                   f'font-size="11" text-anchor="end">{NAMES[m % 12]}{m // 12 - 1}</text>')
    for s in range(0, int(end) + 1):
        out.append(f'<text x="{x(s):.1f}" y="{height - 14}" font-family="sans-serif" '
                   f'font-size="11" text-anchor="middle">{s} s</text>')
    for onset, offset, hz, note in notes:
        out.append(f'<rect x="{x(onset):.1f}" y="{y(note) - 4:.1f}" width="{x(offset) - x(onset):.1f}" '
                   f'height="8" fill="#f4a460" fill-opacity="0.6" stroke="#c0622b"/>')
        label = f"{note:g}"
        out.append(f'<text x="{x(onset) + 2:.1f}" y="{y(note) - 7:.1f}" font-family="sans-serif" '
                   f'font-size="10" fill="#8b3a0f">{label}</text>')
    for t, hz, p in frames:
        if hz > 0:
            shade = int(200 * (1 - p))
            out.append(f'<circle cx="{x(t):.1f}" cy="{y(midi(hz)):.1f}" r="1.4" '
                       f'fill="rgb({shade},{shade},255)"/>')
    out.append("</svg>")
    with open(sys.argv[3], "w") as f:
        f.write("\n".join(out))


if __name__ == "__main__":
    main()
