// libFuzzer entry: any bytes as a standard MIDI file, read and dumped.

#include <cstddef>
#include <cstdint>

#include "midifile/midi_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tahrir::midifile::DumpList dump;
    const auto info = tahrir::midifile::ReadMidiBytes({data, size}, dump);
    for (const auto& track : info.MidiTracks)
        for (const auto& note : track)
            if (note.length < 0) __builtin_trap(); // a note ends after it starts
    return 0;
}
