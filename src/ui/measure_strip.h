#pragma once
// The measure strip: one `MeasLabel` per measure, blue inside the range to play and
// yellow outside, with the bars `VScrollStartMess` and `VScrollEndMess` of the range.

#include <QWidget>
#include <functional>
#include <vector>

class QLabel;
class QScrollBar;
class QHBoxLayout;

namespace tahrir::edit {
struct MeasureRange;
}

namespace tahrir::ui {

class MeasureStrip : public QWidget {
public:
    explicit MeasureStrip(QWidget* parent = nullptr);

    // A press (button 1 left, 2 right; shift state) and a double click on a measure.
    std::function<void(int measure, int button, int shift)> pressed;
    std::function<void(int measure)> doubleClicked;
    // A bar was moved by the user: the new start and end.
    std::function<void(int start, int end)> rangeMoved;

    // Shows the labels and bars of the range.
    void show(const edit::MeasureRange& range);
    QLabel* label(int measure) const;
    int labelCount() const { return static_cast<int>(m_labels.size()); }
    QScrollBar* startBar() const { return m_start; }
    QScrollBar* endBar() const { return m_end; }

private:
    QLabel* makeLabel(int measure);
    void barMoved(bool startBar);

    QWidget* m_row = nullptr;
    QHBoxLayout* m_rowLayout = nullptr;
    std::vector<QLabel*> m_labels; // measure m at m - 1
    QScrollBar* m_start = nullptr;
    QScrollBar* m_end = nullptr;
    QLabel* m_startLabel = nullptr;
    QLabel* m_endLabel = nullptr;
    bool m_showing = false;
};

} // namespace tahrir::ui
