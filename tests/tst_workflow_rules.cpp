#include "TestSupport.h"

#include "workflow/ModuleRules.h"
#include "workflow/OutputParsing.h"
#include "workflow/TextFormat.h"

#include <QTimeZone>

// The engine's pure rules: what git and make print, the console's format, a
// .gitmodules read the way the registry reads it, and the guard between a
// downloaded .gitmodules and the shell line "git clone --progress URL NAME".

using namespace OutputParsing;
using Numbers = QList<qint32>;
using Verdict = ModuleEntryVerdict;
Q_DECLARE_METATYPE(ModuleEntryVerdict)

using TestSupport::columns;
using TestSupport::gitmodulesEntry;

class WorkflowRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void numberHunter_data()
    {
        columns<QString, Numbers>({"text", "numbers"});
        QTest::newRow("empty") << "" << Numbers{};
        QTest::newRow("no digits") << "Cloning into 'emu'...\n" << Numbers{};
        QTest::newRow("receiving") << "Receiving objects:  45% (1234/2742), 1.23 MiB | 456.00 KiB/s"
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
        columns<QString, int>({"text", "value"}); // -1: the bar keeps its value
        QTest::newRow("[100%]") << "[100%] Linking C executable ZELMORSDL\n" << 100;
        QTest::newRow("[ 45%]") << "[ 45%] Building C object main.c.o\n" << 45;
        QTest::newRow("[  5%]") << "[  5%] Building C object a.c.o\n" << 5;
        QTest::newRow("[  0%] reads as none") << "[  0%] Built target x\n" << -1;
        QTest::newRow("no prefix") << "Scanning dependencies of target ZELMORSDL\n" << -1;
        QTest::newRow("too few pieces") << "[9%]" << -1;
        QTest::newRow("prefix on second line only") << "Scanning dependencies of target x\n[ 50%] Building\n" << -1;
        QTest::newRow("make[2] prefix reads its digit") << "make[2]: Leaving directory '/b'\n" << 2;
        QTest::newRow("empty") << "" << -1;
    }
    void makeProgress()
    {
        QFETCH(QString, text);
        QTEST(makeProgressValue(text).value_or(-1), "value");
    }

    // expected: "percentage value/maximum label", or why there is no progress.
    void cloneDecision_data()
    {
        columns<QString, QString>({"text", "expected"});
        const QString r45 = "Receiving objects:  45% (1234/2742), 1.23 MiB | 456.00 KiB/s   \r";
        const QString r46 = "Receiving objects:  46% (1262/2742), 1.30 MiB | 512.00 KiB/s   \r";
        QTest::newRow("k=7 receiving line") << r45 << "45 1234/2742 456.00 KiB/s";
        QTest::newRow("k=3 resolving deltas") << "Resolving deltas:  45% (1234/2742)   \r" << "45 1234/2742 ZELMOR";
        QTest::newRow("k=14 two updates in one chunk") << r45 + r46 << "45 1234/2742 512.00 KiB/s";
        QTest::newRow("k=6 same maximum") << "Counting objects: 50% (1/2) Counting objects: 100% (2/2)\r"
                                          << "50 1/2 ZELMOR";
        QTest::newRow("k=6 other maximum") << "Counting objects: 50% (1/2) Compressing objects: 10% (1/10)\r"
                                           << "50 1/2 (1/2) Compressing";
        QTest::newRow("k=21 taken as a multiple of 3") << r45 + r45 + r45 << "45 1234/2742 456.00 KiB/s";
        QTest::newRow("k=4 resets") << "remote: Total 3 (delta 0), reused 0 (delta 0)\n" << "0 0/0 ZELMOR";
        QTest::newRow("short cloning chunk") << "Cloning into 'x'...\n" << "too few pieces";
        QTest::newRow("four pieces") << "a b c d" << "too few pieces";
        QTest::newRow("no digits") << "warning: remote HEAD refers to nonexistent ref\n" << "no numbers";
    }
    void cloneDecision()
    {
        QFETCH(QString, text);
        const CloneProgress p = cloneProgress(text);
        QTEST(p.outcome == CloneProgress::TooFewPieces ? QString("too few pieces")
              : p.outcome == CloneProgress::NoNumbers
                  ? QString("no numbers")
                  : QString("%1 %2/%3 %4").arg(p.percentage).arg(p.value).arg(p.maximum).arg(p.label),
              "expected");
    }

    void formatting_data()
    {
        columns<QString, QStringList, QString>({"format", "arguments", "expected"});
        QTest::newRow("failure line") << "%@\n%@: %@%@%@" << QStringList{"F.", "Error", "/w", " or .git!", "Hint."}
                                      << "F.\nError: /w or .git!Hint.";
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

    void urlList_data()
    {
        columns<QString, QStringList>({"gitmodules", "urls"});
        const QString lang = "https://github.com/zelmor-emu/emu-lang.git", tools = "https://h/tools.git";
        const QString one = gitmodulesEntry("lang", lang), two = one + gitmodulesEntry("tools", tools);
        QTest::newRow("empty") << "" << QStringList{};
        QTest::newRow("one entry, final line feed") << one << QStringList{lang};
        QTest::newRow("one entry, no final line feed") << one.chopped(1) << QStringList{};
        QTest::newRow("two entries") << two << QStringList{lang, tools};
        QTest::newRow("two entries, last URL lost without line feed") << two.chopped(1) << QStringList{lang};
        QTest::newRow("carriage returns stay in the URL")
            << QString(two).replace("\n", "\r\n") << QStringList{lang + "\r", tools + "\r"};
        QTest::newRow("third key line shifts the stride")
            << QString(one).insert(one.indexOf("\turl"), "\tbranch = main\n") + gitmodulesEntry("tools", tools)
            << QStringList{"main", "tools"};
        QTest::newRow("blank line between entries") << one + "\n" + gitmodulesEntry("tools", tools)
                                                    << QStringList{lang, "="};
        QTest::newRow("tabs do not split") << "a\tb c d e f g h i\n" << QStringList{"i"};
    }
    void urlList()
    {
        QFETCH(QString, gitmodules);
        QTEST(moduleURLsFromGitmodules(gitmodules), "urls");
    }

    void moduleName_data()
    {
        columns<QString, QString, bool>({"url", "name", "named"});
        QTest::newRow("emu-lang.git") << "https://github.com/zelmor-emu/emu-lang.git" << "lang" << true;
        QTest::newRow("tools.git/") << "https://github.com/zelmor-emu/tools.git/" << "git" << true;
        QTest::newRow("SOME-Thing") << "https://github.com/zelmor-emu/SOME-Thing" << "SOME" << true;
        QTest::newRow("/owner/lib") << "https://github.com/owner/lib" << "owner" << true;
        QTest::newRow("plain path") << "/srv/git/tools.git" << "tools" << true;
        QTest::newRow("one separator") << "a.b" << "a" << true;
        QTest::newRow("no separator") << "lang" << "" << false;
        QTest::newRow("empty") << "" << "" << false;
    }
    void moduleName()
    {
        QFETCH(QString, url);
        QFETCH(bool, named);
        bool ok = !named; // must be overwritten
        QTEST(moduleNameFromURL(url, &ok), "name");
        QCOMPARE(ok, named);
    }

    void dateSuffixAndConfigText()
    {
        const QDateTime when(QDate(2014, 3, 2), QTime(14, 5, 9));
        QCOMPARE(dateSuffix(when), QStringLiteral("2014-03-02 14.05.09"));
        // A time given in another zone is shown in local time.
        QCOMPARE(dateSuffix(when.toTimeZone(QTimeZone(3600 * 5))), dateSuffix(when));

        QCOMPARE(registeredConfigText("[core]\n", "[submodule \"a\"]\n"), "[core]\n\n[submodule \"a\"]\n");
        QCOMPARE(registeredConfigText("[core]\n", std::nullopt), "[core]\n\n(null)");
        QCOMPARE(registeredConfigText(std::nullopt, "[s]\n"), "(null)\n[s]\n");
    }

    void fileOperations()
    {
        QTemporaryDir dir;
        const QString root = dir.path();
        TestSupport::writeFile(root + "/ws/.git/HEAD", "ref\n");
        TestSupport::writeFile(root + "/target/keep.txt", "keep\n");
        QVERIFY(QFile::link(root + "/target", root + "/link"));
        QFile::link(root + "/missing", root + "/dangling");
        QVERIFY(pathExists(root + "/ws/.git") && pathExists(root + "/ws/.git/HEAD"));
        QVERIFY(!pathExists(root + "/ws/nothing") && !pathExists(QString()));

        // Moving refuses to replace, so keeping twice in one second fails.
        QVERIFY(moveItem(root + "/ws", root + "/ws.kept"));
        TestSupport::writeFile(root + "/ws/a", "a");
        QVERIFY(!moveItem(root + "/ws", root + "/ws.kept"));
        QVERIFY(!moveItem(root + "/ws", root + "/dangling"));
        QVERIFY(pathExists(root + "/ws/a"));

        // Removing a link leaves what it points to.
        QVERIFY(removeItem(root + "/link"));
        QVERIFY(pathExists(root + "/target/keep.txt"));
        QVERIFY(removeItem(root + "/ws.kept"));
        QVERIFY(!pathExists(root + "/ws.kept") && !removeItem(root + "/ws.kept"));

        TestSupport::writeFile(root + "/good", "caf\xc3\xa9");
        TestSupport::writeFile(root + "/bad", "caf\xe9");
        QCOMPARE(readUtf8File(root + "/good").value_or("?"), QString::fromUtf8("caf\xc3\xa9"));
        QVERIFY(!readUtf8File(root + "/bad") && !readUtf8File(root + "/none"));
    }

    void verdict_data()
    {
        columns<QString, Verdict>({"url", "verdict"});
        const auto ok = Verdict::Accepted, unsafe = Verdict::Unsafe, noName = Verdict::NoName;
        // The forms a real .gitmodules holds.
        QTest::newRow("https") << "https://github.com/zelmor-emu/emu-lang.git" << ok;
        QTest::newRow("http with port") << "http://git.example.org:8080/emu/tools.git" << ok;
        QTest::newRow("ssh") << "ssh://git@example.org:22/emu/tools.git" << ok;
        QTest::newRow("git") << "git://example.org/emu/tools.git" << ok;
        QTest::newRow("file") << "file:///srv/git/emu-lang.git" << ok;
        QTest::newRow("scp-style") << "git@github.com:zelmor-emu/emu-lang.git" << ok;
        QTest::newRow("scp-style home") << "git@host:~/emu/tools.git" << ok;
        QTest::newRow("underscores") << "https://github.com/some_user/emu_tools.git" << ok;
        QTest::newRow("plain path") << "/srv/git/tools.git" << ok;
        QTest::newRow("relative path") << "../emu-lang.git" << ok;
        QTest::newRow("user's folder") << "https://example.org/~user/emu-tools.git" << ok;
        QTest::newRow("escapes, plus, comma, equals") << "https://example.org/a%20b/x+y,z/q=1/tools.git" << ok;
        QTest::newRow("trailing slash gives git") << "https://example.org/tools.git/" << ok;
        // Names that are no folder of their own.
        QTest::newRow("no separator") << "nameless" << noName;
        QTest::newRow("empty name: the workspace") << "https://host/owner/.git" << noName;
        QTest::newRow("empty url") << "" << noName;
        // What the shell or git would take for more than a word.
        QTest::newRow("semicolon") << "https://h/x.git;touch${IFS}m" << unsafe;
        QTest::newRow("command substitution") << "https://h/$(touch m).git" << unsafe;
        QTest::newRow("backticks") << "https://h/`id`.git" << unsafe;
        QTest::newRow("pipe") << "https://h/x.git|sh" << unsafe;
        QTest::newRow("ampersand") << "https://h/x.git&id" << unsafe;
        QTest::newRow("redirection") << "https://h/x.git>m" << unsafe;
        QTest::newRow("process substitution") << "https://h/<(id).git" << unsafe;
        QTest::newRow("braces") << "https://h/{touch,m}.git" << unsafe;
        QTest::newRow("glob") << "https://h/*.git" << unsafe;
        QTest::newRow("question mark") << "https://h/x?.git" << unsafe;
        QTest::newRow("brackets") << "ssh://[::1]/x.git" << unsafe;
        QTest::newRow("quote") << "https://h/x'.git" << unsafe;
        QTest::newRow("double quote") << "https://h/x\".git" << unsafe;
        QTest::newRow("backslash") << "https://h/x\\.git" << unsafe;
        QTest::newRow("hash") << "https://h/x.git#frag" << unsafe;
        QTest::newRow("exclamation") << "https://h/x!.git" << unsafe;
        QTest::newRow("caret") << "https://h/x^.git" << unsafe;
        QTest::newRow("tab") << "https://h/x.git\t-u\ttouch" << unsafe;
        QTest::newRow("carriage return") << "https://h/x.git\r" << unsafe;
        QTest::newRow("no-break space") << QString::fromUtf8("https://h/x\xc2\xa0y.git") << unsafe;
        QTest::newRow("ideographic space") << QString::fromUtf8("https://h/x\xe3\x80\x80y.git") << unsafe;
        QTest::newRow("non-ASCII letter") << QString::fromUtf8("https://h/caf\xc3\xa9.git") << unsafe;
        QTest::newRow("NUL") << QString(QStringLiteral("https://h/x") + QChar(0) + ".git") << unsafe;
        QTest::newRow("leading dash") << "-utouch/x.git" << unsafe;
        QTest::newRow("upload-pack option") << "--upload-pack=touch" << unsafe;
        QTest::newRow("leading tilde") << "~/emu/tools.git" << unsafe;
        QTest::newRow("assignment with tilde") << "a=~/emu/tools.git" << unsafe;
        QTest::newRow("assignment with tilde after colon") << "A_1=x:~/emu-tools.git" << unsafe;
        QTest::newRow("remote helper") << "ext::sh/x.git" << unsafe;
        QTest::newRow("name begins with tilde") << "https://h/owner/~.git" << unsafe;
        QTest::newRow("name is an assignment with tilde") << "https://h/x=~.git" << unsafe;
    }
    void verdict()
    {
        QFETCH(QString, url);
        QFETCH(Verdict, verdict);
        const QString name = moduleNameFromURL(url);
        QCOMPARE(checkModuleEntry(url, name), verdict);
        if (verdict != Verdict::Accepted)
            return;
        // Accepted means bash hands both to git as two words, exactly.
        const QByteArray words = TestSupport::run("/bin/bash", {"-c", "printf '%s\\n' " + url + u' ' + name});
        QCOMPARE(QString::fromUtf8(words), url + u'\n' + name + u'\n');
    }

    // Names the rule cannot derive, but the guard holds for any pair.
    void names_data()
    {
        columns<QString, Verdict>({"name", "verdict"});
        QTest::newRow("plain") << "lang" << Verdict::Accepted;
        QTest::newRow("dot") << "." << Verdict::NoName;
        QTest::newRow("dot dot") << ".." << Verdict::NoName;
        QTest::newRow("empty") << "" << Verdict::NoName;
        QTest::newRow("path") << "../../x" << Verdict::Unsafe;
        QTest::newRow("sub folder") << "a/b" << Verdict::Unsafe;
        QTest::newRow("option") << "-b" << Verdict::Unsafe;
        QTest::newRow("home") << "~" << Verdict::Unsafe;
        QTest::newRow("blank") << "a b" << Verdict::Unsafe;
    }
    void names()
    {
        QFETCH(QString, name);
        QTEST(checkModuleEntry(QStringLiteral("https://h/o/x.git"), name), "verdict");
    }

    // What registration may append to the repository's config: only what
    // git itself writes into .gitmodules.
    void registry_data()
    {
        columns<QString, int>({"gitmodules", "foreignLine"});
        const QString lang = "[submodule \"lang\"]\n\tpath = lang\n\turl = https://h/emu-lang.git\n";
        QTest::newRow("git's own layout") << lang << 0;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("CR LF, comments, blank lines")
            << "# modules\r\n[submodule \"a\"]\r\n\r\n  path = a ; here\r\n\turl=x\r\n" << 0;
        QTest::newRow("every submodule key") << lang + "\tbranch = main\n\tshallow = true\n\tignore = dirty\n"
                                                       "\tfetchRecurseSubmodules = on-demand\n\tupdate = rebase\n"
                                                       "\tUpdate = \"none\"\n" << 0;
        // A stranger's URL values are the URL guard's business, not this one's.
        QTest::newRow("shell text in a value") << lang + "\turl = x;touch${IFS}m\n" << 0;
        QTest::newRow("update runs a command") << lang + "\tupdate = !touch m\n" << 4;
        QTest::newRow("fsmonitor") << lang + "[core]\n\tfsmonitor = touch m\n" << 4;
        QTest::newRow("ssh command") << "[core]\nsshCommand = touch m\n" << 1;
        QTest::newRow("alias") << lang + "[alias]\n\tpull = !touch m\n" << 4;
        QTest::newRow("include") << "[include]\n\tpath = /tmp/evil\n" << 1;
        QTest::newRow("conditional include") << "[includeIf \"gitdir:/\"]\n" << 1;
        QTest::newRow("key on the header line") << "[submodule \"a\"] fsmonitor = x\n" << 1;
        QTest::newRow("dotted section") << "[submodule.a]\n\tpath = a\n" << 1;
        QTest::newRow("foreign key in a submodule") << lang + "\tfsmonitor = touch m\n" << 4;
        QTest::newRow("key before any section") << "url = x\n" << 1;
        QTest::newRow("continuation") << lang + "\turl = x\\\n[core]\n" << 4;
        QTest::newRow("not a key at all") << lang + "\t= x\n" << 4;
    }
    void registry()
    {
        QFETCH(QString, gitmodules);
        QTEST(firstForeignGitmodulesLine(gitmodules), "foreignLine");
    }
};

ZELMOR_TEST_MAIN(WorkflowRulesTest)
#include "tst_workflow_rules.moc"
