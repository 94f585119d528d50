#include "TestSupport.h"
#include "WorkspaceFixture.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/ConsoleView.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

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
        QVERIFY(fixture.isValid());
        fixture.checkout();
        // Enough new objects that git draws each phase many times over.
        const QString extra = fixture.root() + "/extra";
        TestSupport::git(fixture.root(), {"clone", "-q", fixture.root() + "/zelmor.git", extra});
        for (int i = 0; i < 300; ++i)
            TestSupport::writeFile(extra + QStringLiteral("/notes/%1.txt").arg(i),
                                   QByteArray::number(i).repeated(40 + i));
        TestSupport::git(extra, {"add", "-A"});
        TestSupport::git(extra, {"commit", "-q", "-m", "notes"});
        TestSupport::git(extra, {"push", "-q", "origin", "master"});
        SettingsStore &settings = SettingsStore::standard();
        settings.setObject(SettingsKeys::Workspace, fixture.workspace());
        settings.setObject(SettingsKeys::Output, fixture.output());
        settings.setObject(SettingsKeys::Log, 1);

        MainWindow window;
        AppController controller(&window);
        controller.awakeFromNib();
        controller.selectItemWithTag(AppController::TagUpdate);
        controller.perform();
        QTRY_VERIFY_WITH_TIMEOUT(controller.outputField->string().endsWith("All done.\n"), 120000);

        const QString console = controller.outputField->string();
        QVERIFY(!console.contains(u'\r'));
        const QStringList lines = console.split(u'\n');
        int phases = 0;
        for (const char *phase : {"Counting objects", "Compressing objects", "Receiving objects",
                                  "Unpacking objects", "Resolving deltas"}) {
            const QStringList shown = lines.filter(QLatin1String(phase));
            if (shown.isEmpty())
                continue;
            ++phases;
            QVERIFY2(shown.size() == 1, qPrintable(shown.join(u'\n')));
            // The line ends with the phase's final figures.
            QVERIFY2(shown.first().contains(QRegularExpression("100% \\((\\d+)/\\1\\)")),
                     qPrintable(shown.first()));
        }
        QVERIFY2(phases >= 2, qPrintable(console));
    }
};

ZELMOR_TEST_MAIN(ConsoleGitEndToEndTest)
#include "tst_console_git_e2e.moc"
