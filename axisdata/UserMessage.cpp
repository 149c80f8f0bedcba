#include "axisdata/UserMessage.h"

#include <QMessageBox>
#include <QPushButton>

void showInformation(const QString& text)
{
    QMessageBox box(QMessageBox::Information, QObject::tr("Kestrun"), text);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(box.addButton(QObject::tr("OK"), QMessageBox::AcceptRole));
    box.exec();
}
