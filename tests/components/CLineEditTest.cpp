#include "host/components/CLineEdit.h"
#include "sdk/ServiceKeys.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

namespace {

/// A window with the field and another one beside it.
struct Form {
    Form()
    {
        layout.addWidget(&field);
        layout.addWidget(&other);
        window.show();
        field.setFocus();
        QApplication::setActiveWindow(&window);
        if (!QTest::qWaitForWindowActive(&window) || !field.hasFocus())
            qFatal("the window does not become active");
    }

    QAbstractItemView* list() { return field.completer() == nullptr ? nullptr : field.completer()->popup(); }
    bool listIsOpen() { return list() != nullptr && list()->isVisible(); }

    QWidget window;
    QVBoxLayout layout{ &window };
    CLineEdit field;
    QLineEdit other;
    QSignalSpy finished{ &field, &CLineEdit::editFinished };
};

} // namespace

/// The line edit that tells of the end of an edit, with real keys and focus.
class CLineEditTest : public QObject {
    Q_OBJECT

private slots:
    void returnFinishes_data();
    void returnFinishes();
    void tabFinishes();
    void aClickElsewhereFinishes();
    void everyLossOfFocusFinishes();
    void aTextSetFromOutsideFinishes();
    void takingAndGivingTheFocusByProgramFinishes();
    void aPopupDoesNotFinish();
    void anotherWindowDoesNotFinish();
    void aDisabledFieldFinishes();
    void aMessageBoxInASlotFinishesOnce();
    void returnInASlotsBoxFinishesOnce();
    void aSlotThatMovesTheFocusFinishesOnce();
    void aSlotMayDeleteTheField();
    void otherKeysDoNotFinish();
    void typingOpensTheList();
    void aChosenEntryFinishesWithItsText();
    void escapeClosesTheListOnly();
    void returnWithoutAMarkedEntryKeepsTheText();
    void aChoiceClosesNoDialog();
    void hideListClosesTheList();
    void hideListWithoutAListDoesNothing();
    void completionCanBeSwitchedOff();
    void theListShowsTheBooleanVariablesOfTheCurrentProject();
    void theListFollowsTheProject();
    void ownCompletionsStay();
    void thereIsNoListWithoutAHost();
};

void CLineEditTest::returnFinishes_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("the key of the letters") << int(Qt::Key_Return);
    QTest::newRow("the key of the numbers") << int(Qt::Key_Enter);
}

void CLineEditTest::returnFinishes()
{
    QFETCH(const int, key);
    Form form;
    QSignalSpy pressed(&form.field, &QLineEdit::returnPressed);
    QTest::keyClicks(&form.field, QStringLiteral("abc"));
    QCOMPARE(form.finished.count(), 0);
    QTest::keyClick(&form.field, static_cast<Qt::Key>(key));
    QCOMPARE(form.finished.count(), 1);
    QCOMPARE(pressed.count(), 1);
    QVERIFY(form.field.hasFocus());
}

void CLineEditTest::tabFinishes()
{
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("abc"));
    QTest::keyClick(&form.field, Qt::Key_Tab);
    QVERIFY(form.other.hasFocus());
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::aClickElsewhereFinishes()
{
    Form form;
    QTest::mouseClick(&form.other, Qt::LeftButton);
    QVERIFY(form.other.hasFocus());
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::everyLossOfFocusFinishes()
{
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("abc"));
    QTest::keyClick(&form.field, Qt::Key_Return);
    QTest::keyClick(&form.field, Qt::Key_Tab);
    QCOMPARE(form.finished.count(), 2);
    form.field.setFocus();
    QCOMPARE(form.finished.count(), 2);
    form.other.setFocus();
    QCOMPARE(form.finished.count(), 3);
}

void CLineEditTest::aTextSetFromOutsideFinishes()
{
    Form form;
    form.other.setFocus();
    form.finished.clear();
    form.field.setText(QStringLiteral("Main.flag"));
    QCOMPARE(form.finished.count(), 0);
    form.field.setFocus();
    QTest::keyClick(&form.field, Qt::Key_Tab);
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::takingAndGivingTheFocusByProgramFinishes()
{
    Form form;
    form.other.setFocus();
    form.finished.clear();
    form.field.setText(QStringLiteral("Main.flag"));
    form.field.setFocus(Qt::OtherFocusReason);
    form.window.setFocus(Qt::OtherFocusReason);
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::aPopupDoesNotFinish()
{
    Form form;
    QMenu menu(&form.window);
    menu.addAction(QStringLiteral("entry"));
    menu.popup(form.window.mapToGlobal(QPoint(5, 5)));
    QTRY_VERIFY(menu.isVisible());
    QCOMPARE(form.finished.count(), 0);
    menu.close();
    QFocusEvent out(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(&form.field, &out);
    QCOMPARE(form.finished.count(), 0);
}

void CLineEditTest::anotherWindowDoesNotFinish()
{
    Form form;
    QWidget second;
    second.show();
    QApplication::setActiveWindow(&second);
    QVERIFY(QTest::qWaitForWindowActive(&second));
    QVERIFY(!form.field.hasFocus());
    QCOMPARE(form.finished.count(), 0);
    QApplication::setActiveWindow(&form.window);
    QVERIFY(QTest::qWaitForWindowActive(&form.window));
    QTRY_VERIFY(form.field.hasFocus());
    QCOMPARE(form.finished.count(), 0);
    form.other.setFocus();
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::aDisabledFieldFinishes()
{
    Form form;
    form.field.setEnabled(false);
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::aMessageBoxInASlotFinishesOnce()
{
    Form form;
    MessageBoxWatcher boxes;
    connect(&form.field, &CLineEdit::editFinished, &form.field, [&form] {
        QMessageBox::information(nullptr, QStringLiteral("t"), QStringLiteral("refused"));
        form.field.setText(QStringLiteral("stored"));
    });
    QTest::keyClicks(&form.field, QStringLiteral("bad"));
    QTest::keyClick(&form.field, Qt::Key_Return);
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(form.finished.count(), 1);
    QCOMPARE(form.field.text(), QStringLiteral("stored"));
    QApplication::setActiveWindow(&form.window);
    QTRY_VERIFY(form.field.hasFocus());
    QTest::keyClick(&form.field, Qt::Key_Tab);
    QCOMPARE(boxes.count(), 2);
    QCOMPARE(form.finished.count(), 2);
}

void CLineEditTest::returnInASlotsBoxFinishesOnce()
{
    Form form;
    MessageBoxWatcher boxes;
    boxes.meanwhile([&form] {
        QTest::keyClick(&form.field, Qt::Key_Return);
        QFocusEvent out(QEvent::FocusOut, Qt::OtherFocusReason);
        QApplication::sendEvent(&form.field, &out);
    });
    connect(&form.field, &CLineEdit::editFinished, &form.field,
        [] { QMessageBox::information(nullptr, QStringLiteral("t"), QStringLiteral("refused")); });
    QTest::keyClick(&form.field, Qt::Key_Return);
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(form.finished.count(), 1);
    QTest::keyClick(&form.field, Qt::Key_Return);
    QCOMPARE(form.finished.count(), 2);
}

void CLineEditTest::aSlotThatMovesTheFocusFinishesOnce()
{
    Form form;
    connect(&form.field, &CLineEdit::editFinished, &form.other, [&form] { form.other.setFocus(); });
    QTest::keyClick(&form.field, Qt::Key_Return);
    QVERIFY(form.other.hasFocus());
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::aSlotMayDeleteTheField()
{
    Form form;
    QPointer<CLineEdit> field = new CLineEdit(&form.window);
    form.layout.addWidget(field);
    field->show();
    field->setFocus();
    QVERIFY(field->hasFocus());
    connect(field, &CLineEdit::editFinished, &form.window, [field] { delete field; });
    QTest::keyClick(field, Qt::Key_Tab);
    QVERIFY(field.isNull());
}

void CLineEditTest::otherKeysDoNotFinish()
{
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("a b"));
    QTest::keyClick(&form.field, Qt::Key_Escape);
    QTest::keyClick(&form.field, Qt::Key_Home);
    QCOMPARE(form.finished.count(), 0);
}

void CLineEditTest::typingOpensTheList()
{
    Form form;
    form.field.setCompletions({ QStringLiteral("Main.guard"), QStringLiteral("Io.limit") });
    QTest::keyClicks(&form.field, QStringLiteral("LIM"));
    QVERIFY(form.listIsOpen());
    QCOMPARE(form.list()->model()->rowCount(), 1);
    QTest::keyClicks(&form.field, QStringLiteral("x"));
    QVERIFY(!form.listIsOpen());
}

void CLineEditTest::aChosenEntryFinishesWithItsText()
{
    Form form;
    form.field.setCompletions({ QStringLiteral("Main.guard"), QStringLiteral("Main.limit") });
    QTest::keyClicks(&form.field, QStringLiteral("mai"));
    QVERIFY(form.listIsOpen());
    QTest::keyClick(form.list(), Qt::Key_Down);
    QTest::keyClick(form.list(), Qt::Key_Down);
    QCOMPARE(form.finished.count(), 0);
    QTest::keyClick(form.list(), Qt::Key_Return);
    QVERIFY(!form.listIsOpen());
    QCOMPARE(form.field.text(), QStringLiteral("Main.limit"));
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::escapeClosesTheListOnly()
{
    Form form;
    form.field.setCompletions({ QStringLiteral("Main.guard") });
    QTest::keyClicks(&form.field, QStringLiteral("mai"));
    QTest::keyClick(form.list(), Qt::Key_Escape);
    QVERIFY(!form.listIsOpen());
    QCOMPARE(form.field.text(), QStringLiteral("mai"));
    QCOMPARE(form.finished.count(), 0);
}

void CLineEditTest::returnWithoutAMarkedEntryKeepsTheText()
{
    Form form;
    form.field.setCompletions({ QStringLiteral("Main.guard") });
    QTest::keyClicks(&form.field, QStringLiteral("mai"));
    QVERIFY(form.listIsOpen());
    QTest::keyClick(form.list(), Qt::Key_Return);
    QVERIFY(!form.listIsOpen());
    QCOMPARE(form.field.text(), QStringLiteral("mai"));
    QCOMPARE(form.finished.count(), 1);
}

void CLineEditTest::aChoiceClosesNoDialog()
{
    QDialog dialog;
    CLineEdit field(&dialog);
    QPushButton ok(&dialog);
    ok.setDefault(true);
    connect(&ok, &QPushButton::clicked, &dialog, &QDialog::accept);
    field.setCompletions({ QStringLiteral("Main.guard") });
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    field.setFocus();
    QTest::keyClicks(&field, QStringLiteral("mai"));
    QTest::keyClick(field.completer()->popup(), Qt::Key_Down);
    QTest::keyClick(field.completer()->popup(), Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QTest::keyClick(&field, Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
}

void CLineEditTest::hideListClosesTheList()
{
    Form form;
    form.field.setCompletions({ QStringLiteral("Main.guard") });
    QTest::keyClicks(&form.field, QStringLiteral("mai"));
    QVERIFY(form.listIsOpen());
    form.field.hideList();
    QVERIFY(!form.listIsOpen());
    QCOMPARE(form.field.text(), QStringLiteral("mai"));
    QCOMPARE(form.finished.count(), 0);
}

void CLineEditTest::hideListWithoutAListDoesNothing()
{
    CLineEdit field;
    field.hideList();
    QVERIFY(field.completer() == nullptr);
}

void CLineEditTest::completionCanBeSwitchedOff()
{
    Form form;
    QVERIFY(form.field.isCompleteEnabled());
    form.field.setCompletions({ QStringLiteral("Main.guard") });
    form.field.setEnableComplete(false);
    QVERIFY(!form.field.isCompleteEnabled());
    QTest::keyClicks(&form.field, QStringLiteral("mai"));
    QVERIFY(!form.listIsOpen());
    form.other.setFocus();
    form.field.setFocus();
    QTest::keyClicks(&form.field, QStringLiteral("n"));
    QVERIFY(!form.listIsOpen());
    form.field.setEnableComplete(true);
    QTest::keyClicks(&form.field, QStringLiteral("."));
    QVERIFY(form.listIsOpen());
}

void CLineEditTest::theListShowsTheBooleanVariablesOfTheCurrentProject()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_50Q4"));
    project.addSource(QStringLiteral("Main"),
        QStringLiteral("PROGRAM Main VAR flag : BOOL; count : INT; guard : Guard; END_VAR END_PROGRAM "
                       "TYPE Guard : STRUCT open : BOOL; END_STRUCT END_TYPE"));
    host.cookies.setValue(Solution::ConfigKey::projectName(), project.name());
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("main."));
    QVERIFY(form.listIsOpen());
    QCOMPARE(form.list()->model()->rowCount(), 2);
    QCOMPARE(form.list()->model()->index(0, 0).data().toString(), QStringLiteral("Main.flag"));
    QCOMPARE(form.list()->model()->index(1, 0).data().toString(), QStringLiteral("Main.guard.open"));
}

void CLineEditTest::theListFollowsTheProject()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_50Q4"));
    host.cookies.setValue(Solution::ConfigKey::projectName(), project.name());
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("main"));
    QVERIFY(!form.listIsOpen());
    form.other.setFocus();
    project.addSource(QStringLiteral("Main"), QStringLiteral("PROGRAM Main VAR flag : BOOL; END_VAR END_PROGRAM"));
    form.field.setFocus();
    QTest::keyClicks(&form.field, QStringLiteral("."));
    QVERIFY(form.listIsOpen());
}

void CLineEditTest::ownCompletionsStay()
{
    TestHost host;
    TestProject project(QStringLiteral("NV3T_50Q4"));
    project.addSource(QStringLiteral("Main"), QStringLiteral("PROGRAM Main VAR flag : BOOL; END_VAR END_PROGRAM"));
    host.cookies.setValue(Solution::ConfigKey::projectName(), project.name());
    Form form;
    form.field.setCompletions({ QStringLiteral("Main.own") });
    form.other.setFocus();
    form.field.setFocus();
    QTest::keyClicks(&form.field, QStringLiteral("main"));
    QVERIFY(form.listIsOpen());
    QCOMPARE(form.list()->model()->rowCount(), 1);
    QCOMPARE(form.list()->model()->index(0, 0).data().toString(), QStringLiteral("Main.own"));
}

void CLineEditTest::thereIsNoListWithoutAHost()
{
    Form form;
    QTest::keyClicks(&form.field, QStringLiteral("main"));
    QVERIFY(!form.listIsOpen());
    TestHost host;
    host.withhold(Solution::ServiceKey::cookies());
    form.other.setFocus();
    form.field.setFocus();
    QTest::keyClicks(&form.field, QStringLiteral("x"));
    QVERIFY(!form.listIsOpen());
}

QTEST_MAIN(CLineEditTest)
#include "CLineEditTest.moc"
