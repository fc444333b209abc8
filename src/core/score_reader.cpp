#include "core/score_reader.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>

#include "core/farsi_text.h"
#include "core/line_kind.h"
#include "core/page_store.h"
#include "core/rhythm_pass.h"
#include "core/text_input.h"

namespace tahrir::core {

namespace {

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// The reader keeps a line when the grammar knows it; clef changes are not kept.
bool IsReaderLine(std::string_view text) {
    const LineKind kind = ClassifyLine(text);
    if (kind == LineKind::Unknown) return false;
    if (kind != LineKind::DirectiveLine || StartsWith(text, "ALL")) return true;
    for (auto token : kReaderTokens)
        if (StartsWith(text, token)) return true;
    return false;
}

bool AllBlanks(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

// Header fields: the magic or an old description, then the description.
void ReadHeader(TextInput& in, bool builtIn, Document& doc) {
    std::string first = in.readField();
    std::string description;
    if (StartsWith(first, CurrentMagic)) {
        doc.FileGeneration = Generation::Sv5;
        description = in.readField();
    } else {
        doc.FileGeneration = Generation::Oldest;
        description = builtIn ? first : FarsiToCp1256(first);
    }
    if (description == GenerationMarker) {
        if (doc.FileGeneration == Generation::Oldest) doc.FileGeneration = Generation::Marker;
        description = in.readField();
    }
    doc.Description = std::move(description);
}

// Pads to 22 and drops the stored beam code of every line but line 1, where column 7
// is the Si of the key signature.
void TidyLines(ScoreSheet& sheet) {
    for (int i = 1; i <= sheet.LastLine; ++i) {
        ScoreLine& line = sheet[i];
        line.padTo(MinLoadedLength);
        const std::string_view text = line.text();
        const bool directive = StartsWith(text, "TEMPO") || StartsWith(text, "RHYTHM") ||
                               StartsWith(text, "RHITM") || StartsWith(text, "RHYTM");
        if (i != 1 && !directive && !StartsWith(text, "L") && text.size() > 7)
            line.setField(7, " ");
    }
}

// Line 2's tempo: the absolute value, then the signed one unless it is -2.
void TakeTempo(Document& doc) {
    const ScoreLine& line = doc.Sheet[2];
    if (!line.startsWith("TEMPO")) return;
    const double value = Val(line.field(6, 4));
    double tempo = std::fabs(value);
    if (value != -2) tempo = value;
    doc.CurrentTempo = tempo;
    doc.PlayTempo = tempo;
    doc.InitialTempo = tempo;
    if (tempo > 20) doc.TempoSlider = static_cast<int>(tempo);
}

bool ReadWholeFile(const std::filesystem::path& path, std::string& bytes) {
    // Only a plain file: a folder cannot be read and a pipe could wait for ever.
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) return false;
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

} // namespace

std::string UnscrambleLine(std::string_view line) {
    std::string out(line);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const char c = out[i];
        if (c == ' ' || c == '"') {
            out[i] = ' ';
        } else {
            const long code = static_cast<unsigned char>(c) - 10 - static_cast<long>(i + 1);
            out[i] = static_cast<char>(static_cast<unsigned char>(((code % 256) + 256) % 256));
        }
    }
    // An empty line reads as one blank (built fresh: GCC's -O3 flags the in-place form).
    if (out.empty()) return std::string(1, ' ');
    return out;
}

LoadResult ParseScore(std::string_view bytes, bool builtIn, Document& doc) {
    LoadResult result;
    TextInput in(bytes);
    ReadHeader(in, builtIn, doc);
    ScoreSheet& sheet = doc.Sheet;
    std::string kept; // line 1, held until a tempo line on line 2 confirms the header
    bool tempoSeen = false;
    bool headerUnknown = false;
    int count = 0;
    while (!in.eof()) {
        ++count;
        ++result.fileLines;
        std::string line = in.readLine();
        if (count == 1) doc.LineScrambled = ScoreLine(line).at(8) != 'F' && ScoreLine(line).at(8) != 'G';
        if (doc.LineScrambled) line = UnscrambleLine(line);
        if (count == 1) kept = Scratch(line);
        if ((count == 2 && UpperAscii(std::string_view(line).substr(0, 5)) == "TEMPO") || tempoSeen) {
            // Line 1 never moves once stored, so storing it again would change nothing.
            if (!tempoSeen) sheet[1] = ScoreLine(kept);
            // Past a full sheet only an accepted line is an overflow; a dropped one is not.
            if (count <= MaxLines) sheet[count] = ScoreLine(line);
            tempoSeen = true;
        }
        if (count >= 4 && AllBlanks(line)) line = "L        ";
        if (IsReaderLine(line)) {
            sheet[count] = ScoreLine(std::move(line));
        } else {
            // The header is no grammar line: it counts as lost only without a tempo line.
            if (count == 1) headerUnknown = true;
            else ++result.droppedLines;
            // Below line 4 the slot is skipped rather than reused.
            if (count > 3) --count;
        }
    }
    if (headerUnknown && !tempoSeen) ++result.droppedLines;
    sheet.LastLine = count;
    TidyLines(sheet);
    result.status = result.droppedLines > 0 ? LoadStatus::Partial : LoadStatus::Complete;
    return result;
}

LoadResult Openp(Document& doc, const Session& session, PageStore* store) {
    LoadResult result;
    std::string name = doc.CurrentFileName;
    while (!name.empty() && name.back() == ' ') name.pop_back();
    if (name.empty()) {
        doc.Sheet.CurrentLine = 4;
        result.status = LoadStatus::NoFile;
        return result;
    }
    std::string bytes;
    if (!ReadWholeFile(name, bytes)) {
        result.status = LoadStatus::Failed;
        result.message = "Can't read " + name;
        return result;
    }
    auto fresh = std::make_unique<Document>();
    fresh->CurrentFileName = doc.CurrentFileName;
    fresh->CurrentTempo = doc.CurrentTempo;
    fresh->PlayTempo = doc.PlayTempo;
    fresh->InitialTempo = doc.InitialTempo;
    fresh->TempoSlider = doc.TempoSlider; // the tempo state changes only with a tempo line
    const bool builtIn = std::filesystem::path(name) == session.file(std::string(BuiltInFileName));
    try {
        result = ParseScore(bytes, builtIn, *fresh);
    } catch (const SheetIndexError&) {
        result = LoadResult{};
        result.status = LoadStatus::Failed;
        result.message = name + ": more than " + std::to_string(MaxLines) +
                         " lines; a score holds at most " + std::to_string(MaxLines) + " lines";
        return result;
    }
    ScoreSheet& sheet = fresh->Sheet;
    sheet.setLine(0, std::to_string(sheet.LastLine));
    if (store && !store->fillAll(sheet, sheet[0].text())) result.storeError = store->error();
    fresh->UndoIndex = 1;
    fresh->UndoTop = 1;
    RhythmPass(sheet);
    TakeTempo(*fresh);
    sheet.CurrentLine = 4;
    fresh->DirtyFlag = false;
    doc = std::move(*fresh);
    return result;
}

} // namespace tahrir::core
