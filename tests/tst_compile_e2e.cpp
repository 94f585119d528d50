#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

#include <QDirIterator>

#include <algorithm>

using TestSupport::readFile;
using TestSupport::writeFile;

// "Compile ZELMOR" from the window: real cmake and make on a small project
// that stands in for the emulator's sources.
class TestCompileE2E : public QObject
{
    Q_OBJECT

private:
    static constexpr int Timeout = 180000;

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

    static QString assetsMessage(const QString &root)
    {
        return "\n'asssets' not found in " + root
               + "/Android.Please re-download a complete copy of source codes.\n";
    }

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
        QCOMPARE(r.console(), "\nChecking files...\n" + assetsMessage(r.ws()) + "\n.git not found in "
                                  + r.ws() + ".Please re-download a complete copy of source codes.\n");
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

ZELMOR_TEST_MAIN(TestCompileE2E)
#include "tst_compile_e2e.moc"
