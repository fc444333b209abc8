#pragma once
// Virtual key numbers and shift states of the score view's key press.

namespace tahrir::edit {

namespace Key {
inline constexpr int Backspace = 8, Enter = 13, Esc = 27, Space = 32;
inline constexpr int PageUp = 33, PageDown = 34, End = 35, Home = 36;
inline constexpr int Left = 37, Up = 38, Right = 39, Down = 40, Ins = 45, Del = 46;
inline constexpr int D0 = 48, D1 = 49, D9 = 57; // the digit row
inline constexpr int A = 65, Z = 90;
inline constexpr int NumPlus = 107, NumMinus = 109;
inline constexpr int F1 = 112, F12 = 123;
inline constexpr int Equals = 187, Comma = 188, Period = 190, Grave = 192;
constexpr int Letter(char c) {
    return c;
} // 'A'..'Z' are their own key codes
constexpr int Digit(int d) {
    return D0 + d;
}
constexpr int F(int n) {
    return F1 + n - 1;
}
} // namespace Key

namespace Shift {
inline constexpr int None = 0, Shift = 1, Ctrl = 2, Alt = 4;
}

} // namespace tahrir::edit
