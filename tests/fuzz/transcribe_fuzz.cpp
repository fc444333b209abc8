// libFuzzer entry: any bytes as a wave file, through the loader, the pitch finder, the
// three passes and the insertion.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "transcribe/note_insertion.h"
#include "transcribe/note_passes.h"
#include "transcribe/pitch_finder.h"
#include "transcribe/wave_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir;
    using namespace tahrir::transcribe;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto samples = WaveSamplesOf(bytes);
    (void)WaveFilePitch(samples);
    const int rate = WaveByteRate(bytes) > 0 ? WaveByteRate(bytes) : WaveRate;
    for (Detector method : {Detector::Simple, Detector::Women}) {
        PassOptions options;
        options.Method = method;
        options.CutOff = size > 0 ? data[0] % 64 : 10;
        options.k = size > 1 ? 1 + data[1] % 9 : 4;
        options.MinDuration = 1 << (size > 2 ? data[2] % 4 : 0);
        const auto markers = FindMarkers(bytes, FirstWorkPosition,
                                         static_cast<std::int64_t>(size), options, nullptr);
        double firstNoteStart = 0;
        const auto raw = SteadyRuns(markers, options, rate, firstNoteStart);
        const auto cleaned =
            CleanNotes(raw, GridSamplesFor(options.MinDuration, rate, 60), firstNoteStart);
        std::vector<TimedNote> notes;
        for (const NoteRecord& n : cleaned) notes.push_back({n.start, n.end, n.note, false});
        static core::Document doc;
        doc = core::Document{};
        InsertOptions insert;
        insert.sampleRate = rate;
        insert.MinDuration = options.MinDuration;
        insert.Exact = method == Detector::Women;
        InsertNotes(doc, notes, insert);
    }
    return 0;
}
