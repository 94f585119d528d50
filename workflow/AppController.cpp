#include "workflow/AppController.h"

// Placeholder: filled in by the work on this part of the controller.
#include "app/MainWindow.h"

AppController::AppController(MainWindow *w, QObject *parent) : QObject(parent), window(w) {}

AppController::~AppController() = default;

void AppController::awakeFromNib()
{
}

void AppController::perform()
{
}

void AppController::notifiedForComplete()
{
}

AlertSheet *AppController::showAlertAtWindow(QWidget *, const QString &, const QString &, const QString &, const QString &, const QString &, std::function<void(int)>)
{
    return nullptr;
}

int AppController::selectedTag() const
{
    return 0;
}

void AppController::selectItemWithTag(int)
{
}
