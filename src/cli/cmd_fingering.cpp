// Printed fingering: where each note line of a score lies on an instrument.

#include <iostream>

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/session.h"
#include "fingering/fingering_table.h"
#include "fingering/sounding_notes.h"

namespace tahrir::cli {

int RunFingering(const Argv& argv) {
    Args args(argv, {{"--instrument"}, {}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto name = args.value("--instrument");
    const auto instrument = name ? fingering::InstrumentFromName(*name) : std::nullopt;
    if (args.positional().size() != 1 || !instrument)
        return Fail(ExitUsage, "usage: fingering FILE.srv --instrument tar|ney|harmonica|hang");
    core::Document doc;
    core::Session session;
    if (const int rc = LoadForDrawing(args, args.positional()[0], doc, session); rc != ExitOk)
        return rc;
    std::string error;
    const auto table =
        fingering::FingeringTable::load(fingering::TableFile(*instrument, session.AppFolder), error);
    if (!table) return Fail(ExitIo, error);

    fingering::SoundingNotes notes;
    notes.compute(doc.Sheet);
    for (const int line : notes.noteLines()) {
        const auto note = notes.at(line);
        const fingering::Position* where = note ? table->find(*note) : nullptr;
        std::cout << line << '\t' << (note ? fingering::NoteText(*note) : "-") << '\t'
                  << (where ? where->text : "-") << '\n';
    }
    return ExitOk;
}

} // namespace tahrir::cli
