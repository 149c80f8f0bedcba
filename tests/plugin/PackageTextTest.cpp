#include "plugin/MotionControlAxisPlugin.h"

#include "tests/support/TestHost.h"

#include <QFile>
#include <QtTest>

/// A plug-in object without its bundle: this program does not link the resources.
class PackageTextTest : public QObject {
    Q_OBJECT

private slots:
    void missingManifestLeavesTheTextEmpty();
};

void PackageTextTest::missingManifestLeavesTheTextEmpty()
{
    QVERIFY(!QFile::exists(QStringLiteral(":/axis_package.json")));
    TestHost host;
    MotionControlAxisPlugin plugin;
    QVERIFY(plugin.packageText.isEmpty());
    QCOMPARE(plugin.objectName(), QStringLiteral("MotionControlAxis"));
    QVERIFY(plugin.initialize());
}

QTEST_MAIN(PackageTextTest)
#include "PackageTextTest.moc"
