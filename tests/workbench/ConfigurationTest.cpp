#include "workbench/Configuration.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

class ConfigurationTest : public QObject {
    Q_OBJECT

private slots:
    void aCookieIsReadBack();
    void aCookieThatWasRemovedGivesTheFallback();
    void newsComeForChangesOnly();
    void settingsComeBackInAnotherRun();
    void aSettingOfTheGeneralGroupComesBack();
    void settingsTellOfChangesOnly();
    void settingsThatCannotBeWrittenSaySo();
};

void ConfigurationTest::aCookieIsReadBack()
{
    Cookies cookies;
    QCOMPARE(cookies.value(QStringLiteral("k"), 5).toInt(), 5);
    cookies.setValue(QStringLiteral("k"), 7);
    QCOMPARE(cookies.value(QStringLiteral("k"), 5).toInt(), 7);
}

void ConfigurationTest::aCookieThatWasRemovedGivesTheFallback()
{
    Cookies cookies;
    cookies.setValue(QStringLiteral("k"), 7);
    QSignalSpy news(&cookies, &IConfiguration::valueChanged);
    cookies.remove(QStringLiteral("k"));
    cookies.remove(QStringLiteral("k"));
    QCOMPARE(news.count(), 1);
    QVERIFY(!cookies.value(QStringLiteral("k"), QVariant()).isValid());
}

void ConfigurationTest::newsComeForChangesOnly()
{
    Cookies cookies;
    QSignalSpy news(&cookies, &IConfiguration::valueChanged);
    cookies.setValue(QStringLiteral("k"), 7);
    cookies.setValue(QStringLiteral("k"), 7);
    QCOMPARE(news.count(), 1);
    QCOMPARE(news.first().first().toString(), QStringLiteral("k"));
}

void ConfigurationTest::settingsComeBackInAnotherRun()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("s.ini"));
    {
        Settings settings(file);
        settings.setValue(QStringLiteral("Werkbay/Qss"), QStringLiteral("dark.qss"));
        QVERIFY(settings.flush());
    }
    const Settings settings(file);
    QCOMPARE(settings.fileName(), file);
    QCOMPARE(settings.value(QStringLiteral("Werkbay/Qss"), QString()).toString(), QStringLiteral("dark.qss"));
    QCOMPARE(settings.value(QStringLiteral("none"), 3).toInt(), 3);
}

void ConfigurationTest::aSettingOfTheGeneralGroupComesBack()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("s.ini"));
    {
        Settings settings(file);
        settings.setValue(QStringLiteral("General/Language"), QStringLiteral("zh_CN"));
    }
    const Settings settings(file);
    QCOMPARE(settings.value(QStringLiteral("General/Language"), QString()).toString(), QStringLiteral("zh_CN"));
}

void ConfigurationTest::settingsTellOfChangesOnly()
{
    const QTemporaryDir folder;
    Settings settings(folder.filePath(QStringLiteral("s.ini")));
    QSignalSpy news(&settings, &IConfiguration::valueChanged);
    settings.setValue(QStringLiteral("a/b"), 7);
    settings.setValue(QStringLiteral("a/b"), 7);
    settings.setValue(QStringLiteral("a/b"), 8);
    QCOMPARE(news.count(), 2);
}

void ConfigurationTest::settingsThatCannotBeWrittenSaySo()
{
    const QTemporaryDir folder;
    Settings settings(QString(folder.path() + QStringLiteral("/s.ini/inside.ini")));
    QFile blocker(folder.filePath(QStringLiteral("s.ini")));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    settings.setValue(QStringLiteral("a"), 1);
    QVERIFY(!settings.flush());
}

QTEST_MAIN(ConfigurationTest)
#include "ConfigurationTest.moc"
