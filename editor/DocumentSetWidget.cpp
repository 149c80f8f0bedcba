#include "editor/DocumentSetWidget.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "axisdata/DoubleValidator.h"
#include "axisdata/NumberRule.h"
#include "axisdata/PageTeardown.h"
#include "axisdata/RegExpValidator.h"
#include "host/components/PropertyEditorView.h"
#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "ui_DocumentSetWidget.h"

#include <algorithm>

namespace {

using Form = Ui::DocumentSetWidget;

constexpr int highestCount = 2147483647;

/// What a numeric field means.
struct UnitField {
    QLineEdit* Form::*edit;
    QString key;
    NumberRule rule;
    /// Shown, and typed, in decimal or hexadecimal digits, as the record says; the others show the text of their key.
    bool hasDisplay = false;
};

const QVector<UnitField>& unitFields()
{
    static const QVector<UnitField> fields{
        { &Form::lineEdit_PulseCountPerCicle, QStringLiteral("PulseCountPerCircle"),
            { NumberKind::Unsigned, 1, highestCount }, true },
        { &Form::lineEdit_2, QStringLiteral("UnUseGearValue"), { NumberKind::Real, 0.01, 9999999 } },
        { &Form::lineEdit_3, QStringLiteral("UseGearValue"), { NumberKind::Real, 0.01, 9999999 } },
        { &Form::lineEdit_4, QStringLiteral("GearRatioMolecule"), { NumberKind::Unsigned, 1, highestCount } },
        { &Form::lineEdit_5, QStringLiteral("GearRatioParent"), { NumberKind::Unsigned, 1, highestCount } },
    };
    return fields;
}

const UnitField& unitField(QLineEdit* Form::*edit)
{
    const QVector<UnitField>& fields = unitFields();
    const auto row
        = std::find_if(fields.begin(), fields.end(), [edit](const UnitField& field) { return field.edit == edit; });
    Q_ASSERT(row != fields.end());
    return *row;
}

const UnitField& pulseField()
{
    return unitField(&Form::lineEdit_PulseCountPerCicle);
}

// The keys of the switches.

QString reverseKey()
{
    return QStringLiteral("ReverseEnable");
}

QString displayKey()
{
    return QStringLiteral("PulseCountDecOrHex");
}

QString gearKey()
{
    return QStringLiteral("UseGearEnable");
}

} // namespace

DocumentSetWidget::DocumentSetWidget(const QString& projectName, quint32 axisId, PropertyEditorView* view)
    : QWidget(view), ui(std::make_unique<Form>()), m_projectName(projectName), m_axisId(axisId), m_view(view)
{
    ui->setupUi(this);
    loadFromModel();
    connectControls();
}

DocumentSetWidget::~DocumentSetWidget()
{
    disconnectControls(*this);
}

void DocumentSetWidget::connectControls()
{
    using Page = DocumentSetWidget;
    connect(ui->checkBox_Reverse, &QCheckBox::stateChanged, this, &Page::onCheckBox_ReverseChanged);
    connect(ui->lineEdit_PulseCountPerCicle, &QLineEdit::editingFinished, this, &Page::onPulseCountPerCicleChanged);
    connect(
        ui->checkBox_decimalDisplayPulse, &QCheckBox::stateChanged, this, &Page::onCheckBox_decimalDisplayPulseChanged);
    connect(ui->radioButton_unUsedGear, &QRadioButton::toggled, this, &Page::onRadioChanged);
    connect(ui->radioButton_useGearSet, &QRadioButton::toggled, this, &Page::onRadio_2Changed);
    connect(ui->lineEdit_2, &QLineEdit::editingFinished, this, &Page::onMoveDistancePerCicleChanged);
    connect(ui->lineEdit_3, &QLineEdit::editingFinished, this, &Page::onMoveDistancePerCicleChanged_useGear);
    connect(ui->lineEdit_4, &QLineEdit::editingFinished, this, &Page::onGearRatioMoleculeChanged);
    connect(ui->lineEdit_5, &QLineEdit::editingFinished, this, &Page::onGearRatioDenominatorChanged);
}

void DocumentSetWidget::refreshFromModel() { }

void DocumentSetWidget::axisTypeChanged()
{
    blockSignals(true);
    {
        const AxisRecord record(m_projectName, m_axisId);
        if (!record)
            return; // signals stay blocked: this page has nothing left to tell
        for (auto entry = AxisUnitDefaults.begin(); entry != AxisUnitDefaults.end(); ++entry)
            record.set(entry.key(), entry.value());
    }
    loadFromModel();
    blockSignals(false);
}

void DocumentSetWidget::loadFromModel()
{
    loadPictures();
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    ui->checkBox_Reverse->setChecked(record.isTrue(reverseKey()));
    const bool decimal = record.isTrue(displayKey());
    ui->checkBox_decimalDisplayPulse->setChecked(decimal);
    // Called by hand too: in the first load the check box is not connected yet.
    onCheckBox_decimalDisplayPulseChanged(decimal ? Qt::Checked : Qt::Unchecked);
    loadGear(record);
    loadNumbers(record, NumberKind::Real, new DoubleValidator(6, this));
    loadNumbers(record, NumberKind::Unsigned, new RegExpValidator(RegExpValidator::decimalPattern(), this));
}

void DocumentSetWidget::loadPictures()
{
    const auto* const cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
    if (!cookies)
        return;
    const QString light = Solution::ThemeName::light();
    const QString theme = cookies->value(Solution::ConfigKey::theme(), light).toString();
    const bool isLight = theme.compare(light, Qt::CaseInsensitive) == 0;
    const QString path = isLight ? QStringLiteral(":/images/default/workbench_%1.jpg")
                                 : QStringLiteral(":/images/dark/workbench_%1.jpg");
    ui->label_18->setPixmap(QPixmap(path.arg(1)));
    ui->label_18->setScaledContents(true);
    ui->label_32->setPixmap(QPixmap(path.arg(2)));
    ui->label_32->setScaledContents(true);
}

void DocumentSetWidget::loadGear(const AxisRecord& record)
{
    const bool used = record.isTrue(gearKey());
    ui->radioButton_unUsedGear->setChecked(!used);
    ui->radioButton_useGearSet->setChecked(used);
    showGear(used);
}

void DocumentSetWidget::loadNumbers(const AxisRecord& record, NumberKind kind, const QValidator* validator)
{
    const auto isOfKind = [kind](const UnitField& field) { return !field.hasDisplay && field.rule.kind == kind; };
    for (const UnitField& field : unitFields())
        if (isOfKind(field))
            (ui.get()->*field.edit)->setValidator(validator);
    for (const UnitField& field : unitFields())
        if (isOfKind(field))
            (ui.get()->*field.edit)->setText(record.text(field.key));
}

void DocumentSetWidget::showGear(bool used)
{
    ui->lineEdit_2->setEnabled(!used);
    ui->lineEdit_3->setEnabled(used);
    ui->lineEdit_4->setEnabled(used);
    ui->lineEdit_5->setEnabled(used);
}

void DocumentSetWidget::setGear(bool used)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    record.setFlag(gearKey(), used);
    showGear(used);
}

void DocumentSetWidget::commit(QLineEdit* Form::*edit)
{
    const UnitField& field = unitField(edit);
    commitNumber(*(ui.get()->*edit), field.rule, field.key, m_projectName, m_axisId);
}

void DocumentSetWidget::commitPulses()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const UnitField& field = pulseField();
    const int base = record.isTrue(displayKey()) ? 10 : 16;
    NumberRule rule = field.rule;
    rule.kind = base == 10 ? NumberKind::Unsigned : NumberKind::Hexadecimal;
    commitNumber(*(ui.get()->*field.edit), rule,
        { [&] { return QString::number(record.number(field.key), base); },
            [&](const QString& text) { record.set(field.key, QString::number(text.toUInt(nullptr, base), 10)); },
            [&](const QString& key) { return record.text(key); } });
}

void DocumentSetWidget::onCheckBox_ReverseChanged(int state)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (record)
        record.setFlag(reverseKey(), state == Qt::Checked);
}

void DocumentSetWidget::onPulseCountPerCicleChanged()
{
    commitPulses();
}

void DocumentSetWidget::onCheckBox_decimalDisplayPulseChanged(int state)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const bool decimal = state == Qt::Checked;
    const QString& key = pulseField().key;
    ui->label_19->setVisible(!decimal);
    const QString pattern = decimal ? RegExpValidator::decimalPattern() : RegExpValidator::hexadecimalPattern();
    ui->lineEdit_PulseCountPerCicle->setValidator(new RegExpValidator(pattern, this));
    ui->lineEdit_PulseCountPerCicle->setText(decimal ? record.text(key) : QString::number(record.number(key), 16));
    record.setFlag(displayKey(), decimal);
}

void DocumentSetWidget::onRadioChanged(bool ischecked)
{
    if (ischecked)
        setGear(false);
}

void DocumentSetWidget::onRadio_2Changed(bool ischecked)
{
    if (ischecked)
        setGear(true);
}

void DocumentSetWidget::onMoveDistancePerCicleChanged()
{
    commit(&Form::lineEdit_2);
}

void DocumentSetWidget::onMoveDistancePerCicleChanged_useGear()
{
    commit(&Form::lineEdit_3);
}

void DocumentSetWidget::onGearRatioMoleculeChanged()
{
    commit(&Form::lineEdit_4);
}

void DocumentSetWidget::onGearRatioDenominatorChanged()
{
    commit(&Form::lineEdit_5);
}
