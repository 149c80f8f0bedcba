#pragma once

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/Export.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

class JsonReader;

/// One entry of a controller's diagnosis table, texts by language ("en_US", "zh_CN").
struct DiagnosisEntry {
    QMap<QString, QString> name;
    QMap<QString, QString> text;
    QMap<QString, QString> remedy;
};

/// What a controller model offers: limits, option lists, input points, texts. A value, read from JSON, checked when it
/// is read; one that reads well is sound.
class KESTRUN_PROJECTMODEL_EXPORT ControllerDescription {
    Q_DECLARE_TR_FUNCTIONS(ControllerDescription)

public:
    /// Reads and checks a description. Returns false and sets the error ("FILE: JSON path: reason") for anything that
    /// is missing, of the wrong type, doubled, or out of range; the object is then unchanged.
    bool read(const QByteArray& json, const QString& fileName, QString* error);
    bool readFile(const QString& path, QString* error);

    bool isNull() const { return m_model.isEmpty(); }
    QString model() const { return m_model; }
    /// The text that was read, for storing it with a project.
    QByteArray json() const { return m_json; }

    QStringList list(const QString& group) const { return m_lists.value(group); }
    QMap<QString, unsigned char> limits() const { return m_limits; }
    QMap<QString, QString> axisTypeNames() const { return m_axisTypeNames; }
    QMap<int, QString> inputPoints() const { return m_inputPoints; }
    QMap<AxisModel::AxisState, QString> stateTexts() const { return m_stateTexts; }
    /// Diagnosis entries of a class, by code.
    QHash<quint16, DiagnosisEntry> diagnosis(int errorClass) const { return m_diagnosis.value(errorClass); }

private:
    void fill(const JsonReader& root);

    QString m_model;
    QByteArray m_json;
    QHash<QString, QStringList> m_lists;
    QMap<QString, unsigned char> m_limits;
    QMap<QString, QString> m_axisTypeNames;
    QMap<int, QString> m_inputPoints;
    QMap<AxisModel::AxisState, QString> m_stateTexts;
    QHash<int, QHash<quint16, DiagnosisEntry>> m_diagnosis;
};
