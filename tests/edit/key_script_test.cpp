// Key scripts: each file under tests/data/edit holds cases of a score body, the keys,
// clicks and answers given to the editor, and what must stand afterwards.

#include <fstream>
#include <iomanip>
#include <functional>
#include <map>
#include <sstream>

#include "editor_fixture.h"

namespace tahrir::edit::test {
namespace {

// Blank-separated words; a quoted word keeps its blanks ("" is the empty word).
Lines Words(const std::string& text) {
    Lines words;
    std::istringstream in(text);
    for (std::string word; in >> std::quoted(word);)
        words.push_back(word);
    return words;
}

// The numbers in "5-7" or "1,2,0".
std::vector<int> Numbers(const std::string& text) {
    std::vector<int> numbers;
    std::istringstream in(text);
    for (int n = 0; in >> n; in.ignore())
        numbers.push_back(n);
    return numbers;
}

// A key named as the type command names it: a letter, a digit, F1..F12 or a word.
int KeyCode(const std::string& name) {
    static const std::map<std::string, int> named = {
        {"Enter", Key::Enter}, {"Ins", Key::Ins},       {"Del", Key::Del},
        {"Esc", Key::Esc},     {"Left", Key::Left},     {"Right", Key::Right},
        {"Up", Key::Up},       {"Down", Key::Down},     {"Home", Key::Home},
        {"End", Key::End},     {"PageUp", Key::PageUp}, {"PageDown", Key::PageDown},
        {"Grave", Key::Grave}, {"NumPlus", Key::NumPlus}, {"NumMinus", Key::NumMinus},
        {"Backspace", Key::Backspace}};
    if (name.size() == 1) return name[0];
    if (name[0] == 'F') return Key::F(std::stoi(name.substr(1)));
    const auto it = named.find(name);
    EXPECT_NE(it, named.end()) << "unknown key " << name;
    return it == named.end() ? 0 : it->second;
}

std::string ColourName(int colour) {
    static const std::map<int, std::string> names = {{ColourBlack, "black"},
        {ColourRed, "red"}, {ColourYellow, "yellow"}, {ColourBlue, "blue"}};
    const auto it = names.find(colour);
    return it == names.end() ? std::to_string(colour) : it->second;
}

class KeyScript : public EditorTest {
public:
    void TestBody() override {}

    // One line of a case: an action, or a reading and the words it must give.
    void step(const Lines& words) {
        const std::string& verb = words[0];
        const Lines rest(words.begin() + 1, words.end());
        if (verb == "load")
            load(rest);
        else if (verb == "loadmany") // a count and one line
            load(Lines(std::stoul(rest.at(0)), rest.at(1)));
        else if (verb == "set")
            doc.Sheet.setLine(std::stoi(rest.at(0)), rest.at(1));
        else if (verb == "jump") // the cursor put on a line behind the editor's back
            doc.Sheet.CurrentLine = std::stoi(rest.at(0));
        else if (verb == "textbox") // the text tool applied with an option and a text
            editor->textToolApply(rest.at(1), std::stoi(rest.at(0)));
        else if (verb == "answer") // the input box answers, none for a cancelled box
            host.answers.assign(rest.begin(), rest.end());
        else if (verb == "keys")
            for (const std::string& token : rest)
                press(token);
        else
            check(verb, rest);
    }

private:
    // A key with its Shift+ and Ctrl+ prefixes, or KIND:NUMBERS for a click; *N repeats it.
    void press(std::string token) {
        int times = 1;
        if (const auto star = token.rfind('*'); star != std::string::npos) {
            times = std::stoi(token.substr(star + 1));
            token.resize(star);
        }
        for (int i = 0; i < times; ++i) {
            if (const auto colon = token.find(':'); colon != std::string::npos) {
                click(token.substr(0, colon), Numbers(token.substr(colon + 1)));
                continue;
            }
            int shift = 0;
            std::string name = token;
            for (auto plus = name.find('+'); plus != std::string::npos && name.size() > 1;
                 plus = name.find('+')) {
                const std::string modifier = name.substr(0, plus);
                EXPECT_TRUE(modifier == "Ctrl" || modifier == "Shift") << token;
                shift |= modifier == "Ctrl" ? kCtrl : kShift;
                name.erase(0, plus + 1);
            }
            key(KeyCode(name), shift);
        }
    }

    void click(const std::string& kind, const std::vector<int>& n) {
        const std::map<std::string, std::function<void()>> clicks = {
            {"Palette", [&] { editor->paletteClick(n.at(0), 0); }},
            {"ShiftPalette", [&] { editor->paletteClick(n.at(0), kShift); }},
            {"CtrlPalette", [&] { editor->paletteClick(n.at(0), kCtrl); }},
            {"Click", [&] { editor->labelMouseDown(n.at(0), 1, 0); }},
            {"ShiftClick", [&] { editor->labelMouseDown(n.at(0), 1, kShift); }},
            {"Label", [&] { editor->labelClick(n.at(0)); }},
            {"Band", [&] { bandSelect(n.at(0), n.at(1)); }},
            {"Measure", [&] { editor->measureMouseDown(n.at(0), n.at(1), n.at(2)); }},
            {"MeasureDouble", [&] { editor->measureDoubleClick(n.at(0)); }},
            {"EditorBox", [&] { editor->editorClick(); }},
            {"Undrawn", [&] { editor->positionsChanged(core::PositionTable{}); }}};
        const auto it = clicks.find(kind);
        ASSERT_NE(it, clicks.end()) << "unknown click " << kind;
        it->second();
    }

    // A reading takes a fixed count of numbers; the words after them are what it must give.
    using Reading = std::function<Lines(const std::vector<int>&)>;
    void check(const std::string& what, const Lines& rest) {
        const auto it = readings().find(what);
        ASSERT_NE(it, readings().end()) << "unknown step " << what;
        const auto& [count, read] = it->second;
        ASSERT_GE(rest.size(), count) << what;
        std::vector<int> args;
        for (std::size_t i = 0; i < count; ++i)
            args.push_back(std::stoi(rest[i]));
        EXPECT_EQ(read(args), Lines(rest.begin() + static_cast<long>(count), rest.end())) << what;
    }

    const std::map<std::string, std::pair<std::size_t, Reading>>& readings() {
        if (!m_readings.empty()) return m_readings;
        const auto one = [](auto f) { return [f](auto&) { return Lines{f()}; }; };
        m_readings = {
            {"pen", {0, one([this] { return penTrimmed(); })}},
            {"caption", {0, one([this] { return caption(); })}},
            {"keysig", {0, one([this] { return keySignature(); })}},
            {"body", {0, one([this] { return body(); })}},
            {"asked", {0, one([this] { return Str(double(host.titles.size())); })}},
            {"shown", {0, one([this] { return Str(double(host.messages.size())); })}},
            {"tempo", {0, one([this] { return Str(doc.InitialTempo); })}},
            {"undo", {0, one([this] { return Str(doc.UndoIndex); })}},
            {"dirty", {0, one([this] { return Truth(doc.DirtyFlag); })}},
            {"maximum", {0, one([this] { return Str(st().measures.Maximum); })}},
            {"outcome", {0, one([this] { return OutcomeName(st().KeyOutcome); })}},
            {"rcd", {0, one([this] { return st().RCDTxt; })}},
            {"penatcursor", {0, one([this] {
                 return Truth(st().LineX.at(0) == st().LineX.at(Index(current()))); })}},
            {"accidental", {0, one([this] { return audio.notes.at(0).accidental; })}},
            {"help", {0, one([this] { return Truth(st().HelpMode); })}},
            {"voice", {0, one([this] { return Truth(st().SyllableVoiceOn); })}},
            {"current", {0, one([this] { return Str(current()); })}},
            {"last", {0, one([this] { return Str(last()); })}},
            {"selstart", {0, one([this] { return Str(st().SelStart); })}},
            {"selend", {0, one([this] { return Str(st().SelEnd); })}},
            {"rangeend", {0, one([this] { return Str(st().measures.EndMess); })}},
            {"cursor", {0, [this](auto&) { return Lines{Str(current()), Str(last())}; }}},
            {"sel", {0, [this](auto&) { return Lines{Str(st().SelStart), Str(st().SelEnd)}; }}},
            {"range", {0, [this](auto&) {
                 return Lines{Str(st().measures.StartMess), Str(st().measures.EndMess)}; }}},
            {"messages", {0, [this](auto&) { return host.messages; }}},
            {"titles", {0, [this](auto&) { return host.titles; }}},
            {"sounded", {0, [this](auto&) {
                 Lines steps;
                 for (int step : sounded()) steps.push_back(Str(step));
                 return steps; }}},
            {"line", {1, [this](auto& a) { return Lines{trimmed(a[0])}; }}},
            {"lines", {2, [this](auto& a) { return trimmed(a[0], a[1]); }}},
            {"text", {1, [this](auto& a) { return Lines{line(a[0])}; }}},
            // Columns a[1]..a[2] of line a[0], counted from 1.
            {"columns", {3, [this](auto& a) {
                 return Lines{line(a[0]).substr(a[1] - 1, a[2] - a[1] + 1)}; }}},
            {"drawn", {1, [this](auto& a) {
                 return Lines{Truth(st().LineX.at(Index(a[0])) >= 0)}; }}},
            {"length", {1, [this](auto& a) { return Lines{Str(double(line(a[0]).size()))}; }}},
            {"record", {2, [this](auto& a) { return Lines{undo.readRecord(a[0], a[1])}; }}},
            {"lit", {1, [this](auto& a) { return Lines{Truth(st().lit.test(Index(a[0])))}; }}},
            {"measurecolour", {1, [this](auto& a) {
                 return Lines{ColourName(st().measures.LabelColour.at(Index(a[0])))}; }}},
            {"labelcolour", {1, [this](auto& a) {
                 return Lines{ColourName(st().labels.at(Index(a[0])).colour)}; }}}};
        return m_readings;
    }

    const EditorState& st() const { return editor->state(); }
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    static std::string Truth(bool b) { return b ? "true" : "false"; }
    static std::string Str(double v) {
        std::ostringstream out;
        out << v;
        return out.str();
    }
    static std::string OutcomeName(Outcome outcome) {
        static const char* const names[] = {"PenToRecord", "Resynchronise", "FullRefresh",
                                            "StoreAnswer"};
        return names[static_cast<int>(outcome)];
    }

    std::map<std::string, std::pair<std::size_t, Reading>> m_readings;
};

class KeyScripts : public ::testing::TestWithParam<const char*> {};

TEST_P(KeyScripts, EveryCaseEndsAsWritten) {
    const std::string path = std::string(TAHRIR_TEST_DATA) + "/edit/" + GetParam() + ".keys";
    std::ifstream in(path);
    ASSERT_TRUE(in) << path;
    std::unique_ptr<KeyScript> script;
    std::string text, name;
    int cases = 0;
    for (int n = 1; std::getline(in, text); ++n) {
        const Lines words = Words(text);
        if (words.empty() || words[0][0] == '#') continue;
        if (words[0] == "case") { // a fresh editor, folder and host for every case
            script = std::make_unique<KeyScript>();
            name = text.substr(5);
            ++cases;
            continue;
        }
        SCOPED_TRACE(path + ":" + std::to_string(n) + " in " + name);
        ASSERT_TRUE(script) << "a step before the first case";
        script->step(words);
    }
    EXPECT_GT(cases, 0) << path;
}

INSTANTIATE_TEST_SUITE_P(Editor, KeyScripts,
                         ::testing::Values("note_entry", "key_dispatch", "line_commands",
                                           "measures", "palette", "clipboard", "mouse_text"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
} // namespace tahrir::edit::test
