// The measure strip against the scores it shows: one label for each measure the page
// numbers, never one for the empty place after a closing barline.

#include <QLabel>
#include <QScrollBar>
#include <gtest/gtest.h>
#include <numeric>

#include "edit/editor.h"
#include "ui/measure_strip.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

// The automatic measure labels "L^Ms=n" of a sheet: the demo scores carry one per measure.
int MsLines(const core::ScoreSheet& sheet) {
    int count = 0;
    for (int i = 4; i <= sheet.LastLine; ++i) count += sheet[i].text().starts_with("L^Ms=");
    return count;
}

// The strip's labels read back as the numbers they show, in order.
std::vector<int> Shown(const MeasureStrip& strip) {
    std::vector<int> numbers;
    for (int m = 1; m <= strip.labelCount(); ++m)
        if (const QLabel* label = strip.label(m)) numbers.push_back(label->text().toInt());
    return numbers;
}

std::vector<int> OneTo(int n) {
    std::vector<int> v(static_cast<std::size_t>(n));
    std::iota(v.begin(), v.end(), 1);
    return v;
}

// A regression: the strip counted the number the walk leaves after the closing barline,
// so the 13-measure demo showed 14 labels and a new 2-measure score 3.
TEST(MeasureStrip, OneLabelForEachMeasureOfTheScore) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    const MeasureStrip& strip = *rig.window->measureStrip();
    const int measures = MsLines(rig.window->document().Sheet);
    ASSERT_EQ(measures, 13);
    EXPECT_EQ(Shown(strip), OneTo(measures));
    EXPECT_EQ(rig.window->editor().state().measures.Maximum, measures);
    EXPECT_EQ(strip.startBar()->maximum(), measures);
    EXPECT_EQ(strip.endBar()->maximum(), measures);

    // Each new score holds exactly the measures asked for, whatever the rhythm, and a
    // shorter score drops the labels of the longer one shown before it.
    for (const auto& [rhythm, count] :
         std::vector<std::pair<std::string, int>>{{"4/4", 2}, {"3/8", 5}, {"2/4", 1}}) {
        rig.dialogs.inputs = {std::string("60"), rhythm, std::to_string(count)};
        rig.window->NewImage();
        EXPECT_EQ(Shown(strip), OneTo(count)) << rhythm << " x " << count;
        EXPECT_EQ(strip.endBar()->maximum(), count) << rhythm;
    }
}

} // namespace
} // namespace tahrir::ui::test
