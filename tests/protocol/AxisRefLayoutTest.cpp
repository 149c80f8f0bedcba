#include "protocol/AxisRefLayout.h"

#include <QByteArray>
#include <QtEndian>
#include <QtTest>

#include <cstring>

namespace {
/// Offset, width and what is to be found there when each field holds its own number.
struct Place {
    const char* name;
    int offset;
    int width;
};

const Place places[] = {
    { "axis state", 4, 2 },
    { "communication state", 8, 1 },
    { "set position", 12, 8 },
    { "set velocity", 20, 8 },
    { "set acceleration", 28, 8 },
    { "set torque", 36, 8 },
    { "actual position", 44, 8 },
    { "actual velocity", 52, 8 },
    { "actual acceleration", 60, 8 },
    { "actual torque", 68, 8 },
    { "axis error id", 108, 2 },
    { "servo error", 110, 2 },
    { "positive hard limit", 120, 1 },
    { "negative hard limit", 121, 1 },
    { "home switch", 122, 1 },
    { "positive soft limit", 123, 1 },
    { "negative soft limit", 124, 1 },
    { "debug mode", 200, 1 },
    { "speed ratio", 204, 8 },
};

/// Every field holds its place in the list above, from 1.
AxisRef numbered()
{
    AxisRef ref{};
    ref.axisState = 1;
    ref.communication = 2;
    ref.setPosition = 3;
    ref.setVelocity = 4;
    ref.setAcceleration = 5;
    ref.setTorque = 6;
    ref.actualPosition = 7;
    ref.actualVelocity = 8;
    ref.actualAcceleration = 9;
    ref.actualTorque = 10;
    ref.axisError = 11;
    ref.servoError = 12;
    ref.positiveHardLimit = 13;
    ref.negativeHardLimit = 14;
    ref.homeSwitch = 15;
    ref.positiveSoftLimit = 16;
    ref.negativeSoftLimit = 17;
    ref.debugMode = 18;
    ref.speedRatio = 19;
    return ref;
}
} // namespace

class AxisRefLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void hasItsSize();
    void fieldsLieAtTheirOffsets_data();
    void fieldsLieAtTheirOffsets();
    void nothingElseIsWritten();
};

void AxisRefLayoutTest::hasItsSize()
{
    QCOMPARE(int(sizeof(AxisRef)), 248);
    QCOMPARE(axisRefSize, 248);
}

void AxisRefLayoutTest::fieldsLieAtTheirOffsets_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(places)); ++i)
        QTest::newRow(places[i].name) << i;
}

void AxisRefLayoutTest::fieldsLieAtTheirOffsets()
{
    QFETCH(int, row);
    const Place& place = places[row];
    const AxisRef ref = numbered();
    const char* at = reinterpret_cast<const char*>(&ref) + place.offset;
    if (place.width == 1) {
        QCOMPARE(int(*at), row + 1);
    } else if (place.width == 2) {
        QCOMPARE(int(qFromLittleEndian<quint16>(at)), row + 1);
    } else {
        const quint64 bits = qFromLittleEndian<quint64>(at);
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        QCOMPARE(value, double(row + 1));
    }
}

void AxisRefLayoutTest::nothingElseIsWritten()
{
    const AxisRef ref = numbered();
    QByteArray bytes(reinterpret_cast<const char*>(&ref), sizeof ref);
    for (const Place& place : places)
        bytes.replace(place.offset, place.width, QByteArray(place.width, '\0'));
    QCOMPARE(bytes, QByteArray(248, '\0'));
}

QTEST_APPLESS_MAIN(AxisRefLayoutTest)
#include "AxisRefLayoutTest.moc"
