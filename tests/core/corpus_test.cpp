// Every score of the corpus read into a sheet (before the rhythm pass) and compared with
// its golden dump; TAHRIR_UPDATE_GOLDEN=1 rewrites the dumps.

#include <gtest/gtest.h>

#include <sstream>

#include "core/cp1256.h"
#include "core/line_kind.h"
#include "core/score_reader.h"
#include "golden_text.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {

const std::filesystem::path kCorpus = std::filesystem::path(TAHRIR_TEST_DATA) / "core";

std::string Visible(std::string_view cp1256) {
    std::string out;
    for (char c : Cp1256ToUtf8(cp1256)) out += c == '\r' ? std::string("\\r") : c == '\n' ? std::string("\\n") : std::string(1, c);
    return out;
}

std::string Dump(const std::string& bytes) {
    Document doc;
    const LoadResult result = ParseScore(bytes, false, doc);
    static const char* kGenerations[] = {"sv5", "marker", "oldest"};
    std::ostringstream out;
    out << "generation: " << kGenerations[static_cast<int>(doc.FileGeneration)] << '\n'
        << "scrambled: " << (doc.LineScrambled ? "yes" : "no") << '\n'
        << "description: [" << Visible(doc.Description) << "]\n"
        << "status: " << (result.status == LoadStatus::Complete ? "complete" : "partial") << '\n'
        << "file lines: " << result.fileLines << ", dropped: " << result.droppedLines
        << ", last line: " << doc.Sheet.LastLine << '\n';
    for (int i = 1; i <= doc.Sheet.LastLine; ++i)
        out << i << '\t' << LineKindName(ClassifyLine(doc.Sheet[i].text(), i)) << "\t["
            << Visible(doc.Sheet[i].text()) << "]\n";
    return out.str();
}

} // namespace

TEST(ReaderCorpus, EveryScoreMatchesItsGoldenDump) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kCorpus / "scores")) {
        const auto golden = kCorpus / "golden" / (entry.path().stem().string() + ".txt");
        ExpectGoldenText(golden.string(), Dump(ReadBytes(entry.path())));
        ++files;
    }
    EXPECT_GE(files, 5);
}
