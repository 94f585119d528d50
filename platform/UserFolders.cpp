#include "platform/UserFolders.h"

#include <QDir>
#include <QStandardPaths>

namespace UserFolders {

QString config()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (folder.isEmpty() || QDir::isRelativePath(folder))
        return QDir::homePath() + QStringLiteral("/.config");
    return folder;
}

} // namespace UserFolders
