#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>

#include <cerrno>
#include <csignal>
#include <optional>

namespace {

const QString Receiving = QStringLiteral(
    "printf 'Receiving objects:  45%% (1234/2742), 1.23 MiB | 456.00 KiB/s   \\r' >&2; ");
const QString Terminated = QStringLiteral("\nTask terminated by user.\n");

// Orphans are reaped by the system's init, which may take a moment.
bool groupGone(qint64 pgid)
{
    return ::kill(-static_cast<pid_t>(pgid), 0) == -1 && errno == ESRCH;
}

} // namespace

// The runner of child processes under the controller: what it reads of them,
// what it shows, and Stop, which ends everything the child started.
class WorkflowRunnerTest : public QObject
{
    Q_OBJECT

    // Starts a child that ignores SIGTERM in folder and stops it; returns it.
    static QPointer<QProcess> stopStubbornChild(ControllerHarness &h, const QString &folder)
    {
        h.runAsOperation(AppController::TagModules, "trap '' TERM; touch started; sleep 100",
                         folder);
        if (!QTest::qWaitFor([&] { return QFileInfo::exists(folder + "/started"); }, Patience))
            return nullptr;
        QPointer<QProcess> old = h.controller.unixTask;
        h.controller.perform(); // Stop
        return old;
    }

private slots:
    void cleanup()
    {
        QFile::remove(TestSupport::homeDir() + "/.gitconfig");
        ControllerHarness::endSheets();
    }

    void cloneProgressFromStandardError_data()
    {
        TestSupport::columns<QString, bool>({"firstChunk", "barMadeDeterminate"});
        QTest::newRow("short 'Cloning into' chunk") << "Cloning into 'x'..." << false;
        QTest::newRow("no figures") << "warning: no figures in this line at all" << true;
    }
    void cloneProgressFromStandardError()
    {
        QFETCH(QString, firstChunk);
        QTemporaryDir dir;
        ControllerHarness h;
        h.controller.logSwitch = 1;
        // A chunk the parser cannot use ends the reading of that child's
        // standard error. 4 MB more follow, more than any pipe holds: the
        // child only ends if what it writes is still drained. The \xc3\xa9 on
        // standard output is cut between two writes and must be shown whole;
        // its second byte only follows if read timed out (status above 128):
        // standard input stays an open pipe rather than an end of file.
        h.runAsOperation(AppController::TagModules,
                         "printf '%s\\n' \"" + firstChunk
                             + "\" >&2; while [ ! -e go ]; do sleep 0.02; done;"
                               " head -c 4000000 /dev/zero | tr '\\0' z >&2; printf 'out \\303';"
                               " read -t 1 line; [ $? -gt 128 ] && printf '\\251\\n'",
                         dir.path());
        QTRY_VERIFY_WITH_TIMEOUT(h.console().contains(firstChunk), Patience);
        QTEST(!h.controller.progressbar->isIndeterminate(), "barMadeDeterminate");
        TestSupport::writeFile(dir.path() + "/go", "");
        QTRY_VERIFY_WITH_TIMEOUT(!h.controller.unixTask, Patience);
        QCOMPARE(h.console(), firstChunk + "\nout \xc3\xa9\n\nDone.\n");

        // The next child's standard error drives the bar again.
        QSignalSpy progress(&h.controller, &AppController::progressChanged);
        h.runAsOperation(AppController::TagClone, Receiving + "sleep 100", dir.path());
        ProgressBar *bar = h.controller.progressbar;
        QTRY_COMPARE_WITH_TIMEOUT(bar->maxValue(), 2742.0, Patience);
        h.controller.notifiedForStdOutput("[ 50%] Building\n"); // not compiling: ignored
        QCOMPARE(bar->doubleValue(), 1234.0);
        QVERIFY(!bar->isIndeterminate() && progress.count() > 0);
        QCOMPARE(h.controller.showSpeed->text(), "456.00 KiB/s");
        QCOMPARE(h.controller.lastPercentage, 45);

        // Switched to compile while it runs: make's standard output drives the
        // bar, standard error no longer does.
        h.controller.selectItemWithTag(AppController::TagCompile);
        h.controller.notifiedForStdError("Receiving objects: 99% (1/7), 1 MiB | 9.00 KiB/s   \r");
        QCOMPARE(bar->maxValue(), 2742.0);
        h.controller.notifiedForStdOutput("[ 12%] Building\n");
        h.controller.notifiedForStdOutput("Scanning\n"); // no figure: the value stays
        QCOMPARE(bar->maxValue(), 100.0);
        QCOMPARE(bar->doubleValue(), 12.0);
        h.controller.perform(); // Stop
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith(Terminated), Patience);
        QCOMPARE(h.controller.showSpeed->text(), "ZELMOR");
    }

    // Stop brings the idle look back when no child is left to end: in the
    // pause between an update's two pulls, after an unknown operation, and
    // for a child that never started (no completion follows it).
    void stopWithoutAChildThatEnds()
    {
        ControllerHarness h;
        h.controller.outputField->setString(QString());
        h.controller.selectItemWithTag(AppController::TagUpdate);
        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        h.controller.notifiedForComplete(); // the first pull ended
        QCOMPARE(h.button(), "Stop");
        h.controller.perform(); // Stop during the pause
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), "Done.\n" + Terminated, Patience);
        QCOMPARE(h.controller.now, 0);

        h.controller.popupSelection->addItem("Unknown", 9);
        h.perform(9);
        QCOMPARE(h.console(), "Error");
        QVERIFY(!h.controller.spinner->isAnimating() && h.button() == "Stop");

        h.controller.spinner->startAnimation();
        h.controller.runUnixTask("echo never", "/no/such/folder");
        QProcess *task = h.controller.unixTask.data();
        QSignalSpy finished(task, &QProcess::finished);
        QTRY_COMPARE_WITH_TIMEOUT(task->error(), QProcess::FailedToStart, Patience);
        QVERIFY(!finished.wait(200));
        QVERIFY(h.controller.spinner->isAnimating() && h.button() == "Stop");
        h.controller.perform();
        QVERIFY(h.isIdle() && h.console() == "Error");
    }

    void stopEndsTheWholeGroup_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("ignores SIGTERM") << "trap '' TERM; sh -c 'touch started; sleep 99'; echo x";
        QTest::newRow("background job") << "sleep 100 & touch started; wait";
    }
    void stopEndsTheWholeGroup()
    {
        QFETCH(QString, command);
        QTemporaryDir dir;
        ControllerHarness h;
        h.runAsOperation(AppController::TagModules, command, dir.path());
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.path() + "/started"), Patience);
        const qint64 pgid = h.controller.unixTask->processId();
        // A stage's own end resets the window; only the user's Stop kills.
        h.controller.stopRequest = 0;
        h.controller.stopTask();
        QVERIFY(h.isIdle() && pgid > 0 && !groupGone(pgid));

        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        h.controller.perform();
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), Terminated, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(pgid), Patience);
    }

    // Quitting while a child runs, or within a stopped child's grace period,
    // takes everything the children started with the application.
    void endingTheControllerEndsEveryGroup()
    {
        QTemporaryDir dir;
        std::optional<ControllerHarness> h(std::in_place);
        const QPointer<QProcess> old = stopStubbornChild(*h, dir.path());
        QVERIFY(old);
        h->runAsOperation(AppController::TagModules, "sleep 100 & touch second; wait", dir.path());
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.path() + "/second"), Patience);
        const qint64 stopped = old->processId(), running = h->controller.unixTask->processId();
        QVERIFY(!groupGone(stopped) && !groupGone(running));
        h.reset();
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(stopped) && groupGone(running), Patience);
    }

    // The user stops a child that takes its time to end, then starts an update
    // whose check fails and at once the module operation; the old child ends
    // while the first module is being cloned and drives neither.
    void newOperationIsNotDrivenByTheStoppedChild()
    {
        WorkspaceFixture fixture;
        fixture.checkoutMain(); // modules missing: the update refuses
        const QString ws = fixture.workspace(), release = fixture.root() + "/release";
        const QString entries = gitmodulesEntry("lang", "file://" + fixture.langURL())
                                + gitmodulesEntry("tools", "file://" + fixture.toolsURL());
        TestSupport::writeFile(ws + "/.gitmodules", entries.toUtf8());
        // What upload-pack runs before it packs: the clone waits for the test.
        TestSupport::writeFile(TestSupport::homeDir() + "/.gitconfig",
                               "[uploadpack]\n\tpackObjectsHook = \"i=0; while [ ! -e "
                                   + release.toUtf8()
                                   + " ] && [ $i -lt 1200 ]; do sleep 0.05; i=$((i+1)); done;\"\n");
        // Only 1 switches the log on: git's own output must not be shown.
        ControllerHarness::configure(ws, fixture.root() + "/out", QStringLiteral("2"));

        ControllerHarness h;
        const QPointer<QProcess> old = stopStubbornChild(h, fixture.root());
        QVERIFY(old);
        const qint64 oldGroup = old->processId();
        h.perform(AppController::TagUpdate);
        QVERIFY(h.console().contains("Please re-initialize it.") && h.isIdle());

        h.perform(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(!old && groupGone(oldGroup), Patience);
        // Still the first module, with its own child.
        QCOMPARE(h.console(), moduleTranscript(ws, "lang"));
        QVERIFY(h.controller.now == 0 && h.controller.unixTask);

        TestSupport::writeFile(release, "");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(ws, "tools") + "\nDone.\n");
        QVERIFY(AlertSheet::openSheets().isEmpty() && h.isIdle());
    }
};

ZELMOR_TEST_MAIN(WorkflowRunnerTest)
#include "tst_workflow_runner.moc"
