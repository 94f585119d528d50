#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

// The persisted layer of one settings domain (a reverse-DNS name). Values are
// strings or integers and keep their type: a number written here reads back
// as a number in any process, a string as a string.
//
// Nothing is cached: every call goes to the platform store, so a change made
// by another process (the `defaults` tool, "Reset All") is seen at once.
class DefaultsDomain
{
public:
    enum class State { Missing, Valid, Unreadable };

    explicit DefaultsDomain(QString domain);

    QString domain() const { return m_domain; }
    // Where the domain is kept; empty where the platform keeps it itself.
    QString filePath() const;
    static QString filePathForDomain(const QString &domain);

    State state() const;
    // All values; empty when the domain is missing or cannot be read.
    QVariantMap values() const;
    // An invalid QVariant when the key is not stored.
    QVariant value(const QString &key) const;
    // Strings are stored as strings, integral numbers as numbers. Returns
    // false when the store could not be written.
    bool setValue(const QString &key, const QVariant &value);
    bool removeValue(const QString &key);
    // Removes every value of the domain at once.
    bool removeDomain();

private:
    QString m_domain;
};
