// Key scripts: each file under tests/data/edit holds cases of a score body, the keys,
// clicks and answers given to the editor, and what must stand afterwards.

#include <algorithm>
#include <fstream>
#include <functional>
#include <iomanip>
#include <map>
#include <sstream>

#include "edit/file_undo_pages.h"
#include "edit/key_tokens.h"
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

std::string ColourName(int colour) {
    static const std::map<int, std::string> names = {
        {ColourBlack, "black"}, {ColourRed, "red"}, {ColourYellow, "yellow"}, {ColourBlue, "blue"}};
    const auto it = names.find(colour);
    return it == names.end() ? std::to_string(colour) : it->second;
}

class KeyScript : public EditorTest {
public:
    void TestBody() override {}

    // One line of a case: an action, or a reading and the words it must give.
    void step(const Lines& words) {
        const Lines rest(words.begin() + 1, words.end());
        const std::map<std::string, std::function<void()>> actions = {
            {"load", [&] { load(rest); }},
            {"loadmany", [&] { load(Lines(std::stoul(rest.at(0)), rest.at(1))); }},
            // The undo pages kept in a store file.
            {"loadpaged", [&] { load(rest, &pages()); }},
            {"set", [&] { doc.Sheet.setLine(std::stoi(rest.at(0)), rest.at(1)); }},
            // The cursor put on a line behind the editor's back.
            {"jump", [&] { doc.Sheet.CurrentLine = std::stoi(rest.at(0)); }},
            {"textbox", [&] { editor->textToolApply(rest.at(1), std::stoi(rest.at(0))); }},
            // None for a cancelled box.
            {"answer", [&] { host.answers.assign(rest.begin(), rest.end()); }},
            {"keys", [&] { std::ranges::for_each(rest, [this](auto& t) { press(t); }); }}};
        const auto it = actions.find(words[0]);
        if (it == actions.end())
            check(words[0], rest);
        else
            it->second();
    }

private:
    // A token of the type command, or one of the clicks below; *N repeats it.
    void press(std::string token) {
        int times = 1;
        if (const auto star = token.rfind('*'); star != std::string::npos) {
            times = std::stoi(token.substr(star + 1));
            token.resize(star);
        }
        const auto colon = token.find(':');
        const auto parsed = ParseKeyToken(token);
        for (int i = 0; i < times; ++i) {
            if (parsed) RunKeyToken(*editor, *parsed);
            else click(token.substr(0, colon), Numbers(token.substr(colon + 1)));
        }
    }

    // The mouse actions the type command has no token for.
    void click(const std::string& kind, const std::vector<int>& n) {
        const std::map<std::string, std::function<void()>> clicks = {
            {"Label", [&] { editor->labelClick(n.at(0)); }},
            {"Measure", [&] { editor->measureMouseDown(n.at(0), n.at(1), n.at(2)); }},
            {"MeasureDouble", [&] { editor->measureDoubleClick(n.at(0)); }},
            {"EditorBox", [&] { editor->editorClick(); }},
            {"Undrawn", [&] { editor->positionsChanged(core::PositionTable{}); }}};
        const auto it = clicks.find(kind);
        ASSERT_NE(it, clicks.end()) << "unknown key or click " << kind;
        it->second();
    }

    // A reading takes a fixed count of numbers; the words after them are what it must give,
    // joined by "|" where it gives several.
    using Reading = std::function<std::string(const std::vector<int>&)>;
    void check(const std::string& what, const Lines& rest) {
        const auto it = readings().find(what);
        ASSERT_NE(it, readings().end()) << "unknown step " << what;
        const auto& [count, read] = it->second;
        ASSERT_GE(rest.size(), count) << what;
        std::vector<int> args;
        for (std::size_t i = 0; i < count; ++i)
            args.push_back(std::stoi(rest[i]));
        EXPECT_EQ(read(args), Join(Lines(rest.begin() + static_cast<long>(count), rest.end())))
            << what;
    }

    const std::map<std::string, std::pair<std::size_t, Reading>>& readings() {
        if (!m_readings.empty()) return m_readings;
        m_readings = {
            {"pen", {0, [this](auto&) { return penTrimmed(); }}},
            {"caption", {0, [this](auto&) { return caption(); }}},
            {"keysig", {0, [this](auto&) { return keySignature(); }}},
            {"body", {0, [this](auto&) { return body(); }}},
            {"current", {0, [this](auto&) { return Str(current()); }}},
            {"last", {0, [this](auto&) { return Str(last()); }}},
            {"cursor", {0, [this](auto&) { return Two(current(), last()); }}},
            {"messages", {0, [this](auto&) { return Join(host.messages); }}},
            {"shown", {0, [this](auto&) { return Str(double(host.messages.size())); }}},
            {"titles", {0, [this](auto&) { return Join(host.titles); }}},
            {"asked", {0, [this](auto&) { return Str(double(host.titles.size())); }}},
            {"sounded", {0, [this](auto&) { return Join(Strs(sounded())); }}},
            {"accidental", {0, [this](auto&) { return audio.notes.at(0).accidental; }}},
            {"tempo", {0, [this](auto&) { return Str(doc.InitialTempo); }}},
            {"undo", {0, [this](auto&) { return Str(doc.UndoIndex); }}},
            {"undotop", {0, [this](auto&) { return Str(doc.UndoTop); }}},
            {"dirty", {0, [this](auto&) { return Truth(doc.DirtyFlag); }}},
            {"selstart", {0, [this](auto&) { return Str(st().SelStart); }}},
            {"selend", {0, [this](auto&) { return Str(st().SelEnd); }}},
            {"sel", {0, [this](auto&) { return Two(st().SelStart, st().SelEnd); }}},
            {"range",
             {0, [this](auto&) { return Two(st().measures.StartMess, st().measures.EndMess); }}},
            {"rangeend", {0, [this](auto&) { return Str(st().measures.EndMess); }}},
            {"maximum", {0, [this](auto&) { return Str(st().measures.Maximum); }}},
            {"outcome", {0, [this](auto&) { return OutcomeName(st().KeyOutcome); }}},
            {"rcd", {0, [this](auto&) { return st().RCDTxt; }}},
            {"help", {0, [this](auto&) { return Truth(st().HelpMode); }}},
            {"voice", {0, [this](auto&) { return Truth(st().SyllableVoiceOn); }}},
            // Whether the pen stands at the cursor line's x.
            {"penatcursor", {0, [this](auto&) { return Truth(X(0) == X(current())); }}},
            {"drawn", {1, [this](auto& a) { return Truth(X(a[0]) >= 0); }}},
            {"line", {1, [this](auto& a) { return trimmed(a[0]); }}},
            {"lines", {2, [this](auto& a) { return Join(trimmed(a[0], a[1])); }}},
            {"text", {1, [this](auto& a) { return line(a[0]); }}},
            {"length", {1, [this](auto& a) { return Str(double(line(a[0]).size())); }}},
            // Columns a[1]..a[2] of line a[0], counted from 1.
            {"columns",
             {3, [this](auto& a) { return line(a[0]).substr(a[1] - 1, a[2] - a[1] + 1); }}},
            {"record", {2, [this](auto& a) { return undo.readRecord(a[0], a[1]); }}},
            {"lit", {1, [this](auto& a) { return Truth(st().lit.test(Index(a[0]))); }}},
            {"measurecolour", {1, [this](auto& a) { return ColourName(MeasureColour(a[0])); }}},
            {"labelcolour",
             {1, [this](auto& a) { return ColourName(st().labels.at(Index(a[0])).colour); }}}};
        return m_readings;
    }

    const EditorState& st() const { return editor->state(); }
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    static std::string Truth(bool b) { return b ? "true" : "false"; }
    double X(int line) const { return st().LineX.at(Index(line)); }
    int MeasureColour(int measure) const { return st().measures.LabelColour.at(Index(measure)); }
    static std::string Two(int a, int b) { return Str(a) + "|" + Str(b); }
    static std::string Join(const Lines& words) {
        std::string joined;
        for (std::size_t i = 0; i < words.size(); ++i)
            joined += (i ? "|" : "") + words[i];
        return joined;
    }
    static Lines Strs(const std::vector<int>& numbers) {
        Lines words;
        for (int n : numbers)
            words.push_back(Str(n));
        return words;
    }
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

    FileUndoPages& pages() {
        m_pages = std::make_unique<FileUndoPages>(folder / "tmp.ctz");
        return *m_pages;
    }

    std::unique_ptr<FileUndoPages> m_pages;
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
