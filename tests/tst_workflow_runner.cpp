#include "TestSupport.h"

#include "widgets/ConsoleView.h"
#include "widgets/ProgressBar.h"
#include "widgets/Spinner.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

namespace {

constexpr int Patience = 30000;

// The main window and its controller as the application sets them up.
struct Harness
{
    MainWindow window;
    AppController controller{&window};
    QTemporaryDir dir;

    Harness()
    {
        controller.awakeFromNib();
        window.show();
    }

    QString console() { return controller.outputField->string(); }

    // What perform() does before a check method starts the first child.
    void runAsOperation(int tag, const QString &command)
    {
        controller.selectItemWithTag(tag);
        controller.buttonPerform->setText(QStringLiteral("Stop"));
        controller.runUnixTask(command, dir.path());
    }

    // A child that blocks until release() is called, so a test decides when
    // each part of its output is written.
    QString gate() const { return QStringLiteral("while [ ! -e release ]; do sleep 0.02; done"); }
    void release() { TestSupport::writeFile(dir.path() + "/release", ""); }
};

} // namespace

class WorkflowRunnerTest : public QObject
{
    Q_OBJECT

private slots:
    void stderrRangeErrorEndsReadingOfThatChild_data()
    {
        QTest::addColumn<QString>("firstChunk");
        QTest::addColumn<bool>("barMadeDeterminate");
        QTest::newRow("short 'Cloning into' chunk") << "Cloning into 'x'..." << false;
        QTest::newRow("no figures") << "warning: no figures in this line at all" << true;
    }
    void stderrRangeErrorEndsReadingOfThatChild()
    {
        QFETCH(QString, firstChunk);
        QFETCH(bool, barMadeDeterminate);
        Harness h;
        h.controller.logSwitch = 1;
        // After the first chunk, 4 MB more on standard error: more than any
        // pipe holds, so the child only ends if it is still drained.
        h.runAsOperation(AppController::TagModules,
                         "printf '%s\\n' \"" + firstChunk + "\" >&2; " + h.gate()
                             + "; head -c 4000000 /dev/zero | tr '\\0' z >&2; echo stdout-still-read");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().contains(firstChunk), Patience);
        QCOMPARE(!h.controller.progressbar->isIndeterminate(), barMadeDeterminate);
        h.release();

        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        const QString console = h.console();
        QVERIFY(console.contains("stdout-still-read"));
        QVERIFY(!console.contains("zzz"));
        QVERIFY(!h.controller.unixTask);

        // The next child's standard error is read again.
        h.runAsOperation(AppController::TagModules,
                         "printf 'Receiving objects:  45%% (1234/2742), 1.23 MiB | 456.00 KiB/s   \\r' >&2; "
                             + h.gate().replace("release", "release2"));
        QTRY_COMPARE_WITH_TIMEOUT(h.controller.showSpeed->text(), QStringLiteral("456.00 KiB/s"), Patience);
        TestSupport::writeFile(h.dir.path() + "/release2", "");
        QTRY_VERIFY_WITH_TIMEOUT(!h.controller.unixTask, Patience);
    }

    void cloneProgressFromStandardError()
    {
        Harness h;
        h.controller.logSwitch = 0;
        QSignalSpy progress(&h.controller, &AppController::progressChanged);
        h.runAsOperation(AppController::TagClone,
                         "printf 'Receiving objects:  45%% (1234/2742), 1.23 MiB | 456.00 KiB/s   \\r' >&2; "
                             + h.gate());
        QTRY_COMPARE_WITH_TIMEOUT(h.controller.progressbar->maxValue(), 2742.0, Patience);
        QCOMPARE(h.controller.progressbar->doubleValue(), 1234.0);
        QCOMPARE(h.controller.progressbar->minValue(), 0.0);
        QVERIFY(!h.controller.progressbar->isIndeterminate());
        QCOMPARE(h.controller.showSpeed->text(), QStringLiteral("456.00 KiB/s"));
        QCOMPARE(h.controller.lastPercentage, 45);
        QVERIFY(progress.count() > 0);
        QVERIFY(!h.console().contains("Receiving")); // log off

        // Switched to compile while it runs: its standard error is no longer
        // parsed, and its end is handled as the end of a compile would be.
        h.controller.selectItemWithTag(AppController::TagCompile);
        h.controller.notifiedForStdError("Receiving objects: 99% (1/7), 1 MiB | 9.00 KiB/s   \r");
        QCOMPARE(h.controller.progressbar->maxValue(), 2742.0);
        h.controller.stopRequest = 1;
        h.controller.stopTask();
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nTask terminated by user.\n"), Patience);
        QCOMPARE(h.controller.showSpeed->text(), QStringLiteral("ZELMOR"));
    }

    void makeProgressFromStandardOutput_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QStringList>("chunks");
        QTest::addColumn<double>("value"); // -1: bar still indeterminate
        QTest::newRow("12%") << int(AppController::TagCompile)
                             << QStringList{"[ 12%] Building CXX object main.cpp.o\n"} << 12.0;
        QTest::newRow("no prefix keeps value")
            << int(AppController::TagCompile)
            << QStringList{"[ 12%] Building\n", "Scanning dependencies\n"} << 12.0;
        QTest::newRow("100%") << int(AppController::TagCompile)
                              << QStringList{"[ 12%] Building\n", "[100%] Linking\n"} << 100.0;
        QTest::newRow("not compiling") << int(AppController::TagClone)
                                       << QStringList{"[ 12%] Building\n"} << -1.0;
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
        if (value < 0) {
            QVERIFY(h.controller.progressbar->isIndeterminate());
        } else {
            QVERIFY(!h.controller.progressbar->isIndeterminate());
            QCOMPARE(h.controller.progressbar->maxValue(), 100.0);
            QCOMPARE(h.controller.progressbar->doubleValue(), value);
        }
    }

    void logSwitchDecidesWhatIsShown_data()
    {
        QTest::addColumn<int>("log");
        QTest::addColumn<QStringList>("shown");
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
        qsizetype length = QStringLiteral("\nDone.\n").size();
        for (const QString &text : shown) {
            QVERIFY2(console.contains(text), qPrintable(console));
            length += text.size();
        }
        QCOMPARE(console.size(), length);
    }

    void stopKillsOnlyOnStopRequest()
    {
        Harness h;
        h.runAsOperation(AppController::TagModules, "sleep 30");
        QTRY_COMPARE_WITH_TIMEOUT(h.controller.unixTask->state(), QProcess::Running, Patience);

        h.controller.stopRequest = 0;
        h.controller.stopTask();
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Perform"));
        QVERIFY(!h.controller.spinner->isAnimating());
        QVERIFY(h.controller.progressbar->isIndeterminate());
        QCOMPARE(h.controller.unixTask->state(), QProcess::Running);
        QCOMPARE(h.controller.terminatedByUser, 0);

        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        h.controller.perform(); // the user's Stop
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Perform"));
        QCOMPARE(h.controller.terminatedByUser, 1);
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nTask terminated by user.\n"), Patience);
        QVERIFY(!h.controller.unixTask);
    }

    void standardInputStaysOpen()
    {
        Harness h;
        h.controller.logSwitch = 1;
        // read returns at once on end of file, and fails after its timeout
        // (status above 128) while the pipe stays open and empty.
        h.runAsOperation(AppController::TagModules,
                         "if read -t 1 line; then echo got; elif [ $? -gt 128 ]; then echo "
                         "waited; else echo eof; fi");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("\nDone.\n"), Patience);
        QVERIFY(h.console().contains("waited"));
    }

    void childThatCannotStartKeepsRunningLook()
    {
        Harness h;
        h.controller.spinner->startAnimation();
        h.controller.runUnixTask("echo never", h.dir.path() + "/no/such/folder");
        QVERIFY(h.controller.unixTask);
        QProcess *task = h.controller.unixTask.data();
        QSignalSpy failed(task, &QProcess::errorOccurred);
        QSignalSpy finished(task, &QProcess::finished);
        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        if (task->error() != QProcess::FailedToStart)
            QVERIFY(failed.wait(Patience));
        QCOMPARE(task->error(), QProcess::FailedToStart);
        // No completion follows a child that never started.
        QVERIFY(!finished.wait(200));
        QCOMPARE(h.controller.unixTask.data(), task);
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Stop"));
        QVERIFY(h.controller.spinner->isAnimating());
        QVERIFY(!h.console().contains("Done."));

        h.controller.perform(); // Stop brings the idle look back
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Perform"));
        QCOMPARE(h.controller.terminatedByUser, 1);
    }

    void completionEndsOperation_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<int>("now");
        QTest::addColumn<int>("terminatedByUser");
        QTest::addColumn<QString>("console");
        QTest::addColumn<int>("nowAfter");
        QTest::newRow("update, second pull") << int(AppController::TagUpdate) << 1 << 0
                                             << "Done.\n \nAll done.\n" << 1;
        QTest::newRow("compile, copy") << int(AppController::TagCompile) << 2 << 0
                                       << "Done.\n\nAll done.\n" << 2;
        QTest::newRow("modules, none left") << int(AppController::TagModules) << 0 << 0
                                            << "\nDone.\n" << 0;
        QTest::newRow("stopped by user") << int(AppController::TagCompile) << 0 << 1
                                         << "\nTask terminated by user.\n" << 0;
    }
    void completionEndsOperation()
    {
        QFETCH(int, tag);
        QFETCH(int, now);
        QFETCH(int, terminatedByUser);
        Harness h;
        h.controller.outputField->setString(QString());
        h.controller.selectItemWithTag(tag);
        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        h.controller.now = now;
        h.controller.terminatedByUser = terminatedByUser;
        h.controller.notifiedForComplete();
        QTEST(h.console(), "console");
        QTEST(h.controller.now, "nowAfter");
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Perform"));
        QCOMPARE(h.controller.showSpeed->text(), QStringLiteral("ZELMOR"));
        QVERIFY(!h.controller.unixTask);
    }

    void stopDuringUpdatePause()
    {
        Harness h;
        h.controller.outputField->setString(QString());
        h.controller.selectItemWithTag(AppController::TagUpdate);
        h.controller.buttonPerform->setText(QStringLiteral("Stop"));
        h.controller.notifiedForComplete(); // the first pull ended
        QCOMPARE(h.console(), QStringLiteral("Done.\n"));
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Stop"));
        h.controller.perform(); // Stop during the pause
        QTRY_COMPARE_WITH_TIMEOUT(h.console(), QStringLiteral("Done.\n\nTask terminated by user.\n"),
                                  Patience);
        QCOMPARE(h.controller.now, 0);
        QVERIFY(!h.controller.unixTask);
    }

    void unknownTagPrintsError()
    {
        Harness h;
        h.controller.popupSelection->addItem("Unknown", 9);
        h.controller.selectItemWithTag(9);
        h.controller.perform();
        QCOMPARE(h.console(), QStringLiteral("Error"));
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Stop"));
        QVERIFY(!h.controller.spinner->isAnimating());
        h.controller.perform();
        QCOMPARE(h.controller.buttonPerform->text(), QStringLiteral("Perform"));
    }
};

ZELMOR_TEST_MAIN(WorkflowRunnerTest)
#include "tst_workflow_runner.moc"
