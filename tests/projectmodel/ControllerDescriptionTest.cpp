#include "tests/projectmodel/ProjectFacts.h"

#include "axisdata/AxisConstants.h"
#include "protocol/DiagnosisCodes.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

class ControllerDescriptionTest : public QObject {
    Q_OBJECT

private slots:
    void everyShippedDescriptionReads_data();
    void everyShippedDescriptionReads();
    void everyModelOfTheConstantTablesIsThereAndOneInNeither();
    void everyDiagnosisCodeIsExplained_data();
    void everyDiagnosisCodeIsExplained();
    void theShippedListsDiffer();
    void devicesOfTheShippedModels_data();
    void devicesOfTheShippedModels();
    void aBadDescriptionIsRefusedWithFilePathAndReason_data();
    void aBadDescriptionIsRefusedWithFilePathAndReason();
    void aDescriptionWithoutATotalLimitIsSound();
    void aMissingFileIsNamed();

private:
    static QJsonObject sound();
};

namespace {

QStringList shippedModels()
{
    QStringList models;
    const QFileInfoList files
        = QDir(QStringLiteral(KESTRUN_CONTROLLER_DIR)).entryInfoList({ QStringLiteral("*.json") }, QDir::Files);
    for (const QFileInfo& each : files)
        models.append(each.completeBaseName());
    return models;
}

/// Sets, or with an undefined value removes, what stands at the path.
QJsonValue changed(const QJsonValue& value, const QStringList& path, const QJsonValue& to)
{
    if (path.isEmpty())
        return to;
    const QStringList rest = path.mid(1);
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        const int index = path.first().toInt();
        if (index >= array.size())
            array.append(to);
        else
            array.replace(index, changed(array.at(index), rest, to));
        return array;
    }
    QJsonObject object = value.toObject();
    const QJsonValue member = changed(object.value(path.first()), rest, to);
    if (member.isUndefined())
        object.remove(path.first());
    else
        object.insert(path.first(), member);
    return object;
}

QJsonArray list(std::initializer_list<const char*> texts)
{
    QJsonArray array;
    for (const char* each : texts)
        array.append(QLatin1String(each));
    return array;
}

} // namespace

QJsonObject ControllerDescriptionTest::sound()
{
    return QJsonDocument::fromJson(shippedController(QStringLiteral("KM1_M16")).json()).object();
}

void ControllerDescriptionTest::everyShippedDescriptionReads_data()
{
    QTest::addColumn<QString>("model");
    for (const QString& model : shippedModels())
        QTest::newRow(qPrintable(model)) << model;
}

void ControllerDescriptionTest::everyShippedDescriptionReads()
{
    QFETCH(QString, model);
    const ControllerDescription controller = shippedController(model);
    QCOMPARE(controller.model(), model);
    QVERIFY(!controller.isNull());
    QCOMPARE(controller.axisTypeNames().keys(),
        (QStringList{ AxisTypeEncoder, AxisTypeEtherCAT, AxisTypePulse, AxisTypeVirtual }));
    QCOMPARE(controller.list(QStringLiteral("PulseEncodeMode")).size(), 3);
    QVERIFY(controller.list(QStringLiteral("EncoderEncodeMode")).size() > 2);
    QVERIFY(!controller.list(QStringLiteral("OutputPoint")).isEmpty());
    QVERIFY(!controller.list(QStringLiteral("HightSpeedPlusOutputPoint")).isEmpty());
    QVERIFY(!controller.list(QStringLiteral("ProbelInputPoint")).isEmpty());
    QVERIFY(!controller.list(QStringLiteral("HightSpeedCountInputPoint")).isEmpty());
    QVERIFY(!controller.inputPoints().contains(0));

    const QString lastMode = controller.list(QStringLiteral("EncoderEncodeMode")).last();
    const QStringList signalNames = controller.list(QStringLiteral("Encoder.") + lastMode);
    QCOMPARE(signalNames.size(), 8);
    QVERIFY(signalNames.contains(QStringLiteral("1ms")) && signalNames.contains(QStringLiteral("1us")));
    QStringList modes;
    for (const int number : { 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 33, 34, 35 })
        modes.append(QStringLiteral("Homing_%1").arg(number));
    QCOMPARE(controller.list(QStringLiteral("HomeMode")), modes);
    // A description that is stored with a project reads the same.
    ControllerDescription again;
    QString error;
    QVERIFY2(again.read(controller.json(), QStringLiteral("again"), &error), qPrintable(error));
    QCOMPARE(again.limits(), controller.limits());
}

void ControllerDescriptionTest::everyModelOfTheConstantTablesIsThereAndOneInNeither()
{
    const QStringList models = shippedModels();
    QCOMPARE(models.size(), 13);
    int others = 0;
    for (const QString& model : models)
        others += NV2ModelSet.contains(model) || NV3TModelSet.contains(model) ? 0 : 1;
    QCOMPARE(others, 1);
}

void ControllerDescriptionTest::everyDiagnosisCodeIsExplained_data()
{
    QTest::addColumn<int>("code");
    using namespace Diagnosis;
    for (const int code : { notAllowedInState, notEnabled, notInDebugMode, ownedByOther, unknownAxis,
             targetBeyondSoftLimit, softLimitPositive, softLimitNegative, hardLimitPositive, hardLimitNegative,
             velocityTooHigh, accelerationTooHigh, velocityInvalid, accelerationInvalid, decelerationInvalid,
             jerkInvalid, positionInvalid, followingError, setPositionNotAllowed, ratioOutOfRange, homingMethodUnknown,
             homingSignalMissing, homingTimeout, homingLimit, unitRatioInvalid, emergencyStop, powerLost, driveError,
             causeNotGone, debugTimeout, argumentInvalid, noOutput, axisEnabled, parameterInvalid, axisNumberDoubled,
             limitsCross, tooManyAxes, notConnected, noAnswer, refused, versionDiffers })
        QTest::addRow("code %d", code) << code;
}

void ControllerDescriptionTest::everyDiagnosisCodeIsExplained()
{
    QFETCH(int, code);
    for (const QString& model : shippedModels()) {
        const auto table = shippedController(model).diagnosis(11);
        QVERIFY2(table.contains(static_cast<quint16>(code)), qPrintable(model));
        const DiagnosisEntry entry = table.value(static_cast<quint16>(code));
        for (const char* language : { "en_US", "zh_CN" }) {
            QVERIFY(!entry.name.value(QLatin1String(language)).isEmpty());
            QVERIFY(!entry.text.value(QLatin1String(language)).isEmpty());
            QVERIFY(!entry.remedy.value(QLatin1String(language)).isEmpty());
        }
        QVERIFY(entry.text.value(QStringLiteral("en_US")) != entry.text.value(QStringLiteral("zh_CN")));
    }
}

void ControllerDescriptionTest::theShippedListsDiffer()
{
    const ControllerDescription nv2 = shippedController(QStringLiteral("NV2_H48Q8E"));
    const ControllerDescription nv3 = shippedController(QStringLiteral("NV3T_70Q12"));
    const ControllerDescription km1 = shippedController(QStringLiteral("KM1_M16"));
    for (const char* group : { "PulseEncodeMode", "EncoderEncodeMode", "OutputPoint", "ProbelInputPoint" }) {
        const QString name = QLatin1String(group);
        QVERIFY2(nv2.list(name) != nv3.list(name) && nv3.list(name) != km1.list(name), group);
    }
    QVERIFY(!nv3.list(QStringLiteral("AxisType")).contains(nv3.axisTypeNames().value(AxisTypeEtherCAT)));
    QVERIFY(nv2.list(QStringLiteral("AxisType")).contains(nv2.axisTypeNames().value(AxisTypeEtherCAT)));
}

void ControllerDescriptionTest::devicesOfTheShippedModels_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<int>("pulseOutputs");
    for (const QString& model : shippedModels()) {
        const int count = model.section(QLatin1Char('Q'), 1).remove(QLatin1Char('E')).toInt();
        if (count > 0)
            QTest::newRow(qPrintable(model)) << model << count;
    }
}

void ControllerDescriptionTest::devicesOfTheShippedModels()
{
    QFETCH(QString, model);
    QFETCH(int, pulseOutputs);
    const ControllerDescription controller = shippedController(model);
    QCOMPARE(controller.list(QStringLiteral("AxisPulseOutputDev")).size(), pulseOutputs);
    QCOMPARE(int(controller.limits().value(controller.axisTypeNames().value(AxisTypePulse))), pulseOutputs);
    const int encoders = controller.list(QStringLiteral("AxisEncoderInputDev")).size();
    QVERIFY(encoders >= 2 && encoders <= 6);
}

void ControllerDescriptionTest::aBadDescriptionIsRefusedWithFilePathAndReason_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("to");
    QTest::addColumn<QString>("place");
    const auto row = [](const QByteArray& name, const QByteArray& path, const QJsonValue& to, const QByteArray& place) {
        QTest::newRow(name.constData()) << QString::fromLatin1(path) << to << QString::fromLatin1(place);
    };
    const QJsonValue none(QJsonValue::Undefined);
    for (const char* member : { "model", "axisTypes", "limits", "lists", "inputPoints", "stateTexts", "diagnosis" }) {
        const QByteArray place = QByteArray("/") + member;
        row("without " + QByteArray(member), member, none, place);
        row(QByteArray(member) + " of a wrong type", member, 7, place);
    }
    for (const char* group : { "AxisType", "AxisVirtualInputDev", "AxisVirtualOutputDev", "AxisPulseInputDev",
             "AxisPulseOutputDev", "AxisEncoderInputDev", "AxisEncoderOutputDev", "AxisEtherCATInputDev",
             "AxisEtherCATOutputDev", "PulseEncodeMode", "EncoderEncodeMode", "HightSpeedCountInputPoint",
             "ProbelInputPoint", "HightSpeedPlusOutputPoint", "OutputPoint", "HomeMode" })
        row("without the list " + QByteArray(group), QByteArray("lists\n") + group, none,
            QByteArray("/lists/") + group);
    row("a list that is a text", "lists\nOutputPoint", QStringLiteral("DO01"), "/lists/OutputPoint");
    row("a list with a number", "lists\nOutputPoint\n2", 3, "/lists/OutputPoint/2");
    row("a list with an empty text", "lists\nOutputPoint\n2", QString(), "/lists/OutputPoint/2");
    row("a list with a doubled entry", "lists\nOutputPoint\n2", QStringLiteral("DO01"), "/lists/OutputPoint/2");
    row("a device without pins", "lists\nPort 2.Quadrature", none, "/lists/Port 2.Quadrature");
    row("a device with an empty pin list", "lists\nPort 2.Quadrature", QJsonArray(), "/lists/Port 2.Quadrature");
    row("a device more than pin lists", "lists\nAxisPulseOutputDev\n9", QStringLiteral("Port 5"),
        "/lists/Port 5.Step and direction");
    row("a pulse mode without pins", "lists\nPulseEncodeMode\n9", QStringLiteral("Burst"), "/lists/Port 1.Burst");
    row("an encoder mode without signals", "lists\nEncoder.Up counter", none, "/lists/Encoder.Up counter");
    row("an encoder mode with no signal", "lists\nEncoder.Up counter", QJsonArray(), "/lists/Encoder.Up counter");
    row("pulse axes without a pulse output", "lists\nAxisPulseOutputDev", QJsonArray(), "/lists/AxisPulseOutputDev");
    row("pulse axes without a pulse mode", "lists\nPulseEncodeMode", QJsonArray(), "/lists/PulseEncodeMode");
    row("encoder axes without an encoder", "lists\nAxisEncoderInputDev", QJsonArray(), "/lists/AxisEncoderInputDev");
    row("encoder axes without an encoder mode", "lists\nEncoderEncodeMode", QJsonArray(), "/lists/EncoderEncodeMode");
    row("no axis type at all", "lists\nAxisType", QJsonArray(), "/lists/AxisType");
    row("an axis type without a display name", "lists\nAxisType\n0", QStringLiteral("Axis_Virtual"), "/lists/AxisType");
    row("an offered axis type without a limit", "limits\nEncoder", none, "/lists/AxisType");
    row("two types of one display name", "axisTypes\nAxis_Virtual", QStringLiteral("Encoder"),
        "/axisTypes/Axis_Encoder");
    row("a type without a display name", "axisTypes\nAxis_EtherCAT", none, "/axisTypes/Axis_EtherCAT");
    row("a limit above 255", "limits\nMaxAxis", 256, "/limits/MaxAxis");
    row("a negative limit", "limits\nVirtual", -1, "/limits/Virtual");
    row("a limit that is not whole", "limits\nVirtual", 1.5, "/limits/Virtual");
    row("a limit that is a text", "limits\nVirtual", QStringLiteral("4"), "/limits/Virtual");
    row("a limit of no type", "limits\nGantry", 3, "/limits/Gantry");
    row("homing without method 35", "lists\nHomeMode", list({ "Homing_17" }), "/lists/HomeMode");
    row("no homing method", "lists\nHomeMode", QJsonArray(), "/lists/HomeMode");
    row("a homing method that is none", "lists\nHomeMode\n0", QStringLiteral("Home_17"), "/lists/HomeMode");
    row("an input point with the key 0", "inputPoints\n1\nkey", 0, "/inputPoints/1/key");
    row("two input points with one key", "inputPoints\n1\nkey", 101, "/inputPoints/1/key");
    row("two input points with one name", "inputPoints\n1\nname", QStringLiteral("DI01"), "/inputPoints/1");
    row("an input point without a name", "inputPoints\n1\nname", none, "/inputPoints/1/name");
    row("a probe that is no input point", "lists\nProbelInputPoint\n0", QStringLiteral("DO01"),
        "/lists/ProbelInputPoint");
    row("a preset that is no input point", "lists\nHightSpeedCountInputPoint\n0", QStringLiteral("X"),
        "/lists/HightSpeedCountInputPoint");
    row("a state without a text", "stateTexts\n5", none, "/stateTexts/5");
    row("two states with one text", "stateTexts\n5", QStringLiteral("Stopping"), "/stateTexts/5");
    row("a diagnosis code of 0", "diagnosis\n3\ncode", 0, "/diagnosis/3/code");
    row("a diagnosis code above 16 bits", "diagnosis\n3\ncode", 65536, "/diagnosis/3/code");
    row("two entries with one diagnosis code", "diagnosis\n3\ncode", 1, "/diagnosis/3/code");
    row("a diagnosis entry without a class", "diagnosis\n3\nclass", none, "/diagnosis/3/class");
    row("a diagnosis entry without Chinese", "diagnosis\n3\ntext\nzh_CN", none, "/diagnosis/3/text/zh_CN");
    row("a diagnosis entry without a remedy", "diagnosis\n3\nremedy", none, "/diagnosis/3/remedy");
    row("an empty model name", "model", QString(), "/model");
}

void ControllerDescriptionTest::aBadDescriptionIsRefusedWithFilePathAndReason()
{
    QFETCH(QString, path);
    QFETCH(QJsonValue, to);
    QFETCH(QString, place);
    const QByteArray json = QJsonDocument(changed(sound(), path.split(QLatin1Char('\n')), to).toObject()).toJson();
    ControllerDescription controller = shippedController(QStringLiteral("NV2_H48Q8E"));
    QString error;
    QVERIFY(!controller.read(json, QStringLiteral("bad.json"), &error));
    const QString prefix = QStringLiteral("bad.json: ") + place + QStringLiteral(": ");
    QVERIFY2(error.startsWith(prefix) && error.size() > prefix.size(), qPrintable(error));
    QCOMPARE(controller.model(), QStringLiteral("NV2_H48Q8E"));
}

void ControllerDescriptionTest::aDescriptionWithoutATotalLimitIsSound()
{
    const QJsonValue json
        = changed(sound(), { QStringLiteral("limits"), QStringLiteral("MaxAxis") }, QJsonValue(QJsonValue::Undefined));
    ControllerDescription controller;
    QString error;
    QVERIFY2(controller.read(QJsonDocument(json.toObject()).toJson(), QStringLiteral("f"), &error), qPrintable(error));
    QVERIFY(!controller.limits().contains(QStringLiteral("MaxAxis")));
}

void ControllerDescriptionTest::aMissingFileIsNamed()
{
    ControllerDescription controller;
    QString error;
    QVERIFY(!controller.readFile(QStringLiteral("/no/such.json"), &error));
    QVERIFY(error.startsWith(QLatin1String("/no/such.json: ")));
    QVERIFY(controller.isNull());
}

QTEST_GUILESS_MAIN(ControllerDescriptionTest)
#include "ControllerDescriptionTest.moc"
