#pragma once

#include "companions/installer/InstallCommands.h"
#include "companions/installer/PackageInstaller.h"

#include <QDBusConnection>
#include <QPointer>
#include <QTimer>

#include <optional>

class PackageKitTransaction;
class QDBusError;

// Installs through PackageKit on the given bus (the system bus; tests give a
// private one), as the desktop's software centres do: the package manager
// asks the desktop's password prompt, never this program. Package names come
// only from the table given at construction.
class PackageKitInstaller : public PackageInstaller
{
    Q_OBJECT

public:
    PackageKitInstaller(QDBusConnection bus, InstallCommands::PackageTable table,
                        QString cmakeProgram, QObject *parent = nullptr);

    QStringList packagesFor(const QList<ComponentChecks::Component> &missing) const override;
    void install(const QList<ComponentChecks::Component> &missing, bool refreshFirst) override;
    void cancel() override;

private:
    enum class Step { Idle, CheckingNetwork, Refreshing, Resolving, Installing };

    void checkNetwork();
    void resolve();
    void run(Step step, const QString &method, const QVariantList &arguments);
    void onProperties(const QVariantMap &properties);
    void onPackage(uint info, const QString &packageId);
    void onFinished(uint exit);
    void onCallFailed(const QDBusError &error);
    void end(const InstallOutcome &outcome);
    void dropTransaction();

    QDBusConnection m_bus;
    const InstallCommands::PackageTable m_table;
    const QString m_cmakeProgram;
    Step m_step = Step::Idle;
    bool m_refreshFirst = false;
    // The package lists are refreshed at most once for as long as the
    // window is open.
    bool m_refreshed = false;
    QStringList m_requested;
    QStringList m_found;
    QStringList m_unavailable;
    std::optional<uint> m_error;
    QString m_errorDetails;
    uint m_status = 0;
    QString m_package;
    bool m_cancellable = false;
    QTimer m_queueWait;
    QPointer<PackageKitTransaction> m_transaction;
};
