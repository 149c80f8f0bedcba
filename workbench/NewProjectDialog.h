#pragma once

#include <QDialog>

#include <memory>

class ControllerCatalog;
class ControllerDescription;

namespace Ui {
class NewProjectDialog;
}

/// Asks for the controller, the name and the place of a new project. Accepts only a place that is free.
class NewProjectDialog : public QDialog {
    Q_OBJECT

public:
    NewProjectDialog(const ControllerCatalog& catalog, const QString& folder, QWidget* parent = nullptr);
    ~NewProjectDialog() override;

    QString filePath() const;
    const ControllerDescription* controller() const;

    /// What a controller offers, in a few words.
    static QString summary(const ControllerDescription& controller);
    static QString fileEnding() { return QStringLiteral(".kproj"); }

private:
    void chooseFolder();
    void judge();
    QString objection() const;

    const ControllerCatalog& m_catalog;
    std::unique_ptr<Ui::NewProjectDialog> m_ui;
};
