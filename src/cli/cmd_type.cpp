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
#include "edit/key_tokens.h"
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
    std::vector<edit::KeyToken> actions;
    for (const std::string& t : Split(args.value("--keys").value_or(""), ' ')) {
        if (t.empty()) continue;
        const auto action = edit::ParseKeyToken(t);
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
    for (const edit::KeyToken& action : actions)
        edit::RunKeyToken(editor, action);
    if (!pages.error().empty()) Fail(ExitOk, "warning: " + pages.error());

    const core::SaveResult saved = core::SaveImage(doc, *out);
    if (!saved.ok) return Fail(ExitIo, saved.message);
    if (args.flag("--json")) PrintState(editor, host, audio);
    return std::cout.flush() ? ExitOk : ExitIo;
}

} // namespace tahrir::cli
