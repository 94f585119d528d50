#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QSignalSpy>

#include <cerrno>
#include <csignal>

namespace {

const QString Receiving = QStringLiteral(
    "printf 'Receiving objects:  45%% (1234/2742), 1.23 MiB | 456.00 KiB/s   \\r' >&2; ");
const QString Terminated = QStringLiteral("\nTask terminated by user.\n");

struct Harness : ControllerHarness
{
    QTemporaryDir dir;

    void runAsOperation(int tag, const QString &command)
    {
        ControllerHarness::runAsOperation(tag, command, dir.path());
    }
    // A child that blocks until release(name) is called, so a test decides
    // when each part of its output is written.
    static QString gate(const QString &name = "release")
    {
        return QStringLiteral("while [ ! -e %1 ]; do sleep 0.02; done").arg(name);
    }
    void release(const QString &name = "release") { TestSupport::writeFile(dir.path() + "/" + name, ""); }
};

// Orphans are reaped by the system's init, which may take a moment.
bool groupGone(qint64 pgid)
{
    return ::kill(-static_cast<pid_t>(pgid), 0) == -1 && errno == ESRCH;
}

} // namespace

// The runner of child processes under the controller: what it reads of them,
// what it shows, and Stop, which ends everything the child started, at once
// or, for what ignores SIGTERM, after the grace period; a stopped child that
// ends late never drives the operation the user started after it.
class WorkflowRunnerTest : public QObject
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
    void stopAndExpectGroupGone(ControllerHarness &h)
    {
        QVERIFY(h.controller.unixTask);
        const qint64 pgid = h.controller.unixTask->processId();
        QVERIFY(pgid > 0 && !groupGone(pgid));
        h.controller.perform(); // Stop
        QCOMPARE(h.button(), QStringLiteral("Perform"));
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith(Terminated), Patience);
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(pgid), Patience);
        QVERIFY(!h.controller.unixTask);
        QVERIFY(AlertSheet::openSheets().isEmpty());
    }

    // Starts a child that ignores SIGTERM in folder and stops it; returns it.
    static QPointer<QProcess> stopStubbornChild(ControllerHarness &h, const QString &folder)
    {
        h.runAsOperation(AppController::TagModules, "trap '' TERM; touch started; sleep 100", folder);
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

    void stderrRangeErrorEndsReadingOfThatChild_data()
    {
        TestSupport::columns<QString, bool>({"firstChunk", "barMadeDeterminate"});
        QTest::newRow("short 'Cloning into' chunk") << "Cloning into 'x'..." << false;
        QTest::newRow("no figures") << "warning: no figures in this line at all" << true;
    }
    void stderrRangeErrorEndsReadingOfThatChild()
    {
        QFETCH(QString, firstChunk);
        Harness h;
        h.controller.logSwitch = 1;
        // After the first chunk, 4 MB more on standard error: more than any
        // pipe holds, so the child only ends if it is still drained.
        h.runAsOperation(AppController::TagModules,
                         "printf '%s\\n' \"" + firstChunk + "\" >&2; " + h.gate()
                             + "; head -c 4000000 /dev/zero | tr '\\0' z >&2; echo stdout-still-read");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().contains(firstChunk), Patience);
        QTEST(!h.controller.progressbar->isIndeterminate(), "barMadeDeterminate");
        h.release();
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QVERIFY(h.console().contains("stdout-still-read") && !h.console().contains("zzz"));
        QVERIFY(!h.controller.unixTask);

        // The next child's standard error is read again.
        h.runAsOperation(AppController::TagModules, Receiving + h.gate("release2"));
        QTRY_COMPARE_WITH_TIMEOUT(h.controller.showSpeed->text(), "456.00 KiB/s", Patience);
        h.release("release2");
        QTRY_VERIFY_WITH_TIMEOUT(!h.controller.unixTask, Patience);
    }

    void cloneProgressFromStandardError()
    {
        Harness h;
        h.controller.logSwitch = 0;
        QSignalSpy progress(&h.controller, &AppController::progressChanged);
        h.runAsOperation(AppController::TagClone, Receiving + h.gate());
        ProgressBar *bar = h.controller.progressbar;
        QTRY_COMPARE_WITH_TIMEOUT(bar->maxValue(), 2742.0, Patience);
        QCOMPARE(bar->doubleValue(), 1234.0);
        QVERIFY(!bar->isIndeterminate() && progress.count() > 0);
        QCOMPARE(h.controller.showSpeed->text(), "456.00 KiB/s");
        QCOMPARE(h.controller.lastPercentage, 45);
        QVERIFY(!h.console().contains("Receiving")); // log off

        // Switched to compile while it runs: its standard error is no longer
        // parsed, and its end is handled as the end of a compile would be.
        h.controller.selectItemWithTag(AppController::TagCompile);
        h.controller.notifiedForStdError("Receiving objects: 99% (1/7), 1 MiB | 9.00 KiB/s   \r");
        QCOMPARE(bar->maxValue(), 2742.0);
        h.controller.stopRequest = 1;
        h.controller.stopTask();
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith(Terminated), Patience);
        QCOMPARE(h.controller.showSpeed->text(), "ZELMOR");
    }

    void makeProgressFromStandardOutput_data()
    {
        TestSupport::columns<int, QStringList, double>({"tag", "chunks", "value"}); // -1: indeterminate
        const int compile = AppController::TagCompile;
        QTest::newRow("no prefix keeps value") << compile << QStringList{"[ 12%] B\n", "Scanning\n"} << 12.0;
        QTest::newRow("100%") << compile << QStringList{"[ 12%] Building\n", "[100%] Linking\n"} << 100.0;
        QTest::newRow("not compiling") << int(AppController::TagClone) << QStringList{"[ 12%] B\n"} << -1.0;
    }
    void makeProgressFromStandardOutput()
    {
        QFETCH(int, tag);
        QFETCH(QStringList, chunks);
        QFETCH(double, value);
        Harness h;
        h.controller.selectItemWithTag(tag);
        for (const QString &chunk : chunks)
            h.controller.notifiedForStdOutput(chunk.toUtf8());
        QCOMPARE(h.controller.progressbar->isIndeterminate(), value < 0);
        if (value >= 0) {
            QCOMPARE(h.controller.progressbar->maxValue(), 100.0);
            QCOMPARE(h.controller.progressbar->doubleValue(), value);
        }
    }

    void logSwitchDecidesWhatIsShown_data()
    {
        TestSupport::columns<int, QStringList>({"log", "shown"});
        QTest::newRow("log on") << 1 << QStringList{"out \xc3\xa9\n", "err 1\n"};
        QTest::newRow("log off") << 0 << QStringList{};
        QTest::newRow("only 1 means on") << 2 << QStringList{};
    }
    void logSwitchDecidesWhatIsShown()
    {
        QFETCH(int, log);
        QFETCH(QStringList, shown);
        Harness h;
        h.controller.logSwitch = log;
        h.controller.outputField->setString(QString());
        // The \xc3\xa9 is cut between two writes; the console still shows it whole.
        h.runAsOperation(AppController::TagModules,
                         "printf 'out \\303'; sleep 0.2; printf '\\251\\n'; printf 'err 1\\n' >&2");
        QTRY_VERIFY_WITH_TIMEOUT(!h.controller.unixTask, Patience);
        const QString console = h.console();
        QVERIFY(console.endsWith("\nDone.\n"));
        for (const QString &text : shown)
            QVERIFY2(console.contains(text), qPrintable(console));
        QCOMPARE(console.size(), QStringLiteral("\nDone.\n").size() + shown.join("").size());
    }

    void stopKillsOnlyOnStopRequest()
    {
        Harness h;
        h.runAsOperation(AppController::TagModules, "sleep 30");
        QTRY_COMPARE_WITH_TIMEOUT(h.controller.unixTask->state(), QProcess::Running, Patience);
        h.controller.stopRequest = 0;
        h.controller.stopTask();
        QVERIFY(h.isIdle() && h.controller.progressbar->isIndeterminate());
        QCOMPARE(h.controller.unixTask->state(), QProcess::Running);
        QCOMPARE(h.controller.terminatedByUser, 0);
        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        stopAndExpectGroupGone(h); // the user's Stop
        QCOMPARE(h.controller.terminatedByUser, 1);
    }

    void standardInputStaysOpen()
    {
        Harness h;
        h.controller.logSwitch = 1;
        // read returns at once on end of file, and fails after its timeout
        // (status above 128) while the pipe stays open and empty.
        h.runAsOperation(AppController::TagModules,
                         "if read -t 1 line; then echo got; elif [ $? -gt 128 ]; then echo waited; else echo eof; fi");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QVERIFY(h.console().contains("waited"));
    }

    void childThatCannotStartKeepsRunningLook()
    {
        Harness h;
        h.controller.spinner->startAnimation();
        h.controller.runUnixTask("echo never", h.dir.path() + "/no/such/folder");
        QProcess *task = h.controller.unixTask.data();
        QVERIFY(task);
        QSignalSpy failed(task, &QProcess::errorOccurred);
        QSignalSpy finished(task, &QProcess::finished);
        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        if (task->error() != QProcess::FailedToStart)
            QVERIFY(failed.wait(Patience));
        QCOMPARE(task->error(), QProcess::FailedToStart);
        // No completion follows a child that never started.
        QVERIFY(!finished.wait(200));
        QCOMPARE(h.controller.unixTask.data(), task);
        QCOMPARE(h.button(), "Stop");
        QVERIFY(h.controller.spinner->isAnimating() && !h.console().contains("Done."));
        h.controller.perform(); // Stop brings the idle look back
        QCOMPARE(h.button(), "Perform");
        QCOMPARE(h.controller.terminatedByUser, 1);
    }

    void stopDuringUpdatePause()
    {
        Harness h;
        h.controller.outputField->setString(QString());
        h.controller.selectItemWithTag(AppController::TagUpdate);
        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        h.controller.notifiedForComplete(); // the first pull ended
        QCOMPARE(h.console(), "Done.\n");
        QCOMPARE(h.button(), "Stop");
        h.controller.perform(); // Stop during the pause
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), "Done.\n" + Terminated, Patience);
        QCOMPARE(h.controller.now, 0);
        QVERIFY(!h.controller.unixTask);
    }

    void unknownTagPrintsError()
    {
        Harness h;
        h.controller.popupSelection->addItem("Unknown", 9);
        h.perform(9);
        QCOMPARE(h.console(), "Error");
        QCOMPARE(h.button(), "Stop");
        QVERIFY(!h.controller.spinner->isAnimating());
        h.controller.perform();
        QCOMPARE(h.button(), "Perform");
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
        Harness h;
        h.runAsOperation(AppController::TagModules, command);
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(h.dir.path() + "/started"), Patience);
        stopAndExpectGroupGone(h);
        QCOMPARE(h.console(), Terminated);
    }

    // Quitting while a child runs, or within a stopped child's grace period,
    // takes everything the children started with the application.
    void endingTheControllerEndsEveryGroup()
    {
        QTemporaryDir dir;
        qint64 stopped = 0, running = 0;
        {
            ControllerHarness h;
            h.runAsOperation(AppController::TagModules,
                             "trap '' TERM; sh -c 'touch first; trap \"\" TERM; sleep 100'", dir.path());
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.path() + "/first"), Patience);
            stopped = h.controller.unixTask->processId();
            h.controller.perform(); // Stop: the group ignores SIGTERM
            h.runAsOperation(AppController::TagModules, "sleep 100 & touch second; wait", dir.path());
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.path() + "/second"), Patience);
            running = h.controller.unixTask->processId();
            QVERIFY(!groupGone(stopped) && !groupGone(running));
        }
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(stopped) && groupGone(running), Patience);
    }

    void stopEndsSubmoduleForeach()
    {
        WorkspaceFixture fixture;
        QVERIFY(fixture.isValid());
        fixture.checkout();
        fixture.pushCommit("lang", "fr.txt", "Executer\n");
        fixture.pushCommit("tools", "more.txt", "more\n");
        holdServer("touch " + fixture.root() + "/serving; sleep 100;");
        ControllerHarness::configure(fixture.workspace(), fixture.root() + "/out", QStringLiteral("1"));
        ControllerHarness h;
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
        const QString ws = fixture.workspace(), release = fixture.root() + "/release";
        TestSupport::writeFile(ws + "/.gitmodules", (gitmodulesEntry("lang", "file://" + fixture.langURL())
                                                     + gitmodulesEntry("tools", "file://" + fixture.toolsURL()))
                                                        .toUtf8());
        holdServer("i=0; while [ ! -e " + release + " ] && [ $i -lt 1200 ]; do sleep 0.05; i=$((i+1)); done;");
        ControllerHarness::configure(ws, fixture.root() + "/out", QStringLiteral("0"));

        ControllerHarness h;
        const QPointer<QProcess> old = stopStubbornChild(h, fixture.root());
        QVERIFY(old);
        const qint64 oldGroup = old->processId();
        QCOMPARE(h.button(), QStringLiteral("Perform"));
        h.perform(AppController::TagModules);
        QCOMPARE(h.console(), moduleTranscript(ws, "lang"));
        QPointer<QProcess> lang = h.controller.unixTask;
        QVERIFY(lang && lang != old);

        QTRY_VERIFY_WITH_TIMEOUT(!old && groupGone(oldGroup), Patience);
        // Still the first module, with its own child.
        QCOMPARE(h.console(), moduleTranscript(ws, "lang"));
        QCOMPARE(h.controller.unixTask.data(), lang.data());
        QCOMPARE(h.controller.now, 0);

        TestSupport::writeFile(release, "");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(ws, "tools") + "\nDone.\n");
        QVERIFY(QFileInfo::exists(ws + "/lang/en.txt") && QFileInfo::exists(ws + "/tools/tool.txt"));
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

        ControllerHarness h;
        const QPointer<QProcess> old = stopStubbornChild(h, fixture.root());
        QVERIFY(old);
        const qint64 oldGroup = old->processId();
        h.perform(AppController::TagUpdate);
        const QString checked = h.console();
        QVERIFY(checked.contains("Please re-initialize it."));
        QCOMPARE(h.button(), QStringLiteral("Perform"));

        QTRY_VERIFY_WITH_TIMEOUT(!old && groupGone(oldGroup), Patience);
        QVERIFY(!h.controller.unixTask);
        QCOMPARE(h.console(), checked);
        QCOMPARE(h.button(), QStringLiteral("Perform"));
    }
};

ZELMOR_TEST_MAIN(WorkflowRunnerTest)
#include "tst_workflow_runner.moc"
