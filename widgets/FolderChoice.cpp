#include "widgets/FolderChoice.h"

#include <QDir>
#include <QFileInfo>

namespace FolderChoice {

namespace {

QString expandHome(const QString &path, const QString &home)
{
    if (path == QLatin1String("~"))
        return home;
    if (path.startsWith(QLatin1String("~/")))
        return home + path.mid(1);
    return path;
}

QString parentOf(const QString &cleanPath)
{
    const qsizetype slash = cleanPath.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : cleanPath.left(slash);
}

} // namespace

bool isExistingFolder(const QString &path)
{
    return QFileInfo(path).isDir();
}

QString shownFolder(const QString &shown, const QString &typed, const QString &home,
                    const IsFolder &isFolder)
{
    const bool isPath = typed.startsWith(QLatin1Char('/')) || typed == QLatin1String("~")
                        || typed.startsWith(QLatin1String("~/")) || typed.contains(QLatin1Char('/'));
    if (!isPath)
        return shown;
    QString path = expandHome(typed, home);
    if (!path.startsWith(QLatin1Char('/')))
        path = shown + QLatin1Char('/') + path;
    path = QDir::cleanPath(path);
    return isFolder(path) ? path : shown;
}

QString startFolder(const QString &stored, const QString &appended, const QString &home,
                    const IsFolder &isFolder)
{
    const QString path = expandHome(stored, home);
    if (!path.startsWith(QLatin1Char('/')))
        return home;
    QString folder;
    if (appended.isEmpty())
        folder = path;
    else if (path.endsWith(appended))
        folder = path.left(path.size() - appended.size());
    else
        folder = parentOf(QDir::cleanPath(path));
    folder = folder.isEmpty() ? QStringLiteral("/") : QDir::cleanPath(folder);
    while (!isFolder(folder)) {
        if (folder == QLatin1String("/"))
            return home;
        folder = parentOf(folder);
    }
    return folder;
}

} // namespace FolderChoice
