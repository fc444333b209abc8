// Selection, clipboard and undo: a range of line numbers, a paste file with a marker on
// the system clipboard, and whole copies of the sheet on the undo pages.

#include <algorithm>
#include <charconv>
#include <fstream>

#include "core/rhythm_pass.h"
#include "edit/editor.h"

namespace tahrir::edit {

namespace {

constexpr const char* kPasteMarker = "Srv5 Paste Data";

std::string TrimBlanks(const std::string& text) {
    const auto begin = text.find_first_not_of(" \r\n\t");
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \r\n\t") - begin + 1);
}

// A paste file line holds the text in double quotes.
std::string Unquote(std::string line) {
    line = TrimBlanks(line);
    if (line.size() >= 2 && line.front() == '"' && line.back() == '"')
        return line.substr(1, line.size() - 2);
    return line;
}

std::optional<int> ParseCount(const std::string& text) {
    const std::string t = TrimBlanks(text);
    int n = 0;
    const auto [ptr, ec] = std::from_chars(t.data(), t.data() + t.size(), n);
    if (ec != std::errc() || ptr == t.data()) return std::nullopt;
    return n;
}

} // namespace

void Editor::keyEsc(int) {
    KeyOutcome = Outcome::Resynchronise;
    SelEnd = SelStart = 0;
    m_clipboardMarked = 0;
    if (m_services.clipboard) m_services.clipboard->clear();
    lit.reset(Entry::Cut);
    lit.reset(Entry::Copy);
    lit.reset(Entry::Paste);
}

void Editor::keySelectAll(int) {
    SelStart = 4;
    SelEnd = LastLine();
    recolourLines();
}

void Editor::keyCopy(int) {
    if (SelEnd <= 0) return;
    m_clipboardMarked = 65535;
    m_cutMarked = false;
    lit.set(Entry::Paste);
    lit.reset(Entry::Cut);
    lit.reset(Entry::Copy);
    WritePasteFile();
}

// A cut moves nothing until the paste.
void Editor::keyCut(int) {
    if (SelEnd <= 0) return;
    m_cutMarked = true;
    m_clipboardMarked = 0;
    lit.set(Entry::Paste);
    lit.reset(Entry::Cut);
    lit.reset(Entry::Copy);
}

void Editor::WritePasteFile() {
    if (m_services.clipboard) {
        m_services.clipboard->clear();
        m_services.clipboard->setText(kPasteMarker);
    }
    std::ofstream out(pasteFile(), std::ios::binary | std::ios::trunc);
    if (!out) {
        if (m_services.host) m_services.host->messageBox("Cannot write " + pasteFile().string());
        return;
    }
    out << (SelEnd - SelStart + 1) << "\r\n";
    for (int i = SelStart; i <= SelEnd; ++i)
        out << '"' << sheet()[i].text() << "\"\r\n";
}

// Opens a gap of n lines at the cursor, copying from the bottom up.
void Editor::openGap(int n) {
    for (int i = LastLine() + n; i >= CurrentLine() + n; --i)
        sheet()[i] = sheet()[i - n];
}

void Editor::keyPaste(int) {
    const int n = SelEnd - SelStart + 1;
    if (LastLine() + n > core::MaxLines) {
        memoryFull();
        m_direct = true;
        return;
    }
    if (!((SelEnd > 0 && m_cutMarked) || m_clipboardMarked != 0)) {
        const bool marker = m_services.clipboard && m_services.clipboard->text() == kPasteMarker;
        if (!lit.test(Entry::Paste) && marker && externalPaste()) {
            TakeSnapshot();
            KeyOutcome = Outcome::FullRefresh;
        }
        return;
    }
    const int cursor = CurrentLine();
    if (n <= 0 || cursor < 1) return;
    // A selection kept across undo may lie beyond the last line; moved by the gap it must
    // still fit the sheet.
    if (SelEnd > core::MaxLines || (SelStart > cursor && SelEnd + n > core::MaxLines)) {
        memoryFull();
        m_direct = true;
        return;
    }
    openGap(n);
    // The selection moves with the gap when it lay below the cursor.
    if (SelStart > cursor) {
        SelStart += n;
        SelEnd += n;
    }
    for (int k = SelStart; k <= SelEnd; ++k)
        sheet()[cursor + (k - SelStart)] = sheet()[k];
    LastLine() += n;
    if (m_cutMarked) {
        for (int i = SelStart; i <= LastLine() - n; ++i)
            sheet()[i] = sheet()[i + n];
        m_cutMarked = false;
        LastLine() -= n;
    }
    SelEnd = SelStart = 0;
    lit.reset(Entry::Paste);
    TakeSnapshot();
    KeyOutcome = Outcome::FullRefresh;
}

// Lines from the paste file, which another run may have written.
bool Editor::externalPaste() {
    auto fail = [&](const std::string& why) {
        if (m_services.host) m_services.host->messageBox(why);
        return false;
    };
    std::ifstream in(pasteFile(), std::ios::binary);
    std::string line;
    if (!in || !std::getline(in, line)) return fail("Cannot read " + pasteFile().string());
    const auto count = ParseCount(line);
    if (!count || *count < 1) return fail("Paste.tmp holds no lines");
    const int n = *count;
    if (LastLine() + n > core::MaxLines) {
        memoryFull();
        return false;
    }
    std::vector<std::string> lines;
    for (int i = 0; i < n; ++i) {
        if (!std::getline(in, line)) return fail("Paste.tmp ends before its last line");
        lines.push_back(Unquote(line));
    }
    openGap(n);
    for (int i = 0; i < n; ++i) {
        PenLine() = core::ScoreLine(lines[static_cast<std::size_t>(i)]);
        sheet()[CurrentLine() + i] = PenLine();
    }
    LastLine() += n;
    if (m_services.clipboard) m_services.clipboard->clear();
    return true;
}

// Reads a page back into the sheet; false when the page does not hold a score.
bool Editor::restorePage(int page) {
    if (!m_services.undo) return false;
    const auto count = ParseCount(m_services.undo->readRecord(page, 0));
    if (!count || *count < 1 || *count > core::MaxLines) return false;
    LastLine() = *count;
    for (int i = 1; i <= LastLine(); ++i)
        sheet()[i] = core::ScoreLine(m_services.undo->readRecord(page, i));
    for (int i = 1; i <= core::MaxLines; ++i)
        labels[static_cast<std::size_t>(i)].visible = i <= LastLine();
    core::RhythmPass(sheet()); // a page may have been stored before its beams were written
    return true;
}

void Editor::keyUndo(int) {
    if (m_doc.UndoIndex <= 1) return;
    m_doc.UndoIndex -= 1;
    m_doc.DirtyFlag |= restorePage(m_doc.UndoIndex);
    KeyOutcome = Outcome::FullRefresh;
}

void Editor::keyRedo(int) {
    if (m_doc.UndoIndex >= m_doc.UndoTop) return;
    m_doc.UndoIndex += 1;
    m_doc.DirtyFlag |= restorePage(m_doc.UndoIndex);
    KeyOutcome = Outcome::FullRefresh;
}

// ---- in-memory undo pages ----

void MemoryUndoPages::writePage(int page, const std::vector<std::string>& records) {
    if (page < 0) return;
    if (m_pages.size() <= static_cast<std::size_t>(page))
        m_pages.resize(static_cast<std::size_t>(page) + 1);
    m_pages[static_cast<std::size_t>(page)] = records;
}

std::string MemoryUndoPages::readRecord(int page, int index) const {
    const std::string blank(core::RecordLength, ' ');
    if (page < 0 || static_cast<std::size_t>(page) >= m_pages.size() || index < 0) return blank;
    const auto& records = m_pages[static_cast<std::size_t>(page)];
    return static_cast<std::size_t>(index) < records.size()
               ? records[static_cast<std::size_t>(index)]
               : blank;
}

} // namespace tahrir::edit
