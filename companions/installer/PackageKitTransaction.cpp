#include "companions/installer/PackageKitTransaction.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QLocale>

namespace {

const QString service = QStringLiteral("org.freedesktop.PackageKit");
const QString transactionInterface = QStringLiteral("org.freedesktop.PackageKit.Transaction");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

} // namespace

PackageKitTransaction::PackageKitTransaction(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_bus(std::move(bus))
{
}

template <typename Answered>
void PackageKitTransaction::call(const QString &interface, const QString &method,
                                 const QVariantList &arguments, Answered answered)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, m_path.isEmpty() ? QStringLiteral("/org/freedesktop/PackageKit") : m_path,
        interface, method);
    message.setArguments(arguments);
    // The methods answer at once; the password prompt and the work follow
    // as signals.
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, answered](QDBusPendingCallWatcher *done) {
                done->deleteLater();
                const QDBusMessage reply = done->reply();
                if (reply.type() == QDBusMessage::ErrorMessage)
                    emit callFailed(QDBusError(reply));
                else
                    answered(reply);
            });
}

void PackageKitTransaction::start(const QString &method, const QVariantList &arguments)
{
    call(QStringLiteral("org.freedesktop.PackageKit"), QStringLiteral("CreateTransaction"), {},
         [this, method, arguments](const QDBusMessage &reply) {
             m_path = qvariant_cast<QDBusObjectPath>(reply.arguments().value(0)).path();
             // Progress comes only as signals: subscribed before anything can
             // happen, and the state so far read once.
             subscribe();
             call(propertiesInterface, QStringLiteral("GetAll"), {transactionInterface},
                  [this](const QDBusMessage &all) {
                      emit propertiesChanged(qdbus_cast<QVariantMap>(all.arguments().value(0)));
                  });
             const QString locale = QLocale().name() + QStringLiteral(".UTF-8");
             call(transactionInterface, QStringLiteral("SetHints"),
                  {QStringList{QStringLiteral("interactive=true"),
                               QStringLiteral("locale=") + locale}},
                  [this, method, arguments](const QDBusMessage &) {
                      call(transactionInterface, method, arguments, [](const QDBusMessage &) {});
                  });
         });
}

void PackageKitTransaction::cancel()
{
    if (!m_path.isEmpty())
        call(transactionInterface, QStringLiteral("Cancel"), {}, [](const QDBusMessage &) {});
}

void PackageKitTransaction::subscribe()
{
    m_bus.connect(service, m_path, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                  SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    m_bus.connect(service, m_path, transactionInterface, QStringLiteral("Package"), this,
                  SLOT(onPackage(uint, QString, QString)));
    m_bus.connect(service, m_path, transactionInterface, QStringLiteral("ErrorCode"), this,
                  SLOT(onErrorCode(uint, QString)));
    m_bus.connect(service, m_path, transactionInterface, QStringLiteral("Finished"), this,
                  SLOT(onFinished(uint, uint)));
    m_bus.connect(service, m_path, transactionInterface, QStringLiteral("Destroy"), this,
                  SLOT(onDestroy()));
}

void PackageKitTransaction::onPropertiesChanged(const QString &interface,
                                                const QVariantMap &changed, const QStringList &)
{
    if (interface == transactionInterface)
        emit propertiesChanged(changed);
}

void PackageKitTransaction::onPackage(uint info, const QString &packageId, const QString &)
{
    emit package(info, packageId);
}

void PackageKitTransaction::onErrorCode(uint code, const QString &details)
{
    emit errorCode(code, details);
}

void PackageKitTransaction::onFinished(uint exit, uint)
{
    emit finished(exit);
}

void PackageKitTransaction::onDestroy()
{
    emit dropped();
}
