#include "TestSupport.h"

#include "settings/PrefsController.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AlertSheet.h"
#include "widgets/Popover.h"

#include <QAction>
#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>

using Chooser = PrefsController::Chooser;
Q_DECLARE_METATYPE(PrefsController::Chooser)

class TestPrefs : public QObject
{
    Q_OBJECT

private:
    SettingsStore &store() { return SettingsStore::standard(); }
    void storeAll(const QVariantMap &values)
    {
        for (auto it = values.begin(); it != values.end(); ++it)
            store().setObject(it.key(), it.value());
    }

private slots:
    void initTestCase() { store().registerApplicationDefaults(QStringLiteral("/Apps/Z.app")); }
    void init()
    {
        store().persisted().removeDomain();
        PrefsController::setFolderChooser({});
    }

    void textsAndPages()
    {
        PrefsController prefs(nullptr);
        QMainWindow *window = prefs.window();
        QCOMPARE(window->windowTitle(), "Preferences");
        // The two texts whose odd spelling is easiest to "fix" by mistake.
        QCOMPARE(prefs.pathsPopMessage->text(),
                 "If you want to use 'ZELMOR' as the default name of workspace  and 'Output' as "
                 "the name of output folder, you just need to choose the parent folder of them. "
                 "Otherwise, you need to choose the complete path.");
        QCOMPARE(prefs.enableStartup->text().remove('&'), // as shown, without its mnemonic
                 "Enable ZELMOR Helper Statusbar App Statup at Login");

        prefs.showWindow();
        prefs.showWindow();
        QVERIFY(window->isVisible());
        QVERIFY(prefs.pathsView->isVisible() && !prefs.switchView->isVisible());
        prefs.toolbarSwitch->trigger();
        QVERIFY(!prefs.pathsView->isVisible() && prefs.switchView->isVisible());
        prefs.toolbarPaths->trigger();
        QVERIFY(prefs.pathsView->isVisible() && !prefs.switchView->isVisible());
        prefs.helpButton->click();
        QVERIFY(prefs.popover->isShown());
        QCOMPARE(prefs.popover->positioningView(), prefs.helpButton);
        QCOMPARE(prefs.popover->edge(), Popover::MaxXEdge);
    }

    void loadsStates_data()
    {
        TestSupport::columns<QVariantMap, bool, bool, bool>({"stored", "defaultName", "log", "quit"});
        QTest::newRow("fresh user") << QVariantMap{} << true << false << false;
        QTest::newRow("switches stored as numbers")
            << QVariantMap{{SettingsKeys::DefaultNameZELMOR, 0}, {SettingsKeys::Log, 1},
                           {SettingsKeys::QuitStatusbarApp, 1}}
            << false << true << true;
        QTest::newRow("quit as the string")
            << QVariantMap{{SettingsKeys::QuitStatusbarApp, "1"}} << true << false << true;
    }
    void loadsStates()
    {
        QFETCH(QVariantMap, stored);
        QFETCH(bool, defaultName);
        storeAll(stored);
        PrefsController prefs(nullptr);
        QCOMPARE(prefs.rootText->text(), store().stringValue(SettingsKeys::Workspace));
        QCOMPARE(prefs.outputText->text(), store().stringValue(SettingsKeys::Output));
        QCOMPARE(prefs.defaultToZELMORCheckbox->isChecked(), defaultName);
        QCOMPARE(prefs.rootText->isReadOnly(), defaultName);
        QCOMPARE(prefs.outputText->isReadOnly(), defaultName);
        QTEST(prefs.enableLogCheckBox->isChecked(), "log");
        QTEST(prefs.openquitWithHelperCheckBox->isChecked(), "quit");
        // Loading writes nothing, so registered defaults stay defaults.
        QCOMPARE(store().persisted().values().keys(), stored.keys());
    }

    void defaultNameSwitch_data()
    {
        TestSupport::columns<QString, QString, QString, QString>(
            {"workspace", "output", "newWorkspace", "newOutput"});
        QTest::newRow("substring kept") << "/x/ZELMORsrc" << "/Developer/ZELMOR/Output"
                                        << "/x/ZELMORsrc" << "/Developer/ZELMOR/Output";
        QTest::newRow("other case extended") << "/x/zelmor" << "/Developer/ZELMOR/Out"
                                             << "/x/zelmor/ZELMOR"
                                             << "/Developer/ZELMOR/Out/ZELMOR/Output";
        QTest::newRow("output from its own text") << "/Users/a/ZELMOR" << "/Users/a/Out"
                                                  << "/Users/a/ZELMOR" << "/Users/a/Out/ZELMOR/Output";
        QTest::newRow("trailing slash kept") << "/a/" << "" << "/a//ZELMOR" << "/ZELMOR/Output";
    }
    void defaultNameSwitch()
    {
        QFETCH(QString, workspace);
        QFETCH(QString, output);
        QFETCH(QString, newWorkspace);
        QFETCH(QString, newOutput);
        storeAll({{SettingsKeys::DefaultNameZELMOR, 0}, {SettingsKeys::Workspace, workspace},
                  {SettingsKeys::Output, output}});
        PrefsController prefs(nullptr);
        // On, off and on again: the second turn finds the names and adds nothing.
        for (int turn = 0; turn < 3; ++turn) {
            prefs.defaultToZELMORCheckbox->click();
            const bool on = turn != 1;
            QCOMPARE(store().objectForKey(SettingsKeys::DefaultNameZELMOR), QVariant(on ? 1 : 0));
            QCOMPARE(prefs.rootText->isReadOnly(), on);
            QCOMPARE(prefs.outputText->isReadOnly(), on);
            QCOMPARE(prefs.rootText->text(), newWorkspace);
            QCOMPARE(prefs.outputText->text(), newOutput);
            QCOMPARE(store().stringValue(SettingsKeys::Workspace), newWorkspace);
            QCOMPARE(store().stringValue(SettingsKeys::Output), newOutput);
        }
    }

    void chooser_data()
    {
        TestSupport::columns<Chooser, int, QString>({"which", "defaultName", "stored"});
        QTest::newRow("workspace, switch on") << Chooser::Workspace << 1 << "/Users/a/Dev/ZELMOR";
        QTest::newRow("workspace, switch off") << Chooser::Workspace << 0 << "/Users/a/Dev";
        QTest::newRow("output, switch on") << Chooser::Output << 1 << "/Users/a/Dev/ZELMOR/Output";
        QTest::newRow("output, switch off") << Chooser::Output << 0 << "/Users/a/Dev";
    }
    void chooser()
    {
        QFETCH(Chooser, which);
        QFETCH(int, defaultName);
        QFETCH(QString, stored);
        store().setObject(SettingsKeys::DefaultNameZELMOR, defaultName);
        PrefsController prefs(nullptr);
        QList<std::function<void(std::optional<QString>)>> pending;
        PrefsController::setFolderChooser([&](QWidget *window, Chooser asked, auto done) {
            QCOMPARE(window, prefs.window());
            QCOMPARE(asked, which);
            pending.append(done);
        });
        const QString key = which == Chooser::Workspace ? SettingsKeys::Workspace : SettingsKeys::Output;
        QLineEdit *field = which == Chooser::Workspace ? prefs.rootText : prefs.outputText;
        QPushButton *button =
            which == Chooser::Workspace ? prefs.browserRootButton : prefs.browserOutputButton;
        const QString before = field->text();

        button->click();
        QCOMPARE(pending.size(), 1);
        pending.takeFirst()(std::nullopt);
        QCOMPARE(field->text(), before);
        QVERIFY(!store().persisted().value(key).isValid());

        // The switch counts as it was at the click, not when the chooser ends.
        button->click();
        store().setObject(SettingsKeys::DefaultNameZELMOR, 1 - defaultName);
        pending.takeFirst()(QStringLiteral("/Users/a/Dev"));
        QCOMPARE(store().objectForKey(key), QVariant(stored));
        QCOMPARE(field->text(), stored);
        QCOMPARE(prefs.pathStr, stored);
    }

    void realChooserTakesShownFolder()
    {
        QTemporaryDir dir;
        QDir(dir.path()).mkpath("Dev/inner");
        const QString shown = dir.path() + "/Dev";
        PrefsController prefs(nullptr);
        prefs.showWindow();
        for (bool accept : {false, true}) {
            prefs.browserRootButton->click();
            QFileDialog *panel = nullptr;
            QTRY_VERIFY((panel = prefs.window()->findChild<QFileDialog *>()) && panel->isVisible());
            QCOMPARE(panel->windowModality(), Qt::WindowModal);
            QCOMPARE(panel->fileMode(), QFileDialog::Directory);
            QCOMPARE(panel->labelText(QFileDialog::Accept), "Select");
            panel->setDirectory(shown);
            panel->selectFile(shown + "/inner");
            QDialog *dialog = panel; // accept() is public on QDialog only
            accept ? dialog->accept() : dialog->reject();
            QTRY_VERIFY(!prefs.window()->findChild<QFileDialog *>());
            QCOMPARE(store().objectForKey(SettingsKeys::Workspace),
                     QVariant(accept ? shown + "/ZELMOR" : SettingsKeys::DefaultWorkspace));
        }
    }

    void typingStoresWholeText_data()
    {
        QTest::addColumn<bool>("workspace");
        QTest::newRow("workspace") << true;
        QTest::newRow("output") << false;
    }
    void typingStoresWholeText()
    {
        QFETCH(bool, workspace);
        store().setObject(SettingsKeys::DefaultNameZELMOR, 0);
        PrefsController prefs(nullptr);
        QLineEdit *field = workspace ? prefs.rootText : prefs.outputText;
        const QString key = workspace ? SettingsKeys::Workspace : SettingsKeys::Output;
        QTest::keyClicks(field, "/w");
        QCOMPARE(store().objectForKey(key), QVariant(field->text()));
        QVERIFY(field->text().endsWith("/w"));
        field->selectAll();
        QTest::keyClick(field, Qt::Key_Backspace);
        QCOMPARE(store().objectForKey(key), QVariant(QString("")));
        QCOMPARE(prefs.rootDirectory, SettingsKeys::DefaultWorkspace);
    }

    void switchesStoreTheirEncodings()
    {
        PrefsController prefs(nullptr);
        prefs.enableLogCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::Log), QVariant(1));
        prefs.openquitWithHelperCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::QuitStatusbarApp), QVariant(QString("1")));
        QVERIFY(store().isEqualToString(SettingsKeys::QuitStatusbarApp, "1"));
        prefs.openquitWithHelperCheckBox->click();
        QCOMPARE(store().objectForKey(SettingsKeys::QuitStatusbarApp), QVariant(QString("0")));
        store().setObject(SettingsKeys::FirstLaunch, 0);
        prefs.switchResetWarnings->click();
        QCOMPARE(store().objectForKey(SettingsKeys::FirstLaunch), QVariant(QString("1")));
        QVERIFY(AlertSheet::openSheets().isEmpty());
    }
};

ZELMOR_TEST_MAIN(TestPrefs)
#include "tst_prefs.moc"
