#include "tests/pages/ExpectedControls.h"
#include "tests/support/MissingKeys.h"

#include "axisdata/AxisConstants.h"

#include <QTest>

namespace {

QString latin(const char* text)
{
    return QString::fromLatin1(text);
}

/// Keys that decide what the page reads besides those of its own group.
QStringList spoiledKeys()
{
    return QStringList(AxisModeDefaults.keys()) << latin("InputDevice") << latin("OutputDevice");
}

/// Follows by hand what a first load writes into a record.
class ExpectedRecord {
public:
    ExpectedRecord(const ModePage& page, const QString& type, const QString& controller)
        : m_page(page), m_nv3(controller.startsWith(QLatin1String("NV3T_")))
    {
        for (const QString& key : spoiledKeys())
            m_texts.insert(key, page.stored(key));
        for (const char* key : { "Probe1Enable", "Probe2Enable", "PresetEnable", "CompareOutEnable" })
            if (m_texts[latin(key)].toUpper() != AxisFalse)
                m_texts[latin(key)] = AxisTrue;
        // This box alone is checked in the form.
        if (m_texts[latin("ErrorStopEnable")].toUpper() == AxisFalse)
            m_texts[latin("ErrorStopEnable")] = AxisFalse;
        if (type == AxisTypePulse)
            applyPulse();
        if (type == AxisTypeEncoder)
            applyEncoder();
    }

    QStringList differences() const
    {
        QStringList wrong;
        for (auto entry = m_texts.begin(); entry != m_texts.end(); ++entry)
            if (m_page.stored(entry.key()) != entry.value())
                wrong.append(entry.key() + latin(" is ") + m_page.stored(entry.key()).left(30) + latin(" and not ")
                    + entry.value().left(30));
        return wrong;
    }

private:
    /// The position of a key in a list, put right where it lies past the end.
    int position(const char* key, const QStringList& list)
    {
        const uint stored = m_texts[latin(key)].toUInt();
        if (stored < uint(list.size()))
            return int(stored);
        m_texts[latin(key)] = latin("0");
        return 0;
    }

    void applyPulse()
    {
        const QStringList modes = m_page.list(latin("PulseEncodeMode"));
        const QStringList devices = m_page.list(latin("AxisPulseOutputDev"));
        const QString mode = modes.at(position("PulseOutputMethod", modes));
        const QString device = devices.at(position("OutputDevice", devices));
        position("OutputPin", m_page.list(QString(device + QLatin1Char('.') + mode)));
        if (m_nv3)
            position("CompareOutputPin", m_page.list(latin("HightSpeedPlusOutputPoint")));
    }

    void applyEncoder()
    {
        const QStringList modes = m_page.list(latin("EncoderEncodeMode"));
        const QString mode = modes.at(position("OutputMethod", modes));
        position("InputSignal", m_page.list(QString(latin("Encoder.") + mode)));
        position("CompareOutputPin", m_page.list(m_nv3 ? latin("HightSpeedPlusOutputPoint") : latin("OutputPoint")));
    }

    const ModePage& m_page;
    bool m_nv3;
    QMap<QString, QString> m_texts;
};

QMap<QString, QString> textsOf(const ModePage& page)
{
    QMap<QString, QString> texts;
    for (const QString& key : spoiledKeys())
        texts.insert(key, page.axis()->property(key, QString()));
    return texts;
}

void addTypesAndControllers()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("controller");
    for (const QString& type : allAxisTypes())
        for (const QString& controller : allControllers())
            QTest::addRow("%s on %s", qPrintable(type), qPrintable(controller)) << type << controller;
}

const QStringList none;

} // namespace

class ModelAndParamtSetWidgetBadRecordTest : public QObject {
    Q_OBJECT

private slots:
    void everyKeyBad_data();
    void everyKeyBad();
    void everyKeyAbsent_data();
    void everyKeyAbsent();
    void oneKeyBad_data();
    void oneKeyBad();
};

void ModelAndParamtSetWidgetBadRecordTest::everyKeyBad_data()
{
    addTypesAndControllers();
}

void ModelAndParamtSetWidgetBadRecordTest::everyKeyBad()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    ModePage page(type, controller);
    const QStringList texts{ QString(), latin("rubbish"), latin("99999"), latin("-1"), latin("1e300"), latin("-1e300"),
        latin("4294967295"), latin("99999999999999999999"), latin("nan"), latin("inf"), QString(400, QLatin1Char('9')),
        latin("1\n2"), QString(QChar(0xff11)), latin("<b>1</b>"), latin("TRUE"), latin("false"), latin("1"),
        latin("2.75") };
    for (const QString& text : texts) {
        for (const QString& key : spoiledKeys())
            page.store(key, text);
        page.store(latin("AxisType"), type);
        const QMap<QString, QString> before = textsOf(page);
        const ExpectedRecord expected(page, type, controller);
        page.open();
        QVERIFY2(expected.differences().isEmpty(),
            qPrintable(text.left(20) + latin(": ") + expected.differences().join(latin(", "))));
        const QStringList wrong = ExpectedControls(page, type, controller, before).differences();
        QVERIFY2(wrong.isEmpty(), qPrintable(text.left(20) + latin(": ") + wrong.join(latin(", "))));
        page.page->updateWidget();
        page.changeType(type);
        QCOMPARE(page.edit("lineEdit_3")->text(), AxisModeDefaults.value(latin("LimitDec")));
    }
}

void ModelAndParamtSetWidgetBadRecordTest::everyKeyAbsent_data()
{
    addTypesAndControllers();
}

void ModelAndParamtSetWidgetBadRecordTest::everyKeyAbsent()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    ModePage page(type, controller);
    removeAxisKeys(page.project, page.id, spoiledKeys());
    for (const QString& key : spoiledKeys())
        QCOMPARE(page.stored(key), latin("(absent)"));
    const QMap<QString, QString> before = textsOf(page);
    const ExpectedRecord expected(page, type, controller);
    page.open();
    QCOMPARE(expected.differences(), none);
    QCOMPARE(ExpectedControls(page, type, controller, before).differences(), none);
    page.changeType(type);
    for (auto entry = AxisModeDefaults.begin(); entry != AxisModeDefaults.end(); ++entry)
        QCOMPARE(page.stored(entry.key()).toDouble(), entry.value().toDouble());
}

void ModelAndParamtSetWidgetBadRecordTest::oneKeyBad_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("controller");
    for (const QString& type : allAxisTypes())
        for (const char* controller : { "KM1_M16", "NV2_H48Q8E", "NV3T_70Q12" })
            QTest::addRow("%s on %s", qPrintable(type), controller) << type << latin(controller);
}

/// Each key spoiled by itself, with the others sound: nothing but that key is corrected.
void ModelAndParamtSetWidgetBadRecordTest::oneKeyBad()
{
    QFETCH(QString, type);
    QFETCH(QString, controller);
    ModePage page(type, controller);
    const QMap<QString, QString> sound = textsOf(page);
    for (const QString& key : spoiledKeys()) {
        for (const char* text : { "", "rubbish", "99999", "TRUE", "1" }) {
            for (auto entry = sound.begin(); entry != sound.end(); ++entry)
                page.store(entry.key(), entry.value());
            page.store(key, latin(text));
            const QMap<QString, QString> before = textsOf(page);
            const ExpectedRecord expected(page, type, controller);
            page.open();
            QCOMPARE(expected.differences(), none);
            QCOMPARE(ExpectedControls(page, type, controller, before).differences(), none);
        }
    }
}

QTEST_MAIN(ModelAndParamtSetWidgetBadRecordTest)
#include "ModelAndParamtSetWidgetBadRecordTest.moc"
