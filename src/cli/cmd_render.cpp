// Drawing: the page as an image, PDF, SVG or DXF, and the position table as JSON.

#include <charconv>
#include <cmath>
#include <fstream>
#include <iostream>
#include <sstream>

#include "app/open_score.h"
#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/app_folder.h"
#include "render/page_layout.h"
#include "render/paged_layout.h"
#include "render/painter_backend.h"

namespace tahrir::cli {

namespace {

using namespace tahrir::core;
using namespace tahrir::render;

} // namespace

// Loads FILE as the open command does, without an undo store. 0 or the exit code.
// Shared with the MusicXML export.
int LoadForDrawing(const Args& args, const std::string& file, Document& doc,
                   Session& session) {
    app::Workspace workspace = app::StartWorkspace(args.value("--app-folder"));
    if (!workspace.ok()) return Fail(ExitIo, workspace.error);
    session = std::move(workspace.session);
    const app::OpenedScore opened = app::OpenScore(doc, session, nullptr, file);
    return opened.ok() ? ExitOk : Fail(ExitIo, opened.failure);
}

namespace {

// --view, --zoom and --width-units into layout options; the error text when one is bad.
std::string ReadView(Args& args, LayoutOptions& options) {
    if (const auto view = args.value("--view")) {
        if (*view != "page" && *view != "working") return "--view takes page or working";
        options.ViewMode = *view == "working" ? render::View::Working : render::View::Page;
    }
    const auto zoom = args.number("--zoom");
    const auto width = args.number("--width-units");
    if (!args.ok()) return args.error();
    if (zoom) {
        if (*zoom <= 0 || *zoom > 30) return "--zoom takes a number above 0 and up to 30";
        options.ZoomBase = *zoom;
    }
    // A page width not above 0 or above 500 is replaced by 100, as the view does with a
    // width computed from a picture.
    if (width) options.PageWidthUnits = *width <= 0 || *width > 500 ? 100 : *width;
    return {};
}

// The shortest text that reads back as the same double: staff units keep every digit the
// position table holds. JSON has no infinities, so those become null.
std::string Number(double v) {
    if (!std::isfinite(v)) return "null";
    char buf[40];
    const auto done = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, done.ptr);
}

void WriteLayoutJson(std::ostream& out, const LayoutResult& r, int lastLine) {
    out << "{\"rows\": " << r.rows << ", \"staffEnd\": " << Number(r.staffEnd)
        << ", \"rowRatios\": [";
    for (int i = 1; i <= r.rows && i < static_cast<int>(r.RowRatios.size()); ++i)
        out << (i > 1 ? ", " : "") << Number(r.RowRatios[i]);
    out << "], \"measures\": [";
    bool first = true;
    for (const MeasureLabel& m : r.measures) {
        if (m.number <= 0) continue;
        out << (first ? "" : ", ") << "{\"number\": " << m.number << ", \"x\": " << Number(m.x)
            << ", \"y\": " << Number(m.y) << ", \"visible\": " << (m.visible ? "true" : "false")
            << '}';
        first = false;
    }
    out << "], \"lines\": [";
    for (int i = 1; i <= lastLine; ++i) {
        out << (i > 1 ? ", " : "") << "{\"index\": " << i
            << ", \"x\": " << Number(r.positions.LinePosX[i])
            << ", \"y\": " << Number(r.positions.LinePosY[i]) << ", \"right\": "
            << Number(i < static_cast<int>(r.LineRight.size()) ? r.LineRight[i] : -1) << '}';
    }
    out << "]}\n";
}

// --paged: the score cut into pages of the paper, one PDF or one image file a page.
int RenderPaged(Args& args, LayoutOptions options, const Document& doc, const Session& session,
                const std::filesystem::path& target) {
    const Paper* paper = PaperNamed(args.value("--paper").value_or("a4"));
    if (paper == nullptr) return Fail(ExitUsage, "--paper takes a4 or letter");
    options.Description = doc.Description;
    options.TextFontName = session.TextFontName;
    options.StoredTempo = doc.InitialTempo;
    const PagedLayout paged = LayOutPages(doc.Sheet, options, PageOptions{*paper});
    ImageOptions image;
    image.musicFontFile = MusicFontIn(session.AppFolder, session.MusicFontFile);
    const std::string error = WritePages(paged, *paper, target, image);
    return error.empty() ? ExitOk : Fail(ExitIo, error);
}

} // namespace

int RunRender(const Argv& argv) {
    Args args(argv, {{"-o", "--view", "--zoom", "--width-units", "--paper"}, {"--print", "--paged"}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto out = args.value("-o");
    if (args.positional().size() != 1 || !out)
        return Fail(ExitUsage, "usage: render FILE.srv -o OUT.(png|pdf|svg|dxf) [--view "
                               "page|working] [--zoom Z] [--width-units W] [--print] "
                               "[--paged] [--paper a4|letter]");
    LayoutOptions options;
    if (const std::string bad = ReadView(args, options); !bad.empty()) return Fail(ExitUsage, bad);
    const std::filesystem::path target(*out);
    std::string ext = target.extension().string();
    for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (ext != ".png" && ext != ".pdf" && ext != ".svg" && ext != ".dxf")
        return Fail(ExitUsage, "the output must end in .png, .pdf, .svg or .dxf");

    Document doc;
    Session session;
    if (const int rc = LoadForDrawing(args, args.positional()[0], doc, session); rc != ExitOk)
        return rc;
    if (args.flag("--paged")) {
        if (ext == ".dxf") return Fail(ExitUsage, "--paged writes .pdf, .png or .svg");
        return RenderPaged(args, options, doc, session, target);
    }
    if (args.value("--paper")) return Fail(ExitUsage, "--paper goes with --paged");
    options.ChPrint = args.flag("--print");
    options.DxfEnabled = ext == ".dxf";
    options.ScoreFileName = std::filesystem::path(args.positional()[0]).filename().string();
    options.Description = doc.Description;
    options.TextFontName = session.TextFontName;
    options.StoredTempo = doc.InitialTempo;
    const LayoutResult layout = RefreshView(doc.Sheet, options);
    if (ext == ".dxf") {
        std::ofstream file(target, std::ios::binary);
        file << layout.dxf;
        if (!file) return Fail(ExitIo, "cannot write " + target.string());
        return ExitOk;
    }
    ImageOptions image;
    image.print = options.ChPrint;
    image.musicFontFile = MusicFontIn(session.AppFolder, session.MusicFontFile);
    const std::string error = WritePage(layout, target, image);
    return error.empty() ? ExitOk : Fail(ExitIo, error);
}

int RunLayout(const Argv& argv) {
    Args args(argv, {{"--view", "--zoom", "--width-units"}, {"--json"}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1 || !args.flag("--json"))
        return Fail(ExitUsage, "usage: layout FILE.srv --json [--view page|working]");
    LayoutOptions options;
    if (const std::string bad = ReadView(args, options); !bad.empty()) return Fail(ExitUsage, bad);
    Document doc;
    Session session;
    if (const int rc = LoadForDrawing(args, args.positional()[0], doc, session); rc != ExitOk)
        return rc;
    options.TextFontName = session.TextFontName;
    options.StoredTempo = doc.InitialTempo;
    const LayoutResult layout = RefreshView(doc.Sheet, options);
    WriteLayoutJson(std::cout, layout, doc.Sheet.LastLine);
    return ExitOk;
}

} // namespace tahrir::cli
