// Key tokens as the command line spells them, parsed once and given to the editor.

#include "edit/key_tokens.h"

#include <map>
#include <utility>

#include "core/score_sheet.h"
#include "edit/editor.h"
#include "edit/key_codes.h"

namespace tahrir::edit {

namespace {

const std::map<std::string, int>& NamedKeys() {
    using namespace Key;
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
            if (n >= 1 && n <= 12) return Key::F(n);
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

void DrawBand(Editor& editor, int from, int to) {
    const EditorState& s = editor.state();
    const auto a = static_cast<std::size_t>(from), b = static_cast<std::size_t>(to);
    editor.picMouseDown(s.LineX[a], s.LineY[a]);
    editor.picMouseMove(s.LineX[b], s.LineY[b], true);
    editor.picMouseUp();
}

} // namespace

std::optional<KeyToken> ParseKeyToken(const std::string& token) {
    const auto colon = token.find(':');
    if (colon != std::string::npos) {
        const std::string kind = token.substr(0, colon), arg = token.substr(colon + 1);
        if (kind == "Band") {
            const auto dash = arg.find('-');
            if (dash == std::string::npos) return std::nullopt;
            const auto a = Number(arg.substr(0, dash)), b = Number(arg.substr(dash + 1));
            if (!a || !b || *a > core::MaxLines || *b > core::MaxLines) return std::nullopt;
            return KeyToken{KeyToken::BandDrag, *a, *b, 0};
        }
        static const std::map<std::string, std::pair<KeyToken::Kind, int>> kinds = {
            {"Click", {KeyToken::Click, 0}},
            {"ShiftClick", {KeyToken::Click, 1}},
            {"Palette", {KeyToken::PaletteClick, 0}},
            {"ShiftPalette", {KeyToken::PaletteClick, 1}},
            {"CtrlPalette", {KeyToken::PaletteClick, 2}}};
        const auto it = kinds.find(kind);
        const auto n = Number(arg);
        if (it == kinds.end() || !n) return std::nullopt;
        return KeyToken{it->second.first, *n, 0, it->second.second};
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
    return KeyToken{KeyToken::KeyPress, *code, 0, shift};
}

void RunKeyToken(Editor& editor, const KeyToken& action) {
    switch (action.kind) {
    case KeyToken::KeyPress:
        editor.keyPress(action.a, action.shift);
        break;
    case KeyToken::Click:
        editor.labelMouseDown(action.a, 1, action.shift);
        break;
    case KeyToken::BandDrag:
        DrawBand(editor, action.a, action.b);
        break;
    case KeyToken::PaletteClick:
        editor.paletteClick(action.a, action.shift);
        break;
    }
}

} // namespace tahrir::edit
