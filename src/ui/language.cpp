#include "ui/language.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>

namespace tahrir::ui {

QString SystemLanguage() {
    return QLocale::system().language() == QLocale::Persian ? LanguagePersian : LanguageEnglish;
}

QString TextBook::translate(const char* context, const char* source, const char* disambiguation, int n) const {
    const QString out = m_loaded ? m_catalogue.translate(context, source, disambiguation, n) : QString();
    if (n < 0 && context && source) {
        const std::lock_guard lock(m_mutex);
        m_origins.insert(out.isEmpty() ? QString::fromUtf8(source) : out, {QByteArray(context), QByteArray(source)});
    }
    return out;
}

bool TextBook::loadCatalogue(const QString& code) {
    m_loaded = code != LanguageEnglish && m_catalogue.load(":/i18n/tahrir_" + code + ".qm");
    return m_loaded || code == LanguageEnglish;
}

bool TextBook::originOf(const QString& shown, Origin& origin) const {
    const std::lock_guard lock(m_mutex);
    const auto it = m_origins.constFind(shown);
    if (it == m_origins.constEnd()) return false;
    origin = *it;
    return true;
}

Language::Language() : m_book(std::make_unique<TextBook>()), m_qt(std::make_unique<QTranslator>()) {
    QCoreApplication::installTranslator(m_book.get());
}

Language::~Language() {
    QCoreApplication::removeTranslator(m_qt.get());
    QCoreApplication::removeTranslator(m_book.get());
}

bool Language::set(const QString& code) {
    const bool persian = code == LanguagePersian;
    m_code = persian ? LanguagePersian : LanguageEnglish;
    const bool loaded = m_book->loadCatalogue(m_code);
    if (!loaded) m_code = LanguageEnglish;
    QCoreApplication::removeTranslator(m_qt.get());
    if (persian && m_qt->load(QLocale(QLocale::Persian), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(m_qt.get());
    QApplication::setLayoutDirection(persian && loaded ? Qt::RightToLeft : Qt::LeftToRight);
    return loaded;
}

// The text `shown` in the slot `slot` of `object`, in the current language. Where it came
// from is kept on the object, for as long as the slot still shows what was given.
QString Language::again(QObject* object, const char* slot, const QString& shown) const {
    if (shown.isEmpty()) return shown;
    const QByteArray key = QByteArray("tahrirText_") + slot;
    const QStringList kept = object->property(key.constData()).toStringList();
    TextBook::Origin origin;
    if (kept.size() == 3 && kept[2] == shown)
        origin = {kept[0].toUtf8(), kept[1].toUtf8()};
    else if (!m_book->originOf(shown, origin))
        return shown;
    const QString text = QCoreApplication::translate(origin.first.constData(), origin.second.constData());
    object->setProperty(key.constData(), QStringList{QString::fromUtf8(origin.first), QString::fromUtf8(origin.second), text});
    return text;
}

void Language::retranslate(QWidget* root) const {
    // Sets a slot only when its text changes, so that texts never given stay unset.
    const auto redo = [this](auto* object, const char* slot, const QString& shown, auto setter) {
        const QString text = again(object, slot, shown);
        if (text != shown) (object->*setter)(text);
    };
    QList<QWidget*> widgets = root->findChildren<QWidget*>();
    widgets.prepend(root);
    for (QWidget* w : widgets) {
        redo(w, "title", w->windowTitle(), &QWidget::setWindowTitle);
        redo(w, "tip", w->toolTip(), &QWidget::setToolTip);
        if (auto* b = qobject_cast<QAbstractButton*>(w)) redo(b, "text", b->text(), &QAbstractButton::setText);
        if (auto* l = qobject_cast<QLabel*>(w)) redo(l, "text", l->text(), &QLabel::setText);
        if (auto* g = qobject_cast<QGroupBox*>(w)) redo(g, "text", g->title(), &QGroupBox::setTitle);
        if (auto* m = qobject_cast<QMenu*>(w)) redo(m, "text", m->title(), &QMenu::setTitle);
        if (auto* e = qobject_cast<QLineEdit*>(w)) redo(e, "hint", e->placeholderText(), &QLineEdit::setPlaceholderText);
        if (auto* e = qobject_cast<QPlainTextEdit*>(w))
            redo(e, "hint", e->placeholderText(), &QPlainTextEdit::setPlaceholderText);
        if (auto* c = qobject_cast<QComboBox*>(w))
            for (int i = 0; i < c->count(); ++i)
                c->setItemText(i, again(c, QByteArray::number(i).prepend("item").constData(), c->itemText(i)));
        if (auto* t = qobject_cast<QTabWidget*>(w))
            for (int i = 0; i < t->count(); ++i)
                t->setTabText(i, again(t, QByteArray::number(i).prepend("tab").constData(), t->tabText(i)));
    }
    for (QAction* a : root->findChildren<QAction*>()) {
        redo(a, "text", a->text(), &QAction::setText);
        redo(a, "tip", a->toolTip(), &QAction::setToolTip);
    }
}

} // namespace tahrir::ui
