#pragma once

#include <QString>

class QDialog;
class QPushButton;

/// A button that ends a dialog, in the look that the themes have for it. Owned by the dialog.
QPushButton* makeSureButton(const QString& text, const char* objectName, QDialog* dialog);
