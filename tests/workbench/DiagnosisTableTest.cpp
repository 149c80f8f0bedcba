#include "workbench/DiagnosisTable.h"
#include "host/projectmodel/ControllerDescription.h"
#include "sdk/ServiceKeys.h"
#include "workbench/ControllerCatalog.h"

#include "workbench/Configuration.h"

#include <QTemporaryDir>
#include <QtTest>

class DiagnosisTableTest : public QObject {
    Q_OBJECT

private slots:
    void everyCodeOfTheTableHasItsTexts_data();
    void everyCodeOfTheTableHasItsTexts();
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
