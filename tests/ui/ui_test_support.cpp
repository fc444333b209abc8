#include "ui_test_support.h"

#include <QTest>

#include "edit/editor.h"
#include "ui/score_view.h"

namespace tahrir::ui::test {

QApplication& App() {
    static QApplication* app = [] {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "tahrir-ui-test";
        static char* argv[] = {name, nullptr};
        return new QApplication(argc, argv);
    }();
    return *app;
}

WindowRig::WindowRig(const std::string& language) {
    App();
    WindowOptions options;
    options.appFolder = folder.path() / "app";
    std::filesystem::create_directories(options.appFolder);
    options.output = "none";
    options.dialogs = &dialogs;
    options.rememberLayout = false;
    options.language = language;
    window = std::make_unique<MainWindow>(options);
    window->resize(1400, 900);
    window->show(); // buttons take clicks only with a size
}

std::string WindowRig::demoCopy(const std::string& name) const {
    const auto target = folder.path() / name;
    std::filesystem::copy_file(std::filesystem::path(TAHRIR_DATA_DIR) / "demo" / name, target,
                               std::filesystem::copy_options::overwrite_existing);
    return target.string();
}

void WindowRig::key(int qtKey, Qt::KeyboardModifiers modifiers, int times) {
    for (int i = 0; i < times; ++i)
        QTest::keyClick(window->scoreView(), static_cast<Qt::Key>(qtKey), modifiers);
}

void WindowRig::enterEditor() {
    if (!window->editor().state().editing()) key(Qt::Key_E, Qt::ControlModifier);
}

} // namespace tahrir::ui::test
