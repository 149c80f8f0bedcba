#pragma once

#include "host/communication/ControllerAddress.h"

#include <QDialog>

#include <memory>

class IConfiguration;
class QLineEdit;
class QToolButton;

namespace Ui {
class ConnectDialog;
}

/// Asks where a controller answers and what proves that this client may use it. What was entered last is proposed
/// again, but the token is never kept.
class ConnectDialog : public QDialog {
    Q_OBJECT

public:
    explicit ConnectDialog(IConfiguration& settings, QWidget* parent = nullptr);
    ~ConnectDialog() override;

    ControllerAddress address() const;
    bool isDirectLogin() const;

    /// Remembers what was entered, then closes.
    void accept() override;

private:
    void restore();
    void offerFiles(QToolButton& button, QLineEdit& field, const QString& title);
    /// What speaks against connecting, empty if nothing does.
    QString objection() const;
    void judge();

    IConfiguration& m_settings;
    std::unique_ptr<Ui::ConnectDialog> m_ui;
};
