#include "platform/PrivateRuntime.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace PrivateRuntime {

namespace {

void complain(const QString &path, const char *reason)
{
    std::fprintf(stderr, "ZELMOR Helper: not using %s for local sockets: %s\n",
                 qPrintable(QDir::toNativeSeparators(path)), reason);
}

} // namespace

bool isPrivateFolder(const QString &path)
{
    struct stat info = {};
    if (::lstat(QFile::encodeName(path).constData(), &info) != 0)
        return false;
    return S_ISDIR(info.st_mode) && info.st_uid == ::getuid() && (info.st_mode & 077) == 0;
}

QString directory()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    // A runtime folder that is relative or not ours is as good as none.
    if (!runtime.isEmpty() && QDir::isAbsolutePath(runtime) && isPrivateFolder(runtime))
        return runtime;

    const QString fallback =
        QDir::tempPath() + QStringLiteral("/zelmor-runtime-") + QString::number(::getuid());
    const QByteArray encoded = QFile::encodeName(fallback);
    // mkdir never follows a link at the final name and applies the mode
    // atomically; an existing entry is checked instead of trusted.
    if (::mkdir(encoded.constData(), 0700) != 0 && errno != EEXIST) {
        complain(fallback, std::strerror(errno));
        return {};
    }
    struct stat info = {};
    if (::lstat(encoded.constData(), &info) != 0) {
        complain(fallback, std::strerror(errno));
        return {};
    }
    if (!S_ISDIR(info.st_mode)) {
        complain(fallback, "it is not a folder");
        return {};
    }
    if (info.st_uid != ::getuid()) {
        complain(fallback, "it belongs to another user");
        return {};
    }
    if ((info.st_mode & 077) != 0) {
        complain(fallback, "others may use it (its mode is wider than 0700)");
        return {};
    }
    return fallback;
}

QString socketPath(const QString &name)
{
    const QString folder = directory();
    return folder.isEmpty() ? QString() : folder + QLatin1Char('/') + name;
}

} // namespace PrivateRuntime
