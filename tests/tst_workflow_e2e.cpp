#include "ControllerHarness.h"

#include "BuildConfig.h"
#include "workflow/AppController.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
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
            for (const auto &[path, bare] : {std::pair{"lang", m_lang}, std::pair{"tools", m_tools}}) {
                const QString head = TestSupport::git(bare, {"rev-parse", "HEAD"}).trimmed();
                TestSupport::git(work, {"update-index", "--add", "--cacheinfo",
                                        "160000," + head + "," + path});
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
        for (const auto &[local, url] : {std::pair{m_source, QStringLiteral(ZELMOR_SOURCE_REPOSITORY_URL)},
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

const QString ModuleChecks = QStringLiteral(
    "\nChecking files...\nDone.\n\nRegistering modules...\nDone.\nChecking modules...\n");

} // namespace

class WorkflowEndToEndTest : public QObject
{
    Q_OBJECT

private:
    // After the clone: the prompt, its texts and the running look.
    void expectReadyPrompt(Harness &h, const Upstream &upstream, AlertSheet *&prompt)
    {
        QVERIFY((prompt = Harness::waitForSheet()));
        QCOMPARE(h.console(), cloneTranscript(upstream.workspace()));
        QCOMPARE(prompt->text(), "Ready to install modules");
        QCOMPARE(prompt->informativeText(), "Main source codes are ready. Do you want to get "
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
    void init() { Harness::endSheets(); }

    // After the clone the prompt starts the modules: by its Perform, when its
    // timer runs out (about ten seconds), or when the test ticks it to 0.
    void cloneThenModules_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("Perform") << "perform";
        QTest::newRow("countdown runs out") << "timer";
        QTest::newRow("countdown ticked") << "ticks";
    }
    void cloneThenModules()
    {
        QFETCH(QString, how);
        Upstream upstream;
        const QString ws = upstream.workspace();
        Harness h;
        h.perform(AppController::TagClone);
        QCOMPARE(h.button(), "Stop");
        AlertSheet *prompt = nullptr;
        expectReadyPrompt(h, upstream, prompt);
        if (QTest::currentTestFailed())
            return;
        if (how == "perform") {
            prompt->buttonFor(1000)->click();
            // Started by the answer: the button keeps reading "Stop".
            QCOMPARE(h.controller.selectedTag(), int(AppController::TagModules));
            QVERIFY(!h.controller.timer->isActive());
            QCOMPARE(h.console(), moduleTranscript(ws, "lang"));
            QCOMPARE(h.button(), "Stop");
            // One module after the other: lang first, then tools.
            QTRY_VERIFY_WITH_TIMEOUT(h.console().startsWith(moduleTranscript(ws, "tools")), Patience);
        } else {
            if (how == "ticks") {
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
            }
            QTRY_COMPARE_WITH_TIMEOUT(h.controller.selectedTag(), int(AppController::TagModules),
                                      Patience);
            QVERIFY(AlertSheet::openSheets().isEmpty());
            // The dismiss branch restored the idle look before the modules began.
            QCOMPARE(h.button(), "Perform");
        }
        expectModulesDone(h, upstream);
    }

    void existingWorkspace_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("Keep") << 1000;
        QTest::newRow("Replace") << 1001;
        QTest::newRow("Cancel") << 1002;
    }
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
        if (answer == 1002) {
            QCOMPARE(h.button(), "Perform");
            QVERIFY(!h.controller.unixTask);
            QCOMPARE(h.console(), "\nChecking files...\n");
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
        QCOMPARE(h.button(), "Perform");
        QVERIFY(!h.controller.timer->isActive());
        QVERIFY(!h.controller.unixTask);
    }

    void existingModule_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("Keep") << 1000;
        QTest::newRow("Replace") << 1001;
        QTest::newRow("Skip") << 1002;
    }
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
        QCOMPARE(TestSupport::readFile(ws + "/.git/config.origin"), pristine);

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
        QCOMPARE(h.button(), "Perform");
        QCOMPARE(TestSupport::readFile(ws + "/.git/config.origin"), pristine);
        QCOMPARE(TestSupport::readFile(ws + "/.git/config"),
                 pristine + "\n" + upstream.gitmodules().toUtf8());
    }

    // Module operations that end without asking: no modules listed, no
    // workspace, a URL that names no module.
    void modulesWithoutQuestions_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("console"); // WS stands for the workspace
        QTest::newRow("empty module list") << "no modules" << ModuleChecks + "\nDone.\n";
        QTest::newRow("no workspace")
            << "nothing" << "\nChecking files...\nFailure.\nError: WS or .git in it not "
                            "found!Please re-download a complete copy of source codes.";
        QTest::newRow("URL without name")
            << "nameless" << moduleTranscript("WS", "tools")
                                 + "\nFailure.\nError: nameless gives no module name! It is "
                                   "skipped.\n\nDone.\n";
    }
    void modulesWithoutQuestions()
    {
        QFETCH(QString, layout);
        QFETCH(QString, console);
        Upstream upstream(layout != "no modules");
        const QString ws = upstream.workspace();
        if (layout != "nothing")
            upstream.checkoutSource();
        if (layout == "nameless")
            TestSupport::writeFile(ws + "/.gitmodules",
                                   (gitmodulesEntry("tools", ToolsURL) + gitmodulesEntry("odd", "nameless"))
                                       .toUtf8());
        Harness h;
        h.perform(AppController::TagModules);
        if (layout == "nameless") // the one that runs a child
            QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), console.replace("WS", ws));
        QCOMPARE(h.button(), "Perform");
        QVERIFY(!h.controller.unixTask);
        if (layout == "no modules")
            QCOMPARE(TestSupport::readFile(ws + "/.git/config"),
                     TestSupport::readFile(ws + "/.git/config.origin") + "\n(null)");
        if (layout == "nameless")
            QVERIFY(QFileInfo::exists(ws + "/tools/tool.txt"));
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
        QTRY_VERIFY_WITH_TIMEOUT(h.controller.unixTask
                                     && h.controller.unixTask->state() == QProcess::Running,
                                 Patience);
        h.controller.perform(); // Stop
        QCOMPARE(h.button(), "Perform");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nTask terminated by user.\n"), Patience);
        QVERIFY(AlertSheet::openSheets().isEmpty()); // no prompt, no next module
        QVERIFY(!h.controller.unixTask);
        QCOMPARE(h.controller.now, 0);
    }

    void popupSwitchedWhileCloning()
    {
        // The completion goes by the item selected when the clone ends: with
        // "Get module initialized" selected there is no module left to fetch.
        Upstream upstream;
        Harness h;
        h.perform(AppController::TagClone);
        QVERIFY(h.controller.unixTask);
        h.controller.selectItemWithTag(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(!h.controller.unixTask, Patience);
        QCOMPARE(h.console(), cloneTranscript(upstream.workspace()));
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QCOMPARE(h.button(), "Perform");
    }

    void popupSwitchedToCloneWhileCompiling()
    {
        Upstream upstream;
        Harness h;
        h.controller.selectItemWithTag(AppController::TagCompile);
        h.controller.buttonPerform->setText("Stop");
        h.controller.outputField->setString(QString());
        h.controller.runUnixTask(QStringLiteral("sleep 0.2"), QDir::homePath());
        h.controller.selectItemWithTag(AppController::TagClone);
        AlertSheet *prompt = Harness::waitForSheet();
        QVERIFY(prompt);
        QCOMPARE(prompt->text(), "Ready to install modules");
        QCOMPARE(h.console(), "\nDone.\n");
        prompt->buttonFor(1001)->click();
        QCOMPARE(h.button(), "Perform");
    }
};

ZELMOR_TEST_MAIN(WorkflowEndToEndTest)
#include "tst_workflow_e2e.moc"
