#include "TestSupport.h"

#include "app/MainMenu.h"
#include "platform/Bundle.h"
#include "ui_MainWindow.h"
#include "widgets/ConsoleFindBar.h"
#include "widgets/ConsoleView.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QClipboard>
#include <QLineEdit>
#include <QScrollBar>

// Copying, selecting and finding on the console through the Edit menu.
class TestAppShellFind : public QObject
{
    Q_OBJECT

private slots:
    void findInText_data()
    {
        TestSupport::columns<QString, int, int, bool, int>(
            {"needle", "selectionStart", "selectionEnd", "backward", "expected"});
        // Text: "ab cab CAB ab" (matches of "ab" at 0, 4, 8, 11)
        QTest::newRow("next from start") << "ab" << 0 << 0 << false << 0;
        QTest::newRow("next after selection") << "ab" << 4 << 6 << false << 8;
        QTest::newRow("next ignores case") << "cab" << 0 << 5 << false << 7;
        QTest::newRow("next wraps") << "ab" << 11 << 13 << false << 0;
        QTest::newRow("previous") << "ab" << 8 << 10 << true << 4;
        QTest::newRow("previous wraps") << "ab" << 0 << 2 << true << 11;
        QTest::newRow("only match found again") << "cab c" << 3 << 8 << false << 3;
        QTest::newRow("absent") << "zz" << 0 << 0 << false << -1;
        QTest::newRow("empty needle") << "" << 0 << 0 << false << -1;
        QTest::newRow("selection past the end") << "ab" << 40 << 50 << true << 11;
    }
    void findInText()
    {
        QFETCH(QString, needle);
        QFETCH(int, selectionStart);
        QFETCH(int, selectionEnd);
        QFETCH(bool, backward);
        QFETCH(int, expected);
        const TextMatch match =
            ::findInText("ab cab CAB ab", needle, selectionStart, selectionEnd, backward);
        QCOMPARE(match.start, qsizetype(expected));
        if (match.found())
            QCOMPARE(match.length, needle.size());
    }

    void init()
    {
        Bundle::setMainBundlePath(m_dir.path());
        m_window = std::make_unique<MainWindow>();
        m_controller = std::make_unique<AppController>(m_window.get());
        m_menu = std::make_unique<MainMenu>(m_window.get(), m_controller.get());
        console()->setString("alpha beta\nALPHA gamma\nalpha");
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void cleanup()
    {
        m_menu.reset();
        m_controller.reset();
        m_window.reset();
    }

    // The keyboard drives the bar: typing finds as it goes, Return goes on,
    // Shift+Return goes back, Escape closes it.
    void findBarFromTheKeyboard()
    {
        ConsoleFindBar *bar = m_menu->findBar();
        QVERIFY(!bar->isVisible());
        ui()->menuFind->trigger();
        QVERIFY(bar->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), bar->findField());

        QTest::keyClicks(bar->findField(), "alpha");
        QCOMPARE(selection(), qMakePair(0, 5));
        QTest::keyClick(bar->findField(), Qt::Key_Return);
        QCOMPARE(selection(), qMakePair(11, 16));
        QTest::keyClick(bar->findField(), Qt::Key_Return);
        QCOMPARE(selection(), qMakePair(23, 28));
        QTest::keyClick(bar->findField(), Qt::Key_Return);
        QCOMPARE(selection(), qMakePair(0, 5));
        QTest::keyClick(bar->findField(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(selection(), qMakePair(23, 28));

        QTest::keyClick(bar->findField(), Qt::Key_Escape);
        QVERIFY(!bar->isVisible());
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(console()));
    }

    void findMenuItems()
    {
        m_menu->findBar()->setFindString("alpha");
        ui()->menuFindNext->trigger();
        QCOMPARE(selection(), qMakePair(0, 5));
        ui()->menuFindNext->trigger();
        QCOMPARE(selection(), qMakePair(11, 16));
        ui()->menuFindPre->trigger();
        QCOMPARE(selection(), qMakePair(0, 5));

        select(17, 22); // "gamma"
        ui()->menuFindSelect->trigger();
        QCOMPARE(m_menu->findBar()->findString(), "gamma");
        select(0, 0);
        ui()->menuFindNext->trigger();
        QCOMPARE(selection(), qMakePair(17, 22));

        m_menu->findBar()->setFindString("zeta");
        QVERIFY(!m_menu->findBar()->findNext());
        QCOMPARE(selection(), qMakePair(17, 22)); // a miss leaves the selection
    }

    void jumpToSelectionScrollsTheConsole()
    {
        QStringList lines;
        for (int i = 0; i < 400; ++i)
            lines << QString("line %1").arg(i);
        console()->setString(lines.join('\n'));
        const int at = static_cast<int>(console()->toPlainText().indexOf("line 390"));
        select(at, at + 8);
        QScrollBar *bar = console()->verticalScrollBar();
        bar->setValue(0);
        ui()->menuJump->trigger();
        QVERIFY(bar->value() > 0);
    }

    void copyAndSelectAllActOnTheConsole()
    {
        select(6, 10);
        ui()->menuCopy->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), "beta");
        ui()->menuSelectAll->trigger();
        QCOMPARE(selection(), qMakePair(0, int(console()->toPlainText().size())));
    }

private:
    Ui::MainWindow *ui() const { return m_window->ui(); }
    ConsoleView *console() const { return m_window->ui()->outputField; }
    QPair<int, int> selection() const
    {
        const QTextCursor c = console()->textCursor();
        return {c.selectionStart(), c.selectionEnd()};
    }
    void select(int start, int end)
    {
        QTextCursor c = console()->textCursor();
        c.setPosition(start);
        c.setPosition(end, QTextCursor::KeepAnchor);
        console()->setTextCursor(c);
    }

    QTemporaryDir m_dir;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<AppController> m_controller;
    std::unique_ptr<MainMenu> m_menu;
};

ZELMOR_TEST_MAIN(TestAppShellFind)
#include "tst_appshell_find.moc"
