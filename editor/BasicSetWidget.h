#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <vector>

class AxisRecord;
class AxisTable;
class PropertyEditorView;

namespace Ui {
class BasicSetWidget;
}

/// First tab of an axis's editor: what kind of axis it is and which devices feed and drive it. Types and devices are
/// shared out among the axes of the project. The type decides which other tabs there are.
class BasicSetWidget : public QWidget {
    Q_OBJECT

public:
    /// The view becomes the parent; the page switches the view's tabs.
    BasicSetWidget(const QString& projectName, quint32 axisId, PropertyEditorView* view);
    ~BasicSetWidget() override;

    /// Rebuilds lists, selections and tab visibility from the record and the other axes.
    void refreshFromModel();

signals:
    /// The user has chosen another type; emitted when the page already shows it.
    void axisTypeChanged();
    void axisInputDeviceChanged();
    void axisOutputDeviceChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onAxisVritualStateChanged(bool checked);
    /// The number is not editable here.
    void onAxisNoChanged(const QString& strValue);
    void onAxisTypeChanged(int index);
    void onAxisInputDevChanged(int index);
    void onAxisOutputDevChanged(int index);

private:
    using Tables = std::vector<AxisTable*>;

    void loadFromModel();
    void connectChoices();
    void disconnectChoices();
    void fillTypes(const AxisRecord& record, const Tables& others, const QString& axisType);
    /// False when the page must stay as it is now, with the choices disconnected.
    bool showType(const AxisRecord& record, const Tables& others, const QString& axisType);
    void showVirtual(const AxisRecord& record);
    bool showPulse(const AxisRecord& record, const Tables& others);
    void showEncoder(const AxisRecord& record, const Tables& others);
    void showEtherCAT(const AxisRecord& record);
    void showTabs(bool documentSetting, bool originReturnSetting, bool onlineDebugSetting);
    Tables otherAxes(const AxisRecord& record) const;

    PropertyEditorView* m_view;
    QString m_projectName;
    quint32 m_axisId;
    std::unique_ptr<Ui::BasicSetWidget> m_ui;
};
