#pragma once
// Where a pitch lies on an instrument: one table per instrument, read from the data folder
// ("fingering/tar.tsv" and so on), on the quarter-tone grid of MIDI numbers.

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tahrir::fingering {

enum class Instrument { Tar, Ney, Harmonica, Hang };
inline constexpr std::array<Instrument, 4> kInstruments{Instrument::Tar, Instrument::Ney,
                                                        Instrument::Harmonica, Instrument::Hang};

// "tar", "ney", "harmonica", "hang": the command-line word and the table's file name.
const char* InstrumentName(Instrument instrument);
std::optional<Instrument> InstrumentFromName(std::string_view name);

// One row: the pitch, the position text ("-" when the instrument cannot play it) and the
// place, the words the instrument's drawing reads (course and fret, hole and action...).
struct Position {
    double note = 0;
    std::string text;
    std::string place;
    bool playable() const { return text != "-"; }
};

class FingeringTable {
public:
    // Parses the table text: "#" comments, a "note position place" header, then one
    // tab-separated row per pitch. Nullopt with `error` set on a malformed row.
    static std::optional<FingeringTable> parse(std::string_view text, std::string& error);
    static std::optional<FingeringTable> load(const std::filesystem::path& file,
                                              std::string& error);

    // The row of a playable pitch; nullptr outside the table, off the quarter-tone grid
    // or where the instrument cannot play it.
    const Position* find(double note) const;
    // The playable pitch nearest to `note` (the lower one of two as near).
    const Position* nearest(double note) const;
    bool empty() const { return m_rows.empty(); }
    const std::vector<Position>& rows() const { return m_rows; }

private:
    const Position* at(long quarter) const;
    std::vector<Position> m_rows; // one per quarter tone from m_first
    long m_first = 0;             // the lowest pitch in quarter tones (MIDI * 2)
};

// The table file of an instrument: the data folder's own copy when there is one, else the
// shipped one.
std::filesystem::path TableFile(Instrument instrument, const std::filesystem::path& appFolder);

// The four tables from the data folder; an instrument whose table cannot be read has an
// empty table and its message in `errors`.
struct InstrumentTables {
    std::array<FingeringTable, 4> tables;
    std::vector<std::string> errors;
    const FingeringTable& of(Instrument i) const { return tables[static_cast<std::size_t>(i)]; }
};
InstrumentTables LoadInstrumentTables(const std::filesystem::path& appFolder);

// A sounding note as the command line prints it: "62", "63.5".
std::string NoteText(double note);

} // namespace tahrir::fingering
