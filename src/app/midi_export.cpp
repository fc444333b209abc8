#include "app/midi_export.h"

#include <system_error>

#include "core/instrument_table.h"
#include "midifile/event_log.h"
#include "midifile/microtonal_writer.h"
#include "midifile/midi_writer.h"

namespace tahrir::app {

namespace {

// A silent player set up as the live one stands.
void CopyControls(play::Player& live, play::Player& copy) {
    const play::PlayControls& from = live.controls();
    play::PlayControls& to = copy.controls();
    to.UserTempo = from.UserTempo.load();
    to.VolScr = from.VolScr.load();
    to.Transpose = from.Transpose.load();
    to.CountIn = from.CountIn.load();
    to.Pedal = from.Pedal.load();
    copy.setKoronBend(from.KoronBend.load());
    copy.setSoriBend(from.SoriBend.load());
    copy.chooseListInstrument(live.midi().programIndex() - 1);
}

} // namespace

std::string ExportMidi(const core::ScoreSheet& sheet, play::Player& live, const MidiExport& what) {
    play::Player player(nullptr);
    player.startUp();
    CopyControls(live, player);
    play::RunOptions options;
    options.EventLogFile = what.appFolder / midifile::EventLogName;
    player.playVirtual(sheet, options);
    const play::PlayControls& controls = player.controls();
    const double tempo = controls.UserTempo.load();
    if (what.kind == MidiKind::Microtonal) {
        midifile::MicrotonalPlan plan;
        plan.tempo = tempo;
        plan.program = core::ProgramByte(player.midi().programIndex());
        plan.koronBendMsb = 64 + controls.KoronBend.load();
        plan.soriBendMsb = 64 + controls.SoriBend.load();
        const midifile::WriteResult result =
            midifile::WriteMicrotonalFile(midifile::ReadEventLog(options.EventLogFile).records, plan);
        if (!result.ok()) return result.error;
        if (!midifile::SaveBytes(what.output, result.bytes)) return "Cannot write " + what.output.string();
        return {};
    }
    if (std::string why = midifile::WriteTestMid(what.appFolder, tempo); !why.empty()) return why;
    std::error_code ec;
    const auto testMid = what.appFolder / midifile::TestMidName;
    if (std::filesystem::equivalent(testMid, what.output, ec)) return {};
    std::filesystem::copy_file(testMid, what.output,
                               std::filesystem::copy_options::overwrite_existing, ec);
    if (ec) return "Cannot write " + what.output.string();
    return {};
}

} // namespace tahrir::app
