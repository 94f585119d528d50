#include "TestSupport.h"

#include "app/AboutController.h"
#include "app/ApplicationShell.h"
#include "app/MainMenu.h"
#include "app/ZELMORHelperAppDelegate.h"
#include "companions/installer/InstallerWindow.h"
#include "companions/statusbar/StatusbarCompanion.h"
#include "platform/Bundle.h"
#include "settings/PrefsController.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "ui_MainWindow.h"
#include "widgets/AlertSheet.h"
#include "widgets/ConsoleFindBar.h"
#include "widgets/Contrast.h"
#include "widgets/FolderChoice.h"
#include "widgets/Mnemonics.h"
#include "widgets/Popover.h"
#include "workflow/AppController.h"
#include "workflow/MainWindow.h"

#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMetaEnum>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QToolBar>

#include <functional>

// What assistive technology (screen readers, voice control, switch access)
// finds in every window, through Qt's own accessibility interface.

namespace {

// Counts the items a user operates or reads; lists those without a name,
// which cannot be told apart. Hidden parts of the window count too: they
// show up later, as a field's clear button once it holds text, or a
// toolbar's button for what does not fit a narrow window. Hidden menus,
// pop-ups and their entries are left to the windows that show them.
int walk(QAccessibleInterface *iface, QStringList &unnamed)
{
    using A = QAccessible;
    static const QSet<QAccessible::Role> needNames{
        A::PushButton,   A::CheckBox,   A::RadioButton, A::ComboBox,       A::EditableText,
        A::ProgressBar,  A::Slider,     A::SpinBox,     A::Table,          A::List,
        A::Tree,         A::MenuItem,   A::ButtonMenu,  A::ButtonDropDown, A::PageTab,
        A::Link,         A::Graphic,    A::PopupMenu,   A::Dialog,         A::Window,
        A::AlertMessage, A::HelpBalloon};
    if (!iface || !iface->isValid())
        return 0;
    auto *widget = qobject_cast<QWidget *>(iface->object());
    if (iface->state().invisible && (!widget || !widget->window()->isVisible()))
        return 0;
    int named = needNames.contains(iface->role());
    if (named && iface->text(A::Name).trimmed().isEmpty())
        unnamed << QString::number(iface->role(), 16) + " "
                       + (iface->object() ? iface->object()->objectName() : QString());
    for (int i = 0; i < iface->childCount(); ++i)
        named += walk(iface->child(i), unnamed);
    return named;
}

// Every interactive control a window offers; a button inside a line edit
// (clear) belongs to its field.
QList<QWidget *> controlsOf(QWidget *window)
{
    QList<QWidget *> controls;
    for (QWidget *w : window->findChildren<QWidget *>()) {
        if (w->window() == window && w->isVisible() && !qobject_cast<QLineEdit *>(w->parent())
            && (qobject_cast<QAbstractButton *>(w) || qobject_cast<QLineEdit *>(w)
                || qobject_cast<QComboBox *>(w)
                || (qobject_cast<QAbstractItemView *>(w) && !qobject_cast<QHeaderView *>(w))))
            controls.append(w);
    }
    return controls;
}

} // namespace

using Acted = std::function<bool()>;
Q_DECLARE_METATYPE(Acted)

class TestAccessibility : public QObject
{
    Q_OBJECT

public:
    enum Window { Main, PrefsPaths, PrefsSwitches, FirstLaunchSheet, WizardSheet, WizardHint,
                  About, Alert, Installer, StatusbarMenu };
    Q_ENUM(Window)

private slots:
    void initTestCase()
    {
        QAccessible::setActive(true);
        // A bundle with the status-bar companion's Info.plist only: the
        // login agent can be named, and no companion is ever started.
        const QString info =
            "/Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app/Contents/Info.plist";
        TestSupport::writeFile(m_bundle.path() + info,
                               TestSupport::readFile(TestSupport::buildBundleDir() + info));
        Bundle::setMainBundlePath(m_bundle.path());
        store().registerApplicationDefaults(Bundle::mainBundlePath());
        // Every chooser picks /picked at once.
        FolderChoice::setChooser(
            [](const FolderChoice::Request &, FolderChoice::Done done) { done("/picked"); });
    }

    void init()
    {
        store().persisted().removeDomain();
        store().setObject(SettingsKeys::FirstLaunch, 0);
        m_wizardHints = 0;
        QDir(agentFolder()).removeRecursively();
        QDir().mkpath(agentFolder());
    }

    void cleanup()
    {
        delete m_alert;
        m_installer.reset();
        m_companion.reset();
        m_shell.reset();
    }

    // Window by window: every control has a name, Tab reaches every control
    // (the preferences' page buttons included), Press on a button does what
    // a click does, and Escape closes.
    void everyWindow_data()
    {
        TestSupport::columns<Window, QString, Acted>({"window", "button", "acted"});
        const auto row = [](Window window, const QString &button = {}, Acted acted = {}) {
            const QString name = QMetaEnum::fromType<Window>().valueToKey(window) + (" " + button);
            QTest::newRow(qPrintable(name)) << window << button << acted;
        };
        row(Main, "buttonPerform",
            [this] { return !m_shell->controller()->outputField->toPlainText().isEmpty(); });
        row(Main, "Done", [this] { return !m_shell->menu()->findBar()->isVisible(); });
        row(PrefsPaths, "browserOutputButton",
            [this] { return prefs()->outputText->text() == "/picked/ZELMOR/Output"; });
        row(PrefsPaths, "Switches", [this] { return prefs()->switchView->isVisible(); });
        row(PrefsSwitches, "switchResetWarnings", [] {
            return store().objectForKey(SettingsKeys::FirstLaunch) == QVariant(QString("1"));
        });
        row(FirstLaunchSheet);
        row(WizardSheet, "wizardBrowseOutputButton", [this] {
            return m_shell->delegate()->iniOutputText->text() == "/picked/ZELMOR/Output";
        });
        row(WizardSheet, "wizardHelpButton",
            [this] { return m_shell->delegate()->iniPopover->isShown(); });
        row(WizardSheet, "wizardOKButton",
            [] { return store().objectForKey(SettingsKeys::Initialization) == QVariant(0); });
        row(WizardHint, "", [this] { return m_wizardHints == 1; });
        row(About);
        row(Alert);
        row(Installer);
        row(StatusbarMenu);
    }
    void everyWindow()
    {
        QFETCH(Window, window);
        QFETCH(QString, button);
        QFETCH(Acted, acted);
        QWidget *w = open(window);
        QVERIFY(w && w->isVisible());
        QAccessibleInterface *iface = accessible(w);
        QVERIFY(iface->role() != QAccessible::Client && iface->role() != QAccessible::Pane);
        QStringList unnamed;
        QVERIFY(walk(iface, unnamed) > 0);
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(", ")));
        if (window == PrefsPaths || window == WizardSheet) { // choosers say what they choose
            QStringList names;
            for (QWidget *control : controlsOf(w)) {
                auto *b = qobject_cast<QPushButton *>(control);
                if (qobject_cast<QLineEdit *>(control) || (b && b->text().remove('&') == "Select"))
                    names << accessible(control)->text(QAccessible::Name);
            }
            names.sort();
            QCOMPARE(names, (QStringList{"Output", "Select output folder",
                                         "Select workspace folder", "Workspace"}));
        }

        if (window != About && window != StatusbarMenu && window != WizardHint) {
            QVERIFY(activate(w));
            const QList<QWidget *> controls = controlsOf(w);
            QSet<QWidget *> reached;
            for (int i = 0; i < 4 * controls.size() + 4; ++i) {
                QVERIFY(QApplication::focusWidget());
                reached.insert(QApplication::focusWidget());
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            for (QWidget *control : controls)
                QVERIFY2(reached.contains(control), qPrintable(control->metaObject()->className()
                                                               + (" " + control->objectName())));
        }

        if (acted) {
            QWidget *target = button.isEmpty() ? w : nullptr;
            for (QWidget *control : controlsOf(w)) {
                auto *b = qobject_cast<QAbstractButton *>(control);
                if (b && (b->objectName() == button || b->text().remove('&') == button))
                    target = b;
            }
            QVERIFY(target);
            if (window == WizardHint)
                connect(static_cast<Popover *>(w), &Popover::clicked, this,
                        [this] { ++m_wizardHints; });
            QAccessibleActionInterface *actions = accessible(target)->actionInterface();
            // What a click is for a button that stays pressed is a Toggle;
            // a page tab is chosen by a Press.
            auto *b = qobject_cast<QAbstractButton *>(target);
            const QString action =
                b && b->isCheckable() && accessible(b)->role() != QAccessible::PageTab
                    ? QAccessibleActionInterface::toggleAction()
                    : QAccessibleActionInterface::pressAction();
            QVERIFY(actions && actions->actionNames().contains(action));
            QVERIFY(!acted());
            actions->doAction(action);
            QTRY_VERIFY(acted());
        }
        if (window == About) { // Preferences and Find answer their keys in every window
            QVERIFY(activate(w));
            QTest::keyClick(w, Qt::Key_Comma, Qt::ControlModifier);
            QVERIFY(prefs() && activate(prefs()->window()));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
            QTRY_COMPARE(QApplication::activeWindow(), m_shell->window());
            QCOMPARE(QApplication::focusWidget(), m_shell->menu()->findBar()->findField());
        }
        // Escape closes a window; an open popover goes first.
        if (window == About || window == Installer || button == "browserOutputButton") {
            QVERIFY(activate(w));
            if (window == PrefsPaths) {
                prefs()->helpButton->click();
                QVERIFY(prefs()->popover->isShown());
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
                QVERIFY(!prefs()->popover->isShown() && w->isVisible());
            }
            QTest::keyClick(w, Qt::Key_Escape);
            QVERIFY(!w->isVisible());
        }
    }

    // The preference pages are page tabs, the one shown selected; choosing
    // one unchooses the other.
    void preferencePagesAreTabs()
    {
        QWidget *window = open(PrefsPaths);
        QList<QAccessibleInterface *> tabs;
        for (QAction *page : {prefs()->toolbarPaths, prefs()->toolbarSwitch}) {
            QWidget *button = window->findChild<QToolBar *>()->widgetForAction(page);
            tabs << accessible(button);
            QCOMPARE(tabs.last()->role(), QAccessible::PageTab);
            QCOMPARE(tabs.last()->text(QAccessible::Name), page->text().remove('&'));
        }
        const auto selected = [&tabs] {
            return QList<bool>{bool(tabs.at(0)->state().selected),
                               bool(tabs.at(1)->state().selected)};
        };
        QCOMPARE(selected(), QList<bool>({true, false}));
        tabs.at(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(prefs()->switchView->isVisible() && !prefs()->pathsView->isVisible());
        QCOMPARE(selected(), QList<bool>({false, true}));
        tabs.at(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(prefs()->pathsView->isVisible());
        QCOMPARE(selected(), QList<bool>({true, false}));
    }

    // "Missing" and anything else coloured stays readable on light and dark
    // palettes alike, in the installer also after a change back to the
    // standard palette.
    void warningTextIsReadable_data()
    {
        TestSupport::columns<QRgb, QRgb, QRgb>({"window", "base", "text"});
        QTest::newRow("light") << 0xefefefu << 0xffffffu << 0x000000u;
        QTest::newRow("dark") << 0x2d2d2du << 0x1e1e1eu << 0xeeeeeeu;
        QTest::newRow("mid grey") << 0xa0a0a4u << 0x808080u << 0x000000u;
    }
    void warningTextIsReadable()
    {
        QFETCH(QRgb, window);
        QFETCH(QRgb, base);
        QFETCH(QRgb, text);
        QPalette palette{QColor(window)};
        palette.setColor(QPalette::Base, QColor(base));
        palette.setColor(QPalette::Text, QColor(text));
        const QColor warning = Contrast::warningText(palette);
        QVERIFY(Contrast::ratio(warning, QColor(base)) >= Contrast::MinimumTextRatio);
        QVERIFY(warning.red() > warning.green()); // still reads as a warning
        QVERIFY(qFuzzyCompare(Contrast::ratio(Qt::black, Qt::white), 21.0));

        QApplication::setPalette(palette);
        auto *table = open(Installer)->findChild<QTableWidget *>();
        for (const QPalette &now : {palette, QPalette()}) {
            QApplication::setPalette(now);
            const QColor tableBase = table->palette().color(QPalette::Base);
            const auto missing = table->findItems("Missing", Qt::MatchExactly);
            QVERIFY(!missing.isEmpty());
            for (QTableWidgetItem *status : missing)
                QVERIFY(Contrast::ratio(status->foreground().color(), tableBase)
                        >= Contrast::MinimumTextRatio);
        }
    }

    void mnemonics_data()
    {
        TestSupport::columns<QStringList, QStringList>({"labels", "marked"});
        const auto row = [](const char *name, QStringList labels, QStringList marked) {
            QTest::newRow(name) << labels << marked;
        };
        row("word starts first", {"Hide Helper", "Hide Others"}, {"&Hide Helper", "Hide &Others"});
        row("then any free letter", {"Select", "Select", "OK"}, {"&Select", "S&elect", "&OK"});
        row("case-insensitive, digits count", {"a", "A", "1 a"}, {"&a", "A", "&1 a"});
        row("kept marks reserve their letter", {"Copy", "&Close"}, {"C&opy", "&Close"});
        row("literal ampersand, none left", {"Find & Replace", "?"}, {"&Find && Replace", "?"});
    }
    void mnemonics()
    {
        QFETCH(QStringList, labels);
        QFETCH(QStringList, marked);
        QCOMPARE(Mnemonics::assign(labels), marked);
        QCOMPARE(Mnemonics::assign(marked), marked); // applying again changes nothing
        for (int i = 0; i < labels.size(); ++i)
            QCOMPARE(Mnemonics::strip(marked.at(i)), Mnemonics::strip(labels.at(i)));
    }

    // Last, since it runs the application to its end: Quit answers while a
    // first-launch sheet is open and leaves that sheet's setting as it was,
    // so the sequence comes back at the next start.
    void quitWhileASheetIsOpen()
    {
        const QString key = SettingsKeys::FirstLaunch;
        QWidget *sheet = open(FirstLaunchSheet);
        const QVariant before = store().persisted().value(key);
        QTimer guard; // a Quit that does not answer fails instead of hanging
        guard.callOnTimeout(qApp, [] { QCoreApplication::exit(1); });
        guard.start(20000);
        QTimer::singleShot(0, sheet, [this, sheet] {
            QVERIFY(activate(sheet));
            QTest::keyClick(sheet, Qt::Key_Q, Qt::ControlModifier);
        });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(store().intValue(key), 1);
        QCOMPARE(store().persisted().value(key), before);
    }

private:
    static SettingsStore &store() { return SettingsStore::standard(); }
    static QAccessibleInterface *accessible(QObject *object)
    {
        return QAccessible::queryAccessibleInterface(object);
    }
    PrefsController *prefs() const { return m_shell->prefsController(); }
    Ui::MainWindow *ui() const { return m_shell->window()->ui(); }
    QString agentFolder() const { return TestSupport::homeDir() + "/.config/autostart"; }
    bool activate(QWidget *w)
    {
        w->raise();
        w->activateWindow();
        return QTest::qWaitFor([w] { return QApplication::activeWindow() == w; });
    }

    QWidget *open(Window window)
    {
        if (window == StatusbarMenu) {
            m_companion = std::make_unique<StatusbarCompanion>(
                "org.zelmor.test.a11y", Bundle::mainBundlePath(), StatusbarOptions{false, true});
            m_companion->menu()->popup(QPoint(10, 10));
            return m_companion->menu();
        }
        if (window == Installer) { // nothing on the search path: every component is missing
            m_installer = std::make_unique<InstallerWindow>(
                ComponentChecks::Platform::Debian, m_emptyDir.path(), "/nonexistent/cmake");
            QSignalSpy checked(m_installer.get(), &InstallerWindow::checksFinished);
            m_installer->show();
            return checked.wait(20000) ? m_installer.get() : nullptr;
        }
        const bool sheets =
            window == FirstLaunchSheet || window == WizardSheet || window == WizardHint;
        store().setObject(SettingsKeys::FirstLaunch, sheets ? 1 : 0);
        m_shell = std::make_unique<ApplicationShell>();
        m_shell->start();
        if (!QSignalSpy(m_shell.get(), &ApplicationShell::launchFinished).wait())
            return nullptr;
        switch (window) {
        case Main:
            ui()->popupSelection->setCurrentIndex(2); // an update, which finds nothing to update
            ui()->menuFind->trigger();
            return m_shell->window();
        case PrefsPaths:
        case PrefsSwitches:
            ui()->menuPrefs->trigger();
            if (window == PrefsSwitches && activate(prefs()->window())) // Ctrl+Page Down turns
                QTest::keyClick(prefs()->window(), Qt::Key_PageDown, Qt::ControlModifier);
            return prefs()->window();
        case FirstLaunchSheet:
            return m_shell->delegate()->firstLaunchWindow;
        case WizardSheet:
            m_shell->delegate()->closeFirstLaunch();
            return m_shell->delegate()->wizardWindow;
        case WizardHint:
            return m_shell->delegate()->tryWizardPopover;
        case About:
            ui()->menuAbout->trigger();
            return m_shell->aboutController()->window();
        default: // Alert
            m_alert = new AlertSheet(m_shell->window());
            m_alert->setMessageText("Notice");
            m_alert->setInformativeText("Something is in the way.");
            for (const char *title : {"Keep", "Replace", "Cancel"})
                m_alert->addButtonWithTitle(title);
            m_alert->beginSheet(m_shell->window(), [](int) {});
            return m_alert;
        }
    }

    std::unique_ptr<ApplicationShell> m_shell;
    std::unique_ptr<InstallerWindow> m_installer;
    std::unique_ptr<StatusbarCompanion> m_companion;
    QPointer<AlertSheet> m_alert;
    int m_wizardHints = 0;
    QTemporaryDir m_emptyDir;
    QTemporaryDir m_bundle;
};

ZELMOR_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
