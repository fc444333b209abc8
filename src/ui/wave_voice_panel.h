#pragma once
// The wave voices in the window: pictures 8 (tar) and 9 (daf), 10 (the score's recorded
// accompaniment, enabled only when there is one for the tempo set), and the sung
// syllable of the step under the cursor.

#include <QWidget>

class QCheckBox;
class QToolButton;

namespace tahrir::ui {

class Playback;

class WaveVoicePanel : public QWidget {
public:
    explicit WaveVoicePanel(Playback& playback, QWidget* parent = nullptr);

private:
    // The pictures follow the player's choices; 10 is enabled by the tempo set.
    void refresh();

    Playback& m_playback;
    QToolButton* m_buttons[3] = {}; // pictures 8, 9, 10
};

} // namespace tahrir::ui
