#include "editor/MotionControlAxisFactory.h"

#include "editor/AxisFinder.h"
#include "editor/MotionControlAxisEditor.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QtTest>

#include <memory>

class MotionControlAxisFactoryTest : public QObject {
    Q_OBJECT

private slots:
    void tellsItsTypes();
    void makesAnOpenEditor_data();
    void makesAnOpenEditor();
    void makesNoEditorOfAnotherType_data();
    void makesNoEditorOfAnotherType();
    void handsOverAnEditorWhoseOpenFailed();
    void makesAFinder();
    void editorsDieWithTheFactory();
};

void MotionControlAxisFactoryTest::tellsItsTypes()
{
    MotionControlAxisFactory factory;
    QCOMPARE(factory.typeKeys(), QStringList());
    QCOMPARE(factory.typeKey(), QStringLiteral("AxisView"));
    QCOMPARE(factory.typeName(), QStringLiteral("AxisView"));
    QVERIFY(factory.canCreate(QStringLiteral("AxisView")));
    QVERIFY(!factory.canCreate(QStringLiteral("axisview")));
    QVERIFY(!factory.canCreate(QStringLiteral("AxisView ")));
    QVERIFY(!factory.canCreate(QString()));
}

void MotionControlAxisFactoryTest::makesAnOpenEditor_data()
{
    QTest::addColumn<bool>("forPath");
    QTest::newRow("createEditor") << false;
    QTest::newRow("createEditorForPath") << true;
}

void MotionControlAxisFactoryTest::makesAnOpenEditor()
{
    QFETCH(bool, forPath);
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const QString path = project.axisPath(project.addAxis(QStringLiteral("Feeder"))->id());
    MotionControlAxisFactory factory;
    const QString type = QStringLiteral("AxisView");
    std::unique_ptr<IEditor> editor(
        forPath ? factory.createEditorForPath(path, type) : factory.createEditor(path, type));
    QVERIFY(qobject_cast<MotionControlAxisEditor*>(editor.get()));
    QCOMPARE(editor->parent(), &factory);
    QCOMPARE(editor->nodePath(), path);
    QCOMPARE(editor->displayName(), QStringLiteral("Feeder"));
}

void MotionControlAxisFactoryTest::makesNoEditorOfAnotherType_data()
{
    QTest::addColumn<QString>("mimeType");
    QTest::newRow("another type") << QStringLiteral("GroupView");
    QTest::newRow("the type in other letters") << QStringLiteral("AXISVIEW");
    QTest::newRow("no type") << QString();
}

void MotionControlAxisFactoryTest::makesNoEditorOfAnotherType()
{
    QFETCH(QString, mimeType);
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const QString path = project.axisPath(project.addAxis(QStringLiteral("Feeder"))->id());
    MotionControlAxisFactory factory;
    QCOMPARE(factory.createEditor(path, mimeType), nullptr);
    QCOMPARE(factory.createEditorForPath(path, mimeType), nullptr);
    QVERIFY(factory.children().isEmpty());
}

void MotionControlAxisFactoryTest::handsOverAnEditorWhoseOpenFailed()
{
    TestHost host;
    MotionControlAxisFactory factory;
    const QString path = QStringLiteral("Nowhere.ConfigAndSetup.Axis.AxisView1");
    const std::unique_ptr<IEditor> editor(factory.createEditor(path, QStringLiteral("AxisView")));
    QVERIFY(editor);
    QCOMPARE(editor->nodePath(), path);
    QVERIFY(editor->widget());
}

void MotionControlAxisFactoryTest::makesAFinder()
{
    MotionControlAxisFactory factory;
    const std::unique_ptr<IEditorFinder> finder(factory.createFinder());
    QVERIFY(dynamic_cast<AxisFinder*>(finder.get()));
    QCOMPARE(finder->typeKey(), QStringLiteral("AxisView"));
    QVERIFY(finder->nodePath().isEmpty());
    const std::unique_ptr<IEditorFinder> other(factory.createFinder());
    QVERIFY(other != finder);
}

void MotionControlAxisFactoryTest::editorsDieWithTheFactory()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q12"));
    const QString path = project.axisPath(project.addAxis(QStringLiteral("Feeder"))->id());
    auto factory = std::make_unique<MotionControlAxisFactory>();
    const QPointer<IEditor> editor = factory->createEditor(path, QStringLiteral("AxisView"));
    const QPointer<QWidget> view = editor->widget();
    factory.reset();
    QVERIFY(!editor);
    QVERIFY(!view);
}

QTEST_MAIN(MotionControlAxisFactoryTest)
#include "MotionControlAxisFactoryTest.moc"
