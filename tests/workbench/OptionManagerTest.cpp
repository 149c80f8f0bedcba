#include "workbench/OptionManager.h"
#include "sdk/ServiceKeys.h"
#include "tests/support/ModalDialogDriver.h"
#include "workbench/AppearanceOption.h"
#include "workbench/CommunicationOption.h"
#include "workbench/Configuration.h"
#include "workbench/OptionsDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

class OptionManagerTest : public QObject {
    Q_OBJECT

private slots:
    void applyingTakesTheValuesOver_data();
    void applyingTakesTheValuesOver();
    void thePageThatIsAskedForIsInFront();
    void twelvePollPeriodsMustStayBelowTheTimeout_data();
    void twelvePollPeriodsMustStayBelowTheTimeout();
    void missingTimesHaveTheirStandard_data();
    void missingTimesHaveTheirStandard();
    void aTimeoutStaysWithinSixteenBits();
    void themeAndLanguageAreHandedOn();
};

namespace {

template <typename Widget>
Widget* find(QWidget* parent, const char* name)
{
    return parent->findChild<Widget*>(QLatin1String(name));
}

void press(QWidget* dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

} // namespace

void OptionManagerTest::applyingTakesTheValuesOver_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("news");
    QTest::newRow("OK") << int(QDialogButtonBox::Ok) << 250 << 1;
    QTest::newRow("Apply") << int(QDialogButtonBox::Apply) << 250 << 1;
    QTest::newRow("Cancel") << int(QDialogButtonBox::Cancel) << 0 << 0;
}

void OptionManagerTest::applyingTakesTheValuesOver()
{
    QFETCH(int, button);
    Cookies settings;
    OptionManager options;
    options.addOptionFactory(new CommunicationOptionFactory(settings));
    QSignalSpy applied(&options, &IOptionManager::applyOption);
    ModalDialogDriver driver([&](QDialog* dialog) {
        auto* time = find<QSpinBox>(dialog, "monitorTime");
        time->setFocus();
        time->selectAll();
        QTest::keyClicks(time, QStringLiteral("250"));
        press(dialog, static_cast<QDialogButtonBox::StandardButton>(button));
    });
    options.exec(QString());
    QTEST(settings.value(Solution::ConfigKey::monitorTime(), 0).toInt(), "stored");
    QTEST(applied.count(), "news");
    if (!applied.isEmpty())
        QCOMPARE(applied.first().first().toString(), QStringLiteral("workbench.communication"));
}

void OptionManagerTest::thePageThatIsAskedForIsInFront()
{
    Cookies settings;
    OptionManager options;
    options.addOptionFactory(new AppearanceOptionFactory(
        { [] { return QString(); }, [](const QString&) {}, [] { return QString(); }, [](const QString&) {} }));
    options.addOptionFactory(new CommunicationOptionFactory(settings));
    int row = -1;
    ModalDialogDriver driver([&](QDialog* dialog) { row = find<QListWidget>(dialog, "pageList")->currentRow(); });
    options.exec(QStringLiteral("workbench.communication"), QStringLiteral("any"));
    QCOMPARE(row, 1);
    driver.next([&](QDialog* dialog) { row = find<QListWidget>(dialog, "pageList")->currentRow(); });
    options.exec(QStringLiteral("unknown"));
    QCOMPARE(row, 0);
}

void OptionManagerTest::twelvePollPeriodsMustStayBelowTheTimeout_data()
{
    QTest::addColumn<int>("period");
    QTest::addColumn<int>("timeout");
    QTest::addColumn<bool>("warned");
    QTest::newRow("well below") << 100 << 5000 << false;
    QTest::newRow("just below") << 100 << 1201 << false;
    QTest::newRow("equal") << 100 << 1200 << true;
    QTest::newRow("above") << 1000 << 5000 << true;
}

void OptionManagerTest::twelvePollPeriodsMustStayBelowTheTimeout()
{
    QFETCH(int, period);
    QFETCH(int, timeout);
    QFETCH(bool, warned);
    Cookies settings;
    settings.setValue(Solution::ConfigKey::communicationTimeout(), timeout);
    OptionManager options;
    options.addOptionFactory(new CommunicationOptionFactory(settings));
    ModalDialogDriver driver([&](QDialog* dialog) {
        find<QSpinBox>(dialog, "monitorTime")->setValue(period);
        auto* warning = find<QLabel>(dialog, "warning");
        QCOMPARE(warning->isVisible(), warned);
        QVERIFY(warning->text().contains(QString::number(12 * period)));
        QVERIFY(warning->text().contains(QString::number(timeout)));
    });
    options.exec(QString());
    QCOMPARE(driver.count, 1);
}

void OptionManagerTest::missingTimesHaveTheirStandard_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("nothing stored") << QVariant();
    QTest::newRow("zero") << QVariant(0);
    QTest::newRow("negative") << QVariant(-7);
    QTest::newRow("no number") << QVariant(QStringLiteral("soon"));
    QTest::newRow("a text beyond 64 bits") << QVariant(QStringLiteral("99999999999999999999"));
    QTest::newRow("an empty text") << QVariant(QString());
}

void OptionManagerTest::missingTimesHaveTheirStandard()
{
    QFETCH(QVariant, stored);
    Cookies settings;
    if (stored.isValid()) {
        settings.setValue(Solution::ConfigKey::monitorTime(), stored);
        settings.setValue(Solution::ConfigKey::communicationTimeout(), stored);
    }
    const CommunicationTimes times = CommunicationTimes::read(settings);
    QCOMPARE(times.monitorTime, 100);
    QCOMPARE(times.timeout, 5000);
    QVERIFY(times.isSound());
}

void OptionManagerTest::aTimeoutStaysWithinSixteenBits()
{
    Cookies settings;
    settings.setValue(Solution::ConfigKey::communicationTimeout(), 1000000);
    OptionManager options;
    options.addOptionFactory(new CommunicationOptionFactory(settings));
    ModalDialogDriver driver([](QDialog* dialog) { press(dialog, QDialogButtonBox::Ok); });
    options.exec(QString());
    QCOMPARE(settings.value(Solution::ConfigKey::communicationTimeout(), 0).toInt(), 32767);
}

void OptionManagerTest::themeAndLanguageAreHandedOn()
{
    QString theme = QStringLiteral("default.qss");
    QString language = QStringLiteral("en_US");
    OptionManager options;
    options.addOptionFactory(
        new AppearanceOptionFactory({ [&] { return theme; }, [&](const QString& name) { theme = name; },
            [&] { return language; }, [&](const QString& locale) { language = locale; } }));
    ModalDialogDriver driver([](QDialog* dialog) {
        auto* themes = find<QComboBox>(dialog, "theme");
        auto* languages = find<QComboBox>(dialog, "language");
        QCOMPARE(themes->currentIndex(), 0);
        QCOMPARE(languages->currentIndex(), 0);
        QTest::keyClick(themes, Qt::Key_Down);
        QTest::keyClick(languages, Qt::Key_Down);
        press(dialog, QDialogButtonBox::Ok);
    });
    options.exec(QString());
    QCOMPARE(theme, QStringLiteral("dark.qss"));
    QCOMPARE(language, QStringLiteral("zh_CN"));
}

QTEST_MAIN(OptionManagerTest)
#include "OptionManagerTest.moc"
