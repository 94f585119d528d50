#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>

#include <cerrno>
#include <csignal>
#include <optional>

using TestSupport::FakeTools;

namespace {

const QByteArray Receiving =
    "printf 'Receiving objects:  45%% (1234/2742), 1.23 MiB | 456.00 KiB/s   \\r' >&2\n";
const QString Terminated = QStringLiteral("\nTask terminated by user.\n");

// Orphans are reaped by the system's init, which may take a moment.
bool groupGone(qint64 pgid)
{
    return ::kill(-static_cast<pid_t>(pgid), 0) == -1 && errno == ESRCH;
}

} // namespace

// The runner of child processes under the controller: what it reads of them,
// what it shows, and Stop, which ends everything the child started. Stand-ins
// for git and cmake write what each test needs.
class WorkflowRunnerTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::optional<FakeTools> m_tools;

    // A checkout listing one module, "lang", that is not there yet; one without.
    QString modulesWorkspace() const { return m_dir.path() + "/ws"; }
    QString plainWorkspace() const { return m_dir.path() + "/plain"; }
    // Files the stand-ins make and wait for, emptied before each test.
    QString flag(const char *name) const { return m_dir.path() + "/flags/" + name; }
    QByteArray waitFor(const char *name) const
    {
        return "while [ ! -e '" + flag(name).toUtf8() + "' ]; do sleep 0.02; done\n";
    }

    static void useWorkspace(const QString &workspace)
    {
        ControllerHarness::configure(workspace, workspace + "-out", 1);
    }

    // The module operation (or an update of the plain checkout), its child
    // played by git. The stand-in stays on PATH until the test ends: the
    // shell looks git up after it has started.
    void performWithGit(ControllerHarness &h, const QByteArray &git,
                        int tag = AppController::TagModules)
    {
        if (!m_tools)
            m_tools.emplace();
        m_tools->add("git", git);
        useWorkspace(tag == AppController::TagModules ? modulesWorkspace() : plainWorkspace());
        h.perform(tag);
    }

    // Starts a clone that ignores SIGTERM and stops it; returns its child.
    QPointer<QProcess> stopStubbornChild(ControllerHarness &h)
    {
        performWithGit(h, "trap '' TERM; touch '" + flag("started").toUtf8() + "'; sleep 100\n");
        if (!QTest::qWaitFor([&] { return QFileInfo::exists(flag("started")); }, Patience))
            return nullptr;
        m_tools.reset(); // git has started: later ones are real
        QPointer<QProcess> old = h.controller.unixTask;
        h.controller.perform(); // Stop
        return old;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        for (const QString &folder : {modulesWorkspace() + "/.git", plainWorkspace() + "/.git",
                                      plainWorkspace() + "/android/assets"})
            QVERIFY(QDir().mkpath(folder));
        TestSupport::writeFile(modulesWorkspace() + "/.gitmodules",
                               gitmodulesEntry("lang", "https://host/owner/emu-lang.git").toUtf8());
    }
    void init() { QVERIFY(QDir(flag("")).removeRecursively() && QDir().mkpath(flag(""))); }
    void cleanup()
    {
        m_tools.reset();
        QFile::remove(TestSupport::homeDir() + "/.gitconfig");
        ControllerHarness::endSheets();
    }

    // A chunk the parser cannot use ends the reading of that child's standard
    // error, and only that: 4 MB more follow, more than any pipe holds, so the
    // child only ends if what it writes is still drained. The \xc3\xa9 on
    // standard output is cut between two writes and must be shown whole; its
    // second byte only follows if read timed out (status above 128): standard
    // input stays an open pipe rather than an end of file.
    void unusableChunkEndsTheReadingOfStandardError_data()
    {
        TestSupport::columns<QString, bool>({"firstChunk", "barMadeDeterminate"});
        QTest::newRow("short 'Cloning into' chunk") << "Cloning into 'x'..." << false;
        QTest::newRow("no figures") << "warning: no figures in this line at all" << true;
    }
    void unusableChunkEndsTheReadingOfStandardError()
    {
        QFETCH(QString, firstChunk);
        ControllerHarness h;
        performWithGit(h, "printf '%s\\n' \"" + firstChunk.toUtf8() + "\" >&2\n" + waitFor("go")
                              + "head -c 4000000 /dev/zero | tr '\\0' z >&2\n"
                                "printf 'out \\303'\n"
                                "read -t 1 line; [ $? -gt 128 ] && printf '\\251\\n'\n");
        QTRY_VERIFY2_WITH_TIMEOUT(h.console().contains(firstChunk), qPrintable(h.console()),
                                  Patience);
        QTEST(!h.controller.progressbar->isIndeterminate(), "barMadeDeterminate");
        TestSupport::writeFile(flag("go"), "");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(modulesWorkspace(), "lang") + firstChunk
                                  + "\nout \xc3\xa9\n\nDone.\n");
    }

    // The bar follows the tool of the operation selected: while the module
    // is cloned git's figures on standard error move it and the speed label,
    // and what git writes on standard output nothing; switched to compile
    // while the child runs, make's percentages on standard output drive it and
    // git's no longer do. Stop puts the idle speed label back.
    void barFollowsTheToolOfTheSelectedOperation()
    {
        ControllerHarness h;
        QSignalSpy progress(&h.controller, &AppController::progressChanged);
        performWithGit(h,
                       Receiving + "printf '[ 50%%] Building\\n'\n" + waitFor("compile")
                           + "printf 'Receiving objects: 99%% (1/7), 1 MiB | 9.00 KiB/s\\n' >&2\n"
                           + waitFor("make") + "printf '[ 12%%] Building\\n'\n" + waitFor("scan")
                           + "printf 'Scanning\\n'\nsleep 100\n");
        ProgressBar *bar = h.controller.progressbar;
        QTRY_VERIFY_WITH_TIMEOUT(h.console().contains("[ 50%] Building"), Patience);
        QTRY_COMPARE_WITH_TIMEOUT(bar->maxValue(), 2742.0, Patience);
        QCOMPARE(bar->doubleValue(), 1234.0);
        QVERIFY(!bar->isIndeterminate() && progress.count() > 0);
        QCOMPARE(h.controller.showSpeed->text(), "456.00 KiB/s");
        QCOMPARE(h.controller.lastPercentage, 45);
        h.controller.selectItemWithTag(AppController::TagCompile);
        TestSupport::writeFile(flag("compile"), "");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().contains("99%"), Patience);
        QCOMPARE(bar->maxValue(), 2742.0);
        TestSupport::writeFile(flag("make"), "");
        QTRY_COMPARE_WITH_TIMEOUT(bar->doubleValue(), 12.0, Patience);
        QCOMPARE(bar->maxValue(), 100.0);
        TestSupport::writeFile(flag("scan"), "");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().contains("Scanning"), Patience);
        QCOMPARE(bar->doubleValue(), 12.0); // no figure: the value stays
        h.controller.perform();             // Stop
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith(Terminated), Patience);
        QCOMPARE(h.controller.showSpeed->text(), "ZELMOR");
    }

    // Stop in the pause between an update's two pulls, where no child is left
    // to end: the second pull never starts.
    void stopDuringTheUpdatePauseEndsTheUpdate()
    {
        ControllerHarness h;
        performWithGit(h, "exit 0\n", AppController::TagUpdate);
        const QString firstPull =
            "\nUpdating source codes...\n\nChecking for update of ZELMOR master...\nDone.\n";
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), firstPull, Patience);
        QCOMPARE(h.button(), "Stop");
        h.controller.perform(); // Stop during the pause
        QVERIFY(h.isIdle());
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), firstPull + Terminated, Patience);
        QCOMPARE(h.controller.now, 0);
    }

    // An operation the controller does not know says "Error" and leaves the
    // button at "Stop"; Stop then brings the idle look back.
    void unknownOperationSaysErrorUntilStopped()
    {
        ControllerHarness h;
        h.controller.popupSelection->addItem("Unknown", 9);
        h.perform(9);
        QCOMPARE(h.console(), "Error");
        QVERIFY(!h.controller.spinner->isAnimating() && h.button() == "Stop");
        h.controller.perform();
        QVERIFY(h.isIdle() && h.console() == "Error");
    }

    // A tool that cannot be started leaves the running look, since no
    // completion follows; Stop brings the idle look back.
    void toolThatCannotStartIsStoppedByStop()
    {
        useWorkspace(plainWorkspace());
        ControllerHarness h;
        h.controller.cmakeProgram = m_dir.path() + "/no/such/cmake";
        h.perform(AppController::TagCompile);
        QProcess *task = h.controller.unixTask.data();
        QVERIFY(task);
        QSignalSpy finished(task, &QProcess::finished);
        QTRY_COMPARE_WITH_TIMEOUT(task->error(), QProcess::FailedToStart, Patience);
        // A completion would come at once with the error; 200 ms is plenty
        // to see that none comes.
        QVERIFY(!finished.wait(200));
        QVERIFY(h.controller.spinner->isAnimating() && h.button() == "Stop");
        const QString console = h.console();
        QVERIFY(console.startsWith("\nCompiling...\n"));
        h.controller.perform();
        QVERIFY(h.isIdle() && h.console() == console);
    }

    // Stop ends everything the child started, not only the child itself.
    void stopEndsTheWholeGroup_data()
    {
        QTest::addColumn<QByteArray>("git");
        QTest::newRow("ignores SIGTERM")
            << QByteArray("trap '' TERM; sh -c 'touch started; sleep 99'; echo x\n");
        QTest::newRow("background job") << QByteArray("sleep 100 & touch started; wait\n");
    }
    void stopEndsTheWholeGroup()
    {
        QFETCH(QByteArray, git);
        ControllerHarness h;
        performWithGit(h, "cd '" + flag("").toUtf8() + "'\n" + git);
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(flag("started")), Patience);
        const qint64 pgid = h.controller.unixTask->processId();
        QVERIFY(pgid > 0 && !groupGone(pgid));
        h.controller.perform();
        QTRY_COMPARE_WITH_TIMEOUT(
            h.console(), moduleTranscript(modulesWorkspace(), "lang") + Terminated, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(groupGone(pgid), Patience);
    }

    // Quitting while a child runs, or within a stopped child's grace period,
    // takes everything the children started with the application.
    void endingTheControllerEndsEveryGroup()
    {
        std::optional<ControllerHarness> h(std::in_place);
        const QPointer<QProcess> old = stopStubbornChild(*h);
        QVERIFY(old);
        performWithGit(*h, "sleep 100 & touch '" + flag("second").toUtf8() + "'; wait\n");
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(flag("second")), Patience);
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

        ControllerHarness h;
        const QPointer<QProcess> old = stopStubbornChild(h);
        QVERIFY(old);
        const qint64 oldGroup = old->processId();
        // Only 1 switches the log on: git's own output must not be shown.
        ControllerHarness::configure(ws, fixture.root() + "/out", QStringLiteral("2"));

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
