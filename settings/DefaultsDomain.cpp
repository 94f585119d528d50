#include "settings/DefaultsDomain.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QSaveFile>
#include <QSet>

#include <cmath>

// Linux and other systems without a native defaults database: one JSON file
// per domain under $XDG_CONFIG_HOME. JSON keeps numbers and strings apart,
// which an INI file would not.

namespace {

QVariant fromJson(const QJsonValue &value)
{
    if (value.isString())
        return value.toString();
    if (value.isDouble()) {
        const double d = value.toDouble();
        if (std::trunc(d) == d && std::fabs(d) < 9.0e15)
            return QVariant::fromValue<qlonglong>(static_cast<qlonglong>(d));
        return d;
    }
    if (value.isBool())
        return QVariant::fromValue<qlonglong>(value.toBool() ? 1 : 0);
    return {};
}

QJsonValue toJson(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return value.toString();
    case QMetaType::Double:
    case QMetaType::Float:
        return value.toDouble();
    default:
        return QJsonValue(value.toLongLong());
    }
}

// Warn once per file and process; a settings read happens at every click.
void warnUnreadable(const QString &path)
{
    static QMutex mutex;
    static QSet<QString> warned;
    QMutexLocker lock(&mutex);
    if (warned.contains(path))
        return;
    warned.insert(path);
    qWarning("ZELMOR Helper: settings file %s cannot be read; using the defaults until the next "
             "change, which keeps the old file aside",
             qPrintable(QDir::toNativeSeparators(path)));
}

DefaultsDomain::State load(const QString &path, QJsonObject *out)
{
    QFile file(path);
    if (!file.exists())
        return DefaultsDomain::State::Missing;
    if (!file.open(QIODevice::ReadOnly))
        return DefaultsDomain::State::Unreadable;
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        return DefaultsDomain::State::Unreadable;
    *out = doc.object();
    return DefaultsDomain::State::Valid;
}

// An unreadable file may be the user's only copy of their settings: it is
// renamed, never overwritten.
void keepAside(const QString &path)
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString target = path + QStringLiteral(".unreadable-") + stamp;
    for (int n = 2; QFileInfo::exists(target); ++n)
        target = path + QStringLiteral(".unreadable-") + stamp + QLatin1Char('-') + QString::number(n);
    if (QFile::rename(path, target))
        qWarning("ZELMOR Helper: kept the unreadable settings file as %s",
                 qPrintable(QDir::toNativeSeparators(target)));
}

bool save(const QString &path, const QJsonObject &object)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QJsonDocument(object).toJson(QJsonDocument::Indented));
    return file.commit();
}

// Read-modify-write of the whole file; the rename in QSaveFile::commit makes
// it atomic, so a reader or a crash never sees half a file.
template <typename Change> bool modify(const QString &path, Change change)
{
    QJsonObject object;
    if (load(path, &object) == DefaultsDomain::State::Unreadable) {
        keepAside(path);
        object = {};
    }
    if (!change(object))
        return false;
    return save(path, object);
}

} // namespace

DefaultsDomain::DefaultsDomain(QString domain) : m_domain(std::move(domain)) {}

QString DefaultsDomain::filePathForDomain(const QString &domain)
{
    QString base = qEnvironmentVariable("XDG_CONFIG_HOME");
    // XDG base directories must be absolute; a relative value is ignored.
    if (base.isEmpty() || QDir::isRelativePath(base))
        base = QDir::homePath() + QStringLiteral("/.config");
    return base + QLatin1Char('/') + domain + QStringLiteral(".json");
}

QString DefaultsDomain::filePath() const
{
    return filePathForDomain(m_domain);
}

DefaultsDomain::State DefaultsDomain::state() const
{
    QJsonObject ignored;
    return load(filePath(), &ignored);
}

QVariantMap DefaultsDomain::values() const
{
    QJsonObject object;
    const State s = load(filePath(), &object);
    if (s == State::Unreadable)
        warnUnreadable(filePath());
    QVariantMap map;
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QVariant v = fromJson(it.value());
        if (v.isValid())
            map.insert(it.key(), v);
    }
    return map;
}

QVariant DefaultsDomain::value(const QString &key) const
{
    return values().value(key);
}

bool DefaultsDomain::setValue(const QString &key, const QVariant &value)
{
    return modify(filePath(), [&](QJsonObject &object) {
        object.insert(key, toJson(value));
        return true;
    });
}

bool DefaultsDomain::removeValue(const QString &key)
{
    return modify(filePath(), [&](QJsonObject &object) {
        if (!object.contains(key))
            return false;
        object.remove(key);
        return true;
    });
}

bool DefaultsDomain::removeDomain()
{
    return QFile::remove(filePath());
}
