#include "ui/playback_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QToolButton>

#include "core/instrument_table.h"
#include "play/pitch_table.h"
#include "ui/playback.h"
#include "ui/tempo_knob.h"
#include "ui/wave_voice_panel.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

QScrollBar* Bar(const char* name, int low, int high, int value, QWidget* parent) {
    auto* bar = new QScrollBar(Qt::Horizontal, parent);
    bar->setObjectName(name);
    bar->setRange(std::min(low, high), std::max(low, high));
    bar->setValue(value);
    bar->setMinimumWidth(60);
    bar->setFocusPolicy(Qt::NoFocus);
    return bar;
}

QString Semitones(int value) {
    const int v = value - play::TransposeCentre;
    return v == 0 ? "0" : (v > 0 ? "+" : "") + QString::number(v);
}

} // namespace

PlaybackPanel::PlaybackPanel(Playback& playback, QWidget* parent)
    : QWidget(parent), m_playback(playback) {
    setObjectName("PlaybackPanel");
    build();
    statusChanged();
}

void PlaybackPanel::build() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(4, 4, 4, 4);
    auto* transport = new QHBoxLayout;
    m_playCmd = new QPushButton(Tr("Playback", "\u25B6 Play"), this);
    m_playCmd->setObjectName("PlayCmd");
    m_pauseCmd = new QPushButton(Tr("Playback", "\u2016 Pause"), this);
    m_pauseCmd->setObjectName("PauseCmd");
    m_stopCmd = new QPushButton(Tr("Playback", "\u25A0 Stop"), this);
    m_stopCmd->setObjectName("StopCmd");
    m_pause = new QLabel("Pause", this);
    m_pause->setObjectName("LbLPause");
    m_pause->setStyleSheet("background:#ffff60; color:black; font-weight:bold; padding:2px 8px;");
    for (QPushButton* b : {m_playCmd, m_pauseCmd, m_stopCmd}) {
        b->setFocusPolicy(Qt::NoFocus);
        transport->addWidget(b);
    }
    transport->addWidget(m_pause);
    transport->addStretch(1);
    QObject::connect(m_playCmd, &QPushButton::clicked, this, [this] { m_playback.playClick(0); });
    QObject::connect(m_pauseCmd, &QPushButton::clicked, this, [this] { m_playback.pauseClick(); });
    QObject::connect(m_stopCmd, &QPushButton::clicked, this, [this] { m_playback.stopClick(); });
    grid->addLayout(transport, 0, 0, 1, 4);
    buildSliders(grid);
    buildInstruments(grid);
}

void PlaybackPanel::buildSliders(QGridLayout* grid) {
    play::Player& player = m_playback.player();
    // The tempo bar and its knob: a slider from 20 to 320.
    m_tempo = new QSlider(Qt::Horizontal, this);
    m_tempo->setObjectName("VScroll3");
    m_tempo->setRange(20, 320);
    m_tempo->setValue(60);
    m_tempo->setFocusPolicy(Qt::NoFocus);
    m_tempoLabel = new QLabel("60", this);
    auto* knob = new TempoKnob(this);
    QObject::connect(m_tempo, &QSlider::valueChanged, this, [this, &player, knob](int v) {
        player.setTempo(v);
        m_tempoLabel->setText(QString::number(v));
        knob->setTempo(v);
    });
    knob->dragged = [this](int v) { m_tempo->setValue(v); };
    QObject::connect(m_tempo, &QSlider::valueChanged, this, [this](int v) {
        if (tempoMoved) tempoMoved(v);
    });
    grid->addWidget(new QLabel(Tr("Playback", "Tempo"), this), 1, 0);
    grid->addWidget(m_tempo, 1, 1);
    grid->addWidget(m_tempoLabel, 1, 2);
    grid->addWidget(knob, 2, 1);

    m_volume = Bar("VolScr", 0, 90, 30, this);
    QObject::connect(m_volume, &QScrollBar::valueChanged, this,
                     [&player](int v) { player.controls().VolScr = v; });
    auto* loud = new QToolButton(this);
    loud->setObjectName("ImgSpOn");
    loud->setText(Tr("Playback", "Loud"));
    loud->setToolTip(Tr("Playback", "Loudest"));
    auto* mute = new QToolButton(this);
    mute->setObjectName("ImgSpOff");
    mute->setText(Tr("Playback", "Mute"));
    mute->setToolTip(Tr("Playback", "Silent"));
    QObject::connect(loud, &QToolButton::clicked, this, [this] { m_volume->setValue(m_volume->minimum()); });
    QObject::connect(mute, &QToolButton::clicked, this, [this] { m_volume->setValue(m_volume->maximum()); });
    auto* volumeRow = new QHBoxLayout;
    volumeRow->addWidget(mute);
    volumeRow->addWidget(m_volume);
    volumeRow->addWidget(loud);
    grid->addWidget(new QLabel(Tr("Playback", "Volume"), this), 3, 0);
    grid->addLayout(volumeRow, 3, 1, 1, 2);

    // Koron from 0 down to -32, sori from 32 down to 0; the labels show 64 plus the value.
    m_koron = Bar("VScroll1", -32, 0, play::DefaultKoronBend, this);
    m_sori = Bar("VScroll2", 0, 32, play::DefaultSoriBend, this);
    m_koronLabel = new QLabel(QString::number(64 + play::DefaultKoronBend), this);
    m_koronLabel->setObjectName("Label1");
    m_soriLabel = new QLabel(QString::number(64 + play::DefaultSoriBend), this);
    m_soriLabel->setObjectName("Label2");
    QObject::connect(m_koron, &QScrollBar::valueChanged, this, [this, &player](int v) {
        player.setKoronBend(v);
        m_koronLabel->setText(QString::number(64 + v));
    });
    QObject::connect(m_sori, &QScrollBar::valueChanged, this, [this, &player](int v) {
        player.setSoriBend(v);
        m_soriLabel->setText(QString::number(64 + v));
    });
    grid->addWidget(new QLabel(Tr("Playback", "Koron"), this), 4, 0);
    grid->addWidget(m_koron, 4, 1);
    grid->addWidget(m_koronLabel, 4, 2);
    grid->addWidget(new QLabel(Tr("Playback", "Sori"), this), 5, 0);
    grid->addWidget(m_sori, 5, 1);
    grid->addWidget(m_soriLabel, 5, 2);

    m_transpose = Bar("HScroll1", 12, 36, play::TransposeCentre, this);
    m_transposeLabel = new QLabel("0", this);
    m_transposeLabel->setObjectName("TransposeLabel");
    auto* standard = new QToolButton(this);
    standard->setObjectName("DiapazonImg");
    standard->setText("\u2696");
    standard->setToolTip("Standard Tunning");
    QObject::connect(m_transpose, &QScrollBar::valueChanged, this, [this, &player](int v) {
        player.controls().Transpose = v;
        m_transposeLabel->setText(Semitones(v));
    });
    QObject::connect(standard, &QToolButton::clicked, this,
                     [this] { m_transpose->setValue(play::TransposeCentre); });
    grid->addWidget(new QLabel(Tr("Playback", "Transpose"), this), 6, 0);
    grid->addWidget(m_transpose, 6, 1);
    auto* transposeRow = new QHBoxLayout;
    transposeRow->addWidget(m_transposeLabel);
    transposeRow->addWidget(standard);
    grid->addLayout(transposeRow, 6, 2);
}

void PlaybackPanel::buildInstruments(QGridLayout* grid) {
    play::Player& player = m_playback.player();
    auto* buttons = new QGridLayout;
    // Each picture button is labelled with the instrument its click chooses, in two rows
    // of four by button slot; the list keeps list order.
    m_instruments = new QComboBox(this);
    m_instruments->setObjectName("InsList");
    for (const core::Instrument& ins : core::InstrumentTable()) {
        const QString name = QString::fromUtf8(ins.name.data(), static_cast<int>(ins.name.size()));
        auto* b = new QToolButton(this);
        b->setObjectName("InsImage");
        b->setProperty("index", ins.button);
        b->setText(QString(name).replace(' ', '\n'));
        b->setToolTip(name);
        b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        b->setFocusPolicy(Qt::NoFocus);
        const int button = ins.button;
        QObject::connect(b, &QToolButton::clicked, this, [&player, button] { player.chooseInstrument(button); });
        buttons->addWidget(b, button / 4, button % 4);
        m_instruments->addItem(name, ins.program);
    }
    grid->addLayout(buttons, 7, 0, 1, 3);
    m_instruments->setFocusPolicy(Qt::NoFocus);
    QObject::connect(m_instruments, &QComboBox::activated, this,
                     [&player](int row) { player.chooseListInstrument(row); });
    grid->addWidget(m_instruments, 8, 0, 1, 3);

    auto* checks = new QHBoxLayout;
    auto* countIn = new QCheckBox(Tr("Playback", "Count-in"), this);
    countIn->setObjectName("ZarbAval");
    auto* loop = new QCheckBox(Tr("Playback", "Loop"), this);
    loop->setObjectName("ChLoop");
    auto* pedal = new QCheckBox(Tr("Playback", "Pedal"), this);
    pedal->setObjectName("PedalCh");
    for (QCheckBox* c : {countIn, loop, pedal}) {
        c->setFocusPolicy(Qt::NoFocus);
        checks->addWidget(c);
    }
    QObject::connect(countIn, &QCheckBox::toggled, this, [&player](bool on) { player.controls().CountIn = on; });
    QObject::connect(loop, &QCheckBox::toggled, this, [&player](bool on) { player.controls().Loop = on; });
    QObject::connect(pedal, &QCheckBox::toggled, this, [&player](bool on) { player.setPedal(on); });
    grid->addLayout(checks, 9, 0, 1, 3);
    grid->addWidget(new WaveVoicePanel(m_playback, this), 10, 0, 1, 3);
    grid->setRowStretch(11, 1);
}

void PlaybackPanel::statusChanged() {
    const PlayStatus s = m_playback.status();
    m_playCmd->setEnabled(s != PlayStatus::Playing);
    m_pauseCmd->setEnabled(s == PlayStatus::Playing);
    m_stopCmd->setEnabled(s != PlayStatus::Idle);
    m_pause->setVisible(s == PlayStatus::Paused);
}

void PlaybackPanel::showNoOutput(const QString& text) {
    if (!m_noOutput) {
        m_noOutput = new QLabel(this);
        m_noOutput->setObjectName("NoOutputLabel");
        m_noOutput->setWordWrap(true);
        m_noOutput->setStyleSheet("color:#a00000; background:#fff0f0; padding:3px;");
        static_cast<QGridLayout*>(layout())->addWidget(m_noOutput, 11, 0, 1, 4);
    }
    m_noOutput->setText(text);
}

void PlaybackPanel::setTempo(int tempo) { m_tempo->setValue(std::clamp(tempo, 20, 320)); }
int PlaybackPanel::tempo() const { return m_tempo->value(); }

} // namespace tahrir::ui
