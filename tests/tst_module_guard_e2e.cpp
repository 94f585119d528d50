#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <QAbstractButton>
#include <QCryptographicHash>
#include <QDirIterator>

// A .gitmodules written by a stranger, through "Get module initialized" and
// "Update source codes and submodules" with real git: every payload below
// would create its marker file if any part of it ran, and the ordinary
// entries beside them are still cloned.

namespace {

const QString Marker = QStringLiteral("@M@");

QString refusal(const QString &url, bool nameless)
{
    return "\nFailure.\nError: " + url
           + (nameless ? " gives no module name!" : " is not a plain module URL!")
           + " It is skipped.\n";
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

using Harness = ControllerHarness;

} // namespace

class ModuleGuardEndToEndTest : public QObject
{
    Q_OBJECT

    WorkspaceFixture *m_fixture = nullptr;
    QTemporaryDir m_markers;
    int m_tried = 0;

    QString workspace() const { return m_fixture->workspace(); }
    QString markerFolder() const { return m_markers.path(); }

    // The main checkout with its empty module folders, and a fresh registry.
    void resetWorkspace(const QString &gitmodules)
    {
        QDir(workspace()).removeRecursively();
        m_fixture->checkoutMain();
        TestSupport::writeFile(workspace() + "/.gitmodules", gitmodules.toUtf8());
    }

private slots:
    void initTestCase()
    {
        m_fixture = new WorkspaceFixture;
        QVERIFY(m_fixture->isValid());
        QVERIFY(m_markers.isValid());
        SettingsStore::standard().setObject(SettingsKeys::Workspace, workspace());
        SettingsStore::standard().setObject(SettingsKeys::Log, QStringLiteral("0"));
    }

    void cleanupTestCase()
    {
        delete m_fixture;
        qInfo("hostile module URLs tried: %d, executed: %d", m_tried,
              int(QDir(markerFolder()).entryList(QDir::Files | QDir::Hidden).size()));
    }

    void init() { Harness::endSheets(); }

    void hostileURLsRunNothing_data()
    {
        QTest::addColumn<QString>("payload");
        // @M@ stands for the row's marker file. Blank-free values keep the
        // registry's stride, so their own refusal ends the transcript.
        const char *const payloads[] = {
            "https://h/x.git;touch${IFS}@M@",
            "x;touch${IFS}@M@",
            "$(touch${IFS}@M@)",
            "`touch${IFS}@M@`",
            "https://h/$(touch${IFS}@M@).git",
            "https://h/`touch${IFS}@M@`.git",
            "x|touch${IFS}@M@",
            "x||touch${IFS}@M@",
            "x&&touch${IFS}@M@",
            "x&touch${IFS}@M@",
            "x>@M@",
            "x>>@M@",
            "x;{touch,@M@}",
            "<(touch${IFS}@M@)",
            ">(touch${IFS}@M@)",
            "x;touch$IFS'@M@'",
            "x;\"touch\"${IFS}\"@M@\"",
            "x;t\\ouch${IFS}@M@",
            "x;$'\\x74ouch'${IFS}@M@",
            "x;(touch${IFS}@M@)",
            "x;eval${IFS}touch${IFS}@M@",
            "x;a=touch;$a${IFS}@M@",
            "x$(touch${IFS}@M@)y",
            "x;touch${IFS}@M@#",
            "x;exec${IFS}touch${IFS}@M@",
            "x;touch${IFS}@M@|:",
            "x\r;touch${IFS}@M@",
            "x\xc2\xa0;touch${IFS}@M@",
            "x\t;\ttouch\t@M@",
            // No shell character at all: TAB splits, git takes the option.
            "-utouch\tfile://@M@",
            "--upload-pack=touch\tfile://@M@",
            "file://@M@\t--upload-pack=touch",
            "-c\tcore.sshCommand=touch\t@M@",
            "a=~/x;touch${IFS}@M@",
            // With blanks and line feeds the stride moves; still nothing runs.
            "x; touch @M@",
            "x && touch @M@",
            "$(touch @M@)",
            "x\n;touch @M@",
            "` touch @M@ `",
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
        const QString gitmodules = gitmodulesEntry("tools", m_fixture->toolsURL()) + gitmodulesEntry("evil", url);
        resetWorkspace(gitmodules);
        const auto before = snapshot(m_fixture->root(), {"workspace/tools", "workspace/.git/config"});
        const auto home = snapshot(TestSupport::homeDir(), {".config"});
        ++m_tried;

        Harness h;
        h.perform(AppController::TagModules);
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);

        QVERIFY2(!QFileInfo::exists(marker), qPrintable(url));
        QVERIFY(QDir(markerFolder()).isEmpty());
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QVERIFY(QFileInfo::exists(workspace() + "/tools/tool.txt"));
        QCOMPARE(TestSupport::readFile(workspace() + "/.git/config"),
                 TestSupport::readFile(workspace() + "/.git/config.origin") + "\n"
                     + gitmodules.toUtf8());
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
            QVERIFY2(console == head + refusal(shown, false) + "\nDone.\n"
                         || console == head + refusal(shown, true) + "\nDone.\n",
                     qPrintable(console));
        }
    }

    // Refused entries before, between and after ordinary ones: each ordinary
    // module is fetched once, in order, and nothing waits for the others.
    void refusedEntriesArePassedOver()
    {
        const QString first = QStringLiteral("x;touch${IFS}") + markerFolder() + "/first";
        const QString tools = "file://" + m_fixture->toolsURL();
        resetWorkspace(gitmodulesEntry("a", first) + gitmodulesEntry("lang", m_fixture->langURL())
                       + gitmodulesEntry("b", "https://host/owner/.git") + gitmodulesEntry("tools", tools)
                       + gitmodulesEntry("c", "https://h/owner/~.git"));
        Harness h;
        h.perform(AppController::TagModules);
        QCOMPARE(h.console(), moduleTranscript(workspace(), "lang"));
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(workspace(), "tools")
                                  + refusal("https://h/owner/~.git", false) + "\nDone.\n");
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QVERIFY(QFileInfo::exists(workspace() + "/lang/en.txt"));
        QVERIFY(QFileInfo::exists(workspace() + "/tools/tool.txt"));
        QVERIFY(QDir(markerFolder()).isEmpty());
        QCOMPARE(h.controller.now, 0);
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Perform"));
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
        QTRY_VERIFY_WITH_TIMEOUT(!AlertSheet::openSheets().isEmpty(), Patience);
        AlertSheet *sheet = AlertSheet::openSheets().constLast();
        QCOMPARE(sheet->informativeText(), QStringLiteral("Found submodule 'lang'\nHow to deal with it?"));
        QCOMPARE(h.console(), "\nChecking files...\nDone.\n\nRegistering modules...\nDone.\n"
                              "Checking modules...\n"
                                  + refusal(empty, true));
        sheet->buttonFor(1001)->click(); // Replace
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QCOMPARE(h.console(), moduleTranscript(workspace(), "lang") + "\nDone.\n");
        QVERIFY(AlertSheet::openSheets().isEmpty());
        QVERIFY(QFileInfo::exists(workspace() + "/notes.txt"));
        QVERIFY(QFileInfo::exists(workspace() + "/.git/HEAD"));
        QVERIFY(QFileInfo::exists(workspace() + "/lang/en.txt"));

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
        const QString gitmodules = gitmodulesEntry("lang", m_fixture->langURL())
                                   + "[core]\n\tfsmonitor = touch${IFS}" + marker + ";:\n";
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
            "\nChecking files...\nDone.\n\nRegistering modules...\n\nFailure.\nError: " + workspace()
            + "/.gitmodules holds more than submodule entries! The modules are not registered in "
              ".git/config.\nDone.\nChecking modules...\n"));
        QTRY_VERIFY_WITH_TIMEOUT(!AlertSheet::openSheets().isEmpty(), Patience); // lang exists
        AlertSheet::openSheets().constLast()->endSheet();
    }

    // The update counts a refused entry as a module that is not there.
    void updateTreatsRefusedEntryAsMissing()
    {
        const QString url = QStringLiteral("x;touch${IFS}") + markerFolder() + "/update";
        resetWorkspace(gitmodulesEntry("lang", m_fixture->langURL()) + gitmodulesEntry("evil", url));
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        Harness h;
        h.perform(AppController::TagUpdate);
        QCOMPARE(h.console(), "\nChecking files...\n" + refusal(url, false));
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Perform"));
        QVERIFY(!h.controller.unixTask);
        QVERIFY(QDir(markerFolder()).isEmpty());
    }
};

ZELMOR_TEST_MAIN(ModuleGuardEndToEndTest)
#include "tst_module_guard_e2e.moc"
