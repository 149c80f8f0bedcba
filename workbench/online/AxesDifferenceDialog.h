#pragma once

#include "host/communication/AxesComparison.h"

#include <QDialog>

#include <memory>

namespace Ui {
class AxesDifferenceDialog;
}

/// Shows in what the axes of project and controller differ. Accepted: the project's are to be taken over.
class AxesDifferenceDialog : public QDialog {
    Q_OBJECT

public:
    /// The controller is named by its address.
    AxesDifferenceDialog(
        const QVector<AxisDifference>& differences, const QString& controller, QWidget* parent = nullptr);
    ~AxesDifferenceDialog() override;

private:
    void addRow(const AxisDifference& difference);

    std::unique_ptr<Ui::AxesDifferenceDialog> m_ui;
};
