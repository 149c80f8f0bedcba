#include "tests/support/ModalDialogDriver.h"

#include <QDialog>
#include <QMessageBox>
#include <QPointer>

ModalDialogDriver::ModalDialogDriver() = default;

ModalDialogDriver::ModalDialogDriver(Script script)
{
    next(std::move(script));
}

void ModalDialogDriver::next(Script script)
{
    m_scripts.append(std::move(script));
}

bool ModalDialogDriver::wants(QWidget* window) const
{
    return qobject_cast<QDialog*>(window) && !qobject_cast<QMessageBox*>(window) && window->isModal();
}

void ModalDialogDriver::handle(QWidget* window)
{
    ++count;
    const QPointer<QDialog> dialog(qobject_cast<QDialog*>(window));
    if (!m_scripts.isEmpty())
        m_scripts.takeFirst()(dialog);
    if (dialog && dialog->isVisible())
        dialog->reject();
}
