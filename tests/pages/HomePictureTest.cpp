#include "pages/HomePicture.h"
#include "sdk/ServiceKeys.h"
#include "tests/support/TestHost.h"

#include <QLocale>
#include <QtTest>

class HomePictureTest : public QObject {
    Q_OBJECT

private slots:
    void theLastNumberOfAWordCounts_data();
    void theLastNumberOfAWordCounts();
    void thePathFollowsLanguageAndTheme_data();
    void thePathFollowsLanguageAndTheme();
    void fallbacksAreTheSystemsLanguageAndTheLightTheme();
    void withoutSettingsThereIsNoPath();
};

void HomePictureTest::theLastNumberOfAWordCounts_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("number");
    QTest::newRow("one number") << "Homing_35" << 35;
    QTest::newRow("two numbers") << "Homing_17_rev2" << 2;
    QTest::newRow("number first") << "24Homing" << 24;
    QTest::newRow("no number") << "Homing" << -1;
    QTest::newRow("nothing") << "" << -1;
}

void HomePictureTest::theLastNumberOfAWordCounts()
{
    QFETCH(QString, word);
    QFETCH(int, number);
    QCOMPARE(HomePicture::numberOfMode(word), number);
}

void HomePictureTest::thePathFollowsLanguageAndTheme_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("theme");
    QTest::addColumn<QString>("folder");
    QTest::newRow("Chinese, light") << "zh_CN"
                                    << "default.qss"
                                    << "default/Homing_zh_CN";
    QTest::newRow("Chinese, dark") << "zh_CN"
                                   << "dark.qss"
                                   << "dark/Homing_zh_CN";
    QTest::newRow("English, light") << "en_US"
                                    << "default.qss"
                                    << "default/Homing_en_US";
    QTest::newRow("English, dark") << "en_US"
                                   << "dark.qss"
                                   << "dark/Homing_en_US";
    QTest::newRow("another language, dark") << "de_DE"
                                            << "dark.qss"
                                            << "default/Homing_en_US";
    QTest::newRow("another language, light") << "de_DE"
                                             << "default.qss"
                                             << "default/Homing_en_US";
    QTest::newRow("the case of the language does not count") << "ZH_cn"
                                                             << "dark.qss"
                                                             << "dark/Homing_zh_CN";
    QTest::newRow("the case of the theme does not count") << "en_US"
                                                          << "DEFAULT.QSS"
                                                          << "default/Homing_en_US";
    QTest::newRow("any other style sheet is dark") << "en_US"
                                                   << "mine.qss"
                                                   << "dark/Homing_en_US";
}

void HomePictureTest::thePathFollowsLanguageAndTheme()
{
    QFETCH(QString, language);
    QFETCH(QString, theme);
    QFETCH(QString, folder);
    TestHost host;
    host.settings.setValue(Solution::ConfigKey::language(), language);
    host.settings.setValue(Solution::ConfigKey::theme(), theme);
    QCOMPARE(HomePicture::path(23), QStringLiteral(":/images/%1/Homing_23.png").arg(folder));
}

void HomePictureTest::fallbacksAreTheSystemsLanguageAndTheLightTheme()
{
    TestHost host;
    HomePicture::path(17);
    QCOMPARE(host.settings.lastFallback(Solution::ConfigKey::language()).toString(), QLocale::system().name());
    QCOMPARE(host.settings.lastFallback(Solution::ConfigKey::theme()).toString(), QStringLiteral("default.qss"));
}

void HomePictureTest::withoutSettingsThereIsNoPath()
{
    QCOMPARE(HomePicture::path(17), QString());
    TestHost host;
    host.withhold(Solution::ServiceKey::settings());
    QCOMPARE(HomePicture::path(17), QString());
}

QTEST_MAIN(HomePictureTest)
#include "HomePictureTest.moc"
