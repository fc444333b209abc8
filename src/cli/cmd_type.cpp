// Editing: feeds key tokens to the score view's key handler and saves the result.

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>

#include "app/audition.h"
#include "app/open_score.h"
#include "app/render_layout.h"
#include "cli/cli_args.h"
#include "cli/commands.h"
#include "cli/json_text.h"
#include "core/cp1256.h"
#include "core/line_kind.h"
#include "core/page_store.h"
#include "core/score_writer.h"
#include "edit/editor.h"
#include "edit/file_undo_pages.h"
#include "edit/key_codes.h"
#include "play/midi_out.h"
#include "play/note_player.h"
#include "play/play_state.h"

namespace tahrir::cli {

namespace {

using edit::Editor;

// Sounds typed notes through the player's audition and keeps what was sounded.
class RecordingAuditioner : public edit::Auditioner {
public:
    RecordingAuditioner() : m_player(m_midi, m_state, m_controls) {}
    void soundNote(const edit::NoteSound& note) override {
        if (const auto sounded = app::AuditionNote(m_player, note))
            sounded_.push_back(*sounded);
    }
    const std::vector<play::AuditionedNote>& sounded() const { return sounded_; }

private:
    play::MidiOut m_midi;
    play::RunState m_state;
    play::PlayControls m_controls;
    play::NotePlayer m_player;
    std::vector<play::AuditionedNote> sounded_;
};

// Input boxes answered in order from --answers; message boxes collected.
class AnswerHost : public edit::EditorHost {
public:
    explicit AnswerHost(std::vector<std::string> answers) : m_answers(std::move(answers)) {}
    std::optional<std::string> inputBox(const std::string&, const std::string&) override {
        if (m_next >= m_answers.size()) return std::nullopt;
        return core::Utf8ToCp1256(m_answers[m_next++]);
    }
    void messageBox(const std::string& text) override { messages.push_back(text); }
    std::vector<std::string> messages;

private:
    std::vector<std::string> m_answers;
    std::size_t m_next = 0;
};

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, separator))
        parts.push_back(part);
    if (!text.empty() && text.back() == separator) parts.emplace_back();
    return parts;
}

const std::map<std::string, int>& NamedKeys() {
    using namespace edit::Key;
    static const std::map<std::string, int> keys = {
        {"Enter", Enter},   {"Ins", Ins},           {"Del", Del},         {"Backspace", Backspace},
        {"Esc", Esc},       {"Space", Space},       {"Left", Left},       {"Right", Right},
        {"Up", Up},         {"Down", Down},         {"Home", Home},       {"End", End},
        {"PageUp", PageUp}, {"PageDown", PageDown}, {"Grave", Grave},     {"Equals", Equals},
        {"Comma", Comma},   {"Period", Period},     {"NumPlus", NumPlus}, {"NumMinus", NumMinus},
    };
    return keys;
}

std::optional<int> KeyCode(const std::string& name) {
    if (name.size() == 1 &&
        ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= '0' && name[0] <= '9')))
        return static_cast<int>(name[0]);
    if (name.size() >= 2 && name.size() <= 3 && name[0] == 'F') {
        const std::string digits = name.substr(1);
        if (digits.find_first_not_of("0123456789") == std::string::npos) {
            const int n = std::stoi(digits);
            if (n >= 1 && n <= 12) return edit::Key::F(n);
        }
    }
    const auto it = NamedKeys().find(name);
    return it == NamedKeys().end() ? std::nullopt : std::optional<int>(it->second);
}

std::optional<int> Number(const std::string& text) {
    if (text.empty() || text.size() > 6 ||
        text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::stoi(text);
}

void Band(Editor& editor, int from, int to) {
    const edit::EditorState& s = editor.state();
    const auto a = static_cast<std::size_t>(from), b = static_cast<std::size_t>(to);
    editor.picMouseDown(s.LineX[a], s.LineY[a]);
    editor.picMouseMove(s.LineX[b], s.LineY[b], true);
    editor.picMouseUp();
}

// One parsed token: a key press, a label click, a band or a palette click.
struct Action {
    enum Kind { KeyPress, Click, BandDrag, PaletteClick } kind = KeyPress;
    int a = 0;     // key code, line, first line of the band, palette entry
    int b = 0;     // last line of the band
    int shift = 0; // shift state
};

std::optional<Action> ParseToken(const std::string& token) {
    const auto colon = token.find(':');
    if (colon != std::string::npos) {
        const std::string kind = token.substr(0, colon), arg = token.substr(colon + 1);
        if (kind == "Band") {
            const auto dash = arg.find('-');
            if (dash == std::string::npos) return std::nullopt;
            const auto a = Number(arg.substr(0, dash)), b = Number(arg.substr(dash + 1));
            if (!a || !b || *a > core::MaxLines || *b > core::MaxLines) return std::nullopt;
            return Action{Action::BandDrag, *a, *b, 0};
        }
        static const std::map<std::string, std::pair<Action::Kind, int>> kinds = {
            {"Click", {Action::Click, 0}},
            {"ShiftClick", {Action::Click, 1}},
            {"Palette", {Action::PaletteClick, 0}},
            {"ShiftPalette", {Action::PaletteClick, 1}},
            {"CtrlPalette", {Action::PaletteClick, 2}}};
        const auto it = kinds.find(kind);
        const auto n = Number(arg);
        if (it == kinds.end() || !n) return std::nullopt;
        return Action{it->second.first, *n, 0, it->second.second};
    }
    static const std::pair<const char*, int> kModifiers[] = {
        {"Ctrl+Shift+", 3}, {"Shift+", 1}, {"Ctrl+", 2}, {"Alt+", 4}};
    int shift = 0;
    std::string name = token;
    for (const auto& [prefix, state] : kModifiers) {
        const std::string p = prefix;
        if (name.rfind(p, 0) == 0) {
            shift = state;
            name = name.substr(p.size());
            break;
        }
    }
    const auto code = KeyCode(name);
    if (!code) return std::nullopt;
    return Action{Action::KeyPress, *code, 0, shift};
}

void Run(Editor& editor, const Action& action) {
    switch (action.kind) {
    case Action::KeyPress:
        editor.keyPress(action.a, action.shift);
        break;
    case Action::Click:
        editor.labelMouseDown(action.a, 1, action.shift);
        break;
    case Action::BandDrag:
        Band(editor, action.a, action.b);
        break;
    case Action::PaletteClick:
        editor.paletteClick(action.a, action.shift);
        break;
    }
}

void PrintState(Editor& editor, const AnswerHost& host, const RecordingAuditioner& audio) {
    const core::Document& doc = editor.document();
    std::ostringstream out;
    out << "{\"currentLine\": " << doc.Sheet.CurrentLine << ", \"lastLine\": " << doc.Sheet.LastLine
        << ", \"selStart\": " << editor.state().SelStart << ", \"selEnd\": " << editor.state().SelEnd
        << ", \"undoIndex\": " << doc.UndoIndex << ", \"undoTop\": " << doc.UndoTop
        << ", \"pen\": " << JsonString(core::Cp1256ToUtf8(doc.Sheet.PenLine().text()))
        << ", \"lit\": [";
    bool first = true;
    for (int i = 0; i < edit::PaletteEntries; ++i) {
        if (!editor.state().lit.test(static_cast<std::size_t>(i))) continue;
        out << (first ? "" : ", ") << i;
        first = false;
    }
    out << "], \"messages\": [";
    for (std::size_t i = 0; i < host.messages.size(); ++i)
        out << (i ? ", " : "") << JsonString(core::Cp1256ToUtf8(host.messages[i]));
    out << "], \"sounded\": [";
    for (std::size_t i = 0; i < audio.sounded().size(); ++i)
        out << (i ? ", " : "") << '[' << audio.sounded()[i].note << ", "
            << audio.sounded()[i].channel << ']';
    out << "]}\n";
    std::cout << out.str();
}

} // namespace

int RunType(const Argv& argv) {
    Args args(argv, {{"--keys", "--answers"}, {"--json"}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto out = args.value("-o");
    if (args.positional().size() != 1 || !out)
        return Fail(ExitUsage, "usage: type FILE.srv [--keys \"TOKENS\"] [--answers \"A1|A2|...\"] "
                               "-o OUT.srv [--json]");
    // Tokens are checked before anything is loaded, so that a typing error costs nothing.
    std::vector<Action> actions;
    for (const std::string& t : Split(args.value("--keys").value_or(""), ' ')) {
        if (t.empty()) continue;
        const auto action = ParseToken(t);
        if (!action) return Fail(ExitUsage, "unknown key token \"" + t + "\"");
        actions.push_back(*action);
    }
    const std::string answers = args.value("--answers").value_or("");
    AnswerHost host(answers.empty() ? std::vector<std::string>() : Split(answers, '|'));

    const app::Workspace workspace = app::StartWorkspace(args.value("--app-folder"));
    if (!workspace.ok()) return Fail(ExitIo, workspace.error);
    const std::filesystem::path& folder = workspace.session.AppFolder;
    core::PageStore store(core::PageStore::PathIn(folder));
    core::Document doc;
    const app::OpenedScore opened = app::OpenScore(doc, workspace.session, &store, args.positional()[0]);
    if (!opened.ok()) return Fail(ExitIo, opened.failure);

    app::RenderLayout layout;
    RecordingAuditioner audio;
    edit::MemoryClipboard clipboard;
    edit::FileUndoPages pages(core::PageStore::PathIn(folder));
    Editor editor(doc, {&layout, &audio, &clipboard, &host, &pages}, folder);
    // The live tempo bar starts at 20 and follows a score tempo above 20, as at start-up.
    editor.setLiveTempo(doc.TempoSlider > 0 ? std::clamp(doc.TempoSlider, 20, 320) : 20);
    editor.documentReplaced();
    editor.editorClick();
    for (const Action& action : actions)
        Run(editor, action);
    if (!pages.error().empty()) Fail(ExitOk, "warning: " + pages.error());

    const core::SaveResult saved = core::SaveImage(doc, *out);
    if (!saved.ok) return Fail(ExitIo, saved.message);
    if (args.flag("--json")) PrintState(editor, host, audio);
    return std::cout.flush() ? ExitOk : ExitIo;
}

} // namespace tahrir::cli
