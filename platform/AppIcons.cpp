#include "platform/AppIcons.h"

namespace {

QIcon loadIcon(const QString &name)
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/hicolor/%1x%1/apps/%2.png").arg(size).arg(name),
                     QSize(size, size));
    return icon;
}

} // namespace

namespace AppIcons {

QIcon application()
{
    return loadIcon(QLatin1String(ApplicationId));
}

QIcon companion()
{
    return loadIcon(QLatin1String(CompanionId));
}

} // namespace AppIcons
