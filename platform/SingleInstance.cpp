#include "platform/SingleInstance.h"

#include "platform/PrivateRuntime.h"

#include <QLocalSocket>
#include <QLockFile>
#include <QTimer>

#include <cstdio>

namespace {

// The running instance takes its lock and listens right away, so a refused
// connection only lasts while it starts. After this many tries, 100 ms apart,
// it is hung; starting a second one beside it would be worse.
constexpr int kConnectAttempts = 50;
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
    const QString socket = socketPath();
    if (socket.isEmpty()) {
        QTimer::singleShot(0, this, &SingleInstance::becamePrimary);
        return;
    }
    m_lock = std::make_unique<QLockFile>(lockPath());
    // Held for the whole run: only a dead holder makes it stale, never age.
    m_lock->setStaleLockTime(0);
    if (m_lock->tryLock(0)) {
        // Whatever socket is there was left by an instance that died.
        QLocalServer::removeServer(socket);
        m_server.setSocketOptions(QLocalServer::UserAccessOption);
        if (!m_server.listen(socket))
            std::fprintf(stderr, "ZELMOR Helper: cannot listen on %s: %s\n", qPrintable(socket),
                         qPrintable(m_server.errorString()));
        QTimer::singleShot(0, this, &SingleInstance::becamePrimary);
        return;
    }
    m_lock.reset();
    tryHandOver();
}

void SingleInstance::tryHandOver()
{
    auto *socket = new QLocalSocket(this);
    m_socket = socket;
    connect(socket, &QLocalSocket::connected, this,
            [socket] { socket->write(activationMessage()); });
    connect(socket, &QLocalSocket::bytesWritten, this, [this, socket] {
        if (socket->bytesToWrite() > 0 || m_socket != socket)
            return;
        m_socket = nullptr;
        socket->disconnectFromServer();
        socket->deleteLater();
        emit handedOver();
    });
    connect(socket, &QLocalSocket::errorOccurred, this, [this, socket] {
        // Closing after the hand-over reports an error too; it is not one.
        if (m_socket != socket)
            return;
        m_socket = nullptr;
        socket->deleteLater();
        if (++m_attempts < kConnectAttempts) {
            QTimer::singleShot(kRetryMs, this, &SingleInstance::tryHandOver);
            return;
        }
        std::fprintf(stderr, "ZELMOR Helper: another instance holds %s but does not answer\n",
                     qPrintable(lockPath()));
        emit handedOver();
    });
    socket->connectToServer(socketPath());
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
                if (peer->readLine() == activationMessage())
                    emit activationRequested();
            }
        });
    }
}
