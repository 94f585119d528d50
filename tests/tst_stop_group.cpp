#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <cerrno>
#include <csignal>

// Stop ends everything the child started, at once or, for what ignores
// SIGTERM, after the grace period; and a stopped child that ends late never
// drives the operation the user started after it.

namespace {

using Harness = ControllerHarness;

// Orphans are reaped by the system's init, which may take a moment.
bool groupGone(qint64 pgid)
{
    return ::kill(-static_cast<pid_t>(pgid), 0) == -1 && errno == ESRCH;
}

} // namespace

class StopGroupTest : public QObject
{
    Q_OBJECT

    // What upload-pack runs before it packs: a fetch or clone from the
    // fixture then waits for the test (never for ever).
    static void holdServer(const QString &hook)
    {
        TestSupport::writeFile(TestSupport::homeDir() + "/.gitconfig",
                               "[uploadpack]\n\tpackObjectsHook = \"" + hook.toUtf8() + "\"\n");
    }

    // Stops the operation, then waits for the whole group to be gone.
    void stopAndExpectGroupGone(Harness &h)
    {
        QVERIFY(h.controller.unixTask);
        const qint64 pgid = h.controller.unixTask->processId();
        QVERIFY(pgid > 0);
        QVERIFY(!groupGone(pgid));
        h.controller.perform(); // Stop
        QCOMPARE(h.button(), QStringLiteral("Perform"));
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nTask terminated by user.\n"), Patience);
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(pgid), Patience);
        QVERIFY(!h.controller.unixTask);
        QVERIFY(AlertSheet::openSheets().isEmpty());
    }

private slots:
    void cleanup()
    {
        QFile::remove(TestSupport::homeDir() + "/.gitconfig");
        Harness::endSheets();
    }

    void stopEndsTheWholeGroup_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("compound line") << "sh -c 'touch started; sleep 100; echo x'";
        QTest::newRow("ignores SIGTERM") << "trap '' TERM; sh -c 'touch started; sleep 100'; echo x";
        QTest::newRow("background job") << "sleep 100 & touch started; wait; echo x";
    }
    void stopEndsTheWholeGroup()
    {
        QFETCH(QString, command);
        QTemporaryDir dir;
        Harness h;
        h.runAsOperation(AppController::TagModules, command, dir.path());
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.path() + "/started"), Patience);
        stopAndExpectGroupGone(h);
        QCOMPARE(h.console(), QStringLiteral("\nTask terminated by user.\n"));
    }

    // Quitting while a child runs, or within a stopped child's grace period,
    // takes everything the children started with the application.
    void endingTheControllerEndsEveryGroup()
    {
        QTemporaryDir dir;
        qint64 stopped = 0;
        qint64 running = 0;
        {
            Harness h;
            h.runAsOperation(AppController::TagModules,
                             "trap '' TERM; sh -c 'touch first; trap \"\" TERM; sleep 100'", dir.path());
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.path() + "/first"), Patience);
            stopped = h.controller.unixTask->processId();
            h.controller.perform(); // Stop: the group ignores SIGTERM
            h.runAsOperation(AppController::TagModules, "sleep 100 & touch second; wait",
                             dir.path());
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.path() + "/second"), Patience);
            running = h.controller.unixTask->processId();
            QVERIFY(!groupGone(stopped) && !groupGone(running));
        }
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(stopped), Patience);
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(running), Patience);
    }

    void stopEndsSubmoduleForeach()
    {
        WorkspaceFixture fixture;
        QVERIFY(fixture.isValid());
        fixture.checkout();
        fixture.pushCommit("lang", "fr.txt", "Executer\n");
        fixture.pushCommit("tools", "more.txt", "more\n");
        holdServer("touch " + fixture.root() + "/serving; sleep 100;");
        SettingsStore::standard().setObject(SettingsKeys::Workspace, fixture.workspace());
        SettingsStore::standard().setObject(SettingsKeys::Log, QStringLiteral("1"));

        Harness h;
        h.perform(AppController::TagUpdate);
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(fixture.root() + "/serving"), Patience);
        QVERIFY(h.console().contains("\nChecking for update of submodules...\n"));
        stopAndExpectGroupGone(h);
    }

    // The user stops a child that takes its time to end, and at once starts
    // the module operation; the old child ends while the first module is
    // being cloned.
    void newOperationIsNotDrivenByTheStoppedChild()
    {
        WorkspaceFixture fixture;
        QVERIFY(fixture.isValid());
        fixture.checkoutMain();
        const QString ws = fixture.workspace();
        TestSupport::writeFile(ws + "/.gitmodules",
                               (gitmodulesEntry("lang", "file://" + fixture.langURL())
                                + gitmodulesEntry("tools", "file://" + fixture.toolsURL()))
                                   .toUtf8());
        const QString release = fixture.root() + "/release";
        holdServer("i=0; while [ ! -e " + release + " ] && [ $i -lt 1200 ]; do sleep 0.05; i=$((i+1)); done;");
        SettingsStore::standard().setObject(SettingsKeys::Workspace, ws);
        SettingsStore::standard().setObject(SettingsKeys::Log, QStringLiteral("0"));

        Harness h;
        h.runAsOperation(AppController::TagModules, "trap '' TERM; touch started; sleep 100",
                         fixture.root());
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(fixture.root() + "/started"), Patience);
        QPointer<QProcess> old = h.controller.unixTask;
        const qint64 oldGroup = old->processId();
        h.controller.perform(); // Stop
        QCOMPARE(h.button(), QStringLiteral("Perform"));
        h.perform(AppController::TagModules);
        QCOMPARE(h.console(), moduleTranscript(ws, "lang"));
        QPointer<QProcess> lang = h.controller.unixTask;
        QVERIFY(lang && lang != old);

        QTRY_VERIFY_WITH_TIMEOUT(!old, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(oldGroup), Patience);
        // Still the first module, with its own child.
        QCOMPARE(h.console(), moduleTranscript(ws, "lang"));
        QCOMPARE(h.controller.unixTask.data(), lang.data());
        QCOMPARE(h.controller.now, 0);

        TestSupport::writeFile(release, "");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(ws, "tools") + "\nDone.\n");
        QVERIFY(QFileInfo::exists(ws + "/lang/en.txt"));
        QVERIFY(QFileInfo::exists(ws + "/tools/tool.txt"));
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QCOMPARE(h.button(), QStringLiteral("Perform"));
    }

    // The same, when what the user starts next fails its check: the stopped
    // child's end must not start a stage of it.
    void failedCheckIsNotContinuedByTheStoppedChild()
    {
        WorkspaceFixture fixture;
        QVERIFY(fixture.isValid());
        fixture.checkoutMain(); // modules missing: the update refuses
        SettingsStore::standard().setObject(SettingsKeys::Workspace, fixture.workspace());

        Harness h;
        h.runAsOperation(AppController::TagModules, "trap '' TERM; touch started; sleep 100",
                         fixture.root());
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(fixture.root() + "/started"), Patience);
        QPointer<QProcess> old = h.controller.unixTask;
        const qint64 oldGroup = old->processId();
        h.controller.perform(); // Stop
        h.perform(AppController::TagUpdate);
        const QString checked = h.console();
        QVERIFY(checked.contains("Please re-initialize it."));
        QCOMPARE(h.button(), QStringLiteral("Perform"));

        QTRY_VERIFY_WITH_TIMEOUT(!old, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(oldGroup), Patience);
        QVERIFY(!h.controller.unixTask);
        QCOMPARE(h.console(), checked);
        QCOMPARE(h.button(), QStringLiteral("Perform"));
    }
};

ZELMOR_TEST_MAIN(StopGroupTest)
#include "tst_stop_group.moc"
