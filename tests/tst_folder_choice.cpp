#include "TestSupport.h"

#include "app/ApplicationShell.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "platform/Bundle.h"
#include "settings/PrefsController.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/FolderChoice.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>

// Folder choosers open where the stored path is and take the folder the user
// typed or went into.

namespace {

SettingsStore &store()
{
    return SettingsStore::standard();
}

FolderChoice::IsFolder folders(const QStringList &existing)
{
    return [existing](const QString &path) { return existing.contains(path); };
}

QFileDialog *openDialog(QWidget *window)
{
    QFileDialog *dialog = nullptr;
    if (!QTest::qWaitFor([&] {
            dialog = window->findChild<QFileDialog *>();
            return dialog && dialog->isVisible();
        }))
        return nullptr;
    return dialog;
}

} // namespace

class TestFolderChoice : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Nothing this test starts may find a real companion to launch.
        Bundle::setMainBundlePath(m_bundle.path());
        store().registerApplicationDefaults(Bundle::mainBundlePath());
        QDir(m_dir.path()).mkpath("Dev/inner");
    }
    void init()
    {
        store().persisted().removeDomain();
        PrefsController::setFolderChooser({});
        ZELMORHelperAppDelegate::setFolderChooser({});
    }

    void shownFolder_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        // The dialog shows /a/Dev, which holds inner/; /b and /home/u/x exist.
        QTest::newRow("nothing typed") << "" << "/a/Dev";
        QTest::newRow("a highlighted entry's name") << "inner" << "/a/Dev";
        QTest::newRow("absolute path") << "/b" << "/b";
        QTest::newRow("trailing slash, dot segments") << "/b/./" << "/b";
        QTest::newRow("relative path") << "inner/" << "/a/Dev/inner";
        QTest::newRow("parent") << "../Dev/inner" << "/a/Dev/inner";
        QTest::newRow("home") << "~/x" << "/home/u/x";
        QTest::newRow("typed folder missing") << "/nowhere" << "/a/Dev";
        QTest::newRow("blanks kept") << "/b c" << "/a/Dev";
    }
    void shownFolder()
    {
        QFETCH(QString, typed);
        QFETCH(QString, expected);
        QCOMPARE(FolderChoice::shownFolder("/a/Dev", typed, "/home/u",
                                           folders({"/a/Dev", "/a/Dev/inner", "/b", "/home/u/x"})),
                 expected);
    }

    void startFolder_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("appended");
        QTest::addColumn<QString>("expected");
        // /a and /a/Dev exist; nothing below them; home is /home/u.
        QTest::newRow("parent of the default name") << "/a/Dev/ZELMOR" << "/ZELMOR" << "/a/Dev";
        QTest::newRow("output's default names") << "/a/Dev/ZELMOR/Output" << "/ZELMOR/Output" << "/a/Dev";
        QTest::newRow("complete path, existing") << "/a/Dev" << "" << "/a/Dev";
        QTest::newRow("complete path, missing") << "/a/Dev/x/y" << "" << "/a/Dev";
        QTest::newRow("no default name in it") << "/a/Dev/src" << "/ZELMOR" << "/a/Dev";
        QTest::newRow("nothing of it exists") << "/Developer/ZELMOR" << "/ZELMOR" << "/";
        QTest::newRow("unnormalised root") << "//ZELMOR" << "/ZELMOR" << "/";
        QTest::newRow("empty") << "" << "/ZELMOR" << "/home/u";
        QTest::newRow("relative") << "src" << "" << "/home/u";
        QTest::newRow("home") << "~/ZELMOR" << "/ZELMOR" << "/home/u";
    }
    void startFolder()
    {
        QFETCH(QString, stored);
        QFETCH(QString, appended);
        QFETCH(QString, expected);
        QCOMPARE(FolderChoice::startFolder(stored, appended, "/home/u",
                                           folders({"/", "/a", "/a/Dev", "/home/u"})),
                 expected);
    }

    // The preferences' chooser opens where choosing again gives back the
    // stored path, and a folder typed into it is the one stored.
    void preferencesTakeTheTypedFolder_data()
    {
        QTest::addColumn<int>("defaultName");
        QTest::addColumn<QString>("typed"); // relative to the temporary folder
        QTest::addColumn<QString>("stored");
        QTest::newRow("typed, switch on") << 1 << "/Dev/inner" << "/Dev/inner/ZELMOR";
        QTest::newRow("typed, switch off") << 0 << "/Dev/inner" << "/Dev/inner";
        QTest::newRow("an entry's name only") << 1 << "inner" << "/Dev/ZELMOR";
    }
    void preferencesTakeTheTypedFolder()
    {
        QFETCH(int, defaultName);
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        const QString dev = m_dir.path() + "/Dev";
        store().setObject(SettingsKeys::DefaultNameZELMOR, defaultName);
        store().setObject(SettingsKeys::Workspace, defaultName ? dev + "/ZELMOR" : dev);
        PrefsController prefs(nullptr);
        prefs.showWindow();
        prefs.browserRootButton->click();
        QFileDialog *panel = openDialog(prefs.window());
        QVERIFY(panel);
        QCOMPARE(panel->directory().absolutePath(), dev);
        auto *name = panel->findChild<QLineEdit *>("fileNameEdit");
        QVERIFY(name);
        panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(panel));
        name->setFocus();
        QTest::keyClicks(name, typed.startsWith('/') ? m_dir.path() + typed : typed);
        QTest::keyClick(name, Qt::Key_Return);
        QTRY_VERIFY(!prefs.window()->findChild<QFileDialog *>());
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), m_dir.path() + stored);
        QCOMPARE(prefs.rootText->text(), m_dir.path() + stored);
    }

    // The wizard's chooser opens at the stored paths too.
    void wizardOpensAtTheStoredPath_data()
    {
        QTest::addColumn<bool>("workspace");
        QTest::newRow("workspace") << true;
        QTest::newRow("output") << false;
    }
    void wizardOpensAtTheStoredPath()
    {
        QFETCH(bool, workspace);
        store().setObject(SettingsKeys::FirstLaunch, 1);
        ApplicationShell shell;
        shell.start();
        ZELMORHelperAppDelegate *d = shell.delegate();
        d->closeFirstLaunch();
        const QString dev = m_dir.path() + "/Dev";
        store().setObject(SettingsKeys::Workspace, dev + "/ZELMOR");
        store().setObject(SettingsKeys::Output, dev + "/ZELMOR/Output");
        (workspace ? d->wizardBrowseWorkspaceButton : d->wizardBrowseOutputButton)->click();
        QFileDialog *dialog = openDialog(d->wizardWindow);
        QVERIFY(dialog);
        QCOMPARE(dialog->directory().absolutePath(), dev);
        dialog->reject();
        QCOMPARE(store().stringValue(SettingsKeys::Workspace), dev + "/ZELMOR");
    }

private:
    QTemporaryDir m_dir;
    QTemporaryDir m_bundle;
};

ZELMOR_TEST_MAIN(TestFolderChoice)
#include "tst_folder_choice.moc"
