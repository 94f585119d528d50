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
    // Unreadable: damaged (not a settings file); the next write keeps it
    // aside and starts afresh. Inaccessible (no permission to read it) and
    // TooLarge (above SettingsFile::MaxBytes) are left exactly as they are:
    // they read as empty and every write is refused.
    enum class State { Missing, Valid, Unreadable, Inaccessible, TooLarge };

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

    // What went wrong or was noticed in the last call, in one sentence for
    // the user (a file that cannot be read, a refused write, a damaged file
    // kept aside); empty when nothing did.
    QString problem() const { return m_problem; }

private:
    template <typename Change> bool modify(Change change);

    QString m_domain;
    mutable QString m_problem;
};
