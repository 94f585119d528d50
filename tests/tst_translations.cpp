#include "TestSupport.h"

#include "BuildConfig.h"
#include "app/ApplicationShell.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "platform/Bundle.h"
#include "platform/Translation.h"
#include "ui_MainWindow.h"
#include "widgets/ConsoleView.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

using namespace TestSupport;

namespace {

struct Entry
{
    QString context, source, translation; // an unfinished translation is empty
};

// The entries of a .ts file; *keysOnly tells a file in the source language.
QList<Entry> readTs(const QString &path, bool *keysOnly)
{
    QList<Entry> entries;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    Entry entry;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto attributes = xml.attributes();
        if (xml.name() == u"TS") {
            *keysOnly = attributes.value("language") == attributes.value("sourcelanguage");
        } else if (xml.name() == u"name") {
            entry.context = xml.readElementText();
        } else if (xml.name() == u"source") {
            entry.source = xml.readElementText();
        } else if (xml.name() == u"translation") {
            entry.translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            if (!attributes.value("type").isEmpty())
                entry.translation.clear();
            entries.append(entry);
        }
    }
    return entries;
}

// %1..%99, %n, and the two placeholders formatText() fills.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("%(?:\\d{1,2}|n|@|d)"));
    QStringList found;
    for (const auto &match : pattern.globalMatch(text))
        found << match.captured();
    found.sort();
    return found;
}

} // namespace

// Every text reaches every language, and the application speaks the user's
// language (its companions too: see tst_companions).
class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    // Refreshes copies of the translation files from the sources, as the
    // update_translations target would (the folders of resources/CMakeLists.txt),
    // and lists per language what a translator still has to do.
    // tools/translation_status.sh runs this alone and reads its output.
    void everyTextIsTranslated()
    {
        const QDir sources(QStringLiteral(ZELMOR_SOURCE_DIR));
        QTemporaryDir copies;
        const auto tsFiles = QDir(sources.filePath("resources/translations"))
                                 .entryInfoList({"*.ts"}, QDir::Files, QDir::Name);
        QVERIFY(tsFiles.size() >= 4); // English keys plus three languages
        QStringList arguments{"-silent",      "-locations", "none",
                              "-no-obsolete", "-I",         sources.path()};
        for (const char *folder :
             {"app", "workflow", "settings", "widgets", "platform", "companions", "resources"})
            arguments << sources.filePath(folder);
        arguments << "-ts";
        for (const QFileInfo &ts : tsFiles) {
            arguments << copies.filePath(ts.fileName());
            QVERIFY(QFile::copy(ts.filePath(), arguments.last()));
        }
        int exitCode = -1;
        run(QStringLiteral(ZELMOR_LUPDATE), arguments, QString(), &exitCode);
        QCOMPARE(exitCode, 0);

        QStringList problems;
        for (const QFileInfo &ts : tsFiles) {
            bool keysOnly = false; // the English file only lists the keys
            QSet<QString> known;
            for (const Entry &e : readTs(ts.filePath(), &keysOnly))
                known.insert(e.context + '\x04' + e.source);
            const QList<Entry> after = readTs(copies.filePath(ts.fileName()), &keysOnly);
            QVERIFY(!after.isEmpty());
            const QString language = ts.baseName().section('_', -1);
            int missing = 0, unfinished = 0, mismatched = 0;
            for (const Entry &e : after) {
                const QString where =
                    QStringLiteral("%1: [%2] \"%3\"")
                        .arg(language, e.context, QString(e.source).replace('\n', "\\n"));
                if (!known.contains(e.context + '\x04' + e.source)) {
                    ++missing;
                    problems << where + " is missing";
                } else if (keysOnly) {
                    continue;
                } else if (e.translation.trimmed().isEmpty()) {
                    ++unfinished;
                    problems << where + " is unfinished";
                } else if (placeholders(e.source) != placeholders(e.translation)) {
                    ++mismatched;
                    problems << where + " has other placeholders: \""
                                    + QString(e.translation).replace('\n', "\\n") + "\"";
                }
            }
            qInfo("%s: %lld texts, %d missing, %d unfinished, %d with other placeholders",
                  qPrintable(language), qlonglong(after.size()), missing, unfinished, mismatched);
        }
        QVERIFY2(problems.isEmpty(), qPrintable("\n" + problems.join('\n')));
    }

    // The machine's language does not leak into the tests, which all expect
    // the English texts; the application, though, speaks German to a German.
    void theApplicationStartsInGerman()
    {
        const QString language = installTranslator();
        QVERIFY(language.isEmpty() || language == "en");
        QCOMPARE(AppController::tr("Perform"), QString("Perform"));

        QTemporaryDir bundle; // no companions in it: starting them fails quietly
        Bundle::setMainBundlePath(bundle.path() + "/ZELMOR Helper.app");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(installTranslator(), QString("de"));
        QLocale::setDefault(QLocale::system());
        ApplicationShell shell;
        shell.start();
        QVERIFY(QSignalSpy(&shell, &ApplicationShell::launchFinished).wait());
        Ui::MainWindow *ui = shell.window()->ui();
        // As shown: the mnemonics are placed on the translated texts.
        QCOMPARE(ui->menuEdit->title().remove('&'), QString("Bearbeiten"));
        QCOMPARE(ui->menuWindow->title().remove('&'), QString("Fenster"));
        QCOMPARE(ui->menuQuit->text().remove('&'), QString("ZELMOR Helper beenden"));
        // Qt's own texts too: the key names shown beside the menu items.
        QCOMPARE(ui->menuQuit->shortcut().toString(QKeySequence::NativeText), QString("Strg+Q"));
        QCOMPARE(shell.delegate()->firstTitle->text(), QString("Willkommen"));
#ifdef Q_OS_MACOS
        QVERIFY(shell.delegate()->firstMessage->text().startsWith("Sie müssen Xcode"));
#else // the prerequisites name this system's tools
        QVERIFY(shell.delegate()->firstMessage->text().startsWith("Sie müssen git"));
#endif

        AppController *controller = shell.controller();
        QCOMPARE(controller->buttonPerform->text(), QString("Ausführen"));
        controller->popupSelection->setCurrentIndex(
            controller->popupSelection->findData(AppController::TagUpdate));
        controller->perform(); // the workspace does not exist: the check fails at once
        const QString console = controller->outputField->string();
        QVERIFY2(console.startsWith("\nDateien werden geprüft...\n"), qPrintable(console));
        QVERIFY2(console.contains("Fehlgeschlagen.\nFehler: "), qPrintable(console));
    }
};

ZELMOR_TEST_MAIN(TestTranslations)

#include "tst_translations.moc"
