#include "ui/reference_strip.h"

#include <QImageReader>
#include <QLabel>
#include <QMouseEvent>
#include <QSlider>
#include <QWheelEvent>
#include <algorithm>
#include "ui/ui_text.h"

namespace tahrir::ui {

namespace {
constexpr int kStripHeight = 220;
} // namespace

ReferenceStrip::ReferenceStrip(QWidget* parent) : QWidget(parent) {
    setObjectName("PicJpg");
    setFixedHeight(kStripHeight);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Mid);
    setCursor(Qt::OpenHandCursor);
    m_image = new QLabel(this);
    m_image->setObjectName("Jmg");
    m_image->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_zoomSlider = new QSlider(Qt::Vertical, this);
    m_zoomSlider->setObjectName("JpgZoom");
    m_zoomSlider->setRange(10, 400);
    m_zoomSlider->setValue(100);
    m_zoomSlider->setToolTip(Tr("Window", "Zoom of the picture"));
    m_zoomSlider->setFocusPolicy(Qt::NoFocus);
    m_zoomSlider->setGeometry(4, 6, 22, kStripHeight - 12);
    connect(m_zoomSlider, &QSlider::valueChanged, this, [this](int v) { setZoom(v / 100.0); });
    hide();
}

bool ReferenceStrip::load(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true); // photographs keep their orientation
    const QImage image = reader.read();
    if (image.isNull()) {
        clear();
        return false;
    }
    m_path = path;
    m_picture = QPixmap::fromImage(image);
    // A new picture starts fitted to the strip's height.
    const double fit = std::clamp(double(kStripHeight) / m_picture.height(), 0.1, 4.0);
    m_zoom = 0;
    m_zoomSlider->setValue(static_cast<int>(fit * 100));
    setZoom(fit);
    place({30, 0});
    return true;
}

void ReferenceStrip::clear() {
    m_path.clear();
    m_picture = QPixmap();
    m_image->clear();
}

void ReferenceStrip::setZoom(double zoom) {
    zoom = std::clamp(zoom, 0.1, 4.0);
    if (zoom == m_zoom || m_picture.isNull()) {
        m_zoom = zoom;
        return;
    }
    m_zoom = zoom;
    m_image->setPixmap(m_picture.scaled(m_picture.size() * zoom, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    m_image->resize(m_image->pixmap().size());
    place(m_image->pos());
}

// The picture moves inside the strip: it may pass an edge, never leave the strip.
void ReferenceStrip::place(QPoint topLeft) {
    const QSize s = m_image->size();
    const int x = std::clamp(topLeft.x(), std::min(0, width() - s.width()), std::max(30, width() - 40));
    const int y = std::clamp(topLeft.y(), std::min(0, height() - s.height()), std::max(0, height() - 40));
    m_image->move(x, y);
}

void ReferenceStrip::mousePressEvent(QMouseEvent* event) {
    m_grab = event->position().toPoint() - m_image->pos();
    setCursor(Qt::ClosedHandCursor);
}

void ReferenceStrip::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton) place(event->position().toPoint() - m_grab);
}

void ReferenceStrip::wheelEvent(QWheelEvent* event) {
    m_zoomSlider->setValue(m_zoomSlider->value() + (event->angleDelta().y() > 0 ? 10 : -10));
}

} // namespace tahrir::ui
