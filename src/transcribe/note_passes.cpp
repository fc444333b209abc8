// Passes 2 and 3 and the run of all three over the scratch files.

#include "transcribe/note_passes.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>

#include "core/text_input.h"
#include "transcribe/scratch_records.h"
#include "transcribe/wave_file.h"

namespace tahrir::transcribe {

namespace {

constexpr int kShortestRun = 15; // a note needs more markers than this

// A steady run of periods while pass 2 walks the markers.
struct Run {
    int count = 0;
    double sum = 0;
    double squares = 0;
    double mean = 0;
    double start = 0;
};

std::string NotesText(const std::vector<NoteRecord>& notes) {
    std::string text;
    for (const NoteRecord& n : notes) AppendRecord(text, {n.start, n.end, n.frequency, n.note});
    return text;
}

void DeleteNote(std::vector<NoteRecord>& notes, std::size_t j) {
    notes.erase(notes.begin() + static_cast<std::ptrdiff_t>(j));
}

double Length(const NoteRecord& n) { return n.end - n.start; }

// Step 4 of the cleaning: one merge of a short note into its neighbour of the same pitch.
bool MergeOnePair(std::vector<NoteRecord>& notes, double grid) {
    for (std::size_t i = 0; i + 1 < notes.size(); ++i) {
        NoteRecord& a = notes[i];
        NoteRecord& b = notes[i + 1];
        if (a.note == b.note && b.start - a.end < grid && (Length(a) < grid || Length(b) < grid)) {
            b.start = a.start;
            DeleteNote(notes, i);
            return true;
        }
    }
    return false;
}

} // namespace

std::vector<NoteRecord> SteadyRuns(const std::vector<MarkerRecord>& markers,
                                   const PassOptions& options, double rate,
                                   double& firstNoteStart) {
    std::vector<NoteRecord> notes;
    const int k = std::clamp(options.k, 1, 9);
    NoteFinderSettings finder = options.finder;
    finder.WaveRate = rate;
    double note = 0; // the finder keeps the last note when it places none
    Run run;
    double previous = 0;
    const auto writeNote = [&](double end) {
        const double period = run.mean / k;
        if (const auto found = FindNote(period, finder)) note = found->note;
        if (notes.empty()) firstNoteStart = run.start;
        notes.push_back({run.start, end, period > 0 ? rate / period : 0, note});
    };
    for (const MarkerRecord& m : markers) {
        const double p = static_cast<double>(m.distance[static_cast<std::size_t>(k - 1)]);
        if (run.count == 0) {
            run.start = static_cast<double>(m.position - m.distance[0]);
            run.mean = p;
        }
        run.count += 1;
        // An octave jump counts as continuing.
        if (previous > 0 && p / previous > 1.8 && p / previous < 2.2) run.count += 1;
        previous = p;
        if (run.mean > 0 && p / run.mean > 0.9 && p / run.mean < 1.1) {
            run.sum += p;
            run.squares += p * p;
            if (run.count > 1) run.mean = run.sum / run.count;
            continue;
        }
        if (run.count > kShortestRun) writeNote(static_cast<double>(m.position - m.distance[0]));
        run = Run{};
    }
    if (run.count > kShortestRun && !markers.empty())
        writeNote(static_cast<double>(markers.back().position));
    return notes;
}

double GridSamplesFor(int minDuration, double rate, double tempo) {
    return 60.0 * minDuration * rate / (8 * tempo);
}

std::vector<NoteRecord> CleanNotes(std::vector<NoteRecord> notes, double grid, double shift) {
    if (notes.size() > MaxCleanNotes) notes.resize(MaxCleanNotes);
    for (NoteRecord& n : notes) {
        n.start -= shift;
        n.end -= shift;
    }
    while (notes.size() >= 2 && Length(notes[0]) < grid) {
        if (notes[0].note == notes[1].note) notes[1].start = notes[0].start;
        DeleteNote(notes, 0);
    }
    while (MergeOnePair(notes, grid)) {
    }
    for (NoteRecord& n : notes) {
        const double start = grid * std::floor(0.5 + n.start / grid);
        const double length = n.end - start;
        n.end = length < grid ? start + grid : start + grid * std::floor(0.5 + length / grid);
        n.start = start;
        n.frequency = std::floor(n.frequency);
    }
    return notes;
}

PassResult RunPasses(std::string_view bytes, const PassOptions& options,
                     const std::filesystem::path& folder) {
    PassResult result;
    // The header's rate, unless it holds none: then the rate every caller assumes.
    result.rate = WaveByteRate(bytes);
    if (result.rate <= 0) result.rate = WaveRate;
    const auto size = static_cast<std::int64_t>(bytes.size());
    std::int64_t first = FirstWorkPosition, last = size;
    if (options.stretch) {
        const auto [from, to] = *options.stretch;
        if (to - from >= FirstWorkPosition && from >= 1 && to <= size) {
            first = from;
            last = to;
        }
    }
    const auto fail = [&](const char* name) {
        result.error = "Can't write " + (folder / name).string();
        return result;
    };
    // The threshold detector's running sum goes to "tmp5" as it is made.
    const bool simple = options.Method == Detector::Simple;
    std::ofstream view;
    if (simple) {
        view.open(folder / "tmp5", std::ios::binary | std::ios::trunc);
        if (!view) return fail("tmp5");
    }
    const std::vector<MarkerRecord> markers =
        FindMarkers(bytes, first, last, options, simple ? &view : nullptr);
    if (simple && !view.flush()) return fail("tmp5");
    result.markers = markers.size();
    std::string text;
    for (const MarkerRecord& m : markers) {
        const auto& d = m.distance;
        AppendRecord(text, {double(m.position), double(d[0]), double(d[1]), double(d[2]),
                            double(d[3]), double(d[4]), double(d[5]), double(d[6]),
                            double(d[7]), double(d[8])});
    }
    if (!WriteScratch(folder / "tmp1", text)) return fail("tmp1");

    double firstNoteStart = 0;
    result.raw = SteadyRuns(markers, options, result.rate, firstNoteStart);
    result.FirstNoteStart = firstNoteStart;
    if (!WriteScratch(folder / "tmp2", NotesText(result.raw))) return fail("tmp2");
    if (result.raw.empty()) return result;

    const double shift = options.Silent && firstNoteStart >= 1 ? result.raw.front().start : 0;
    double tempo = options.tempo > 0 && std::isfinite(options.tempo) ? options.tempo : 60;
    result.cleaned =
        CleanNotes(result.raw, GridSamplesFor(options.MinDuration, result.rate, tempo), shift);
    if (!WriteScratch(folder / "tmp3", NotesText(*result.cleaned))) return fail("tmp3");
    return result;
}

std::optional<std::vector<NoteRecord>> ReadNoteRecords(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) return std::nullopt;
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    core::TextInput input(bytes);
    std::vector<NoteRecord> notes;
    while (!input.eof()) {
        double field[4];
        int got = 0;
        for (; got < 4 && !input.eof(); ++got) field[got] = core::Val(input.readField());
        if (got < 4) break;
        notes.push_back({field[0], field[1], field[2], field[3]});
    }
    return notes;
}

} // namespace tahrir::transcribe
