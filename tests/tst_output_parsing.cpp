#include "TestSupport.h"

#include "workflow/OutputParsing.h"
#include "workflow/TextFormat.h"

using namespace OutputParsing;

using Numbers = QList<qint32>;

class OutputParsingTest : public QObject
{
    Q_OBJECT

private slots:
    void numberHunter_data()
    {
        TestSupport::columns<QString, Numbers>({"text", "numbers"});
        QTest::newRow("empty") << "" << Numbers{};
        QTest::newRow("no digits") << "Cloning into 'emu'...\n" << Numbers{};
        QTest::newRow("decimals split") << "1.23 MiB | 456.00 KiB/s" << Numbers{1, 23, 456, 0};
        QTest::newRow("receiving")
            << "Receiving objects:  45% (1234/2742), 1.23 MiB | 456.00 KiB/s"
            << Numbers{45, 1234, 2742, 1, 23, 456, 0};
        QTest::newRow("leading zeros") << "x007y" << Numbers{7};
        QTest::newRow("digits at both ends") << "12ab34" << Numbers{12, 34};
        QTest::newRow("sign is not part") << "-5" << Numbers{5};
        QTest::newRow("too large saturates") << "99999999999999 1" << Numbers{2147483647, 1};
        QTest::newRow("int max exactly") << "2147483647" << Numbers{2147483647};
        QTest::newRow("non-ASCII digits ignored") << QString::fromUtf8("\u0663\u0664 9") << Numbers{9};
    }
    void numberHunter()
    {
        QFETCH(QString, text);
        QTEST(OutputParsing::numberHunter(text), "numbers");
    }

    void makeProgress_data()
    {
        TestSupport::columns<QString, int>({"text", "value"}); // -1: the bar keeps its value
        QTest::newRow("[100%]") << "[100%] Linking C executable ZELMORSDL\n" << 100;
        QTest::newRow("[ 45%]") << "[ 45%] Building C object main.c.o\n" << 45;
        QTest::newRow("[  5%]") << "[  5%] Building C object a.c.o\n" << 5;
        QTest::newRow("[ 12%] building line") << "[ 12%] Building CXX object ..." << 12;
        QTest::newRow("[  0%] reads as none") << "[  0%] Built target x\n" << -1;
        QTest::newRow("no prefix") << "Scanning dependencies of target ZELMORSDL\n" << -1;
        QTest::newRow("too few pieces") << "[9%]" << -1;
        QTest::newRow("prefix on second line only")
            << "Scanning dependencies of target x\n[ 50%] Building\n" << -1;
        QTest::newRow("make[2] prefix reads its digit") << "make[2]: Leaving directory '/b'\n" << 2;
        QTest::newRow("empty") << "" << -1;
    }
    void makeProgress()
    {
        QFETCH(QString, text);
        QTEST(makeProgressValue(text).value_or(-1), "value");
    }

    void cloneDecision_data()
    {
        TestSupport::columns<QString, int, int, int, int, QString>(
            {"text", "outcome", "percentage", "value", "maximum", "label"});
        const QString idle = IdleSpeedLabel.toString();
        const QString receiving =
            "Receiving objects:  45% (1234/2742), 1.23 MiB | 456.00 KiB/s   \r";
        QTest::newRow("k=7 receiving line")
            << receiving << int(CloneProgress::Progress) << 45 << 1234 << 2742 << "456.00 KiB/s";
        QTest::newRow("k=3 resolving deltas")
            << "Resolving deltas:  45% (1234/2742)   \r" << int(CloneProgress::Progress) << 45
            << 1234 << 2742 << idle;
        QTest::newRow("k=14 two updates in one chunk")
            << receiving + "Receiving objects:  46% (1262/2742), 1.30 MiB | 512.00 KiB/s   \r"
            << int(CloneProgress::Progress) << 45 << 1234 << 2742 << "512.00 KiB/s";
        QTest::newRow("k=6 same maximum")
            << "Counting objects: 50% (1/2) Counting objects: 100% (2/2)\r"
            << int(CloneProgress::Progress) << 50 << 1 << 2 << idle;
        QTest::newRow("k=6 other maximum")
            << "Counting objects: 50% (1/2) Compressing objects: 10% (1/10)\r"
            << int(CloneProgress::Progress) << 50 << 1 << 2 << "(1/2) Compressing";
        QTest::newRow("k=21 taken as a multiple of 3")
            << receiving + receiving + receiving << int(CloneProgress::Progress) << 45 << 1234
            << 2742 << "456.00 KiB/s";
        QTest::newRow("k=4 resets") << "remote: Total 3 (delta 0), reused 0 (delta 0)\n"
                                    << int(CloneProgress::Progress) << 0 << 0 << 0 << idle;
        QTest::newRow("short cloning chunk") << "Cloning into 'x'...\n"
                                             << int(CloneProgress::TooFewPieces) << 0 << 0 << 0
                                             << QString();
        QTest::newRow("four pieces") << "a b c d" << int(CloneProgress::TooFewPieces) << 0 << 0
                                     << 0 << QString();
        QTest::newRow("no digits") << "warning: remote HEAD refers to nonexistent ref\n"
                                   << int(CloneProgress::NoNumbers) << 0 << 0 << 0 << QString();
    }
    void cloneDecision()
    {
        QFETCH(QString, text);
        const CloneProgress progress = cloneProgress(text);
        QTEST(int(progress.outcome), "outcome");
        if (progress.outcome != CloneProgress::Progress)
            return;
        QTEST(progress.percentage, "percentage");
        QTEST(progress.value, "value");
        QTEST(progress.maximum, "maximum");
        QTEST(progress.label, "label");
    }

    void formatting_data()
    {
        TestSupport::columns<QString, QStringList, QString>({"format", "arguments", "expected"});
        QTest::newRow("failure line")
            << "%@\n%@: %@%@%@"
            << QStringList{"Failure.", "Error", "/w", " or .git in it not found!", "Hint."}
            << "Failure.\nError: /w or .git in it not found!Hint.";
        QTest::newRow("count down") << "Count down %d secs" << QStringList{"7"} << "Count down 7 secs";
        QTest::newRow("argument not rescanned") << "%@ %@" << QStringList{"%@", "%1"} << "%@ %1";
        QTest::newRow("percent sign") << "100%% %@" << QStringList{"done"} << "100% done";
        QTest::newRow("missing argument") << "%@/.git" << QStringList{} << "(null)/.git";
        QTest::newRow("other escapes stay") << "50%s %" << QStringList{} << "50%s %";
    }
    void formatting()
    {
        QFETCH(QString, format);
        QFETCH(QStringList, arguments);
        QTEST(formatText(format, arguments), "expected");
    }
};

ZELMOR_TEST_MAIN(OutputParsingTest)
#include "tst_output_parsing.moc"
