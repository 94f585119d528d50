#include "companions/installer/PackageKitInstaller.h"

#include "companions/installer/PackageKitRules.h"
#include "companions/installer/PackageKitTransaction.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QFileInfo>

using namespace PackageKitRules;

namespace {

const QString service = QStringLiteral("org.freedesktop.PackageKit");

} // namespace

PackageKitInstaller::PackageKitInstaller(QDBusConnection bus, InstallCommands::PackageTable table,
                                         QString cmakeProgram, QObject *parent)
    : PackageInstaller(parent), m_bus(std::move(bus)), m_table(std::move(table)),
      m_cmakeProgram(std::move(cmakeProgram))
{
    m_queueWait.setSingleShot(true);
    m_queueWait.setInterval(1000);
    connect(&m_queueWait, &QTimer::timeout, this, [this] {
        if (m_status == StatusWait)
            emit statusChanged(statusLine(m_status, m_package));
    });
    // A daemon that goes away in the middle sends nothing more.
    auto *watcher =
        new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        if (m_step != Step::Idle && m_step != Step::CheckingNetwork)
            end(stoppedMidway());
    });
}

QStringList PackageKitInstaller::packagesFor(const QList<ComponentChecks::Component> &missing) const
{
    const QFileInfo packagedCmake(
        InstallCommands::packagedCmake(ComponentChecks::Platform::Debian));
    return packagesToRequest(missing, m_table, m_cmakeProgram,
                             packagedCmake.isFile() && packagedCmake.isExecutable());
}

void PackageKitInstaller::install(const QList<ComponentChecks::Component> &missing,
                                  bool refreshFirst)
{
    if (m_step != Step::Idle)
        return;
    m_requested = packagesFor(missing);
    m_refreshFirst = refreshFirst && !m_refreshed;
    m_unavailable.clear();
    m_step = Step::CheckingNetwork;
    if (!m_bus.isConnected()) {
        // Never from within install(): the caller is still setting up.
        QMetaObject::invokeMethod(
            this, [this] { end(noPackageKit()); }, Qt::QueuedConnection);
        return;
    }
    checkNetwork();
}

void PackageKitInstaller::cancel()
{
    // PackageKit takes a cancel even when it says it cannot honour one; it
    // is not offered then.
    if (m_transaction && m_cancellable)
        m_transaction->cancel();
}

void PackageKitInstaller::checkNetwork()
{
    QDBusMessage get = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/PackageKit"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get.setArguments({service, QStringLiteral("NetworkState")});
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(get), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *done) {
                done->deleteLater();
                const QDBusMessage reply = done->reply();
                if (reply.type() == QDBusMessage::ErrorMessage) {
                    end(noPackageKit());
                    return;
                }
                const QVariant state =
                    qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant();
                if (state.toUInt() == NetworkOffline)
                    end(offline());
                else if (m_refreshFirst)
                    run(Step::Refreshing, QStringLiteral("RefreshCache"), {false});
                else
                    resolve();
            });
}

void PackageKitInstaller::resolve()
{
    run(Step::Resolving, QStringLiteral("Resolve"),
        {QVariant::fromValue(ResolveFilters), m_requested});
}

void PackageKitInstaller::run(Step step, const QString &method, const QVariantList &arguments)
{
    dropTransaction();
    m_step = step;
    m_found.clear();
    m_error.reset();
    m_errorDetails.clear();
    m_package.clear();
    m_transaction = new PackageKitTransaction(m_bus, this);
    connect(m_transaction, &PackageKitTransaction::propertiesChanged, this,
            &PackageKitInstaller::onProperties);
    connect(m_transaction, &PackageKitTransaction::package, this, &PackageKitInstaller::onPackage);
    connect(m_transaction, &PackageKitTransaction::errorCode, this,
            [this](uint code, const QString &details) {
                if (!m_error) {
                    m_error = code;
                    m_errorDetails = details;
                }
            });
    connect(m_transaction, &PackageKitTransaction::finished, this,
            &PackageKitInstaller::onFinished);
    connect(m_transaction, &PackageKitTransaction::dropped, this, [this] { end(stoppedMidway()); });
    connect(m_transaction, &PackageKitTransaction::callFailed, this,
            &PackageKitInstaller::onCallFailed);
    m_transaction->start(method, arguments);
}

void PackageKitInstaller::onProperties(const QVariantMap &properties)
{
    if (properties.contains(QStringLiteral("Percentage")))
        emit progressChanged(progressFor(properties.value(QStringLiteral("Percentage")).toUInt()));
    if (properties.contains(QStringLiteral("AllowCancel"))) {
        m_cancellable = properties.value(QStringLiteral("AllowCancel")).toBool();
        emit cancellableChanged(m_cancellable);
    }
    if (properties.contains(QStringLiteral("Status"))) {
        m_status = properties.value(QStringLiteral("Status")).toUInt();
        // Every transaction waits in the queue for a moment, also when no
        // other installer is there; only a wait that lasts is news.
        if (m_status == StatusWait) {
            m_queueWait.start();
        } else {
            m_queueWait.stop();
            emit statusChanged(statusLine(m_status, m_package));
        }
    }
}

void PackageKitInstaller::onPackage(uint info, const QString &packageId)
{
    if (m_step == Step::Resolving) {
        m_found << packageId;
    } else if (info == InfoDownloading || info == InfoInstalling) {
        m_package = packageId;
        emit statusChanged(statusLine(m_status, m_package));
    }
}

void PackageKitInstaller::onFinished(uint exit)
{
    if (exit != ExitSuccess || m_step == Step::Installing) {
        end(outcomeOf(exit, m_error, m_errorDetails, m_unavailable));
        return;
    }
    if (m_step == Step::Refreshing) {
        m_refreshed = true;
        resolve();
        return;
    }
    const ResolveStep next = afterResolve(m_requested, m_found, m_refreshed);
    switch (next.action) {
    case ResolveStep::Action::Install:
        m_unavailable = next.unavailable;
        run(Step::Installing, QStringLiteral("InstallPackages"),
            {QVariant::fromValue(OnlyTrusted), next.packageIds});
        break;
    case ResolveStep::Action::OfferRefresh:
        end(offerRefresh(next.unavailable));
        break;
    case ResolveStep::Action::NothingAvailable:
        end(nothingAvailable(next.unavailable));
        break;
    }
}

void PackageKitInstaller::onCallFailed(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::NoServer:
    case QDBusError::Disconnected:
        end(noPackageKit());
        break;
    case QDBusError::NoReply:
    case QDBusError::UnknownObject:
        end(stoppedMidway());
        break;
    default:
        end(outcomeOf(ExitFailed, {}, error.message()));
        break;
    }
}

void PackageKitInstaller::end(const InstallOutcome &outcome)
{
    if (m_step == Step::Idle)
        return;
    m_step = Step::Idle;
    m_queueWait.stop();
    dropTransaction();
    m_cancellable = false;
    emit cancellableChanged(false);
    emit finished(outcome);
}

void PackageKitInstaller::dropTransaction()
{
    // What the daemon still sends about it (its Destroy) is no news.
    if (m_transaction) {
        m_transaction->disconnect(this);
        m_transaction->deleteLater();
    }
}
