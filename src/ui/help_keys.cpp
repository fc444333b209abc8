#include "ui/help_window.h"

namespace tahrir::ui {

// The editor's keyboard, as the key map dispatches it: the key, what it does in English
// and in Persian.
const std::vector<KeyHelp>& EditorKeyHelp() {
    static const std::vector<KeyHelp> table = {
        {"1 ... 7", "Step of the note (Do ... Si)", "درجهٔ نت (دو ... سی)"},
        {"`", "Make the note a rest", "تبدیل نت به سکوت"},
        {"Up, Down", "Note one staff step up, down", "نت یک درجه بالا، پایین"},
        {"Page Up, Page Down", "Note one octave up, down", "نت یک اکتاو بالا، پایین"},
        {"Left, Right, Home, End", "Move the cursor", "حرکت مکان‌نما"},
        {"D, B, S, K, N", "Sharp, flat, sori, koron, natural", "دیز، بمل، سُری، کُرن، بکار"},
        {"A", "Accidental line for the measures from here on", "خط عَرَضی برای میزان‌های بعد"},
        {"V, C", "Left, right plectrum mark", "نشان مضراب چپ، راست"},
        {"F1, F7", "Ending 1, ending 2", "خانهٔ اول، خانهٔ دوم"},
        {"F2, F3", "Repeat start, repeat end", "آغاز و پایان تکرار"},
        {"F4, F5", "Volume marks", "نشان‌های شدت صدا"},
        {"F6", "A spacer line", "خط فاصله"},
        {"F8, F9", "Sign repeat start, end", "آغاز و پایان تکرار از نشانه"},
        {"F10, F11, F12", "Octave up, down, normal from here", "اکتاو بالا، پایین، عادی از این‌جا"},
        {"R, T", "Rhythm line, tempo line", "خط میزان‌بندی، خط سرعت"},
        {"Enter", "Store the note of the pen", "ثبت نت قلم"},
        {"Ins", "Insert the note of the pen", "درج نت قلم"},
        {"Del, Backspace", "Delete lines", "حذف خط‌ها"},
        {"Esc", "Clear the selection", "پاک کردن انتخاب"},
        {"Space", "Play or pause", "پخش یا مکث"},
        {"Num +, Num -", "Next, previous measure", "میزان بعد، قبل"},
        {"E", "Edit the text or command line under the cursor", "ویرایش متن یا فرمان زیر مکان‌نما"},
        {"H", "Help mode: hints of the palette", "حالت راهنما: توضیح ابزارها"},
        {"Shift+1 ... Shift+0", "Duration of the note", "کشش نت"},
        {"Shift+`", "Grace note", "نت زینت"},
        {"Shift+D, B, S, K, N", "Accidental on this step from here on", "عرضی این درجه از این‌جا به بعد"},
        {"Shift+F2", "Measure number text", "متن شمارهٔ میزان"},
        {"Shift+F4", "Command line", "خط فرمان"},
        {"Shift+F5", "Text line", "خط متن"},
        {"Shift+F6", "Lyric under the note", "شعر زیر نت"},
        {"Shift+F7", "Bar line", "خط میزان"},
        {"Shift+F8", "Time text", "متن زمان"},
        {"Shift+T, Ctrl+T", "Raise, lower the selected lines", "بالا و پایین بردن خط‌های انتخاب‌شده"},
        {"Shift+Space", "Play from the cursor", "پخش از مکان‌نما"},
        {"Ctrl+F1 ... F12, Ctrl+0 ... 9", "Ornaments and marks", "تزئینات و نشانه‌ها"},
        {"Ctrl+D, B, S, K, N", "Key signature on line 1", "سرکلید در خط اول"},
        {"Ctrl+A", "Select all", "انتخاب همه"},
        {"Ctrl+C, Ctrl+X, Ctrl+V", "Copy, cut, paste", "رونوشت، برش، چسباندن"},
        {"Ctrl+Z, Ctrl+Y", "Undo, redo", "واگرد، ازنو"},
        {"Ctrl+E", "Editor on or off", "روشن و خاموش کردن ویرایشگر"},
        {"Ctrl+R", "Show the raw line text", "نمایش متن خام خط"},
        {"Ctrl+Space", "Play from the start", "پخش از آغاز"},
        {"Alt+F4", "Exit", "خروج"},
        {"Viewer: Left, Right", "Tempo down, up", "نمایشگر: کاهش و افزایش سرعت"},
        {"Viewer: P", "Switch a playback check box", "نمایشگر: تغییر یک گزینهٔ پخش"},
        {"Viewer: Ctrl+O, Ctrl+Q", "Open, exit", "نمایشگر: باز کردن، خروج"},
    };
    return table;
}

} // namespace tahrir::ui
