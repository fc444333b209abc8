// Writes the benchmark's large MIDI file: make_big_midi OUT.mid [TRACKS [NOTES_PER_TRACK]].

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "big_midi_file.h"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: make_big_midi OUT.mid [TRACKS [NOTES_PER_TRACK]]\n");
        return 1;
    }
    const int tracks = argc > 2 ? std::atoi(argv[2]) : 16;
    const int notes = argc > 3 ? std::atoi(argv[3]) : 12500;
    if (tracks < 1 || tracks > 65535 || notes < 0) return 1;
    const auto bytes = tahrir::bench::BigMidiFile(tracks, notes);
    std::ofstream out(argv[1], std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return out ? 0 : 1;
}
