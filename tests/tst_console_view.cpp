#include "TestSupport.h"

#include "widgets/ConsoleView.h"

#include <QScrollBar>
#include <QTextCursor>

namespace {
QString numberedLines(int from, int to)
{
    QString text;
    for (int i = from; i < to; ++i)
        text += QStringLiteral("line %1\n").arg(i);
    return text;
}
} // namespace

class ConsoleViewTest : public QObject
{
    Q_OBJECT

private slots:
    void orderIsKept_data()
    {
        // Each step is "s:" (setString) or "i:" (insertText) and its text.
        TestSupport::columns<QStringList, QString>({"steps", "expected"});
        QTest::newRow("inserts append") << QStringList{"i:a", "i:b", "i:c"} << "abc";
        QTest::newRow("set discards the queue") << QStringList{"i:old", "s:\nHead...\n", "i:x"}
                                                << "\nHead...\nx";
        QTest::newRow("set twice") << QStringList{"s:one", "s:two", "i:!"} << "two!";
        QTest::newRow("carriage return starts a line")
            << QStringList{"i:10%\r", "i:20%\r", "i:done\n"} << "10%\n20%\ndone\n";
        QTest::newRow("CR LF is one break") << QStringList{"i:a\r\nb"} << "a\nb";
        QTest::newRow("CR LF cut between chunks") << QStringList{"i:a\r", "i:\nb"} << "a\nb";
        QTest::newRow("CR LF across a set and an insert") << QStringList{"s:x\r", "i:\ny"} << "x\ny";
        QTest::newRow("CR in set") << QStringList{"s:a\rb"} << "a\nb";
    }
    void orderIsKept()
    {
        QFETCH(QStringList, steps);
        ConsoleView view;
        for (const QString &step : steps) {
            if (step.startsWith("s:"))
                view.setString(step.mid(2));
            else
                view.insertText(step.mid(2));
        }
        QTEST(view.string(), "expected");
        QVERIFY(!view.hasPending());
    }

    void flushesByItself()
    {
        ConsoleView view;
        view.setString("head\n");
        view.insertText("tail");
        QVERIFY(view.hasPending());
        QTRY_COMPARE(view.toPlainText(), QStringLiteral("head\ntail"));
        QVERIFY(!view.hasPending());
    }

    void insertsAtTheInsertionPoint()
    {
        ConsoleView view;
        view.setString("hello world");
        view.insertText("!");
        QCOMPARE(view.string(), QStringLiteral("hello world!"));

        // The user moves the caret (and selects): text goes there and the
        // selection is not replaced.
        QTextCursor cursor = view.textCursor();
        cursor.setPosition(0);
        cursor.setPosition(5, QTextCursor::KeepAnchor);
        view.setTextCursor(cursor);
        view.insertText(",");
        view.insertText(" my");
        QCOMPARE(view.string(), QStringLiteral("hello, my world!"));
        QVERIFY(view.isReadOnly());

        // Once the caret's line is pushed out of the scrollback, text goes
        // to the end again.
        view.insertText("\n" + numberedLines(0, ConsoleView::ScrollbackLines));
        view.insertText("tail");
        const QString text = view.string();
        QVERIFY2(text.endsWith(QStringLiteral("line %1\ntail").arg(ConsoleView::ScrollbackLines - 1)), qPrintable(text.right(60)));
    }

    void scrollbackDropsOldestLines_data()
    {
        QTest::addColumn<int>("chunkLines");
        QTest::newRow("one huge insert (trimmed while queued)") << ConsoleView::ScrollbackLines + 25;
        QTest::newRow("many chunks (trimmed by the document)") << 7919;
    }
    void scrollbackDropsOldestLines()
    {
        QFETCH(int, chunkLines);
        const int total = ConsoleView::ScrollbackLines + 25;
        ConsoleView view;
        view.setString("first\n");
        for (int from = 0; from < total; from += chunkLines) {
            view.insertText(numberedLines(from, qMin(total, from + chunkLines)));
            view.flushPending();
        }
        // The last line is the empty one after the final line feed.
        QCOMPARE(view.document()->blockCount(), ConsoleView::ScrollbackLines);
        const QString text = view.string();
        QVERIFY(text.startsWith(QStringLiteral("line %1\n").arg(total - ConsoleView::ScrollbackLines + 1)));
        QVERIFY(text.endsWith(QStringLiteral("line %1\n").arg(total - 1)));
    }

    void followsTheTailOnlyFromTheBottom()
    {
        ConsoleView view;
        view.resize(300, 200);
        view.show();
        view.setString(numberedLines(0, 500));
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
        view.insertText(numberedLines(500, 600));
        view.flushPending();
        QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());

        view.verticalScrollBar()->setValue(10);
        view.insertText(numberedLines(600, 700));
        view.flushPending();
        QCOMPARE(view.verticalScrollBar()->value(), 10);
    }
};

ZELMOR_TEST_MAIN(ConsoleViewTest)
#include "tst_console_view.moc"
