// Single layout decisions, each case a line of a data file.

#include <gtest/gtest.h>

#include "case_files.h"
#include "render/dxf_writer.h"
#include "sheet_builder.h"

namespace tahrir::render {
namespace {

using namespace test;
using tahrir::test::CaseNumber;
using Args = std::vector<std::string>;

// The head of Body, then the lines of `args` from `from` on, beamed.
core::ScoreSheet BodyOf(const Args& args, std::size_t from = 0) {
    core::ScoreSheet sheet = Body({}, false);
    for (std::size_t i = from; i < args.size(); ++i)
        Repeat(sheet, args[i]);
    core::RhythmPass(sheet);
    return sheet;
}

std::string TextOfLine(const LayoutResult& r, ItemKind kind, int line) {
    for (const auto& it : r.list.items)
        if (it.kind == kind && it.line == line) return it.text;
    return "none";
}

std::string ShownNumbers(const LayoutResult& r) {
    std::string out;
    for (const MeasureLabel& m : r.measures)
        if (m.number > 0 && m.visible) out += (out.empty() ? "" : " ") + std::to_string(m.number);
    return out;
}

TEST(LayoutCases, EveryCaseOfTheDataFile) {
    tahrir::test::RunCaseFile(
        std::string(TAHRIR_TEST_DATA) + "/render/layout_cases.txt",
        {{"vbformat", [](const Args& a) { return VbFormat(std::stod(a[0]), std::stoi(a[1])); }},
         {"chord",
          [](const Args& a) {
              return TextOfLine(Lay(BodyOf({"73  8    " + a[0]})), ItemKind::Text, 4);
          }},
         {"textsize",
          [](const Args& a) {
              const auto laid = Lay(BodyOf({a[0], "L_word"}));
              const auto texts = Find(laid, ItemKind::Text, "word");
              return texts.empty() ? "none" : CaseNumber(texts[0]->size);
          }},
         {"stafftop",
          [](const Args& a) {
              return CaseNumber(Lay(BodyOf({a[0], "73 32"})).positions.LinePosY[5]);
          }},
         {"seconds",
          [](const Args& a) {
              core::ScoreSheet sheet = MakeSheet({"       G", a[0], "RHYTM3/4"});
              Repeat(sheet, "73  8", 6);
              return CaseNumber(Lay(sheet, 80).ElapsedSeconds);
          }},
         {"shown",
          [](const Args& a) {
              core::ScoreSheet sheet = Body({}, false);
              for (const std::string& line : a)
                  Repeat(sheet, line);
              const std::string page = ShownNumbers(Lay(sheet, 80, View::Page));
              const std::string working = ShownNumbers(Lay(sheet, 80, View::Working));
              return page == working ? page : "page " + page + ", working " + working;
          }},
         {"caption", [](const Args& a) {
              const auto work = Lay(BodyOf(a, 1), 60, View::Working);
              return TextOfLine(work, ItemKind::Glyph, std::stoi(a[0]));
          }}});
}

} // namespace
} // namespace tahrir::render
