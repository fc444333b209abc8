#pragma once
// The playback controls: Play, Pause, Stop and the pause label, the tempo bar with its
// knob, volume, koron and sori bends, transposition, instruments, count-in, loop, pedal.

#include <QWidget>
#include <array>
#include <functional>

class QCheckBox;
class QGridLayout;
class QComboBox;
class QLabel;
class QPushButton;
class QScrollBar;
class QSlider;

namespace tahrir::ui {

class Playback;

class PlaybackPanel : public QWidget {
public:
    PlaybackPanel(Playback& playback, QWidget* parent = nullptr);

    // The tempo bar's value changed.
    std::function<void(int tempo)> tempoMoved;

    // Buttons and the pause label follow the player's status.
    void statusChanged();
    // The live tempo, as the editor's keys and a loaded score set it.
    void setTempo(int tempo);
    int tempo() const;
    QLabel* pauseLabel() const { return m_pause; }
    // A standing word that nothing will sound, and how to change that.
    void showNoOutput(const QString& text);

private:
    void build();
    void buildSliders(QGridLayout* grid);
    void buildInstruments(QGridLayout* grid);

    Playback& m_playback;
    QPushButton* m_playCmd = nullptr;
    QPushButton* m_pauseCmd = nullptr;
    QPushButton* m_stopCmd = nullptr;
    QLabel* m_pause = nullptr;
    QSlider* m_tempo = nullptr;
    QLabel* m_tempoLabel = nullptr;
    QScrollBar* m_volume = nullptr;
    QScrollBar* m_koron = nullptr;
    QScrollBar* m_sori = nullptr;
    QLabel* m_koronLabel = nullptr;
    QLabel* m_soriLabel = nullptr;
    QScrollBar* m_transpose = nullptr;
    QLabel* m_transposeLabel = nullptr;
    QComboBox* m_instruments = nullptr;
    QLabel* m_noOutput = nullptr;
};

} // namespace tahrir::ui
