#include "TestSupport.h"

#include "platform/Bundle.h"
#include "platform/Relaunch.h"
#include "settings/PrefsController.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/AlertSheet.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTimer>

// Records the order in which watched widgets become disabled.
class DisableRecorder : public QObject
{
public:
    QStringList order;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange && !static_cast<QWidget *>(watched)->isEnabled())
            order.append(watched->objectName());
        return false;
    }
};

class TestPrefsReset : public QObject
{
    Q_OBJECT

    QList<float> relaunches;
    const QString countdownText = QStringLiteral(
        "ZELMOR Helper must restart to take effects of changes.\n"
        "You can restart the application later through the menu bar item.\n \nCount down %1 secs...");

    // Reset All on a fresh window; returns its restart alert.
    AlertSheet *resetAll(PrefsController &prefs)
    {
        prefs.resetAll();
        const auto sheets = AlertSheet::openSheets();
        return sheets.isEmpty() ? nullptr : sheets.last();
    }

private slots:
    void initTestCase()
    {
        Bundle::setMainBundlePath(TestSupport::buildBundleDir());
        Bundle::exposeHelpersOnPath();
        SettingsStore::standard().registerApplicationDefaults(Bundle::mainBundlePath());
        Relaunch::setHandler([this](float delay) { relaunches.append(delay); });
    }
    void init() { relaunches.clear(); }

    void resetAllDeletesDomainAndAsksToRestart()
    {
        auto &store = SettingsStore::standard();
        store.setObject(SettingsKeys::Workspace, QStringLiteral("/mine"));
        store.setObject(SettingsKeys::FirstLaunch, 0);
        QMainWindow mainWindow;
        PrefsController prefs(&mainWindow);
        prefs.showWindow();

        DisableRecorder recorder;
        const QStringList expectedOrder{"rootText", "outputText", "browserOutputButton",
                                        "browserRootButton", "defaultToZELMORCheckbox",
                                        "enableLogCheckBox", "enableStartup",
                                        "openquitWithHelperCheckBox"};
        for (const QString &name : expectedOrder)
            prefs.window()->findChild<QWidget *>(name)->installEventFilter(&recorder);

        AlertSheet *alert = resetAll(prefs);
        QCOMPARE(recorder.order, expectedOrder);
        QVERIFY(prefs.switchResetAll->isEnabled() && prefs.switchResetWarnings->isEnabled());
        const QString caution("* Please restart ZELMOR Helper to take effect(s).");
        QCOMPARE(prefs.cautionText->text(), caution);
        QCOMPARE(mainWindow.windowTitle(), caution);

        QVERIFY(alert);
        QCOMPARE(alert->parentWidget(), prefs.window());
        QCOMPARE(alert->buttonTitles(), QStringList({"Restart", "Later"}));
        QCOMPARE(alert->text(), QString("Notice"));
        QCOMPARE(alert->informativeText(), countdownText.arg(10));
        QVERIFY(prefs.timer->isActive());
        QCOMPARE(prefs.timer->interval(), 1000);

        // The child removes the whole persisted domain through the bundle's tool.
        QTRY_COMPARE(store.persisted().state(), DefaultsDomain::State::Missing);
        QCOMPARE(store.stringValue(SettingsKeys::Workspace), SettingsKeys::DefaultWorkspace);

        // The timer drives the countdown by itself, to 0 and the relaunch.
        QTRY_COMPARE_WITH_TIMEOUT(relaunches, QList<float>{2.0f}, 15000);
        QCOMPARE(prefs.countdown, 0);
        QVERIFY(!prefs.timer->isActive());
        QVERIFY(AlertSheet::openSheets().isEmpty());
    }

    // The countdown ticks down the text; at 0, or on Restart, the
    // application relaunches; Later leaves the windows as they are.
    void answers_data()
    {
        TestSupport::columns<int, int>({"answer", "relaunched"});
        QTest::newRow("none, count to 0") << 0 << 1;
        QTest::newRow("Restart") << 1000 << 1;
        QTest::newRow("Later") << 1001 << 0;
    }
    void answers()
    {
        QFETCH(int, answer);
        QFETCH(int, relaunched);
        PrefsController prefs(nullptr);
        prefs.showWindow();
        AlertSheet *alert = resetAll(prefs);
        QVERIFY(alert);
        for (int left = 9; left >= 1; --left) {
            prefs.timeCountdownOfSettingChanged();
            QCOMPARE(alert->informativeText(), countdownText.arg(left));
            QVERIFY(relaunches.isEmpty());
        }
        if (answer == 0) {
            prefs.timeCountdownOfSettingChanged();
            QCOMPARE(alert->informativeText(), countdownText.arg(0));
            QVERIFY(!prefs.timer->isActive());
        } else {
            alert->buttonFor(answer)->click();
            QCOMPARE(prefs.timer->isActive(), relaunched == 1);
        }
        QCOMPARE(relaunches.size(), relaunched);
        if (relaunched)
            QCOMPARE(relaunches.first(), 2.0f);
        if (answer != 1000)
            QVERIFY(!alert->isVisible());
        if (answer == 1001) {
            QVERIFY(!prefs.rootText->isEnabled());
            // Pressing again starts over with a fresh count of 10.
            AlertSheet *again = resetAll(prefs);
            QVERIFY(again && again != alert);
            QCOMPARE(prefs.countdown, 10);
            QVERIFY(prefs.timer->isActive());
        }
    }
};

ZELMOR_TEST_MAIN(TestPrefsReset)
#include "tst_prefs_reset.moc"
