#include "TestSupport.h"

#include "widgets/ConsoleView.h"
#include "widgets/TerminalText.h"

#include <QTextBlock>

// What raw tool output leaves on the console: the terminal's line discipline
// on its own, and the console fed with it.
class TerminalTextTest : public QObject
{
    Q_OBJECT

private slots:
    void lineDiscipline_data()
    {
        QTest::addColumn<QStringList>("chunks");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain lines") << QStringList{"a\nb\n", "c"} << "a\nb\nc";
        QTest::newRow("CR overwrites") << QStringList{"10%\r20%\r100%, done.\n"} << "100%, done.\n";
        QTest::newRow("CR keeps the longer rest") << QStringList{"abcdef\rXY\n"} << "XYcdef\n";
        QTest::newRow("git phases") << QStringList{"Counting:  50% (1/2)\rCounting: 100% (2/2)\r",
                                                   "Counting: 100% (2/2), done.\nReceiving:  50% (1/2)\r"}
                                    << "Counting: 100% (2/2), done.\nReceiving:  50% (1/2)";
        QTest::newRow("CR LF is a line end") << QStringList{"a\r\nb\r\n"} << "a\nb\n";
        QTest::newRow("CR LF split") << QStringList{"a\r", "\nb"} << "a\nb";
        QTest::newRow("CR then new text") << QStringList{"old\r", "new line\n"} << "new line\n";
        QTest::newRow("backspace erases") << QStringList{"abc\b\bX\n"} << "aX\n";
        QTest::newRow("backspace at the end") << QStringList{"ab\b", "\n"} << "a\n";
        QTest::newRow("backspace at line start") << QStringList{"\bab"} << "ab";
        QTest::newRow("SGR dropped from text") << QStringList{"\x1b[1;31merror\x1b[0m: x\n"} << "error: x\n";
        QTest::newRow("SGR split") << QStringList{"a\x1b", "[3", "2mb\x1b[", "0m"} << "ab";
        QTest::newRow("erase rest of line") << QStringList{"long text\rab\x1b[K\n"} << "ab\n";
        QTest::newRow("cursor moves consumed") << QStringList{"a\x1b[2A\x1b[?25l\x1b[10;20Hb"} << "ab";
        QTest::newRow("OSC title, BEL") << QStringList{"\x1b]0;title\x07x"} << "x";
        QTest::newRow("OSC split, ST") << QStringList{"\x1b]8;;http://x", "\x1b", "\\link"} << "link";
        QTest::newRow("charset selection") << QStringList{"\x1b(Bx\x1b)0y"} << "xy";
        QTest::newRow("two-character escapes") << QStringList{"\x1b" "7a\x1b" "8b\x1b=c"} << "abc";
        QTest::newRow("controls dropped") << QStringList{"a\x07\x0e" "b\x7f"} << "ab";
        QTest::newRow("tab kept") << QStringList{"a\tb"} << "a\tb";
        QTest::newRow("unfinished CSI then text") << QStringList{"\x1b[31", "x"} << "";
        QTest::newRow("escape cut by a line end") << QStringList{"\x1b[3\n4m5"} << "\n5";
        QTest::newRow("non-ASCII ends a sequence") << QStringList{QString("\x1b[3") + QChar(0xe9)}
                                                   << QString(QChar(0xe9));
        QTest::newRow("long line wraps")
            << QStringList{QString(TerminalText::MaxLineLength + 3, 'x')}
            << QString(TerminalText::MaxLineLength, 'x') + "\nxxx";
    }
    void lineDiscipline()
    {
        QFETCH(QStringList, chunks);
        QTEST(terminalPlainText(chunks), "expected");
        // Whatever the cut, the same text: chunk boundaries do not matter.
        const QString whole = chunks.join(QString());
        QStringList single;
        for (QChar c : whole)
            single.append(QString(c));
        QTEST(terminalPlainText(single), "expected");
    }

    void colours_data()
    {
        using T = TerminalText;
        QTest::addColumn<QString>("input");
        QTest::addColumn<QList<quint64>>("styles"); // per character of the finished text
        const quint64 red = T::withForeground(0, T::PaletteColour | 1);
        QTest::newRow("red then reset") << "\x1b[31mab\x1b[0mc\n" << QList<quint64>{red, red, 0, 0};
        QTest::newRow("bold bright, 22") << "\x1b[1;92ma\x1b[22mb\x1b[39mc\n"
                                         << QList<quint64>{T::withForeground(T::Bold, T::PaletteColour | 10),
                                                           T::withForeground(0, T::PaletteColour | 10), 0, 0};
        QTest::newRow("256 and true colour") << "\x1b[38;5;208ma\x1b[38;2;1;2;3mb\x1b[48:5:4mc\x1b[m\n"
                                             << QList<quint64>{T::withForeground(0, T::PaletteColour | 208),
                                                               T::withForeground(0, T::TrueColour | 0x010203),
                                                               T::withBackground(T::withForeground(0, T::TrueColour | 0x010203),
                                                                                 T::PaletteColour | 4),
                                                               0};
        QTest::newRow("overwritten keeps new style") << "\x1b[31mab\r\x1b[0mx\n"
                                                     << QList<quint64>{0, red, 0};
    }
    void colours()
    {
        QFETCH(QString, input);
        QFETCH(QList<quint64>, styles);
        TerminalText terminal;
        terminal.write(input);
        const TerminalText::Finished finished = terminal.takeFinished();
        QList<quint64> perCharacter;
        for (const TerminalText::Run &run : finished.runs)
            perCharacter.append(QList<quint64>(run.length, run.style));
        QCOMPARE(perCharacter, styles);
    }

    // The console shows raw output through the discipline and draws the
    // line being written in place; its own messages follow that line.
    void consoleShowsToolOutputInPlace()
    {
        ConsoleView view;
        view.setString("\nHead...\n");
        view.insertToolOutput("Receiving:  10%\r");
        QCOMPARE(view.string(), QStringLiteral("\nHead...\nReceiving:  10%"));
        view.insertToolOutput("Receiving:  20%\r\x1b[32mReceiving: 100%, done.\x1b[m\nResolving: 1");
        view.insertToolOutput("0%\r");
        QCOMPARE(view.string(), QStringLiteral("\nHead...\nReceiving: 100%, done.\nResolving: 10%"));
        view.insertText("\nDone.\n");
        view.insertToolOutput("\rnext");
        QCOMPARE(view.string(),
                 QStringLiteral("\nHead...\nReceiving: 100%, done.\nResolving: 10%\nDone.\nnext"));
        // The finished line keeps its colour.
        QTextCursor green(view.document()->findBlockByNumber(2));
        green.movePosition(QTextCursor::NextCharacter);
        QCOMPARE(green.charFormat().foreground().style(), Qt::SolidPattern);
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
        // The console keeps the most recent lines the scrollback holds, each
        // as wide as the terminal.
        const int lines = view.document()->blockCount();
        QVERIFY(qsizetype(lines + 1) * (TerminalText::MaxLineLength + 1) > ConsoleView::ScrollbackCharacters);
        const QString line(TerminalText::MaxLineLength, 'y');
        QCOMPARE(view.string(), QString(line + '\n').repeated(lines - 1) + line);
    }
};

ZELMOR_TEST_MAIN(TerminalTextTest)
#include "tst_terminal_text.moc"
