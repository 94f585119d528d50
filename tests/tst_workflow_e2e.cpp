#include "ControllerHarness.h"

#include "WorkspaceFixture.h"
#include "workflow/AppController.h"

#include <QAbstractButton>
#include <QDir>
#include <QDirIterator>
#include <QTimer>

// The source download and the module operation against real git. The
// emulator's https URL is served from the fixture's repository through the
// test's own ~/.gitconfig (url.<base>.insteadOf), exactly as a user could.

namespace {

using Harness = ControllerHarness;
using TestSupport::readFile;
using TestSupport::writeFile;
// The answers to an existing folder's question; the third (Cancel, Skip) leaves it alone.
constexpr int Keep = AlertSheet::FirstButtonReturn, Replace = AlertSheet::SecondButtonReturn,
              Leave = AlertSheet::ThirdButtonReturn;

const QString ModuleChecks = QStringLiteral(
    "\nChecking files...\nDone.\n\nRegistering modules...\nDone.\nChecking modules...\n");

QString refusal(const QString &url, bool nameless)
{
    return "\nFailure.\nError: " + url +
           (nameless ? " gives no module name!" : " is not a plain module URL!") +
           " It is skipped.\n";
}

// Every file and folder below root with its content, except below the
// folders named in skip (relative to root).
QMap<QString, QByteArray> snapshot(const QString &root, const QStringList &skip = {})
{
    QMap<QString, QByteArray> items;
    QDirIterator it(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next(), relative = QDir(root).relativeFilePath(path);
        if (std::none_of(skip.begin(), skip.end(), [&](const QString &s) {
                return relative == s || relative.startsWith(s + u'/');
            }))
            items.insert(relative, it.fileInfo().isDir() ? QByteArray("<dir>") : readFile(path));
    }
    return items;
}

// The sheet that opens next, if it reads as given.
AlertSheet *expectSheet(const QString &text, const QString &info, const QStringList &buttons)
{
    AlertSheet *sheet = Harness::waitForSheet();
    [&] {
        QVERIFY(sheet);
        QCOMPARE(sheet->text(), text);
        QCOMPARE(sheet->informativeText(), info);
        QCOMPARE(sheet->buttonTitles(), buttons);
    }();
    return QTest::currentTestFailed() ? nullptr : sheet;
}

} // namespace

class WorkflowEndToEndTest : public QObject
{
    Q_OBJECT

    WorkspaceFixture *m_fixture = nullptr;
    QTemporaryDir m_markers;

    QString workspace() const { return m_fixture->workspace(); }
    QString markerFolder() const { return m_markers.path(); }
    // A value that creates a marker file if any part of it runs in a shell.
    QString touching(const QString &marker) const
    {
        return "x;touch${IFS}" + markerFolder() + "/" + marker;
    }

    // The main checkout with its empty module folders, and a fresh registry;
    // a null gitmodules keeps the checked-out one.
    void resetWorkspace(const QString &gitmodules = QString())
    {
        QDir(workspace()).removeRecursively();
        m_fixture->checkoutMain();
        if (!gitmodules.isNull())
            writeFile(workspace() + "/.gitmodules", gitmodules.toUtf8());
    }

    // No workspace (nor one kept by an earlier test), the source URL served.
    // slowServer: through git's file:// transport, by a server that waits 20
    // seconds before it sends anything.
    void prepareClone(bool slowServer)
    {
        m_fixture->clearWorkspaces();
        if (slowServer)
            m_fixture->serveSources("file://" + m_fixture->root() + "/zelmor.git",
                                    "[uploadpack]\n\tpackObjectsHook = \"sleep 20;\"\n");
        else
            m_fixture->serveSources();
    }

    // The download as the user starts it, up to its prompt; "Done." and the
    // prompt, counting from 10.
    AlertSheet *openModulesPrompt(Harness &h, bool perform = true)
    {
        if (perform) {
            prepareClone(false);
            h.perform(AppController::TagClone);
        }
        AlertSheet *prompt = expectSheet("Ready to install modules",
                                         "Main source codes are ready. Do you want to get modules "
                                         "initialized right now?\nCount down 10 secs...",
                                         {"Perform", "Cancel"});
        if (prompt)
            [&] {
                QCOMPARE(h.console(), cloneTranscript(workspace()));
                QCOMPARE(h.button(), "Stop");
                QCOMPARE(h.controller.selectedTag(), int(AppController::TagClone));
            }();
        return QTest::currentTestFailed() ? nullptr : prompt;
    }

    void expectModulesDone(Harness &h)
    {
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), moduleTranscript(workspace(), "tools") + "\nDone.\n",
                                  Patience);
        QCOMPARE(h.button(), "Perform");
        for (const char *path : {"/lang/en.txt", "/tools/tool.txt", "/lang/.git"})
            QVERIFY2(QFileInfo::exists(workspace() + path), path);
    }

private slots:
    void initTestCase()
    {
        m_fixture = new WorkspaceFixture;
        QVERIFY(m_fixture->isValid());
        QVERIFY(m_markers.isValid());
        ControllerHarness::configure(workspace(), m_fixture->output(), QStringLiteral("0"));
    }
    void cleanupTestCase() { delete m_fixture; }
    void init()
    {
        Harness::endSheets();
        QFile::remove(TestSupport::homeDir() + "/.gitconfig");
    }

    // An existing workspace (before the download) or module folder is asked
    // about first: kept under its date suffix, replaced as a whole, or left.
    void existingFolderIsAskedAbout_data()
    {
        TestSupport::columns<int, int>({"tag", "answer"});
        for (const int tag : {AppController::TagClone, AppController::TagModules}) {
            const bool clone = tag == AppController::TagClone;
            QTest::addRow("%s, Keep", clone ? "workspace" : "module") << tag << Keep;
            QTest::addRow("%s, Replace", clone ? "workspace" : "module") << tag << Replace;
            QTest::addRow("%s", clone ? "workspace, Cancel" : "module, Skip") << tag << Leave;
        }
    }
    void existingFolderIsAskedAbout()
    {
        QFETCH(int, tag);
        QFETCH(int, answer);
        const bool clone = tag == AppController::TagClone;
        const QString ws = workspace(), folder = clone ? ws : ws + "/lang";
        if (clone) {
            prepareClone(false);
            QVERIFY(QDir().mkpath(ws + "/.git")); // only .git makes it a workspace
        } else {
            resetWorkspace();
            m_fixture->cloneModule(m_fixture->langURL(), "lang");
        }
        writeFile(folder + "/mine.txt", "mine\n");
        Harness h;
        h.perform(tag);
        AlertSheet *sheet =
            clone ? expectSheet("Notice",
                                ws + " already exists. It may be source codes.\nFolder will add "
                                     "current date as extension if you choose to keep it.\n \n"
                                     "How to deal with it?",
                                {"Keep", "Replace", "Cancel"})
                  : expectSheet("Module Exists", "Found submodule 'lang'\nHow to deal with it?",
                                {"Keep", "Replace", "Skip"});
        QVERIFY(sheet);
        QCOMPARE(h.console(), clone ? "\nChecking files...\n" : ModuleChecks);
        sheet->buttonFor(answer)->click();
        if (!clone)
            expectModulesDone(h);
        else if (answer == Leave)
            QVERIFY(h.isIdle() && !h.controller.unixTask);
        else
            QVERIFY(openModulesPrompt(h, false));
        const QFileInfo at(folder);
        const QStringList kept = at.dir().entryList({at.fileName() + ".*"}, QDir::Dirs);
        QCOMPARE(kept.size(), answer == Keep ? 1 : 0);
        if (answer == Keep)
            QVERIFY(QFileInfo::exists(at.path() + "/" + kept.first() + "/mine.txt"));
        QCOMPARE(QFileInfo::exists(folder + "/mine.txt"), answer == Leave); // a whole replacement
    }

    // The prompt's Perform starts the modules at once; the button keeps
    // reading "Stop".
    void modulesPromptPerformStartsTheModules()
    {
        Harness h;
        AlertSheet *prompt = openModulesPrompt(h);
        QVERIFY(prompt);
        prompt->buttonFor(AlertSheet::FirstButtonReturn)->click();
        QVERIFY(!h.controller.timer()->isActive());
        QCOMPARE(h.console(), moduleTranscript(workspace(), "lang"));
        QCOMPARE(h.button(), "Stop");
        QCOMPARE(h.controller.selectedTag(), int(AppController::TagModules));
        expectModulesDone(h);
    }

    // Left alone, the prompt counts down once a second, from the first tick
    // on asking about "essential" modules, and at 0 goes back to the idle
    // look and starts the modules.
    void modulesPromptCountdownStartsTheModulesAtZero()
    {
        Harness h;
        QVERIFY(openModulesPrompt(h));
        QTimer *tick = h.controller.timer();
        QCOMPARE(tick->interval(), 1000);
        QStringList seen, expected; // after each tick: question | operation selected | button
        connect(tick, &QTimer::timeout, this, [&] {
            seen << h.controller.iAlert->informativeText() + " | "
                        + QString::number(h.controller.selectedTag()) + " | " + h.button();
        });
        for (int left = 9; left >= 0; --left)
            expected << QStringLiteral("Main source codes are ready. Do you want to get essential "
                                       "modules initialized right now?\nCount down %1 secs... | %2 | %3")
                            .arg(left)
                            .arg(left ? AppController::TagClone : AppController::TagModules)
                            // The idle look comes back before the modules begin.
                            .arg(left ? "Stop" : "Perform");
        tick->setInterval(20); // the seconds themselves are not waited for
        QTRY_COMPARE_WITH_TIMEOUT(seen.size(), 10, Patience);
        QCOMPARE(seen, expected);
        QVERIFY(AlertSheet::openSheets().isEmpty() && !tick->isActive());
        expectModulesDone(h);
    }

    // Each registration starts from the backup: nothing is appended twice,
    // and the backup keeps the checkout's own settings. Skipping the last
    // module ends the operation.
    void registrationStartsFromTheBackupEachTime()
    {
        resetWorkspace();
        const QString ws = workspace();
        const QByteArray pristine = readFile(ws + "/.git/config");
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        m_fixture->cloneModule(m_fixture->toolsURL(), "tools");
        Harness h;
        for (int run = 0; run < 2; ++run) {
            h.perform(AppController::TagModules);
            AlertSheet *lang = Harness::waitForSheet();
            QVERIFY(lang);
            lang->buttonFor(Leave)->click();
            AlertSheet *tools = Harness::waitForSheet();
            QVERIFY(tools && tools != lang);
            QCOMPARE(tools->informativeText(), "Found submodule 'tools'\nHow to deal with it?");
            tools->buttonFor(Leave)->click();
        }
        QCOMPARE(h.console(), ModuleChecks + "\nSkip module lang\n\nSkip module tools\n\nDone.\n");
        QVERIFY(h.isIdle());
        QCOMPARE(readFile(ws + "/.git/config.origin"), pristine);
        QCOMPARE(readFile(ws + "/.git/config"), pristine + "\n" + readFile(ws + "/.gitmodules"));
    }

    void stopDuringClone_data()
    {
        QTest::addColumn<int>("tag");
        QTest::newRow("sources") << int(AppController::TagClone);
        QTest::newRow("module") << int(AppController::TagModules);
    }
    void stopDuringClone()
    {
        QFETCH(int, tag);
        prepareClone(true);
        if (tag == AppController::TagModules)
            resetWorkspace(gitmodulesEntry("lang", "file://" + m_fixture->langURL()));
        Harness h;
        h.perform(tag);
        QTRY_VERIFY_WITH_TIMEOUT(
            h.controller.unixTask && h.controller.unixTask->state() == QProcess::Running, Patience);
        h.controller.perform(); // Stop
        QCOMPARE(h.button(), "Perform");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nTask terminated by user.\n"), Patience);
        QVERIFY(AlertSheet::openSheets().isEmpty()); // no prompt, no next module
        QVERIFY(!h.controller.unixTask && h.controller.now == 0);
    }

    void moduleOperationWithoutWorkspaceFails()
    {
        prepareClone(false);
        Harness h;
        h.perform(AppController::TagModules);
        QCOMPARE(h.console(), "\nChecking files...\nFailure.\nError: " + workspace() +
                                  " or .git in it not found!Please re-download a complete copy "
                                  "of source codes.");
        QVERIFY(h.isIdle() && !h.controller.unixTask);
    }

    // With no modules listed, the module operation ends without asking.
    void moduleOperationWithoutGitmodulesEndsAtOnce()
    {
        resetWorkspace();
        QVERIFY(QFile::remove(workspace() + "/.gitmodules"));
        Harness h;
        h.perform(AppController::TagModules);
        QCOMPARE(h.console(), ModuleChecks + "\nDone.\n");
        QVERIFY(h.isIdle() && !h.controller.unixTask);
        QCOMPARE(readFile(workspace() + "/.git/config"), // nothing to append
                 readFile(workspace() + "/.git/config.origin") + "\n(null)");
    }

    // The update counts a refused entry as a module that is not there.
    void updateCountsARefusedEntryAsMissing()
    {
        const QString url = touching("update");
        resetWorkspace(gitmodulesEntry("lang", m_fixture->langURL())
                       + gitmodulesEntry("evil", url));
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        Harness h;
        h.perform(AppController::TagUpdate);
        QCOMPARE(h.console(), "\nChecking files...\n" + refusal(url, false));
        QVERIFY(h.isIdle() && !h.controller.unixTask);
        QVERIFY(QDir(markerFolder()).isEmpty());
    }

    // A child's completion goes by the item selected when it ends: a clone
    // that ends with "Get module initialized" selected finds no module left
    // to fetch.
    void cloneEndingWithModulesSelectedEndsTheOperation()
    {
        prepareClone(false);
        Harness h;
        h.perform(AppController::TagClone);
        h.controller.selectItemWithTag(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(!h.controller.unixTask, Patience);
        QCOMPARE(h.console(), cloneTranscript(workspace()));
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QCOMPARE(h.button(), "Perform");
    }

    // An update that ends with the download selected asks about the modules;
    // Cancel goes back to idle and nothing else runs.
    void updateEndingWithCloneSelectedOffersTheModules()
    {
        resetWorkspace(QStringLiteral("")); // no modules to check
        Harness h;
        h.perform(AppController::TagUpdate);
        h.controller.selectItemWithTag(AppController::TagClone);
        AlertSheet *prompt = Harness::waitForSheet();
        QVERIFY(prompt);
        QCOMPARE(prompt->text(), "Ready to install modules");
        QCOMPARE(h.console(),
                 "\nUpdating source codes...\n\nChecking for update of ZELMOR master...\n\nDone.\n");
        prompt->buttonFor(AlertSheet::SecondButtonReturn)->click();
        QVERIFY(h.isIdle() && !h.controller.unixTask);
        QVERIFY(!h.controller.timer()->isActive());
    }

    // A .gitmodules written by a stranger: every payload below would create
    // its marker file (@M@) if any part of it ran, and the ordinary entry
    // beside it is still cloned.
    void hostileURLsRunNothing_data()
    {
        QTest::addColumn<QString>("payload");
        // Blank-free values keep the registry's stride, so their own refusal
        // ends the transcript.
        const char *const payloads[] = {
            "https://h/x.git;touch${IFS}@M@", "$(touch${IFS}@M@)", "`touch${IFS}@M@`",
            "x|touch${IFS}@M@", "x&&touch${IFS}@M@", "x>@M@", "x;{touch,@M@}",
            "<(touch${IFS}@M@)", "x;\"touch\"${IFS}\"@M@\"", "x;$'\\x74ouch'${IFS}@M@",
            "x\r;touch${IFS}@M@", "x\xc2\xa0;touch${IFS}@M@", "x\t;\ttouch\t@M@",
            // No shell character at all: TAB splits, git takes the option.
            "--upload-pack=touch\tfile://@M@", "-c\tcore.sshCommand=touch\t@M@",
            "a=~/x;touch${IFS}@M@",
            // With blanks and line feeds the stride moves; still nothing runs.
            "x && touch @M@", "x\n;touch @M@",
        };
        int row = 0;
        for (const char *payload : payloads)
            QTest::addRow("%02d", ++row) << QString::fromUtf8(payload);
    }
    void hostileURLsRunNothing()
    {
        QFETCH(QString, payload);
        const QString url = payload.replace("@M@", markerFolder() + "/" + QTest::currentDataTag());
        // The ordinary module comes first, so every value keeps it in reach.
        const QString gitmodules =
            gitmodulesEntry("tools", m_fixture->toolsURL()) + gitmodulesEntry("evil", url);
        resetWorkspace(gitmodules);
        const QStringList cloned{"workspace/tools", "workspace/.git/config"};
        const auto before = snapshot(m_fixture->root(), cloned);
        const auto home = snapshot(TestSupport::homeDir(), {".config"});

        Harness h;
        h.perform(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);

        QVERIFY2(QDir(markerFolder()).isEmpty(), qPrintable(url));
        QVERIFY(QFileInfo::exists(workspace() + "/tools/tool.txt"));
        QCOMPARE(readFile(workspace() + "/.git/config"),
                 readFile(workspace() + "/.git/config.origin") + "\n" + gitmodules.toUtf8());
        auto after = snapshot(m_fixture->root(), cloned);
        QVERIFY(after.remove("workspace/.git/config.origin"));
        QCOMPARE(after, before);
        QCOMPARE(snapshot(TestSupport::homeDir(), {".config"}), home);

        const QString console = h.console();
        QVERIFY(console.contains("\nFailure.\nError: "));
        if (!url.contains(u' ') && !url.contains(u'\n')) {
            // The console shows a carriage return as a line break, and a
            // no-break space as a blank.
            const QString shown = QString(url).replace(u'\r', u'\n').replace(QChar::Nbsp, u' ');
            const QString head = moduleTranscript(workspace(), "tools");
            QVERIFY2(console == head + refusal(shown, false) + "\nDone.\n" ||
                         console == head + refusal(shown, true) + "\nDone.\n",
                     qPrintable(console));
        }
    }

    // Refused entries before, between and after ordinary ones: each ordinary
    // module is fetched once, in order, and nothing waits for the others. A
    // URL whose name comes out empty names the workspace itself: neither the
    // question nor "Replace" may ever reach it. A module folder without .git
    // that holds something is moved aside, not removed.
    void refusedEntriesArePassedOver()
    {
        const QString first = touching("first"), empty = QStringLiteral("https://host/owner/.git");
        resetWorkspace(gitmodulesEntry("a", first) + gitmodulesEntry("lang", m_fixture->langURL()) +
                       gitmodulesEntry("b", "https://h/owner/~.git") +
                       gitmodulesEntry("tools", "file://" + m_fixture->toolsURL()) +
                       gitmodulesEntry("c", empty));
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        writeFile(workspace() + "/notes.txt", "mine\n");
        writeFile(workspace() + "/tools/build/.mine", "mine\n");
        Harness h;
        h.perform(AppController::TagModules);
        AlertSheet *sheet = Harness::waitForSheet();
        QVERIFY(sheet);
        QCOMPARE(h.console(), ModuleChecks + refusal(first, false));
        sheet->buttonFor(Replace)->click();
        QCOMPARE(h.console(), moduleTranscript(workspace(), "lang"));
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(),
                 moduleTranscript(workspace(), "tools") + refusal(empty, true) + "\nDone.\n");
        for (const char *file : {"/notes.txt", "/.git/HEAD", "/lang/en.txt", "/tools/tool.txt"})
            QVERIFY(QFileInfo::exists(workspace() + file));
        const QStringList kept = QDir(workspace()).entryList({"tools.*"}, QDir::Dirs);
        QVERIFY(kept.size() == 1 && QFile::exists(workspace() + "/" + kept[0] + "/build/.mine"));
        QVERIFY(QDir(markerFolder()).isEmpty());
        QVERIFY(h.isIdle() && AlertSheet::openSheets().isEmpty());
    }

    // A module question left open while the user stops and runs an update
    // whose check derives an empty name (that of the workspace itself): a
    // late Keep or Replace touches nothing.
    void lateAnswerForAnEmptyModuleNameTouchesNothing_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("Keep") << Keep;
        QTest::newRow("Replace") << Replace;
    }
    void lateAnswerForAnEmptyModuleNameTouchesNothing()
    {
        QFETCH(int, answer);
        const QString empty = QStringLiteral("https://host/owner/.git");
        resetWorkspace(gitmodulesEntry("lang", m_fixture->langURL()));
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        Harness h;
        h.perform(AppController::TagModules);
        AlertSheet *question = Harness::waitForSheet();
        QVERIFY(question);
        h.controller.perform(); // Stop
        writeFile(workspace() + "/.gitmodules", gitmodulesEntry("c", empty).toUtf8());
        h.perform(AppController::TagUpdate);
        QCOMPARE(h.console(), "\nChecking files...\n" + refusal(empty, true));
        const auto before = snapshot(workspace());
        question->buttonFor(answer)->click();
        QCOMPARE(snapshot(workspace()), before);
    }

    // Settings other than submodule entries are never registered, so the
    // update's git commands cannot obey them (git pull would run this
    // fsmonitor hook); blank-free, so the stride still finds the one URL.
    QString foreignSettingsGitmodules() const
    {
        return gitmodulesEntry("lang", m_fixture->langURL()) + "[core]\n\tfsmonitor = touch${IFS}"
               + markerFolder() + "/config;:\n";
    }
    void foreignSettingsAreReportedAndNotRegistered()
    {
        resetWorkspace(foreignSettingsGitmodules());
        m_fixture->cloneModule(m_fixture->langURL(), "lang"); // its question halts the transcript
        const QByteArray config = readFile(workspace() + "/.git/config");
        Harness h;
        h.perform(AppController::TagModules);
        QVERIFY(Harness::waitForSheet());
        QCOMPARE(h.console(),
                 "\nChecking files...\nDone.\n\nRegistering modules...\n\nFailure.\nError: "
                     + workspace()
                     + "/.gitmodules holds more than submodule entries! The modules are not "
                       "registered in .git/config.\nDone.\nChecking modules...\n");
        QCOMPARE(readFile(workspace() + "/.git/config"), config);
        QVERIFY(!QFileInfo::exists(workspace() + "/.git/config.origin"));
    }
    void foreignSettingsAreNotObeyed()
    {
        resetWorkspace(foreignSettingsGitmodules());
        Harness h;
        h.perform(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QVERIFY(QFileInfo::exists(workspace() + "/lang/en.txt"));
        h.perform(AppController::TagUpdate);
        QTRY_VERIFY2_WITH_TIMEOUT(h.console().endsWith("All done.\n"), qPrintable(h.console()),
                                  Patience);
        QVERIFY(QDir(markerFolder()).isEmpty());
    }
};

ZELMOR_TEST_MAIN(WorkflowEndToEndTest)
#include "tst_workflow_e2e.moc"
