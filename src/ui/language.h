#pragma once
// The window's language: English, the texts as written, or Persian from the catalogue built
// into the program, laid out right to left. A switch retranslates the open windows in place.

#include <QHash>
#include <QString>
#include <QTranslator>
#include <memory>
#include <mutex>
#include <utility>

class QObject;
class QWidget;

namespace tahrir::ui {

inline const QString LanguageEnglish = QStringLiteral("en");
inline const QString LanguagePersian = QStringLiteral("fa");

// The system locale's language when the window speaks it, else English.
QString SystemLanguage();

// A translator that remembers, for each text it gave out, the context and source text it
// came from, so that a text already shown can be given again in another language.
class TextBook : public QTranslator {
public:
    using Origin = std::pair<QByteArray, QByteArray>; // context, source text
    QString translate(const char* context, const char* source, const char* disambiguation = nullptr,
                      int n = -1) const override;
    bool isEmpty() const override { return false; }
    bool loadCatalogue(const QString& code);
    bool originOf(const QString& shown, Origin& origin) const;

private:
    QTranslator m_catalogue;
    bool m_loaded = false;
    mutable std::mutex m_mutex;
    mutable QHash<QString, Origin> m_origins;
};

class Language {
public:
    Language();
    ~Language();
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

    // Installs the texts of `code` (LanguageEnglish or LanguagePersian; anything else is
    // English) and the layout direction. False when the Persian catalogue is missing.
    bool set(const QString& code);
    const QString& code() const { return m_code; }
    // Gives every text of `root` and of the widgets and actions under it again.
    void retranslate(QWidget* root) const;

private:
    QString again(QObject* object, const char* slot, const QString& shown) const;

    std::unique_ptr<TextBook> m_book;
    std::unique_ptr<QTranslator> m_qt; // the texts of Qt's own dialogs
    QString m_code = LanguageEnglish;
};

} // namespace tahrir::ui
