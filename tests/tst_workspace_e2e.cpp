#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <QDirIterator>
#include <QRegularExpression>

using TestSupport::writeFile;

// "Update source codes and submodules" and "Compile ZELMOR" from the window:
// real git against local upstream repositories, real cmake and make on a
// small project that stands in for the emulator's sources.
class TestWorkspaceE2E : public QObject
{
    Q_OBJECT

    static constexpr int Timeout = 180000;

    static QStringList tree(const QString &folder)
    {
        QStringList files;
        QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
            files.append(it.next().mid(folder.size()));
        files.sort();
        return files;
    }

    // One workspace, from nothing to built, shared by the slots in their
    // order: each starts where the one before it left the workspace.
    std::unique_ptr<WorkspaceFixture> m_fixture;
    std::unique_ptr<ControllerHarness> m_harness;
    QString ws, build, out, homeLang;
    const QString redownload = "Please re-download a complete copy of source codes.";

    ControllerHarness &h() { return *m_harness; }
    AppController &c() { return m_harness->controller; }

    // The update's check names every missing folder, starts nothing and
    // fetches nothing.
    bool updateRefused(const QStringList &missing)
    {
        h().perform(AppController::TagUpdate);
        QString expected = "\nChecking files...\n";
        for (const QString &folder : missing)
            expected += "Failure.\nError: " + ws + folder + " or .git in it not found!"
                        + (folder.isEmpty() ? redownload : "Please re-initialize it.");
        return h().console() == expected && c().unixTask.isNull() && h().isIdle();
    }

    // A compile that runs every stage, with the transcript they print.
    QString compiledTranscript() const
    {
        return "\nCompiling...\n\nBuild in: " + build + "\nOutput: " + out
               + "\n\nMoving files to output folder...\nDone.\n\nAll done.\n";
    }

private slots:
    void initTestCase()
    {
        m_fixture = std::make_unique<WorkspaceFixture>();
        QVERIFY(m_fixture->isValid());
        ws = m_fixture->workspace();
        build = ws + "/build";
        out = m_fixture->output();
        homeLang = TestSupport::homeDir() + "/lang";
        ControllerHarness::configure(ws, out, 0);
        m_harness = std::make_unique<ControllerHarness>();
    }
    void cleanupTestCase()
    {
        m_harness.reset();
        m_fixture.reset();
    }

    void updateRefusesAnIncompleteWorkspace()
    {
        QVERIFY2(updateRefused({""}), qPrintable(h().console()));
        m_fixture->checkoutMain(); // the modules' folders are empty
        m_fixture->pushCommit("main", "NEWS.txt", "release notes\n");
        QVERIFY2(updateRefused({"/lang", "/tools"}), qPrintable(h().console()));
        QVERIFY(QDir().rename(ws + "/.git", ws + "/.git-away"));
        QVERIFY2(updateRefused({"", "/lang", "/tools"}), qPrintable(h().console()));
        QVERIFY(QDir().rename(ws + "/.git-away", ws + "/.git"));
        QVERIFY(!QFile::exists(ws + "/NEWS.txt"));
    }

    void updatePullsTheSourcesThenTheModules()
    {
        m_fixture->cloneModule(m_fixture->langURL(), "lang");
        m_fixture->cloneModule(m_fixture->toolsURL(), "tools");
        m_fixture->pushCommit("lang", "fr.txt", "Executer\n");
        h().perform(AppController::TagUpdate);
        QTRY_VERIFY_WITH_TIMEOUT(h().console().endsWith("\nAll done.\n"), Patience);
        // Only the application's own messages; the check header was replaced.
        QCOMPARE(h().console(), "\nUpdating source codes...\n"
                                "\nChecking for update of ZELMOR master...\nDone.\n"
                                "\nChecking for update of submodules...\nDone.\n \nAll done.\n");
        QVERIFY(QFile::exists(ws + "/NEWS.txt") && QFile::exists(ws + "/lang/fr.txt"));
        QVERIFY(h().isIdle() && c().now == 1);
    }

    // With the log on, git's progress reads as in a terminal: each phase
    // once, with its final figures, though with this many new objects git
    // redraws each phase many times over.
    void updateLogShowsEachProgressPhaseOnce()
    {
        for (int i = 0; i < 300; ++i)
            writeFile(m_fixture->root() + QStringLiteral("/zelmor.work/notes/%1").arg(i),
                      QByteArray::number(i).repeated(40 + i));
        m_fixture->pushCommit("main", "notes/last", "last\n");
        SettingsStore::standard().setObject(SettingsKeys::Log, 1);
        h().perform(AppController::TagUpdate);
        QTRY_VERIFY_WITH_TIMEOUT(h().console().endsWith("\nAll done.\n"), Patience);
        SettingsStore::standard().setObject(SettingsKeys::Log, 0);
        const QString log = h().console();
        QVERIFY(!log.contains(u'\r'));
        int phases = 0;
        for (const QString phase : {"Counting objects", "Compressing objects", "Receiving objects",
                                    "Unpacking objects", "Resolving deltas"}) {
            const qsizetype shown = log.count(phase);
            const QRegularExpression done(phase + ":\\s+100% \\((\\d+)/\\1\\)");
            QVERIFY2(shown <= 1 && (!shown || log.contains(done)), qPrintable(log));
            phases += int(shown);
        }
        QVERIFY2(phases >= 2, qPrintable(log));
    }

    // An output folder above the workspace is refused before anything is
    // touched: the copy stage would empty it.
    void compileRefusesAnOutputFolderHoldingTheWorkspace()
    {
        QVERIFY(QDir(ws + "/android/assets").removeRecursively());
        QVERIFY(QDir().rename(ws + "/.git", ws + "/.git-away"));
        writeFile(build + "/stale.txt", "old\n");
        SettingsStore::standard().setObject(SettingsKeys::Output, m_fixture->root());
        h().perform(AppController::TagCompile);
        SettingsStore::standard().setObject(SettingsKeys::Output, out);
        QCOMPARE(h().console(), "\nChecking files...\n\nFailure.\nError: " + m_fixture->root()
                                    + " is your home folder or the workspace, or holds one of "
                                      "them! Compiling empties the output folder: please choose "
                                      "another one.\n");
        QVERIFY(c().unixTask.isNull() && h().isIdle() && QFile::exists(build + "/stale.txt"));
    }

    // No .git: both problems are reported and nothing starts, but the build
    // folder is prepared before anything is checked.
    void compileWithoutGitReportsBothProblems()
    {
        h().perform(AppController::TagCompile);
        QCOMPARE(h().console(), "\nChecking files...\n\n'asssets' not found in " + ws
                                    + "/Android." + redownload + "\n\n.git not found in " + ws
                                    + "." + redownload + "\n");
        QVERIFY(c().unixTask.isNull() && h().isIdle());
        QVERIFY(QFileInfo(build).isDir() && QDir(build).isEmpty());
    }

    // Assets still missing and a source make cannot compile: the check
    // already reset the window, yet cmake runs, and the copy stage follows
    // the failed make. The home folder's lang is removed before the copy,
    // whose chain of cp stops at the missing assets.
    void compileGoesOnPastAFailedMake()
    {
        QVERIFY(QDir().rename(ws + "/.git-away", ws + "/.git"));
        writeFile(ws + "/main.c", "int main(void) { return }\n");
        writeFile(homeLang + "/obsolete.txt", "old\n");
        h().perform(AppController::TagCompile);
        QVERIFY(h().isIdle() && !c().unixTask.isNull());
        QTRY_COMPARE_WITH_TIMEOUT(h().console(), compiledTranscript(), Timeout);
        QVERIFY(QFile::exists(build + "/CMakeCache.txt") && !QFile::exists(build + "/ZELMORSDL"));
        QVERIFY(!QFile::exists(homeLang) && !QFile::exists(ws + "/assets"));
    }

    // A clean checkout over leftovers of earlier runs and of the user, all of
    // which must go.
    void compileFromACleanCheckoutFillsTheOutputFolder()
    {
        TestSupport::git(ws, {"checkout", "-q", "--", "."});
        writeFile(build + "/old/object.o", "stale\n");
        writeFile(out + "/notes.txt", "the user's\n");
        writeFile(ws + "/assets/obsolete.png", "old\n");
        writeFile(ws + "/SDL/assets/obsolete.png", "old\n");
        writeFile(homeLang + "/obsolete.txt", "old\n");
        h().perform(AppController::TagCompile);
        QTRY_COMPARE_WITH_TIMEOUT(h().console(), compiledTranscript(), Timeout);
        QVERIFY(h().isIdle() && !QFile::exists(build + "/old"));
        QCOMPARE(c().now, 2); // the copy was the last stage
        // make's bracketed percentages drove the bar, on a scale of 100.
        QCOMPARE(c().progressbar->doubleValue(), 100.0);
        QCOMPARE(c().progressbar->maxValue(), 100.0);

        // Both asset copies and the output's are exactly the Android tree;
        // the output folder holds the program and its assets, nothing else.
        const QStringList androidAssets = tree(ws + "/android/assets");
        QCOMPARE(androidAssets, QStringList({"/config.ini", "/fonts/font.txt"}));
        QCOMPARE(tree(ws + "/assets"), androidAssets);
        QCOMPARE(tree(ws + "/SDL/assets"), androidAssets);
        QCOMPARE(tree(out + "/assets"), androidAssets);
        QCOMPARE(QDir(out).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                                     QDir::Name),
                 QStringList({"ZELMORSDL", "assets"}));
        QCOMPARE(TestSupport::run(out + "/ZELMORSDL", {}), QByteArray("ZELMORSDL ready\n"));
        // The workspace's lang module replaced the home folder's.
        QCOMPARE(TestSupport::readFile(homeLang + "/en.txt"), QByteArray("Perform\n"));
        QVERIFY(!QFile::exists(homeLang + "/obsolete.txt"));
    }

    // Stopped during a build step that takes its time: no copy follows.
    void stopDuringMakeSkipsTheCopy()
    {
        QFile cmake(ws + "/CMakeLists.txt");
        QVERIFY(cmake.open(QIODevice::Append));
        cmake.write("add_custom_target(slowstep ALL COMMAND ${CMAKE_COMMAND} -E touch make-started"
                    " COMMAND sleep 120 VERBATIM)\n");
        cmake.close();
        writeFile(out + "/notes.txt", "the user's\n");
        h().perform(AppController::TagCompile);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(build + "/make-started"), Timeout);
        QVERIFY(c().now == 1 && h().button() == "Stop");
        c().perform();
        QTRY_VERIFY_WITH_TIMEOUT(h().console().endsWith("\nTask terminated by user.\n"), 30000);
        QVERIFY(c().unixTask.isNull() && c().now == 1 && h().isIdle());
        QVERIFY(!h().console().contains("Moving files") && QFile::exists(out + "/notes.txt"));
    }
};

ZELMOR_TEST_MAIN(TestWorkspaceE2E)
#include "tst_workspace_e2e.moc"
