#include "tests/projectmodel/ProjectFixture.h"

#include "sdk/AxisDefaults.h"

#include <QSignalSpy>

class AxisModelTest : public QObject {
    Q_OBJECT

private slots:
    void aNewAxisHasTheDefaultsOfAllGroups();
    void savedAxesAreThereAfterReopening();
};

void AxisModelTest::aNewAxisHasTheDefaultsOfAllGroups()
{
    ProjectFixture fixture;
    const AxisTable* axis = fixture.axes()->addAxisTable(QStringLiteral("Feeder"));
    QVERIFY(axis);
    int keys = 0;
    for (const AxisDefaultGroup* group :
        { &AxisBaseDefaults, &AxisUnitDefaults, &AxisModeDefaults, &AxisHomeDefaults }) {
        for (auto it = group->begin(); it != group->end(); ++it, ++keys)
            QCOMPARE(axis->property(it.key(), QStringLiteral("absent")), it.value());
    }
    QCOMPARE(keys, 63);
    QCOMPARE(axis->property(QStringLiteral("Row"), QStringLiteral("none")), QStringLiteral("none"));
}

void AxisModelTest::savedAxesAreThereAfterReopening()
{
    ProjectFixture fixture;
    AxisTable* axis = fixture.axes()->addAxisTable(QStringLiteral("Feeder"));
    axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("12.500000"));
    axis->setProperty(QStringLiteral("Row"), QStringLiteral("4"));
    axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("lineEdit_7"));
    QVERIFY(axis->modified);
    QVERIFY(axis->save());
    QVERIFY(!axis->modified);
    const quint32 id = axis->id();
    QVERIFY2(fixture.reopen(), qPrintable(fixture.error()));
    axis = fixture.axis(id);
    QVERIFY(axis);
    QCOMPARE(axis->name(), QStringLiteral("Feeder"));
    QCOMPARE(axis->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("12.500000"));
    QCOMPARE(axis->property(QStringLiteral("Row"), QString()), QStringLiteral("4"));
    QCOMPARE(axis->getViewInfo(QStringLiteral("LineEditPosObjectName"), QString()), QStringLiteral("lineEdit_7"));
    QVERIFY(!axis->modified);
    QVERIFY(!fixture.project()->isModified());
}

QTEST_MAIN(AxisModelTest)
#include "AxisModelTest.moc"
