#pragma once

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>

// The channel between ZELMOR Helper and its status-bar companion: a local
// socket per user, named after the companion's bundle identifier, in the
// user's private runtime folder (PrivateRuntime). It stands in
// for the platform's list of running applications: a companion is "running"
// when it listens there.
//
// Messages are lines of UTF-8 text:
//   quit                                        the companion quits
//   status<TAB>operation<TAB>value<TAB>maximum<TAB>label
//                                               an operation runs; maximum 0
//                                               means no figure is known
//   idle                                        no operation runs
//   problem<TAB>operation<TAB>sentence          no operation runs; the last
//                                               one ended with a problem
namespace CompanionChannel {

// The socket's path; empty when the user has no private folder.
QString serverName(const QString &identifier);

QByteArray quitMessage();
QByteArray idleMessage();
QByteArray statusMessage(const QString &operation, int value, int maximum, const QString &label);
QByteArray problemMessage(const QString &operation, const QString &sentence);

struct Status
{
    QString operation;
    int value = 0;
    int maximum = 0;
    QString label;
    // A problem line: label holds the sentence, nothing runs.
    bool problem = false;
};
// Parses a status line (without its line feed); false for any other line.
bool parseStatus(const QByteArray &line, Status *status);

enum class Message { Quit, Idle, Status, Problem, Unknown };
// What one line (without its line feed) asks for; fills status for Status
// and Problem.
Message parseMessage(const QByteArray &line, Status *status);

// Whether a companion with this identifier listens. Connecting to a local
// socket answers at once; the timeout only guards against a hung peer.
bool isRunning(const QString &identifier, int timeoutMs = 300);
// Asks a running companion to quit; false when none listens.
bool requestQuit(const QString &identifier, int timeoutMs = 1000);

} // namespace CompanionChannel

// Main-application side: sends status lines without ever blocking. Lines sent
// while no companion listens are dropped; the connection is retried with the
// next line.
class CompanionStatusPublisher : public QObject
{
    Q_OBJECT

public:
    explicit CompanionStatusPublisher(QString identifier, QObject *parent = nullptr);
    void publish(const QByteArray &line);

private:
    QString m_identifier;
    QPointer<QLocalSocket> m_socket;
    QByteArray m_pending;
};

// Companion side: listens and turns lines into signals. listen() fails when
// another instance of the companion already listens.
class CompanionChannelServer : public QObject
{
    Q_OBJECT

public:
    explicit CompanionChannelServer(QString identifier, QObject *parent = nullptr);
    bool listen();

signals:
    void quitRequested();
    void statusReceived(const CompanionChannel::Status &status);
    void idleReceived();
    // The last operation ended with a problem (status.problem is set).
    void problemReceived(const CompanionChannel::Status &status);
    // A connection that had sent status lines closed: its sender quit or
    // crashed, so whatever it reported no longer runs.
    void publisherGone();

private:
    void handleLine(const QByteArray &line);

    QString m_identifier;
    QLocalServer m_server;
};
