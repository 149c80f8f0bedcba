#include "editor/AxisNodePath.h"

#include <QtTest>

class AxisNodePathTest : public QObject {
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
};

void AxisNodePathTest::parses_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("projectName");
    QTest::addColumn<quint32>("axisId");

    const QString prefix = QStringLiteral("AxisView");
    const auto row = [](const char* name, const char* path, const QString& prefix, const char* project, quint32 id) {
        QTest::newRow(name) << QString::fromLatin1(path) << prefix << QString::fromLatin1(project) << id;
    };
    row("project first, id last", "P.ConfigAndSetup.Axis.AxisView7", prefix, "P", 7);
    row("two segments", "P.AxisView12", prefix, "P", 12);
    row("no point: the whole path is both", "AxisView3", prefix, "AxisView3", 3);
    row("the prefix goes wherever it stands", "P.AxisView1AxisView2", prefix, "P", 12);
    row("another prefix stays and makes the id 0", "P.AxisView7", QStringLiteral("GroupView"), "P", 0);
    row("case counts", "P.axisview7", prefix, "P", 0);
    row("no number is 0", "P.Axis.AxisViewX", prefix, "P", 0);
    row("no id is 0", "P.Axis.AxisView", prefix, "P", 0);
    row("an empty last segment is 0", "P.", prefix, "P", 0);
    row("an empty path is 0", "", prefix, "", 0);
    row("an empty prefix takes nothing out", "P.7", QString(), "P", 7);
    row("the largest id", "P.AxisView4294967295", prefix, "P", 4294967295U);
}

void AxisNodePathTest::parses()
{
    QFETCH(QString, path);
    QFETCH(QString, prefix);
    QFETCH(QString, projectName);
    QFETCH(quint32, axisId);
    const AxisNodePath node = AxisNodePath::parse(path, prefix);
    QCOMPARE(node.projectName, projectName);
    QCOMPARE(node.axisId, axisId);
}

QTEST_APPLESS_MAIN(AxisNodePathTest)
#include "AxisNodePathTest.moc"
