#pragma once

#include "axisdata/NumberRule.h"

#include <QString>
#include <QWidget>

#include <memory>

class AxisRecord;
class PropertyEditorView;
class QLineEdit;
class QValidator;

namespace Ui {
class DocumentSetWidget;
}

/// Second tab of the axis editor: how user units relate to pulses, with the formulas and figures that explain it. Holds
/// no values of its own: every control is loaded from the record and every edit goes straight into it. A project,
/// sub-model or record that is missing ends any operation silently. Main thread only.
class DocumentSetWidget : public QWidget {
    Q_OBJECT

public:
    /// The project by its name and the axis by the id of its record; both are looked up anew by each operation. The
    /// view becomes the parent.
    DocumentSetWidget(const QString& projectName, quint32 axisId, PropertyEditorView* view);
    ~DocumentSetWidget() override;

    /// Does nothing: no correction made elsewhere touches a key of this page.
    void refreshFromModel();

public slots:
    /// The axis has become one of another type: puts all keys of the page back to their defaults and loads them.
    void axisTypeChanged();

private slots:
    void onCheckBox_ReverseChanged(int state);
    void onPulseCountPerCicleChanged();
    void onCheckBox_decimalDisplayPulseChanged(int state);
    void onRadioChanged(bool ischecked);
    void onRadio_2Changed(bool ischecked);
    void onMoveDistancePerCicleChanged();
    void onMoveDistancePerCicleChanged_useGear();
    void onGearRatioMoleculeChanged();
    void onGearRatioDenominatorChanged();

private:
    using Form = Ui::DocumentSetWidget;

    void connectControls();
    void loadFromModel();
    void loadPictures();
    void loadGear(const AxisRecord& record);
    void loadNumbers(const AxisRecord& record, NumberKind kind, const QValidator* validator);
    void showGear(bool used);
    void setGear(bool used);
    void commit(QLineEdit* Form::*edit);
    void commitPulses();

    std::unique_ptr<Form> ui;
    QString m_projectName;
    quint32 m_axisId;
    PropertyEditorView* m_view;
};
