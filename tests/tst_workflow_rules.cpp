#include "TestSupport.h"

#include "workflow/ModuleRules.h"
#include "workflow/OutputParsing.h"
#include "workflow/TextFormat.h"

#include <QTimeZone>

#ifdef Q_OS_LINUX
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

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
        QTest::newRow("receiving") << "Receiving objects:  45% (1234/2742), 1.23 MiB | 456.00 KiB/s"
                                   << Numbers{45, 1234, 2742, 1, 23, 456, 0};
        QTest::newRow("leading zeros") << "x007y" << Numbers{7};
        QTest::newRow("too large saturates") << "99999999999999 1" << Numbers{2147483647, 1};
        QTest::newRow("non-ASCII digits") << QString::fromUtf8("\u0663\u0664 9") << Numbers{9};
    }
    void numberHunter()
    {
        QFETCH(QString, text);
        QTEST(OutputParsing::numberHunter(text), "numbers");
    }

    void makeProgress_data()
    {
        columns<QString, int>({"text", "value"}); // -1: the bar keeps its value
        QTest::newRow("[ 45%]") << "[ 45%] Building C object main.c.o\n" << 45;
        QTest::newRow("[  0%] reads as none") << "[  0%] Built target x\n" << -1;
        QTest::newRow("too few pieces") << "[9%]" << -1;
        QTest::newRow("prefix on second line") << "Scanning target x\n[ 50%] Building\n" << -1;
        QTest::newRow("make[2] reads its digit") << "make[2]: Leaving directory '/b'\n" << 2;
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
        QTest::newRow("k=7 receiving line") << r45 << "45 1234/2742 456.00 KiB/s";
        QTest::newRow("k=3") << "Resolving deltas:  45% (1234/2742)   \r" << "45 1234/2742 ZELMOR";
        QTest::newRow("k=6 same") << "Counting: 50% (1/2) Counting: 9% (2/2)\r" << "50 1/2 ZELMOR";
        QTest::newRow("k=6") << "Counting objects: 50% (1/2) Compressing objects: 10% (1/10)\r"
                             << "50 1/2 (1/2) Compressing";
        QTest::newRow("k=21 is a multiple of 3") << r45 + r45 + r45 << "45 1234/2742 456.00 KiB/s";
        QTest::newRow("k=4") << "remote: Total 3 (delta 0), reused 0 (0)\n" << "0 0/0 ZELMOR";
        QTest::newRow("short chunk") << "Cloning into 'x'...\n" << "too few pieces";
        QTest::newRow("no digits") << "warning: remote HEAD is gone\n" << "no numbers";
    }
    void cloneDecision()
    {
        QFETCH(QString, text);
        const CloneProgress p = cloneProgress(text);
        const QString shown = QString("%1 %2/%3 %4").arg(p.percentage).arg(p.value).arg(p.maximum);
        QTEST(p.outcome == CloneProgress::TooFewPieces ? QString("too few pieces")
              : p.outcome == CloneProgress::NoNumbers  ? QString("no numbers")
                                                       : shown.arg(p.label),
              "expected");
    }

    void formatting_data()
    {
        columns<QString, QStringList, QString>({"format", "arguments", "expected"});
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
        const QString lang = "https://h/emu-lang.git", tools = "https://h/tools.git";
        const QString one = gitmodulesEntry("lang", lang);
        const QString two = one + gitmodulesEntry("tools", tools);
        QTest::newRow("one entry, no final line feed") << one.chopped(1) << QStringList{};
        QTest::newRow("two entries") << two << QStringList{lang, tools};
        QTest::newRow("no final line feed, last URL lost") << two.chopped(1) << QStringList{lang};
        QTest::newRow("carriage returns stay in the URL")
            << QString(two).replace("\n", "\r\n") << QStringList{lang + "\r", tools + "\r"};
        const QString branch = QString(one).insert(one.indexOf("\turl"), "\tbranch = main\n");
        QTest::newRow("third key line shifts the stride")
            << branch + gitmodulesEntry("tools", tools) << QStringList{"main", "tools"};
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
        QTest::newRow("emu-lang.git") << "https://h/zelmor-emu/emu-lang.git" << "lang" << true;
        QTest::newRow("tools.git/") << "https://h/zelmor-emu/tools.git/" << "git" << true;
        QTest::newRow("no separator") << "lang" << QString() << false;
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
        QVERIFY(!pathExists(QString()));

        // Moving refuses to replace, so keeping twice in one second fails.
        QVERIFY(moveItem(root + "/ws", root + "/ws.kept"));
        TestSupport::writeFile(root + "/ws/a", "a");
        QVERIFY(!moveItem(root + "/ws", root + "/ws.kept"));
        QVERIFY(!moveItem(root + "/ws", root + "/dangling"));

        // What emptying a folder would take along; a link goes alone.
        QVERIFY(wouldRemoveAny(root + "/target/", {root + "/x", root + "/target/new"}));
        QVERIFY(wouldRemoveAny("/", {root}) && wouldRemoveAny(root + "/ws/..", {root + "/ws"}));
        QVERIFY(wouldRemoveAny(root + "/target", {root + "/link"}));
        QVERIFY(!wouldRemoveAny(root + "/link", {root + "/target"}));
        QVERIFY(!wouldRemoveAny(root + "/ws", {root + "/ws.kept", root}));

        // Removing a link leaves what it points to.
        QVERIFY(removeItem(root + "/link"));
        QVERIFY(pathExists(root + "/target/keep.txt"));
        QVERIFY(removeItem(root + "/ws.kept"));
        QVERIFY(!removeItem(root + "/ws.kept"));

        // Only a real folder with nothing in it, hidden items counted, is empty.
        QVERIFY(QDir(root).mkdir("empty") && isEmptyFolder(root + "/empty"));
        QVERIFY(QFile::link(root + "/empty", root + "/in") && !isEmptyFolder(root + "/in"));
        TestSupport::writeFile(root + "/empty/.hidden", "");
        QVERIFY(!isEmptyFolder(root + "/empty") && !isEmptyFolder(root + "/none"));

        TestSupport::writeFile(root + "/good", "caf\xc3\xa9");
        TestSupport::writeFile(root + "/bad", "caf\xe9");
        QCOMPARE(readUtf8File(root + "/good").value_or("?"), QString::fromUtf8("caf\xc3\xa9"));
        QVERIFY(!readUtf8File(root + "/bad") && !readUtf8File(root + "/none"));
    }

#ifdef Q_OS_LINUX
    // The same folder under a second name (a bind mount here; a volume that
    // ignores case does the same) is still the home folder or the workspace.
    // The mount is made in a child with a mount namespace of its own, so it
    // ends with the child whatever happens.
    void removalGuardSeesAnotherRouteToAFolder()
    {
        QTemporaryDir dir;
        const QString home = dir.path() + "/home", alias = dir.path() + "/alias";
        QVERIFY(QDir().mkpath(home + "/ws/src") && QDir().mkpath(alias));
        const pid_t child = ::fork();
        if (child == 0) {
            const bool ownNamespace =
                ::unshare(CLONE_NEWNS) == 0 || ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
            if (!ownNamespace || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
                || ::mount(QFile::encodeName(home).constData(),
                           QFile::encodeName(alias).constData(), nullptr, MS_BIND, nullptr)
                       != 0)
                ::_exit(77);
            const bool seen = wouldRemoveAny(alias, {home}) && wouldRemoveAny(alias, {home + "/ws"})
                              && wouldRemoveAny(alias + "/ws", {home + "/ws/src/new"})
                              && !wouldRemoveAny(alias + "/ws/src", {home + "/ws", home});
            ::_exit(seen ? 0 : 1);
        }
        int status = -1;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        if (WEXITSTATUS(status) == 77)
            QSKIP("this user cannot make a mount namespace");
        QCOMPARE(WEXITSTATUS(status), 0);
    }
#endif

    // The name is the one the rule derives, except in the rows that give one.
    void verdict_data()
    {
        columns<QString, QString, Verdict>({"url", "name", "verdict"});
        const auto ok = Verdict::Accepted, unsafe = Verdict::Unsafe, noName = Verdict::NoName;
        const auto row = [](const char *tag, const QString &url, Verdict v, QString name = {}) {
            QTest::newRow(tag) << url << (name.isNull() ? moduleNameFromURL(url) : name) << v;
        };
        // The forms a real .gitmodules holds.
        row("https", "https://github.com/zelmor-emu/emu-lang.git", ok);
        row("scp-style", "git@github.com:zelmor-emu/emu-lang.git", ok);
        row("plain path", "/srv/git/tools.git", ok);
        row("user's folder", "https://example.org/~user/emu-tools.git", ok);
        row("escapes, plus, comma, equals", "https://example.org/a%20b/x+y,z/q=1/tools.git", ok);
        // Names that are no folder of their own.
        row("no separator", "nameless", noName);
        row("empty name: the workspace", "https://host/owner/.git", noName);
        // What the shell or git would take for more than a word.
        row("semicolon", "https://h/x.git;touch${IFS}m", unsafe);
        row("command substitution", "https://h/$(touch m).git", unsafe);
        row("backticks", "https://h/`id`.git", unsafe);
        row("pipe", "https://h/x.git|sh", unsafe);
        row("redirection", "https://h/x.git>m", unsafe);
        row("braces", "https://h/{touch,m}.git", unsafe);
        row("glob", "https://h/*.git", unsafe);
        row("quote", "https://h/x'.git", unsafe);
        row("backslash", "https://h/x\\.git", unsafe);
        row("tab", "https://h/x.git\t-u\ttouch", unsafe);
        row("carriage return", "https://h/x.git\r", unsafe);
        row("no-break space", QString::fromUtf8("https://h/x\xc2\xa0y.git"), unsafe);
        row("non-ASCII letter", QString::fromUtf8("https://h/caf\xc3\xa9.git"), unsafe);
        row("leading dash", "-utouch/x.git", unsafe);
        row("leading tilde", "~/emu/tools.git", unsafe);
        row("assignment with tilde", "a=~/emu/tools.git", unsafe);
        row("remote helper", "ext::sh/x.git", unsafe);
        row("name begins with tilde", "https://h/owner/~.git", unsafe);
        row("name is an assignment with tilde", "https://h/x=~.git", unsafe);
        // Names the rule cannot derive, but the guard holds for any pair.
        row("name ..", "https://h/o/x.git", noName, "..");
        row("name in a sub folder", "https://h/o/x.git", unsafe, "a/b");
        row("name is an option", "https://h/o/x.git", unsafe, "-b");
        row("name with a blank", "https://h/o/x.git", unsafe, "a b");
    }
    void verdict()
    {
        QFETCH(QString, url);
        QFETCH(QString, name);
        QFETCH(Verdict, verdict);
        QCOMPARE(checkModuleEntry(url, name), verdict);
        if (verdict != Verdict::Accepted)
            return;
        // Accepted means bash hands both to git as two words, exactly.
        const QByteArray words =
            TestSupport::run("/bin/bash", {"-c", "printf '%s\\n' " + url + u' ' + name});
        QCOMPARE(QString::fromUtf8(words), url + u'\n' + name + u'\n');
    }

    // What registration may append to the repository's config: only what
    // git itself writes into .gitmodules.
    void registry_data()
    {
        columns<QString, int>({"gitmodules", "foreignLine"});
        const QString lang = "[submodule \"lang\"]\n\tpath = lang\n\turl = https://h/l.git\n";
        QTest::newRow("git's own layout") << lang << 0;
        QTest::newRow("CR LF, comments, blank lines")
            << "# m\r\n[submodule \"a\"]\r\n\r\n  path = a ; here\r\n\turl=x\r\n" << 0;
        const QString keys = "\tbranch = main\n\tshallow = true\n\tignore = dirty\n"
                             "\tfetchRecurseSubmodules = on-demand\n\tupdate = rebase\n";
        QTest::newRow("every submodule key") << lang + keys + "\tUpdate = \"none\"\n" << 0;
        // A stranger's URL values are the URL guard's business, not this one's.
        QTest::newRow("shell text in a value") << lang + "\turl = x;touch${IFS}m\n" << 0;
        QTest::newRow("update runs a command") << lang + "\tupdate = !touch m\n" << 4;
        QTest::newRow("fsmonitor") << lang + "[core]\n\tfsmonitor = touch m\n" << 4;
        QTest::newRow("key on the header line") << "[submodule \"a\"] fsmonitor = x\n" << 1;
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
