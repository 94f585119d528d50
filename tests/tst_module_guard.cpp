#include "TestSupport.h"

#include "workflow/ModuleRules.h"

// The guard between a downloaded .gitmodules and the shell line
// "git clone --progress URL NAME".

Q_DECLARE_METATYPE(ModuleEntryVerdict)

class ModuleGuardTest : public QObject
{
    Q_OBJECT

private slots:
    void verdict_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<ModuleEntryVerdict>("verdict");
        const auto ok = ModuleEntryVerdict::Accepted;
        const auto unsafe = ModuleEntryVerdict::Unsafe;
        const auto noName = ModuleEntryVerdict::NoName;

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
        QTest::newRow("escapes, plus, comma, equals")
            << "https://example.org/a%20b/x+y,z/q=1/tools.git" << ok;
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
        QFETCH(ModuleEntryVerdict, verdict);
        const QString name = moduleNameFromURL(url);
        QCOMPARE(checkModuleEntry(url, name), verdict);
        if (verdict != ModuleEntryVerdict::Accepted)
            return;
        // Accepted means bash hands both to git as two words, exactly.
        const QByteArray words = TestSupport::run(
            QStringLiteral("/bin/bash"),
            {QStringLiteral("-c"), QStringLiteral("printf '%s\\n' ") + url + u' ' + name});
        QCOMPARE(QString::fromUtf8(words), url + u'\n' + name + u'\n');
    }

    // Names the rule cannot derive, but the guard holds for any pair.
    void names_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<ModuleEntryVerdict>("verdict");
        QTest::newRow("plain") << "lang" << ModuleEntryVerdict::Accepted;
        QTest::newRow("dot") << "." << ModuleEntryVerdict::NoName;
        QTest::newRow("dot dot") << ".." << ModuleEntryVerdict::NoName;
        QTest::newRow("empty") << "" << ModuleEntryVerdict::NoName;
        QTest::newRow("path") << "../../x" << ModuleEntryVerdict::Unsafe;
        QTest::newRow("sub folder") << "a/b" << ModuleEntryVerdict::Unsafe;
        QTest::newRow("option") << "-b" << ModuleEntryVerdict::Unsafe;
        QTest::newRow("home") << "~" << ModuleEntryVerdict::Unsafe;
        QTest::newRow("blank") << "a b" << ModuleEntryVerdict::Unsafe;
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
        QTest::addColumn<QString>("gitmodules");
        QTest::addColumn<int>("foreignLine");
        const QString lang = "[submodule \"lang\"]\n\tpath = lang\n\turl = https://h/emu-lang.git\n";
        QTest::newRow("git's own layout") << lang << 0;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("CR LF, comments, blank lines")
            << "# modules\r\n[submodule \"a\"]\r\n\r\n  path = a ; here\r\n\turl=x\r\n" << 0;
        QTest::newRow("every submodule key")
            << lang + "\tbranch = main\n\tshallow = true\n\tignore = dirty\n"
                      "\tfetchRecurseSubmodules = on-demand\n\tupdate = rebase\n\tUpdate = \"none\"\n"
            << 0;
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

ZELMOR_TEST_MAIN(ModuleGuardTest)
#include "tst_module_guard.moc"
