#include "axisdata/AxisRecord.h"

#include "axisdata/AxisConstants.h"
#include "tests/support/TestProject.h"

#include <QSignalSpy>
#include <QtTest>

class AxisRecordTest : public QObject {
    Q_OBJECT

private slots:
    void walkReachesTheRecord();
    void walkEndsAtAMissingStep_data();
    void walkEndsAtAMissingStep();
    void holdsTheProjectWhileItLives();
    void axesGiveListsAndProject();
    void absentKeyReadsAsEmpty();
    void booleansReadInAnyCase_data();
    void booleansReadInAnyCase();
    void numbersRead_data();
    void numbersRead();
    void flagsAreWrittenInCapitals();
    void writesRaiseDataChanged();
    void keysOfNoGroupAreKept();
    void positionsStayInTheirList_data();
    void positionsStayInTheirList();

private:
    const QString m_model = QStringLiteral("NV3T_70Q12");
};

void AxisRecordTest::walkReachesTheRecord()
{
    TestProject project(m_model);
    AxisTable* axis = project.addAxis(QStringLiteral("Feeder"));
    const AxisRecord record(project.name(), axis->id());
    QVERIFY(record);
    QCOMPARE(record.table(), axis);
    QCOMPARE(record->name(), QStringLiteral("Feeder"));
    QCOMPARE(record.model(), project.axisModel());
}

void AxisRecordTest::walkEndsAtAMissingStep_data()
{
    QTest::addColumn<QString>("projectName");
    QTest::addColumn<quint32>("id");
    QTest::addColumn<bool>("axesFound");
    QTest::newRow("no project of that name") << QStringLiteral("Nowhere") << 1U << false;
    QTest::newRow("no project name") << QString() << 1U << false;
    QTest::newRow("no record of that id") << QStringLiteral("Line") << 4711U << true;
}

void AxisRecordTest::walkEndsAtAMissingStep()
{
    QFETCH(QString, projectName);
    QFETCH(quint32, id);
    QFETCH(bool, axesFound);
    TestProject project(m_model);
    project.addAxis(QStringLiteral("Feeder"));
    const AxisRecord record(projectName, id);
    QVERIFY(!record);
    QCOMPARE(record.table(), nullptr);
    QCOMPARE(static_cast<bool>(record.axes()), axesFound);
    const ProjectAxes axes(projectName);
    QCOMPARE(static_cast<bool>(axes), axesFound);
    QCOMPARE(axes.list(QStringLiteral("AxisType")).isEmpty(), !axesFound);
}

void AxisRecordTest::holdsTheProjectWhileItLives()
{
    TestProject project(m_model);
    AxisTable* axis = project.addAxis(QStringLiteral("Feeder"));
    const AxisRecord record(project.name(), axis->id());
    project.close();
    QVERIFY(record);
    QCOMPARE(record->name(), QStringLiteral("Feeder"));
    QVERIFY(!AxisRecord(QStringLiteral("Line"), axis->id()));
}

void AxisRecordTest::axesGiveListsAndProject()
{
    TestProject project(m_model);
    const ProjectAxes axes(project.name());
    QVERIFY(axes);
    QCOMPARE(axes.project()->name(), project.name());
    QString group = QStringLiteral("AxisType");
    QCOMPARE(axes.list(group), project.axisModel()->getAxisBaseSettingList(group));
    QVERIFY(!axes.list(group).isEmpty());
    QVERIFY(axes.list(QStringLiteral("NoSuchList")).isEmpty());
}

void AxisRecordTest::absentKeyReadsAsEmpty()
{
    TestProject project(m_model);
    const AxisRecord record(project.name(), project.addAxis(QStringLiteral("Feeder"))->id());
    const QString absent = QStringLiteral("NoSuchKey");
    QVERIFY(record.text(absent).isEmpty());
    QCOMPARE(record.number(absent), 0U);
    QVERIFY(!record.isFalse(absent));
    QVERIFY(!record.isTrue(absent));
    QCOMPARE(record->property(QStringLiteral("Row"), QStringLiteral("0")), QStringLiteral("0"));
}

void AxisRecordTest::booleansReadInAnyCase_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("isTrue");
    QTest::addColumn<bool>("isFalse");
    QTest::newRow("TRUE is true") << QStringLiteral("TRUE") << true << false;
    QTest::newRow("True is true") << QStringLiteral("True") << true << false;
    QTest::newRow("FALSE is false") << QStringLiteral("FALSE") << false << true;
    QTest::newRow("false is false") << QStringLiteral("false") << false << true;
    QTest::newRow("an empty text is neither") << QString() << false << false;
    QTest::newRow("an unknown word is neither") << QStringLiteral("1") << false << false;
}

void AxisRecordTest::booleansReadInAnyCase()
{
    QFETCH(QString, stored);
    QFETCH(bool, isTrue);
    QFETCH(bool, isFalse);
    TestProject project(m_model);
    const AxisRecord record(project.name(), project.addAxis(QStringLiteral("Feeder"))->id());
    const QString key = QStringLiteral("VirtualAxis");
    record.set(key, stored);
    QCOMPARE(record.isTrue(key), isTrue);
    QCOMPARE(record.isFalse(key), isFalse);
}

void AxisRecordTest::numbersRead_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<uint>("number");
    QTest::newRow("decimal") << QStringLiteral("17") << 17U;
    QTest::newRow("the largest") << QStringLiteral("4294967295") << 4294967295U;
    QTest::newRow("too large counts as 0") << QStringLiteral("4294967296") << 0U;
    QTest::newRow("negative counts as 0") << QStringLiteral("-1") << 0U;
    QTest::newRow("hexadecimal counts as 0") << QStringLiteral("0x10") << 0U;
    QTest::newRow("a word counts as 0") << QStringLiteral("two") << 0U;
}

void AxisRecordTest::numbersRead()
{
    QFETCH(QString, stored);
    QFETCH(uint, number);
    TestProject project(m_model);
    const AxisRecord record(project.name(), project.addAxis(QStringLiteral("Feeder"))->id());
    record.set(QStringLiteral("InputDevice"), stored);
    QCOMPARE(record.number(QStringLiteral("InputDevice")), number);
}

void AxisRecordTest::flagsAreWrittenInCapitals()
{
    TestProject project(m_model);
    const AxisRecord record(project.name(), project.addAxis(QStringLiteral("Feeder"))->id());
    record.setFlag(QStringLiteral("ReverseEnable"), true);
    QCOMPARE(record.text(QStringLiteral("ReverseEnable")), QStringLiteral("TRUE"));
    record.setFlag(QStringLiteral("ReverseEnable"), false);
    QCOMPARE(record.text(QStringLiteral("ReverseEnable")), QStringLiteral("FALSE"));
}

void AxisRecordTest::writesRaiseDataChanged()
{
    TestProject project(m_model);
    AxisTable* axis = project.addAxis(QStringLiteral("Feeder"));
    const QSignalSpy changed(axis, &ModelObject::dataChanged);
    AxisRecord(project.name(), axis->id()).set(QStringLiteral("HomeSpeed"), QStringLiteral("12.000000"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(2).toString(), QStringLiteral("HomeSpeed"));
}

void AxisRecordTest::keysOfNoGroupAreKept()
{
    TestProject project(m_model);
    const AxisRecord record(project.name(), project.addAxis(QStringLiteral("Feeder"))->id());
    record.set(QStringLiteral("Row"), QStringLiteral("3"));
    QCOMPARE(record.text(QStringLiteral("Row")), QStringLiteral("3"));
}

void AxisRecordTest::positionsStayInTheirList_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("listSize");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("storedThen");
    QTest::newRow("inside the list") << QStringLiteral("2") << 3 << 2 << QStringLiteral("2");
    QTest::newRow("at the end is put back") << QStringLiteral("3") << 3 << 0 << QStringLiteral("0");
    QTest::newRow("past the end is put back") << QStringLiteral("99") << 3 << 0 << QStringLiteral("0");
    QTest::newRow("an empty list puts any back") << QStringLiteral("1") << 0 << 0 << QStringLiteral("0");
    QTest::newRow("no number reads as 0 and stays") << QStringLiteral("-1") << 3 << 0 << QStringLiteral("-1");
}

void AxisRecordTest::positionsStayInTheirList()
{
    QFETCH(QString, stored);
    QFETCH(int, listSize);
    QFETCH(int, position);
    QFETCH(QString, storedThen);
    TestProject project(m_model);
    const AxisRecord record(project.name(), project.addAxis(QStringLiteral("Feeder"))->id());
    record.set(QStringLiteral("OutputDevice"), stored);
    QCOMPARE(record.position(QStringLiteral("OutputDevice"), listSize), position);
    QCOMPARE(record.text(QStringLiteral("OutputDevice")), storedThen);
}

QTEST_MAIN(AxisRecordTest)
#include "AxisRecordTest.moc"
