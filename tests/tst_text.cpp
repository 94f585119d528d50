#include "TestSupport.h"

#include "text/TextNumbers.h"
#include "text/TextPieces.h"

#include <limits>

// Text cut at separators and numbers read out of text: what the output
// parsers, the submodule list, the settings and the console's escape
// sequences all build on, so a fault here shows in every one of them.

using TestSupport::columns;

class TextTest : public QObject
{
    Q_OBJECT

private slots:
    // -1: no limit on the number of cuts.
    void splitAtAny_data()
    {
        columns<QString, QString, int, QStringList>({"text", "separators", "maxSplits", "pieces"});
        QTest::newRow("empty text") << "" << " " << -1 << QStringList{""};
        QTest::newRow("no separator") << "abc" << " " << -1 << QStringList{"abc"};
        QTest::newRow("neighbours give empty pieces")
            << "a  b" << " " << -1 << QStringList{"a", "", "b"};
        QTest::newRow("trailing separator") << "a b\n" << " \n" << -1 << QStringList{"a", "b", ""};
        QTest::newRow("only separators") << "[]" << "[]" << -1 << QStringList{"", "", ""};
        QTest::newRow("any of several") << "[ 45%] x" << " %[]" << -1
                                        << QStringList{"", "", "45", "", "", "x"};
        QTest::newRow("other white space stays") << "a\tb\r\nc" << " \n" << -1
                                                 << QStringList{"a\tb\r", "c"};
        QTest::newRow("no cut allowed") << "a b c" << " " << 0 << QStringList{"a b c"};
        QTest::newRow("the rest is the last piece")
            << "[ 45%] Building CXX object" << " %[]" << 4
            << QStringList{"", "", "45", "", " Building CXX object"};
        QTest::newRow("fewer separators than allowed") << "a|b" << "|" << 4
                                                       << QStringList{"a", "b"};
    }
    void splitAtAny()
    {
        QFETCH(QString, text);
        QFETCH(QString, separators);
        QFETCH(int, maxSplits);
        QStringList pieces;
        for (QStringView piece : TextPieces::splitAtAny(text, separators, maxSplits))
            pieces.append(piece.toString());
        QTEST(pieces, "pieces");
    }

    void leadingDigits_data()
    {
        columns<QString, qint64, qint64, qsizetype>({"text", "ceiling", "value", "length"});
        const qint64 int32Max = std::numeric_limits<qint32>::max();
        QTest::newRow("no digits") << "x1" << int32Max << qint64(0) << qsizetype(0);
        QTest::newRow("empty") << "" << int32Max << qint64(0) << qsizetype(0);
        QTest::newRow("stops at a non-digit") << "007;5" << int32Max << qint64(7) << qsizetype(3);
        QTest::newRow("largest 32-bit") << "2147483647" << int32Max << int32Max << qsizetype(10);
        QTest::newRow("saturates, length to the end")
            << "99999999999999999999999x" << int32Max << int32Max << qsizetype(23);
        QTest::newRow("own ceiling") << "2000000" << qint64(1000000) << qint64(1000000)
                                     << qsizetype(7);
        QTest::newRow("non-ASCII digits are not digits")
            << QString::fromUtf8("\u0663") << int32Max << qint64(0) << qsizetype(0);
        QTest::newRow("no sign, no blanks") << " 5" << int32Max << qint64(0) << qsizetype(0);
    }
    void leadingDigits()
    {
        QFETCH(QString, text);
        QFETCH(qint64, ceiling);
        const TextNumbers::DigitRun run = TextNumbers::leadingDigits(text, ceiling);
        QTEST(run.value, "value");
        QTEST(run.length, "length");
    }

    void integerValue_data()
    {
        columns<QString, qint32>({"text", "value"});
        QTest::newRow("digits") << "42" << 42;
        QTest::newRow("blanks, sign, text") << "  \t-42abc" << -42;
        QTest::newRow("line ends and plus") << "\n\r +7" << 7;
        QTest::newRow("no digits") << "abc" << 0;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("sign alone") << "-" << 0;
        QTest::newRow("blank after the sign") << "- 5" << 0;
        QTest::newRow("two signs") << "+-5" << 0;
        QTest::newRow("decimal point ends it") << "3.9" << 3;
        QTest::newRow("exponent ends it") << "1e5" << 1;
        QTest::newRow("largest") << "2147483647" << std::numeric_limits<qint32>::max();
        QTest::newRow("one too large") << "2147483648" << std::numeric_limits<qint32>::max();
        QTest::newRow("smallest") << "-2147483648" << std::numeric_limits<qint32>::min();
        QTest::newRow("too small") << "-99999999999" << std::numeric_limits<qint32>::min();
        QTest::newRow("minus zero") << "-0" << 0;
    }
    void integerValue()
    {
        QFETCH(QString, text);
        QTEST(TextNumbers::integerValue(text), "value");
    }
};

ZELMOR_TEST_MAIN(TextTest)
#include "tst_text.moc"
