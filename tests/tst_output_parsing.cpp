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
        QTest::addColumn<QString>("text");
        QTest::addColumn<Numbers>("numbers");
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
        QFETCH(Numbers, numbers);
        QCOMPARE(OutputParsing::numberHunter(text), numbers);
    }

    void splitting_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("separators");
        QTest::addColumn<QStringList>("pieces");
        const QString make = MakeSeparators.toString();
        const QString git = GitSeparators.toString();
        QTest::newRow("make 100") << "[100%] Linking" << make
                                  << QStringList{"", "100", "", "", "Linking"};
        QTest::newRow("make 45") << "[ 45%] Building" << make
                                 << QStringList{"", "", "45", "", "", "Building"};
        QTest::newRow("make 5") << "[  5%] Building" << make
                                << QStringList{"", "", "", "5", "", "", "Building"};
        QTest::newRow("git speed") << "1.23 MiB | 456.00 KiB/s   \r" << git
                                   << QStringList{"1.23", "MiB", "", "", "456.00", "KiB/s", "", "", "\r"};
        QTest::newRow("cloning line") << "Cloning into 'x'...\n" << git
                                      << QStringList{"Cloning", "into", "'x'...\n"};
        QTest::newRow("empty text") << "" << git << QStringList{""};
        QTest::newRow("only separators") << "||" << git << QStringList{"", "", ""};
        QTest::newRow("tabs stay") << "a\tb c" << git << QStringList{"a\tb", "c"};
    }
    void splitting()
    {
        QFETCH(QString, text);
        QFETCH(QString, separators);
        QFETCH(QStringList, pieces);
        QCOMPARE(splitPieces(text, separators), pieces);
    }

    void makeProgress_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value"); // -1: the bar keeps its value
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
        QFETCH(int, value);
        const std::optional<qint32> result = makeProgressValue(text);
        QCOMPARE(result.value_or(-1), value);
    }

    void cloneDecision_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("outcome");
        QTest::addColumn<int>("percentage");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("maximum");
        QTest::addColumn<QString>("label");
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
        QFETCH(int, outcome);
        const CloneProgress progress = cloneProgress(text);
        QCOMPARE(int(progress.outcome), outcome);
        if (progress.outcome != CloneProgress::Progress)
            return;
        QTEST(progress.percentage, "percentage");
        QTEST(progress.value, "value");
        QTEST(progress.maximum, "maximum");
        QTEST(progress.label, "label");
    }

    void formatting_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expected");
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
