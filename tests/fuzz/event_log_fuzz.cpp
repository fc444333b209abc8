// libFuzzer entry: any bytes as the event log "tmpmid.txt", read and written as a MIDI file.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "midifile/event_log.h"
#include "midifile/midi_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir::midifile;
    const EventLog log = ParseEventLog(std::string_view(reinterpret_cast<const char*>(data), size));
    const auto written = WriteMidiFile(log.records, 72);
    (void)written;
    return 0;
}
