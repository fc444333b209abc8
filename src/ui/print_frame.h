#pragma once
// The print frame FrPrint: the preview PrintPre at a third of the paper's size, the
// margin, staff-gap and size sliders, Apply, the page buttons and Print; and the File
// menu's print, print preview and export entries that go with it.

#include <QDialog>
#include <functional>
#include <memory>

#include "ui/page_export.h"

class QComboBox;
class QFormLayout;
class QLabel;
class QMenu;
class QPrinter;
class QPrintPreviewDialog;
class QPushButton;
class QSlider;

namespace tahrir::ui {

class Dialogs;
class MainWindow;

// The open score of a window, for printing.
PageSource WindowPageSource(MainWindow& window);

class PrintFrame : public QDialog {
public:
    // `source` is asked for the score each time the pages are laid out.
    PrintFrame(std::function<PageSource()> source, QWidget* parent = nullptr);

    // CmdPrintApply: lays the pages out again from the sliders.
    void apply();
    void nextPage(); // CmdNexPage
    void previousPage(); // CmdPrePage
    int WantedPage() const { return m_wanted; }
    int pageCount() const { return static_cast<int>(m_pages.pages.size()); }
    const PrintSettings& settings() const { return m_settings; }
    PrintSettings& settings() { return m_settings; }
    // Opens Qt's print dialog and prints every page on the printer chosen.
    void printWithDialog();
    // Prints every page to `printer` without asking.
    bool printTo(QPrinter& printer);
    // The picture shown in PrintPre.
    QImage previewImage() const;

private:
    QFormLayout* sliderForm();
    QSlider* slider(const char* name, int min, int max, int value);
    void readSliders();
    void showPage();

    std::function<PageSource()> m_source;
    PrintSettings m_settings;
    render::PagedLayout m_pages;
    int m_wanted = 1;
    QLabel* m_preview = nullptr;   // PrintPre
    QLabel* m_pageLabel = nullptr;
    QComboBox* m_paper = nullptr;
    QSlider *m_left = nullptr, *m_right = nullptr, *m_top = nullptr, *m_bottom = nullptr;
    QSlider *m_gap = nullptr, *m_size = nullptr;
};

// The File menu's print and export entries, bound to a window's score.
class PrintCommands : public QObject {
public:
    PrintCommands(QWidget* window, Dialogs& dialogs, std::function<PageSource()> source);
    // Print frame, Print and Print preview into the File menu; PDF, PNG, SVG and DXF into Export.
    void addTo(QMenu* file, QMenu* exportMenu);
    PrintFrame& frame();
    // The print preview of every page on `printer`, ready to be shown.
    std::unique_ptr<QPrintPreviewDialog> previewDialog(QPrinter& printer);
    // Asks for a file name and writes the export of that extension; the error or empty.
    std::string exportAs(const std::string& extension);

private:
    QWidget* m_window;
    Dialogs& m_dialogs;
    std::function<PageSource()> m_source;
    PrintFrame* m_frame = nullptr;
};

} // namespace tahrir::ui
