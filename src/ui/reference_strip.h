#pragma once
// The reference image strip `PicJpg` above the sheet: a picture of a score, a photograph
// or a scan (JPEG or PNG) in `Jmg`, dragged with the mouse inside the strip and zoomed,
// so that the user can copy it note by note.

#include <QPixmap>
#include <QWidget>

class QLabel;
class QSlider;

namespace tahrir::ui {

class ReferenceStrip : public QWidget {
public:
    explicit ReferenceStrip(QWidget* parent = nullptr);

    // Loads the picture; false (and nothing kept) when it cannot be read.
    bool load(const QString& path);
    // The stored path, empty when no picture is kept.
    const QString& path() const { return m_path; }
    void clear();
    // The picture's scale, 0.1 to 4.
    void setZoom(double zoom);
    double zoom() const { return m_zoom; }
    QLabel* image() const { return m_image; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void place(QPoint topLeft);

    QString m_path;
    QPixmap m_picture;
    QLabel* m_image = nullptr;
    QSlider* m_zoomSlider = nullptr;
    double m_zoom = 1;
    QPoint m_grab;
};

} // namespace tahrir::ui
