#include "host/projectmodel/ControllerDescription.h"

#include "host/projectmodel/JsonKeys.h"
#include "host/projectmodel/JsonReader.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace {

QStringList typeWords()
{
    return { QStringLiteral("Axis_Virtual"), QStringLiteral("Axis_Pulse"), QStringLiteral("Axis_Encoder"),
        QStringLiteral("Axis_EtherCAT") };
}

QStringList languages()
{
    return { QStringLiteral("en_US"), QStringLiteral("zh_CN") };
}

QStringList fixedGroups()
{
    return { QStringLiteral("AxisType"), QStringLiteral("AxisVirtualInputDev"), QStringLiteral("AxisVirtualOutputDev"),
        QStringLiteral("AxisPulseInputDev"), QStringLiteral("AxisPulseOutputDev"),
        QStringLiteral("AxisEncoderInputDev"), QStringLiteral("AxisEncoderOutputDev"),
        QStringLiteral("AxisEtherCATInputDev"), QStringLiteral("AxisEtherCATOutputDev"),
        QStringLiteral("PulseEncodeMode"), QStringLiteral("EncoderEncodeMode"),
        QStringLiteral("HightSpeedCountInputPoint"), QStringLiteral("ProbelInputPoint"),
        QStringLiteral("HightSpeedPlusOutputPoint"), QStringLiteral("OutputPoint"), QStringLiteral("HomeMode") };
}

QString oneName(const QString& device, const QString& mode)
{
    return device + QLatin1Char('.') + mode;
}

template <typename Key>
bool hasValue(const QMap<Key, QString>& map, const QString& value)
{
    return std::find(map.begin(), map.end(), value) != map.end();
}

QMap<QString, QString> readTypeNames(const JsonReader& types)
{
    QMap<QString, QString> names;
    const QStringList words = typeWords();
    for (const QString& word : words) {
        const JsonReader type = types.member(word);
        const QString name = type.text();
        if (hasValue(names, name))
            type.fail(ControllerDescription::tr("another type has the display name \"%1\"").arg(name));
        names.insert(word, name);
    }
    return names;
}

QMap<QString, unsigned char> readLimits(const JsonReader& limits, const QStringList& typeNames)
{
    QMap<QString, unsigned char> all;
    const QStringList keys = limits.keys();
    for (const QString& key : keys) {
        const JsonReader limit = limits.member(key);
        if (key != QLatin1String("MaxAxis") && !typeNames.contains(key))
            limit.fail(ControllerDescription::tr("no axis type has this display name"));
        all.insert(key, static_cast<unsigned char>(limit.number(0, 255)));
    }
    return all;
}

QHash<QString, QStringList> readLists(const JsonReader& lists)
{
    QHash<QString, QStringList> all;
    const QStringList groups = fixedGroups() + lists.keys();
    for (const QString& group : groups)
        if (!all.contains(group))
            all.insert(group, lists.member(group).texts());
    return all;
}

QMap<int, QString> readInputPoints(const JsonReader& points)
{
    QMap<int, QString> all;
    const QVector<JsonReader> list = points.elements();
    for (const JsonReader& point : list) {
        const JsonReader key = point.member(QStringLiteral("key"));
        const int number = key.number(1, 65535);
        const QString name = point.member(QStringLiteral("name")).text();
        if (all.contains(number))
            key.fail(ControllerDescription::tr("another point has the key %1").arg(number));
        if (hasValue(all, name))
            point.fail(ControllerDescription::tr("another point has the name \"%1\"").arg(name));
        all.insert(number, name);
    }
    return all;
}

QMap<AxisModel::AxisState, QString> readStateTexts(const JsonReader& states)
{
    QMap<AxisModel::AxisState, QString> all;
    for (int state = AxisModel::Disabled; state <= AxisModel::Homing; ++state) {
        const JsonReader entry = states.member(QString::number(state));
        const QString text = entry.text();
        if (hasValue(all, text))
            entry.fail(ControllerDescription::tr("another state has the text \"%1\"").arg(text));
        all.insert(static_cast<AxisModel::AxisState>(state), text);
    }
    return all;
}

QMap<QString, QString> readTranslations(const JsonReader& texts)
{
    QMap<QString, QString> all;
    const QStringList names = languages();
    for (const QString& language : names)
        all.insert(language, texts.member(language).text());
    return all;
}

QHash<int, QHash<quint16, DiagnosisEntry>> readDiagnosis(const JsonReader& table)
{
    QHash<int, QHash<quint16, DiagnosisEntry>> all;
    const QVector<JsonReader> entries = table.elements();
    for (const JsonReader& entry : entries) {
        const int errorClass = entry.member(QStringLiteral("class")).number(0, 65535);
        const JsonReader codePlace = entry.member(QStringLiteral("code"));
        const auto code = static_cast<quint16>(codePlace.number(1, 65535));
        if (all.value(errorClass).contains(code))
            codePlace.fail(ControllerDescription::tr("another entry of this class has the code %1").arg(code));
        all[errorClass].insert(code,
            { readTranslations(entry.member(QStringLiteral("name"))),
                readTranslations(entry.member(QStringLiteral("text"))),
                readTranslations(entry.member(QStringLiteral("remedy"))) });
    }
    return all;
}

/// The relations between the lists of a description, each checked at the place that breaks it.
class ListChecks {
public:
    ListChecks(const JsonReader& lists, const QHash<QString, QStringList>& all) : m_lists(lists), m_all(all) { }

    void axisTypes(const QMap<QString, QString>& names, const QMap<QString, unsigned char>& limits) const
    {
        const QStringList offered = list("AxisType");
        if (offered.isEmpty())
            place("AxisType").fail(ControllerDescription::tr("the list is empty"));
        for (const QString& type : offered) {
            if (!hasValue(names, type))
                place("AxisType")
                    .fail(ControllerDescription::tr("\"%1\" is no display name of an axis type").arg(type));
            if (!limits.contains(type))
                place("AxisType").fail(ControllerDescription::tr("there is no limit for \"%1\"").arg(type));
        }
        if (offered.contains(names.value(QStringLiteral("Axis_Pulse")))) {
            needEntries("AxisPulseOutputDev");
            needEntries("PulseEncodeMode");
        }
        if (offered.contains(names.value(QStringLiteral("Axis_Encoder")))) {
            needEntries("AxisEncoderInputDev");
            needEntries("EncoderEncodeMode");
        }
    }

    void dependentLists() const
    {
        const QStringList devices = list("AxisPulseOutputDev");
        const QStringList pulseModes = list("PulseEncodeMode");
        for (const QString& device : devices)
            for (const QString& mode : pulseModes)
                needDependent(oneName(device, mode));
        const QStringList encoderModes = list("EncoderEncodeMode");
        for (const QString& mode : encoderModes)
            needDependent(oneName(QStringLiteral("Encoder"), mode));
    }

    void homeModes() const
    {
        static const QRegularExpression word(QStringLiteral("^Homing_[0-9]+$"));
        const QStringList modes = list("HomeMode");
        for (const QString& mode : modes)
            if (!word.match(mode).hasMatch())
                place("HomeMode").fail(ControllerDescription::tr("\"%1\" is no homing method").arg(mode));
        if (!modes.contains(QStringLiteral("Homing_35")))
            place("HomeMode").fail(ControllerDescription::tr("\"Homing_35\", which virtual axes need, is missing"));
    }

    void points(const QMap<int, QString>& inputs) const
    {
        for (const char* group : { "HightSpeedCountInputPoint", "ProbelInputPoint" }) {
            const QStringList names = list(group);
            for (const QString& name : names)
                if (!hasValue(inputs, name))
                    place(group).fail(ControllerDescription::tr("\"%1\" is no input point").arg(name));
        }
    }

private:
    QStringList list(const char* group) const { return m_all.value(QLatin1String(group)); }
    JsonReader place(const char* group) const { return m_lists.member(QLatin1String(group)); }

    void needEntries(const char* group) const
    {
        if (list(group).isEmpty())
            place(group).fail(ControllerDescription::tr("the list is empty"));
    }

    void needDependent(const QString& group) const
    {
        if (m_lists.member(group).isGood() && m_all.value(group).isEmpty())
            m_lists.member(group).fail(ControllerDescription::tr("the list is empty"));
    }

    const JsonReader& m_lists;
    const QHash<QString, QStringList>& m_all;
};

} // namespace

bool ControllerDescription::read(const QByteArray& json, const QString& fileName, QString* error)
{
    QString problem;
    QJsonParseError syntax;
    const QJsonDocument document = QJsonDocument::fromJson(json, &syntax);
    const JsonReader root(document.object(), QString(), &problem);
    ControllerDescription made;
    if (syntax.error != QJsonParseError::NoError)
        problem = ControllerDescription::tr("at byte %1: %2").arg(syntax.offset).arg(syntax.errorString());
    else if (!document.isObject())
        problem = ControllerDescription::tr("/: an object is expected");
    else if (const QString doubled = pathOfDoubledKey(json); !doubled.isEmpty())
        problem = doubled + ControllerDescription::tr(": stands there twice");
    else
        made.fill(root);
    if (!problem.isEmpty()) {
        if (error)
            *error = fileName + QStringLiteral(": ") + problem;
        return false;
    }
    made.m_json = json;
    *this = made;
    return true;
}

bool ControllerDescription::readFile(const QString& path, QString* error)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return read(file.readAll(), path, error);
    if (error)
        *error = path + QStringLiteral(": ") + file.errorString();
    return false;
}

void ControllerDescription::fill(const JsonReader& root)
{
    m_model = root.member(QStringLiteral("model")).text();
    m_axisTypeNames = readTypeNames(root.member(QStringLiteral("axisTypes")));
    m_limits = readLimits(root.member(QStringLiteral("limits")), m_axisTypeNames.values());
    const JsonReader lists = root.member(QStringLiteral("lists"));
    m_lists = readLists(lists);
    m_inputPoints = readInputPoints(root.member(QStringLiteral("inputPoints")));
    m_stateTexts = readStateTexts(root.member(QStringLiteral("stateTexts")));
    m_diagnosis = readDiagnosis(root.member(QStringLiteral("diagnosis")));
    const ListChecks checks(lists, m_lists);
    checks.axisTypes(m_axisTypeNames, m_limits);
    checks.dependentLists();
    checks.homeModes();
    checks.points(m_inputPoints);
}
