#pragma once

#include "host/projectmodel/AxisRecordData.h"
#include "host/projectmodel/ModelObject.h"

#include <QMap>
#include <QString>

class AxisModel;

/// One axis of a project: a flat map of text keys to text values, a name and a stable id. The keys are those of
/// sdk/AxisDefaults.h; any other key is accepted too. Owned by its AxisModel. Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT AxisTable : public ModelObject {
    Q_OBJECT

public:
    ~AxisTable() override;

    quint32 objectId() const override;
    /// False too, and nothing reported, when a project that can only be read has no change of the user's here.
    bool save() override;
    /// The name and the numbers that the model has given ("AxisNo", "AxisID") stay: they are changed in memory, by
    /// other means than the record's editor.
    bool load() override;

    /// The value of the key, else the fallback.
    QString property(const QString& key, const QString& fallback) const;
    /// Stores the text in memory and raises dataChanged; an equal text changes nothing. Always true.
    bool setProperty(const QString& key, const QString& value);

    /// A second map, which names controls of the editor for find. Stored with the record.
    QString getViewInfo(const QString& key, const QString& fallback) const;
    void setViewInfo(const QString& key, const QString& value);
    QMap<QString, QString> allViewInfo() const { return m_data.viewInfo; }

    quint32 id() const;
    QString name() const;

    /// What compares between two projects: all keys but "Row", "AxisID", "AxisNo" and "Version", and the name under
    /// "Name".
    QMap<QString, QString> getCompareData() const;
    /// All keys with their values.
    QMap<QString, QString> allProperties() const { return m_data.properties; }

    /// Set by the editor while it builds its pages. What is written meanwhile is no change of the user's and does not
    /// set the modified flag; the save that follows stores it.
    bool pageBuild = false;

private:
    friend class AxisModel;
    friend class AxisTrial;
    AxisTable(const AxisRecordData& data, AxisModel* model);
    void changed(const QString& type, const QString& param);
    void markStored();

    AxisModel* m_model;
    AxisRecordData m_data;
    /// What the store holds of this record; meaningful while m_isStored.
    AxisRecordData m_stored;
    bool m_isStored = false;
    /// Changed by the model, not by the user: a new name or number, a return after removal.
    bool m_touched = false;
    bool m_onTrial = false;
    /// Place among the records: by rows at opening, by creation after it.
    int m_sequence = 0;
};
