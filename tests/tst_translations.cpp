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
    QString context, source, translation;
    bool finished = false;
};

struct TsFile
{
    QString language, sourceLanguage;
    QList<Entry> entries;
};

TsFile readTs(const QString &path)
{
    TsFile ts;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return ts;
    QXmlStreamReader xml(&file);
    QString context;
    Entry entry;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = xml.name();
        if (name == u"TS") {
            ts.language = xml.attributes().value("language").toString();
            ts.sourceLanguage = xml.attributes().value("sourcelanguage").toString();
        } else if (name == u"name") {
            context = xml.readElementText();
        } else if (name == u"message") {
            entry = Entry{context, {}, {}, false};
        } else if (name == u"source") {
            entry.source = xml.readElementText();
        } else if (name == u"translation") {
            const auto type = xml.attributes().value("type");
            entry.finished = type.isEmpty();
            entry.translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            ts.entries.append(entry);
        }
    }
    return ts;
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

// The folders whose texts ship, as the build's update_translations target
// reads them (see resources/CMakeLists.txt).
const QStringList sourceFolders{"app",      "workflow",  "settings", "widgets",
                                "platform", "companions", "resources"};

} // namespace

// Every text reaches every language, and the application speaks the user's
// language (its companions too: see tst_companions).
class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    // Refreshes copies of the translation files from the sources, as the
    // update_translations target would, and lists per language what a
    // translator still has to do. tools/translation_status.sh runs this alone.
    void everyTextIsTranslated()
    {
        const QDir sources(QStringLiteral(ZELMOR_SOURCE_DIR));
        QTemporaryDir copies;
        QStringList tsCopies;
        const auto tsFiles = QDir(sources.filePath("resources/translations"))
                                 .entryInfoList({"*.ts"}, QDir::Files, QDir::Name);
        QVERIFY(tsFiles.size() >= 4); // English keys plus three languages
        for (const QFileInfo &ts : tsFiles) {
            tsCopies << copies.filePath(ts.fileName());
            QVERIFY(QFile::copy(ts.filePath(), tsCopies.last()));
        }

        QStringList arguments{"-silent", "-locations", "none", "-no-obsolete",
                              "-I", sources.path()};
        for (const QString &folder : sourceFolders)
            arguments << sources.filePath(folder);
        arguments << "-ts" << tsCopies;
        int exitCode = -1;
        run(QStringLiteral(ZELMOR_LUPDATE), arguments, QString(), &exitCode);
        QCOMPARE(exitCode, 0);

        QStringList problems;
        for (int i = 0; i < tsFiles.size(); ++i) {
            const TsFile before = readTs(tsFiles.at(i).filePath());
            const TsFile after = readTs(tsCopies.at(i));
            QSet<QString> known;
            for (const Entry &e : before.entries)
                known.insert(e.context + '\x04' + e.source);
            QVERIFY2(!after.entries.isEmpty(), qPrintable(tsCopies.at(i)));
            // The English file only lists the keys; its texts are the keys.
            const bool keysOnly = after.language == after.sourceLanguage;
            int missing = 0, unfinished = 0, mismatched = 0;
            for (const Entry &e : after.entries) {
                const QString where =
                    QStringLiteral("%1: [%2] \"%3\"")
                        .arg(after.language, e.context, QString(e.source).replace('\n', "\\n"));
                if (!known.contains(e.context + '\x04' + e.source)) {
                    ++missing;
                    problems << where + " is missing";
                } else if (keysOnly) {
                    continue;
                } else if (!e.finished || e.translation.trimmed().isEmpty()) {
                    ++unfinished;
                    problems << where + " is unfinished";
                } else if (placeholders(e.source) != placeholders(e.translation)) {
                    ++mismatched;
                    problems << where + " has other placeholders: \""
                                    + QString(e.translation).replace('\n', "\\n") + "\"";
                }
            }
            qInfo("%s: %lld texts, %d missing, %d unfinished, %d with other placeholders",
                  qPrintable(after.language), qlonglong(after.entries.size()), missing,
                  unfinished, mismatched);
        }
        QVERIFY2(problems.isEmpty(), qPrintable("\n" + problems.join('\n')));
    }

    // The machine's language does not leak into the tests: they all expect
    // the English texts.
    void theTestsSpeakEnglish()
    {
        const QString language = installTranslator();
        QVERIFY(language.isEmpty() || language == "en");
        QCOMPARE(AppController::tr("Perform"), QString("Perform"));
    }

    void theApplicationStartsInGerman()
    {
        QTemporaryDir bundle; // no companions in it: starting them fails quietly
        Bundle::setMainBundlePath(bundle.path() + "/ZELMOR Helper.app");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(installTranslator(), QString("de"));
        QLocale::setDefault(QLocale::system());

        ApplicationShell shell;
        shell.start();
        Ui::MainWindow *ui = shell.window()->ui();
        // As shown: the mnemonics are placed on the translated texts.
        QCOMPARE(ui->menuEdit->title().remove('&'), QString("Bearbeiten"));
        QCOMPARE(ui->menuWindow->title().remove('&'), QString("Fenster"));
        QCOMPARE(ui->menuQuit->text().remove('&'), QString("ZELMOR Helper beenden"));
        // Qt's own texts too: the key names shown beside the menu items.
        QCOMPARE(ui->menuQuit->shortcut().toString(QKeySequence::NativeText), QString("Strg+Q"));

        ZELMORHelperAppDelegate *delegate = shell.delegate();
        QVERIFY(delegate->firstLaunchWindow && delegate->firstLaunchWindow->isVisible());
        QCOMPARE(delegate->firstTitle->text(), QString("Willkommen"));
        QVERIFY(delegate->firstMessage->text().startsWith("Sie müssen Xcode"));

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
