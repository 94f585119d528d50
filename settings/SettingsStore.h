#pragma once

#include "settings/DefaultsDomain.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QVariant>

// Two layers: defaults registered at every start (memory only) and the
// persisted domain. A key's registered default answers while the persisted
// layer has no value for it.
class SettingsStore
{
public:
    explicit SettingsStore(const QString &domain);

    // The store of this application (domain: the bundle identifier).
    static SettingsStore &standard();

    void registerDefaults(const QString &key, const QVariant &value);
    // Registers the application's eight keys in their fixed order.
    void registerApplicationDefaults(const QString &appLocation);
    QStringList registeredKeys() const;
    QVariant registeredDefault(const QString &key) const;

    QVariant objectForKey(const QString &key) const;
    void setObject(const QString &key, const QVariant &value);
    void removeObject(const QString &key);

    // The platform's intValue: numbers yield themselves, strings their
    // leading decimal integer, anything else 0.
    int intValue(const QString &key) const;
    // Paths are handed out exactly as stored: no trimming, no "~", no checks.
    QString stringValue(const QString &key) const;
    // Exact comparison: only a stored string equal to text matches.
    bool isEqualToString(const QString &key, const QString &text) const;

    DefaultsDomain &persisted() { return m_domain; }

private:
    DefaultsDomain m_domain;
    QList<QPair<QString, QVariant>> m_registered;
};

// intValue of one value, following the platform's rules: leading white space,
// an optional sign, then digits; saturates at the 32-bit limits.
int intValueOf(const QVariant &value);
