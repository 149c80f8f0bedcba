#include "workbench/PluginPackage.h"

#include <QtTest>

class PluginPackageTest : public QObject {
    Q_OBJECT

private slots:
    void aWholePackageIsRead();
    void aPlainTextServesAllLanguages();
    void whatIsMissingIsLeftEmpty();
    void aFaultIsNamed_data();
    void aFaultIsNamed();
    void aFaultLeavesThePackageAsItWas();
    void aLanguageFallsBack_data();
    void aLanguageFallsBack();
    void aVersionServes_data();
    void aVersionServes();
};

void PluginPackageTest::aWholePackageIsRead()
{
    const QString text = QStringLiteral(
        "{\r\n\"name\": \"a.b\", \"version\": \"1.2.3\", \"descript\": {\"zh_CN\": \"轴\", \"en_US\": \"Axis\"},"
        "\"provider\": {\"en_US\": \"Maker\"}, \"catgory\": {\"en_US\": \"/a/b\"},"
        "\"dependencies\": {\"project.solutionview\": \"1.0.0\"}, \"forceLoad\": true }\r\n");
    PluginPackage package;
    QString error;
    QVERIFY2(package.read(text, &error), qPrintable(error));
    QCOMPARE(package.name, QStringLiteral("a.b"));
    QCOMPARE(package.version, QStringLiteral("1.2.3"));
    QCOMPARE(package.description.value(QStringLiteral("zh_CN")), QStringLiteral("轴"));
    QCOMPARE(package.provider.value(QStringLiteral("en_US")), QStringLiteral("Maker"));
    QCOMPARE(package.category.value(QStringLiteral("en_US")), QStringLiteral("/a/b"));
    QCOMPARE(package.dependencies.value(QStringLiteral("project.solutionview")), QStringLiteral("1.0.0"));
    QVERIFY(package.forceLoad);
}

void PluginPackageTest::aPlainTextServesAllLanguages()
{
    PluginPackage package;
    QString error;
    QVERIFY(package.read(QStringLiteral("{\"name\": \"a\", \"version\": \"1.0\", \"descript\": \"Plain\"}"), &error));
    QCOMPARE(PluginPackage::inLanguage(package.description, QStringLiteral("zh_CN")), QStringLiteral("Plain"));
}

void PluginPackageTest::whatIsMissingIsLeftEmpty()
{
    PluginPackage package;
    QString error;
    QVERIFY(package.read(QStringLiteral("{\"name\": \"a\", \"version\": \"1.0\"}"), &error));
    QVERIFY(package.dependencies.isEmpty());
    QVERIFY(package.description.isEmpty());
    QVERIFY(!package.forceLoad);
}

void PluginPackageTest::aFaultIsNamed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("named");
    QTest::newRow("nothing") << QString() << QStringLiteral("empty");
    QTest::newRow("blanks") << QStringLiteral(" \r\n") << QStringLiteral("empty");
    QTest::newRow("no JSON") << QStringLiteral("{ \"name\": tru }") << QStringLiteral("at byte");
    QTest::newRow("a list") << QStringLiteral("[1]") << QStringLiteral("no JSON object");
    QTest::newRow("no name") << QStringLiteral("{\"version\": \"1.0\"}") << QStringLiteral("\"name\"");
    QTest::newRow("a name that is no text")
        << QStringLiteral("{\"name\": 1, \"version\": \"1.0\"}") << QStringLiteral("\"name\"");
    QTest::newRow("no version") << QStringLiteral("{\"name\": \"a\"}") << QStringLiteral("\"version\"");
    QTest::newRow("dependencies that are a list")
        << QStringLiteral("{\"name\": \"a\", \"version\": \"1.0\", \"dependencies\": []}")
        << QStringLiteral("\"dependencies\"");
    QTest::newRow("a dependency that is no text")
        << QStringLiteral("{\"name\": \"a\", \"version\": \"1.0\", \"dependencies\": {\"b\": 1}}")
        << QStringLiteral("\"b\"");
    QTest::newRow("a dependency on no version")
        << QStringLiteral("{\"name\": \"a\", \"version\": \"1.0\", \"dependencies\": {\"b\": \"new\"}}")
        << QStringLiteral("\"new\"");
}

void PluginPackageTest::aFaultIsNamed()
{
    QFETCH(QString, text);
    QFETCH(QString, named);
    PluginPackage package;
    QString error;
    QVERIFY(!package.read(text, &error));
    QVERIFY2(error.contains(named), qPrintable(error));
}

void PluginPackageTest::aFaultLeavesThePackageAsItWas()
{
    PluginPackage package;
    package.name = QStringLiteral("kept");
    QString error;
    QVERIFY(!package.read(QStringLiteral("{\"name\": \"a\"}"), &error));
    QCOMPARE(package.name, QStringLiteral("kept"));
}

void PluginPackageTest::aLanguageFallsBack_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("text");
    QTest::newRow("the language itself") << QStringLiteral("zh_CN") << QStringLiteral("轴");
    QTest::newRow("English for another one") << QStringLiteral("de_DE") << QStringLiteral("Axis");
}

void PluginPackageTest::aLanguageFallsBack()
{
    QFETCH(QString, language);
    const PluginPackage::Texts texts{ { QStringLiteral("zh_CN"), QStringLiteral("轴") },
        { QStringLiteral("en_US"), QStringLiteral("Axis") } };
    QTEST(PluginPackage::inLanguage(texts, language), "text");
    QCOMPARE(PluginPackage::inLanguage({ { QStringLiteral("fr_FR"), QStringLiteral("Axe") } }, language),
        QStringLiteral("Axe"));
    QCOMPARE(PluginPackage::inLanguage({}, language), QString());
}

void PluginPackageTest::aVersionServes_data()
{
    QTest::addColumn<QString>("present");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<bool>("serves");
    QTest::newRow("the same") << QStringLiteral("1.0.0") << QStringLiteral("1.0.0") << true;
    QTest::newRow("a newer one") << QStringLiteral("1.10.0") << QStringLiteral("1.9.0") << true;
    QTest::newRow("an older one") << QStringLiteral("1.0.0") << QStringLiteral("1.0.1") << false;
    QTest::newRow("another major version") << QStringLiteral("2.0.0") << QStringLiteral("1.0.0") << false;
    QTest::newRow("none") << QString() << QStringLiteral("1.0.0") << false;
}

void PluginPackageTest::aVersionServes()
{
    QFETCH(QString, present);
    QFETCH(QString, wanted);
    QTEST(PluginPackage::serves(present, wanted), "serves");
}

QTEST_MAIN(PluginPackageTest)
#include "PluginPackageTest.moc"
