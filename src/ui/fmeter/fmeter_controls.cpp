// The controls of the transcription window and their layout: the toolbar over the wave
// view, and under it the tracker and grid, the passes, the Dastgah boxes, the note at the
// position and the insertion.

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/fmeter/fmeter.h"
#include "ui/fmeter/fmeter_audio.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

QRadioButton* AddRadio(QButtonGroup* group, QLayout* layout, const QString& text, int id,
                       const char* name) {
    auto* b = new QRadioButton(text);
    b->setObjectName(name);
    group->addButton(b, id);
    layout->addWidget(b);
    return b;
}

} // namespace

QWidget* FMeter::buildToolbar() {
    auto* bar = new QWidget(this);
    auto* l = new QHBoxLayout(bar);
    l->setContentsMargins(0, 0, 0, 0);
    const auto button = [&](const char* name, const QString& text, auto slot) {
        auto* b = new QToolButton(bar);
        b->setObjectName(name);
        b->setText(text);
        connect(b, &QToolButton::clicked, this, slot);
        l->addWidget(b);
        return b;
    };
    button("OpenWave", Tr("Transcription", "Open..."), [this] {
        const QString f = QFileDialog::getOpenFileName(this, Tr("Transcription", "Open a recording"), QString(),
                                                       Tr("Transcription", "Recordings (*.wav *.flac *.ogg *.mp3);;All files (*)"));
        if (!f.isEmpty()) openRecording(f.toStdString());
    });
    m_audio->addButtons(l);
    l->addSpacing(12);
    button("ZoomIn", Tr("Transcription", "Zoom in"), [this] { zoom(0.5); });
    button("ZoomOut", Tr("Transcription", "Zoom out"), [this] { zoom(2); });
    button("GotoLeft", "|<", [this] { goTo(0); });
    button("GotoRight", ">|", [this] { goTo(static_cast<double>(m_window.length())); });
    m_chSel = new QCheckBox(Tr("Transcription", "Marked stretch only"), bar);
    m_chSel->setObjectName("ChSel");
    l->addWidget(m_chSel);
    m_position = new QLabel(bar);
    m_position->setObjectName("PositionLabel");
    l->addStretch(1);
    l->addWidget(m_position);
    m_progress = new QProgressBar(bar);
    m_progress->setObjectName("AnalysisProgress");
    m_progress->setMaximumWidth(160);
    m_progress->hide();
    m_cancel = new QPushButton(Tr("Transcription", "Cancel"), bar);
    m_cancel->setObjectName("CancelAnalysis");
    m_cancel->hide();
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_stop = true; });
    l->addWidget(m_progress);
    l->addWidget(m_cancel);
    return bar;
}

QWidget* FMeter::buildControls() {
    auto* box = new QWidget(this);
    auto* l = new QHBoxLayout(box);
    l->setContentsMargins(0, 0, 0, 0);
    auto* left = new QVBoxLayout;
    auto* tracker = new QGroupBox(Tr("Transcription", "Tracker"), box);
    auto* tl = new QVBoxLayout(tracker);
    m_tracker = new QButtonGroup(tracker);
    AddRadio(m_tracker, tl, Tr("Transcription", "Classic (three passes)"), 0, "TrackerClassic");
    AddRadio(m_tracker, tl, Tr("Transcription", "Modern (pitch track)"), 1, "TrackerModern")->setChecked(true);
    auto* grid = new QGroupBox(Tr("Transcription", "Grid"), box);
    grid->setObjectName("OptScTr");
    auto* gl = new QVBoxLayout(grid);
    m_grid = new QButtonGroup(grid);
    AddRadio(m_grid, gl, "7 # < b ! (dastgah)", 0, "GridDastgah");
    AddRadio(m_grid, gl, "12 # b", 1, "Grid12");
    AddRadio(m_grid, gl, "24 < !", 2, "Grid24")->setChecked(true);
    connect(m_grid, &QButtonGroup::idClicked, this, [this] { refreshGrid(); });
    m_baseF = new QSlider(Qt::Horizontal, grid);
    m_baseF->setObjectName("HSBaseF");
    m_baseF->setRange(330, 660);
    m_baseF->setValue(440);
    auto* baseLabel = new QLabel(Tr("Transcription", "La %1 Hz").arg(440), grid);
    baseLabel->setObjectName("LabelBaseF");
    connect(m_baseF, &QSlider::valueChanged, this, [this, baseLabel](int v) {
        baseLabel->setText(QString(Tr("Transcription", "La %1 Hz")).arg(v));
        baseFrequencyMoved(v);
    });
    gl->addWidget(baseLabel);
    gl->addWidget(m_baseF);
    left->addWidget(tracker);
    left->addWidget(grid);
    l->addLayout(left);
    l->addWidget(buildPasses());
    l->addWidget(buildDastgah());
    m_noteMeter = new NoteMeter(box);
    m_noteMeter->keyPressed() = [this](int position) { soundKey(position); };
    l->addWidget(m_noteMeter);
    l->addWidget(buildInsert(), 1);
    return box;
}

QWidget* FMeter::buildPasses() {
    auto* box = new QGroupBox(Tr("Transcription", "Passes"), this);
    auto* l = new QGridLayout(box);
    m_method = new QComboBox(box);
    m_method->setObjectName("Method");
    m_method->addItems({"Simple", "Women", "Men"});
    m_cutOff = new QSpinBox(box);
    m_cutOff->setObjectName("CutOff");
    m_cutOff->setRange(0, 255);
    m_cutOff->setValue(10);
    m_k = new QComboBox(box);
    m_k->setObjectName("Combo1to9");
    for (int i = 1; i <= 9; ++i) m_k->addItem(QString::number(i));
    m_k->setCurrentIndex(3);
    m_minDur = new QComboBox(box);
    m_minDur->setObjectName("VSMinDur");
    m_minDur->addItems({"1/32", "1/16", "1/8", "1/4"});
    m_exact = new QCheckBox(Tr("Transcription", "Exact notes"), box);
    m_exact->setObjectName("ChExactNote");
    m_silent = new QCheckBox(Tr("Transcription", "Start at the first note"), box);
    m_silent->setObjectName("ChSilent");
    m_raw = new QCheckBox(Tr("Transcription", "Raw notes (no cleaning)"), box);
    m_raw->setObjectName("OptQuan");
    l->addWidget(new QLabel(Tr("Transcription", "Method")), 0, 0);
    l->addWidget(m_method, 0, 1);
    l->addWidget(new QLabel(Tr("Transcription", "Cut-off")), 1, 0);
    l->addWidget(m_cutOff, 1, 1);
    l->addWidget(new QLabel(Tr("Transcription", "Period over")), 2, 0);
    l->addWidget(m_k, 2, 1);
    l->addWidget(new QLabel(Tr("Transcription", "Smallest note")), 3, 0);
    l->addWidget(m_minDur, 3, 1);
    l->addWidget(m_exact, 4, 0, 1, 2);
    l->addWidget(m_silent, 5, 0, 1, 2);
    l->addWidget(m_raw, 6, 0, 1, 2);
    return box;
}

QWidget* FMeter::buildDastgah() {
    auto* box = new QGroupBox(Tr("Transcription", "Dastgah"), this);
    auto* l = new QGridLayout(box);
    l->setSpacing(1);
    // Rows from the top: sharp, sori, natural, koron, flat; k counts from flat.
    static const char* kRows[5] = {"#", "<", "", "--!", "b"};
    for (int row = 0; row < 5; ++row) l->addWidget(new QLabel(kRows[row]), row + 1, 0);
    for (int s = 0; s < 7; ++s) {
        auto* label = new QLabel(QString::number(s + 1), box);
        label->setAlignment(Qt::AlignCenter);
        l->addWidget(label, 0, s + 1);
        for (int k = 0; k < 5; ++k) {
            auto* b = new QCheckBox(box);
            b->setObjectName(QString("Dastgah%1").arg(5 * s + k));
            m_boxes[5 * s + k] = b;
            l->addWidget(b, 5 - k, s + 1);
            connect(b, &QCheckBox::clicked, this, [this, s, k] { boxClicked(s, k); });
        }
    }
    return box;
}

QWidget* FMeter::buildInsert() {
    auto* box = new QGroupBox(Tr("Transcription", "Notes"), this);
    auto* l = new QGridLayout(box);
    m_translate = new QPushButton(Tr("Transcription", "Transcribe"), box);
    m_translate->setObjectName("CmTranslate");
    m_translate->setEnabled(false);
    connect(m_translate, &QPushButton::clicked, this, [this] { transcribe(); });
    m_insert = new QPushButton("Insert to Note Sheet", box);
    m_insert->setObjectName("InsertImage");
    m_insert->setEnabled(false);
    connect(m_insert, &QPushButton::clicked, this, [this] { insertToSheet(); });
    m_octIns = new QSpinBox(box);
    m_octIns->setObjectName("OctIns");
    m_octIns->setRange(0, 4);
    m_octIns->setValue(2);
    m_tempoToSheet = new QCheckBox(Tr("Transcription", "Tempo to sheet"), box);
    m_tempoToSheet->setObjectName("ChTempoToSheet");
    m_status = new QLabel(box);
    m_status->setObjectName("FMeterStatus");
    m_status->setWordWrap(true);
    l->addWidget(m_translate, 0, 0, 1, 2);
    l->addWidget(new QLabel(Tr("Transcription", "Octave")), 1, 0);
    l->addWidget(m_octIns, 1, 1);
    l->addWidget(m_tempoToSheet, 2, 0, 1, 2);
    l->addWidget(m_insert, 3, 0, 1, 2);
    l->addWidget(m_status, 4, 0, 1, 2);
    m_audio->addMeter(l, 5);
    return box;
}

} // namespace tahrir::ui
