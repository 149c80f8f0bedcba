#include "plugin/NewAxisDlg.h"

#include "host/projectmodel/AxisModel.h"
#include "tests/plugin/DialogInput.h"
#include "tests/plugin/ProjectNames.h"
#include "tests/support/TestProject.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>
#include <vector>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// What stands in a layout: the widgets' classes, "row" for a layout, "stretch" for what takes the room left over.
QStringList contentsOf(const QLayout* layout)
{
    QStringList contents;
    for (int index = 0; layout && index < layout->count(); ++index) {
        QLayoutItem* item = layout->itemAt(index);
        if (item->widget())
            contents.append(text(item->widget()->metaObject()->className()));
        else if (item->layout())
            contents.append(text("row"));
        else if (item->expandingDirections() != Qt::Orientations())
            contents.append(text("stretch"));
        else
            contents.append(text("gap"));
    }
    return contents;
}

/// A dialog on a project with one of each that a name can clash with.
class Dialog {
public:
    Dialog() : project(text("NV3T_70Q12"))
    {
        project.addSource(text("Globals"), text(sourceWithNamesOfEveryKind));
        project.addAxis(text("feed"));
        widget = std::make_unique<NewAxisDlg>(project.name());
        widget->show();
    }
    QLineEdit* edit() const { return widget->findChild<QLineEdit*>(); }
    QPushButton* ok() const { return DialogInput::button(widget.get(), text("OK")); }

    TestProject project;
    std::unique_ptr<NewAxisDlg> widget;
};

} // namespace

class NewAxisDlgTest : public QObject {
    Q_OBJECT

private slots:
    void formIsAsAgreed();
    void rowsAreSetApartByStretches();
    void takesParentAndFlags();
    void slotsStandInTheirOrder();
    void firstFreeNumberIsProposed_data();
    void firstFreeNumberIsProposed();
    void proposalAvoidsEveryKindOfName();
    void okFollowsTheName_data();
    void okFollowsTheName();
    void okFollowsEveryKey();
    void okAcceptsWithTheText();
    void returnAccepts();
    void cancelRejects();
    void escapeRejects();
    void returnOnAnInvalidNameDoesNotAccept();
    void withoutProjectNothingIsAccepted_data();
    void withoutProjectNothingIsAccepted();
    void projectStaysAsItWas();
};

void NewAxisDlgTest::formIsAsAgreed()
{
    const Dialog dialog;
    QCOMPARE(dialog.widget->windowTitle(), text("New Axis"));
    QCOMPARE(dialog.widget->size(), QSize(340, 120));
    QVERIFY(!dialog.widget->parent());
    auto* label = dialog.widget->findChild<QLabel*>();
    QCOMPARE(label->text(), text("Name:"));
    auto* cancel = DialogInput::button(dialog.widget.get(), text("Cancel"));
    for (const QPushButton* button : { dialog.ok(), cancel })
        QCOMPARE(button->property("styleType").toString(), text("sureButton"));
    QCOMPARE(dialog.widget->findChildren<QPushButton*>().size(), 2);
    QVERIFY(label->geometry().right() < dialog.edit()->geometry().left());
    QVERIFY(dialog.edit()->geometry().bottom() < dialog.ok()->geometry().top());
    QVERIFY(dialog.ok()->geometry().right() < cancel->geometry().left());
    QVERIFY2(dialog.ok()->geometry().left() > dialog.edit()->geometry().left(), "the buttons stand on the right");
}

void NewAxisDlgTest::rowsAreSetApartByStretches()
{
    const Dialog dialog;
    const auto* rows = qobject_cast<QVBoxLayout*>(dialog.widget->layout());
    QVERIFY(rows);
    QCOMPARE(contentsOf(rows), (QStringList{ text("stretch"), text("row"), text("stretch"), text("row") }));
    QCOMPARE(contentsOf(rows->itemAt(1)->layout()), (QStringList{ text("QLabel"), text("QLineEdit") }));
    QCOMPARE(contentsOf(rows->itemAt(3)->layout()),
        (QStringList{ text("stretch"), text("QPushButton"), text("QPushButton") }));
    const auto distance = [&dialog] { return dialog.ok()->geometry().top() - dialog.edit()->geometry().bottom(); };
    const int before = distance();
    dialog.widget->resize(340, 320);
    QTRY_VERIFY2(distance() > before + 50, "the room of a taller dialog goes between the rows, too");
}

void NewAxisDlgTest::takesParentAndFlags()
{
    const TestProject project(text("NV3T_70Q12"));
    QWidget window;
    const NewAxisDlg plain(project.name());
    QCOMPARE(plain.windowFlags() & Qt::WindowType_Mask, Qt::Dialog);
    auto* tool = new NewAxisDlg(project.name(), &window, Qt::Tool | Qt::WindowStaysOnTopHint);
    QCOMPARE(tool->parent(), &window);
    QCOMPARE(tool->windowFlags() & Qt::WindowType_Mask, Qt::Tool);
    QVERIFY(tool->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

void NewAxisDlgTest::slotsStandInTheirOrder()
{
    const QMetaObject& meta = NewAxisDlg::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("onOkButtonClicked()"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("onTextChanged(QString)"));
}

void NewAxisDlgTest::firstFreeNumberIsProposed_data()
{
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QString>("proposal");
    QTest::newRow("first axis of a project") << QStringList() << "Axis_0";
    QTest::newRow("next number") << QStringList{ text("Axis_0") } << "Axis_1";
    QTest::newRow("gap is filled") << QStringList{ text("Axis_0"), text("Axis_2") } << "Axis_1";
    QTest::newRow("zero is reused") << QStringList{ text("Axis_1") } << "Axis_0";
    QTest::newRow("case does not free a number") << QStringList{ text("AXIS_0") } << "Axis_1";
    QStringList many;
    for (int number = 0; number < 30; ++number)
        many.append(text("Axis_%1").arg(number));
    QTest::newRow("after many") << many << "Axis_30";
}

void NewAxisDlgTest::firstFreeNumberIsProposed()
{
    QFETCH(QStringList, present);
    QFETCH(QString, proposal);
    TestProject project(text("NV3T_70Q12"));
    for (const QString& name : present)
        project.addAxis(name);
    const NewAxisDlg dialog(project.name());
    QCOMPARE(dialog.axisName(), proposal);
    QVERIFY(DialogInput::button(&dialog, text("OK"))->isEnabled());
}

void NewAxisDlgTest::proposalAvoidsEveryKindOfName()
{
    TestProject project(text("NV3T_70Q12"));
    project.addSource(text("Programs"),
        text("PROGRAM Axis_0\nEND_PROGRAM\nTYPE\n    Axis_1 : (a, b);\nEND_TYPE\n"
             "VAR_GLOBAL\n    axis_2 : INT;\nEND_VAR\nTASK Axis_3(PRIORITY := 1);\n"));
    QCOMPARE(NewAxisDlg(project.name()).axisName(), text("Axis_4"));
}

void NewAxisDlgTest::okFollowsTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valid");
    QTest::newRow("free name") << "lift" << true;
    QTest::newRow("name with a digit and underscore") << "lift_2" << true;
    QTest::newRow("nothing") << "" << false;
    QTest::newRow("begins with a digit") << "2lift" << false;
    QTest::newRow("blank inside") << "my lift" << false;
    QTest::newRow("point inside") << "my.lift" << false;
    QTest::newRow("letters of another script") << QStringLiteral("\u8f74") << false;
    QTest::newRow("keyword") << "WHILE" << false;
    QTest::newRow("keyword in small letters") << "while" << false;
    QTest::newRow("elementary type") << "Int" << false;
    QTest::newRow("global variable table") << "Globals" << false;
    QTest::newRow("program") << "Main" << false;
    QTest::newRow("program in another case") << "mAIN" << false;
    QTest::newRow("function block") << "Pusher" << false;
    QTest::newRow("function") << "Mean" << false;
    QTest::newRow("structure") << "Box" << false;
    QTest::newRow("enumeration") << "Colour" << false;
    QTest::newRow("another axis") << "feed" << false;
    QTest::newRow("another axis in another case") << "FEED" << false;
    QTest::newRow("axis group") << "gantry" << false;
    QTest::newRow("task") << "Fast" << false;
    QTest::newRow("global variable") << "lineSpeed" << false;
    QTest::newRow("local variable of a program") << "on" << true;
}

void NewAxisDlgTest::okFollowsTheName()
{
    QFETCH(QString, name);
    QFETCH(bool, valid);
    const Dialog dialog;
    // Pasted, since a test's keys cannot type every script.
    QGuiApplication::clipboard()->setText(name);
    DialogInput::type(dialog.widget.get(), QString());
    QTest::keySequence(dialog.edit(), QKeySequence::Paste);
    QCOMPARE(dialog.ok()->isEnabled(), valid);
    QCOMPARE(dialog.widget->axisName(), name);
}

void NewAxisDlgTest::okFollowsEveryKey()
{
    const Dialog dialog;
    DialogInput::type(dialog.widget.get(), text("fee"));
    QVERIFY(dialog.ok()->isEnabled());
    QTest::keyClicks(dialog.edit(), text("d"));
    QVERIFY2(!dialog.ok()->isEnabled(), "an axis has this name");
    QTest::keyClicks(dialog.edit(), text("er"));
    QVERIFY(dialog.ok()->isEnabled());
    DialogInput::type(dialog.widget.get(), QString());
    QVERIFY(!dialog.ok()->isEnabled());
}

void NewAxisDlgTest::okAcceptsWithTheText()
{
    const Dialog dialog;
    DialogInput::enter(dialog.widget.get(), text("lift"));
    QCOMPARE(dialog.widget->result(), static_cast<int>(QDialog::Accepted));
    QCOMPARE(dialog.widget->axisName(), text("lift"));
}

void NewAxisDlgTest::returnAccepts()
{
    const Dialog dialog;
    DialogInput::type(dialog.widget.get(), text("lift"));
    QTest::keyClick(dialog.edit(), Qt::Key_Return);
    QCOMPARE(dialog.widget->result(), static_cast<int>(QDialog::Accepted));
}

void NewAxisDlgTest::cancelRejects()
{
    const Dialog dialog;
    DialogInput::click(dialog.widget.get(), text("Cancel"));
    QVERIFY(!dialog.widget->isVisible());
    QCOMPARE(dialog.widget->result(), static_cast<int>(QDialog::Rejected));
}

void NewAxisDlgTest::escapeRejects()
{
    const Dialog dialog;
    QTest::keyClick(dialog.edit(), Qt::Key_Escape);
    QVERIFY(!dialog.widget->isVisible());
    QCOMPARE(dialog.widget->result(), static_cast<int>(QDialog::Rejected));
}

void NewAxisDlgTest::returnOnAnInvalidNameDoesNotAccept()
{
    const Dialog dialog;
    DialogInput::type(dialog.widget.get(), text("feed"));
    QTest::keyClick(dialog.edit(), Qt::Key_Return);
    QVERIFY(dialog.widget->isVisible());
}

void NewAxisDlgTest::withoutProjectNothingIsAccepted_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no project name") << "";
    QTest::newRow("a project that is not open") << "Elsewhere";
}

void NewAxisDlgTest::withoutProjectNothingIsAccepted()
{
    QFETCH(QString, name);
    const NewAxisDlg dialog(name);
    QVERIFY(dialog.axisName().isEmpty());
    DialogInput::type(&dialog, text("lift"));
    QVERIFY(!DialogInput::button(&dialog, text("OK"))->isEnabled());
}

void NewAxisDlgTest::projectStaysAsItWas()
{
    const Dialog dialog;
    std::vector<AxisTable*> tables;
    DialogInput::enter(dialog.widget.get(), text("lift"));
    dialog.project.axisModel()->allAxisTables(tables);
    QCOMPARE(tables.size(), size_t(1));
}

QTEST_MAIN(NewAxisDlgTest)
#include "NewAxisDlgTest.moc"
