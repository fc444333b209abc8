// The desktop program: tahrir [SCORE.srv] [--app-folder DIR] [--no-splash]

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <cstdio>
#include <optional>
#include <string>

#include "core/app_folder.h"
#include "ui/main_window.h"

namespace {

struct Arguments {
    std::optional<std::string> appFolder;
    std::optional<std::string> score;
    bool splash = true;
    std::string error;
};

Arguments Parse(const QStringList& args) {
    Arguments a;
    for (int i = 1; i < args.size(); ++i) {
        const std::string arg = args[i].toStdString();
        if (arg == "--no-splash") {
            a.splash = false;
        } else if (arg == "--app-folder") {
            if (i + 1 >= args.size()) a.error = "--app-folder needs a folder";
            else a.appFolder = args[++i].toStdString();
        } else if (!arg.empty() && arg[0] == '-') {
            a.error = "unknown option " + arg;
        } else if (a.score) {
            a.error = "only one score can be opened";
        } else {
            a.score = arg;
        }
    }
    return a;
}

// The splash picture: at most five seconds, and any key or click ends it.
class Splash : public QLabel {
public:
    Splash() {
        setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
        setText("<div style='font-size:42px; font-weight:bold'>Tahrir</div>"
                "<div style='font-size:26px'>\u062A\u062D\u0631\u06CC\u0631</div>"
                "<div style='font-size:14px'>score editor and player for Persian art music</div>");
        setAlignment(Qt::AlignCenter);
        setStyleSheet("background:#f7f1de; color:#5a3a10; border:3px solid #a07030;");
        resize(480, 260);
        QTimer::singleShot(5000, this, &QWidget::close);
        qApp->installEventFilter(this);
    }
    ~Splash() override { qApp->removeEventFilter(this); }

protected:
    // Any key or click, in whichever window, ends the splash and is used up by it.
    bool eventFilter(QObject*, QEvent* event) override {
        if (!isVisible()) return false;
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::MouseButtonPress) return false;
        close();
        return true;
    }
};

} // namespace

constexpr const char* kUsage =
    "usage: tahrir [SCORE.srv] [--app-folder DIR] [--no-splash]\n"
    "  SCORE.srv          the score to open\n"
    "  --app-folder DIR   the data folder (default $TAHRIR_APP_FOLDER, else ~/.local/share/tahrir)\n"
    "  --no-splash        start without the splash picture\n"
    "  -h, --help         print this help and leave\n"
    "Environment: TAHRIR_MIDI_OUT=auto|midi|synth|none chooses the sound output.\n";

// --help is answered before any window system is needed.
static bool AsksForHelp(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--help" || arg == "-h") return true;
    }
    return false;
}

int main(int argc, char** argv) {
    if (AsksForHelp(argc, argv)) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    QApplication app(argc, argv);
    app.setApplicationName("Tahrir");
    app.setOrganizationName("Tahrir");
    app.setDesktopFileName("tahrir");
    const Arguments args = Parse(app.arguments());
    if (!args.error.empty()) {
        std::fprintf(stderr, "tahrir: %s\n%s", args.error.c_str(), kUsage);
        return 1;
    }
    const tahrir::core::AppFolderResult folder = tahrir::core::PrepareAppFolder(args.appFolder);
    if (!folder.error.empty()) {
        std::fprintf(stderr, "tahrir: %s\n", folder.error.c_str());
        return 2;
    }
    if (const auto missing = tahrir::core::CheckMusicFont(tahrir::core::MusicFontIn(folder.folder))) {
        std::fprintf(stderr, "tahrir: %s\n", missing->c_str());
        return 2;
    }
    Splash* splash = nullptr;
    if (args.splash) {
        splash = new Splash;
        splash->setAttribute(Qt::WA_DeleteOnClose);
        splash->move(splash->screen()->geometry().center() - splash->rect().center());
        splash->show();
        app.processEvents();
    }
    tahrir::ui::WindowOptions options;
    options.appFolder = folder.folder;
    if (const char* out = std::getenv("TAHRIR_MIDI_OUT")) options.output = out;
    tahrir::ui::MainWindow window(options);
    window.show();
    if (splash) splash->raise();
    if (window.offerRecovery())
        ; // the recovered score is open
    else if (args.score)
        window.openPath(*args.score);
    else
        window.LoadFile(1);
    return app.exec();
}
