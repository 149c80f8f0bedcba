#pragma once

#include <QDialog>

#include <memory>

class ControllerCatalog;
class ControllerDescription;

namespace Ui {
class ControllerDialog;
}

/// Asks which controller a project is to be given in place of its present one, and tells what that does.
class ControllerDialog : public QDialog {
    Q_OBJECT

public:
    ControllerDialog(const ControllerCatalog& catalog, const QString& present, QWidget* parent = nullptr);
    ~ControllerDialog() override;

    /// The chosen controller; never the present one after the dialog was accepted.
    const ControllerDescription* controller() const;

private:
    void judge();

    const ControllerCatalog& m_catalog;
    QString m_present;
    std::unique_ptr<Ui::ControllerDialog> m_ui;
};
