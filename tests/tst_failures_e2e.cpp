#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "app/ApplicationShell.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "platform/CompanionChannel.h"
#include "widgets/MessageBar.h"
#include "workflow/AppController.h"
#include "workflow/OperationNotice.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QTcpServer>
#include <QToolButton>

#ifdef Q_OS_LINUX
#include <sched.h>
#include <sys/mount.h>
#endif

// Operations that fail the ways users meet, with real git, cmake and make
// against local fixtures: the console says exactly what it always said, and
// the message bar, the notification and the status-bar companion say what
// went wrong and offer the way out. Successful runs show nothing new.

// The checks of a helper end the test function too when they fail.
#define EXPECT(call)                                                                               \
    do {                                                                                           \
        call;                                                                                      \
        if (QTest::currentTestFailed())                                                            \
            return;                                                                                \
    } while (false)

namespace {

using Harness = ControllerHarness;

const QString UpdateTranscript =
    QStringLiteral("\nUpdating source codes...\n\nChecking for update of ZELMOR master...\nDone.\n"
                   "\nChecking for update of submodules...\nDone.\n \nAll done.\n");

// A port on this machine where nothing listens: connections are refused.
quint16 closedPort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace

class FailuresEndToEndTest : public QObject
{
    Q_OBJECT

    WorkspaceFixture *m_fixture = nullptr;

    QString ws() const { return m_fixture->workspace(); }

    QString compileTranscript() const
    {
        return "\nCompiling...\n\nBuild in: " + ws() + "/build\nOutput: " + m_fixture->output()
               + "\n\nMoving files to output folder...\nDone.\n\nAll done.\n";
    }

    // The workspace as the main download and the module operation leave it.
    void completeWorkspace()
    {
        m_fixture->clearWorkspaces();
        m_fixture->checkoutMain();
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        m_fixture->cloneModule(m_fixture->toolsURL(), "tools");
    }

    // The one workspace moved aside under a date suffix; a path that does
    // not exist unless there is exactly one.
    QString keptWorkspace() const
    {
        const QStringList kept = QDir(m_fixture->root()).entryList({"workspace.*"}, QDir::Dirs);
        return m_fixture->root() + "/" + (kept.size() == 1 ? kept.first() : "not one kept");
    }

    // The bar shows sentence, a line of the tool that holds evidence, and
    // the action's button; the companion has it once the window is idle.
    static void expectProblem(Harness &h, int tag, const QString &sentence, const QString &evidence,
                              const QString &action)
    {
        MessageBar *bar = h.controller.messageBar;
        QVERIFY(bar->isVisible());
        QCOMPARE(bar->text(), sentence);
        QVERIFY2(bar->detail().contains(evidence), qPrintable(bar->detail()));
        QPushButton *button = bar->actionButton();
        QCOMPARE(button && button->isVisibleTo(bar) ? button->text() : QString(), action);
        QCOMPARE(h.controller.problemTag, tag);
        if (h.isIdle())
            QCOMPARE(companionStatusLine(h.controller),
                     CompanionChannel::problemMessage(operationName(tag), sentence));
    }

    static void expectNoProblem(Harness &h)
    {
        QVERIFY(!h.controller.messageBar->isVisible());
        QVERIFY(!h.controller.problem);
        QCOMPARE(companionStatusLine(h.controller), CompanionChannel::idleMessage());
    }

    // A download's console is what it always was, whether it failed or not;
    // then the modules are offered, and Cancel ends there.
    static void declineModules(Harness &h, const QString &workspace)
    {
        AlertSheet *prompt = Harness::waitForSheet();
        QVERIFY(prompt);
        QCOMPARE(h.console(), cloneTranscript(workspace));
        QCOMPARE(prompt->text(), "Ready to install modules");
        prompt->buttonFor(AlertSheet::SecondButtonReturn)->click();
    }

private slots:
    void initTestCase()
    {
        m_fixture = new WorkspaceFixture;
        QVERIFY(m_fixture->isValid());
    }
    void cleanupTestCase() { delete m_fixture; }
    void init()
    {
        Harness::endSheets();
        m_fixture->serveSources();
        Harness::configure(ws(), m_fixture->output(), QStringLiteral("0"));
    }

    // The window, its alert for assistive technology and the status-bar
    // companion, over its channel as the application sends it, tell the
    // failure until the bar is closed.
    void cloneFromAnAddressThatRefuses()
    {
        const QString id = QStringLiteral("org.zelmor.test.problem");
        StatusbarCompanion companion(id, QStringLiteral("/nowhere/ZELMOR Helper.app"),
                                     {false, true});
        QVERIFY(companion.start());
        QAction *status = companion.menu()->actions().constFirst();
        CompanionStatusPublisher publisher(id);

        QDir(ws()).removeRecursively();
        m_fixture->serveSources(QStringLiteral("http://127.0.0.1:%1/zelmor.git").arg(closedPort()));
        Harness h;
        QObject::connect(&h.controller, &AppController::progressChanged, &publisher,
                         [&] { publisher.publish(companionStatusLine(h.controller)); });
        QSignalSpy told(&h.controller, &AppController::problemReported);
        MessageBar *bar = h.controller.messageBar;
        h.perform(AppController::TagClone);
        QVERIFY(Harness::waitForSheet());
        QCOMPARE(told.count(), 1);
        QVERIFY(bar->isVisible());
        EXPECT(declineModules(h, ws()));
        QVERIFY(h.isIdle());
        const QString sentence = "The server could not be reached. Check the internet "
                                 "connection, then try again.";
        EXPECT(expectProblem(h, AppController::TagClone, sentence, "Failed to connect to 127.0.0.1",
                             "Try Again"));
        const QString ended =
            "Get a complete copy of source codes of ZELLMOR from GitHub ended with a problem";
        const OperationNotice notice = problemNotice(AppController::TagClone, sentence);
        QCOMPARE(notice.summary, ended);
        QCOMPARE(notice.body, sentence);
        const QString said = ended + ": " + sentence;
        QTRY_COMPARE(status->text(), said);
        QVERIFY(status->isVisible());
        QCOMPARE(companion.toolTip(), "ZELMOR Helper\n" + said);

        // Assistive technology hears an alert; Tab reaches its buttons and
        // Escape on them closes it.
        QAccessibleInterface *alert = QAccessible::queryAccessibleInterface(bar);
        QVERIFY(alert);
        QCOMPARE(alert->role(), QAccessible::AlertMessage);
        QCOMPARE(alert->text(QAccessible::Name), "Problem");
        QVERIFY(alert->text(QAccessible::Description).startsWith(sentence));
        QCOMPARE(bar->closeButton()->accessibleName(), "Close");
        QVERIFY(bar->actionButton()->focusPolicy() & Qt::TabFocus);
        QVERIFY(bar->closeButton()->focusPolicy() & Qt::TabFocus);
        QTest::keyClick(bar->actionButton(), Qt::Key_Escape);
        EXPECT(expectNoProblem(h));
        QTRY_VERIFY(!status->isVisible());

        // Try Again runs the download once more; it starts by hiding the
        // bar, like every Perform.
        h.perform(AppController::TagClone);
        EXPECT(declineModules(h, ws()));
        QVERIFY(bar->isVisible());
        QTRY_VERIFY(status->isVisible());
        h.controller.performFailureAction();
        QVERIFY(!bar->isVisible());
        QCOMPARE(h.button(), "Stop");
        EXPECT(declineModules(h, ws()));
        QVERIFY(bar->isVisible());
        bar->closeButton()->click();
        EXPECT(expectNoProblem(h));
        QTRY_VERIFY(!status->isVisible());
    }

    // The default workspace for anyone but root lies in a folder the user
    // may not write; here a read-only view of a folder, in a mount namespace
    // of this test's own.
    void workspaceInAFolderThatMayNotBeWritten()
    {
#ifdef Q_OS_LINUX
        const QString locked = m_fixture->root() + "/locked";
        QVERIFY(QDir().mkpath(locked));
        const QByteArray path = QFile::encodeName(locked);
        if (::unshare(CLONE_NEWNS) != 0
            || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
            || ::mount(path.constData(), path.constData(), nullptr, MS_BIND, nullptr) != 0)
            QSKIP("this user cannot make a mount namespace");
        const bool readOnly =
            ::mount(nullptr, path.constData(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr)
            == 0;
        const auto unlock = qScopeGuard([&] { ::umount(path.constData()); });
        QVERIFY(readOnly);

        const QString workspace = locked + "/ZELMOR";
        Harness::configure(workspace, m_fixture->output(), QStringLiteral("0"));
        Harness h;
        QString chosen;
        h.controller.chooseWorkspaceFolder = [&] { chosen = "workspace"; };
        h.controller.chooseOutputFolder = [&] { chosen = "output"; };
        h.perform(AppController::TagClone);
        EXPECT(declineModules(h, workspace));
        EXPECT(expectProblem(h, AppController::TagClone,
                             "You may not write to the workspace folder " + workspace
                                 + ". Choose another folder.",
                             "Read-only file system", "Choose Another Folder..."));
        h.controller.messageBar->actionButton()->click();
        QCOMPARE(chosen, "workspace");
#else
        QSKIP("mount namespaces are Linux's");
#endif
    }

    void compileOfAProjectThatNeedsAMissingPackage()
    {
        completeWorkspace();
        TestSupport::writeFile(ws() + "/CMakeLists.txt",
                               "cmake_minimum_required(VERSION 3.13)\nproject(ZELMORSDL C)\n"
                               "find_package(OpenAL REQUIRED)\nadd_executable(ZELMORSDL main.c)\n");
        Harness h;
        h.perform(AppController::TagCompile);
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), compileTranscript(), Patience);
        QVERIFY(h.isIdle());
        // cmake failed first; make and cp failed after it.
        EXPECT(expectProblem(h, AppController::TagCompile,
                             "CMake could not find OpenAL, which compiling ZELMOR needs. Install "
                             "Essentials installs it.",
                             "Could NOT find OpenAL", "Install Essentials"));
        QVERIFY(h.controller.lastEndHadProblem);
    }

    // A cmake that is not there cannot start: the operation keeps its
    // running look as it always has, and the bar says what is missing.
    void compileWithoutCmake()
    {
        completeWorkspace();
        Harness h;
        h.controller.cmakeProgram = m_fixture->root() + "/no-cmake/cmake";
        QSignalSpy told(&h.controller, &AppController::problemReported);
        h.perform(AppController::TagCompile);
        QVERIFY(told.wait(Patience));
        QCOMPARE(h.console(), "\nCompiling...\n\nBuild in: " + ws()
                                  + "/build\nOutput: " + m_fixture->output() + "\n");
        QCOMPARE(h.button(), "Stop");
        EXPECT(expectProblem(h, AppController::TagCompile,
                             "cmake is not installed. Install Essentials installs it.", "",
                             "Install Essentials"));
        h.controller.perform(); // Stop brings the window back
        QVERIFY(h.isIdle());
    }

    void pullBlockedByALocalChange()
    {
        completeWorkspace();
        m_fixture->pushCommit("main", "main.c", "int main(void) { return 1; }\n");
        TestSupport::writeFile(ws() + "/main.c", "int main(void) { return 2; }\n");
        Harness h;
        h.perform(AppController::TagUpdate);
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), UpdateTranscript, Patience);
        EXPECT(
            expectProblem(h, AppController::TagUpdate,
                          "Changes made in the workspace to main.c stand in the way of the update. "
                          "Keep the workspace aside and download the sources again.",
                          "Your local changes to the following files would be overwritten",
                          "Move Aside and Download Again"));

        // The way out keeps the user's change aside and downloads afresh.
        h.controller.messageBar->actionButton()->click();
        QVERIFY(!h.controller.messageBar->isVisible());
        EXPECT(declineModules(h, ws()));
        QCOMPARE(TestSupport::readFile(keptWorkspace() + "/main.c"),
                 "int main(void) { return 2; }\n");
        QCOMPARE(TestSupport::readFile(ws() + "/main.c"), "int main(void) { return 1; }\n");
        EXPECT(expectNoProblem(h));
    }

    // A compile before the first download leaves the workspace with a build
    // folder and nothing else, where git will not download into.
    void downloadAfterACompileThatFoundNoDownload()
    {
        m_fixture->clearWorkspaces();
        Harness h;
        h.perform(AppController::TagCompile);
        QVERIFY(h.isIdle() && QFileInfo(ws() + "/build").isDir());
        // A check's own failure is in the console already.
        EXPECT(expectNoProblem(h));

        h.perform(AppController::TagClone);
        EXPECT(declineModules(h, ws()));
        EXPECT(expectProblem(
            h, AppController::TagClone,
            "The workspace folder " + ws()
                + " already exists but holds no download. Move it aside and download again.",
            "already exists and is not an empty directory", "Move Aside and Download Again"));

        h.controller.messageBar->actionButton()->click();
        EXPECT(declineModules(h, ws()));
        QVERIFY(QFileInfo::exists(ws() + "/.git"));
        QVERIFY(QFileInfo(keptWorkspace() + "/build").isDir());
        EXPECT(expectNoProblem(h));
    }

    // Neither a success nor what the user stopped is a problem.
    void runsThatDidNotFailShowNothingNew()
    {
        QDir(ws()).removeRecursively();
        Harness h;
        QSignalSpy told(&h.controller, &AppController::problemReported);
        h.perform(AppController::TagClone);
        EXPECT(declineModules(h, ws()));
        EXPECT(expectNoProblem(h));

        completeWorkspace();
        m_fixture->pushCommit("main", "NEWS.txt", "news\n");
        h.perform(AppController::TagUpdate);
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), UpdateTranscript, Patience);
        EXPECT(expectNoProblem(h));

        h.perform(AppController::TagCompile);
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), compileTranscript(), Patience);
        QVERIFY(QFileInfo::exists(m_fixture->output() + "/ZELMORSDL"));
        EXPECT(expectNoProblem(h));
        QVERIFY(!h.controller.lastEndHadProblem);

        TestSupport::writeFile(ws() + "/CMakeLists.txt",
                               "cmake_minimum_required(VERSION 3.13)\nproject(ZELMORSDL NONE)\n"
                               "execute_process(COMMAND sleep 30)\n");
        h.perform(AppController::TagCompile);
        QVERIFY(h.controller.unixTask);
        h.controller.perform(); // Stop
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nTask terminated by user.\n"), Patience);
        EXPECT(expectNoProblem(h));
        QCOMPARE(told.count(), 0);
    }
};

ZELMOR_TEST_MAIN(FailuresEndToEndTest)
#include "tst_failures_e2e.moc"
