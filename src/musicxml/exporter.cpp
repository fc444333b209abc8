// The walk over the score's lines: measures, attributes, directions and barlines.

#include "musicxml/exporter.h"

#include <cstdlib>
#include <numeric>

#include "core/cp1256.h"
#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/rhythm_pass.h"
#include "musicxml/notation_table.h"
#include "musicxml/xml_text.h"

namespace tahrir::musicxml {
namespace {

// The number at the front of a payload, as the old number reading takes it; 0 for none.
double LeadingNumber(std::string_view text) {
    const std::string s(text);
    return std::strtod(s.c_str(), nullptr);
}

std::string Trim(std::string_view s) {
    const auto b = s.find_first_not_of(" \t\r\n");
    if (b == std::string_view::npos) return {};
    return std::string(s.substr(b, s.find_last_not_of(" \t\r\n") - b + 1));
}

// The description's lines in UTF-8, trimmed.
std::vector<std::string> DescriptionLines(const std::string& cp1256) {
    std::vector<std::string> out;
    std::size_t start = 0;
    while (start <= cp1256.size()) {
        std::size_t end = cp1256.find('\n', start);
        if (end == std::string::npos) end = cp1256.size();
        out.push_back(Trim(core::Cp1256ToUtf8(cp1256.substr(start, end - start))));
        start = end + 1;
    }
    return out;
}

std::string Direction(std::string_view placement, const std::string& types,
                      const std::string& sound = {}) {
    std::string out = "<direction";
    if (!placement.empty()) out += " placement=\"" + std::string(placement) + "\"";
    out += "><direction-type>" + types + "</direction-type>" + sound + "</direction>\n";
    return out;
}

std::string Words(const std::string& utf8) {
    return "<words" + DirAttribute(utf8) + ">" + Escape(utf8) + "</words>";
}

std::string KeyXml(const std::array<char, 8>& key) {
    int sharps = 0, flats = 0, others = 0;
    for (int s = 1; s <= 7; ++s) {
        const char c = key[static_cast<std::size_t>(s)];
        sharps += c == 'D';
        flats += c == 'B';
        others += c == 'S' || c == 'K';
    }
    const auto standard = [&](std::span<const int> order, int count, char letter) {
        for (int k = 0; k < count; ++k)
            if (key[static_cast<std::size_t>(order[static_cast<std::size_t>(k)])] != letter)
                return false;
        return true;
    };
    if (others == 0 && flats == 0 && standard(SharpOrder(), sharps, 'D'))
        return "<key><fifths>" + std::to_string(sharps) + "</fifths></key>";
    if (others == 0 && sharps == 0 && standard(FlatOrder(), flats, 'B'))
        return "<key><fifths>" + std::to_string(-flats) + "</fifths></key>";
    return {}; // the caller writes the non-traditional form with the alters it knows
}

} // namespace

std::string Barline::xml(const char* location) const {
    if (empty()) return {};
    std::string out = "<barline location=\"" + std::string(location) + "\">";
    if (!style.empty()) out += "<bar-style>" + style + "</bar-style>";
    return out + ending + repeat + "</barline>\n";
}

Exporter::Exporter(const core::Document& doc, const ExportOptions& options)
    : m_doc(doc), m_sheet(doc.Sheet), m_options(options) {
    for (int i = 4; i <= m_sheet.LastLine; ++i) {
        const core::LineKind kind = core::ClassifyLine(m_sheet[i].text(), i);
        if (kind != core::LineKind::NoteLine) continue;
        const auto row = MarkRowOf(m_sheet[i].get(core::NoteField::MarkCode));
        if (row && row->group == MarkGroup::Tuplet)
            m_unit = std::lcm(m_unit, row->element[0] - '0');
    }
}

std::string Exporter::header() const {
    std::vector<std::string> lines = DescriptionLines(m_doc.Description);
    std::string title;
    std::vector<std::string> rest;
    for (const std::string& l : lines) {
        if (title.empty())
            title = l;
        else if (!l.empty())
            rest.push_back(l);
    }
    if (title.empty()) title = std::filesystem::path(m_doc.CurrentFileName).stem().string();
    std::string out = "<work>" + Element("work-title", title) + "</work>\n";
    out += Element("movement-title", title) + "\n";
    out += "<identification><encoding><software>Tahrir</software></encoding>";
    if (!rest.empty()) {
        std::string joined;
        for (const std::string& l : rest)
            joined += (joined.empty() ? "" : "\n") + l;
        out += "<miscellaneous><miscellaneous-field name=\"description\">" + Escape(joined) +
               "</miscellaneous-field></miscellaneous>";
    }
    out += "</identification>\n";
    const auto credit = [](const char* type, const std::string& text, const char* y) {
        return std::string("<credit page=\"1\"><credit-type>") + type +
               "</credit-type><credit-words default-x=\"600\" default-y=\"" + y +
               "\" justify=\"center\" valign=\"top\"" + DirAttribute(text) + ">" + Escape(text) +
               "</credit-words></credit>\n";
    };
    if (!title.empty()) out += credit("title", title, "1500");
    for (std::size_t k = 0; k < rest.size(); ++k)
        out += credit("subtitle", rest[k], std::to_string(1440 - 40 * k).c_str());
    out += "<part-list><score-part id=\"P1\"><part-name>Music</part-name></score-part>"
           "</part-list>\n";
    return out;
}

std::string Exporter::run() {
    const core::ScoreLine& head = m_sheet[1];
    m_key = core::HeaderKeyLetters(head);
    m_memory.fill(' ');
    m_cur.divisions = "<divisions>" + std::to_string(8 * m_unit) + "</divisions>";
    m_keyPending = true;
    clefChange(head, core::HeaderClef(head));
    if (m_sheet.LastLine >= 3) rhythm(m_sheet[3], 0);
    if (m_sheet.LastLine >= 2 && core::IsTempoLine(m_sheet[2].text())) tempo(m_sheet[2], 0);
    for (int i = 4; i <= m_sheet.LastLine; ++i) {
        if (m_sheet[i].startsWith("END")) break;
        walkLine(i);
    }
    if (m_octaveShift != 0) octaveLine(0);
    if (m_cur.hasNotes || !m_cur.body.empty() || m_measures.empty()) closeMeasure();
    MeasureOut& last = m_measures.back();
    if (m_ending1Open || m_ending2Open)
        last.right.ending =
            std::string("<ending number=\"") + (m_ending1Open ? "1" : "2") + "\" type=\"stop\"/>";
    if (last.right.style.empty()) last.right.style = "light-heavy";

    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n"
                      "<!DOCTYPE score-partwise PUBLIC \"-//Recordare//DTD MusicXML 4.0 "
                      "Partwise//EN\" \"http://www.musicxml.org/dtds/partwise.dtd\">\n"
                      "<score-partwise version=\"4.0\">\n";
    out.reserve(static_cast<std::size_t>(m_sheet.LastLine) * 200);
    out += header();
    out += "<part id=\"P1\">\n";
    for (const MeasureOut& m : m_measures)
        appendMeasure(out, m);
    out += "</part>\n</score-partwise>\n";
    return out;
}

void Exporter::appendMeasure(std::string& out, const MeasureOut& m) const {
    out += "<measure number=\"" + m.number + "\"" + (m.implicit ? " implicit=\"yes\"" : "") + ">\n";
    const std::string attributes = m.divisions + m.key + m.time + m.clef + m.style;
    if (!attributes.empty()) out += "<attributes>" + attributes + "</attributes>\n";
    out += m.left.xml("left");
    out += m.body;
    out += m.right.xml("right");
    out += "</measure>\n";
}

void Exporter::walkLine(int i) {
    const core::ScoreLine& line = m_sheet[i];
    switch (core::ClassifyLine(line.text(), i)) {
    case core::LineKind::NoteLine:
        noteLine(i);
        break;
    case core::LineKind::BarLine:
        barRecord();
        break;
    case core::LineKind::DirectiveLine:
        directive(i);
        break;
    case core::LineKind::TextLine:
        textLine(i);
        break;
    case core::LineKind::ControlLine:
        if (core::LineText(line).starts_with("FIN") || core::LineText(line).starts_with("fin"))
            m_cur.body += Direction("above", Words("Fine"), "<sound fine=\"yes\"/>");
        break;
    default:
        break;
    }
}

// Pending key, time and clef changes go into the measure's opening attributes while it
// holds no note, otherwise into an <attributes> element at this point of the music.
void Exporter::flushAttributes() {
    std::string key;
    if (m_keyPending) {
        key = KeyXml(m_key);
        if (key.empty()) {
            key = "<key>";
            for (int s = 1; s <= 7; ++s) {
                const char c = m_key[static_cast<std::size_t>(s)];
                if (AccidentalWord(c).empty() || c == 'N') continue;
                key += "<key-step>" + std::string(1, "CDEFGAB"[s - 1]) + "</key-step><key-alter>" +
                       Decimal(c == 'D' ? 1
                               : c == 'B'
                                   ? -1
                                   : (c == 'K' ? m_options.koronBend : m_options.soriBend) / 32.0) +
                       "</key-alter><key-accidental>" + std::string(AccidentalWord(c)) +
                       "</key-accidental>";
            }
            key += "</key>";
        }
    }
    if (!m_cur.hasNotes) {
        if (m_keyPending) m_cur.key = key;
        if (!m_timePending.empty()) m_cur.time = m_timePending;
        if (!m_clefPending.empty()) m_cur.clef = m_clefPending;
    } else if (m_keyPending || !m_timePending.empty() || !m_clefPending.empty()) {
        m_cur.body += "<attributes>" + key + m_timePending + m_clefPending + "</attributes>\n";
    }
    m_keyPending = false;
    m_timePending.clear();
    m_clefPending.clear();
}

void Exporter::closeMeasure(bool implicit) {
    flushAttributes();
    if (m_ending2Open) {
        m_cur.right.ending = "<ending number=\"2\" type=\"discontinue\"/>";
        m_ending2Open = false;
    }
    m_cur.implicit = implicit;
    m_cur.number = implicit ? "0" : std::to_string(m_number++);
    m_measures.push_back(std::move(m_cur));
    m_cur = MeasureOut{};
    m_fill = 0;
    m_memory.fill(' ');
}

// The barline that ends the music so far: the last measure's when the open one is empty.
Barline& Exporter::closingBar() {
    if (!m_cur.hasNotes && m_cur.body.empty() && !m_measures.empty())
        return m_measures.back().right;
    return m_cur.right;
}

void Exporter::countTime(const NoteRead& n) {
    const auto row = MarkRowOf(n.mark);
    if (n.ticks > 0 && !(row && row->group == MarkGroup::Tuplet)) m_fill += n.ticks;
    if (m_measureTicks > 0 && m_fill >= m_measureTicks) closeMeasure();
}

// A barline record: free rhythm ends its measure here; in measured music a record that
// cuts the first measure short makes it a pickup.
void Exporter::barRecord() {
    if (m_measureTicks == 0) {
        if (m_cur.hasNotes) closeMeasure();
    } else if (m_measures.empty() && m_cur.hasNotes && m_fill > 0 && m_fill < m_measureTicks) {
        closeMeasure(true);
    }
}

void Exporter::rhythm(const core::ScoreLine& line, int) {
    const std::string payload = core::DirectivePayload(line, 6);
    const core::Measure m = core::ReadMeasure(payload);
    if (m.MeasureTicks >= core::kNoBarCheck || m.numerator <= 0 || m.denominator <= 0) {
        m_measureTicks = 0;
        m_timePending = "<time><senza-misura/></time>";
        return;
    }
    m_measureTicks = static_cast<int>(m.MeasureTicks);
    // The page draws no time signature with a numerator above 16.
    m_timePending = std::string(m.numerator > 16 ? "<time print-object=\"no\">" : "<time>") +
                    "<beats>" + std::to_string(m.numerator) + "</beats><beat-type>" +
                    std::to_string(m.denominator) + "</beat-type></time>";
}

void Exporter::tempo(const core::ScoreLine& line, int) {
    const double v = LeadingNumber(core::DirectivePayload(line, 4));
    const double bpm = std::abs(v);
    if (bpm <= 0) return;
    const std::string sound = "<sound tempo=\"" + Decimal(bpm) + "\"/>";
    if (v < 0) { // a hidden mark: heard, not shown
        m_cur.body += sound + "\n";
        return;
    }
    m_cur.body += Direction("above",
                            "<metronome><beat-unit>quarter</beat-unit><per-minute>" + Decimal(bpm) +
                                "</per-minute></metronome>",
                            sound);
}

// An octave line: "ALL8U" sounds an octave up, so it is written an octave down.
void Exporter::octaveLine(int shift) {
    if (shift == m_octaveShift) return;
    if (m_octaveShift != 0) m_cur.body += OctaveShift("stop", 1);
    if (shift != 0) m_cur.body += OctaveShift(shift > 0 ? "down" : "up", 1);
    m_octaveShift = shift;
}

void Exporter::directive(int i) {
    const core::ScoreLine& line = m_sheet[i];
    if (const auto change = core::AllChangeOf(line)) {
        if (change->digit >= 1 && change->digit <= 7) {
            m_key[static_cast<std::size_t>(change->digit)] = change->letter;
            m_keyPending = true;
            // A key change behind a barline makes it a double bar.
            Barline& bar = closingBar();
            if (&bar != &m_cur.right && bar.style.empty()) bar.style = "light-light";
        } else if (change->digit == 8) {
            // The octave lines double or halve a state; only once up or once down from
            // the base moves the music, as playback hears it.
            if (change->letter == 'U')
                m_octaveState *= 2;
            else if (change->letter == 'D')
                m_octaveState /= 2;
            else if (change->letter == 'N')
                m_octaveState = kOctaveBase;
            octaveLine(m_octaveState == 2 * kOctaveBase   ? 1
                       : m_octaveState * 2 == kOctaveBase ? -1
                                                          : 0);
        }
        return;
    }
    using Handler = void (Exporter::*)(const core::ScoreLine&, int);
    struct Row {
        std::string_view token;
        Handler run;
        int arg;
    };
    static constexpr Row kRows[] = {
        {"TEMPO", &Exporter::tempo, 0},        {"RHYTM", &Exporter::rhythm, 0},
        {"RHITM", &Exporter::rhythm, 0},       {"RHYTHM", &Exporter::rhythm, 0},
        {"RHITHM", &Exporter::rhythm, 0},      {"GSIGN", &Exporter::clefChange, 'G'},
        {"FSIGN", &Exporter::clefChange, 'F'}, {"REP{", &Exporter::repeatStart, 0},
        {"REP}", &Exporter::repeatEnd, 0},     {"VOL{1", &Exporter::volta, 1},
        {"VOL{2", &Exporter::volta, 2},        {"REPS{", &Exporter::largeRepeat, 0},
        {"REPS}", &Exporter::largeRepeat, 1},  {"REPB1", &Exporter::repeatSign, 1},
        {"REPB2", &Exporter::repeatSign, 2},
    };
    const std::string_view token = core::DirectiveTokenOf(line.text());
    for (const Row& row : kRows)
        if (row.token == token) return (this->*row.run)(line, row.arg);
}

void Exporter::clefChange(const core::ScoreLine&, int letter) {
    m_clefPending = letter == 'F' ? "<clef><sign>F</sign><line>4</line></clef>"
                                  : "<clef><sign>G</sign><line>2</line></clef>";
}

// A repeat start inside a measure stands where it is met.
void Exporter::repeatStart(const core::ScoreLine&, int) {
    Barline bar{"heavy-light", "", "<repeat direction=\"forward\"/>"};
    if (m_cur.hasNotes)
        m_cur.body += bar.xml("middle");
    else
        m_cur.left = bar;
}

// The end of a repeat also ends a first volta.
void Exporter::repeatEnd(const core::ScoreLine&, int) {
    Barline& bar = closingBar();
    bar.style = "light-heavy";
    bar.repeat = "<repeat direction=\"backward\"/>";
    if (m_ending1Open) bar.ending = "<ending number=\"1\" type=\"stop\"/>";
    m_ending1Open = false;
}

void Exporter::volta(const core::ScoreLine&, int number) {
    m_cur.left.ending = "<ending number=\"" + std::to_string(number) + "\" type=\"start\"/>";
    (number == 1 ? m_ending1Open : m_ending2Open) = true;
}

// The large repeat: its start is the segno, its end goes back to it.
void Exporter::largeRepeat(const core::ScoreLine&, int end) {
    m_cur.body += Direction("above", "<segno/>",
                            end ? "<sound dalsegno=\"segno\"/>" : "<sound segno=\"segno\"/>");
}

// A measure-repeat sign: the measures it repeats are written out again, as an importer
// that plays them needs, and drawn as the sign.
void Exporter::repeatSign(const core::ScoreLine&, int count) {
    if (m_cur.hasNotes) closeMeasure();
    const int have = static_cast<int>(m_measures.size());
    if (have < count) return;
    const std::string base = m_measures.back().number;
    for (int k = 0; k < count; ++k) {
        MeasureOut copy;
        const std::string& body = m_measures[static_cast<std::size_t>(have - count + k)].body;
        for (std::size_t at = 0; at < body.size();) { // the notes only, one a line
            const std::size_t newline = body.find('\n', at);
            const std::size_t end = newline == std::string::npos ? body.size() : newline + 1;
            if (body.compare(at, 6, "<note>") == 0) copy.body += body.substr(at, end - at);
            at = end;
        }
        copy.style = k == 0 ? "<measure-style><measure-repeat type=\"start\">" +
                                  std::to_string(count) + "</measure-repeat></measure-style>"
                            : "";
        copy.number = base + "r" + std::to_string(k + 1);
        copy.implicit = true;
        m_measures.push_back(std::move(copy));
    }
    m_cur.style = "<measure-style><measure-repeat type=\"stop\"/></measure-style>";
}

void Exporter::textLine(int i) {
    const core::ScoreLine& line = m_sheet[i];
    const std::string raw = core::LineText(line);
    const std::string text = Trim(core::Cp1256ToUtf8(raw));
    if (text.empty()) return;
    switch (core::LinePlacement(line)) {
    case '^':
        if (raw.starts_with("Ms=") || raw.starts_with("MicOff") || raw.starts_with("MicOn")) return;
        m_cur.body += Direction("above", Words(text));
        break;
    case '_':
        m_lyrics.emplace_back(1, text);
        break;
    case 'v':
        if (raw.starts_with("T=") || raw.starts_with("t__")) return;
        m_lyrics.emplace_back(2, text);
        break;
    case '>':
        if (raw.starts_with("Midi In")) return;
        [[fallthrough]];
    default: // "L-" stands above the staff, "L<" and "L>" below it
        if (text == "FIN")
            m_cur.body += Direction("above", Words("Fine"), "<sound fine=\"yes\"/>");
        else
            m_cur.body +=
                Direction(core::LinePlacement(line) == '-' ? "above" : "below", Words(text));
    }
}

} // namespace tahrir::musicxml
