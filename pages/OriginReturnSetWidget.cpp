#include "pages/OriginReturnSetWidget.h"

#include "axisdata/AutoConnectionSilence.h"
#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "axisdata/DoubleValidator.h"
#include "axisdata/PageTeardown.h"
#include "axisdata/RegExpValidator.h"
#include "host/components/DataVerification.h"
#include "host/components/TypeAssistant.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"
#include "host/projectmodel/AbstractProjectModel.h"
#include "pages/HomeFields.h"
#include "pages/HomePicture.h"
#include "pages/HomeSignals.h"
#include "pages/PinCheck.h"

#include <QApplication>
#include <QEvent>
#include <QPixmap>
#include <QPointer>

namespace {

const QString modeListName = QStringLiteral("HomeMode");
const QString modeKey = QStringLiteral("HomeMode");
/// The one mode of an axis without a drive: take the present position.
const QString virtualAxisMode = QStringLiteral("35");

/// The stored mode; one that is not offered is replaced by the first that is. A list without entries changes nothing.
QString offeredMode(const AxisRecord& record, const QStringList& offered)
{
    if (!offered.isEmpty() && !offered.contains(record.text(modeKey)))
        record.set(modeKey, offered.first());
    return record.text(modeKey);
}

} // namespace

OriginReturnSetWidget::OriginReturnSetWidget(const QString& project, unsigned id, QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::OriginReturnSetWidget>()), projectName(project), axisId(id),
      m_parent(parent)
{
    setUpForm();
    loadFromModel();
    updateWidget();
    for (const HomeSignal& row : homeSignals())
        pinButtons.insert(ui.get()->*row.picker, ui.get()->*row.pin);
    for (const HomeSignal& row : homeSignals())
        (ui.get()->*row.picker)->setProperty("styleType", QStringLiteral("littleButton"));
    connectForm();
    describeToFind();
}

OriginReturnSetWidget::~OriginReturnSetWidget()
{
    disconnectControls(*this);
}

void OriginReturnSetWidget::setUpForm()
{
    const AutoConnectionSilence silence({ QByteArrayLiteral("on_combobox_3Changed(QString)") });
    ui->setupUi(this);
}

void OriginReturnSetWidget::connectForm()
{
    connect(ui->comboBox_3, &QComboBox::currentTextChanged, this, &OriginReturnSetWidget::on_combobox_3Changed);
    connect(ui->lineEditPos, &CLineEdit::editFinished, this, &OriginReturnSetWidget::onLineEditPosTextChanged);
    connect(ui->lineEditNeg, &CLineEdit::editFinished, this, &OriginReturnSetWidget::onLineEditNegTextChanged);
    connect(ui->lineEditOrg, &CLineEdit::editFinished, this, &OriginReturnSetWidget::onlineEditOrgTextChanged);
    for (const HomeSignal& row : homeSignals())
        connect(ui.get()->*row.picker, &QToolButton::clicked, this, &OriginReturnSetWidget::onToolButtonClicked);
    connect(ui->lineEdit_7, &QLineEdit::editingFinished, this, &OriginReturnSetWidget::onLineEdit_7textChanged);
    connect(ui->lineEdit_8, &QLineEdit::editingFinished, this, &OriginReturnSetWidget::onLineEdit_8textChanged);
    connect(ui->lineEdit_9, &QLineEdit::editingFinished, this, &OriginReturnSetWidget::onLineEdit_9textChanged);
    connect(ui->lineEdit_10, &QLineEdit::editingFinished, this, &OriginReturnSetWidget::onLineEdit_10textChanged);
}

void OriginReturnSetWidget::describeToFind()
{
    const AxisRecord record(projectName, axisId);
    if (!record)
        return;
    record->setViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), objectName());
    for (const HomeSignal& row : homeSignals())
        record->setViewInfo(row.viewInfoKey, (ui.get()->*row.pin)->objectName());
    const QList<QObject*> children = findChildren<QObject*>();
    for (QObject* child : children)
        child->installEventFilter(this);
    installEventFilter(this);
}

bool OriginReturnSetWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease)
        emit updateFindIndex();
    return QObject::eventFilter(watched, event);
}

void OriginReturnSetWidget::loadFromModel()
{
    {
        const AxisRecord record(projectName, axisId);
        if (!record)
            return;
        loadModes(record);
        for (const HomeField& field : homeFields())
            (ui.get()->*field.edit)->setText(record.text(field.key));
        loadSignals(record);
    }
    const int number = HomePicture::numberOfMode(ui->comboBox_3->currentText());
    ui->label_12->setScaledContents(true);
    ui->label_12->setPixmap(QPixmap(HomePicture::path(number)));
    setUpValidators();
}

void OriginReturnSetWidget::loadModes(const AxisRecord& record)
{
    const QStringList modes = record.list(modeListName);
    ui->comboBox_3->addItems(modes);
    ui->comboBox_3->setCurrentText(offeredMode(record, modes));
}

void OriginReturnSetWidget::loadSignals(const AxisRecord& record)
{
    for (const HomeSignal& row : homeSignals())
        (ui.get()->*row.enable)->setChecked(record.isTrue(row.enableKey));
    for (const HomeSignal& row : homeSignals())
        (ui.get()->*row.pin)->setText(record.text(row.pinKey));
    for (const HomeSignal& row : homeSignals())
        (ui.get()->*row.pin)->hideList();
    if (DataVerification::getInstance().isProgramStyle(ac::AddressStyle)) {
        for (const HomeSignal& row : homeSignals())
            (ui.get()->*row.pin)->setEnableComplete(false);
    }
    for (const HomeSignal& row : homeSignals()) {
        const bool positive = record.isTrue(row.logicKey);
        (ui.get()->*row.positive)->setChecked(positive);
        (ui.get()->*row.negative)->setChecked(!positive);
    }
}

void OriginReturnSetWidget::setUpValidators()
{
    auto* reals = new DoubleValidator(6, this);
    auto* integers = new RegExpValidator(RegExpValidator::decimalPattern(), this);
    for (const HomeField& field : homeFields()) {
        const bool isReal = field.rule.kind == NumberKind::Real;
        (ui.get()->*field.edit)->setValidator(isReal ? static_cast<QValidator*>(reals) : integers);
    }
}

void OriginReturnSetWidget::updateWidget()
{
    {
        const AxisRecord record(projectName, axisId);
        if (!record)
            return;
        const bool isVirtual = record.text(QStringLiteral("AxisType")) == AxisTypeVirtual;
        const QStringList all = record.list(modeListName);
        const QStringList shown = isVirtual ? all.filter(virtualAxisMode, Qt::CaseSensitive) : all;
        disconnect(ui->comboBox_3, &QComboBox::currentTextChanged, this, &OriginReturnSetWidget::on_combobox_3Changed);
        ui->comboBox_3->clear();
        ui->comboBox_3->addItems(shown);
        const QString mode = offeredMode(record, shown);
        ui->comboBox_3->setCurrentText(mode);
        on_combobox_3Changed(mode);
        connect(ui->comboBox_3, &QComboBox::currentTextChanged, this, &OriginReturnSetWidget::on_combobox_3Changed);
        for (const HomeField& field : homeFields())
            (ui.get()->*field.edit)->setEnabled(!isVirtual);
        for (const HomeSignal& row : homeSignals())
            (ui.get()->*row.enable)->setEnabled(!isVirtual);
    }
    const SafeAccore core(projectName.toStdString(), false);
    if (!core)
        return;
    const bool withVariables = core->getProgramStyle() != ac::AddressStyle;
    for (const HomeSignal& row : homeSignals())
        (ui.get()->*row.picker)->setVisible(withVariables);
}

void OriginReturnSetWidget::on_combobox_3Changed(const QString& str)
{
    const AxisRecord record(projectName, axisId);
    if (!record)
        return;
    const QString path = HomePicture::path(HomePicture::numberOfMode(str));
    const QPixmap picture(path);
    // The fitted picture is not used: the label scales what it shows by itself.
    static_cast<void>(picture.scaled(ui->label_12->size(), Qt::KeepAspectRatio));
    if (picture.isNull())
        ui->label_12->setText(path);
    else
        ui->label_12->setPixmap(picture);
    record.set(modeKey, str);
}

void OriginReturnSetWidget::commitField(const HomeField& field)
{
    commitNumber(*(ui.get()->*field.edit), field.rule, field.key, projectName, axisId);
}

void OriginReturnSetWidget::onLineEdit_7textChanged()
{
    commitField(homeFields()[HomeSpeedField]);
}
void OriginReturnSetWidget::onLineEdit_8textChanged()
{
    commitField(homeFields()[HomeAccelerationField]);
}
void OriginReturnSetWidget::onLineEdit_9textChanged()
{
    commitField(homeFields()[HomeCloseSpeedField]);
}
void OriginReturnSetWidget::onLineEdit_10textChanged()
{
    commitField(homeFields()[HomeTimeOutField]);
}

QString OriginReturnSetWidget::focusedPinViewInfo()
{
    const AxisRecord record(projectName, axisId);
    if (!record)
        return {};
    for (const HomeSignal& row : homeSignals()) {
        if ((ui.get()->*row.pin)->hasFocus())
            return record->getViewInfo(row.viewInfoKey, QString());
    }
    return {};
}

bool OriginReturnSetWidget::checkPinText(QString& text)
{
    return ::checkPinText(projectName, text);
}

void OriginReturnSetWidget::commitPin(int signal)
{
    const HomeSignal& row = homeSignals()[static_cast<size_t>(signal)];
    CLineEdit& edit = *(ui.get()->*row.pin);
    const AxisRecord record(projectName, axisId);
    if (!record)
        return;
    QString text = edit.text();
    // A message box lets events through: the page may be gone when it closes.
    const QPointer<CLineEdit> watched(&edit);
    if (checkPinText(text))
        record.set(row.pinKey, text);
    else if (watched)
        edit.setText(record.text(row.pinKey));
}

void OriginReturnSetWidget::onLineEditPosTextChanged()
{
    commitPin(PositiveLimitSignal);
}
void OriginReturnSetWidget::onLineEditNegTextChanged()
{
    commitPin(NegativeLimitSignal);
}
void OriginReturnSetWidget::onlineEditOrgTextChanged()
{
    commitPin(OriginSignal);
}

void OriginReturnSetWidget::onToolButtonClicked(bool)
{
    QString name;
    {
        const AxisRecord record(projectName, axisId);
        if (!record)
            return;
        name = record.axes().project()->name();
    }
    auto* button = qobject_cast<QToolButton*>(sender());
    const QPointer<OriginReturnSetWidget> page(this);
    TypeAssistant picker(name, TypeAssistant::BooleanVariables, QString(), nullptr);
    if (picker.exec() != QDialog::Accepted || picker.chosenTexts.isEmpty() || !page)
        return;
    QLineEdit* edit = pinButtons.value(button, nullptr);
    if (!edit)
        return;
    edit->setText(picker.chosenTexts.first());
    // Into the field and out again: leaving it is what sends a picked text through the same check as a typed one. The
    // window system makes the window active again only after the picker has gone, and an inactive one moves no focus.
    QApplication::setActiveWindow(window());
    edit->setFocus(Qt::OtherFocusReason);
    setFocus(Qt::OtherFocusReason);
}

void OriginReturnSetWidget::enableSignal(int signal, int state)
{
    const HomeSignal& row = homeSignals()[static_cast<size_t>(signal)];
    const bool on = state == Qt::Checked;
    (ui.get()->*row.pin)->setEnabled(on);
    (ui.get()->*row.picker)->setEnabled(on);
    (ui.get()->*row.positive)->setEnabled(on);
    (ui.get()->*row.negative)->setEnabled(on);
    const AxisRecord record(projectName, axisId);
    if (record)
        record.setFlag(row.enableKey, on);
}

void OriginReturnSetWidget::on_checkBox_1_stateChanged(int arg)
{
    enableSignal(PositiveLimitSignal, arg);
}
void OriginReturnSetWidget::on_checkBox_2_stateChanged(int arg)
{
    enableSignal(NegativeLimitSignal, arg);
}
void OriginReturnSetWidget::on_checkBox_3_stateChanged(int arg)
{
    enableSignal(OriginSignal, arg);
}

void OriginReturnSetWidget::setLogic(int signal, bool positive, bool checked)
{
    if (!checked)
        return;
    const AxisRecord record(projectName, axisId);
    if (record)
        record.setFlag(homeSignals()[static_cast<size_t>(signal)].logicKey, positive);
}

void OriginReturnSetWidget::on_radioButton_1_toggled(bool checked)
{
    setLogic(PositiveLimitSignal, true, checked);
}
void OriginReturnSetWidget::on_radioButton_2_toggled(bool checked)
{
    setLogic(PositiveLimitSignal, false, checked);
}
void OriginReturnSetWidget::on_radioButton_3_toggled(bool checked)
{
    setLogic(NegativeLimitSignal, true, checked);
}
void OriginReturnSetWidget::on_radioButton_4_toggled(bool checked)
{
    setLogic(NegativeLimitSignal, false, checked);
}
void OriginReturnSetWidget::on_radioButton_5_toggled(bool checked)
{
    setLogic(OriginSignal, true, checked);
}
void OriginReturnSetWidget::on_radioButton_6_toggled(bool checked)
{
    setLogic(OriginSignal, false, checked);
}
