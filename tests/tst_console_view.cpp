#include "TestSupport.h"

#include "widgets/ConsoleView.h"

#include <QScrollBar>
#include <QTextCursor>

static QString numberedLines(int from, int to)
{
    QString text;
    for (int i = from; i < to; ++i)
        text += QStringLiteral("line %1\n").arg(i);
    return text;
}

class ConsoleViewTest : public QObject
{
    Q_OBJECT

private slots:
    // A new text replaces what is still queued; a carriage return starts a
    // line, and "\r\n" is one break even when cut between two texts.
    void lineEndsAndOrder()
    {
        ConsoleView view;
        view.insertText("old");
        view.setString("\nHead...\r");
        view.insertText("\nx");
        view.insertText("\r");
        view.insertText("\ny\r\nz\r");
        QCOMPARE(view.string(), QStringLiteral("\nHead...\nx\ny\nz\n"));
    }

    void insertsAtTheCaretWithinTheScrollback()
    {
        ConsoleView view;
        view.resize(300, 200);
        view.show();
        view.setString("hello world");
        view.insertText("!");
        // Gathered first, then shown by its own timer.
        QVERIFY(view.hasPending());
        QTRY_COMPARE(view.toPlainText(), QStringLiteral("hello world!"));

        // Text goes where the user put the caret; a selection is not replaced.
        QTextCursor cursor = view.textCursor();
        cursor.setPosition(0);
        cursor.setPosition(5, QTextCursor::KeepAnchor);
        view.setTextCursor(cursor);
        view.insertText(",");
        view.insertText(" my");
        QCOMPARE(view.string(), QStringLiteral("hello, my world!"));

        // The oldest lines go, the caret's with them, and text goes to the end again.
        const int total = ConsoleView::ScrollbackLines + 25;
        view.insertText("\n" + numberedLines(0, total));
        view.insertText("tail");
        const QString text = view.string();
        QCOMPARE(view.document()->blockCount(), ConsoleView::ScrollbackLines);
        // 25 lines and the first one too many.
        QVERIFY(text.startsWith("line 26\n"));
        QVERIFY(text.endsWith(QStringLiteral("line %1\ntail").arg(total - 1)));

        // The view follows new text only while it is scrolled to the bottom.
        QScrollBar *bar = view.verticalScrollBar();
        QCOMPARE(bar->value(), bar->maximum());
        bar->setValue(10);
        view.insertText(numberedLines(0, 100));
        view.flushPending();
        QCOMPARE(bar->value(), 10);
    }
};

ZELMOR_TEST_MAIN(ConsoleViewTest)
#include "tst_console_view.moc"
