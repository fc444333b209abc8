// Any stream of keys, clicks and answers keeps the sheet and the cursor in bounds.

#include <random>

#include "editor_fixture.h"

namespace tahrir::edit::test {

using Robustness = EditorTest;

TEST_F(Robustness, RandomKeysAndClicksKeepTheEditorInBounds) {
    load({"03 -1", "L^Ms=1", "13  8", "23  4K", "TEMPO 80", "LCTOP=40", "L-x", "03  8"});
    std::mt19937 random(20261121);
    const int shifts[] = {0, 0, 0, 1, 1, 2, 2, 3, 4};
    const char* answers[] = {"", "90", "-5", "3/4", "500", "-2", "x"};
    for (int step = 0; step < 6000; ++step) {
        host.answers.assign(1, std::string(answers[random() % 7]));
        const int what = static_cast<int>(random() % 20);
        const int line = static_cast<int>(random() % static_cast<unsigned>(last() + 3));
        if (what == 0)
            editor->labelMouseDown(line, 1, static_cast<int>(random() % 2));
        else if (what == 1)
            editor->paletteClick(static_cast<int>(random() % 75) - 1, shifts[random() % 9]);
        else if (what == 2)
            editor->labelDoubleClick(line);
        else if (what == 3)
            editor->measureMouseDown(static_cast<int>(random() % 5),
                                     1 + static_cast<int>(random() % 2), 0);
        else if (what == 4)
            editor->textToolApply("abc\r\n", static_cast<int>(random() % 8) - 1);
        else if (what == 5 && last() < 60)
            editor->keyPress(Key::Ins, 0);
        else
            editor->keyPress(static_cast<int>(random() % 200), shifts[random() % 9]);
        ASSERT_GE(last(), 1) << "step " << step;
        ASSERT_LE(last(), core::MaxLines) << "step " << step;
        ASSERT_GE(current(), 0) << "step " << step;
        ASSERT_LE(current(), std::max(last(), 4)) << "step " << step;
        if (!editor->state().editing()) editor->editorClick();
    }
    EXPECT_GE(doc.UndoIndex, 1);
    EXPECT_LE(doc.UndoIndex, doc.UndoTop);
}

} // namespace tahrir::edit::test
