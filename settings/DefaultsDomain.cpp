#include "settings/DefaultsDomain.h"

#include "platform/UserFolders.h"
#include "settings/SettingsFile.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QThread>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>

// Linux and other systems without a native defaults database: one JSON file
// per domain under $XDG_CONFIG_HOME (SettingsFile gives its text). The
// application and the `defaults` tool may write it at the same moment, so
// every read-modify-write holds "<file>.lock".

namespace {

// A writer holds the lock for a few milliseconds. One that holds it far
// longer is hung; its lock is then taken over. One that died is noticed at
// once (QLockFile checks its process).
constexpr int kStaleLockMs = 5000;
constexpr int kLockWaitMs = 6000;

// QLockFile::tryLock(timeout) backs off up to seconds between tries, so a
// writer that comes back often could keep another out for good. Short
// pauses give every writer its turn within milliseconds.
bool acquire(QLockFile &lock)
{
    lock.setStaleLockTime(kStaleLockMs);
    QElapsedTimer waited;
    waited.start();
    unsigned long pause = 1;
    while (!lock.tryLock(0)) {
        if (lock.error() != QLockFile::LockFailedError || waited.elapsed() > kLockWaitMs)
            return false;
        QThread::msleep(pause);
        pause = std::min(pause * 2, 16UL);
    }
    return true;
}

struct Loaded
{
    DefaultsDomain::State state = DefaultsDomain::State::Missing;
    QJsonObject object;
    QString reason; // why a file that exists was not read
};

Loaded load(const QString &path)
{
    Loaded result;
    QFile file(path);
    if (!file.exists())
        return result;
    if (!file.open(QIODevice::ReadOnly)) {
        result.state = DefaultsDomain::State::Inaccessible;
        result.reason = file.errorString();
        return result;
    }
    if (file.size() > SettingsFile::MaxBytes) {
        result.state = DefaultsDomain::State::TooLarge;
        return result;
    }
    // The size may have grown since; read no more than the limit allows.
    const QByteArray data = file.read(SettingsFile::MaxBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        result.state = DefaultsDomain::State::Inaccessible;
        result.reason = file.errorString();
    } else if (data.size() > SettingsFile::MaxBytes) {
        result.state = DefaultsDomain::State::TooLarge;
    } else if (!SettingsFile::parse(data, &result.object)) {
        result.state = DefaultsDomain::State::Unreadable;
    } else {
        result.state = DefaultsDomain::State::Valid;
    }
    return result;
}

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

QString problemText(const QString &path, const Loaded &loaded)
{
    switch (loaded.state) {
    case DefaultsDomain::State::Unreadable:
        return QStringLiteral("settings file %1 cannot be read; using the defaults until the next "
                              "change, which keeps the old file aside")
            .arg(native(path));
    case DefaultsDomain::State::Inaccessible:
        return QStringLiteral("settings file %1 cannot be opened (%2); it is left as it is and "
                              "no change is saved to it")
            .arg(native(path), loaded.reason);
    case DefaultsDomain::State::TooLarge:
        return QStringLiteral("settings file %1 is larger than %2 bytes, too large to be a "
                              "settings file; it is left as it is and no change is saved to it")
            .arg(native(path))
            .arg(SettingsFile::MaxBytes);
    case DefaultsDomain::State::Missing:
    case DefaultsDomain::State::Valid:
        break;
    }
    return {};
}

// A damaged file may be the user's only copy of their settings: it is
// renamed, never overwritten.
QString keepAside(const QString &path)
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString target = path + QStringLiteral(".unreadable-") + stamp;
    for (int n = 2; QFileInfo::exists(target); ++n)
        target = path + QStringLiteral(".unreadable-") + stamp + QLatin1Char('-') + QString::number(n);
    if (QFile::rename(path, target))
        return QStringLiteral("kept the unreadable settings file as %1").arg(native(target));
    return {};
}

// QSaveFile writes "<file>.XXXXXX" (six letters or digits) and renames it
// over the file. A writer killed in between leaves that behind; under the
// lock no live writer owns one, so every such file is a leftover.
void removeLeftovers(const QString &path)
{
    const QFileInfo info(path);
    const QString prefix = info.fileName() + QLatin1Char('.');
    static const QRegularExpression suffix(QStringLiteral("^[A-Za-z0-9]{6}$"));
    const QDir folder = info.absoluteDir();
    const QStringList names =
        folder.entryList({prefix + QStringLiteral("??????")},
                         QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        if (suffix.match(name.mid(prefix.size())).hasMatch())
            QFile::remove(folder.filePath(name));
    }
}

bool save(const QString &path, const QJsonObject &object)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(SettingsFile::encode(object));
    return file.commit();
}

} // namespace

DefaultsDomain::DefaultsDomain(QString domain) : m_domain(std::move(domain)) {}

QString DefaultsDomain::filePathForDomain(const QString &domain)
{
    return UserFolders::config() + QLatin1Char('/') + domain + QStringLiteral(".json");
}

QString DefaultsDomain::filePath() const
{
    return filePathForDomain(m_domain);
}

DefaultsDomain::State DefaultsDomain::state() const
{
    const Loaded loaded = load(filePath());
    m_problem = problemText(filePath(), loaded);
    return loaded.state;
}

QVariantMap DefaultsDomain::values() const
{
    const Loaded loaded = load(filePath());
    m_problem = problemText(filePath(), loaded);
    return SettingsFile::valuesOf(loaded.object);
}

QVariant DefaultsDomain::value(const QString &key) const
{
    return values().value(key);
}

// Read-modify-write of the whole file under the lock; the rename in
// QSaveFile::commit makes the write itself atomic, so a reader or a crash
// never sees half a file.
template <typename Change> bool DefaultsDomain::modify(Change change)
{
    const QString path = filePath();
    m_problem.clear();
    QDir().mkpath(QFileInfo(path).absolutePath());
    QLockFile lock(path + QStringLiteral(".lock"));
    if (!acquire(lock)) {
        m_problem = QStringLiteral("settings file %1 stays locked by another program (%2); the "
                                   "change is not saved")
                        .arg(native(path), native(path + QStringLiteral(".lock")));
        return false;
    }
    removeLeftovers(path);
    Loaded loaded = load(path);
    switch (loaded.state) {
    case State::Inaccessible:
    case State::TooLarge:
        m_problem = problemText(path, loaded);
        return false;
    case State::Unreadable:
        m_problem = keepAside(path);
        loaded.object = {};
        break;
    case State::Missing:
    case State::Valid:
        break;
    }
    if (!change(loaded.object))
        return false;
    if (!save(path, loaded.object)) {
        m_problem = QStringLiteral("settings file %1 could not be written").arg(native(path));
        return false;
    }
    return true;
}

bool DefaultsDomain::setValue(const QString &key, const QVariant &value)
{
    return modify([&](QJsonObject &object) {
        object.insert(key, SettingsFile::toJson(value));
        return true;
    });
}

bool DefaultsDomain::removeValue(const QString &key)
{
    return modify([&](QJsonObject &object) {
        if (!object.contains(key))
            return false;
        object.remove(key);
        return true;
    });
}

bool DefaultsDomain::removeDomain()
{
    const QString path = filePath();
    m_problem.clear();
    QLockFile lock(path + QStringLiteral(".lock"));
    // Without the folder there is nothing to remove and nowhere to lock.
    if (QFileInfo(path).absoluteDir().exists() && !acquire(lock)) {
        m_problem = QStringLiteral("settings file %1 stays locked by another program")
                        .arg(native(path));
        return false;
    }
    removeLeftovers(path);
    return QFile::remove(path);
}
