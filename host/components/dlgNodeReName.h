#pragma once

#include "host/components/Export.h"

#include <QDialog>
#include <QString>

class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for a new name of a node. Accepts only names that are legal and free in the project, or the present name, also
/// in other letters; says why a name is not accepted.
class KESTRUN_COMPONENTS_EXPORT dlgNodeReName : public QDialog {
    Q_OBJECT

public:
    /// The type key tells what is renamed ("AxisView").
    dlgNodeReName(const QString& projectName, const QString& typeKey, QWidget* parent);
    ~dlgNodeReName() override;

    /// Puts the present name into the field. An extension, which may be empty, is shown behind it and stays.
    void setCurrentName(const QString& name, const QString& extension);
    /// The name that was accepted, with the extension; empty before.
    QString getRenameName() const;

    void accept() override;

private:
    void buildForm();
    void onTextChanged(const QString& text);
    /// Why the name cannot be taken, for the user; empty when it can.
    QString objection(const QString& name) const;

    QString m_projectName;
    QString m_currentName;
    QString m_extension;
    QString m_acceptedName;
    QLineEdit* m_edit;
    QLabel* m_extensionLabel;
    QLabel* m_reason;
    QPushButton* m_ok;
};
