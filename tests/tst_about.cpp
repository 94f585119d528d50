#include "TestSupport.h"

#include "app/AboutController.h"
#include "app/ApplicationShell.h"
#include "platform/Bundle.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/Popover.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QSignalSpy>

// The about window and its popover, and where popovers open.
class TestAbout : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Nothing this test starts may find a real companion to launch.
        Bundle::setMainBundlePath(m_dir.path());
    }

    // Each request schedules its own one-shot timer: two quick requests show
    // the popover twice, and no more.
    void popoverTimerFiresOncePerRequest()
    {
        SettingsStore::standard().setObject(SettingsKeys::FirstLaunch, 0);
        ApplicationShell shell;
        shell.start();
        AppController &controller = *shell.controller();

        controller.aboutApp();
        AboutController *about = shell.aboutController();
        QVERIFY(about);
        QSignalSpy shown(about->popoverMe(), &Popover::shown);
        QCOMPARE(shown.count(), 0); // half a second later, not at once
        controller.aboutApp();
        QCOMPARE(shell.aboutController(), about); // made once, shown again
        QVERIFY(about->window()->isVisible());

        QTRY_COMPARE(shown.count(), 2);
        QVERIFY(!shown.wait(1000));
        QCOMPARE(shown.count(), 2);

        // Above the creator line, which it points at.
        Popover *popover = about->popoverMe();
        QCOMPARE(popover->positioningView(), about->creator.data());
        QCOMPARE(popover->edge(), Popover::MaxYEdge);
        QVERIFY(popover->isShown());
        const QPoint creatorTop = about->creator->mapToGlobal(QPoint(0, 0));
        QVERIFY(popover->geometry().bottom() < creatorTop.y());
    }

    // Closing the window before the timer fires does not cancel the popover
    // request, but nothing appears without the window.
    void closedWindowStillGetsItsPopoverRequest()
    {
        AboutController about;
        QSignalSpy shown(about.popoverMe(), &Popover::shown);
        about.showWindow(this);
        about.timeToload();
        about.window()->close();
        QVERIFY(shown.wait(5000));
        QCOMPARE(shown.count(), 1);
        QVERIFY(!about.popoverMe()->isShown()); // nothing floats without its window
    }

    void popoverGeometryTouchesTheChosenEdge_data()
    {
        TestSupport::columns<int, QRect>({"edge", "expected"});
        // Anchor (100,100) 40x20, popover 60x30, gap 4.
        QTest::newRow("left (0)") << 0 << QRect(36, 94, 60, 30);
        QTest::newRow("below (1)") << 1 << QRect(89, 124, 60, 30);
        QTest::newRow("right (2)") << 2 << QRect(144, 94, 60, 30);
        QTest::newRow("above (3)") << 3 << QRect(89, 66, 60, 30);
    }
    void popoverGeometryTouchesTheChosenEdge()
    {
        QFETCH(int, edge);
        QTEST(popoverGeometry(QRect(100, 100, 40, 20), QSize(60, 30), static_cast<Popover::Edge>(edge)),
              "expected");
    }

    // A transient popover: the next click elsewhere closes it.
    void popoverClosesOnAClickElsewhere()
    {
        QWidget host;
        host.resize(200, 100);
        auto *popover = new Popover(&host);
        host.show();
        popover->showRelativeToRect(host.rect(), &host, Popover::MinYEdge);
        QVERIFY(popover->isShown());
        QSignalSpy clicked(popover, &Popover::clicked);
        QTest::mouseClick(popover, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QTest::mouseClick(&host, Qt::LeftButton);
        QVERIFY(!popover->isShown());
    }

private:
    QTemporaryDir m_dir;
};

ZELMOR_TEST_MAIN(TestAbout)
#include "tst_about.moc"
