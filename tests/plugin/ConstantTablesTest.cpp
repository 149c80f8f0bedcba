#include "axisdata/AxisConstants.h"

#include <QtTest>

namespace {

QStringList sorted(const QSet<QString>& set)
{
    QStringList names = set.values();
    names.sort();
    return names;
}

QStringList words(const char* text)
{
    QStringList names = QString::fromLatin1(text).split(QLatin1Char(' '));
    names.sort();
    return names;
}

} // namespace

/// What the axis code itself knows of controllers and of its own names.
class ConstantTablesTest : public QObject {
    Q_OBJECT

private slots:
    void cycleTimesStandUnderTheirOwnText();
    void modelSetsHoldTheirModels();
    void namesAreThoseOfRecordsAndNodes();
};

void ConstantTablesTest::cycleTimesStandUnderTheirOwnText()
{
    QCOMPARE(QStringList(CycleTimeChoices.keys()), words("4000 2000 1000 750 500"));
    for (auto choice = CycleTimeChoices.begin(); choice != CycleTimeChoices.end(); ++choice)
        QCOMPARE(QString::number(choice.value()), choice.key());
    QCOMPARE(CycleTimeChoices.key(1000), QStringLiteral("1000"));
}

void ConstantTablesTest::modelSetsHoldTheirModels()
{
    QCOMPARE(sorted(NV2ModelSet), words("NV2_H48Q6E NV2_H48Q8E"));
    QCOMPARE(sorted(NV3TModelSet),
        words("NV3T_50Q4 NV3T_50Q4E NV3T_50Q6 NV3T_50Q6E NV3T_70Q6 NV3T_70Q6E NV3T_70Q8 NV3T_70Q8E NV3T_70Q12 "
              "NV3T_70Q12E"));
    QVERIFY2(!NV3TModelSet.contains(QStringLiteral("nv3t_70q12")), "names compare exactly");
}

void ConstantTablesTest::namesAreThoseOfRecordsAndNodes()
{
    QCOMPARE(AxisViewKey, QStringLiteral("AxisView"));
    QCOMPARE(QString::fromLatin1(axisSubModelName), QStringLiteral("AxisModel"));
    QCOMPARE((QStringList{ AxisTypeVirtual, AxisTypePulse, AxisTypeEncoder, AxisTypeEtherCAT }).join(QLatin1Char(' ')),
        QStringLiteral("Axis_Virtual Axis_Pulse Axis_Encoder Axis_EtherCAT"));
    QCOMPARE(AxisTrue, QStringLiteral("TRUE"));
    QCOMPARE(AxisFalse, QStringLiteral("FALSE"));
}

QTEST_APPLESS_MAIN(ConstantTablesTest)
#include "ConstantTablesTest.moc"
