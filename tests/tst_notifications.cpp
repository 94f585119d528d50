#include "TestSupport.h"

#include "app/ApplicationShell.h"
#include "platform/Bundle.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/ConsoleView.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"
#include "workflow/OperationNotice.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>

using namespace TestSupport;

namespace {

// Stands in for the desktop's notification service on the test's own bus.
class FakeNotifications : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Call
    {
        QString application, icon, summary, body;
        QVariantMap hints;
    };
    QList<Call> calls;

public slots:
    uint Notify(const QString &application, uint replacesId, const QString &icon,
                const QString &summary, const QString &body, const QStringList &actions,
                const QVariantMap &hints, int timeout)
    {
        Q_UNUSED(replacesId)
        Q_UNUSED(actions)
        Q_UNUSED(timeout)
        calls.append({application, icon, summary, body, hints});
        emit notified();
        return uint(calls.size());
    }

signals:
    void notified();
};

} // namespace

// A desktop notification tells a user who is not at the main window that an
// operation has ended, and how; one who is at it is not disturbed.
class TestNotifications : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // A session bus of the test's own; the fake owns the notification
        // service's name there, so no real one is started on demand.
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address",
                                    "--address=unix:dir=" + m_dir.path()});
        QVERIFY(m_bus.waitForReadyRead(10000));
        const QByteArray address = m_bus.readLine().trimmed();
        QVERIFY(!address.isEmpty());
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);

        QDBusConnection service = QDBusConnection::connectToBus(QString::fromUtf8(address), "fake");
        QVERIFY(service.isConnected());
        QVERIFY(service.registerObject("/org/freedesktop/Notifications", &m_fake,
                                       QDBusConnection::ExportAllSlots));
        QVERIFY(service.registerService("org.freedesktop.Notifications"));
        QVERIFY(QDBusConnection::sessionBus().isConnected());

        // The shell starts the companion; a stand-in that does nothing.
        const QString bundle = m_dir.path() + "/ZELMOR Helper.app";
        makeScriptBundle(bundle + "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app",
                         "org.zelmor.test.notifications.StatusbarApp", "exit 0\n");
        Bundle::setMainBundlePath(bundle);
        SettingsStore::standard().setObject(SettingsKeys::FirstLaunch, 0);
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus("fake");
        m_bus.terminate();
        m_bus.waitForFinished(10000);
    }

    void noticeNamesTheOperationAndHowItEnded_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<OperationEnd>("end");
        QTest::addColumn<QString>("summary");
        QTest::addColumn<QString>("body");
        QTest::newRow("compile") << int(AppController::TagCompile) << OperationEnd::AllDone
                                 << "Compile ZELMOR" << "All done.";
        QTest::newRow("update") << int(AppController::TagUpdate) << OperationEnd::AllDone
                                << "Update source codes and submodules" << "All done.";
        QTest::newRow("modules") << int(AppController::TagModules) << OperationEnd::Done
                                 << "Get module initialized" << "Done.";
        QTest::newRow("clone stopped")
            << int(AppController::TagClone) << OperationEnd::TerminatedByUser
            << "Get a complete copy of source codes of ZELLMOR from GitHub"
            << "Task terminated by user.";
        QTest::newRow("no operation") << 0 << OperationEnd::Done << "ZELMOR Helper" << "Done.";
    }
    void noticeNamesTheOperationAndHowItEnded()
    {
        QFETCH(int, tag);
        QFETCH(OperationEnd, end);
        const OperationNotice notice = operationNotice(tag, end);
        QTEST(notice.summary, "summary");
        QTEST(notice.body, "body");
    }

    // The end of a real compile's last stage, first with the main window
    // active, then with another window in front. Calls on one connection
    // arrive in order, so the single notification that arrives proves the
    // first end sent none.
    void onlyAnInactiveWindowIsNotified()
    {
        ApplicationShell shell;
        shell.start();
        AppController *c = shell.controller();
        MainWindow *window = shell.window();
        QSignalSpy notified(&m_fake, &FakeNotifications::notified);

        QApplication::setActiveWindow(window);
        QTRY_VERIFY(window->isActiveWindow());
        endCompile(c);
        QTRY_VERIFY(c->outputField->string().endsWith("All done.\n"));
        QVERIFY(!c->unixTask);

        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QTRY_VERIFY(!window->isActiveWindow());
        c->selectItemWithTag(AppController::TagUpdate);
        c->buttonPerform->setText(AppController::tr("Stop"));
        c->runUnixTask("sleep 30", m_dir.path());
        c->perform(); // Stop
        QVERIFY(notified.wait(10000));
        QCOMPARE(m_fake.calls.size(), 1);
        const FakeNotifications::Call call = m_fake.calls.first();
        QCOMPARE(call.application, QString("ZELMOR Helper"));
        QCOMPARE(call.summary, QString("Update source codes and submodules"));
        QCOMPARE(call.body, QString("Task terminated by user."));
        QCOMPARE(call.icon, QString("org.zelmor.ZELMORHelper"));
        QCOMPARE(call.hints.value("desktop-entry").toString(), QString("org.zelmor.ZELMORHelper"));

        endCompile(c);
        QVERIFY(notified.wait(10000));
        QCOMPARE(m_fake.calls.last().summary, QString("Compile ZELMOR"));
        QCOMPARE(m_fake.calls.last().body, QString("All done."));
    }

private:
    // The compile's copy stage ends: "All done.".
    void endCompile(AppController *c)
    {
        c->selectItemWithTag(AppController::TagCompile);
        c->buttonPerform->setText(AppController::tr("Stop"));
        c->now = 2;
        c->terminatedByUser = 0;
        c->runUnixTask("true", m_dir.path());
    }

    QTemporaryDir m_dir;
    QProcess m_bus;
    FakeNotifications m_fake;
};

ZELMOR_TEST_MAIN(TestNotifications)
#include "tst_notifications.moc"
