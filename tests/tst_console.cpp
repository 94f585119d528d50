#include "TestSupport.h"

#include "widgets/ConsoleView.h"
#include "widgets/Contrast.h"
#include "widgets/TerminalText.h"

#include <QScrollBar>
#include <QTextBlock>

using TestSupport::columns;

static QString numberedLines(int from, int to)
{
    QString text;
    for (int i = from; i < to; ++i)
        text += QStringLiteral("line %1\n").arg(i);
    return text;
}

// The console: the terminal's line discipline on its own, and the view fed
// with raw tool output and with the application's own messages.
class ConsoleTest : public QObject
{
    Q_OBJECT

private slots:
    void lineDiscipline_data()
    {
        TestSupport::columns<QString, QString>({"output", "expected"});
        QTest::newRow("CR keeps the longer rest") << "abcdef\rXY\n" << "XYcdef\n";
        QTest::newRow("git phases") << "Counting:  50% (1/2)\rCounting: 100% (2/2)\r"
                                       "Counting: 100% (2/2), done.\nReceiving:  50% (1/2)\r"
                                    << "Counting: 100% (2/2), done.\nReceiving:  50% (1/2)";
        QTest::newRow("CR LF is a line end") << "a\r\nb\r\n" << "a\nb\n";
        QTest::newRow("backspace") << "\babc\b\bX\n" << "aX\n";
        QTest::newRow("erase line end, other CSI") << "long text\rab\x1b[K\x1b[2A\x1b[?25lc\n"
                                                   << "abc\n";
        QTest::newRow("OSC ends with BEL or ST") << "\x1b]0;t\x07x\x1b]8;;u\x1b\\y" << "xy";
        QTest::newRow("charset, two-character escapes") << "\x1b(Bx\x1b" "7y\x1b=z" << "xyz";
        QTest::newRow("controls dropped, tab kept") << "a\x07\x0e" "\tb\x7f" << "a\tb";
        QTest::newRow("a line end or non-ASCII cuts a sequence")
            << QString("\x1b[3\n4m5\x1b[3") + QChar(0xe9) << QString("\n5") + QChar(0xe9);
    }
    void lineDiscipline()
    {
        QFETCH(QString, output);
        QTEST(terminalPlainText({output}), "expected");
        // Cut anywhere, the same text: chunk boundaries do not matter.
        QTEST(terminalPlainText(output.split(QString(), Qt::SkipEmptyParts)), "expected");
    }

    // Overwritten text takes the new style; 22 ends bold, 39 the colour.
    void colours()
    {
        using T = TerminalText;
        const quint64 red = T::withForeground(0, T::PaletteColour | 1);
        const quint64 bright = T::withForeground(0, T::PaletteColour | 10);
        const quint64 rgb = T::withForeground(0, T::TrueColour | 0x010203);
        TerminalText terminal;
        terminal.write(QString("\x1b[31mab\r\x1b[0mx\n\x1b[1;92mc\x1b[22md\x1b[39me"
                               "\x1b[38;5;208mf\x1b[38;2;1;2;3mg\x1b[48:5:4mh\x1b[m\n"));
        QList<quint64> perCharacter;
        for (const TerminalText::Run &run : terminal.takeFinished().runs)
            perCharacter.append(QList<quint64>(run.length, run.style));
        const QList<quint64> expected{0, red, 0, T::withForeground(T::Bold, T::PaletteColour | 10),
                                      bright, 0, T::withForeground(0, T::PaletteColour | 208), rgb,
                                      T::withBackground(rgb, T::PaletteColour | 4), 0};
        QCOMPARE(perCharacter, expected);
    }

    // The console shows raw output through the discipline and draws the
    // line being written in place; its own messages follow that line. In
    // those, a carriage return starts a line and "\r\n" is one break, even
    // when cut between two texts; a new text replaces what is still queued.
    void consoleShowsToolOutputInPlace()
    {
        ConsoleView view;
        view.insertText("old");
        view.setString("\nHead...\r");
        view.insertText("\n");
        view.insertToolOutput("Receiving:  10%\r");
        view.insertToolOutput("Receiving:  20%\r\x1b[32mReceiving: 100%, done.\x1b[m\n"
                              "Resolving: 1");
        view.insertToolOutput("0%\r");
        const QString shown = "\nHead...\nReceiving: 100%, done.\nResolving: 10%";
        QCOMPARE(view.string(), shown);
        view.insertText("\nx");
        view.insertText("\r");
        view.insertText("\ny\r\nDone.\r");
        view.insertToolOutput("\rnext");
        QCOMPARE(view.string(), shown + "\nx\ny\nDone.\nnext");
        // The finished line keeps its colour.
        QTextCursor green(view.document()->findBlockByNumber(2));
        green.movePosition(QTextCursor::NextCharacter);
        QCOMPARE(green.charFormat().foreground().style(), Qt::SolidPattern);
    }

    // A tool's colour keeps its hue but is shaded until it reads well on
    // what it is shown on: the console's base in a light or a dark
    // appearance, or a background the tool asked for. -1: no hue to keep.
    void toolColoursAreReadable_data()
    {
        columns<QRgb, QString, int>({"base", "output", "hue"});
        QTest::newRow("yellow on white") << 0xffffffu << "\x1b[33mY" << 60;
        QTest::newRow("blue on black") << 0x000000u << "\x1b[34mB" << 240;
        QTest::newRow("red on dark grey") << 0x1e1e1eu << "\x1b[31mR" << 0;
        QTest::newRow("white on light grey") << 0xe0e0e0u << "\x1b[97mW" << -1;
        QTest::newRow("white on mid grey") << 0x808080u << "\x1b[97mW" << -1;
        QTest::newRow("grey on a green the tool chose") << 0xffffffu << "\x1b[37;42mG" << -1;
        QTest::newRow("inverse on black") << 0x000000u << "\x1b[7;34mI" << -1;
    }
    void toolColoursAreReadable()
    {
        QFETCH(QRgb, base);
        QFETCH(QString, output);
        QFETCH(int, hue);
        ConsoleView view;
        QPalette palette = view.palette();
        palette.setColor(QPalette::Base, QColor(base));
        palette.setColor(QPalette::Text, qGray(base) < 128 ? Qt::white : Qt::black);
        view.setPalette(palette);
        view.insertToolOutput(output);
        QTRY_VERIFY(!view.hasPending());
        QTextCursor cursor(view.document());
        cursor.movePosition(QTextCursor::End);
        const QTextCharFormat format = cursor.charFormat();
        const QColor background = format.hasProperty(QTextFormat::BackgroundBrush)
                                      ? format.background().color()
                                      : QColor(base);
        const QColor shown = format.foreground().color();
        QVERIFY2(Contrast::ratio(shown, background) >= Contrast::MinimumTextRatio,
                 qPrintable(shown.name() + " on " + background.name()));
        if (hue >= 0) {
            const int distance = qAbs(shown.hslHue() - hue) % 360;
            QVERIFY2(qMin(distance, 360 - distance) <= 6, qPrintable(shown.name()));
        }
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

    void twoMegabyteLineIsAbsorbed()
    {
        ConsoleView view;
        view.resize(600, 400);
        view.show();
        const QString chunk(64 * 1024, 'y');
        for (int i = 0; i < 32; ++i)
            view.insertToolOutput(chunk);
        // Far more than the absorbing needs; the speed is the benchmark's.
        QTRY_VERIFY_WITH_TIMEOUT(!view.hasPending(), 60000);
        // The most recent lines the scrollback holds, each as wide as the terminal.
        const int lines = view.document()->blockCount();
        QVERIFY(qsizetype(lines + 1) * (TerminalText::MaxLineLength + 1)
                > ConsoleView::ScrollbackCharacters);
        const QString line(TerminalText::MaxLineLength, 'y');
        QCOMPARE(view.string(), QString(line + '\n').repeated(lines - 1) + line);

        // A colour change at every character costs far more a character than
        // the plain text the slices were sized by; they end by the clock
        // instead, and each character keeps its colour.
        view.insertToolOutput(QString("\x1b[31ma\x1b[32mb").repeated(50000) + "\x1b[m");
        QTRY_VERIFY_WITH_TIMEOUT(!view.hasPending(), 60000);
        const qsizetype lastLine = 100000 % TerminalText::MaxLineLength;
        QVERIFY(view.string().endsWith('\n' + QString("ab").repeated(lastLine / 2)));
        QTextCursor cursor(view.document());
        cursor.movePosition(QTextCursor::End);
        const QColor green = cursor.charFormat().foreground().color();
        cursor.movePosition(QTextCursor::PreviousCharacter);
        const QColor red = cursor.charFormat().foreground().color();
        QVERIFY(green != view.palette().color(QPalette::Text) && red != green);
    }
};

ZELMOR_TEST_MAIN(ConsoleTest)
#include "tst_console.moc"
