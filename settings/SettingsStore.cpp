#include "settings/SettingsStore.h"

#include "BuildConfig.h"
#include "settings/SettingsKeys.h"
#include "text/TextNumbers.h"

#include <QMutex>
#include <QSet>

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

// Once per text and process: a settings read happens at every click, and a
// file that cannot be read would otherwise be reported each time.
void reportOnce(const QString &problem)
{
    if (problem.isEmpty())
        return;
    static QMutex mutex;
    static QSet<QString> reported;
    QMutexLocker lock(&mutex);
    if (reported.contains(problem))
        return;
    reported.insert(problem);
    qWarning("ZELMOR Helper: %s", qPrintable(problem));
}

} // namespace

SettingsStore::SettingsStore(const QString &domain) : m_domain(domain) {}

SettingsStore &SettingsStore::standard()
{
    static SettingsStore store(QStringLiteral(ZELMOR_BUNDLE_ID));
    return store;
}

void SettingsStore::registerDefaults(const QString &key, const QVariant &value)
{
    for (auto &entry : m_registered) {
        if (entry.first == key) {
            entry.second = value;
            return;
        }
    }
    m_registered.append({key, value});
}

void SettingsStore::registerApplicationDefaults(const QString &appLocation)
{
    using namespace SettingsKeys;
    registerDefaults(QuitStatusbarApp, QStringLiteral("0"));
    registerDefaults(DefaultNameZELMOR, QStringLiteral("1"));
    registerDefaults(Log, QStringLiteral("0"));
    registerDefaults(Initialization, QStringLiteral("1"));
    registerDefaults(FirstLaunch, QStringLiteral("1"));
    registerDefaults(Workspace, DefaultWorkspace);
    registerDefaults(Output, DefaultOutput);
    registerDefaults(AppLocation, appLocation);
}

QStringList SettingsStore::registeredKeys() const
{
    QStringList keys;
    for (const auto &entry : m_registered)
        keys.append(entry.first);
    return keys;
}

QVariant SettingsStore::registeredDefault(const QString &key) const
{
    for (const auto &entry : m_registered) {
        if (entry.first == key)
            return entry.second;
    }
    return {};
}

QVariant SettingsStore::objectForKey(const QString &key) const
{
    const QVariant stored = m_domain.value(key);
    reportOnce(m_domain.problem());
    return stored.isValid() ? stored : registeredDefault(key);
}

void SettingsStore::setObject(const QString &key, const QVariant &value)
{
    m_domain.setValue(key, value);
    reportOnce(m_domain.problem());
}

void SettingsStore::removeObject(const QString &key)
{
    m_domain.removeValue(key);
    reportOnce(m_domain.problem());
}

int SettingsStore::intValue(const QString &key) const
{
    return intValueOf(objectForKey(key));
}

QString SettingsStore::stringValue(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.isValid() ? value.toString() : QString();
}

bool SettingsStore::isEqualToString(const QString &key, const QString &text) const
{
    const QVariant value = objectForKey(key);
    return value.typeId() == QMetaType::QString && value.toString() == text;
}

int intValueOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return TextNumbers::integerValue(value.toString());
    case QMetaType::Double:
    case QMetaType::Float: {
        // Converting NaN, or a double outside int's range, is undefined;
        // NaN is no number and reads as 0, the rest saturates.
        const double d = value.toDouble();
        if (std::isnan(d))
            return 0;
        return static_cast<int>(std::clamp<double>(d, INT_MIN, INT_MAX));
    }
    case QMetaType::Bool:
        return value.toBool() ? 1 : 0;
    case QMetaType::UnknownType:
        return 0;
    default: {
        bool ok = false;
        const long long n = value.toLongLong(&ok);
        return ok ? static_cast<int>(std::clamp<long long>(n, INT_MIN, INT_MAX)) : 0;
    }
    }
}
