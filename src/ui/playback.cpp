#include "ui/playback.h"

#include "app/audition.h"
#include "core/app_folder.h"
#include "play/rtmidi_sink.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

Playback::Playback(core::Document& doc, const std::string& output, std::filesystem::path eventLog)
    : m_doc(doc), m_voices(std::make_unique<play::WaveVoices>()), m_eventLog(std::move(eventLog)) {
    // The event log lies in the data folder, beside the samples.
    m_voices->loadSamples(m_eventLog.parent_path(), core::ShippedDataFolder());
    const play::OutputChoice choice = play::OutputChoiceFromText(output);
    if (choice != play::OutputChoice::None) {
        play::OpenedOutput opened = play::OpenOutput(choice, m_voices.get());
        m_sink = std::move(opened.sink);
        m_outputDescription = opened.description;
    }
    m_player = std::make_unique<play::Player>(m_sink.get());
    m_player->startUp();
    m_player->notes().setObserver(this);
}

Playback::~Playback() {
    m_player->stop();
    m_player->wait();
}

void Playback::playClick(int fromLine) {
    if (m_status == PlayStatus::Paused) {
        m_player->resume();
        setStatus(PlayStatus::Playing);
        return;
    }
    if (m_status == PlayStatus::Playing || m_player->running()) return;
    m_playSheet = m_doc.Sheet;
    play::RunOptions options;
    options.EventLogFile = m_eventLog;
    const auto [start, end] = selection ? selection() : std::pair<int, int>{0, 0};
    if (start > 0 && end > 0 && start < end) {
        options.SelectionStartLine = start;
        options.SelectionEndLine = end;
    } else if (fromLine > 3) {
        options.SelectionStartLine = fromLine;
        options.SelectionEndLine = m_playSheet.LastLine;
    }
    m_player->controls().StopRequest = false;
    m_player->controls().Paused = false;
    m_player->controls().Accompaniment = m_accompaniment && loadAccompaniment();
    m_playLine = 0;
    if (m_player->play(m_playSheet, options)) setStatus(PlayStatus::Playing);
}

void Playback::pauseClick() {
    if (m_status != PlayStatus::Playing) return;
    m_player->pause();
    setStatus(PlayStatus::Paused);
}

void Playback::stopClick() {
    if (m_status == PlayStatus::Idle) return;
    m_player->resume();
    m_player->stop();
    m_voices->post({play::WaveBank::Accompaniment, play::WaveAction::Stop, 0});
    m_player->wait();
    m_playLine = 0;
    setStatus(PlayStatus::Idle);
}

// Space: play when idle or paused, pause while playing.
void Playback::playPause() {
    if (m_status == PlayStatus::Playing)
        pauseClick();
    else
        playClick(0);
}

int Playback::poll() {
    if (m_status != PlayStatus::Idle && !m_player->running()) {
        m_player->wait();
        m_playLine = 0;
        setStatus(PlayStatus::Idle);
        afterDeviceFailure();
    }
    return m_playLine.load();
}

// The output failed during the run, which ended: one message, and the built-in
// synthesiser takes over unless it was the output that failed.
void Playback::afterDeviceFailure() {
    const std::string why = m_player->deviceFailure();
    if (why.empty()) return;
    std::string message = why + ".";
    play::OpenedOutput synth;
    if (m_outputDescription != "built-in synthesiser") synth = play::OpenOutput(play::OutputChoice::Synthesiser, m_voices.get());
    if (synth.sink) {
        m_player->replaceSink(synth.sink.get());
        message += TrStd("Playback", " Playing on with the built-in synthesiser.");
    } else {
        m_player->replaceSink(nullptr);
        synth.description = "no output";
        message += TrStd("Playback", " Playing on without sound.");
    }
    m_sink = std::move(synth.sink); // the failed output closes here, no longer in use
    m_outputDescription = synth.description;
    if (deviceLost) deviceLost(message);
}

void Playback::soundNote(const edit::NoteSound& note) {
    if (busy()) return;
    app::AuditionNote(*m_player, note);
}

void Playback::stopAllNotes() {
    if (!m_player->running()) m_player->midi().AllNotesOff();
}

void Playback::speakStep(int step) {
    m_voices->post({play::WaveBank::Syllable, play::WaveAction::Play, step});
}

void Playback::waveClick(int index) {
    if (index == 8) m_player->clickTar();
    if (index == 9) m_player->clickDaf();
    if (index == 10) m_accompaniment = !m_accompaniment && !accompanimentFile().empty();
    if (wavesChanged) wavesChanged();
}

void Playback::tarDoubleClick() {
    m_player->chooseWaveVoiceOnly();
    if (wavesChanged) wavesChanged();
}

bool Playback::waveChosen(int index) const {
    if (index == 8) return m_player->tarOn();
    if (index == 9) return m_player->dafOn();
    return index == 10 && m_accompaniment;
}

std::filesystem::path Playback::accompanimentFile() const {
    if (m_doc.CurrentFileName.empty()) return {};
    return play::AccompanimentFile(m_doc.CurrentFileName, m_player->controls().UserTempo.load());
}

bool Playback::loadAccompaniment() {
    const std::filesystem::path file = accompanimentFile();
    std::string error;
    return !file.empty() && m_voices->loadAccompaniment(file, error);
}

void Playback::setStatus(PlayStatus status) {
    if (status == m_status) return;
    m_status = status;
    if (statusChanged) statusChanged();
}

} // namespace tahrir::ui
