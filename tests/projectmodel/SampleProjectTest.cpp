#include "tests/projectmodel/ProjectFacts.h"

#include "examples/SampleProject.h"
#include "host/projectmodel/SourceModel.h"
#include "resources/HomingMethods.h"
#include "sdk/AxisDefaults.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

class SampleProjectTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void theLineHasNamedAxesOfAllFourTypes();
    void positionsAndPointsFitTheController();
    void noDeviceServesTwoAxes();
    void theSourcesDeclareTheSignalsThatTheAxesName();
    void everyAxisNamesTheControlsOfItsPins();
    void everyAxisHasTheSignalsThatItsHomingNeeds();
    void settingsAndCycleTimeAreThere();
    void aBadFolderGivesAMessageAndNoFile_data();
    void aBadFolderGivesAMessageAndNoFile();
    void anOlderResultIsReplaced();

private:
    static QString line() { return QStringLiteral(KESTRUN_SOURCE_DIR "/examples/packaging-line"); }
    static QString controllers() { return QStringLiteral(KESTRUN_CONTROLLER_DIR); }

    QTemporaryDir m_folder;
    ProjectModel* m_project = nullptr;
};

void SampleProjectTest::initTestCase()
{
    const QString path = m_folder.filePath(QStringLiteral("share/packaging-line.kproj"));
    QString error;
    QVERIFY2(makeSampleProject(line(), controllers(), path, &error), qPrintable(error));
    m_project = ProjectModelManager::instance()->openProject(path, &error);
    QVERIFY2(m_project, qPrintable(error));
}

void SampleProjectTest::cleanupTestCase()
{
    ProjectModelManager::instance()->closeProject(m_project);
}

void SampleProjectTest::theLineHasNamedAxesOfAllFourTypes()
{
    QCOMPARE(m_project->controller().model(), QStringLiteral("NV3T_70Q12E"));
    const QStringList names = namesOf(m_project->axisModel());
    QVERIFY(names.size() >= 6 && names.size() <= 8);
    const QStringList types = valuesOf(m_project->axisModel(), QStringLiteral("AxisType"));
    for (const char* type : { "Axis_Virtual", "Axis_Pulse", "Axis_Encoder", "Axis_EtherCAT" })
        QVERIFY2(types.contains(QLatin1String(type)), type);
}

void SampleProjectTest::positionsAndPointsFitTheController()
{
    const ControllerDescription& controller = m_project->controller();
    const QHash<QString, QString> lists{
        { QStringLiteral("Axis_Pulse"), QStringLiteral("AxisPulseOutputDev") },
        { QStringLiteral("Axis_Encoder"), QStringLiteral("AxisEncoderInputDev") },
        { QStringLiteral("Axis_EtherCAT"), QStringLiteral("AxisEtherCATInputDev") },
    };
    for (const AxisTable* each : recordsOf(m_project->axisModel())) {
        const QString type = each->property(QStringLiteral("AxisType"), QString());
        const QString key
            = type == QLatin1String("Axis_Pulse") ? QStringLiteral("OutputDevice") : QStringLiteral("InputDevice");
        if (lists.contains(type))
            QVERIFY2(each->property(key, QString()).toInt() < controller.list(lists.value(type)).size(),
                qPrintable(each->name()));
        // A page that is opened puts another one into its place, and the axis differs from what was delivered.
        QVERIFY(controller.list(QStringLiteral("HomeMode"))
                    .contains(each->property(QStringLiteral("HomeMode"), QString())));
        for (const char* point : { "Probe1", "Probe2", "Preset" }) {
            const int number = each->property(QLatin1String(point), QString()).toInt();
            QVERIFY(number == 0 || controller.inputPoints().contains(number));
        }
    }
}

void SampleProjectTest::noDeviceServesTwoAxes()
{
    QStringList devices;
    for (const AxisTable* each : recordsOf(m_project->axisModel())) {
        const QString type = each->property(QStringLiteral("AxisType"), QString());
        if (type == QLatin1String("Axis_Pulse"))
            devices.append(each->property(QStringLiteral("OutputDevice"), QString()));
    }
    QVERIFY(!devices.contains(QStringLiteral("0")));
    QCOMPARE(devices.removeDuplicates(), 0);
}

void SampleProjectTest::theSourcesDeclareTheSignalsThatTheAxesName()
{
    const SourceModel* sources = m_project->sourceModel();
    QVERIFY(sources->sourceNames().size() >= 6);
    QStringList pins;
    for (const AxisTable* each : recordsOf(m_project->axisModel()))
        for (const char* signal : { "PosLimit", "NegLimit", "OrgSignal" }) {
            const QString enable = qstrcmp(signal, "NegLimit") == 0 ? QStringLiteral("NegsLimitEnable")
                                                                    : QLatin1String(signal) + QStringLiteral("Enable");
            if (each->property(enable, QString()) == QLatin1String("TRUE"))
                pins.append(each->property(QLatin1String(signal) + QStringLiteral("Pin"), QString()));
        }
    QVERIFY(pins.size() >= 5);
    for (const QString& pin : pins) {
        if (pin.startsWith(QLatin1Char('%')))
            continue;
        const QStringList path = pin.split(QLatin1Char('.'));
        QVERIFY(path.size() >= 2);
        const QString text = sources->source(path.first());
        QVERIFY2(text.contains(QStringLiteral("PROGRAM ") + path.first()), qPrintable(pin));
        QVERIFY2(text.contains(path.at(1) + QStringLiteral(" : ")), qPrintable(pin));
    }
}

void SampleProjectTest::everyAxisNamesTheControlsOfItsPins()
{
    for (const AxisTable* each : recordsOf(m_project->axisModel())) {
        for (const char* key : { "OriginReturnSetWidgetObjectName", "LineEditPosObjectName", "LineEditNegObjectName",
                 "LineEditOrgObjectName" }) {
            const QString name = each->getViewInfo(QLatin1String(key), QString());
            // The key says which control it is, but for the case of the first letter.
            QVERIFY2(!name.isEmpty() && QString::fromLatin1(key).startsWith(name, Qt::CaseInsensitive), key);
        }
    }
}

void SampleProjectTest::everyAxisHasTheSignalsThatItsHomingNeeds()
{
    const auto isOn = [](const AxisTable* axis, homing::Signal signal) {
        const char* key = signal == homing::Signal::NegativeLimit ? "NegsLimitEnable"
            : signal == homing::Signal::PositiveLimit             ? "PosLimitEnable"
            : signal == homing::Signal::HomeSwitch                ? "OrgSignalEnable"
                                                                  : nullptr;
        return !key || axis->property(QLatin1String(key), QString()) == QLatin1String("TRUE");
    };
    int checked = 0;
    for (const AxisTable* each : recordsOf(m_project->axisModel())) {
        for (const homing::Method& method : homing::methods()) {
            if (each->property(QStringLiteral("HomeMode"), QString()) != QStringLiteral("Homing_%1").arg(method.number))
                continue;
            ++checked;
            for (const homing::Signal signal : method.required)
                QVERIFY2(isOn(each, signal), qPrintable(each->name()));
        }
    }
    QVERIFY(checked >= 6);
}

void SampleProjectTest::settingsAndCycleTimeAreThere()
{
    QCOMPARE(m_project->axisModel()->getMotionTaskCfgCycleTime(), QStringLiteral("1000"));
    QVERIFY(!m_project->setting(QStringLiteral("Description"), QString()).isEmpty());
    QCOMPARE(m_project->programStyle(), 0);
    QVERIFY(!m_project->isModified());
}

void SampleProjectTest::aBadFolderGivesAMessageAndNoFile_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no project.json") << QByteArray() << "project.json: ";
    QTest::newRow("no sound JSON") << QByteArray("{") << "project.json: at byte ";
    QTest::newRow("no controller") << QByteArray("{}") << "/controller: ";
    QTest::newRow("an unknown controller") << QByteArray("{\"controller\": \"ABC\"}") << "ABC.json: ";
    QTest::newRow("an axis without a name")
        << QByteArray("{\"controller\": \"KM1_M16\", \"axes\": [{}]}") << "/axes/0/name: ";
    QTest::newRow("two axes of one name")
        << QByteArray("{\"controller\": \"KM1_M16\", \"axes\": [{\"name\": \"A\"}, {\"name\": \"a\"}]}")
        << "/axes/1/name: ";
    QTest::newRow("an unknown key") << QByteArray(
        "{\"controller\": \"KM1_M16\", \"axes\": [{\"name\": \"A\", \"properties\": {\"MaxVil\": \"1\"}}]}")
                                    << "/axes/0/properties/MaxVil: ";
    QTest::newRow("a value that is no text")
        << QByteArray("{\"controller\": \"KM1_M16\", \"axes\": [{\"name\": \"A\", \"properties\": {\"MaxVel\": 1}}]}")
        << "/axes/0/properties/MaxVel: ";
}

void SampleProjectTest::aBadFolderGivesAMessageAndNoFile()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, expected);
    QTemporaryDir folder;
    if (!json.isEmpty())
        writeBytes(folder.filePath(QStringLiteral("project.json")), json);
    const QString result = folder.filePath(QStringLiteral("result.kproj"));
    QString error;
    QVERIFY(!makeSampleProject(folder.path(), controllers(), result, &error));
    QVERIFY2(error.contains(expected), qPrintable(error));
    QVERIFY(!QFile::exists(result));
}

void SampleProjectTest::anOlderResultIsReplaced()
{
    QTemporaryDir folder;
    const QString result = folder.filePath(QStringLiteral("result.kproj"));
    writeBytes(result, "old");
    QString error;
    QVERIFY2(makeSampleProject(line(), controllers(), result, &error), qPrintable(error));
    QVERIFY(bytesOf(result).startsWith("SQLite format 3"));
}

QTEST_GUILESS_MAIN(SampleProjectTest)
#include "SampleProjectTest.moc"
