#pragma once

#include "host/components/Export.h"

#include <QDialog>
#include <QString>
#include <QStringList>

class QLineEdit;
class QTreeWidget;

/// The variable picker: the project's variables by path, with a filter field. A modal dialog.
class KESTRUN_COMPONENTS_EXPORT TypeAssistant : public QDialog {
    Q_OBJECT

public:
    /// Modes of the picker.
    enum Mode : char { AllVariables = 1, BooleanVariables = 2 };

    /// The preset is the path to start on, or empty.
    TypeAssistant(const QString& projectName, char mode, const QString& preset, QWidget* parent);
    ~TypeAssistant() override;

    /// The chosen paths after exec has returned Accepted; empty when none was chosen.
    QStringList chosenTexts;

private:
    void fill();
    void filter(const QString& text);
    void choose();

    QString m_projectName;
    char m_mode;
    QLineEdit* m_filter;
    QTreeWidget* m_tree;
};
