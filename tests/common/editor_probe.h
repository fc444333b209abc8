#pragma once
// For tests that need an editor state no key or click reaches, such as a palette entry
// that is never idle while editing.

#include "edit/editor.h"

namespace tahrir::edit {

struct EditorProbe {
    static EditorState& state(Editor& editor) { return editor; }
};

} // namespace tahrir::edit
