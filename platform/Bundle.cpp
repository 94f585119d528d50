#include "platform/Bundle.h"

#include "BuildConfig.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QXmlStreamReader>

#include <cstdio>

namespace {

constexpr qint64 kMaxInfoBytes = 1024 * 1024;

QString &overriddenMainBundle()
{
    static QString path;
    return path;
}

// Reads the top-level dictionary of an XML property list, strings only,
// which is all an Info.plist needs here.
QMap<QString, QString> readPlistStrings(const QByteArray &data)
{
    QMap<QString, QString> result;
    QXmlStreamReader xml(data);
    int depth = 0;
    QString key;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++depth;
            // plist > dict > key/string: depth 3 inside the top dictionary.
            if (depth == 3 && xml.name() == QLatin1String("key")) {
                key = xml.readElementText();
                --depth;
            } else if (depth == 3 && xml.name() == QLatin1String("string") && !key.isEmpty()) {
                result.insert(key, xml.readElementText());
                key.clear();
                --depth;
            } else if (depth == 3) {
                key.clear();
            }
        } else if (xml.isEndElement()) {
            --depth;
        }
    }
    return result;
}

} // namespace

namespace Bundle {

std::optional<Info> readInfo(const QString &bundlePath)
{
    QFile file(bundlePath + QStringLiteral("/Contents/Info.plist"));
    // An Info.plist is a few kilobytes; anything huge is not one.
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxInfoBytes)
        return std::nullopt;
    return parseInfo(file.read(kMaxInfoBytes));
}

std::optional<Info> parseInfo(const QByteArray &plist)
{
    const auto values = readPlistStrings(plist);
    Info info;
    info.identifier = values.value(QStringLiteral("CFBundleIdentifier"));
    info.executable = values.value(QStringLiteral("CFBundleExecutable"));
    info.name = values.value(QStringLiteral("CFBundleName"));
    info.version = values.value(QStringLiteral("CFBundleShortVersionString"));
    if (info.identifier.isEmpty() || info.executable.isEmpty())
        return std::nullopt;
    return info;
}

QString executablePath(const QString &bundlePath)
{
    const auto info = readInfo(bundlePath);
    if (!info)
        return {};
    return bundlePath + QStringLiteral("/Contents/MacOS/") + info->executable;
}

QString mainBundlePath()
{
    if (!overriddenMainBundle().isEmpty())
        return overriddenMainBundle();
    const QString dir = QCoreApplication::applicationDirPath();
    const QString suffix = QStringLiteral("/Contents/MacOS");
    if (dir.endsWith(suffix)) {
        const QString bundle = dir.left(dir.size() - suffix.size());
        if (bundle.endsWith(QStringLiteral(".app")))
            return bundle;
    }
    return dir;
}

void setMainBundlePath(const QString &path)
{
    overriddenMainBundle() = path;
}

QString mainBundleIdentifier()
{
    const auto info = readInfo(mainBundlePath());
    return info ? info->identifier : QStringLiteral(ZELMOR_BUNDLE_ID);
}

QString statusbarAppPath()
{
    return QStringLiteral("%1/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app")
        .arg(mainBundlePath());
}

QString installerAppPath()
{
    return QStringLiteral("%1/Contents/Library/ZELMORInstallComponets.app").arg(mainBundlePath());
}

bool launchApplication(const QString &bundlePath, const QStringList &arguments)
{
#ifdef Q_OS_MACOS
    // `open` brings an already running instance forward instead of starting
    // a second one, as the platform's launcher does.
    QStringList args{QStringLiteral("-a"), bundlePath};
    if (!arguments.isEmpty())
        args << QStringLiteral("--args") << arguments;
    const QString program = QStringLiteral("/usr/bin/open");
    const QString folder;
#else
    const QString program = executablePath(bundlePath);
    if (program.isEmpty() || !QFileInfo(program).isExecutable()) {
        std::fprintf(stderr, "ZELMOR Helper: cannot launch %s\n", qPrintable(bundlePath));
        return false;
    }
    const QStringList args = arguments;
    const QString folder = QFileInfo(bundlePath).absolutePath();
#endif
    if (QProcess::startDetached(program, args, folder))
        return true;
    std::fprintf(stderr, "ZELMOR Helper: cannot launch %s\n", qPrintable(bundlePath));
    return false;
}

void exposeHelpersOnPath()
{
#ifndef Q_OS_MACOS
    const QString helpers = mainBundlePath() + QStringLiteral("/Contents/Helpers");
    if (!QFileInfo(helpers).isDir())
        return;
    const QByteArray path = qgetenv("PATH");
    const QByteArray first = QFile::encodeName(helpers);
    // A relaunched instance inherits the PATH this one set up.
    if (path == first || path.startsWith(first + ':'))
        return;
    qputenv("PATH", first + (path.isEmpty() ? QByteArray() : ":" + path));
#endif
}

} // namespace Bundle
