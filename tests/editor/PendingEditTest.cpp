#include "axisdata/AxisConstants.h"
#include "editor/MotionControlAxisEditor.h"
#include "host/components/PropertyEditorView.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/NumberTyping.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

namespace {

QWidget* pageOf(QWidget& view, const QString& className)
{
    const QList<QWidget*> widgets = view.findChildren<QWidget*>();
    for (QWidget* widget : widgets)
        if (QLatin1String(widget->metaObject()->className()) == className)
            return widget;
    return nullptr;
}

} // namespace

/// An edit that has not left its field lands in the record before the editor says whether it is modified.
class PendingEditTest : public QObject {
    Q_OBJECT

private slots:
    void landsBeforeTheAnswer_data();
    void landsBeforeTheAnswer();
};

void PendingEditTest::landsBeforeTheAnswer_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, const char* page, const char* field, const char* key, const char* typed,
                         const char* stored, const char* shown) {
        QTest::newRow(name) << QString::fromLatin1(page) << QString::fromLatin1(field) << QString::fromLatin1(key)
                            << QString::fromLatin1(typed) << QString::fromLatin1(stored) << QString::fromLatin1(shown);
    };
    const char* const unit = "DocumentSetWidget";
    const char* const mode = "ModelAndParamtSetWidget";
    row("a distance of the unit page", unit, "lineEdit_2", "UnUseGearValue", "2.5", "2.500000", "2.500000");
    row("a refused distance of the unit page", unit, "lineEdit_2", "UnUseGearValue", "0", "1", "1");
    row("the pulse count", unit, "lineEdit_PulseCountPerCicle", "PulseCountPerCircle", "007", "7", "007");
    row("a deceleration of the mode page", mode, "lineEdit_3", "LimitDec", "12.5", "12.500000", "12.500000");
    row("a refused deceleration of the mode page", mode, "lineEdit_4", "AxisErrorDec", "0", "10000", "10000");
    row("a velocity of the mode page", mode, "lineEdit_7", "MaxVel", "600", "600.000000", "600.000000");
    row("a velocity above another one", mode, "lineEdit_11", "JogMaxVel", "11", "500", "500");
}

void PendingEditTest::landsBeforeTheAnswer()
{
    QFETCH(QString, page);
    QFETCH(QString, field);
    QFETCH(QString, key);
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QFETCH(QString, shown);
    TestHost host;
    TestProject project(QStringLiteral("NV3T_70Q8"));
    AxisTable* axis = project.addAxis(QStringLiteral("Feed"), AxisTypeEtherCAT);
    const QString before = axis->property(key, QString());
    MotionControlAxisEditor editor(nullptr);
    QVERIFY(editor.open(project.axisPath(axis->id()), AxisViewKey));
    auto* const view = qobject_cast<PropertyEditorView*>(editor.widget());
    QWidget* form = pageOf(*view, page);
    QVERIFY(form);
    view->setCurrentWidget(form);
    view->resize(1000, 800);
    view->show();
    QApplication::setActiveWindow(view);
    QVERIFY(QTest::qWaitForWindowActive(view));
    QVERIFY(!editor.isModified());
    auto* const edit = form->findChild<QLineEdit*>(field);
    NumberTyping::replace(edit, typed);
    QVERIFY(edit->hasFocus());
    QCOMPARE(axis->property(key, QString()), before);
    QCOMPARE(editor.isModified(), stored != before);
    QCOMPARE(axis->property(key, QString()), stored);
    QCOMPARE(edit->text(), shown);
}

QTEST_MAIN(PendingEditTest)
#include "PendingEditTest.moc"
