#include "ControllerHarness.h"

#include "BuildConfig.h"
#include "WorkspaceFixture.h"
#include "workflow/AppController.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTimer>

// The source download and the module operation against real git, with the
// emulator's repository and its modules served from local folders: the
// test's own ~/.gitconfig maps their https URLs there (url.<base>.insteadOf),
// exactly as a user could.

namespace {

using Harness = ControllerHarness;
const QString LangURL = QStringLiteral("https://github.com/zelmor-emu/emu-lang.git");
const QString ToolsURL = QStringLiteral("https://github.com/zelmor-emu/tools.git");

class Upstream
{
public:
    explicit Upstream(bool withModules = true)
    {
        const QString root = m_dir.path(), work = root + "/zelmor.work";
        m_lang = TestSupport::makeBareRepository(root, "emu-lang", {{"en.txt", "Perform\n"}});
        m_tools = TestSupport::makeBareRepository(root, "tools", {{"tool.txt", "tool\n"}});
        QDir().mkpath(work);
        TestSupport::git(work, {"init", "-q", "-b", "master"});
        TestSupport::writeFile(work + "/README", "ZELMOR\n");
        if (withModules) {
            m_gitmodules = gitmodulesEntry("lang", LangURL) + gitmodulesEntry("tools", ToolsURL);
            TestSupport::writeFile(work + "/.gitmodules", m_gitmodules.toUtf8());
            // Gitlinks, so a checkout has the empty module folders git leaves.
            for (const auto &[path, bare] :
                 {std::pair{"lang", m_lang}, std::pair{"tools", m_tools}}) {
                const QString head = TestSupport::git(bare, {"rev-parse", "HEAD"}).trimmed();
                TestSupport::git(
                    work, {"update-index", "--add", "--cacheinfo", "160000," + head + "," + path});
            }
        }
        TestSupport::git(work, {"add", "-A"});
        TestSupport::git(work, {"commit", "-q", "-m", "initial"});
        m_source = root + "/zelmor.git";
        TestSupport::git(root, {"clone", "-q", "--bare", work, m_source});
        serve(false);
        SettingsStore::standard().setObject(SettingsKeys::Workspace, workspace());
        SettingsStore::standard().setObject(SettingsKeys::Log, QStringLiteral("0"));
    }

    // slowServer: clones go through git's file:// transport to a server
    // that waits 20 seconds before it sends anything.
    void serve(bool slowServer) const
    {
        const QString scheme = slowServer ? QStringLiteral("file://") : QString();
        QString config;
        for (const auto &[local, url] :
             {std::pair{m_source, QStringLiteral(ZELMOR_SOURCE_REPOSITORY_URL)},
              std::pair{m_lang, LangURL}, std::pair{m_tools, ToolsURL}})
            config += QStringLiteral("[url \"%1%2\"]\n\tinsteadOf = %3\n").arg(scheme, local, url);
        if (slowServer)
            config += "[uploadpack]\n\tpackObjectsHook = \"sleep 20;\"\n";
        TestSupport::writeFile(TestSupport::homeDir() + "/.gitconfig", config.toUtf8());
    }

    QString workspace() const { return m_dir.path() + "/ws"; }
    QString gitmodules() const { return m_gitmodules; }
    void checkoutSource() const
    {
        TestSupport::git(m_dir.path(), {"clone", "-q", ZELMOR_SOURCE_REPOSITORY_URL, workspace()});
    }

private:
    QTemporaryDir m_dir;
    QString m_source, m_lang, m_tools, m_gitmodules;
};

QString cloneTranscript(const QString &workspace)
{
    return "\nDownloading source codes...\n\nLocation: " + workspace + "\n\n\nDone.\n";
}

const QString Marker = QStringLiteral("@M@");

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
        const QString path = it.next();
        const QString relative = QDir(root).relativeFilePath(path);
        if (std::any_of(skip.begin(), skip.end(), [&](const QString &s) {
                return relative == s || relative.startsWith(s + u'/');
            }))
            continue;
        const QFileInfo info = it.fileInfo();
        items.insert(relative, info.isDir() ? QByteArray("<dir>")
                                            : QCryptographicHash::hash(TestSupport::readFile(path),
                                                                       QCryptographicHash::Sha1));
    }
    return items;
}

const QString ModuleChecks = QStringLiteral(
    "\nChecking files...\nDone.\n\nRegistering modules...\nDone.\nChecking modules...\n");

// One row per answer of a three-button sheet.
void answerRows(const QStringList &titles)
{
    QTest::addColumn<int>("answer");
    for (int i = 0; i < titles.size(); ++i)
        QTest::newRow(qPrintable(titles.at(i))) << AlertSheet::FirstButtonReturn + i;
}

} // namespace

class WorkflowEndToEndTest : public QObject
{
    Q_OBJECT

    WorkspaceFixture *m_fixture = nullptr;
    QTemporaryDir m_markers;

    QString workspace() const { return m_fixture->workspace(); }
    QString markerFolder() const { return m_markers.path(); }

    // The main checkout with its empty module folders, and a fresh registry.
    void resetWorkspace(const QString &gitmodules)
    {
        QDir(workspace()).removeRecursively();
        m_fixture->checkoutMain();
        TestSupport::writeFile(workspace() + "/.gitmodules", gitmodules.toUtf8());
        ControllerHarness::configure(workspace(), m_fixture->output(), QStringLiteral("0"));
    }

private:
    // After the clone: the prompt, its texts and the running look.
    void expectReadyPrompt(Harness &h, const Upstream &upstream, AlertSheet *&prompt)
    {
        QVERIFY((prompt = Harness::waitForSheet()));
        QCOMPARE(h.console(), cloneTranscript(upstream.workspace()));
        QCOMPARE(prompt->text(), "Ready to install modules");
        QCOMPARE(prompt->informativeText(),
                 "Main source codes are ready. Do you want to get "
                 "modules initialized right now?\nCount down 10 secs...");
        QCOMPARE(prompt->buttonTitles(), (QStringList{"Perform", "Cancel"}));
        QCOMPARE(h.button(), "Stop");
        QVERIFY(QFileInfo::exists(upstream.workspace() + "/README"));
    }

    void expectModulesDone(Harness &h, const Upstream &upstream)
    {
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        const QString ws = upstream.workspace();
        QCOMPARE(h.console(), moduleTranscript(ws, "tools") + "\nDone.\n");
        QCOMPARE(h.button(), "Perform");
        QCOMPARE(h.controller.now, 0);
        for (const char *path : {"/lang/en.txt", "/tools/tool.txt", "/lang/.git"})
            QVERIFY2(QFileInfo::exists(ws + path), path);
        const QByteArray origin = TestSupport::readFile(ws + "/.git/config.origin");
        QVERIFY(origin.contains("[core]"));
        QCOMPARE(TestSupport::readFile(ws + "/.git/config"),
                 origin + "\n" + upstream.gitmodules().toUtf8());
    }

private slots:
    void initTestCase()
    {
        m_fixture = new WorkspaceFixture;
        QVERIFY(m_fixture->isValid());
        QVERIFY(m_markers.isValid());
    }
    void cleanupTestCase() { delete m_fixture; }
    void init()
    {
        Harness::endSheets();
        QFile::remove(TestSupport::homeDir() + "/.gitconfig");
    }

    // After the clone the prompt starts the modules: by its Perform, or when
    // its countdown (here ticked by the test, not waited for) reaches 0.
    void cloneThenModules_data()
    {
        QTest::addColumn<bool>("perform");
        QTest::newRow("Perform") << true;
        QTest::newRow("countdown") << false;
    }
    void cloneThenModules()
    {
        QFETCH(bool, perform);
        Upstream upstream;
        const QString ws = upstream.workspace();
        Harness h;
        h.perform(AppController::TagClone);
        AlertSheet *prompt = nullptr;
        expectReadyPrompt(h, upstream, prompt);
        if (QTest::currentTestFailed())
            return;
        if (perform) {
            prompt->buttonFor(1000)->click();
            // Started by the answer: the button keeps reading "Stop".
            QVERIFY(!h.controller.timer->isActive());
            QCOMPARE(h.console(), moduleTranscript(ws, "lang"));
            QCOMPARE(h.button(), "Stop");
        } else {
            QCOMPARE(h.controller.timer->interval(), 1000);
            h.controller.timer->stop();
            for (int left = 9; left >= 1; --left) {
                h.controller.timeCountdownOfReadytoInstallModule();
                QCOMPARE(prompt->informativeText(),
                         QStringLiteral("Main source codes are ready. Do you want to get essential "
                                        "modules initialized right now?\nCount down %1 secs...")
                             .arg(left));
            }
            QCOMPARE(h.controller.selectedTag(), int(AppController::TagClone));
            h.controller.timeCountdownOfReadytoInstallModule();
            QVERIFY(AlertSheet::openSheets().isEmpty());
            // The dismiss branch restored the idle look before the modules began.
            QCOMPARE(h.button(), "Perform");
        }
        QCOMPARE(h.controller.selectedTag(), int(AppController::TagModules));
        expectModulesDone(h, upstream);
    }

    void existingWorkspace_data() { answerRows({"Keep", "Replace", "Cancel"}); }
    void existingWorkspace()
    {
        QFETCH(int, answer);
        Upstream upstream;
        const QString ws = upstream.workspace();
        TestSupport::writeFile(ws + "/.git/mine", "old\n");
        TestSupport::writeFile(ws + "/notes.txt", "mine\n");
        Harness h;
        h.perform(AppController::TagClone);
        AlertSheet *sheet = Harness::waitForSheet();
        QVERIFY(sheet);
        QCOMPARE(sheet->text(), "Notice");
        QCOMPARE(sheet->informativeText(),
                 ws + " already exists. It may be source codes.\nFolder will add current date as "
                      "extension if you choose to keep it.\n \nHow to deal with it?");
        QCOMPARE(sheet->buttonTitles(), (QStringList{"Keep", "Replace", "Cancel"}));
        QCOMPARE(h.console(), "\nChecking files...\n");
        sheet->buttonFor(answer)->click();

        const QStringList kept =
            QDir(QFileInfo(ws).path()).entryList({"ws.*"}, QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(kept.size(), answer == 1000 ? 1 : 0);
        if (answer == 1002) { // Cancel leaves everything
            QVERIFY(h.isIdle() && !h.controller.unixTask);
            QVERIFY(QFileInfo::exists(ws + "/.git/mine"));
            return;
        }
        AlertSheet *prompt = nullptr;
        expectReadyPrompt(h, upstream, prompt);
        if (QTest::currentTestFailed())
            return;
        QVERIFY(!QFileInfo::exists(ws + "/notes.txt")); // the whole folder went
        if (answer == 1000) {
            QVERIFY(QRegularExpression("^ws\\.\\d{4}-\\d\\d-\\d\\d \\d\\d\\.\\d\\d\\.\\d\\d$")
                        .match(kept.first())
                        .hasMatch());
            QVERIFY(QFileInfo::exists(QFileInfo(ws).path() + "/" + kept.first() + "/notes.txt"));
        }
        prompt->buttonFor(1001)->click(); // Cancel: back to idle, nothing else runs
        QVERIFY(h.isIdle() && !h.controller.unixTask);
        QVERIFY(!h.controller.timer->isActive());
    }

    void existingModule_data() { answerRows({"Keep", "Replace", "Skip"}); }
    void existingModule()
    {
        QFETCH(int, answer);
        Upstream upstream;
        upstream.checkoutSource();
        const QString ws = upstream.workspace();
        const QByteArray pristine = TestSupport::readFile(ws + "/.git/config");
        QDir(ws + "/lang").removeRecursively();
        TestSupport::git(ws, {"clone", "-q", LangURL, "lang"});
        TestSupport::writeFile(ws + "/lang/mine.txt", "mine\n");

        Harness h;
        h.perform(AppController::TagModules);
        AlertSheet *sheet = Harness::waitForSheet();
        QVERIFY(sheet);
        QCOMPARE(sheet->text(), "Module Exists");
        QCOMPARE(sheet->informativeText(), "Found submodule 'lang'\nHow to deal with it?");
        QCOMPARE(sheet->buttonTitles(), (QStringList{"Keep", "Replace", "Skip"}));
        QCOMPARE(h.console(), ModuleChecks);
        sheet->buttonFor(answer)->click();
        expectModulesDone(h, upstream);

        const QStringList kept = QDir(ws).entryList({"lang.*"}, QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(kept.size(), answer == 1000 ? 1 : 0);
        QCOMPARE(QFileInfo::exists(ws + "/lang/mine.txt"), answer == 1002);
        if (answer == 1000)
            QVERIFY(QFileInfo::exists(ws + "/" + kept.first() + "/mine.txt"));

        // A second registration starts from the backup again: nothing is
        // appended twice, and the backup stays as it was.
        h.perform(AppController::TagModules);
        AlertSheet *again = Harness::waitForSheet();
        QVERIFY(again);
        again->buttonFor(1002)->click(); // Skip lang
        AlertSheet *tools = Harness::waitForSheet();
        QVERIFY(tools && tools != again);
        QCOMPARE(tools->informativeText(), "Found submodule 'tools'\nHow to deal with it?");
        tools->buttonFor(1002)->click(); // Skip the last one ends the operation
        QCOMPARE(h.console(), ModuleChecks + "\nSkip module lang\n\nSkip module tools\n\nDone.\n");
        QCOMPARE(TestSupport::readFile(ws + "/.git/config.origin"), pristine);
        QCOMPARE(TestSupport::readFile(ws + "/.git/config"),
                 pristine + "\n" + upstream.gitmodules().toUtf8());
    }

    // Module operations that end without asking: no modules listed, no workspace.
    void modulesWithoutQuestions_data()
    {
        QTest::addColumn<bool>("checkout");
        QTest::addColumn<QString>("console"); // WS stands for the workspace
        QTest::newRow("empty module list") << true << ModuleChecks + "\nDone.\n";
        QTest::newRow("no workspace")
            << false
            << "\nChecking files...\nFailure.\nError: WS or .git in it not "
               "found!Please re-download a complete copy of source codes.";
    }
    void modulesWithoutQuestions()
    {
        QFETCH(bool, checkout);
        QFETCH(QString, console);
        Upstream upstream(false);
        const QString ws = upstream.workspace();
        if (checkout)
            upstream.checkoutSource();
        Harness h;
        h.perform(AppController::TagModules);
        QCOMPARE(h.console(), console.replace("WS", ws));
        QVERIFY(h.isIdle() && !h.controller.unixTask);
        if (checkout) // no .gitmodules to append
            QCOMPARE(TestSupport::readFile(ws + "/.git/config"),
                     TestSupport::readFile(ws + "/.git/config.origin") + "\n(null)");
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
        Upstream upstream;
        if (tag == AppController::TagModules)
            upstream.checkoutSource();
        upstream.serve(true);
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

    // A child's completion goes by the item selected when it ends.
    void popupSwitchedWhileRunning()
    {
        // With "Get module initialized" selected there is no module left to fetch.
        Upstream upstream;
        Harness h;
        h.perform(AppController::TagClone);
        h.controller.selectItemWithTag(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(!h.controller.unixTask, Patience);
        QCOMPARE(h.console(), cloneTranscript(upstream.workspace()));
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QCOMPARE(h.button(), "Perform");

        // A compile that ends with the clone selected asks about the modules.
        h.controller.outputField->setString(QString());
        h.runAsOperation(AppController::TagCompile, QStringLiteral("true"), QDir::homePath());
        h.controller.selectItemWithTag(AppController::TagClone);
        AlertSheet *prompt = Harness::waitForSheet();
        QVERIFY(prompt);
        QCOMPARE(prompt->text(), "Ready to install modules");
        QCOMPARE(h.console(), "\nDone.\n");
        prompt->buttonFor(1001)->click();
        QCOMPARE(h.button(), "Perform");
    }

    // A .gitmodules written by a stranger, through "Get module initialized"
    // and "Update source codes and submodules": every payload below would
    // create its marker file if any part of it ran, and the ordinary entries
    // beside them are still cloned.
    void hostileURLsRunNothing_data()
    {
        QTest::addColumn<QString>("payload");
        // @M@ stands for the row's marker file. Blank-free values keep the
        // registry's stride, so their own refusal ends the transcript.
        const char *const payloads[] = {
            "https://h/x.git;touch${IFS}@M@",
            "$(touch${IFS}@M@)",
            "`touch${IFS}@M@`",
            "x|touch${IFS}@M@",
            "x&&touch${IFS}@M@",
            "x>@M@",
            "x;{touch,@M@}",
            "<(touch${IFS}@M@)",
            "x;\"touch\"${IFS}\"@M@\"",
            "x;$'\\x74ouch'${IFS}@M@",
            "x\r;touch${IFS}@M@",
            "x\xc2\xa0;touch${IFS}@M@",
            "x\t;\ttouch\t@M@",
            // No shell character at all: TAB splits, git takes the option.
            "--upload-pack=touch\tfile://@M@",
            "-c\tcore.sshCommand=touch\t@M@",
            "a=~/x;touch${IFS}@M@",
            // With blanks and line feeds the stride moves; still nothing runs.
            "x && touch @M@",
            "x\n;touch @M@",
        };
        int row = 0;
        for (const char *payload : payloads)
            QTest::addRow("%02d", ++row) << QString::fromUtf8(payload);
    }
    void hostileURLsRunNothing()
    {
        QFETCH(QString, payload);
        const QString marker = markerFolder() + "/" + QTest::currentDataTag();
        const QString url = QString(payload).replace(Marker, marker);
        // The ordinary module comes first, so every value keeps it in reach.
        const QString gitmodules =
            gitmodulesEntry("tools", m_fixture->toolsURL()) + gitmodulesEntry("evil", url);
        resetWorkspace(gitmodules);
        const auto before =
            snapshot(m_fixture->root(), {"workspace/tools", "workspace/.git/config"});
        const auto home = snapshot(TestSupport::homeDir(), {".config"});

        Harness h;
        h.perform(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);

        QVERIFY2(QDir(markerFolder()).isEmpty(), qPrintable(url));
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QVERIFY(QFileInfo::exists(workspace() + "/tools/tool.txt"));
        QCOMPARE(TestSupport::readFile(workspace() + "/.git/config"),
                 TestSupport::readFile(workspace() + "/.git/config.origin") + "\n" +
                     gitmodules.toUtf8());
        auto after = snapshot(m_fixture->root(), {"workspace/tools", "workspace/.git/config"});
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
    // module is fetched once, in order, and nothing waits for the others.
    void refusedEntriesArePassedOver()
    {
        const QString first = QStringLiteral("x;touch${IFS}") + markerFolder() + "/first";
        const QString tools = "file://" + m_fixture->toolsURL();
        resetWorkspace(gitmodulesEntry("a", first) + gitmodulesEntry("lang", m_fixture->langURL()) +
                       gitmodulesEntry("b", "https://host/owner/.git") +
                       gitmodulesEntry("tools", tools) +
                       gitmodulesEntry("c", "https://h/owner/~.git"));
        Harness h;
        h.perform(AppController::TagModules);
        QCOMPARE(h.console(), moduleTranscript(workspace(), "lang"));
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(workspace(), "tools") +
                                  refusal("https://h/owner/~.git", false) + "\nDone.\n");
        for (const char *file : {"/lang/en.txt", "/tools/tool.txt"})
            QVERIFY(QFileInfo::exists(workspace() + file));
        QVERIFY(QDir(markerFolder()).isEmpty());
        QVERIFY(h.isIdle() && AlertSheet::openSheets().isEmpty());
    }

    // A module URL whose name comes out empty names the workspace itself:
    // neither the question nor "Replace" may ever reach it.
    void emptyNameLeavesWorkspaceIntact()
    {
        const QString empty = QStringLiteral("https://host/owner/.git");
        resetWorkspace(gitmodulesEntry("a", empty) + gitmodulesEntry("lang", m_fixture->langURL()));
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        TestSupport::writeFile(workspace() + "/notes.txt", "mine\n");
        Harness h;
        h.perform(AppController::TagModules);
        AlertSheet *sheet = Harness::waitForSheet();
        QVERIFY(sheet);
        QCOMPARE(sheet->informativeText(),
                 QStringLiteral("Found submodule 'lang'\nHow to deal with it?"));
        QCOMPARE(h.console(), ModuleChecks + refusal(empty, true));
        sheet->buttonFor(1001)->click(); // Replace
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(workspace(), "lang") + "\nDone.\n");
        QVERIFY(AlertSheet::openSheets().isEmpty());
        for (const char *file : {"/notes.txt", "/.git/HEAD", "/lang/en.txt"})
            QVERIFY(QFileInfo::exists(workspace() + file));

        // Even an answer that arrives for such a name leaves everything.
        const auto before = snapshot(workspace());
        h.controller.moduleURL = {empty};
        h.controller.now = 0;
        h.controller.moduleName = QString();
        h.controller.moduleAlertDidEnd(1001);
        h.controller.moduleAlertDidEnd(1000);
        QCOMPARE(snapshot(workspace()), before);
    }

    // Settings other than submodule entries are never registered, so the
    // update's git commands cannot obey them; the modules are still fetched.
    void foreignSettingsAreNotRegistered()
    {
        const QString marker = markerFolder() + "/config";
        // git pull runs the fsmonitor hook; blank-free, so the stride still
        // finds the one URL and the update goes ahead.
        const QString gitmodules = gitmodulesEntry("lang", m_fixture->langURL()) +
                                   "[core]\n\tfsmonitor = touch${IFS}" + marker + ";:\n";
        resetWorkspace(gitmodules);
        const QByteArray config = TestSupport::readFile(workspace() + "/.git/config");
        Harness h;
        h.perform(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(TestSupport::readFile(workspace() + "/.git/config"), config);
        QVERIFY(!QFileInfo::exists(workspace() + "/.git/config.origin"));
        QVERIFY(QFileInfo::exists(workspace() + "/lang/en.txt"));

        h.perform(AppController::TagUpdate);
        QTRY_VERIFY2_WITH_TIMEOUT(h.console().endsWith("All done.\n"), qPrintable(h.console()),
                                  Patience);
        QVERIFY(QDir(markerFolder()).isEmpty());

        // The refusal names the file, in the console's failure format.
        Harness fresh;
        fresh.perform(AppController::TagModules);
        QVERIFY(fresh.console().startsWith(
            "\nChecking files...\nDone.\n\nRegistering modules...\n\nFailure.\nError: " +
            workspace() +
            "/.gitmodules holds more than submodule entries! The modules are not registered in "
            ".git/config.\nDone.\nChecking modules...\n"));
        QVERIFY(Harness::waitForSheet()); // lang exists
        AlertSheet::openSheets().constLast()->endSheet();
    }

    // The update counts a refused entry as a module that is not there.
    void updateTreatsRefusedEntryAsMissing()
    {
        const QString url = QStringLiteral("x;touch${IFS}") + markerFolder() + "/update";
        resetWorkspace(gitmodulesEntry("lang", m_fixture->langURL()) +
                       gitmodulesEntry("evil", url));
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        Harness h;
        h.perform(AppController::TagUpdate);
        QCOMPARE(h.console(), "\nChecking files...\n" + refusal(url, false));
        QVERIFY(h.isIdle() && !h.controller.unixTask);
        QVERIFY(QDir(markerFolder()).isEmpty());
    }
};

ZELMOR_TEST_MAIN(WorkflowEndToEndTest)
#include "tst_workflow_e2e.moc"
