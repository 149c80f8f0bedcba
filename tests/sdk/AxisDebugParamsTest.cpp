#include "sdk/AxisDebugParams.h"

#include <QVariant>
#include <QtTest>

#include <cstring>
#include <type_traits>

namespace {

/// Lays a record's bytes beside those of its fields written one after the other.
template <typename Record, typename... Fields>
bool holds(const Record& record, Fields... fields)
{
    QByteArray expected;
    (expected.append(reinterpret_cast<const char*>(&fields), static_cast<int>(sizeof fields)), ...);
    return QByteArray(reinterpret_cast<const char*>(&record), static_cast<int>(sizeof record)) == expected;
}

struct Row {
    const char* name;
    int metaType;
    size_t size;
    bool plain;
    bool zeroed;
};

template <typename Record>
Row row(const char* name)
{
    const Record record{};
    const QByteArray zeros(static_cast<int>(sizeof record), '\0');
    return { name, qMetaTypeId<Record>(), sizeof(Record),
        std::is_trivially_copyable<Record>::value && alignof(Record) == 1,
        std::memcmp(&record, zeros.constData(), sizeof record) == 0 };
}

const short axis = 3;

} // namespace

class AxisDebugParamsTest : public QObject {
    Q_OBJECT

private slots:
    void recordsArePackedPlainAndNamed_data();
    void recordsArePackedPlainAndNamed();
    void fieldsStandInTheOrderOfTheCall();
    void recordsTravelInVariants();
    void codesRunFromZeroToFifteen();
};

void AxisDebugParamsTest::recordsArePackedPlainAndNamed_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("metaType");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("expectedSize");
    QTest::addColumn<bool>("plain");
    QTest::addColumn<bool>("zeroed");

    const auto add = [](const Row& row, int expectedSize) {
        QTest::newRow(row.name) << QByteArray(row.name) << row.metaType << static_cast<int>(row.size) << expectedSize
                                << row.plain << row.zeroed;
    };
    add(row<GetAxisRefParam>("GetAxisRefParam"), 6);
    add(row<GetAxesGroupRefParam>("GetAxesGroupRefParam"), 6);
    add(row<EnterDebugModelParam>("EnterDebugModelParam"), 6);
    add(row<KeepAliveParam>("KeepAliveParam"), 2);
    add(row<SetEnableParam>("SetEnableParam"), 4);
    add(row<SetPositionParam>("SetPositionParam"), 10);
    add(row<SetHomeOffsetParam>("SetHomeOffsetParam"), 10);
    add(row<SetVelRatioParam>("SetVelRatioParam"), 4);
    add(row<SetHomeParam>("SetHomeParam"), 2);
    add(row<SetStopParam>("SetStopParam"), 18);
    add(row<MoveAbsParam>("MoveAbsParam"), 42);
    add(row<MoveRelParam>("MoveRelParam"), 42);
    add(row<MoveVelParam>("MoveVelParam"), 34);
    add(row<JopPosParam>("JopPosParam"), 36);
    add(row<JopNegParam>("JopNegParam"), 36);
    add(row<ResetParam>("ResetParam"), 2);
}

void AxisDebugParamsTest::recordsArePackedPlainAndNamed()
{
    QFETCH(QByteArray, name);
    QFETCH(int, metaType);
    QFETCH(int, size);
    QFETCH(int, expectedSize);
    QFETCH(bool, plain);
    QFETCH(bool, zeroed);

    QCOMPARE(size, expectedSize);
    QCOMPARE(QMetaType::typeName(metaType), name.constData());
    QVERIFY(plain);
    QVERIFY2(zeroed, "a new record is all zero");
}

void AxisDebugParamsTest::fieldsStandInTheOrderOfTheCall()
{
    const short one = 1;
    QVERIFY(holds(GetAxisRefParam{ axis, 248 }, axis, 248));
    QVERIFY(holds(GetAxesGroupRefParam{ axis, 248 }, axis, 248));
    const short timeout = 5000;
    QVERIFY(holds(EnterDebugModelParam{ axis, one, timeout }, axis, one, timeout));
    QVERIFY(holds(KeepAliveParam{ axis }, axis));
    QVERIFY(holds(SetEnableParam{ axis, one }, axis, one));
    QVERIFY(holds(SetPositionParam{ axis, 1.5 }, axis, 1.5));
    QVERIFY(holds(SetHomeOffsetParam{ axis, 1.5 }, axis, 1.5));
    QVERIFY(holds(SetVelRatioParam{ axis, one }, axis, one));
    QVERIFY(holds(SetHomeParam{ axis }, axis));
    QVERIFY(holds(SetStopParam{ axis, 1.5, 2.5 }, axis, 1.5, 2.5));
    QVERIFY(holds(MoveAbsParam{ axis, 1.5, 2.5, 3.5, 4.5, 5.5 }, axis, 1.5, 2.5, 3.5, 4.5, 5.5));
    QVERIFY(holds(MoveRelParam{ axis, 1.5, 2.5, 3.5, 4.5, 5.5 }, axis, 1.5, 2.5, 3.5, 4.5, 5.5));
    QVERIFY(holds(MoveVelParam{ axis, 2.5, 3.5, 4.5, 5.5 }, axis, 2.5, 3.5, 4.5, 5.5));
    QVERIFY(holds(JopPosParam{ axis, one, 2.5, 3.5, 4.5, 5.5 }, axis, one, 2.5, 3.5, 4.5, 5.5));
    QVERIFY(holds(JopNegParam{ axis, one, 2.5, 3.5, 4.5, 5.5 }, axis, one, 2.5, 3.5, 4.5, 5.5));
    QVERIFY(holds(ResetParam{ axis }, axis));

    MoveAbsParam move;
    move.axisNo = axis;
    move.position = 1;
    move.velocity = 2;
    move.acceleration = 3;
    move.deceleration = 4;
    move.jerk = 5;
    QVERIFY(holds(move, axis, 1.0, 2.0, 3.0, 4.0, 5.0));
}

void AxisDebugParamsTest::recordsTravelInVariants()
{
    const QVariant variant = QVariant::fromValue(SetStopParam{ axis, 1.5, 2.5 });
    QCOMPARE(variant.typeName(), "SetStopParam");
    const auto record = variant.value<SetStopParam>();
    const double deceleration = record.deceleration;
    QCOMPARE(deceleration, 1.5);
    QVERIFY2(!variant.canConvert<KeepAliveParam>(), "records do not stand for one another");
}

void AxisDebugParamsTest::codesRunFromZeroToFifteen()
{
    const QVector<int> codes{ AxisDebugGetAxisRef, AxisDebugGetAxesGroupRef, AxisDebugEnterDebugMode,
        AxisDebugKeepAlive, AxisDebugSetEnable, AxisDebugSetPosition, AxisDebugSetHomeOffset, AxisDebugSetVelRatio,
        AxisDebugSetHome, AxisDebugSetStop, AxisDebugMoveAbs, AxisDebugMoveRel, AxisDebugMoveVel, AxisDebugJopPos,
        AxisDebugJopNeg, AxisDebugReset };
    for (int code = 0; code < 16; ++code)
        QCOMPARE(codes.at(code), code);
}

QTEST_APPLESS_MAIN(AxisDebugParamsTest)
#include "AxisDebugParamsTest.moc"
