#include "editor/BasicSetWidget.h"

#include "ui_BasicSetWidget.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "host/components/PropertyEditorView.h"

#include <QEvent>
#include <QHash>

#include <algorithm>

namespace {

const QString typeKey = QStringLiteral("AxisType");
const QString inputKey = QStringLiteral("InputDevice");
const QString outputKey = QStringLiteral("OutputDevice");
const QString virtualKey = QStringLiteral("VirtualAxis");
const QString encoderInputs = QStringLiteral("AxisEncoderInputDev");
const QString pulseOutputs = QStringLiteral("AxisPulseOutputDev");

uint deviceOf(const AxisTable& table, const QString& key)
{
    return table.property(key, QString()).toUInt(nullptr, 10);
}

/// The whole list, with the entry shown that the key names; a position outside the list shows none.
void showPlain(QComboBox& box, const QStringList& devices, uint position)
{
    box.insertItems(0, devices);
    box.setCurrentIndex(static_cast<int>(position));
}

/// The devices that no other axis of this axis's type holds.
QStringList freeDevices(
    const QStringList& devices, const std::vector<AxisTable*>& others, const QString& axisType, const QString& key)
{
    QStringList free = devices;
    for (const AxisTable* other : others) {
        if (other->property(typeKey, QString()) != axisType)
            continue;
        const uint device = deviceOf(*other, key);
        if (device < static_cast<uint>(devices.size()))
            free.removeOne(devices.at(static_cast<int>(device)));
    }
    return free;
}

/// The position in the full list that the axis holds. Position 0 counts as not chosen yet: the first free device is
/// taken then, also in the record; without a free one the position is -1.
int chosenDevice(const AxisRecord& record, const QString& key, const QStringList& devices, const QStringList& free)
{
    const uint stored = record.number(key);
    if (stored != 0 && stored < static_cast<uint>(devices.size()))
        return static_cast<int>(stored);
    const int chosen = free.isEmpty() ? -1 : devices.indexOf(free.first());
    record.set(key, QString::number(chosen));
    return chosen;
}

void showFree(
    QComboBox& box, const AxisRecord& record, const QString& key, const QStringList& devices, const QStringList& free)
{
    box.insertItems(0, free);
    const int position = chosenDevice(record, key, devices, free);
    box.setCurrentIndex(free.indexOf(devices.value(position)));
}

} // namespace

BasicSetWidget::BasicSetWidget(const QString& projectName, quint32 axisId, PropertyEditorView* view)
    : QWidget(view), m_view(view), m_projectName(projectName), m_axisId(axisId),
      m_ui(std::make_unique<Ui::BasicSetWidget>())
{
    m_ui->setupUi(this);
    m_ui->comboBoxInputDev->installEventFilter(this);
    m_ui->comboBoxOutputDev->installEventFilter(this);
    m_ui->comboBoxAxisType->installEventFilter(this);
    loadFromModel();
    refreshFromModel();
}

BasicSetWidget::~BasicSetWidget() = default;

void BasicSetWidget::loadFromModel()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    m_ui->spinBoxAxisNo->setRange(0, 255);
    m_ui->spinBoxAxisNo->setValue(record.text(QStringLiteral("AxisNo")).toInt());
    m_ui->checkBoxAxisAutoMap->setVisible(false);
    m_ui->checkBoxAxisVritual->setChecked(!record.isFalse(virtualKey));
    connect(m_ui->checkBoxAxisVritual, &QCheckBox::stateChanged, this, &BasicSetWidget::onAxisVritualStateChanged);
}

void BasicSetWidget::connectChoices()
{
    connect(m_ui->comboBoxAxisType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &BasicSetWidget::onAxisTypeChanged);
    connect(m_ui->comboBoxInputDev, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &BasicSetWidget::onAxisInputDevChanged);
    connect(m_ui->comboBoxOutputDev, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &BasicSetWidget::onAxisOutputDevChanged);
}

void BasicSetWidget::disconnectChoices()
{
    disconnect(m_ui->comboBoxAxisType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &BasicSetWidget::onAxisTypeChanged);
    disconnect(m_ui->comboBoxInputDev, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &BasicSetWidget::onAxisInputDevChanged);
    disconnect(m_ui->comboBoxOutputDev, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &BasicSetWidget::onAxisOutputDevChanged);
}

void BasicSetWidget::refreshFromModel()
{
    // Not by a guard that connects again at the end: without a record, and for a pulse axis without a free output, the
    // choices stay without effect until a refresh gets through.
    disconnectChoices();
    m_ui->comboBoxAxisType->clear();
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const Tables others = otherAxes(record);
    const QString axisType = record.text(typeKey);
    fillTypes(record, others, axisType);
    m_ui->comboBoxInputDev->clear();
    m_ui->comboBoxOutputDev->clear();
    if (showType(record, others, axisType))
        connectChoices();
}

BasicSetWidget::Tables BasicSetWidget::otherAxes(const AxisRecord& record) const
{
    Tables tables;
    record.model()->allAxisTables(tables);
    const auto isNone = [&record](const AxisTable* table) { return !table || table == record.table(); };
    tables.erase(std::remove_if(tables.begin(), tables.end(), isNone), tables.end());
    return tables;
}

void BasicSetWidget::fillTypes(const AxisRecord& record, const Tables& others, const QString& axisType)
{
    const QMap<QString, QString> names = record.model()->getAxisTypeNameMap();
    const QMap<QString, unsigned char> limits = record.model()->getMaxAxisNumber();
    QHash<QString, uint> used;
    for (const AxisTable* other : others)
        ++used[names.value(other->property(typeKey, QString()))];
    const QStringList types = record.list(QStringLiteral("AxisType"));
    QStringList offered;
    for (const QString& type : types) {
        // Eight bits: a type that others hold more often than the limit allows wraps and stays offered.
        const auto left = static_cast<quint8>(limits.value(type, 0) - used.value(type, 0));
        if (left != 0)
            offered.append(type);
    }
    m_ui->comboBoxAxisType->insertItems(0, offered);
    m_ui->comboBoxAxisType->setCurrentText(names.value(axisType));
}

bool BasicSetWidget::showType(const AxisRecord& record, const Tables& others, const QString& axisType)
{
    if (axisType == AxisTypePulse)
        return showPulse(record, others);
    if (axisType == AxisTypeVirtual)
        showVirtual(record);
    else if (axisType == AxisTypeEncoder)
        showEncoder(record, others);
    else if (axisType == AxisTypeEtherCAT)
        showEtherCAT(record);
    return true;
}

void BasicSetWidget::showVirtual(const AxisRecord& record)
{
    showPlain(*m_ui->comboBoxInputDev, record.list(QStringLiteral("AxisVirtualInputDev")), record.number(inputKey));
    showPlain(*m_ui->comboBoxOutputDev, record.list(QStringLiteral("AxisVirtualOutputDev")), record.number(outputKey));
    m_ui->comboBoxInputDev->setEnabled(false);
    m_ui->comboBoxOutputDev->setEnabled(false);
    m_ui->checkBoxAxisVritual->setEnabled(false);
    m_ui->checkBoxAxisVritual->setChecked(false);
    showTabs(false, true, true);
}

bool BasicSetWidget::showPulse(const AxisRecord& record, const Tables& others)
{
    const QStringList inputs = record.list(QStringLiteral("AxisPulseInputDev"));
    showPlain(*m_ui->comboBoxInputDev, inputs, static_cast<uint>(record.position(inputKey, inputs.size())));
    const QStringList outputs = record.list(pulseOutputs);
    const QStringList free = freeDevices(outputs, others, AxisTypePulse, outputKey);
    if (free.isEmpty())
        return false;
    showFree(*m_ui->comboBoxOutputDev, record, outputKey, outputs, free);
    m_ui->comboBoxInputDev->setEnabled(false);
    m_ui->comboBoxOutputDev->setEnabled(record.isFalse(virtualKey));
    m_ui->checkBoxAxisVritual->setEnabled(true);
    showTabs(true, true, true);
    return true;
}

void BasicSetWidget::showEncoder(const AxisRecord& record, const Tables& others)
{
    const QStringList inputs = record.list(encoderInputs);
    const QStringList outputs = record.list(QStringLiteral("AxisEncoderOutputDev"));
    showFree(*m_ui->comboBoxInputDev, record, inputKey, inputs, freeDevices(inputs, others, AxisTypeEncoder, inputKey));
    showPlain(*m_ui->comboBoxOutputDev, outputs, static_cast<uint>(record.position(outputKey, outputs.size())));
    m_ui->comboBoxInputDev->setEnabled(true);
    m_ui->checkBoxAxisVritual->setEnabled(false);
    m_ui->checkBoxAxisVritual->setChecked(false);
    m_ui->comboBoxOutputDev->setEnabled(false);
    showTabs(true, false, false);
}

void BasicSetWidget::showEtherCAT(const AxisRecord& record)
{
    showPlain(*m_ui->comboBoxInputDev, record.list(QStringLiteral("AxisEtherCATInputDev")), record.number(inputKey));
    showPlain(*m_ui->comboBoxOutputDev, record.list(QStringLiteral("AxisEtherCATOutputDev")), record.number(outputKey));
    m_ui->comboBoxInputDev->setEnabled(true);
    m_ui->comboBoxOutputDev->setEnabled(false);
}

void BasicSetWidget::showTabs(bool documentSetting, bool originReturnSetting, bool onlineDebugSetting)
{
    m_view->setTabVisible(tr("document setting"), documentSetting);
    m_view->setTabVisible(tr("origin return setting"), originReturnSetting);
    m_view->setTabVisible(tr("online debug setting"), onlineDebugSetting);
}

bool BasicSetWidget::eventFilter(QObject* watched, QEvent* event)
{
    // What the other axes hold may have changed since the lists were built.
    if (event->type() == QEvent::MouseButtonPress)
        refreshFromModel();
    return QWidget::eventFilter(watched, event);
}

void BasicSetWidget::onAxisVritualStateChanged(bool checked)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    record.setFlag(virtualKey, checked);
    m_ui->comboBoxOutputDev->setEnabled(!checked && record.text(typeKey) == AxisTypePulse);
}

void BasicSetWidget::onAxisNoChanged(const QString& strValue)
{
    Q_UNUSED(strValue)
}

void BasicSetWidget::onAxisTypeChanged(int index)
{
    Q_UNUSED(index)
    {
        const AxisRecord record(m_projectName, m_axisId);
        if (!record)
            return;
        const QString name = m_ui->comboBoxAxisType->currentText();
        record.set(typeKey, record.model()->getAxisTypeNameMap().key(name));
    }
    refreshFromModel();
    emit axisTypeChanged();
}

void BasicSetWidget::onAxisInputDevChanged(int index)
{
    Q_UNUSED(index)
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const int position = record.list(encoderInputs).indexOf(m_ui->comboBoxInputDev->currentText());
    record.set(inputKey, QString::number(position));
    emit axisInputDeviceChanged();
}

void BasicSetWidget::onAxisOutputDevChanged(int index)
{
    Q_UNUSED(index)
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return;
    const int position = record.list(pulseOutputs).indexOf(m_ui->comboBoxOutputDev->currentText());
    record.set(outputKey, QString::number(position));
    emit axisOutputDeviceChanged();
}
