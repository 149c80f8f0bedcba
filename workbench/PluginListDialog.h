#pragma once

#include <QDialog>

#include <memory>

class PluginManager;

namespace Ui {
class PluginListDialog;
}

/// Shows all libraries of the plug-in folder with what became of them. The user can switch those off that are not to
/// be loaded by force; it takes effect at the next start.
class PluginListDialog : public QDialog {
    Q_OBJECT

public:
    PluginListDialog(const PluginManager& plugins, const QString& language, const QStringList& switchedOff,
        QWidget* parent = nullptr);
    ~PluginListDialog() override;

    /// Package names of the plug-ins that are to stay out of service.
    QStringList switchedOff() const;

private:
    void fill(const PluginManager& plugins, const QString& language, const QStringList& switchedOff);
    void showDetails();

    std::unique_ptr<Ui::PluginListDialog> m_ui;
};
