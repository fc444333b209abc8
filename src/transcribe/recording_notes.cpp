#include "transcribe/recording_notes.h"

#include "transcribe/recording_loader.h"

namespace tahrir::transcribe {

std::vector<RecordingNote> NotesOfFrames(const std::vector<PitchFrame>& frames,
                                         double hopSeconds, const NotesOptions& options) {
    std::vector<RecordingNote> notes;
    const std::vector<GridPoint> points = GridPoints(options.grid, options.tuning, options.mask);
    for (const NoteEvent& e : SegmentNotes(frames, hopSeconds)) {
        if (const auto note = SnapToGrid(e.hz, points, options.tuning))
            notes.push_back({e.onset, e.offset, e.hz, *note});
    }
    return notes;
}

RecordingTranscript TranscribeSamples(const std::vector<float>& samples, int rate,
                                      const NotesOptions& options) {
    PyinTracker tracker(rate);
    RecordingTranscript out;
    out.fileRate = rate;
    out.frames = tracker.track(samples);
    out.notes = NotesOfFrames(out.frames, static_cast<double>(tracker.hop()) / rate, options);
    return out;
}

std::optional<RecordingTranscript> TranscribeRecording(const std::filesystem::path& path,
                                                       const NotesOptions& options,
                                                       std::string& error) {
    const auto rec = LoadRecording(path, TrackerRate, error);
    if (!rec) return std::nullopt;
    RecordingTranscript out = TranscribeSamples(rec->samples, rec->rate, options);
    out.fileRate = rec->fileRate;
    return out;
}

} // namespace tahrir::transcribe
