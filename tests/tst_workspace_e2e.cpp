#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <QDirIterator>

#include <algorithm>

using TestSupport::readFile;
using TestSupport::writeFile;

// "Update source codes and submodules" and "Compile ZELMOR" from the window:
// real git against local upstream repositories, real cmake and make on a
// small project that stands in for the emulator's sources.
class TestWorkspaceE2E : public QObject
{
    Q_OBJECT

private:
    static constexpr int Timeout = 180000;
    enum Layout {
        NoWorkspace,        // the workspace folder does not exist
        ModulesMissing,     // main checkout only, module folders empty
        ModuleMisnamed,     // lang cloned by hand under another name
        NoGitModulesMissing // a plain copy of the tree: no .git, no modules
    };

    // A checked-out fixture with the window and controller on top.
    struct Run
    {
        QStringList consoleHistory; // every text the console has shown
        WorkspaceFixture fixture;
        bool checkedOut;
        ControllerHarness h;

        explicit Run(int log = 0) : checkedOut(checkout(fixture, log))
        {
            h.controller.selectItemWithTag(AppController::TagCompile);
            ConsoleView *console = h.controller.outputField;
            // The document itself, not string(): reading must not hurry the
            // console's own flushing along.
            QObject::connect(console, &QPlainTextEdit::textChanged, console,
                             [this, console] { consoleHistory.append(console->toPlainText()); });
        }
        static bool checkout(const WorkspaceFixture &fixture, int log)
        {
            fixture.checkout();
            ControllerHarness::configure(fixture.workspace(), fixture.output(), log);
            return true;
        }
        AppController &c() { return h.controller; }
        QString ws() const { return fixture.workspace(); }
        QString build() const { return fixture.workspace() + "/build"; }
        QString out() const { return fixture.output(); }
        QString console() { return h.console(); }
        bool shown(const QString &text) const
        {
            return std::any_of(consoleHistory.begin(), consoleHistory.end(),
                               [&](const QString &t) { return t.contains(text); });
        }
    };

    static QString allDone() { return QStringLiteral("Done.\n\nAll done.\n"); }

    static QStringList tree(const QString &folder)
    {
        QStringList files;
        QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
            files.append(it.next().mid(folder.size()));
        files.sort();
        return files;
    }

private slots:
    void fullUpdateBringsMainAndModuleCommits_data()
    {
        QTest::addColumn<int>("log");
        QTest::newRow("log off") << 0;
        QTest::newRow("log on") << 1;
    }
    void fullUpdateBringsMainAndModuleCommits()
    {
        QFETCH(int, log);
        Run r(log);
        r.fixture.pushCommit("main", "NEWS.txt", "release notes\n");
        r.fixture.pushCommit("lang", "fr.txt", "Executer\n");
        ControllerHarness &h = r.h;
        h.perform(AppController::TagUpdate);
        QCOMPARE(h.button(), "Stop");

        const QString end = QStringLiteral("Done.\n \nAll done.\n");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith(end), Patience);
        QVERIFY(QFile::exists(r.ws() + "/NEWS.txt"));
        QVERIFY(QFile::exists(r.ws() + "/lang/fr.txt"));
        QVERIFY(h.isIdle());
        QCOMPARE(h.controller.now, 1);

        const QStringList pieces{"\nUpdating source codes...\n",
                                 "\nChecking for update of ZELMOR master...\n", "Done.\n",
                                 "\nChecking for update of submodules...\n", end};
        const QString console = h.console();
        if (log == 0) {
            // Only the application's own messages; the check header is the
            // one that replaced "Checking files".
            QCOMPARE(console, pieces.join(QString()));
            return;
        }
        qsizetype at = 0;
        for (const QString &piece : pieces) {
            const qsizetype found = console.indexOf(piece, at);
            QVERIFY2(found >= 0, qPrintable("missing or out of order: " + piece));
            at = found + piece.size();
        }
        // git names the module it enters; it only does so for a checkout it
        // recognises as a populated submodule.
        QVERIFY(console.contains("Entering 'lang'"));
    }

    void checkFailuresReportEverythingAndUpdateNothing_data()
    {
        // messages: "<folder>|<hint>" per failure line
        TestSupport::columns<int, QStringList>({"layout", "messages"});
        const QString redownload = "Please re-download a complete copy of source codes.";
        const QString reinit = "Please re-initialize it.";
        QTest::newRow("missing workspace")
            << int(NoWorkspace) << QStringList{"|" + redownload};
        QTest::newRow("two missing modules")
            << int(ModulesMissing) << QStringList{"/lang|" + reinit, "/tools|" + reinit};
        QTest::newRow("module under another name")
            << int(ModuleMisnamed) << QStringList{"/lang|" + reinit};
        QTest::newRow("no .git and no modules")
            << int(NoGitModulesMissing)
            << QStringList{"|" + redownload, "/lang|" + reinit, "/tools|" + reinit};
    }

    void checkFailuresReportEverythingAndUpdateNothing()
    {
        QFETCH(int, layout);
        QFETCH(QStringList, messages);
        WorkspaceFixture fixture;
        QVERIFY(fixture.isValid());
        if (layout != NoWorkspace)
            fixture.checkoutMain();
        if (layout == ModuleMisnamed) {
            fixture.cloneModule(fixture.langURL(), "emu-lang");
            fixture.cloneModule(fixture.toolsURL(), "tools");
        }
        if (layout == NoGitModulesMissing)
            QVERIFY(QDir(fixture.workspace() + "/.git").removeRecursively());
        // New upstream commits must not arrive.
        fixture.pushCommit("main", "NEWS.txt", "release notes\n");
        ControllerHarness::configure(fixture.workspace(), fixture.output(), 1);

        ControllerHarness h;
        h.perform(AppController::TagUpdate);

        QString expected = "\nChecking files...\n";
        for (const QString &message : messages) {
            const QStringList parts = message.split('|');
            expected += "Failure.\nError: " + fixture.workspace() + parts.at(0)
                        + " or .git in it not found!" + parts.at(1);
        }
        QCOMPARE(h.console(), expected);
        QVERIFY(h.controller.unixTask.isNull());
        QVERIFY(h.isIdle());
        QCOMPARE(h.controller.now, 0);
        QVERIFY(!QFile::exists(fixture.workspace() + "/NEWS.txt"));
    }

    void compileFromScratchFillsOutputAndHome()
    {
        Run r;
        // Leftovers of an earlier run and of the user, all of which must go.
        writeFile(r.build() + "/CMakeCache.txt", "stale cache\n");
        writeFile(r.build() + "/old/object.o", "stale\n");
        writeFile(r.out() + "/notes.txt", "the user's\n");
        writeFile(r.ws() + "/assets/obsolete.png", "old\n");
        writeFile(r.ws() + "/SDL/assets/obsolete.png", "old\n");
        writeFile(TestSupport::homeDir() + "/lang/obsolete.txt", "old\n");

        QList<double> barValues;
        connect(r.c().progressbar, &QProgressBar::valueChanged, this, [&] {
            if (!r.c().progressbar->isIndeterminate())
                barValues.append(r.c().progressbar->doubleValue());
        });

        r.c().perform();
        QCOMPARE(r.h.button(), "Stop");
        QTRY_VERIFY_WITH_TIMEOUT(r.console().endsWith(allDone()), Timeout);

        QCOMPARE(r.console(), "\nCompiling...\n\nBuild in: " + r.build() + "\nOutput: " + r.out()
                                  + "\n\nMoving files to output folder...\n" + allDone());
        QVERIFY(r.shown("\nChecking files...\n"));
        QVERIFY(r.h.isIdle());
        QCOMPARE(r.c().now, 2); // the copy was the last stage

        // Both asset copies are exactly the Android tree.
        const QStringList androidAssets = tree(r.ws() + "/android/assets");
        QCOMPARE(androidAssets, QStringList({"/config.ini", "/fonts/font.txt"}));
        QCOMPARE(tree(r.ws() + "/assets"), androidAssets);
        QCOMPARE(tree(r.ws() + "/SDL/assets"), androidAssets);

        // Nothing of the earlier build survived the wipe.
        QVERIFY(!QFile::exists(r.build() + "/old"));
        QVERIFY(readFile(r.build() + "/CMakeCache.txt").contains("CMAKE_HOME_DIRECTORY"));

        // The output folder holds the program and its assets, nothing else.
        QCOMPARE(QDir(r.out()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                                         QDir::Name),
                 QStringList({"ZELMORSDL", "assets"}));
        QCOMPARE(tree(r.out() + "/assets"), androidAssets);
        QCOMPARE(TestSupport::run(r.out() + "/ZELMORSDL", {}), QByteArray("ZELMORSDL ready\n"));

        // The workspace's lang module replaced the home folder's.
        const QString homeLang = TestSupport::homeDir() + "/lang";
        QCOMPARE(readFile(homeLang + "/en.txt"), QByteArray("Perform\n"));
        QVERIFY(QFile::exists(homeLang + "/de/strings.txt"));
        QVERIFY(!QFile::exists(homeLang + "/obsolete.txt"));

        // make's bracketed percentages drove the bar, on a scale of 100.
        QVERIFY(!barValues.isEmpty());
        for (double value : std::as_const(barValues))
            QVERIFY2(value > 0 && value <= 100, qPrintable(QString::number(value)));
        QCOMPARE(r.c().progressbar->maxValue(), 100.0);
    }

    void makeFailureStillCopiesAndFinishes()
    {
        Run r(1);
        writeFile(r.ws() + "/main.c", "int main(void) { return }\n");
        writeFile(TestSupport::homeDir() + "/lang/obsolete.txt", "old\n");

        r.c().perform();
        QTRY_VERIFY_WITH_TIMEOUT(r.console().endsWith(allDone()), Timeout);

        QVERIFY(r.console().indexOf("\nMoving files to output folder...\n") > 0);
        QVERIFY(r.console().contains("Error"));
        // The assets were built at configure time and copied; the chain of
        // cp stopped at the missing program, so the home folder's lang is
        // gone and not replaced.
        QVERIFY(QFile::exists(r.out() + "/assets/config.ini"));
        QVERIFY(!QFile::exists(r.out() + "/ZELMORSDL"));
        QVERIFY(!QFile::exists(TestSupport::homeDir() + "/lang"));
        QCOMPARE(r.h.button(), "Perform");
    }

    void missingAndroidAssetsReportsButStillBuilds()
    {
        Run r;
        QVERIFY(QDir(r.ws() + "/android/assets").removeRecursively());

        r.c().perform();
        // The check already reset the window, yet cmake is running. Its
        // message went into the console in the same pass as the compile
        // header that replaced it, so only the header is left to see.
        QVERIFY(r.h.isIdle());
        QVERIFY(!r.c().unixTask.isNull());
        QVERIFY(r.console().startsWith("\nCompiling...\n"));

        QTRY_VERIFY_WITH_TIMEOUT(r.console().endsWith(allDone()), Timeout);
        QVERIFY(QFile::exists(r.build() + "/ZELMORSDL"));
        QVERIFY(!QFile::exists(r.ws() + "/assets"));
    }

    void missingAssetsAndGitStartNothing()
    {
        Run r;
        QVERIFY(QDir(r.ws() + "/android/assets").removeRecursively());
        QVERIFY(QDir(r.ws() + "/.git").removeRecursively());
        writeFile(r.build() + "/stale.txt", "old\n");

        r.c().perform();
        const QString redownload = "Please re-download a complete copy of source codes.\n";
        QCOMPARE(r.console(), "\nChecking files...\n\n'asssets' not found in " + r.ws() + "/Android."
                                  + redownload + "\n.git not found in " + r.ws() + "." + redownload);
        QVERIFY(r.c().unixTask.isNull());
        QVERIFY(r.h.isIdle());
        // The build folder is prepared before anything is checked.
        QVERIFY(QFileInfo(r.build()).isDir());
        QVERIFY(QDir(r.build()).isEmpty());
    }

    void stopDuringMakeEndsTheOperation()
    {
        Run r;
        // A build step that announces itself and then takes its time.
        QFile cmake(r.ws() + "/CMakeLists.txt");
        QVERIFY(cmake.open(QIODevice::Append));
        cmake.write("add_custom_target(slowstep ALL COMMAND ${CMAKE_COMMAND} -E touch make-started"
                    " COMMAND sleep 120 VERBATIM)\n");
        cmake.close();
        writeFile(r.out() + "/notes.txt", "the user's\n");

        r.c().perform();
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(r.build() + "/make-started"), Timeout);
        QCOMPARE(r.c().now, 1);
        QCOMPARE(r.h.button(), "Stop");

        r.c().perform();
        QCOMPARE(r.h.button(), "Perform");
        QTRY_VERIFY_WITH_TIMEOUT(r.console().endsWith("\nTask terminated by user.\n"), 30000);
        QVERIFY(r.c().unixTask.isNull());

        // No copy stage followed.
        QVERIFY(!r.console().contains("Moving files to output folder"));
        QVERIFY(QFile::exists(r.out() + "/notes.txt"));
        QCOMPARE(r.c().now, 1);
    }

    void cmakeThatCannotStartKeepsRunningLook()
    {
        Run r;
        r.c().cmakeProgram = r.fixture.root() + "/no-such-cmake";

        r.c().perform();
        QVERIFY(r.console().startsWith("\nCompiling...\n"));
        QTRY_VERIFY_WITH_TIMEOUT(!r.c().unixTask || r.c().unixTask->state() == QProcess::NotRunning,
                                 30000);
        if (r.c().unixTask)
            QCOMPARE(r.c().unixTask->error(), QProcess::FailedToStart);
        QCOMPARE(r.h.button(), "Stop");
        QVERIFY(r.c().spinner->isAnimating());

        // The window still answers: Stop returns it to idle, and with no
        // child ever ending nothing more is printed.
        const QString before = r.console();
        r.c().perform();
        QVERIFY(r.h.isIdle());
        QCOMPARE(r.console(), before);
    }
};

ZELMOR_TEST_MAIN(TestWorkspaceE2E)
#include "tst_workspace_e2e.moc"
