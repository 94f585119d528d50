#include "platform/SingleInstance.h"

#include "platform/PrivateRuntime.h"

#include <QLocalSocket>
#include <QLockFile>
#include <QTimer>

#include <cstdio>

namespace {

// How long a later start keeps trying before it takes the running instance
// for hung and ends: the running one answers at once, and one that is ending
// releases its lock within a second or two.
constexpr int kGiveUpMs = 5000;
constexpr int kRetryMs = 100;

} // namespace

SingleInstance::SingleInstance(QString identifier, QObject *parent)
    : QObject(parent), m_identifier(std::move(identifier))
{
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::serve);
}

// Closing the server removes the socket; the lock is released after it, so
// a start that takes the lock never meets the old socket.
SingleInstance::~SingleInstance()
{
    m_server.close();
    m_lock.reset();
}

QByteArray SingleInstance::activationMessage()
{
    return QByteArrayLiteral("activate\n");
}

QByteArray SingleInstance::acknowledgement()
{
    return QByteArrayLiteral("ok\n");
}

QString SingleInstance::socketPath() const
{
    return PrivateRuntime::socketPath(m_identifier);
}

QString SingleInstance::lockPath() const
{
    const QString socket = socketPath();
    return socket.isEmpty() ? QString() : socket + QStringLiteral(".lock");
}

void SingleInstance::start()
{
    if (socketPath().isEmpty()) {
        emit becamePrimary();
        return;
    }
    m_lock = std::make_unique<QLockFile>(lockPath());
    // Held for the whole run: only a dead holder makes it stale, never age.
    m_lock->setStaleLockTime(0);
    m_giveUp = new QTimer(this);
    m_giveUp->setSingleShot(true);
    connect(m_giveUp, &QTimer::timeout, this, &SingleInstance::giveUp);
    m_giveUp->start(kGiveUpMs);
    attempt();
}

// Takes the lock when it is free, or else asks its holder to come forward.
void SingleInstance::attempt()
{
    if (m_lock->tryLock(0)) {
        becomePrimary();
        return;
    }
    auto *socket = new QLocalSocket(this);
    m_socket = socket;
    connect(socket, &QLocalSocket::connected, this,
            [socket] { socket->write(activationMessage()); });
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        if (m_socket != socket || !socket->canReadLine())
            return;
        // Only an answer counts: an instance that is ending may still take
        // the connection, and would never come forward.
        if (socket->readLine() != acknowledgement())
            return;
        m_socket = nullptr;
        m_giveUp->stop();
        socket->disconnectFromServer();
        socket->deleteLater();
        emit handedOver();
    });
    // Refused, or dropped unanswered when an ending instance closes.
    connect(socket, &QLocalSocket::errorOccurred, this, &SingleInstance::retry);
    connect(socket, &QLocalSocket::disconnected, this, &SingleInstance::retry);
    socket->connectToServer(socketPath());
}

void SingleInstance::retry()
{
    auto *socket = qobject_cast<QLocalSocket *>(sender());
    if (!socket || m_socket != socket)
        return;
    m_socket = nullptr;
    socket->deleteLater();
    QTimer::singleShot(kRetryMs, this, [this] {
        if (m_giveUp->isActive())
            attempt();
    });
}

void SingleInstance::becomePrimary()
{
    m_giveUp->stop();
    const QString socket = socketPath();
    // Whatever socket is there was left by an instance that died or ended.
    QLocalServer::removeServer(socket);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server.listen(socket))
        std::fprintf(stderr, "ZELMOR Helper: cannot listen on %s: %s\n", qPrintable(socket),
                     qPrintable(m_server.errorString()));
    emit becamePrimary();
}

// Starting a second one beside a hung instance would be worse than not
// starting at all.
void SingleInstance::giveUp()
{
    if (QLocalSocket *socket = m_socket) {
        m_socket = nullptr;
        socket->abort();
        socket->deleteLater();
    }
    std::fprintf(stderr, "ZELMOR Helper: another instance holds %s but does not answer\n",
                 qPrintable(lockPath()));
    emit handedOver();
}

void SingleInstance::serve()
{
    while (QLocalSocket *peer = m_server.nextPendingConnection()) {
        connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
        connect(peer, &QLocalSocket::readyRead, this, [this, peer] {
            // A peer has one thing to say; anything longer is not ours.
            if (peer->bytesAvailable() > 256) {
                peer->abort();
                return;
            }
            while (peer->canReadLine()) {
                if (peer->readLine() == activationMessage()) {
                    // Out at once: should this instance end right after, an
                    // answer still queued here would be lost, and the later
                    // start would take its place.
                    peer->write(acknowledgement());
                    peer->flush();
                    emit activationRequested();
                }
            }
        });
    }
}
