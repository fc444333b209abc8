#pragma once
// The window's texts in the chosen language. lupdate reads Tr("Context", "text") and
// TrStd(...) as QCoreApplication::translate (its -tr-function-alias in src/ui/CMakeLists.txt);
// texts in tables are marked with QT_TRANSLATE_NOOP and given through Tr where shown.

#include <QCoreApplication>
#include <QString>
#include <string>

namespace tahrir::ui {

inline QString Tr(const char* context, const char* text) { return QCoreApplication::translate(context, text); }

// The same text for the dialogs and messages that take UTF-8 strings.
inline std::string TrStd(const char* context, const char* text) { return Tr(context, text).toStdString(); }

} // namespace tahrir::ui
