#include "ui/midi_import_frame.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/cp1256.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {
QString FromCp1256(const std::string& text) { return QString::fromStdString(core::Cp1256ToUtf8(text)); }
} // namespace

QString TrackEntryText(int track, const std::string& name, std::size_t notes) {
    const QString shown = name.empty() ? Tr("MidiImport", "(no name)") : FromCp1256(name);
    return Tr("MidiImport", "Track %1: %2 (%3 notes)").arg(track).arg(shown).arg(notes);
}

MidiImportFrame::MidiImportFrame(const midifile::MidiFileInfo& info, const std::vector<std::string>& dump,
                                 QWidget* parent)
    : QDialog(parent) {
    setObjectName("FrMidiTrk");
    setWindowTitle(Tr("MidiImport", "Import MIDI"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel(Tr("MidiImport", "Tracks of the file:"), this));
    m_tracks = new QListWidget(this);
    m_tracks->setObjectName("TrackList");
    for (std::size_t t = 0; t < info.MidiTracks.size(); ++t) {
        const std::string name = t < info.trackNames.size() ? info.trackNames[t] : std::string();
        m_tracks->addItem(TrackEntryText(static_cast<int>(t + 1), name, info.MidiTracks[t].size()));
    }
    m_tracks->setMaximumHeight(160);
    column->addWidget(m_tracks);
    column->addWidget(new QLabel(Tr("MidiImport", "What the file holds:"), this));
    m_dump = new QListWidget(this);
    m_dump->setObjectName("ListBox1");
    m_dump->setUniformItemSizes(true);
    QStringList lines;
    lines.reserve(static_cast<int>(dump.size()));
    for (const std::string& line : dump) lines << FromCp1256(line).simplified();
    m_dump->addItems(lines);
    m_dump->setFont(QFont("Monospace"));
    column->addWidget(m_dump, 1);

    auto* buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(QDialogButtonBox::Ok);
    m_ok->setObjectName("CmdOKMidi");
    QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName("CmdCancelMidi");
    column->addWidget(buttons);
    m_ok->setEnabled(false);
    connect(m_tracks, &QListWidget::currentRowChanged, this, [this](int row) { m_ok->setEnabled(row >= 0); });
    connect(m_tracks, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    // The first track with notes is the likely choice.
    for (std::size_t t = 0; t < info.MidiTracks.size(); ++t)
        if (!info.MidiTracks[t].empty()) {
            m_tracks->setCurrentRow(static_cast<int>(t));
            break;
        }
    resize(640, 480);
}

std::optional<int> MidiImportFrame::chosenTrack() const {
    if (result() != QDialog::Accepted || m_tracks->currentRow() < 0) return std::nullopt;
    return m_tracks->currentRow() + 1;
}

} // namespace tahrir::ui
