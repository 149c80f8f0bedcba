#include "plugin/AxisRevalidation.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/plugin/ControllerLists.h"
#include "tests/support/TestProject.h"

#include <QJsonArray>
#include <QtTest>

// Lists that stand in for those of the controller. The linker leads the plug-in's calls of
// AxisModel::getAxisBaseSettingList to the wrapper, since no description is read that holds an entry twice.
static QHash<QString, QStringList> standIns;

QStringList listOfTheModel(const AxisModel* model, QString& group) __asm__(
    "__real__ZNK9AxisModel22getAxisBaseSettingListER7QString");
Q_DECL_EXPORT QStringList listForTheTest(const AxisModel* model, QString& group) __asm__(
    "__wrap__ZNK9AxisModel22getAxisBaseSettingListER7QString");

QStringList listForTheTest(const AxisModel* model, QString& group)
{
    const auto own = standIns.constFind(group);
    return own != standIns.constEnd() ? *own : listOfTheModel(model, group);
}

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// Writes "Key=text" pairs, parted by blanks, into a record.
void write(AxisTable& axis, const QString& pairs)
{
    const QStringList all = pairs.split(QLatin1Char(' '));
    for (const QString& pair : all)
        axis.setProperty(pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
}

/// Reads the keys of such pairs back.
QString read(const AxisTable& axis, const QString& pairs)
{
    QStringList found;
    const QStringList all = pairs.split(QLatin1Char(' '));
    for (const QString& pair : all) {
        const QString key = pair.section(QLatin1Char('='), 0, 0);
        found.append(key + QLatin1Char('=') + axis.property(key, QString()));
    }
    return found.join(QLatin1Char(' '));
}

/// A project that has gone from one controller to the other.
class Changed {
public:
    Changed(const QJsonObject& from, const QJsonObject& to) : project(text("NV3T_70Q12"))
    {
        project.changeController(from);
        project.changeController(to);
    }
    AxisTable* add(const char* name, const QString& type) { return project.addAxis(text(name), type); }
    AxisModel& model() { return *project.axisModel(); }

    TestProject project;
};

/// A description with other lists, given as "Name=entry|entry".
QJsonObject withLists(QJsonObject description, const QStringList& own)
{
    QJsonObject lists = description.value(text("lists")).toObject();
    for (const QString& list : own) {
        QStringList entries = list.section(QLatin1Char('='), 1).split(QLatin1Char('|'));
        entries.removeAll(QString());
        lists.insert(list.section(QLatin1Char('='), 0, 0), QJsonArray::fromStringList(entries));
    }
    description.insert(text("lists"), lists);
    return description;
}

QJsonObject withVirtualLimit(int limit)
{
    QJsonObject description = ControllerLists::latter();
    QJsonObject limits = description.value(text("limits")).toObject();
    limits.insert(text("Virtual Axis"), limit);
    description.insert(text("limits"), limits);
    return description;
}

QJsonObject withoutVirtualAxes()
{
    QJsonObject description = ControllerLists::latter();
    QJsonObject limits = description.value(text("limits")).toObject();
    limits.remove(text("Virtual Axis"));
    description.insert(text("limits"), limits);
    QJsonObject lists = description.value(text("lists")).toObject();
    lists.insert(text("AxisType"), QJsonArray{ text("Pulse Axis"), text("Encoder Axis") });
    description.insert(text("lists"), lists);
    return description;
}

} // namespace

/// The rules for one record against the lists of a controller.
class AxisRevalidationTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { standIns.clear(); }
    void inputsAreKeptOnlyWhereTheListsNameThem_data();
    void inputsAreKeptOnlyWhereTheListsNameThem();
    void pulseAxisFollowsTheLists_data();
    void pulseAxisFollowsTheLists();
    void encoderAxisIsCarriedOverByText_data();
    void encoderAxisIsCarriedOverByText();
    void encoderTextsCompareExactly_data();
    void encoderTextsCompareExactly();
    void firstOfTwoEqualEntriesCounts();
    void encoderModePastTheFormerListStaysByPosition_data();
    void encoderModePastTheFormerListStaysByPosition();
    void axisWithoutItsDeviceCannotExist_data();
    void axisWithoutItsDeviceCannotExist();
    void axisOfAKindWithoutDevicesCannotExist_data();
    void axisOfAKindWithoutDevicesCannotExist();
    void inputsOfAnAxisThatGoesAreCheckedFirst();
    void otherTypesAreNotHeldAgainstTheLists_data();
    void otherTypesAreNotHeldAgainstTheLists();
    void typeWordsCompareWithoutCase();
    void virtualAxesBeyondTheLimitGo_data();
    void virtualAxesBeyondTheLimitGo();
    void compareOutputKeepsToTheOrdinaryPoints();
};

void AxisRevalidationTest::inputsAreKeptOnlyWhereTheListsNameThem_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("named in another case") << "Preset=2"
                                           << "Preset=2";
    QTest::newRow("not named") << "Preset=1"
                               << "Preset=0";
    QTest::newRow("no such point") << "Preset=77"
                                   << "Preset=0";
    QTest::newRow("no point") << "Preset=0"
                              << "Preset=0";
    QTest::newRow("no number") << "Preset=abc"
                               << "Preset=0";
    QTest::newRow("negative") << "Preset=-2"
                              << "Preset=0";
    QTest::newRow("probes named") << "Probe1=3 Probe2=3"
                                  << "Probe1=3 Probe2=3";
    QTest::newRow("probes not named") << "Probe1=2 Probe2=1"
                                      << "Probe1=0 Probe2=0";
    QTest::newRow("each by its own list") << "Preset=3 Probe1=3 Probe2=2"
                                          << "Preset=0 Probe1=3 Probe2=0";
}

void AxisRevalidationTest::inputsAreKeptOnlyWhereTheListsNameThem()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const QStringList types{ text("Axis_Virtual"), text("Axis_Pulse"), text("Axis_Encoder"), text("Axis_EtherCAT"),
        text("Axis_Other") };
    for (const QString& type : types) {
        Changed changed(ControllerLists::former(), ControllerLists::latter());
        AxisTable* axis = changed.add("feed", type);
        write(*axis, before);
        QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
        QCOMPARE(read(*axis, after), after);
    }
}

void AxisRevalidationTest::pulseAxisFollowsTheLists_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto add = [](const char* name, const char* before, const char* after) {
        QTest::newRow(name) << text(before) << text(after);
    };
    add("all in their lists", "OutputDevice=1 PulseOutputMethod=1 OutputPin=2 CompareOutputPin=1",
        "OutputDevice=1 PulseOutputMethod=1 OutputPin=2 CompareOutputPin=1");
    add("mode past the list", "OutputDevice=0 PulseOutputMethod=2 OutputPin=1",
        "OutputDevice=0 PulseOutputMethod=0 OutputPin=1");
    add("pin past the list of device and mode", "OutputDevice=1 PulseOutputMethod=0 OutputPin=1",
        "OutputDevice=1 PulseOutputMethod=0 OutputPin=0");
    add("pin judged by the mode that was corrected", "OutputDevice=1 PulseOutputMethod=7 OutputPin=2",
        "OutputDevice=1 PulseOutputMethod=0 OutputPin=0");
    add("compare output past its list", "CompareOutputPin=2", "CompareOutputPin=0");
    add("texts that are no numbers", "OutputDevice=x PulseOutputMethod=y OutputPin=-1 CompareOutputPin=1.5",
        "OutputDevice=x PulseOutputMethod=0 OutputPin=0 CompareOutputPin=0");
    add("numbers are written plainly", "PulseOutputMethod=01 OutputPin=00 CompareOutputPin=+1",
        "PulseOutputMethod=1 OutputPin=0 CompareOutputPin=1");
}

void AxisRevalidationTest::pulseAxisFollowsTheLists()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    Changed changed(ControllerLists::former(), ControllerLists::latter());
    AxisTable* axis = changed.add("feed", text("Axis_Pulse"));
    write(*axis, before);
    QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
    QCOMPARE(read(*axis, after), after);
}

void AxisRevalidationTest::encoderAxisIsCarriedOverByText_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto add = [](const char* name, const char* before, const char* after) {
        QTest::newRow(name) << text(before) << text(after);
    };
    add("mode and signal at other positions", "OutputMethod=0 InputSignal=1", "OutputMethod=2 InputSignal=2");
    add("signal at another position", "OutputMethod=0 InputSignal=3", "OutputMethod=2 InputSignal=1");
    add("signal at the first position", "OutputMethod=0 InputSignal=2", "OutputMethod=2 InputSignal=0");
    add("mode that is gone", "OutputMethod=2 InputSignal=0", "OutputMethod=0 InputSignal=0");
    add("signal without match keeps its position", "OutputMethod=1 InputSignal=2", "OutputMethod=0 InputSignal=2");
    add("not over an entry with 1ms", "OutputMethod=1 InputSignal=1", "OutputMethod=0 InputSignal=0");
    add("not over an entry with 1us", "OutputMethod=1 InputSignal=3", "OutputMethod=0 InputSignal=0");
    add("match is found before positions count", "OutputMethod=1 InputSignal=0", "OutputMethod=0 InputSignal=0");
    add("without match and past the list", "OutputMethod=0 InputSignal=0", "OutputMethod=2 InputSignal=0");
    add("signal past the former list stays by position", "OutputMethod=3 InputSignal=1",
        "OutputMethod=0 InputSignal=1");
    add("signal past both lists", "OutputMethod=0 InputSignal=9", "OutputMethod=2 InputSignal=0");
    add("texts that are no numbers read as 0", "OutputMethod=x InputSignal=", "OutputMethod=2 InputSignal=0");
    add("compare output past its list", "OutputMethod=0 CompareOutputPin=2", "OutputMethod=2 CompareOutputPin=0");
    add("compare output in its list", "OutputMethod=0 CompareOutputPin=1", "OutputMethod=2 CompareOutputPin=1");
}

void AxisRevalidationTest::encoderAxisIsCarriedOverByText()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    Changed changed(ControllerLists::former(), ControllerLists::latter());
    AxisTable* axis = changed.add("feed", text("Axis_Encoder"));
    write(*axis, text("InputDevice=1 ") + before);
    QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
    QCOMPARE(read(*axis, after), after);
}

void AxisRevalidationTest::encoderTextsCompareExactly_data()
{
    QTest::addColumn<QStringList>("formerLists");
    QTest::addColumn<QStringList>("latterLists");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto list = [](const char* words) { return text(words).split(QLatin1Char(' ')); };
    QTest::newRow("mode in other letters is another mode")
        << list("EncoderEncodeMode=m0|Quad Encoder.Quad=a") << list("EncoderEncodeMode=m1|m9|QUAD Encoder.QUAD=a|b")
        << "OutputMethod=1 InputSignal=0"
        << "OutputMethod=0 InputSignal=0";
    QTest::newRow("signal in other letters is another signal")
        << list("EncoderEncodeMode=m0 Encoder.m0=a|Phase") << list("EncoderEncodeMode=m0 Encoder.m0=x|y|PHASE")
        << "OutputMethod=0 InputSignal=1"
        << "OutputMethod=0 InputSignal=1";
    QTest::newRow("1MS is no time base") << list("EncoderEncodeMode=m0 Encoder.m0=a|b")
                                         << list("EncoderEncodeMode=m0 Encoder.m0=x|1MS")
                                         << "OutputMethod=0 InputSignal=1"
                                         << "OutputMethod=0 InputSignal=1";
    QTest::newRow("1US is no time base") << list("EncoderEncodeMode=m0 Encoder.m0=a|b")
                                         << list("EncoderEncodeMode=m0 Encoder.m0=x|1Us")
                                         << "OutputMethod=0 InputSignal=1"
                                         << "OutputMethod=0 InputSignal=1";
    QTest::newRow("no modes at all") << list("EncoderEncodeMode=m0|m3 Encoder.m3=a|b")
                                     << list("EncoderEncodeMode= AxisType=Virtual|Axis")
                                     << "OutputMethod=1 InputSignal=1"
                                     << "OutputMethod=0 InputSignal=0";
}

void AxisRevalidationTest::encoderTextsCompareExactly()
{
    QFETCH(QStringList, formerLists);
    QFETCH(QStringList, latterLists);
    QFETCH(QString, before);
    QFETCH(QString, after);
    latterLists.replaceInStrings(text("Virtual|Axis"), text("Virtual Axis"));
    Changed changed(
        withLists(ControllerLists::former(), formerLists), withLists(ControllerLists::latter(), latterLists));
    AxisTable* axis = changed.add("feed", text("Axis_Encoder"));
    write(*axis, before);
    QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
    QCOMPARE(read(*axis, after), after);
}

void AxisRevalidationTest::firstOfTwoEqualEntriesCounts()
{
    Changed changed(ControllerLists::former(), ControllerLists::latter());
    standIns = { { text("EncoderEncodeMode"), { text("m9"), text("m0"), text("m0") } },
        { text("Encoder.m0"), { text("x"), text("d"), text("d"), text("d") } } };
    AxisTable* axis = changed.add("feed", text("Axis_Encoder"));
    write(*axis, text("OutputMethod=0 InputSignal=2"));
    QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
    const QString after = text("OutputMethod=1 InputSignal=1");
    QCOMPARE(read(*axis, after), after);
}

void AxisRevalidationTest::encoderModePastTheFormerListStaysByPosition_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("within the new list") << "OutputMethod=3 InputSignal=0"
                                         << "OutputMethod=3 InputSignal=0";
    QTest::newRow("signal judged by its position alone") << "OutputMethod=3 InputSignal=2"
                                                         << "OutputMethod=3 InputSignal=0";
    QTest::newRow("past the new list too") << "OutputMethod=4 InputSignal=3"
                                           << "OutputMethod=0 InputSignal=3";
}

void AxisRevalidationTest::encoderModePastTheFormerListStaysByPosition()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    Changed changed(ControllerLists::latter(), ControllerLists::former());
    AxisTable* axis = changed.add("feed", text("Axis_Encoder"));
    write(*axis, before);
    QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
    QCOMPARE(read(*axis, after), after);
}

void AxisRevalidationTest::axisWithoutItsDeviceCannotExist_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("stays");
    QTest::newRow("pulse axis on the last device") << "Axis_Pulse"
                                                   << "OutputDevice=1" << true;
    QTest::newRow("pulse axis past it") << "Axis_Pulse"
                                        << "OutputDevice=2" << false;
    QTest::newRow("pulse axis by its input device") << "Axis_Pulse"
                                                    << "InputDevice=9" << true;
    QTest::newRow("encoder axis on the last device") << "Axis_Encoder"
                                                     << "InputDevice=1" << true;
    QTest::newRow("encoder axis past it") << "Axis_Encoder"
                                          << "InputDevice=2" << false;
    QTest::newRow("encoder axis by its output device") << "Axis_Encoder"
                                                       << "OutputDevice=9" << true;
    QTest::newRow("virtual axis") << "Axis_Virtual"
                                  << "InputDevice=9" << true;
    QTest::newRow("EtherCAT axis") << "Axis_EtherCAT"
                                   << "OutputDevice=9" << true;
}

void AxisRevalidationTest::axisWithoutItsDeviceCannotExist()
{
    QFETCH(QString, type);
    QFETCH(QString, device);
    QFETCH(bool, stays);
    Changed changed(ControllerLists::former(), ControllerLists::latter());
    AxisTable* axis = changed.add("feed", type);
    write(*axis, device + text(" PulseOutputMethod=9 OutputMethod=9"));
    QCOMPARE(AxisRevalidation(changed.model()).revise(*axis), stays);
    if (!stays)
        QCOMPARE(read(*axis, text("PulseOutputMethod= OutputMethod=")), text("PulseOutputMethod=9 OutputMethod=9"));
}

void AxisRevalidationTest::axisOfAKindWithoutDevicesCannotExist_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("list");
    QTest::newRow("pulse") << "Axis_Pulse"
                           << "AxisPulseOutputDev=";
    QTest::newRow("encoder") << "Axis_Encoder"
                             << "AxisEncoderInputDev=";
}

void AxisRevalidationTest::axisOfAKindWithoutDevicesCannotExist()
{
    QFETCH(QString, type);
    QFETCH(QString, list);
    Changed changed(
        ControllerLists::former(), withLists(ControllerLists::latter(), { list, text("AxisType=Virtual Axis") }));
    AxisTable* axis = changed.add("feed", type);
    write(*axis, text("InputDevice=0 OutputDevice=0"));
    QVERIFY2(!AxisRevalidation(changed.model()).revise(*axis), "also at the first position");
}

void AxisRevalidationTest::inputsOfAnAxisThatGoesAreCheckedFirst()
{
    Changed changed(ControllerLists::former(), ControllerLists::latter());
    AxisTable* axis = changed.add("feed", text("Axis_Pulse"));
    write(*axis, text("OutputDevice=3 Preset=1"));
    QVERIFY(!AxisRevalidation(changed.model()).revise(*axis));
    QCOMPARE(read(*axis, text("Preset=")), text("Preset=0"));
}

void AxisRevalidationTest::otherTypesAreNotHeldAgainstTheLists_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("EtherCAT axis") << "Axis_EtherCAT";
    QTest::newRow("unknown word") << "Axis_Other";
    QTest::newRow("no word") << "";
    QTest::newRow("virtual axis") << "Axis_Virtual";
}

void AxisRevalidationTest::otherTypesAreNotHeldAgainstTheLists()
{
    QFETCH(QString, type);
    Changed changed(ControllerLists::former(), ControllerLists::latter());
    AxisTable* axis = changed.add("feed", type);
    const QString values = text("InputDevice=9 OutputDevice=9 OutputMethod=9 InputSignal=9 PulseOutputMethod=9 "
                                "OutputPin=9 CompareOutputPin=9");
    write(*axis, values);
    QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
    QCOMPARE(read(*axis, values), values);
}

void AxisRevalidationTest::typeWordsCompareWithoutCase()
{
    Changed changed(ControllerLists::former(), withVirtualLimit(0));
    AxisRevalidation revalidation(changed.model());
    AxisTable* pulse = changed.add("feed", text("axis_PULSE"));
    write(*pulse, text("OutputDevice=3"));
    QVERIFY(!revalidation.revise(*pulse));
    AxisTable* encoder = changed.add("lift", text("AXIS_encoder"));
    write(*encoder, text("InputDevice=3"));
    QVERIFY(!revalidation.revise(*encoder));
    QVERIFY(!revalidation.revise(*changed.add("turn", text("AXIS_VIRTUAL"))));
}

void AxisRevalidationTest::virtualAxesBeyondTheLimitGo_data()
{
    QTest::addColumn<QJsonObject>("controller");
    QTest::addColumn<int>("kept");
    QTest::newRow("limit of two") << withVirtualLimit(2) << 2;
    QTest::newRow("limit of four") << withVirtualLimit(4) << 4;
    QTest::newRow("limit of none") << withVirtualLimit(0) << 0;
    QTest::newRow("no limit named") << withoutVirtualAxes() << 0;
}

void AxisRevalidationTest::virtualAxesBeyondTheLimitGo()
{
    QFETCH(QJsonObject, controller);
    QFETCH(int, kept);
    Changed changed(ControllerLists::former(), controller);
    AxisRevalidation revalidation(changed.model());
    QVERIFY2(revalidation.revise(*changed.add("other", text("Axis_EtherCAT"))), "other types do not count");
    for (int number = 0; number < 4; ++number) {
        AxisTable* axis = changed.add(qPrintable(text("axis%1").arg(number)), text("Axis_Virtual"));
        QCOMPARE(revalidation.revise(*axis), number < kept);
    }
}

void AxisRevalidationTest::compareOutputKeepsToTheOrdinaryPoints()
{
    const QStringList types{ text("Axis_Pulse"), text("Axis_Encoder") };
    for (const QString& type : types) {
        Changed changed(ControllerLists::former(), ControllerLists::latter());
        AxisTable* axis = changed.add("feed", type);
        write(*axis, text("CompareOutputPin=3"));
        QVERIFY(AxisRevalidation(changed.model()).revise(*axis));
        QCOMPARE(read(*axis, text("CompareOutputPin=")), text("CompareOutputPin=0"));
    }
}

QTEST_GUILESS_MAIN(AxisRevalidationTest)
#include "AxisRevalidationTest.moc"
