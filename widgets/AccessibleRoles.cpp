#include "widgets/AccessibleRoles.h"

#include "widgets/Mnemonics.h"
#include "widgets/Popover.h"
#include "widgets/Spinner.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QLabel>

namespace {

class SpinnerAccessible : public QAccessibleWidget
{
public:
    explicit SpinnerAccessible(Spinner *spinner) : QAccessibleWidget(spinner, QAccessible::ProgressBar)
    {
    }
    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.busy = static_cast<Spinner *>(widget())->isAnimating();
        return s;
    }
};

// A popover is a help balloon named by what it says; it can be pressed like
// a click on it (the wizard hint reacts).
class PopoverAccessible : public QAccessibleWidget
{
public:
    explicit PopoverAccessible(Popover *popover) : QAccessibleWidget(popover, QAccessible::HelpBalloon)
    {
    }
    QString text(QAccessible::Text t) const override
    {
        QString text = QAccessibleWidget::text(t);
        if (t == QAccessible::Name && text.isEmpty()) {
            if (auto *label = widget()->findChild<QLabel *>())
                text = label->text();
        }
        return text;
    }
    // Pressed, it says it was clicked, as a mouse click on it does.
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &actionName) override
    {
        if (actionName == pressAction())
            emit popover()->clicked();
    }

private:
    Popover *popover() const { return static_cast<Popover *>(widget()); }
};

const char *const PageTabProperty = "zelmorPageTab";

class PageTabAccessible : public QAccessibleWidget
{
public:
    explicit PageTabAccessible(QAbstractButton *button)
        : QAccessibleWidget(button, QAccessible::PageTab)
    {
    }
    QString text(QAccessible::Text t) const override
    {
        QString text = QAccessibleWidget::text(t);
        if (t == QAccessible::Name && text.isEmpty())
            text = Mnemonics::strip(button()->text());
        return text;
    }
    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.selectable = true;
        s.selected = button()->isChecked();
        return s;
    }
    QStringList actionNames() const override
    {
        return button()->isEnabled() ? QStringList{pressAction()} : QStringList();
    }
    void doAction(const QString &actionName) override
    {
        if (actionName == pressAction() && button()->isEnabled())
            button()->click();
    }

private:
    QAbstractButton *button() const { return static_cast<QAbstractButton *>(widget()); }
};

QAccessibleInterface *factory(const QString &className, QObject *object)
{
    if (object && object->property(PageTabProperty).toBool()) {
        if (auto *button = qobject_cast<QAbstractButton *>(object))
            return new PageTabAccessible(button);
    }
    if (className == QLatin1String("Popover")) {
        if (auto *popover = qobject_cast<Popover *>(object))
            return new PopoverAccessible(popover);
    } else if (className == QLatin1String("Spinner")) {
        if (auto *spinner = qobject_cast<Spinner *>(object))
            return new SpinnerAccessible(spinner);
    } else if (className == QLatin1String("MessageBar")) {
        // An alert in the window, announced when it appears.
        if (auto *widget = qobject_cast<QWidget *>(object))
            return new QAccessibleWidget(widget, QAccessible::AlertMessage);
    } else if (className == QLatin1String("QWidget")) {
        auto *widget = qobject_cast<QWidget *>(object);
        if (widget && widget->isWindow())
            return new QAccessibleWidget(widget, QAccessible::Window);
    }
    return nullptr;
}

} // namespace

namespace AccessibleRoles {

void install()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory(factory);
}

void markAsPageTab(QAbstractButton *button)
{
    install();
    button->setProperty(PageTabProperty, true);
    // Qt may have made the button's interface while it was being set up;
    // dropped, the next request makes the page tab's.
    if (QAccessibleInterface *made = QAccessible::queryAccessibleInterface(button))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(made));
}

} // namespace AccessibleRoles
