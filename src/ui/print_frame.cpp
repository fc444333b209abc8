#include "ui/print_frame.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "core/app_folder.h"
#include "core/cp1256.h"
#include "edit/editor.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {

constexpr double kTwipsPerMm = 1440 / 25.4;
constexpr double kTwipsPerPixel = 15;
constexpr double kSizeSteps = 3; // HSFSize counts thirds of the view's size

// The preview's size: a third of the paper's, at the screen's 15 twips a pixel.
QSize PreviewSize(const render::Paper& paper) {
    return QSize(static_cast<int>(paper.widthMm * kTwipsPerMm / 3 / kTwipsPerPixel),
                 static_cast<int>(paper.heightMm * kTwipsPerMm / 3 / kTwipsPerPixel));
}

QPageSize PageSizeOf(const render::Paper& paper) {
    return QPageSize(QSizeF(paper.widthMm, paper.heightMm), QPageSize::Millimeter);
}

} // namespace

PageSource WindowPageSource(MainWindow& window) {
    PageSource source;
    const core::Document& doc = window.document();
    source.sheet = &doc.Sheet;
    source.description = doc.Description;
    source.textFontName = core::Cp1256ToUtf8(window.editor().state().TextFontName);
    source.scoreFileName = std::filesystem::path(doc.CurrentFileName).filename().string();
    source.storedTempo = doc.InitialTempo;
    source.musicFontFile =
        core::MusicFontIn(window.session().AppFolder, window.session().MusicFontFile);
    return source;
}

PrintFrame::PrintFrame(std::function<PageSource()> source, QWidget* parent)
    : QDialog(parent), m_source(std::move(source)) {
    setObjectName("FrPrint");
    setWindowTitle(Tr("Print", "Print"));
    auto* root = new QHBoxLayout(this);
    m_preview = new QLabel;
    m_preview->setObjectName("PrintPre");
    m_preview->setFixedSize(PreviewSize(m_settings.paper));
    m_preview->setFrameShape(QFrame::Box);
    root->addWidget(m_preview);

    auto* controls = new QVBoxLayout;
    controls->addLayout(sliderForm());
    const auto button = [&](const char* name, const QString& text, auto slot) {
        auto* b = new QPushButton(text);
        b->setObjectName(name);
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    auto* pages = new QHBoxLayout;
    pages->addWidget(button("CmdPrePage", "<", [this] { previousPage(); }));
    m_pageLabel = new QLabel;
    m_pageLabel->setObjectName("LblPage");
    m_pageLabel->setAlignment(Qt::AlignCenter);
    pages->addWidget(m_pageLabel, 1);
    pages->addWidget(button("CmdNexPage", ">", [this] { nextPage(); }));
    controls->addLayout(pages);
    controls->addWidget(button("CmdPrintApply", Tr("Print", "Apply"), [this] { apply(); }));
    controls->addWidget(button("CmdPrint", Tr("Print", "Print..."), [this] { printWithDialog(); }));
    controls->addWidget(button("CmdClose", Tr("Print", "Close"), [this] { hide(); }));
    controls->addStretch(1);
    root->addLayout(controls);
}

QFormLayout* PrintFrame::sliderForm() {
    auto* form = new QFormLayout;
    m_paper = new QComboBox;
    m_paper->setObjectName("ChPaper");
    m_paper->addItems({"A4", Tr("Print", "Letter")});
    form->addRow(Tr("Print", "Paper"), m_paper);
    m_left = slider("HSLeft", 0, 30, static_cast<int>(m_settings.LeftMargin));
    m_right = slider("HSRight", 0, 30, static_cast<int>(m_settings.RightMargin));
    m_top = slider("VSTop", 5, 60, static_cast<int>(m_settings.TopMargin));
    m_bottom = slider("VSBot", 0, 30, static_cast<int>(m_settings.BottomMargin));
    m_gap = slider("VSBet", 8, 40, static_cast<int>(m_settings.StaffGap));
    m_size = slider("HSFSize", 3, 18, static_cast<int>(m_settings.ZoomBase * kSizeSteps));
    form->addRow(Tr("Print", "Left margin"), m_left);
    form->addRow(Tr("Print", "Right margin"), m_right);
    form->addRow(Tr("Print", "Top margin"), m_top);
    form->addRow(Tr("Print", "Bottom margin"), m_bottom);
    form->addRow(Tr("Print", "Staff gap"), m_gap);
    form->addRow(Tr("Print", "Size"), m_size);
    return form;
}

QSlider* PrintFrame::slider(const char* name, int min, int max, int value) {
    auto* s = new QSlider(Qt::Horizontal);
    s->setObjectName(name);
    s->setRange(min, max);
    s->setValue(value);
    s->setMinimumWidth(160);
    return s;
}

void PrintFrame::readSliders() {
    m_settings.paper = m_paper->currentIndex() == 1 ? render::kLetter : render::kA4;
    m_settings.LeftMargin = m_left->value();
    m_settings.RightMargin = m_right->value();
    m_settings.TopMargin = m_top->value();
    m_settings.BottomMargin = m_bottom->value();
    m_settings.StaffGap = m_gap->value();
    m_settings.ZoomBase = m_size->value() / kSizeSteps;
}

void PrintFrame::apply() {
    readSliders();
    m_pages = LayOutPrintPages(m_source(), m_settings);
    m_preview->setFixedSize(PreviewSize(m_settings.paper));
    m_wanted = std::clamp(m_wanted, 1, std::max(1, pageCount()));
    showPage();
}

void PrintFrame::nextPage() {
    if (m_wanted < pageCount()) ++m_wanted;
    showPage();
}

void PrintFrame::previousPage() {
    if (m_wanted > 1) --m_wanted;
    showPage();
}

QImage PrintFrame::previewImage() const {
    QImage image(m_preview->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    if (m_wanted < 1 || m_wanted > pageCount()) return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintPrintedPage(painter, m_pages.pages[static_cast<std::size_t>(m_wanted - 1)],
                     QRectF(QPointF(0, 0), QSizeF(image.size())), m_source(), true);
    return image;
}

void PrintFrame::showPage() {
    m_preview->setPixmap(QPixmap::fromImage(previewImage()));
    m_pageLabel->setText(Tr("Print", "Page %1 of %2").arg(m_wanted).arg(std::max(1, pageCount())));
}

bool PrintFrame::printTo(QPrinter& printer) {
    if (m_pages.pages.empty()) apply();
    printer.setPageSize(PageSizeOf(m_settings.paper));
    return PrintPages(printer, m_pages, m_source());
}

void PrintFrame::printWithDialog() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(PageSizeOf(m_settings.paper));
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(Tr("Print", "Print"));
    if (dialog.exec() == QDialog::Accepted) printTo(printer);
}

PrintCommands::PrintCommands(QWidget* window, Dialogs& dialogs, std::function<PageSource()> source)
    : QObject(window), m_window(window), m_dialogs(dialogs), m_source(std::move(source)) {}

PrintFrame& PrintCommands::frame() {
    if (m_frame == nullptr) m_frame = new PrintFrame(m_source, m_window);
    return *m_frame;
}

std::string PrintCommands::exportAs(const std::string& extension) {
    const std::string filter = "*." + extension;
    const std::string path = m_dialogs.saveFile(TrStd("Print", "Export"), filter, "");
    if (path.empty()) return {};
    const std::string error = ExportPages(m_source(), frame().settings(), path);
    if (!error.empty()) m_dialogs.message(TrStd("Print", "Export"), error);
    return error;
}

std::unique_ptr<QPrintPreviewDialog> PrintCommands::previewDialog(QPrinter& printer) {
    frame().apply();
    printer.setPageSize(PageSizeOf(frame().settings().paper));
    auto preview = std::make_unique<QPrintPreviewDialog>(&printer, m_window);
    preview->setWindowTitle(Tr("Print", "Print preview"));
    connect(preview.get(), &QPrintPreviewDialog::paintRequested, this,
            [this](QPrinter* p) { frame().printTo(*p); });
    return preview;
}

void PrintCommands::addTo(QMenu* file, QMenu* out) {
    const auto add = [this](QMenu* menu, const char* name, const QString& text, auto slot) {
        QAction* a = menu->addAction(text);
        a->setObjectName(name);
        connect(a, &QAction::triggered, this, slot);
        return a;
    };
    add(file, "FrPrint", Tr("Menu", "Print &frame..."), [this] {
        frame().apply();
        frame().show();
        frame().raise();
    });
    add(file, "PrintImage", Tr("Menu", "&Print..."), [this] { frame().printWithDialog(); });
    add(file, "PrintPreview", Tr("Menu", "Print pre&view..."), [this] {
        QPrinter printer(QPrinter::HighResolution);
        previewDialog(printer)->exec();
    });
    for (const char* ext : {"pdf", "png", "svg", "dxf"}) {
        const QString text = QString("%1...").arg(QString(ext).toUpper());
        add(out, (std::string("Export") + ext).c_str(), text, [this, ext] { exportAs(ext); });
    }
}

} // namespace tahrir::ui
