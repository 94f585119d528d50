#pragma once

#include <QLocalServer>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class QLocalSocket;
class QLockFile;
class QTimer;

// One running instance per user and identifier. The first instance holds a
// lock file in the private runtime folder for as long as it runs and listens
// on a local socket beside it; a later start finds the lock taken, asks the
// running instance over the socket to come forward, and ends once it has
// answered. An instance that is ending (a relaunch starts while the old run
// shuts down) answers no more: the later start keeps trying and takes the
// lock when it is released. Nothing here blocks: the answer comes as one of
// the signals. A free place is taken at once, within start(), so that the
// first window need not wait for the event loop to turn; anything else is
// answered from the event loop.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    explicit SingleInstance(QString identifier, QObject *parent = nullptr);
    ~SingleInstance() override;

    // Emits exactly one of becamePrimary() and handedOver(): connect first.
    void start();

    // The socket's and the lock file's paths (empty without a private folder).
    QString socketPath() const;
    QString lockPath() const;

    // The one line a later start sends, and the running instance's answer.
    static QByteArray activationMessage();
    static QByteArray acknowledgement();

signals:
    // This is the one instance (or no private folder exists, so there is no
    // way to tell; running beats refusing to start then).
    void becamePrimary();
    // Another instance runs and was asked to come forward: end this one.
    void handedOver();
    // A later start asked this (primary) instance to come forward.
    void activationRequested();

private:
    void attempt();
    void retry();
    void becomePrimary();
    void giveUp();
    void serve();

    QString m_identifier;
    std::unique_ptr<QLockFile> m_lock;
    QLocalServer m_server;
    QPointer<QLocalSocket> m_socket;
    QTimer *m_giveUp = nullptr;
};
