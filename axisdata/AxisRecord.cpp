#include "axisdata/AxisRecord.h"

#include "axisdata/AxisConstants.h"

ProjectAxes::ProjectAxes(const QString& projectName)
    : m_guard(projectName), m_model(m_guard ? qobject_cast<AxisModel*>(m_guard->subModel(axisSubModelName)) : nullptr)
{
}

QStringList ProjectAxes::list(const QString& group) const
{
    QString name = group;
    return m_model ? m_model->getAxisBaseSettingList(name) : QStringList();
}

AxisRecord::AxisRecord(const QString& projectName, quint32 axisId)
    : m_axes(projectName), m_table(m_axes ? m_axes->axisTable(axisId) : nullptr)
{
}

QString AxisRecord::text(const QString& key) const
{
    return m_table->property(key, QString());
}

bool AxisRecord::isTrue(const QString& key) const
{
    return text(key).toUpper() == AxisTrue;
}

bool AxisRecord::isFalse(const QString& key) const
{
    return text(key).toUpper() == AxisFalse;
}

uint AxisRecord::number(const QString& key) const
{
    return text(key).toUInt(nullptr, 10);
}

void AxisRecord::set(const QString& key, const QString& text) const
{
    m_table->setProperty(key, text);
}

void AxisRecord::setFlag(const QString& key, bool on) const
{
    set(key, on ? AxisTrue : AxisFalse);
}

int AxisRecord::position(const QString& key, int listSize) const
{
    const uint stored = number(key);
    if (stored < static_cast<uint>(listSize))
        return static_cast<int>(stored);
    set(key, QStringLiteral("0"));
    return 0;
}
