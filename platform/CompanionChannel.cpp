#include "platform/CompanionChannel.h"

#include "platform/PrivateRuntime.h"

#include <QVariant>

namespace {
constexpr qint64 kMaxLineBytes = 64 * 1024;
} // namespace

namespace CompanionChannel {

QString serverName(const QString &identifier)
{
    // One channel per user, in a folder no other account can enter, so no
    // one else can take the name first or listen in.
    return PrivateRuntime::socketPath(identifier);
}

QByteArray quitMessage()
{
    return QByteArrayLiteral("quit\n");
}

QByteArray idleMessage()
{
    return QByteArrayLiteral("idle\n");
}

namespace {
// One field of a line: no tab or line feed of its own.
QByteArray field(QString s)
{
    s.replace(QLatin1Char('\t'), QLatin1Char(' '));
    s.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return s.toUtf8();
}
} // namespace

QByteArray problemMessage(const QString &operation, const QString &sentence)
{
    return "problem\t" + field(operation) + '\t' + field(sentence) + '\n';
}

QByteArray statusMessage(const QString &operation, int value, int maximum, const QString &label)
{
    return "status\t" + field(operation) + '\t' + QByteArray::number(value) + '\t'
           + QByteArray::number(maximum) + '\t' + field(label) + '\n';
}

bool parseStatus(const QByteArray &line, Status *status)
{
    const QList<QByteArray> fields = line.split('\t');
    if (fields.size() != 5 || fields.at(0) != "status")
        return false;
    bool okValue = false;
    bool okMax = false;
    status->operation = QString::fromUtf8(fields.at(1));
    status->value = fields.at(2).toInt(&okValue);
    status->maximum = fields.at(3).toInt(&okMax);
    status->label = QString::fromUtf8(fields.at(4));
    return okValue && okMax;
}

Message parseMessage(const QByteArray &line, Status *status)
{
    if (line == "quit")
        return Message::Quit;
    if (line == "idle")
        return Message::Idle;
    if (parseStatus(line, status))
        return Message::Status;
    const QList<QByteArray> fields = line.split('\t');
    if (fields.size() == 3 && fields.at(0) == "problem") {
        *status = Status();
        status->operation = QString::fromUtf8(fields.at(1));
        status->label = QString::fromUtf8(fields.at(2));
        status->problem = true;
        return Message::Problem;
    }
    return Message::Unknown;
}

bool isRunning(const QString &identifier, int timeoutMs)
{
    QLocalSocket socket;
    socket.connectToServer(serverName(identifier));
    return socket.waitForConnected(timeoutMs);
}

bool requestQuit(const QString &identifier, int timeoutMs)
{
    QLocalSocket socket;
    socket.connectToServer(serverName(identifier));
    if (!socket.waitForConnected(timeoutMs))
        return false;
    socket.write(quitMessage());
    const bool written = socket.waitForBytesWritten(timeoutMs);
    socket.disconnectFromServer();
    return written;
}

} // namespace CompanionChannel

CompanionStatusPublisher::CompanionStatusPublisher(QString identifier, QObject *parent)
    : QObject(parent), m_identifier(std::move(identifier))
{
}

void CompanionStatusPublisher::publish(const QByteArray &line)
{
    if (m_socket && m_socket->state() == QLocalSocket::ConnectedState) {
        m_socket->write(line);
        return;
    }
    // Only the newest line matters to the companion; keep it for the moment
    // the connection comes up.
    m_pending = line;
    if (m_socket && m_socket->state() != QLocalSocket::UnconnectedState)
        return;
    // A socket that failed is only deleted later; it must not swallow the
    // lines published until then.
    if (m_socket)
        m_socket->deleteLater();
    auto *socket = new QLocalSocket(this);
    m_socket = socket;
    connect(socket, &QLocalSocket::connected, this, [this, socket] {
        socket->write(m_pending);
        m_pending.clear();
    });
    connect(socket, &QLocalSocket::errorOccurred, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    socket->connectToServer(CompanionChannel::serverName(m_identifier));
}

CompanionChannelServer::CompanionChannelServer(QString identifier, QObject *parent)
    : QObject(parent), m_identifier(std::move(identifier))
{
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
                if (socket->property("zelmorSentStatus").toBool())
                    emit publisherGone();
            });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                while (socket->canReadLine()) {
                    const QByteArray line = socket->readLine().chopped(1);
                    if (line.startsWith("status\t"))
                        socket->setProperty("zelmorSentStatus", true);
                    handleLine(line);
                }
                // No message is anywhere near this long; a peer that keeps
                // sending without a line feed would only fill memory.
                if (socket->bytesAvailable() > kMaxLineBytes)
                    socket->abort();
            });
        }
    });
}

bool CompanionChannelServer::listen()
{
    const QString name = CompanionChannel::serverName(m_identifier);
    if (name.isEmpty() || CompanionChannel::isRunning(m_identifier))
        return false;
    // Nobody answers: a socket file left by a companion that crashed.
    QLocalServer::removeServer(name);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    return m_server.listen(name);
}

void CompanionChannelServer::handleLine(const QByteArray &line)
{
    CompanionChannel::Status status;
    switch (CompanionChannel::parseMessage(line, &status)) {
    case CompanionChannel::Message::Quit:
        emit quitRequested();
        break;
    case CompanionChannel::Message::Idle:
        emit idleReceived();
        break;
    case CompanionChannel::Message::Status:
        emit statusReceived(status);
        break;
    case CompanionChannel::Message::Problem:
        emit problemReceived(status);
        break;
    case CompanionChannel::Message::Unknown:
        break;
    }
}
