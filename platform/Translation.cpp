#include "platform/Translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

// A few texts name macOS tools (the first-launch sheet's prerequisites);
// the Linux build has its own wording for them, in the language of the main
// table (English when none matched). Installed after the main table, so it
// is asked first.
void installSystemTexts(const QString &language)
{
#ifdef Q_OS_MACOS
    Q_UNUSED(language)
#else
    auto *system = new QTranslator(QCoreApplication::instance());
    if (system->load(language.isEmpty() ? QLocale(QLocale::English) : QLocale(language),
                     QStringLiteral("zelmorhelper_linux"), QStringLiteral("_"),
                     QStringLiteral(":/i18n")))
        QCoreApplication::installTranslator(system);
    else
        delete system;
#endif
}

} // namespace

QString installTranslator()
{
    // QLocale() is the user's locale unless the program set another default;
    // its UI languages follow LANGUAGE, so "fr:de" picks the first that ships.
    auto *own = new QTranslator(QCoreApplication::instance());
    if (!own->load(QLocale(), QStringLiteral("zelmorhelper"), QStringLiteral("_"),
                   QStringLiteral(":/i18n"))) {
        delete own;
        installSystemTexts({});
        return {};
    }
    QCoreApplication::installTranslator(own);
    const QString language = own->language();
    installSystemTexts(language);

    // Qt's texts follow the table that was chosen, not the first UI language,
    // so a user of a language this bundle does not ship sees English
    // throughout. Without Qt's translations installed only Qt's texts stay
    // English.
    auto *qt = new QTranslator(QCoreApplication::instance());
    if (qt->load(QLocale(language), QStringLiteral("qtbase"), QStringLiteral("_"),
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qt);
    else
        delete qt;
    return language;
}
