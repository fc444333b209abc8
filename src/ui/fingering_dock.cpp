#include "ui/fingering_dock.h"

#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/instrument_view.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

using fingering::Instrument;

const char* const kTabTitles[] = {QT_TRANSLATE_NOOP("Fingering", "Tar"), QT_TRANSLATE_NOOP("Fingering", "Ney"),
                                  QT_TRANSLATE_NOOP("Fingering", "Harmonica"),
                                  QT_TRANSLATE_NOOP("Fingering", "Hang drum")};

} // namespace

FingeringDock::FingeringDock(const core::ScoreSheet& sheet, const std::filesystem::path& appFolder,
                             QWidget* parent)
    : QDockWidget(Tr("Fingering", "Fingering"), parent), m_sheet(sheet),
      m_tables(fingering::LoadInstrumentTables(appFolder)) {
    setObjectName("FingeringDock");
    auto* body = new QWidget(this);
    auto* layout = new QVBoxLayout(body);
    m_tabs = new QTabWidget(body);
    for (Instrument i : fingering::kInstruments) {
        auto* view = new InstrumentView(i, m_tables.of(i), m_tabs);
        m_views[static_cast<std::size_t>(i)] = view;
        m_tabs->addTab(view, Tr("Fingering", kTabTitles[static_cast<std::size_t>(i)]));
    }
    m_caption = new QLabel(body);
    m_caption->setObjectName("FingeringCaption");
    m_caption->setWordWrap(true);
    m_caption->setTextFormat(Qt::RichText);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_caption);
    setWidget(body);
    QObject::connect(m_tabs, &QTabWidget::currentChanged, this, [this] { refresh(); });
    if (!m_tables.errors.empty())
        m_caption->setText(QString::fromStdString(m_tables.errors.front()).toHtmlEscaped());
}

void FingeringDock::follow(int line, int scoreVersion, int transpose) {
    if (m_version != scoreVersion || transpose != m_transpose) {
        m_notes.compute(m_sheet, transpose);
        m_version = scoreVersion;
        m_transpose = transpose;
    }
    m_cursorLine = line;
    refresh();
}

void FingeringDock::setPlaying(int line, int transpose) {
    if (line == m_playLine && transpose == m_transpose) return;
    if (transpose != m_transpose && m_version) {
        m_notes.compute(m_sheet, transpose);
        m_transpose = transpose;
    }
    m_playLine = line;
    refresh();
}

// Marks the two notes on every instrument; only the visible tab repaints.
void FingeringDock::refresh() {
    const auto cursor = m_notes.at(m_cursorLine);
    const auto playing = m_playLine > 0 ? m_notes.at(m_playLine) : std::nullopt;
    for (InstrumentView* v : m_views) {
        v->setMarks(cursor ? std::optional(v->markOf(*cursor)) : std::nullopt,
                    playing ? std::optional(v->markOf(*playing)) : std::nullopt);
    }
    if (!m_tables.errors.empty()) return;
    const auto* view = static_cast<const InstrumentView*>(m_tabs->currentWidget());
    QString text = describe(*view, cursor, QT_TRANSLATE_NOOP("Fingering", "Cursor"));
    if (playing) text += "<br>" + describe(*view, playing, QT_TRANSLATE_NOOP("Fingering", "Playing"));
    m_caption->setText(text);
}

QString FingeringDock::describe(const InstrumentView& view, const std::optional<double>& note,
                                const char* what) const {
    const QColor colour = std::string_view(what) == "Cursor" ? CursorColour() : PlayingColour();
    QString text = QString("<span style='color:%1'><b>%2:</b></span> ").arg(colour.name(), Tr("Fingering", what));
    if (!note) return text + Tr("Fingering", "no note");
    const MarkedNote mark = view.markOf(*note);
    text += QString("MIDI %1 &mdash; ").arg(QString::fromStdString(fingering::NoteText(*note)));
    if (!mark.position) return text + Tr("Fingering", "no table");
    const QString where = QString::fromStdString(mark.position->text).toHtmlEscaped();
    if (mark.exact) return text + where;
    return text + Tr("Fingering", "cannot be played here; nearest: ") + where;
}

QString FingeringDock::caption() const {
    return m_caption->text();
}

} // namespace tahrir::ui
