#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <memory>

class AxisModel;

namespace Ui {
class MotionControlTaskCfg;
}

/// Lets the user choose the cycle time of the motion control task of the host's current project, in microseconds. The
/// choice goes into the axis model, where the project's next save stores it; it cannot be undone.
class MotionControlTaskCfg : public QDialog {
    Q_OBJECT

public:
    explicit MotionControlTaskCfg(QWidget* parent = nullptr);
    ~MotionControlTaskCfg() override;

public slots:
    /// Stores the chosen time if it is another one than at opening, and closes.
    void accept() override;

private:
    void setUpButtons();
    void showCycleTime(const QStringList& choices);

    std::unique_ptr<Ui::MotionControlTaskCfg> m_ui;
    /// The cycle time at opening.
    QString m_cycleTime;
    /// Null when no project could be reached: the dialog then only closes.
    QPointer<AxisModel> m_axisModel;
};
