// The page, the player and the editor read the same fields of the same lines as core's
// line view does: the accidental drawn, sounded and shown; the tempo number drawn and
// heard; the tuplet digit drawn and its time heard.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/line_view.h"
#include "core/load_file.h"
#include "core/notation_tables.h"
#include "edit/line_state.h"
#include "play/player.h"
#include "render/page_layout.h"
#include "sheet_builder.h"

namespace tahrir {
namespace {

using core::Accidental;

// The player in virtual time: the run's seconds and each line's first key and channel.
struct Heard {
    double seconds = 0;
    std::map<int, std::pair<int, int>> notes;
};
class Catcher : public play::PlayObserver {
public:
    explicit Catcher(Heard& heard) : m_heard(heard) {}
    void lineSounded(int) override {}
    void noteResolved(int line, int key, int channel) override {
        m_heard.notes.try_emplace(line, key, channel);
    }

private:
    Heard& m_heard;
};
Heard Play(const core::ScoreSheet& sheet) {
    Heard heard;
    play::Player player(nullptr);
    player.startUp();
    Catcher catcher(heard);
    player.notes().setObserver(&catcher);
    heard.seconds = player.playVirtual(sheet, play::RunOptions{});
    player.notes().setObserver(nullptr);
    return heard;
}

std::vector<render::DisplayItem> Draw(const core::ScoreSheet& sheet) {
    render::LayoutOptions options;
    options.PageWidthUnits = 80;
    return render::RefreshView(sheet, options).list.items;
}

// A glyph drawn anywhere on the page.
bool HasGlyph(const std::vector<render::DisplayItem>& items, const std::string& glyph) {
    return std::any_of(items.begin(), items.end(), [&](const render::DisplayItem& item) {
        return item.kind == render::ItemKind::Glyph && item.text == glyph;
    });
}

// The text drawn for a line, blanks left out.
std::string TextOf(const std::vector<render::DisplayItem>& items, int line) {
    std::string out;
    for (const render::DisplayItem& item : items)
        if (item.line == line && item.kind == render::ItemKind::Text)
            for (char c : item.text)
                if (c != ' ') out += c;
    return out;
}

// The accidental in force on a note as core reads it: its own, else the last "ALL" change
// of its step, else the header's letter.
Accidental InForce(const core::ScoreSheet& sheet, int index) {
    const core::NoteView note = core::ReadNote(sheet[index]);
    if (note.accidental != Accidental::None) return note.accidental;
    char letter = core::HeaderKeyLetters(sheet[1])[static_cast<std::size_t>(note.step)];
    for (int i = 4; i < index; ++i)
        if (const auto change = core::AllChangeOf(sheet[i]); change && change->digit == note.step)
            letter = change->letter;
    return core::AccidentalOf(letter);
}

// The channel a note sounds on follows its accidental's bend: koron and sori have their
// own voices, every other note the plain one.
int ChannelClass(int channel) {
    return channel == play::KoronChannel ? 2 : channel == play::SoriChannel ? 4 : 3;
}
int ChannelClass(Accidental accidental) {
    const core::AccidentalRow* row = core::AccidentalRowOf(accidental);
    return row ? row->bendStep : 3;
}

const std::vector<std::vector<std::string>> kBodies = {
    {"13 32S", "03 -1", "13  8"},
    {"23  8K  TR", "33  8"},
    {"13  8", "TEMPO 7 2", "23  8", "33  8"},
    {"13  8", "TEMPO-9 0", "23  8", "33  8"},
    {"ALL3K", "33  8", "03 -1", "33  8D"},
    {"13  4   L3", "23  4", "33  4", "43  8"},
};

TEST(LineReading, PageAndPlayerAgreeWithTheLineView) {
    for (const auto& body : kBodies) {
        core::ScoreSheet sheet =
            render::test::MakeSheet({"       G", "TEMPO 60", "RHYTM4/4"}, false);
        for (const std::string& text : body)
            render::test::Repeat(sheet, text);
        const Heard heard = Play(sheet);
        const auto items = Draw(sheet);
        for (int i = 4; i <= sheet.LastLine; ++i) {
            const std::string at = "line " + std::to_string(i) + " \"" + sheet[i].text() + "\"";
            const core::NoteView note = core::ReadNote(sheet[i]);
            if (note.step > 0) {
                ASSERT_TRUE(heard.notes.count(i)) << at;
                EXPECT_EQ(ChannelClass(heard.notes.at(i).second), ChannelClass(InForce(sheet, i)))
                    << at;
                if (const core::AccidentalRow* row = core::AccidentalRowOf(note.accidental)) {
                    // Without its letter the note is drawn without the letter's glyph and
                    // sounds the letter's semitones lower.
                    core::ScoreSheet plain = sheet;
                    plain[i].set(core::NoteField::AccidentalCode, " ");
                    EXPECT_TRUE(HasGlyph(items, row->glyph)) << at;
                    EXPECT_FALSE(HasGlyph(Draw(plain), row->glyph)) << at;
                    EXPECT_EQ(heard.notes.at(i).first - Play(plain).notes.at(i).first,
                              row->semitones)
                        << at;
                }
            }
            if (note.mark.mark == core::Mark::Tuplet) {
                // n notes in the time of n - 1: the run lasts as long as with the group
                // written out as n - 1 plain notes; the page draws the digit.
                core::ScoreSheet plain = sheet;
                plain[i].set(core::NoteField::MarkCode, "  ");
                plain.removeLines(i + 1);
                EXPECT_DOUBLE_EQ(heard.seconds, Play(plain).seconds) << at;
                const std::string digit = std::to_string(note.mark.number);
                EXPECT_TRUE(HasGlyph(items, digit)) << at;
                EXPECT_FALSE(HasGlyph(Draw(plain), digit)) << at;
            }
            if (const auto tempo = core::TempoOf(sheet[i])) {
                // The page shows the digits of the number core reads, and hides a negative
                // one; the player hears the same tempo as from the line written plainly.
                const std::string number = core::NumberText(*tempo);
                if (*tempo > 0)
                    EXPECT_NE(TextOf(items, i).find(number), std::string::npos) << at;
                else
                    EXPECT_EQ(TextOf(items, i), "") << at;
                core::ScoreSheet plain = sheet;
                plain.setLine(i, core::Scratch("TEMPO" + number));
                EXPECT_DOUBLE_EQ(heard.seconds, Play(plain).seconds) << at;
            }
        }
    }
}

// The palette the editor lights for a line under the cursor.
std::string Lit(const std::string& line) {
    return edit::ShowLineState(line).to_string();
}

TEST(LineReading, EditorShowsWhatTheLineViewReads) {
    // Lines that core reads alike light the same palette; a different accidental lights
    // another one.
    const std::pair<const char*, const char*> pairs[] = {
        {"13  8   ST", "13  8   . "}, {"13  8S", "13  8K"}, {"23  8K  TR", "23  8   TR"},
        {"13  8D", "13  8B"},         {"13  8N", "13  8"},
    };
    for (const auto& [a, b] : pairs) {
        const core::NoteView va = core::ReadNote(a), vb = core::ReadNote(b);
        const bool alike = va.accidental == vb.accidental && va.mark.mark == vb.mark.mark &&
                           va.position() == vb.position() && va.ticks == vb.ticks;
        EXPECT_EQ(Lit(a) == Lit(b), alike) << a << " / " << b;
    }
}

} // namespace
} // namespace tahrir
