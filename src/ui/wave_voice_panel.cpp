#include "ui/wave_voice_panel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QTimer>
#include <QToolButton>
#include <functional>

#include "ui/playback.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

// A picture whose double click is its own event: it follows one click, and the second
// press of the pair (which comes just before it) is let go without a click.
class Picture : public QToolButton {
public:
    using QToolButton::QToolButton;
    std::function<void()> doubleClicked;

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (!doubleClicked || event->button() != Qt::LeftButton) return;
        setDown(false);
        doubleClicked();
    }
};

struct PictureRow {
    int index;
    const char* text;
    const char* tip;
};
constexpr PictureRow kPictures[3] = {
    {8, QT_TRANSLATE_NOOP("Playback", "Tar"),
     QT_TRANSLATE_NOOP("Playback", "Tar samples (a double click leaves the tar alone, without MIDI)")},
    {9, QT_TRANSLATE_NOOP("Playback", "Daf"), QT_TRANSLATE_NOOP("Playback", "Daf samples")},
    {10, QT_TRANSLATE_NOOP("Playback", "Acc."),
     QT_TRANSLATE_NOOP("Playback", "The score's recorded accompaniment at this tempo")},
};

} // namespace

WaveVoicePanel::WaveVoicePanel(Playback& playback, QWidget* parent)
    : QWidget(parent), m_playback(playback) {
    setObjectName("WaveVoicePanel");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 3; ++i) {
        auto* b = new Picture(this);
        b->setObjectName("InsImage");
        b->setProperty("index", kPictures[i].index);
        b->setText(Tr("Playback", kPictures[i].text));
        b->setToolTip(Tr("Playback", kPictures[i].tip));
        b->setCheckable(true);
        b->setFocusPolicy(Qt::NoFocus);
        const int index = kPictures[i].index;
        QObject::connect(b, &QToolButton::clicked, this, [this, index] { m_playback.waveClick(index); });
        if (index == 8) b->doubleClicked = [this] { m_playback.tarDoubleClick(); };
        m_buttons[i] = b;
        row->addWidget(b);
    }
    auto* syllable = new QCheckBox(Tr("Playback", "Sung notes"), this);
    syllable->setObjectName("SyllableVoice");
    syllable->setToolTip(Tr("Playback", "Sing the name of the note under the cursor"));
    syllable->setFocusPolicy(Qt::NoFocus);
    QObject::connect(syllable, &QCheckBox::toggled, this, [this](bool on) {
        if (m_playback.syllableVoiceChanged) m_playback.syllableVoiceChanged(on);
    });
    row->addWidget(syllable);
    row->addStretch(1);
    m_playback.wavesChanged = [this] { refresh(); };
    // The recording is looked for again as the tempo or the score changes.
    auto* timer = new QTimer(this);
    timer->setInterval(700);
    QObject::connect(timer, &QTimer::timeout, this, [this] { refresh(); });
    timer->start();
    refresh();
}

void WaveVoicePanel::refresh() {
    for (int i = 0; i < 3; ++i)
        m_buttons[i]->setChecked(m_playback.waveChosen(kPictures[i].index));
    m_buttons[2]->setEnabled(!m_playback.accompanimentFile().empty());
}

} // namespace tahrir::ui
