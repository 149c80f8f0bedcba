#include "axisdata/PageTeardown.h"

#include <QObject>

void disconnectControls(QObject& page)
{
    const QList<QObject*> controls = page.findChildren<QObject*>();
    for (QObject* control : controls)
        control->disconnect(&page);
}
