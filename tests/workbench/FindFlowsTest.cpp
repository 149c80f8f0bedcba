#include "workbench/FindFlows.h"

#include "sdk/IEditor.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/FindProgram.h"
#include "workbench/ToolWindowManager.h"

#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QTranslator>

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

/// From place to place, while the project and its editors go on.
class FindFlowsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aPageThatIsNotShownTakesNoKeys();
    void itIsToldOfThoughItsFieldsAreDisabled();
    void itIsToldOfWithThePanelClosed();
    void aFieldThatIsNotShownIsLeftWithoutACheck();
    void whatIsSaidOfADeadPlaceGoesWithIt();
    void aDeadPlaceIsToldOfWithThePanelClosed();
    void whatAChangeBringsIsFoundByTheKey();
    void aPlaceThatIsNoneAnyMoreIsPassedOver_data();
    void aPlaceThatIsNoneAnyMoreIsPassedOver();
    void aPlaceIsKeptThoughItsTextChanges();
    void anAxisThatComesAndGoesIsFoundByTheKey();
    void aNewNameAndANewSourceAreSearchedToo();
    void whatIsBeingTypedIsSearched();
    void whatIsTypedIsStored_data();
    void whatIsTypedIsStored();
    void aFieldWithoutInputIsLeftWithoutACheck_data();
    void aFieldWithoutInputIsLeftWithoutACheck();
    void aWrongInputIsToldOfOnce();
    void aListWithoutATextFollowsTheProject();
    void withoutAPlaceTheTypedFieldKeepsTheFocus();
    void anEditorThatOpensAfterTheSearchIsSearched();
    void anEditorAfterAllHaveClosedIsSearched();
    void theListTakesTheLanguage();
    void usesInAxesThatWereNeverOpenedAreReachedInAnotherLanguage();
    void aPlaceThatIsNoneAnyMoreIsPassedOverInAnotherLanguage_data();
    void aPlaceThatIsNoneAnyMoreIsPassedOverInAnotherLanguage();
    void noPlaceIsSkippedInAnotherLanguage_data();
    void noPlaceIsSkippedInAnotherLanguage();

private:
    AxisTable* addAxis(const char* name, const char* pin) const { return program->addAxis(text(name), text(pin)); }
    QDockWidget* dock() const { return program->workbench->window().toolWindows().panel(text("find")); }
    void setPin(const char* axis, const char* pin) const
    {
        program->axis(text(axis))->setProperty(text("PosLimitPin"), text(pin));
    }
    /// Opens the axis and types in the field of its pin, which keeps the focus.
    void typePin(const char* axis, const char* pin) const;
    void typeIn(const char* axis, const QString& field, const QString& what) const;
    void closeVariables() const;
    void lookIntoAnotherWindow() const;
    void setChinese();
    void searchTheEditor() const
    {
        program->child<QComboBox>("scope")->setCurrentIndex(1);
        program->search(text("stop"));
    }
    void next() const { program->press(Qt::Key_F3); }
    void previous() const { program->press(Qt::Key_F3, Qt::ShiftModifier); }
    QString here() const { return program->currentAxis() + QLatin1Char(' ') + FindProgram::focus(); }

    std::unique_ptr<FindProgram> program;
    std::unique_ptr<MessageBoxWatcher> boxes;
    QTranslator chinese;
};

void FindFlowsTest::init()
{
    boxes = std::make_unique<MessageBoxWatcher>();
    program = std::make_unique<FindProgram>();
    program->create(text("Line"), {});
    program->project()->sourceModel()->setSource(
        text("Main"), text("PROGRAM Main\nVAR\n  stop, near, far : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
}

void FindFlowsTest::cleanup()
{
    program.reset();
    QCoreApplication::removeTranslator(&chinese);
    const QStringList texts = boxes->texts();
    boxes.reset();
    QCOMPARE(texts, QStringList());
}

void FindFlowsTest::aPageThatIsNotShownTakesNoKeys()
{
    AxisTable* axis = addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    // An axis of that type is not homed; what was enabled before stays in its record.
    axis->setProperty(text("AxisType"), text("Axis_Encoder"));
    program->search(text("stop"));
    const QString before = program->status();
    next();
    QCOMPARE(program->currentAxis(), text("Cut"));
    QVERIFY(QApplication::focusWidget());
    QVERIFY2(QApplication::focusWidget()->isVisible(), qPrintable(FindProgram::focus()));
    QCOMPARE(program->status(), text("The page of this place is not shown for the type of Cut."));
    QTest::keyClicks(QApplication::focusWidget(), text("Main.near"));
    next();
    QCOMPARE(axis->property(text("PosLimitPin"), QString()), text("Main.stop"));
    QCOMPARE(here(), text("Turn lineEditPos"));
    QCOMPARE(program->status(), before);
}

void FindFlowsTest::itIsToldOfThoughItsFieldsAreDisabled()
{
    addAxis("Cut", "Main.stop")->setProperty(text("AxisType"), text("Axis_Encoder"));
    addAxis("Turn", "Main.stop");
    for (const char* axis : { "Cut", "Turn" })
        program->openAxis(text(axis))->setReadOnly(true);
    program->search(text("stop"));
    const QString before = program->status();
    next();
    QCOMPARE(program->currentAxis(), text("Cut"));
    QCOMPARE(program->status(), text("The page of this place is not shown for the type of Cut."));
    next();
    QCOMPARE(program->currentAxis(), text("Turn"));
    QCOMPARE(program->status(), before);
}

void FindFlowsTest::itIsToldOfWithThePanelClosed()
{
    addAxis("Cut", "Main.stop")->setProperty(text("AxisType"), text("Axis_Encoder"));
    program->search(text("stop"));
    dock()->close();
    next();
    QTRY_VERIFY(dock()->isVisible());
}

/// The check of a pin that its source has lost would ask about a field that nobody sees.
void FindFlowsTest::aFieldThatIsNotShownIsLeftWithoutACheck()
{
    AxisTable* axis = addAxis("Cut", "Main.gone");
    axis->setProperty(text("AxisType"), text("Axis_Encoder"));
    program->search(text("gone"));
    next();
    QVERIFY(QApplication::focusWidget()->isVisible());
    QCOMPARE(boxes->texts(), QStringList());
    QCOMPARE(axis->property(text("PosLimitPin"), QString()), text("Main.gone"));
}

void FindFlowsTest::whatIsSaidOfADeadPlaceGoesWithIt()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->search(text("stop"));
    program->workbench->tree().removeNode(program->axisPath(text("Cut")), true);
    next();
    QCOMPARE(program->status(), text("Cut is not in the project any more."));
    next();
    QCOMPARE(here(), text("Turn lineEditPos"));
    QCOMPARE(program->status(), text("Places found: 2."));
}

void FindFlowsTest::aDeadPlaceIsToldOfWithThePanelClosed()
{
    addAxis("Cut", "Main.stop");
    program->search(text("stop"));
    program->workbench->tree().removeNode(program->axisPath(text("Cut")), true);
    dock()->close();
    next();
    QTRY_VERIFY(dock()->isVisible());
    QCOMPARE(program->status(), text("Cut is not in the project any more."));
}

void FindFlowsTest::whatAChangeBringsIsFoundByTheKey()
{
    addAxis("Cut", "Main.near");
    program->search(text("stop"));
    QCOMPARE(program->results(), QStringList());
    setPin("Cut", "Main.stop");
    next();
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.stop") });
    QCOMPARE(program->status(), text("Places found: 1."));
    QCOMPARE(here(), text("Cut lineEditPos"));
}

void FindFlowsTest::aPlaceThatIsNoneAnyMoreIsPassedOver_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<QString>("changed");
    QTest::addColumn<QString>("reached");
    QTest::newRow("the one gone to last, forward") << true << text("Saw") << text("Turn lineEditPos");
    QTest::newRow("the one gone to last, back") << false << text("Saw") << text("Cut lineEditPos");
    QTest::newRow("the next one") << true << text("Turn") << text("Wind lineEditPos");
    QTest::newRow("the one before") << false << text("Cut") << text("Wind lineEditPos");
    QTest::newRow("the one gone to last and those behind it")
        << true << text("Saw Turn Wind") << text("Cut lineEditPos");
    QTest::newRow("the one gone to last and that before it") << false << text("Cut Saw") << text("Wind lineEditPos");
}

void FindFlowsTest::aPlaceThatIsNoneAnyMoreIsPassedOver()
{
    QFETCH(bool, forward);
    QFETCH(QString, changed);
    for (const char* axis : { "Cut", "Saw", "Turn", "Wind" })
        addAxis(axis, "Main.stop");
    program->search(text("stop"));
    next();
    next();
    QCOMPARE(here(), text("Saw lineEditPos"));
    const QStringList axes = changed.split(QLatin1Char(' '));
    for (const QString& axis : axes)
        setPin(qPrintable(axis), "Main.far");
    // Leaving a field stores what it shows.
    if (axes.contains(text("Saw")))
        typePin("Saw", "Main.far");
    forward ? next() : previous();
    QTEST(here(), "reached");
    QCOMPARE(program->results().size(), 3 - changed.count(QLatin1Char(' ')));
}

void FindFlowsTest::aPlaceIsKeptThoughItsTextChanges()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->search(text("main"));
    next();
    typePin("Cut", "Main.near");
    next();
    QCOMPARE(program->results(),
        (QStringList{ text("Cut Positive limit:Main.near"), text("Turn Positive limit:Main.stop") }));
    QCOMPARE(here(), text("Turn lineEditPos"));
}

void FindFlowsTest::anAxisThatComesAndGoesIsFoundByTheKey()
{
    addAxis("Cut", "Main.stop");
    program->search(text("stop"));
    AxisTable* turn = addAxis("Turn", "Main.stop");
    next();
    QCOMPARE(program->results().size(), 2);
    AxisModel* axes = program->project()->axisModel();
    QVERIFY(axes->removeAxisTable(turn));
    program->workbench->workspace().showAnew();
    next();
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.stop") });
    QVERIFY(axes->putObjectBack(turn));
    program->workbench->workspace().showAnew();
    next();
    QCOMPARE(program->results().size(), 2);
    QCOMPARE(here(), text("Turn lineEditPos"));
}

void FindFlowsTest::aNewNameAndANewSourceAreSearchedToo()
{
    AxisTable* cut = addAxis("Cut", "Main.late");
    program->findReferences(text("Main.late"));
    QCOMPARE(program->status(), text("The project has no variable Main.late."));
    program->project()->sourceModel()->setSource(
        text("Main"), text("PROGRAM Main\nVAR\n  late : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
    next();
    QCOMPARE(program->status(), text("Uses of Main.late: 1."));
    QVERIFY(program->project()->axisModel()->renameAxisTable(cut->id(), text("Saw")));
    program->workbench->workspace().showAnew();
    next();
    QCOMPARE(program->results(), QStringList{ text("Saw Positive limit:Main.late") });
}

void FindFlowsTest::typeIn(const char* axis, const QString& field, const QString& what) const
{
    IEditor* editor = program->openAxis(text(axis));
    QVERIFY(editor->gotoLocation(text("OriginReturnSetWidget.") + field));
    QTRY_COMPARE(FindProgram::focus(), field);
    QTest::keyClicks(QApplication::focusWidget(), what);
    closeVariables();
    QCOMPARE(FindProgram::focus(), field);
}

/// No key but its own gets past the list of variables that a pin opens.
void FindFlowsTest::closeVariables() const
{
    if (QWidget* variables = QApplication::activePopupWidget())
        QTest::keyClick(variables, Qt::Key_Escape);
}

void FindFlowsTest::typePin(const char* axis, const char* pin) const
{
    typeIn(axis, text("lineEditPos"), text(pin));
}

void FindFlowsTest::lookIntoAnotherWindow() const
{
    QDialog dialog(&program->workbench->window());
    QLineEdit field(&dialog);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTRY_VERIFY(field.hasFocus());
    dialog.reject();
    program->workbench->window().activateWindow();
}

void FindFlowsTest::whatIsBeingTypedIsSearched()
{
    AxisTable* axis = addAxis("Cut", "Main.near");
    axis->setProperty(text("AxisType"), text("Axis_Pulse"));
    program->search(text("stop"));
    typePin("Cut", "Main.stop");
    QCOMPARE(axis->property(text("PosLimitPin"), QString()), text("Main.near"));
    next();
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.stop") });
    QCOMPARE(here(), text("Cut lineEditPos"));
    // The same with what the panel has not been asked yet.
    program->child<QLineEdit>("text")->setText(text("far"));
    typePin("Cut", "Main.far");
    next();
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.far") });
}

void FindFlowsTest::whatIsTypedIsStored_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("between");
    const auto rows = [](const char* kind, const char* field, const char* key, const char* before, const char* typed) {
        for (const char* between : { "Return and the former text", "Return and Ctrl+Z", "another window" })
            QTest::addRow("%s, %s", kind, between)
                << text(field) << text(key) << text(before) << text(typed) << text(between);
    };
    rows("a pin", "lineEditPos", "PosLimitPin", "Main.near", "Main.far");
    rows("a number", "lineEdit_7", "HomeSpeed", "20.000000", "30.000000");
}

/// What the field shows and what its axis has are the same, whichever way the user came there.
void FindFlowsTest::whatIsTypedIsStored()
{
    QFETCH(QString, field);
    QFETCH(QString, key);
    QFETCH(QString, before);
    QFETCH(QString, typed);
    QFETCH(QString, between);
    AxisTable* axis = addAxis("Cut", "Main.near");
    axis->setProperty(text("AxisType"), text("Axis_Pulse"));
    axis->setProperty(key, before);
    addAxis("Turn", "Main.stop");
    program->search(text("stop"));
    typeIn("Cut", field, typed);
    QWidget* edit = QApplication::focusWidget();
    if (between == text("another window")) {
        lookIntoAnotherWindow();
        QTRY_COMPARE(QApplication::focusWidget(), edit);
    } else {
        QTest::keyClick(edit, Qt::Key_Return);
        static_cast<QLineEdit*>(edit)->selectAll();
        between == text("Return and Ctrl+Z") ? QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier)
                                             : QTest::keyClicks(edit, before);
        closeVariables();
    }
    next();
    QCOMPARE(here(), text("Turn lineEditPos"));
    QCOMPARE(axis->property(key, QString()), between == text("another window") ? typed : before);
    QCOMPARE(static_cast<QLineEdit*>(edit)->text(), axis->property(key, QString()));
}

void FindFlowsTest::aFieldWithoutInputIsLeftWithoutACheck_data()
{
    QTest::addColumn<int>("axes");
    QTest::newRow("the only place") << 1;
    QTest::newRow("one of two places") << 2;
}

/// Its pin is none since the source has lost it, but nobody has just typed that.
void FindFlowsTest::aFieldWithoutInputIsLeftWithoutACheck()
{
    QFETCH(int, axes);
    AxisTable* cut = addAxis("Cut", "Main.gone");
    if (axes > 1)
        addAxis("Turn", "Main.gone");
    program->search(text("gone"));
    for (int i = 0; i < 4; ++i) {
        next();
        QCOMPARE(here(), text(axes > 1 && i % 2 == 1 ? "Turn lineEditPos" : "Cut lineEditPos"));
        QCOMPARE(boxes->texts(), QStringList());
    }
    QCOMPARE(cut->property(text("PosLimitPin"), QString()), text("Main.gone"));
    // The end of the program leaves the field as any other window does.
    program.reset();
    boxes->boxes.clear();
}

void FindFlowsTest::aWrongInputIsToldOfOnce()
{
    addAxis("Cut", "Main.stop")->setProperty(text("AxisType"), text("Axis_Pulse"));
    program->search(text("stop"));
    typePin("Cut", "Main.gone");
    for (int i = 0; i < 3; ++i) {
        next();
        QCOMPARE(boxes->texts(), QStringList{ text(" not a valid bit address!") });
    }
    boxes->boxes.clear();
}

void FindFlowsTest::aListWithoutATextFollowsTheProject()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.far");
    program->openAxis(text("Cut"));
    searchTheEditor();
    QCOMPARE(program->results().size(), 1);
    program->child<QLineEdit>("text")->clear();
    program->openAxis(text("Turn"));
    setPin("Cut", "Main.near");
    next();
    QCOMPARE(program->results(), QStringList());
}

void FindFlowsTest::withoutAPlaceTheTypedFieldKeepsTheFocus()
{
    AxisTable* axis = addAxis("Cut", "Main.near");
    axis->setProperty(text("AxisType"), text("Axis_Pulse"));
    program->search(text("stop"));
    typePin("Cut", "Main.far");
    next();
    QCOMPARE(program->results(), QStringList());
    QCOMPARE(axis->property(text("PosLimitPin"), QString()), text("Main.far"));
    QCOMPARE(here(), text("Cut lineEditPos"));
}

void FindFlowsTest::anEditorThatOpensAfterTheSearchIsSearched()
{
    addAxis("Cut", "Main.stop");
    searchTheEditor();
    QCOMPARE(program->status(), text("There is nothing here that can be searched."));
    program->openAxis(text("Cut"));
    next();
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.stop") });
    QCOMPARE(here(), text("Cut lineEditPos"));
}

void FindFlowsTest::anEditorAfterAllHaveClosedIsSearched()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->openAxis(text("Cut"));
    searchTheEditor();
    program->editors().closeAllEditors();
    // The list leads back.
    next();
    QCOMPARE(here(), text("Cut lineEditPos"));
    program->editors().closeAllEditors();
    searchTheEditor();
    QCOMPARE(program->results(), QStringList());
    program->openAxis(text("Turn"));
    next();
    QCOMPARE(program->results(), QStringList{ text("Turn Positive limit:Main.stop") });
    QCOMPARE(here(), text("Turn lineEditPos"));
}

void FindFlowsTest::setChinese()
{
    program->workbench->setLanguage(text("zh_CN"));
    // The workbench looks for its own texts beside the program that runs.
    QVERIFY(chinese.load(text(KESTRUN_BUILD_DIR "/bin/kestrun_zh_CN.qm")));
    QVERIFY(QCoreApplication::installTranslator(&chinese));
}

void FindFlowsTest::theListTakesTheLanguage()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->save();
    program->search(text("stop"));
    next();
    program->child<QLineEdit>("text")->setText(text("near"));
    setChinese();
    const QString label = QCoreApplication::translate("AxisFinder", "Positive limit:");
    QVERIFY(label != text("Positive limit:"));
    QTRY_COMPARE(program->results(),
        (QStringList{
            QString(text("Cut ") + label + text("Main.stop")), QString(text("Turn ") + label + text("Main.stop")) }));
    QCOMPARE(program->status(), QCoreApplication::translate("FindFlows", "Places found: %1.").arg(2));
    QVERIFY(program->status() != text("Places found: 2."));
    // The new text still waits to be searched.
    next();
    QCOMPARE(program->results(), QStringList());
}

void FindFlowsTest::usesInAxesThatWereNeverOpenedAreReachedInAnotherLanguage()
{
    addAxis("Cut", "Main.stop");
    AxisTable* turn = addAxis("Turn", "Main.far");
    turn->setProperty(text("OrgSignalEnable"), text("TRUE"));
    turn->setProperty(text("OrgSignalPin"), text("Main.stop"));
    program->save();
    program->findReferences(text("Main.stop"));
    next();
    QCOMPARE(program->currentAxis(), text("Cut"));
    setChinese();
    QTRY_COMPARE(program->child<QPushButton>("find")->text(), QCoreApplication::translate("FindPanel", "Find"));
    QCOMPARE(
        program->status(), QCoreApplication::translate("FindFlows", "Uses of %1: %2.").arg(text("Main.stop")).arg(2));
    QTRY_COMPARE(program->editors().editors().size(), 1);
    next();
    QCOMPARE(here(), text("Turn lineEditOrg"));
}

void FindFlowsTest::aPlaceThatIsNoneAnyMoreIsPassedOverInAnotherLanguage_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<QString>("reached");
    QTest::newRow("forward") << true << text("Wind lineEditPos");
    QTest::newRow("back") << false << text("Saw lineEditPos");
}

void FindFlowsTest::aPlaceThatIsNoneAnyMoreIsPassedOverInAnotherLanguage()
{
    QFETCH(bool, forward);
    for (const char* axis : { "Cut", "Saw", "Turn", "Wind" }) {
        addAxis(axis, "Main.stop");
        program->openAxis(text(axis));
    }
    program->save();
    program->search(text("stop"));
    for (int i = 0; i < 3; ++i)
        next();
    QCOMPARE(here(), text("Turn lineEditPos"));
    program->editors().closeEditor(program->editors().currentEditor());
    QVERIFY(program->project()->axisModel()->removeAxisTable(program->axis(text("Turn"))));
    program->workbench->workspace().showAnew();
    program->save();
    setChinese();
    QTRY_COMPARE(program->results().size(), 3);
    QTRY_COMPARE(program->editors().editors().size(), 3);
    forward ? next() : previous();
    QTEST(here(), "reached");
}

void FindFlowsTest::noPlaceIsSkippedInAnotherLanguage_data()
{
    QTest::addColumn<int>("steps");
    QTest::addColumn<bool>("forward");
    QTest::addColumn<QString>("reached");
    QTest::newRow("from the first, forward") << 1 << true << text("Cut lineEditOrg");
    QTest::newRow("from the first, back") << 1 << false << text("Saw lineEditOrg");
    QTest::newRow("from the second, forward") << 2 << true << text("Saw lineEditPos");
    QTest::newRow("from the second, back") << 2 << false << text("Cut lineEditPos");
    QTest::newRow("from the third, forward") << 3 << true << text("Saw lineEditOrg");
    QTest::newRow("from the third, back") << 3 << false << text("Cut lineEditOrg");
}

void FindFlowsTest::noPlaceIsSkippedInAnotherLanguage()
{
    QFETCH(int, steps);
    QFETCH(bool, forward);
    for (const char* axis : { "Cut", "Saw" }) {
        AxisTable* table = addAxis(axis, "Main.stop");
        table->setProperty(text("OrgSignalEnable"), text("TRUE"));
        table->setProperty(text("OrgSignalPin"), text("Main.stop"));
    }
    program->save();
    program->findReferences(text("Main.stop"));
    for (int i = 0; i < steps; ++i)
        next();
    const int editors = program->editors().editors().size();
    setChinese();
    QTRY_COMPARE(program->child<QPushButton>("find")->text(), QCoreApplication::translate("FindPanel", "Find"));
    QTRY_COMPARE(program->editors().editors().size(), editors);
    forward ? next() : previous();
    QTEST(here(), "reached");
}

QTEST_MAIN(FindFlowsTest)
#include "FindFlowsTest.moc"
