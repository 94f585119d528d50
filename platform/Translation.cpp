#include "platform/Translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

void installTranslator()
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale(), QStringLiteral("zelmorhelper"), QStringLiteral("_"),
                         QStringLiteral(":/i18n")))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}
