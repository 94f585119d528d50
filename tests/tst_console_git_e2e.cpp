#include "ControllerHarness.h"

#include "WorkspaceFixture.h"
#include "workflow/AppController.h"

#include <QRegularExpression>

// "Update source codes and submodules" with "Enable Log" on, against real
// git: its progress, redrawn with carriage returns, reads as in a terminal.
class ConsoleGitEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void progressPhasesAppearOnceEach()
    {
        WorkspaceFixture fixture;
        fixture.checkout();
        // Enough new objects that git draws each phase many times over.
        for (int i = 0; i < 300; ++i)
            TestSupport::writeFile(fixture.root() + QStringLiteral("/zelmor.work/notes/%1").arg(i),
                                   QByteArray::number(i).repeated(40 + i));
        fixture.pushCommit("main", "notes/last", "last\n");
        ControllerHarness::configure(fixture.workspace(), fixture.output(), 1);
        ControllerHarness h;
        h.perform(AppController::TagUpdate);
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith("All done.\n"), 120000);

        const QString console = h.console();
        QVERIFY(!console.contains(u'\r'));
        int phases = 0;
        for (const QString phase : {"Counting objects", "Compressing objects", "Receiving objects",
                                    "Unpacking objects", "Resolving deltas"}) {
            // Shown once, with the phase's final figures.
            const qsizetype shown = console.count(phase);
            QVERIFY2(shown <= 1, qPrintable(console));
            const QRegularExpression done(phase + ":\\s+100% \\((\\d+)/\\1\\)");
            QVERIFY2(!shown || console.contains(done), qPrintable(console));
            phases += int(shown);
        }
        QVERIFY2(phases >= 2, qPrintable(console));
    }
};

ZELMOR_TEST_MAIN(ConsoleGitEndToEndTest)
#include "tst_console_git_e2e.moc"
