// libFuzzer entry: an editor on a sheet read from the first bytes, driven by key presses,
// palette clicks and mouse actions from the rest. After every action the sheet keeps its
// bounds; undo back to the start gives the opened score.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "edit/key_codes.h"
#include "fuzz_support.h"

namespace {

using namespace tahrir;

void Check(bool ok) {
    if (!ok) __builtin_trap();
}

void CheckBounds(const core::Document& doc) {
    const core::ScoreSheet& sheet = doc.Sheet;
    Check(sheet.LastLine >= 0 && sheet.LastLine <= core::MaxLines);
    Check(sheet.CurrentLine >= 0 && sheet.CurrentLine <= core::MaxLines);
    for (int i = 1; i <= sheet.LastLine; ++i) Check(sheet[i].text().size() <= core::RecordLength);
}

void Act(edit::Editor& editor, fuzz::ByteReader& in) {
    const int shift = in.byte() % 5 == 4 ? 2 : in.byte() % 3; // none, Shift or Ctrl
    switch (in.byte() % 6) {
    case 0:
    case 1: editor.keyPress(in.byte(), shift); break; // any virtual key
    case 2: editor.paletteClick(in.number(edit::PaletteEntries), shift); break;
    case 3: editor.labelMouseDown(in.number(core::MaxLines + 1), 1, shift); break;
    case 4:
        editor.picMouseDown(in.number(2000), in.number(4000));
        editor.picMouseMove(in.number(2000), in.number(4000), true);
        editor.picMouseUp();
        break;
    default: editor.labelDoubleClick(in.number(core::MaxLines + 1)); break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::ByteReader in(data, size);
    const std::size_t scoreBytes = static_cast<std::size_t>(in.number(4096));
    const std::string score(in.take(scoreBytes));
    fuzz::EditorRig rig(score, in);
    std::vector<std::string> opened;
    for (int i = 1; i <= rig.doc.Sheet.LastLine; ++i) opened.push_back(core::Scratch(rig.doc.Sheet[i].text()));
    CheckBounds(rig.doc);
    for (int step = 0; step < 64 && !in.done(); ++step) {
        Act(*rig.editor, in);
        CheckBounds(rig.doc);
    }
    // Undo to the first page: the opened score, line for line. Undo is an edit-mode key and,
    // like every key but R, T and the movement keys, is ignored on the head lines 2 and 3: End
    // takes the cursor off them. A score of head lines only keeps it there and is left out.
    if (opened.size() < 4) return 0;
    rig.editor->keyPress(edit::Key::End, 0);
    rig.editor->keyPress(edit::Key::Esc, 0);
    if (!rig.editor->state().editing()) rig.editor->editorClick(); // undo is an editor key
    // A commit is one more undo step, so a change made without one (a transposition by
    // Shift+T or Ctrl+T) is undone too.
    rig.editor->keyPress(edit::Key::Enter, 0);
    for (int guard = 0; rig.doc.UndoIndex > 1 && guard < 10000; ++guard) rig.editor->keyPress('Z', 2);
    Check(rig.doc.UndoIndex <= 1);
    Check(rig.doc.Sheet.LastLine == static_cast<int>(opened.size()));
    for (int i = 1; i <= rig.doc.Sheet.LastLine; ++i)
        Check(core::Scratch(rig.doc.Sheet[i].text()) == opened[static_cast<std::size_t>(i - 1)]);
    return 0;
}
