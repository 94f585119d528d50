#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QObject>
#include <QVariantMap>

// One PackageKit transaction: created, subscribed to, given the session's
// hints, then one method called on it. Every answer arrives as a signal;
// nothing waits. A transaction is used once.
class PackageKitTransaction : public QObject
{
    Q_OBJECT

public:
    PackageKitTransaction(QDBusConnection bus, QObject *parent = nullptr);

    // method of org.freedesktop.PackageKit.Transaction, with its arguments.
    void start(const QString &method, const QVariantList &arguments);
    void cancel();

signals:
    // The transaction's properties as they are at first and whenever they
    // change (only the changed ones).
    void propertiesChanged(const QVariantMap &properties);
    void package(uint info, const QString &packageId);
    void errorCode(uint code, const QString &details);
    void finished(uint exit);
    // The daemon dropped the transaction without finishing it.
    void dropped();
    // A call was not answered: no daemon, or one that went away.
    void callFailed(const QDBusError &error);

private slots:
    void onPropertiesChanged(const QString &interface, const QVariantMap &changed,
                             const QStringList &invalidated);
    void onPackage(uint info, const QString &packageId, const QString &summary);
    void onErrorCode(uint code, const QString &details);
    void onFinished(uint exit, uint runtime);
    void onDestroy();

private:
    // Calls on the transaction; answered() gets the reply when there is no error.
    template <typename Answered>
    void call(const QString &interface, const QString &method, const QVariantList &arguments,
              Answered answered);
    void subscribe();

    QDBusConnection m_bus;
    QString m_path;
};
