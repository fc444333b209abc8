// Score documents: lines, new, save.

#include <cstdio>
#include <iostream>
#include <optional>
#include <sstream>

#include "app/open_score.h"
#include "cli/cli_args.h"
#include "cli/commands.h"
#include "cli/json_text.h"
#include "core/app_folder.h"
#include "core/cp1256.h"
#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/load_file.h"
#include "core/new_score.h"
#include "core/page_store.h"
#include "core/score_writer.h"
#include "core/session.h"

namespace tahrir::cli {

namespace {

using namespace tahrir::core;

std::string JsonText(std::string_view cp1256) { return JsonString(Cp1256ToUtf8(cp1256)); }

// The named fields of a line by its kind, as a JSON object.
std::string FieldsJson(const ScoreLine& line, LineKind kind) {
    std::ostringstream out;
    out << '{';
    if (kind == LineKind::NoteLine || kind == LineKind::BarLine) {
        bool first = true;
        for (const FieldSpec& f : NoteFields()) {
            out << (first ? "" : ", ") << JsonString(f.name) << ": " << JsonText(line.get(f.field));
            first = false;
        }
    } else if (kind == LineKind::DirectiveLine) {
        // "ALL" with a step and a letter is a family of its own; "ALL8U" and kin are tokens.
        const DirectiveParts parts = DirectivePartsOf(line).value_or(DirectiveParts{});
        out << "\"token\": " << JsonText(parts.token)
            << ", \"payload\": " << JsonText(parts.payload);
    } else if (kind == LineKind::SpacerLine || kind == LineKind::TextLine ||
               kind == LineKind::ControlLine) {
        // Every line of the L family begins with "L"; its head is that and the placement.
        out << "\"head\": " << JsonText(std::string{'L', LinePlacement(line)})
            << ", \"payload\": " << JsonText(LineText(line));
    }
    out << '}';
    return out.str();
}

const char* GenerationName(Generation g) {
    switch (g) {
    case Generation::Sv5: return "sv5";
    case Generation::Marker: return "marker";
    case Generation::Oldest: return "oldest";
    }
    return "sv5";
}

void PrintJson(const Document& doc, const std::string& file, std::ostream& out) {
    const ScoreSheet& sheet = doc.Sheet;
    out << "{\"file\": " << JsonString(file) << ", \"generation\": \""
        << GenerationName(doc.FileGeneration)
        << "\", \"scrambled\": " << (doc.LineScrambled ? "true" : "false")
        << ", \"description\": " << JsonText(doc.Description) << ", \"lastLine\": " << sheet.LastLine
        << ", \"currentLine\": " << sheet.CurrentLine
        << ", \"dirty\": " << (doc.DirtyFlag ? "true" : "false") << ", \"lines\": [";
    for (int i = 1; i <= sheet.LastLine; ++i) {
        const LineKind kind = ClassifyLine(sheet[i].text(), i);
        out << (i > 1 ? ",\n  " : "\n  ") << "{\"index\": " << i << ", \"kind\": \""
            << LineKindName(kind) << "\", \"text\": " << JsonText(sheet[i].text())
            << ", \"fields\": " << FieldsJson(sheet[i], kind) << '}';
    }
    out << "]}\n";
}

// The session of one command: data folder, tables and undo store.
struct CliSession {
    Session session;
    std::optional<PageStore> store;
    std::string error;
};

CliSession OpenSession(const Args& args) {
    CliSession s;
    app::Workspace workspace = app::StartWorkspace(args.value("--app-folder"));
    s.error = workspace.error;
    if (!workspace.ok()) return s;
    s.session = std::move(workspace.session);
    s.store.emplace(PageStore::PathIn(s.session.AppFolder));
    return s;
}

// Loads FILE as the open command does; 0 on success, else the exit code (message printed).
int LoadScore(CliSession& s, const std::string& file, Document& doc) {
    const app::OpenedScore opened = app::OpenScore(doc, s.session, &*s.store, file);
    if (!opened.ok()) return Fail(ExitIo, opened.failure);
    if (!opened.result.load.storeError.empty()) Fail(ExitOk, "warning: " + opened.result.load.storeError);
    return ExitOk;
}

int Save(Document& doc, const std::string& out) {
    const SaveResult saved = SaveImage(doc, out);
    return saved.ok ? ExitOk : Fail(ExitIo, saved.message);
}

// Answers the new-score questions from the command line, typed text in the score's code
// page as an input box gives it; a missing option takes the default.
class OptionPrompts : public NewScorePrompts {
public:
    OptionPrompts(std::optional<std::string> tempo, std::optional<std::string> rhythm,
                  std::optional<std::string> measures)
        : m_answers{std::move(tempo), std::move(rhythm), std::move(measures)} {}
    std::string ask(const std::string&, const std::string& defaultAnswer) override {
        if (m_next >= 3) return {};
        const auto& answer = m_answers[m_next++];
        return answer ? Utf8ToCp1256(*answer) : defaultAnswer;
    }

private:
    std::optional<std::string> m_answers[3];
    int m_next = 0;
};

std::string WithCrLf(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) out += '\r';
        out += text[i];
    }
    return out;
}

} // namespace

int RunLines(const Argv& argv) {
    Args args(argv, {{}, {"--json"}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1) return Fail(ExitUsage, "usage: lines FILE.srv [--json]");
    const std::string file = args.positional()[0];
    CliSession s = OpenSession(args);
    if (!s.error.empty()) return Fail(ExitIo, s.error);
    Document doc;
    if (const int code = LoadScore(s, file, doc)) return code;
    if (args.flag("--json")) {
        PrintJson(doc, file, std::cout);
    } else {
        for (int i = 1; i <= doc.Sheet.LastLine; ++i)
            std::cout << i << '\t' << LineKindName(ClassifyLine(doc.Sheet[i].text(), i)) << '\t'
                      << Cp1256ToUtf8(doc.Sheet[i].text()) << '\n';
    }
    return std::cout.flush() ? ExitOk : ExitIo;
}

int RunNew(const Argv& argv) {
    Args args(argv, {{"--tempo", "--rhythm", "--measures", "--description"}, {}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto out = args.value("-o");
    if (!out || !args.positional().empty())
        return Fail(ExitUsage, "usage: new --tempo T --rhythm R --measures N -o OUT.srv");
    CliSession s = OpenSession(args);
    if (!s.error.empty()) return Fail(ExitIo, s.error);
    Document doc;
    OptionPrompts prompts(args.value("--tempo"), args.value("--rhythm"), args.value("--measures"));
    const NewScoreResult made = NewImage(doc, prompts, &*s.store);
    if (made.message) Fail(ExitOk, "warning: " + *made.message);
    if (const auto description = args.value("--description"))
        doc.Description = Utf8ToCp1256(WithCrLf(*description));
    return Save(doc, *out);
}

int RunSave(const Argv& argv) {
    Args args(argv, {{}, {}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto out = args.value("-o");
    if (!out || args.positional().size() != 1)
        return Fail(ExitUsage, "usage: save FILE.srv -o OUT.srv");
    CliSession s = OpenSession(args);
    if (!s.error.empty()) return Fail(ExitIo, s.error);
    Document doc;
    if (const int code = LoadScore(s, args.positional()[0], doc)) return code;
    return Save(doc, *out);
}

} // namespace tahrir::cli
