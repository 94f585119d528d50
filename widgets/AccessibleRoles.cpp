#include "widgets/AccessibleRoles.h"

#include "widgets/Spinner.h"

#include <QAccessibleWidget>

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

QAccessibleInterface *factory(const QString &className, QObject *object)
{
    if (className == QLatin1String("Spinner")) {
        if (auto *spinner = qobject_cast<Spinner *>(object))
            return new SpinnerAccessible(spinner);
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

} // namespace AccessibleRoles
