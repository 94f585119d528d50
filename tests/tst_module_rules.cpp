#include "TestSupport.h"

#include "workflow/ModuleRules.h"

#include <QDir>
#include <QFile>
#include <QTimeZone>

namespace {
QString entry(const QString &name, const QString &url)
{
    return QStringLiteral("[submodule \"%1\"]\n\tpath = %1\n\turl = %2\n").arg(name, url);
}
} // namespace

class ModuleRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void urlList_data()
    {
        TestSupport::columns<QString, QStringList>({"gitmodules", "urls"});
        const QString lang = QStringLiteral("https://github.com/zelmor-emu/emu-lang.git");
        const QString tools = QStringLiteral("https://github.com/zelmor-emu/tools.git");
        const QString one = entry("lang", lang);
        const QString two = one + entry("tools", tools);
        QTest::newRow("empty") << "" << QStringList{};
        QTest::newRow("one entry, final line feed") << one << QStringList{lang};
        QTest::newRow("one entry, no final line feed") << one.chopped(1) << QStringList{};
        QTest::newRow("two entries") << two << QStringList{lang, tools};
        QTest::newRow("two entries, last URL lost without line feed")
            << two.chopped(1) << QStringList{lang};
        QTest::newRow("carriage returns stay in the URL")
            << QString(two).replace("\n", "\r\n") << QStringList{lang + "\r", tools + "\r"};
        QTest::newRow("third key line shifts the stride")
            << QString(one).insert(one.indexOf("\turl"), "\tbranch = main\n") + entry("tools", tools)
            << QStringList{"main", "tools"};
        QTest::newRow("blank line between entries")
            << one + "\n" + entry("tools", tools) << QStringList{lang, "="};
        QTest::newRow("tabs do not split") << "a\tb c d e f g h i\n" << QStringList{"i"};
    }
    void urlList()
    {
        QFETCH(QString, gitmodules);
        QTEST(moduleURLsFromGitmodules(gitmodules), "urls");
    }

    void moduleName_data()
    {
        TestSupport::columns<QString, QString, bool>({"url", "name", "named"});
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

    void dateSuffixPattern()
    {
        const QDateTime when(QDate(2014, 3, 2), QTime(14, 5, 9));
        QCOMPARE(dateSuffix(when), QStringLiteral("2014-03-02 14.05.09"));
        // A time given in another zone is shown in local time.
        QCOMPARE(dateSuffix(when.toTimeZone(QTimeZone(3600 * 5))), dateSuffix(when));
    }

    void registeredConfig_data()
    {
        TestSupport::columns<QString, QString, bool, bool, QString>(
            {"config", "gitmodules", "configRead", "gitmodulesRead", "expected"});
        QTest::newRow("both") << "[core]\n" << "[submodule \"a\"]\n" << true << true
                              << "[core]\n\n[submodule \"a\"]\n";
        QTest::newRow("no .gitmodules") << "[core]\n" << "" << true << false << "[core]\n\n(null)";
        QTest::newRow("no config") << "" << "[s]\n" << false << true << "(null)\n[s]\n";
    }
    void registeredConfig()
    {
        QFETCH(QString, config);
        QFETCH(QString, gitmodules);
        QFETCH(bool, configRead);
        QFETCH(bool, gitmodulesRead);
        const auto maybe = [](bool read, const QString &text) {
            return read ? std::optional<QString>(text) : std::nullopt;
        };
        QTEST(registeredConfigText(maybe(configRead, config), maybe(gitmodulesRead, gitmodules)),
              "expected");
    }

    void fileOperations()
    {
        QTemporaryDir dir;
        const QString root = dir.path();
        TestSupport::writeFile(root + "/ws/.git/HEAD", "ref\n");
        TestSupport::writeFile(root + "/target/keep.txt", "keep\n");
        QVERIFY(QFile::link(root + "/target", root + "/link"));
        QFile::link(root + "/missing", root + "/dangling");

        QVERIFY(pathExists(root + "/ws/.git"));
        QVERIFY(pathExists(root + "/ws/.git/HEAD"));
        QVERIFY(!pathExists(root + "/ws/nothing"));
        QVERIFY(!pathExists(QString()));

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
        QVERIFY(!pathExists(root + "/ws.kept"));
        QVERIFY(!removeItem(root + "/ws.kept"));

        TestSupport::writeFile(root + "/good", "caf\xc3\xa9");
        TestSupport::writeFile(root + "/bad", "caf\xe9");
        QCOMPARE(readUtf8File(root + "/good").value_or("?"), QString::fromUtf8("caf\xc3\xa9"));
        QVERIFY(!readUtf8File(root + "/bad"));
        QVERIFY(!readUtf8File(root + "/none"));
    }
};

ZELMOR_TEST_MAIN(ModuleRulesTest)
#include "tst_module_rules.moc"
