#include "TestSupport.h"

#include "widgets/FirstFrame.h"

#include <QWidget>
#include <QWindow>

// Work held back until a window's first frame is out.
class FirstFrameTest : public QObject
{
    Q_OBJECT

private slots:
    // A window about to show: nothing runs while it is built, the work runs
    // once, after the window was exposed (and painted).
    void runsOnceAfterTheWindowIsExposed()
    {
        QWidget window;
        int runs = 0;
        bool exposedWhenRun = false;
        afterFirstFrame(&window, [&] {
            ++runs;
            exposedWhenRun = window.windowHandle() && window.windowHandle()->isExposed();
        });
        QCOMPARE(runs, 0);
        window.show();
        QCOMPARE(runs, 0); // not inside show() either
        // Well before the grace for windows never shown runs out.
        QTRY_COMPARE_WITH_TIMEOUT(runs, 1, 1000);
        QVERIFY(exposedWhenRun);
        window.hide();
        window.show();
        // A second frame is no first one; twice the loop turn it waits is
        // enough to see that nothing more runs.
        QTest::qWait(50);
        QCOMPARE(runs, 1);
    }

    // Asked again once the window is on screen (the menu's launch): at once.
    void runsAtOnceForAWindowOnScreen()
    {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        int runs = 0;
        afterFirstFrame(&window, [&] { ++runs; });
        QCOMPARE(runs, 1);
    }

    // A window that is never shown does not keep the work from happening;
    // one that goes before its first frame takes the work along.
    void runsAfterAGraceForAWindowNeverShown()
    {
        QWidget window;
        int runs = 0;
        afterFirstFrame(&window, [&] { ++runs; });
        int runsOfTheGone = 0;
        {
            QWidget gone;
            afterFirstFrame(&gone, [&] { ++runsOfTheGone; });
        }
        QCOMPARE(runs, 0);
        QTRY_COMPARE_WITH_TIMEOUT(runs, 1, 5000);
        // Both graces started together; a little more covers the other's.
        QTest::qWait(100);
        QCOMPARE(runsOfTheGone, 0);
    }
};

ZELMOR_TEST_MAIN(FirstFrameTest)
#include "tst_first_frame.moc"
