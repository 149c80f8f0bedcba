#include "host/components/SureButton.h"

#include <QDialog>
#include <QPushButton>
#include <QVariant>

QPushButton* makeSureButton(const QString& text, const char* objectName, QDialog* dialog)
{
    auto* button = new QPushButton(text, dialog);
    button->setObjectName(QLatin1String(objectName));
    button->setProperty("styleType", QStringLiteral("sureButton"));
    return button;
}
