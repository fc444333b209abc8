#include "ui/fmeter/fmeter_audio.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioOutput>
#include <QAudioSource>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QProgressBar>
#include <QTimer>
#include <QToolButton>
#include <QUrl>

#include "ui/fmeter/fmeter.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

FMeterAudio::FMeterAudio(FMeter& window, std::filesystem::path appFolder)
    : m_window(window), m_folder(std::move(appFolder)) {
    m_follow = new QTimer(this);
    m_follow->setInterval(30);
    connect(m_follow, &QTimer::timeout, this, [this] { follow(); });
}

FMeterAudio::~FMeterAudio() {
    if (m_source) finishRecording();
}

QString FMeterAudio::noInputReason() {
    return QMediaDevices::audioInputs().isEmpty()
               ? Tr("Transcription", "No microphone or other sound input was found on this computer")
               : QString();
}

void FMeterAudio::addButtons(QHBoxLayout* l) {
    const auto button = [&](const char* name, const QString& text, auto slot) {
        auto* b = new QToolButton;
        b->setObjectName(name);
        b->setText(text);
        connect(b, &QToolButton::clicked, this, slot);
        l->addWidget(b);
        return b;
    };
    button("PlayWave", Tr("Transcription", "Play"), [this] { play(); });
    button("PlayNotes", Tr("Transcription", "Play notes"), [this] { m_window.playFound(); });
    button("StopWave", Tr("Transcription", "Stop"), [this] { stop(); });
    m_record = button("RecordWave", Tr("Transcription", "Record"), [this] { startRecording(); });
    const QString why = noInputReason();
    m_record->setEnabled(why.isEmpty());
    m_record->setToolTip(why.isEmpty() ? Tr("Transcription", "Record from the microphone into Tmp.Wav") : why);
}

void FMeterAudio::addMeter(QGridLayout* l, int row) {
    m_level = new QProgressBar;
    m_level->setObjectName("InputLevel");
    m_level->setRange(0, 100);
    m_level->setTextVisible(false);
    m_level->setMaximumHeight(10);
    l->addWidget(new QLabel(Tr("Transcription", "Input")), row, 0);
    l->addWidget(m_level, row, 1);
}

void FMeterAudio::setRecording(const std::filesystem::path& file) {
    m_file = file;
}

void FMeterAudio::play() {
    if (m_file.empty()) return;
    const WaveWindow& w = m_window.view();
    playFile(m_file, w.marked() ? w.markFrom / w.rate() : 0, w.marked() ? w.markTo / w.rate() : -1);
}

void FMeterAudio::playFile(const std::filesystem::path& file, double from, double to) {
    if (!m_player) {
        m_player = new QMediaPlayer(this);
        m_output = new QAudioOutput(this);
        m_player->setAudioOutput(m_output);
        // A position set before the file is loaded is lost: it is set again once it is.
        connect(m_player, &QMediaPlayer::mediaStatusChanged, this, [this](QMediaPlayer::MediaStatus s) {
            if (m_startSeconds > 0 && (s == QMediaPlayer::LoadedMedia || s == QMediaPlayer::BufferedMedia)) {
                m_player->setPosition(static_cast<qint64>(1000 * m_startSeconds));
                m_startSeconds = -1;
            }
        });
    }
    m_player->stop();
    m_player->setSource(QUrl());
    m_player->setSource(QUrl::fromLocalFile(QString::fromStdString(file.string())));
    m_endSeconds = to;
    m_startSeconds = from;
    m_player->setPosition(static_cast<qint64>(1000 * from));
    m_player->play();
    m_follow->start();
}

void FMeterAudio::follow() {
    if (!m_player || m_player->playbackState() != QMediaPlayer::PlayingState) {
        m_follow->stop();
        m_window.setPlayAt(-1);
        return;
    }
    const double seconds = m_player->position() / 1000.0;
    if (m_endSeconds >= 0 && seconds >= m_endSeconds) {
        stop();
        return;
    }
    m_window.setPlayAt(seconds * m_window.view().rate());
}

void FMeterAudio::stop() {
    if (m_player) m_player->stop();
    if (m_source) finishRecording();
    m_follow->stop();
    m_window.setPlayAt(-1);
}

bool FMeterAudio::startRecording() {
    if (m_source || !noInputReason().isEmpty()) return false;
    const QAudioDevice device = QMediaDevices::defaultAudioInput();
    QAudioFormat format;
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    format.setSampleRate(44100);
    if (!device.isFormatSupported(format)) format.setSampleRate(48000);
    const QString file = QString::fromStdString((m_folder / "Tmp.Wav").string());
    if (!m_recorder.start(file, format.sampleRate())) {
        m_window.showStatus(Tr("Transcription", "Can't write %1").arg(file));
        return false;
    }
    m_source = new QAudioSource(device, format, this);
    QIODevice* in = m_source->start();
    if (!in) {
        m_recorder.finish();
        m_source->deleteLater();
        m_source = nullptr;
        m_window.showStatus(Tr("Transcription", "The sound input could not be started"));
        return false;
    }
    connect(in, &QIODevice::readyRead, this,
            [this, in] { m_level->setValue(static_cast<int>(100 * m_recorder.append(*in))); });
    m_record->setText(Tr("Transcription", "Recording..."));
    return true;
}

void FMeterAudio::finishRecording() {
    m_source->stop();
    m_source->deleteLater();
    m_source = nullptr;
    const bool written = m_recorder.finish();
    m_level->setValue(0);
    m_record->setText(Tr("Transcription", "Record"));
    if (written) m_window.openRecording(m_folder / "Tmp.Wav");
    else m_window.showStatus(Tr("Transcription", "Can't write %1").arg(QString::fromStdString((m_folder / "Tmp.Wav").string())));
}

} // namespace tahrir::ui
