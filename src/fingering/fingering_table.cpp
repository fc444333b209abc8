#include "fingering/fingering_table.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "core/app_folder.h"

namespace tahrir::fingering {

namespace {

constexpr const char* kNames[] = {"tar", "ney", "harmonica", "hang"};
// Tables span a few octaves; a row far off the MIDI range is a broken file.
constexpr long kLowestQuarter = 0, kHighestQuarter = 2 * 127;

std::optional<long> QuarterOf(double note) {
    const double q = note * 2;
    if (!std::isfinite(q) || q != std::floor(q)) return std::nullopt;
    return static_cast<long>(q);
}

std::vector<std::string_view> SplitTabs(std::string_view line) {
    std::vector<std::string_view> out;
    for (std::size_t start = 0;;) {
        const std::size_t tab = line.find('\t', start);
        out.push_back(line.substr(start, tab == std::string_view::npos ? tab : tab - start));
        if (tab == std::string_view::npos) return out;
        start = tab + 1;
    }
}

std::optional<double> NumberOf(std::string_view word) {
    const std::string text(word);
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    if (text.empty() || end != text.c_str() + text.size()) return std::nullopt;
    return v;
}

} // namespace

const char* InstrumentName(Instrument instrument) {
    return kNames[static_cast<std::size_t>(instrument)];
}

std::optional<Instrument> InstrumentFromName(std::string_view name) {
    for (Instrument i : kInstruments)
        if (name == InstrumentName(i)) return i;
    return std::nullopt;
}

std::optional<FingeringTable> FingeringTable::parse(std::string_view text, std::string& error) {
    FingeringTable table;
    std::istringstream in{std::string(text)};
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line[0] == '#' || line.rfind("note\t", 0) == 0) continue;
        const auto cells = SplitTabs(line);
        const auto note = cells.size() == 3 ? NumberOf(cells[0]) : std::nullopt;
        const auto quarter = note ? QuarterOf(*note) : std::nullopt;
        const long expected = table.m_first + static_cast<long>(table.m_rows.size());
        if (!quarter || *quarter < kLowestQuarter || *quarter > kHighestQuarter ||
            (!table.m_rows.empty() && *quarter != expected) || cells[1].empty()) {
            error = "line " + std::to_string(number) +
                    ": expected the next quarter tone, a position and a place";
            return std::nullopt;
        }
        if (table.m_rows.empty()) table.m_first = *quarter;
        table.m_rows.push_back({*note, std::string(cells[1]), std::string(cells[2])});
    }
    return table;
}

std::optional<FingeringTable> FingeringTable::load(const std::filesystem::path& file,
                                                   std::string& error) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    if (!(in && text << in.rdbuf())) {
        error = "Can't read " + file.string();
        return std::nullopt;
    }
    auto table = parse(text.str(), error);
    if (!table) error = file.string() + ", " + error;
    return table;
}

const Position* FingeringTable::at(long quarter) const {
    if (quarter < m_first || quarter >= m_first + static_cast<long>(m_rows.size())) return nullptr;
    const Position& p = m_rows[static_cast<std::size_t>(quarter - m_first)];
    return p.playable() ? &p : nullptr;
}

const Position* FingeringTable::find(double note) const {
    const auto quarter = QuarterOf(note);
    return quarter ? at(*quarter) : nullptr;
}

const Position* FingeringTable::nearest(double note) const {
    const Position* best = nullptr;
    for (const Position& p : m_rows)
        if (p.playable() && (!best || std::abs(p.note - note) < std::abs(best->note - note)))
            best = &p;
    return best;
}

std::filesystem::path TableFile(Instrument instrument, const std::filesystem::path& appFolder) {
    const std::filesystem::path relative =
        std::filesystem::path("fingering") / (std::string(InstrumentName(instrument)) + ".tsv");
    std::error_code ec;
    if (!appFolder.empty() && std::filesystem::is_regular_file(appFolder / relative, ec))
        return appFolder / relative;
    return core::ShippedDataFolder() / relative;
}

InstrumentTables LoadInstrumentTables(const std::filesystem::path& appFolder) {
    InstrumentTables out;
    for (Instrument i : kInstruments) {
        std::string error;
        if (auto table = FingeringTable::load(TableFile(i, appFolder), error))
            out.tables[static_cast<std::size_t>(i)] = std::move(*table);
        else
            out.errors.push_back(error);
    }
    return out;
}

std::string NoteText(double note) {
    const long quarter = std::lround(note * 2);
    return std::to_string(quarter / 2) + (quarter % 2 != 0 ? ".5" : "");
}

} // namespace tahrir::fingering
