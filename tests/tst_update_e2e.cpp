#include "ControllerHarness.h"
#include "WorkspaceFixture.h"

#include "workflow/AppController.h"

// "Update source codes and submodules" from the window, against real git and
// local upstream repositories.
class TestUpdateE2E : public QObject
{
    Q_OBJECT

private:
    enum Layout {
        NoWorkspace,        // the workspace folder does not exist
        ModulesMissing,     // main checkout only, module folders empty
        ModuleMisnamed,     // lang cloned by hand under another name
        NoGitModulesMissing // a plain copy of the tree: no .git, no modules
    };

    static void configure(const WorkspaceFixture &fixture, int log)
    {
        ControllerHarness::configure(fixture.workspace(), fixture.output(), log);
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
        WorkspaceFixture fixture;
        QVERIFY(fixture.isValid());
        fixture.checkout();
        fixture.pushCommit("main", "NEWS.txt", "release notes\n");
        fixture.pushCommit("lang", "fr.txt", "Executer\n");
        configure(fixture, log);

        ControllerHarness h;
        h.perform(AppController::TagUpdate);
        QCOMPARE(h.button(), "Stop");

        const QString end = QStringLiteral("Done.\n \nAll done.\n");
        QTRY_VERIFY_WITH_TIMEOUT(h.console().endsWith(end), 60000);
        QVERIFY(QFile::exists(fixture.workspace() + "/NEWS.txt"));
        QVERIFY(QFile::exists(fixture.workspace() + "/lang/fr.txt"));
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
        switch (layout) {
        case NoWorkspace:
            break;
        case ModulesMissing:
            fixture.checkoutMain();
            break;
        case ModuleMisnamed:
            fixture.checkoutMain();
            fixture.cloneModule(fixture.langURL(), "emu-lang");
            fixture.cloneModule(fixture.toolsURL(), "tools");
            break;
        case NoGitModulesMissing:
            fixture.checkoutMain();
            QVERIFY(QDir(fixture.workspace() + "/.git").removeRecursively());
            break;
        }
        // New upstream commits must not arrive.
        fixture.pushCommit("main", "NEWS.txt", "release notes\n");
        configure(fixture, 1);

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
};

ZELMOR_TEST_MAIN(TestUpdateE2E)
#include "tst_update_e2e.moc"
