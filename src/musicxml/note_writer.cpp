// Notes, rests and grace notes with their pitch, timing, beams, marks, chord symbol and
// lyrics.

#include <algorithm>

#include "core/beam_patterns.h"
#include "core/cp1256.h"
#include "core/line_kind.h"
#include "core/text_input.h"
#include "musicxml/exporter.h"
#include "musicxml/notation_table.h"
#include "musicxml/xml_text.h"

namespace tahrir::musicxml {
namespace {

using core::Accidental;

// The step a note is written with: 1..7, 0 for a rest; -1 for a line with no step to write.
int WrittenStep(const core::NoteView& n) {
    return n.pitched && n.step <= 7 ? n.step : -1;
}

// The accidental a note's own letter sounds with, read in upper case as playback reads it;
// None for none.
Accidental SoundingOwn(const core::NoteView& n) {
    const Accidental a = core::AccidentalOf(core::UpperAscii({&n.accidentalLetter, 1}).front());
    return a == Accidental::Unknown ? Accidental::None : a;
}

} // namespace

// An octave line's start ("down": the music sounds an octave above what is written,
// "up") or its end ("stop"); number 1 for "ALL8" lines, 2 for a single note's mark.
std::string OctaveShift(const char* type, int number) {
    return std::string("<direction") +
           (type[0] == 'd'   ? " placement=\"above\""
            : type[0] == 'u' ? " placement=\"below\""
                             : "") +
           "><direction-type><octave-shift type=\"" + type + "\" number=\"" +
           std::to_string(number) + "\" size=\"8\"/></direction-type></direction>\n";
}

int Exporter::nextNote(int i) const {
    for (int j = i + 1; j <= m_sheet.LastLine; ++j)
        if (core::ClassifyLine(m_sheet[j].text(), j) == core::LineKind::NoteLine) return j;
    return 0;
}

// The accidental a note sounds with: its own, the measure's memory of its step, or the key.
Accidental Exporter::soundingAccidental(const core::NoteView& n) {
    const auto s = static_cast<std::size_t>(n.step);
    // The memory starts afresh at every line that stands at the start of a measure, so a
    // grace note there leaves nothing behind, as playback hears it.
    if (m_fill == 0) m_memory.fill(Accidental::None);
    const Accidental own = SoundingOwn(n);
    if (own != Accidental::None) {
        if (m_measureTicks > 0) m_memory[s] = own;
        return own;
    }
    if (m_measureTicks > 0 && m_memory[s] != Accidental::None) return m_memory[s];
    return m_key[s];
}

// Koron and sori alter a step by the bend playback gives them.
double Exporter::alterOf(Accidental accidental) const {
    if (accidental == Accidental::Koron) return m_options.koronBend / 32.0;
    if (accidental == Accidental::Sori) return m_options.soriBend / 32.0;
    const core::AccidentalRow* row = core::AccidentalRowOf(accidental);
    return row ? row->semitones : 0;
}

std::string Exporter::pitchXml(int step, int octave, Accidental accidental) const {
    const double alter = alterOf(accidental);
    std::string out = "<pitch><step>" + std::string(1, "CDEFGAB"[step - 1]) + "</step>";
    if (alter != 0) out += "<alter>" + Decimal(alter) + "</alter>";
    return out + "<octave>" + std::to_string(std::clamp(octave, 0, 9)) + "</octave></pitch>";
}

std::string Exporter::beamXml(const core::NoteView& n, int i) const {
    const int levels = core::BeamLevel(n.duration());
    if (levels == 0) return {};
    int prevLevels = 0, nextLevels = 0;
    for (int j = i - 1; j >= 4; --j) {
        if (core::ClassifyLine(m_sheet[j].text(), j) != core::LineKind::NoteLine) continue;
        const core::NoteView p = core::ReadNote(m_sheet[j]);
        if (p.beam == 'C') prevLevels = core::BeamLevel(p.duration());
        break;
    }
    if (n.beam == 'C')
        if (const int j = nextNote(i))
            nextLevels = core::BeamLevel(core::ReadNote(m_sheet[j]).duration());
    if (prevLevels == 0 && nextLevels == 0) return {};
    std::string out;
    for (int k = 1; k <= levels; ++k) {
        const bool back = prevLevels >= k, forward = nextLevels >= k;
        const char* what = back && forward  ? "continue"
                           : back           ? "end"
                           : forward        ? "begin"
                           : prevLevels > 0 ? "backward hook"
                                            : "forward hook";
        out += "<beam number=\"" + std::to_string(k) + "\">" + what + "</beam>";
    }
    return out;
}

// "TI" ties to a next note of the same step and octave, and slurs to any other.
std::string Exporter::tieAndSlur(const core::NoteView& n, int i, std::string& notations) {
    std::string ties;
    if (m_tieStop) {
        ties += "<tie type=\"stop\"/>";
        notations += "<tied type=\"stop\"/>";
    }
    if (m_slurStop) notations += "<slur type=\"stop\" number=\"1\"/>";
    m_tieStop = m_slurStop = false;
    if (n.mark.mark != core::Mark::Tie || WrittenStep(n) <= 0) return ties;
    const int j = nextNote(i);
    const core::NoteView next = j ? core::ReadNote(m_sheet[j]) : core::NoteView{};
    if (j && WrittenStep(next) == n.step && next.octave == n.octave) {
        ties += "<tie type=\"start\"/>";
        notations += "<tied type=\"start\"/>";
        m_tieStop = true;
    } else if (j && WrittenStep(next) > 0) {
        notations += "<slur type=\"start\" number=\"1\"/>";
        m_slurStop = true;
    }
    return ties;
}

void Exporter::markXml(const core::NoteView& n, std::string& notations) const {
    const std::string element = MarkElement(n.mark);
    switch (MarkGroupOf(n.mark.mark)) {
    case MarkGroup::Ornament:
        notations += "<ornaments>" + element + "</ornaments>";
        break;
    case MarkGroup::Technical:
        notations += "<technical>" + element + "</technical>";
        break;
    case MarkGroup::Articulation:
        notations += "<articulations>" + element + "</articulations>";
        break;
    default:
        break;
    }
}

// "1T".."KT": the companion sounds with the note, written as a chord note. It stands
// the interval's count of steps below the step above the note, with the key's letter.
std::string Exporter::companionXml(const core::NoteView& n, int shift,
                                   const std::string& timing) const {
    const int count = n.mark.number;
    if (count <= 0 || n.step <= 0) return {};
    const int position = n.position() - count; // 0-based: octave * 7 + step - 1
    const int step = (position % 7 + 7) % 7 + 1;
    const int octave = (position - (step - 1)) / 7;
    const Accidental key =
        step == n.step ? Accidental::None : m_key[static_cast<std::size_t>(step)];
    return "<note><chord/>" + pitchXml(step, octave + 1 + m_octaveShift + shift, key) + timing +
           "</note>\n";
}

std::string Exporter::harmonyXml(const core::NoteView& n) const {
    const auto root = ChordRootOf(n.chordRoot);
    const auto kind = ChordKindOf(n.chordKind);
    if (!root || !kind) return {};
    std::string out = "<harmony><root><root-step>" + std::string(1, root->step) + "</root-step>";
    if (root->alter != 0) out += "<root-alter>" + std::to_string(root->alter) + "</root-alter>";
    return out + "</root><kind text=\"" + std::string(kind->text) + "\">" +
           std::string(kind->value) + "</kind></harmony>\n";
}

// The pending syllables of the text lines before the note, one verse each; a syllable
// that ends in "-" goes on in the next.
std::string Exporter::lyricsXml() {
    std::string out;
    bool done[2] = {false, false};
    for (auto& [verse, text] : m_lyrics) {
        const auto v = static_cast<std::size_t>(verse - 1);
        if (done[v]) continue;
        done[v] = true;
        const bool goesOn = text.size() > 1 && text.back() == '-';
        const std::string syllable = goesOn ? text.substr(0, text.size() - 1) : text;
        const bool cont = !m_lyricHyphen[v].empty();
        const char* syllabic = cont ? (goesOn ? "middle" : "end") : (goesOn ? "begin" : "single");
        m_lyricHyphen[v] = goesOn ? "-" : "";
        out += "<lyric number=\"" + std::to_string(verse) + "\"><syllabic>" + syllabic +
               "</syllabic><text" + DirAttribute(syllable) + ">" + Escape(syllable) +
               "</text></lyric>";
    }
    m_lyrics.clear();
    return out;
}

// The written type and dots of a note (a grace note is written as an eighth), and its
// time in divisions, shortened inside a tuplet.
void Exporter::timing(const core::NoteView& n, std::string& duration, std::string& look) const {
    const bool grace = !n.ticks;
    if (!grace) {
        long long d = static_cast<long long>(*n.ticks) * m_unit;
        if (m_tupletLeft > 0) d = d * (m_tupletCount - 1) / m_tupletCount;
        duration = "<duration>" + std::to_string(d) + "</duration>";
    }
    if (const auto type = NoteTypeOf(n.ticks.value_or(4))) {
        look = "<type>" + std::string(type->type) + "</type>";
        for (int k = 0; k < type->dots; ++k)
            look += "<dot/>";
    }
}

// The time modification of a note inside a tuplet, with the bracket at its two ends.
std::string Exporter::tupletXml(std::string& notations) {
    if (m_tupletLeft == 0) return {};
    if (m_tupletLeft == m_tupletCount) notations += "<tuplet type=\"start\" bracket=\"yes\"/>";
    if (m_tupletLeft == 1) notations += "<tuplet type=\"stop\"/>";
    --m_tupletLeft;
    return "<time-modification><actual-notes>" + std::to_string(m_tupletCount) +
           "</actual-notes><normal-notes>" + std::to_string(m_tupletCount - 1) +
           "</normal-notes></time-modification>";
}

std::string Exporter::noteXml(const core::NoteView& n, int i, int shift,
                              const std::string& duration, const std::string& look) {
    const bool grace = !n.ticks;
    std::string notations;
    std::string out = "<note>";
    if (grace) out += "<grace slash=\"yes\"/>";
    if (n.step == 0)
        out += "<rest/>";
    else
        out += pitchXml(n.step, n.octave + 1 + m_octaveShift + shift, soundingAccidental(n));
    out += duration + tieAndSlur(n, i, notations) + look;
    const core::AccidentalRow* accidental = core::AccidentalRowOf(n.accidental);
    if (n.step > 0 && accidental)
        out += "<accidental>" + std::string(accidental->name) + "</accidental>";
    if (!grace) out += tupletXml(notations) + beamXml(n, i);
    markXml(n, notations);
    if (!notations.empty()) out += "<notations>" + notations + "</notations>";
    if (n.step > 0 && !grace) out += lyricsXml();
    out += "</note>\n";
    return out;
}

void Exporter::noteLine(int i) {
    const core::NoteView n = core::ReadNote(m_sheet[i]);
    const bool grace = !n.ticks;
    if (WrittenStep(n) < 0 || n.ticks == 0 || (grace && n.step == 0)) return;
    flushAttributes();
    const MarkGroup group = MarkGroupOf(n.mark.mark);
    // "8U" sounds an octave up: written an octave down under a shift line of its own. Under
    // an octave line of the same direction it adds nothing.
    const int mark =
        group == MarkGroup::Octave ? (n.mark.mark == core::Mark::OctaveUp ? 1 : -1) : 0;
    const int shift = mark == m_octaveShift ? 0 : mark;
    if (group == MarkGroup::Tuplet && !grace) m_tupletCount = m_tupletLeft = n.mark.number;
    std::string& body = m_cur.body;
    body += harmonyXml(n);
    if (shift != 0) body += OctaveShift(shift > 0 ? "down" : "up", 2);
    std::string duration, look;
    timing(n, duration, look);
    body += noteXml(n, i, shift, duration, look);
    if (group == MarkGroup::Dual && !grace) body += companionXml(n, shift, duration + look);
    if (shift != 0) body += OctaveShift("stop", 2);
    m_cur.hasNotes = true;
    if (!grace) countTime(n);
}

} // namespace tahrir::musicxml
