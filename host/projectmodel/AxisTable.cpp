#include "host/projectmodel/AxisTable.h"

#include "host/projectmodel/AxisModel.h"

AxisTable::AxisTable(const AxisRecordData& data, AxisModel* model)
    : ModelObject(model), m_model(model), m_data(data) { }

AxisTable::~AxisTable() = default;

quint32 AxisTable::objectId() const
{
    return m_data.id;
}

bool AxisTable::save()
{
    return m_onTrial || m_model->save(*this);
}

bool AxisTable::load()
{
    return m_model->load(*this);
}

QString AxisTable::property(const QString& key, const QString& fallback) const
{
    return m_data.properties.value(key, fallback);
}

bool AxisTable::setProperty(const QString& key, const QString& value)
{
    const auto present = m_data.properties.constFind(key);
    if (present == m_data.properties.constEnd() || *present != value) {
        m_data.properties.insert(key, value);
        changed(QStringLiteral("property"), key);
    }
    return true;
}

QString AxisTable::getViewInfo(const QString& key, const QString& fallback) const
{
    return m_data.viewInfo.value(key, fallback);
}

void AxisTable::setViewInfo(const QString& key, const QString& value)
{
    const auto present = m_data.viewInfo.constFind(key);
    if (present != m_data.viewInfo.constEnd() && *present == value)
        return;
    m_data.viewInfo.insert(key, value);
    changed(QStringLiteral("viewInfo"), key);
}

quint32 AxisTable::id() const
{
    return m_data.id;
}

QString AxisTable::name() const
{
    return m_data.name;
}

QMap<QString, QString> AxisTable::getCompareData() const
{
    QMap<QString, QString> data = m_data.properties;
    for (const QString& own :
        { QStringLiteral("Row"), QStringLiteral("AxisID"), QStringLiteral("AxisNo"), QStringLiteral("Version") })
        data.remove(own);
    data.insert(QStringLiteral("Name"), m_data.name);
    return data;
}

void AxisTable::changed(const QString& type, const QString& param)
{
    if (m_onTrial)
        return;
    const bool first = !modified && !pageBuild;
    if (first)
        modified = true;
    emit dataChanged(this, type, param);
    if (first)
        m_model->recordChanged();
}

void AxisTable::markStored()
{
    m_stored = m_data;
    m_isStored = true;
    m_touched = false;
    modified = false;
}
