#include "TestSupport.h"

#include "widgets/ConsoleView.h"
#include "widgets/PendingText.h"

#include <QRandomGenerator>

namespace {

using Run = TerminalText::Run;
using Styles = QList<TerminalText::Style>;

// A style per character: what the text looks like, whatever the runs'
// boundaries.
Styles perCharacter(const QString &text, const QList<Run> &runs)
{
    if (runs.isEmpty())
        return Styles(text.size(), 0);
    Styles styles;
    for (const Run &run : runs)
        styles.append(Styles(run.length, run.style));
    return styles;
}

// A queue as the console keeps one.
PendingText consoleQueue()
{
    return PendingText(ConsoleView::ScrollbackLines, ConsoleView::ScrollbackCharacters);
}

struct Taken
{
    QString text;
    Styles styles;
    QList<qsizetype> sliceLengths;
};

Taken takeAll(PendingText &queue, qsizetype sliceLength)
{
    Taken taken;
    while (!queue.isEmpty()) {
        const PendingText::Slice slice = queue.take(sliceLength);
        taken.text += slice.text;
        taken.styles += perCharacter(slice.text, slice.runs);
        taken.sliceLengths.append(slice.text.size());
    }
    return taken;
}

// Lines of the given length, line feed included, numbered so that a test
// sees which were kept.
QStringList lineList(int count, int length)
{
    QStringList list;
    for (int i = 0; i < count; ++i) {
        const QString number = QString::number(i);
        list.append(number + QString(length - 1 - number.size(), u'.') + u'\n');
    }
    return list;
}

QString lines(int count, int length)
{
    return lineList(count, length).join(QString());
}

} // namespace

Q_DECLARE_METATYPE(QList<Run>)

class PendingTextTest : public QObject
{
    Q_OBJECT

private slots:
    // What goes in comes out in order, each character in its style, in
    // slices no longer than asked that end after a line feed when one falls
    // in them.
    void takesTextInOrderWithItsStyles_data()
    {
        TestSupport::columns<QStringList, QList<QList<Run>>, qsizetype, QList<qsizetype>>(
            {"appended", "runs", "sliceLength", "sliceLengths"});
        const QList<Run> none;
        QTest::newRow("plain, one slice") << QStringList{"ab\n", "cd"} << QList<QList<Run>>{none, none}
                                          << qsizetype(10) << QList<qsizetype>{5};
        QTest::newRow("slices end after a line feed")
            << QStringList{"ab\ncd\nef"} << QList<QList<Run>>{none} << qsizetype(5)
            << QList<qsizetype>{3, 5};
        QTest::newRow("a line longer than a slice is cut")
            << QStringList{"abcdefg\nh"} << QList<QList<Run>>{none} << qsizetype(3)
            << QList<qsizetype>{3, 3, 3};
        QTest::newRow("styled after plain")
            << QStringList{"ab\n", "cd\n"} << QList<QList<Run>>{none, {{1, 7}, {2, 0}}}
            << qsizetype(4) << QList<qsizetype>{3, 3};
        QTest::newRow("plain after styled, slice inside a run")
            << QStringList{"abcd", "ef\n", "g"} << QList<QList<Run>>{{{4, 5}}, none, {{1, 9}}}
            << qsizetype(3) << QList<qsizetype>{3, 3, 2};
    }
    void takesTextInOrderWithItsStyles()
    {
        QFETCH(QStringList, appended);
        QFETCH(QList<QList<Run>>, runs);
        QFETCH(qsizetype, sliceLength);
        PendingText queue = consoleQueue();
        QString text;
        Styles styles;
        for (qsizetype i = 0; i < appended.size(); ++i) {
            queue.append(appended[i], runs[i]);
            text += appended[i];
            styles += perCharacter(appended[i], runs[i]);
        }
        QCOMPARE(queue.text().toString(), text);
        QCOMPARE(queue.lineCount(), text.count(u'\n'));
        QCOMPARE(queue.isStyled(), styles.count(0) != styles.size());
        const Taken taken = takeAll(queue, sliceLength);
        QCOMPARE(taken.text, text);
        QCOMPARE(taken.styles, styles);
        QTEST(taken.sliceLengths, "sliceLengths");
        QCOMPARE(queue.lineCount(), 0);
        QVERIFY(!queue.isStyled());
    }

    // Skipped text is gone and the styles of the rest stay with it.
    void skipKeepsTheRestsStyles()
    {
        PendingText queue = consoleQueue();
        queue.append(u"abc", {{1, 1}, {2, 2}});
        queue.append(u"de\n");
        queue.skip(2);
        QCOMPARE(queue.text().toString(), "cde\n");
        QCOMPARE(queue.lineCount(), 1);
        const Taken taken = takeAll(queue, 100);
        QCOMPARE(taken.styles, (Styles{2, 0, 0, 0}));
        queue.append(u"x\n");
        queue.skip(100);
        QVERIFY(queue.isEmpty());
        queue.append(u"y", {{1, 3}});
        queue.clear();
        QVERIFY(queue.isEmpty());
        QVERIFY(!queue.isStyled());
    }

    // The queue keeps what the console's scrollback would show of it: the
    // last 10,000 lines and at most 524,288 characters, from a line start,
    // or only the last line when that alone is longer.
    void keepsWhatTheScrollbackShows_data()
    {
        TestSupport::columns<QStringList, QString>({"appended", "kept"});
        const QString full = lines(10000, 8);
        QTest::newRow("10,000 lines and an unfinished one")
            << QStringList{full, "tail"} << full + "tail";
        QTest::newRow("10,001 lines") << QStringList{"first\n", full} << full;
        QTest::newRow("10,001 lines, one by one")
            << QStringList{"first\n"} + lineList(10000, 8) << full;
        const QString wide = lines(4096, 128); // 524,288 characters
        QTest::newRow("524,288 characters") << QStringList{wide} << wide;
        QTest::newRow("524,289 characters") << QStringList{"\n", wide} << wide;
        QTest::newRow("524,289 characters, the last line unfinished")
            << QStringList{wide, "x"} << wide.mid(128) + "x";
        const QString huge(600000, u'y');
        QTest::newRow("a line longer than 524,288 characters")
            << QStringList{"a\nb\n", huge.left(1000), huge.mid(1000)} << huge;
        QTest::newRow("both limits") << QStringList{"first\n", full, wide} << wide;
    }
    void keepsWhatTheScrollbackShows()
    {
        QFETCH(QStringList, appended);
        PendingText queue = consoleQueue();
        for (const QString &text : appended)
            queue.append(text);
        QTEST(queue.text().toString(), "kept");
        QCOMPARE(queue.lineCount(), queue.text().count(u'\n'));
    }

    // Random appends, styled or not, with random takes in between: what is
    // taken and what is left are always the end of all that was appended,
    // in its styles, and a line is dropped only when keeping it would break
    // a limit. Small limits make the trimming frequent; ZELMOR_TEST_SEED
    // repeats a run.
    void randomFloodKeepsTheEndOfItsText()
    {
        QRandomGenerator random(TestSupport::randomSeed());
        constexpr qsizetype MaxLines = 20, MaxCharacters = 200;
        PendingText queue(MaxLines, MaxCharacters);
        QString all;         // everything appended
        Styles allStyles;
        qsizetype takenUpTo = 0; // where, in all, the queue's text must start at the earliest
        for (int step = 0; step < 5000; ++step) {
            if (random.bounded(3) == 0) {
                const PendingText::Slice slice = queue.take(random.bounded(1, 40));
                const qsizetype at = all.size() - queue.text().size() - slice.text.size();
                QVERIFY2(at >= takenUpTo, qPrintable(QString::number(step)));
                QCOMPARE(all.mid(at, slice.text.size()), slice.text);
                QCOMPARE(perCharacter(slice.text, slice.runs), allStyles.mid(at, slice.text.size()));
                takenUpTo = at + slice.text.size();
                continue;
            }
            QString text;
            for (qsizetype n = random.bounded(1, 60); n > 0; --n)
                text += random.bounded(8) == 0 ? u'\n' : QChar(u'a' + random.bounded(26));
            QList<Run> runs;
            if (random.bounded(2) == 0) {
                for (qsizetype at = 0; at < text.size();) {
                    const qsizetype length = std::min<qsizetype>(random.bounded(1, 10), text.size() - at);
                    runs.append({length, TerminalText::Style(random.bounded(3))});
                    at += length;
                }
            }
            queue.append(text, runs);
            all += text;
            allStyles += perCharacter(text, runs);

            const QStringView kept = queue.text();
            const qsizetype start = all.size() - kept.size();
            QVERIFY(start >= takenUpTo);
            QCOMPARE(all.mid(start), kept.toString());
            QCOMPARE(queue.lineCount(), kept.count(u'\n'));
            if (start > takenUpTo) {
                // Trimmed: it starts a line, and the line before would not fit.
                QCOMPARE(all.at(start - 1), u'\n');
                const qsizetype previous = all.lastIndexOf(u'\n', start - 2) + 1;
                const QStringView longer = QStringView(all).mid(std::max(previous, takenUpTo));
                QVERIFY(longer.count(u'\n') > MaxLines || longer.size() > MaxCharacters);
            }
            QVERIFY(kept.count(u'\n') <= MaxLines);
            QVERIFY(kept.size() <= MaxCharacters || !kept.contains(u'\n'));
            takenUpTo = std::max(takenUpTo, start);
        }
        const qsizetype at = all.size() - queue.text().size();
        QCOMPARE(takeAll(queue, 50).styles, allStyles.mid(at));
    }
};

ZELMOR_TEST_MAIN(PendingTextTest)
#include "tst_pending_text.moc"
