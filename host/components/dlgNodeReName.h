#pragma once

#include "host/components/Export.h"

#include <QDialog>
#include <QString>

class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for a new name of a node. Accepts only names that are legal and free in the project, or the present name.
class KESTRUN_COMPONENTS_EXPORT dlgNodeReName : public QDialog {
    Q_OBJECT

public:
    /// The type key tells what is renamed ("AxisView").
    dlgNodeReName(const QString& projectName, const QString& typeKey, QWidget* parent);
    ~dlgNodeReName() override;

    /// Puts the present name, with an optional extension that stays, into the field.
    void setCurrentName(const QString& name, const QString& extension);
    /// The name that was accepted.
    QString getRenameName() const;

private:
    void onTextChanged(const QString& text);

    QString m_projectName;
    QString m_currentName;
    QString m_extension;
    QLineEdit* m_edit;
    QLabel* m_reason;
    QPushButton* m_ok;
};
