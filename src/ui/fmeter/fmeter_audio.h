#pragma once
// The sound of the transcription window: the recording or its marked stretch played with
// a moving position line, the found notes played through the program's player, and a
// new recording taken from the microphone into the data folder's "Tmp.Wav".

#include <QObject>
#include <filesystem>
#include <memory>

#include "ui/fmeter/wave_recorder.h"

class QAudioOutput;
class QAudioSource;
class QGridLayout;
class QHBoxLayout;
class QMediaPlayer;
class QProgressBar;
class QTimer;
class QToolButton;

namespace tahrir::ui {

class FMeter;

class FMeterAudio : public QObject {
public:
    FMeterAudio(FMeter& window, std::filesystem::path appFolder);
    ~FMeterAudio() override;

    void addButtons(QHBoxLayout* layout);
    void addMeter(QGridLayout* layout, int row);
    void setRecording(const std::filesystem::path& file);

    // The recording, or its marked stretch.
    void play();
    // `file` from `from` seconds to `to` (-1: its end), the play line following it.
    void playFile(const std::filesystem::path& file, double from, double to);
    void stop();
    bool startRecording();
    bool recording() const { return m_source != nullptr; }
    // Why recording cannot start; empty when an input device is there.
    static QString noInputReason();

private:
    void finishRecording();
    void readInput();
    void follow();

    FMeter& m_window;
    std::filesystem::path m_folder;
    std::filesystem::path m_file;
    QMediaPlayer* m_player = nullptr;
    QAudioOutput* m_output = nullptr;
    QAudioSource* m_source = nullptr;
    WaveRecorder m_recorder;
    QTimer* m_follow = nullptr;
    QToolButton* m_record = nullptr;
    QProgressBar* m_level = nullptr;
    double m_endSeconds = -1; // where play of the marked stretch ends
    double m_startSeconds = -1; // where play starts once the file is loaded
};

} // namespace tahrir::ui
