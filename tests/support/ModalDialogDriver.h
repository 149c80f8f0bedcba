#pragma once

#include "tests/support/ShownWindowFilter.h"

#include <QVector>

#include <functional>

class QDialog;

/// Runs functions on modal dialogs that are not message boxes, one each in the order given, and notes how many came.
/// A dialog that its function leaves open, or that has no function, is rejected, so that no test hangs.
class ModalDialogDriver : public ShownWindowFilter {
    Q_OBJECT

public:
    using Script = std::function<void(QDialog*)>;

    ModalDialogDriver();
    explicit ModalDialogDriver(Script script);

    /// For the next dialog that has no function yet.
    void next(Script script);

    /// Number of dialogs so far.
    int count = 0;

protected:
    bool wants(QWidget* window) const override;
    void handle(QWidget* window) override;

private:
    QVector<Script> m_scripts;
};
