#include "workbench/DiagnosisTable.h"
#include "host/projectmodel/ControllerDescription.h"
#include "protocol/DiagnosisCodes.h"
#include "sdk/ServiceKeys.h"
#include "workbench/ControllerCatalog.h"

#include "workbench/Configuration.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

class DiagnosisTableTest : public QObject {
    Q_OBJECT

private slots:
    void everyCodeOfTheTableHasItsTexts_data();
    void everyCodeOfTheTableHasItsTexts();
    void everyControllerExplainsEveryCode();
    void anUnknownCodeIsNamedWithTheController();
    void anUnknownClassIsNamedToo();
    void withoutAProjectTheCodeIsNamed();
    void anotherLanguageFallsBackToEnglish();
    void aBadDescriptionIsLeftOutAndNamed();
    void anEmptyFolderIsNamed();
};

void DiagnosisTableTest::everyCodeOfTheTableHasItsTexts_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("in English") << QStringLiteral("en_US");
    QTest::newRow("in Chinese") << QStringLiteral("zh_CN");
}

void DiagnosisTableTest::everyCodeOfTheTableHasItsTexts()
{
    QFETCH(QString, language);
    const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    const ControllerDescription* controller = catalog.find(QStringLiteral("NV3T_70Q12E"));
    QVERIFY(controller);
    Cookies settings;
    settings.setValue(Solution::ConfigKey::language(), language);
    DiagnosisTable diagnosis(settings, [controller] { return controller; });
    const QHash<quint16, DiagnosisEntry> table = controller->diagnosis(11);
    QVERIFY(!table.isEmpty());
    for (auto entry = table.begin(); entry != table.end(); ++entry) {
        const ErrorInfo info = diagnosis.errorInfo(11, entry.key());
        QCOMPARE(info.text, entry->text.value(language));
        QCOMPARE(info.name, entry->name.value(language));
        QVERIFY(!info.text.isEmpty());
    }
}

void DiagnosisTableTest::everyControllerExplainsEveryCode()
{
    // Every code there is, so that a new one cannot come without its texts.
    QFile header(QStringLiteral(KESTRUN_SOURCE_DIR "/protocol/DiagnosisCodes.h"));
    QVERIFY(header.open(QIODevice::ReadOnly));
    QVector<quint16> codes;
    const QRegularExpression definition(QStringLiteral("constexpr std::int16_t \\w+ = (\\w+);"));
    QRegularExpressionMatchIterator found = definition.globalMatch(QString::fromUtf8(header.readAll()));
    while (found.hasNext())
        codes.append(static_cast<quint16>(found.next().captured(1).toInt(nullptr, 0)));
    QVERIFY(codes.removeOne(Diagnosis::ok));
    QVERIFY(codes.contains(Diagnosis::versionDiffers) && codes.size() > 40);
    const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    QVERIFY(!catalog.controllers().isEmpty());
    for (const ControllerDescription& controller : catalog.controllers()) {
        const QHash<quint16, DiagnosisEntry> table = controller.diagnosis(11);
        for (const quint16 code : qAsConst(codes)) {
            const DiagnosisEntry entry = table.value(code);
            for (const QString& language : { QStringLiteral("en_US"), QStringLiteral("zh_CN") }) {
                const bool whole = !entry.name.value(language).isEmpty() && !entry.text.value(language).isEmpty()
                    && !entry.remedy.value(language).isEmpty();
                QVERIFY2(whole, qPrintable(QStringLiteral("%1 %2").arg(controller.model()).arg(code)));
            }
        }
    }
}

void DiagnosisTableTest::anUnknownCodeIsNamedWithTheController()
{
    const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    const ControllerDescription* controller = catalog.find(QStringLiteral("NV3T_70Q12E"));
    Cookies settings;
    DiagnosisTable diagnosis(settings, [controller] { return controller; });
    const QString text = diagnosis.errorInfo(11, 65535).text;
    QVERIFY2(text.contains(QStringLiteral("65535")) && text.contains(QStringLiteral("16#ffff")), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("NV3T_70Q12E")));
}

void DiagnosisTableTest::anUnknownClassIsNamedToo()
{
    const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    const ControllerDescription* controller = catalog.find(QStringLiteral("NV3T_70Q12E"));
    Cookies settings;
    DiagnosisTable diagnosis(settings, [controller] { return controller; });
    QVERIFY(diagnosis.errorInfo(9999, 1).text.contains(QLatin1Char('1')));
}

void DiagnosisTableTest::withoutAProjectTheCodeIsNamed()
{
    Cookies settings;
    DiagnosisTable diagnosis(settings, [] { return nullptr; });
    QVERIFY(diagnosis.errorInfo(11, 4711).text.contains(QStringLiteral("4711")));
}

void DiagnosisTableTest::anotherLanguageFallsBackToEnglish()
{
    const ControllerCatalog catalog(QStringLiteral(KESTRUN_CONTROLLER_DIR));
    const ControllerDescription* controller = catalog.find(QStringLiteral("NV3T_70Q12E"));
    Cookies settings;
    settings.setValue(Solution::ConfigKey::language(), QStringLiteral("de_DE"));
    DiagnosisTable diagnosis(settings, [controller] { return controller; });
    const QHash<quint16, DiagnosisEntry> table = controller->diagnosis(11);
    QCOMPARE(diagnosis.errorInfo(11, table.begin().key()).text, table.begin()->text.value(QStringLiteral("en_US")));
}

void DiagnosisTableTest::aBadDescriptionIsLeftOutAndNamed()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(
        QStringLiteral(KESTRUN_CONTROLLER_DIR "/NV3T_50Q4.json"), folder.filePath(QStringLiteral("good.json"))));
    QFile bad(folder.filePath(QStringLiteral("bad.json")));
    QVERIFY(bad.open(QIODevice::WriteOnly));
    bad.write("{ \"model\": 1 }");
    bad.close();
    const ControllerCatalog catalog(folder.path());
    QCOMPARE(catalog.controllers().size(), 1);
    QCOMPARE(catalog.problems().size(), 1);
    QVERIFY(catalog.problems().first().contains(QStringLiteral("bad.json")));
}

void DiagnosisTableTest::anEmptyFolderIsNamed()
{
    const QTemporaryDir folder;
    const ControllerCatalog catalog(folder.path());
    QVERIFY(catalog.problems().first().contains(folder.path()));
}

QTEST_MAIN(DiagnosisTableTest)
#include "DiagnosisTableTest.moc"
