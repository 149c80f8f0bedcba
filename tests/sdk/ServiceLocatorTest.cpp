#include "sdk/ServiceLocator.h"
#include "sdk/IApplication.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditorManager.h"
#include "sdk/ServiceKeys.h"
#include "sdk/Transfer.h"

#include <QtTest>

namespace {

class PlainManager : public IManager { };

class OfflineTransfer : public Transfer {
public:
    bool isOnline() override { return false; }
    bool isDirectLogin() override { return false; }
};

/// A host whose one manager is not an editor manager unless told.
class Application : public IApplication {
public:
    IManager* manager(const QString& name) override
    {
        asked.append(name);
        return &plain;
    }

    QStringList asked;
    PlainManager plain;
};

} // namespace

class ServiceLocatorTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void withoutPropertyThereIsNoHost();
    void propertyHoldsTheAddressAsAnInteger();
    void withdrawnHostIsGone();
    void walkEndsInNullWhereverAStepIsMissing();
    void serviceOfAnotherClassCountsAsMissing();
    void editorManagerIsAskedForByName();
    void keysAndNamesAreThoseOfTheContract_data();
    void keysAndNamesAreThoseOfTheContract();
};

void ServiceLocatorTest::init()
{
    QCoreApplication::instance()->setProperty("IApplication", QVariant());
}

void ServiceLocatorTest::withoutPropertyThereIsNoHost()
{
    QVERIFY(!Solution::application());
    QVERIFY(!Solution::service(QStringLiteral("Solution.View")));
    QVERIFY(!Solution::editorManager());
    QVERIFY(!Solution::serviceAs<Transfer>(QStringLiteral("zelport.Transfer")));
}

void ServiceLocatorTest::propertyHoldsTheAddressAsAnInteger()
{
    Application application;
    Solution::publishApplication(&application);
    const QVariant property = QCoreApplication::instance()->property("IApplication");
    QCOMPARE(property.toULongLong(),
        static_cast<qulonglong>(reinterpret_cast<quintptr>(static_cast<IApplication*>(&application))));
    QCOMPARE(Solution::application(), static_cast<IApplication*>(&application));
}

void ServiceLocatorTest::withdrawnHostIsGone()
{
    Application application;
    Solution::publishApplication(&application);
    Solution::publishApplication(nullptr);
    QVERIFY(!Solution::application());
}

void ServiceLocatorTest::walkEndsInNullWhereverAStepIsMissing()
{
    const QString key = Solution::ServiceKey::transfer();
    QVERIFY(!Solution::service(nullptr, key));
    QVERIFY(!Solution::editorManager(nullptr));

    Application application;
    QVERIFY2(!Solution::service(&application, key), "an empty table");
    OfflineTransfer transfer;
    application.objectTable.insert(key, &transfer);
    QVERIFY2(!Solution::service(&application, QStringLiteral("zelport.transfer")), "keys compare exactly");
    QVERIFY2(!Solution::service(key), "not published");
    QCOMPARE(Solution::service(&application, key), static_cast<QObject*>(&transfer));
    Solution::publishApplication(&application);
    QCOMPARE(Solution::service(key), static_cast<QObject*>(&transfer));
    QCOMPARE(application.objectTable.size(), 1);
}

void ServiceLocatorTest::serviceOfAnotherClassCountsAsMissing()
{
    Application application;
    OfflineTransfer transfer;
    application.objectTable.insert(Solution::ServiceKey::cookies(), &transfer);
    application.objectTable.insert(Solution::ServiceKey::transfer(), &transfer);
    Solution::publishApplication(&application);
    QVERIFY(!Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies()));
    QVERIFY(!Solution::serviceAs<IConfiguration>(&application, Solution::ServiceKey::cookies()));
    QCOMPARE(Solution::serviceAs<Transfer>(Solution::ServiceKey::transfer()), static_cast<Transfer*>(&transfer));
    QVERIFY2(!Solution::editorManager(&application), "a manager that edits nothing");
}

void ServiceLocatorTest::editorManagerIsAskedForByName()
{
    Application application;
    Solution::publishApplication(&application);
    Solution::editorManager();
    QCOMPARE(application.asked, QStringList{ QStringLiteral("editor") });
}

void ServiceLocatorTest::keysAndNamesAreThoseOfTheContract_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const auto add = [](const QString& name, const char* expected) {
        QTest::newRow(expected) << name << QString::fromLatin1(expected);
    };
    add(Solution::ManagerName::editor(), "editor");
    add(Solution::ServiceKey::view(), "Solution.View");
    add(Solution::ServiceKey::viewHelper(), "Solution.ViewHelper");
    add(Solution::ServiceKey::cookies(), "ICookies");
    add(Solution::ServiceKey::settings(), "ISettings");
    add(Solution::ServiceKey::logManager(), "LogManager");
    add(Solution::ServiceKey::transfer(), "zelport.Transfer");
    add(Solution::ServiceKey::comparatorManager(), "COMPARATORMAN");
    add(Solution::ServiceKey::motionControlDebug(), "MotionControlDebug");
    add(Solution::ServiceKey::backgroundTransaction(), "BackgroundTransaction.name");
    add(Solution::ServiceKey::variableMonitor(), "varMonitor");
    add(Solution::ServiceKey::diagnosisInfo(), "werkbay.DiagnosisInfo");
    add(Solution::ConfigKey::theme(), "Werkbay/Qss");
    add(Solution::ConfigKey::projectName(), "Project.Name");
    add(Solution::ConfigKey::projectComparison(), "IDE/ProjectCompration");
    add(Solution::ConfigKey::language(), "General/Language");
    add(Solution::ConfigKey::monitorTime(), "Communication/monitortime");
    add(Solution::ConfigKey::communicationTimeout(), "Communication/commtimeout");
    add(Solution::ThemeName::light(), "default.qss");
}

void ServiceLocatorTest::keysAndNamesAreThoseOfTheContract()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(name, expected);
}

QTEST_GUILESS_MAIN(ServiceLocatorTest)
#include "ServiceLocatorTest.moc"
