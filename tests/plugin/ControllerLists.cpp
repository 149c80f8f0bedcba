#include "tests/plugin/ControllerLists.h"

#include "tests/support/TestProject.h"

#include <QJsonArray>
#include <QMap>
#include <QStringList>

namespace {

using Lists = QMap<QString, QStringList>;

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char('|'));
}

QJsonObject point(int key, const char* name)
{
    return { { QStringLiteral("key"), key }, { QStringLiteral("name"), QString::fromLatin1(name) } };
}

/// A full description with these lists in place of its own.
QJsonObject withLists(const Lists& own)
{
    QJsonObject description = TestProject::description(QStringLiteral("NV3T_70Q12"));
    QJsonObject lists = description.value(QStringLiteral("lists")).toObject();
    for (auto list = own.begin(); list != own.end(); ++list)
        lists.insert(list.key(), QJsonArray::fromStringList(list.value()));
    description.insert(QStringLiteral("lists"), lists);
    description.insert(
        QStringLiteral("inputPoints"), QJsonArray{ point(1, "X0"), point(2, "X1"), point(3, "X2"), point(4, "x1") });
    return description;
}

void addPins(Lists& lists, const char* group, const char* pins)
{
    lists.insert(QString::fromLatin1(group), words(pins));
}

} // namespace

namespace ControllerLists {

QJsonObject former()
{
    Lists lists{
        { QStringLiteral("AxisPulseOutputDev"), words("P0|P1|P2|P3") },
        { QStringLiteral("PulseEncodeMode"), words("pa|pb|pc") },
        { QStringLiteral("AxisEncoderInputDev"), words("E0|E1|E2") },
        { QStringLiteral("EncoderEncodeMode"), words("m0|m1|m2|m3") },
        { QStringLiteral("Encoder.m0"), words("a|b|d|c") },
        { QStringLiteral("Encoder.m1"), words("b|x|y|q") },
        { QStringLiteral("Encoder.m2"), words("z|w") },
        { QStringLiteral("Encoder.m3"), words("a") },
        { QStringLiteral("OutputPoint"), words("o0|o1|o2|o3") },
        { QStringLiteral("HightSpeedPlusOutputPoint"), words("h0|h1|h2|h3") },
        { QStringLiteral("HightSpeedCountInputPoint"), words("X0|X1|X2") },
        { QStringLiteral("ProbelInputPoint"), words("X0|X1|X2") },
    };
    for (const char* device : { "P0", "P1", "P2", "P3" })
        for (const char* mode : { "pa", "pb", "pc" })
            addPins(
                lists, qPrintable(QStringLiteral("%1.%2").arg(QLatin1String(device), QLatin1String(mode))), "k0|k1|k2");
    return withLists(lists);
}

QJsonObject latter()
{
    Lists lists{
        { QStringLiteral("AxisPulseOutputDev"), words("P0|P1") },
        { QStringLiteral("PulseEncodeMode"), words("pb|pa") },
        { QStringLiteral("AxisEncoderInputDev"), words("E0|E1") },
        { QStringLiteral("EncoderEncodeMode"), words("m1|m9|m0") },
        { QStringLiteral("Encoder.m1"), words("b|tick 1ms|y2|tick 1us") },
        { QStringLiteral("Encoder.m9"), words("z0|1us") },
        { QStringLiteral("Encoder.m0"), words("d|c|b") },
        { QStringLiteral("OutputPoint"), words("o0|o1") },
        { QStringLiteral("HightSpeedPlusOutputPoint"), words("h0|h1|h2|h3") },
        { QStringLiteral("HightSpeedCountInputPoint"), words("x1") },
        { QStringLiteral("ProbelInputPoint"), words("X2") },
    };
    addPins(lists, "P0.pb", "k0|k1");
    addPins(lists, "P0.pa", "k0");
    addPins(lists, "P1.pb", "k0");
    addPins(lists, "P1.pa", "k0|k1|k2");
    return withLists(lists);
}

} // namespace ControllerLists
