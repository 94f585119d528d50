#include "platform/Translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

QString installTranslator()
{
    // QLocale() is the user's locale unless the program set another default;
    // its UI languages follow LANGUAGE, so "fr:de" picks the first that ships.
    auto *own = new QTranslator(QCoreApplication::instance());
    if (!own->load(QLocale(), QStringLiteral("zelmorhelper"), QStringLiteral("_"),
                   QStringLiteral(":/i18n"))) {
        delete own;
        return {};
    }
    QCoreApplication::installTranslator(own);
    const QString language = own->language();

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
