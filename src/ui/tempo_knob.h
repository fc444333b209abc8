#pragma once
// The tempo slider's track `Image1` with its knob `Image2`, mirroring the tempo bar:
// tempo 20 lies at 500 twips and 320 at 1831, and a drag inside the track's box moves both.

#include <QWidget>
#include <functional>
#include <optional>

class QLabel;

namespace tahrir::ui {

inline constexpr double TwipsPerPixel = 15;

class TempoKnob : public QWidget {
public:
    explicit TempoKnob(QWidget* parent = nullptr);

    // The knob was dragged to this tempo.
    std::function<void(int tempo)> dragged;
    void setTempo(int tempo);
    QLabel* knob() const { return m_knob; }
    // The tempo of a place on the track in twips; nullopt outside the track's box.
    static std::optional<int> TempoAt(double xTwips, double yTwips);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* e) override { drag(e); }
    void mouseMoveEvent(QMouseEvent* e) override { drag(e); }

private:
    void drag(QMouseEvent* e);
    QLabel* m_knob;
};

} // namespace tahrir::ui
