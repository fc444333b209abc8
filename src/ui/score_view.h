#pragma once
// The score picture `Pic`: paints the renderer's display list, the red cursor note, the
// selection, the band and the marker of the sounding line, finds the line under a click,
// and hands keys and mouse actions on as the editor's numbers.

#include <QWidget>
#include <filesystem>
#include <functional>
#include <string>

class QPainter;

#include "ui/key_translate.h"

namespace tahrir::edit {
class Editor;
}

namespace tahrir::ui {

class ViewLayout;

class ScoreView : public QWidget {
public:
    ScoreView(edit::Editor& editor, ViewLayout& layout, std::filesystem::path musicFontFile,
              QWidget* parent = nullptr);

    // A key of the editor's numbering; a key-up of its own for the reload key.
    std::function<void(EditorKey)> keyPressed;
    std::function<void(EditorKey)> keyReleased;
    // After a mouse action changed the editor.
    std::function<void()> mouseEdited;

    // The page's size follows the last layout.
    void pageChanged();
    // Repaints the rows of these lines (the cursor's old and new rows).
    void updateLines(int a, int b);
    // The sounding line's marker, 0 to hide it.
    void setPlayLine(int line);
    int playLine() const { return m_playLine; }

    // Staff units of a point on the widget and back.
    QPointF toUnits(QPointF pixels) const;
    QPointF toPixels(double x, double y) const;
    // The line whose symbol is under a point in staff units, 0 for none.
    int lineAt(QPointF units) const;
    // The rectangle of a line's row band, in pixels.
    QRect rowRect(int line) const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool) override { return false; } // Tab stays with the score

private:
    void paintOverlay(QPainter& p);
    void paintCursorMark(QPainter& p);

    edit::Editor& m_editor;
    ViewLayout& m_layout;
    std::filesystem::path m_musicFontFile;
    int m_playLine = 0;
    bool m_banding = false;
    std::string m_fontAsked, m_fontUsed; // the text font looked up once per name
};

} // namespace tahrir::ui
