#include "workbench/FindFlows.h"

#include "sdk/IEditor.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/FindProgram.h"
#include "workbench/ToolWindowManager.h"

#include <QDockWidget>

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
    void itIsToldOfWithThePanelClosed();
    void aFieldThatIsNotShownIsLeftWithoutACheck();
    void whatIsSaidOfADeadPlaceGoesWithIt();
    void aDeadPlaceIsToldOfWithThePanelClosed();

private:
    AxisTable* addAxis(const char* name, const char* pin) const { return program->addAxis(text(name), text(pin)); }
    QDockWidget* dock() const { return program->workbench->window().toolWindows().panel(text("find")); }
    void next() const { program->press(Qt::Key_F3); }
    void previous() const { program->press(Qt::Key_F3, Qt::ShiftModifier); }
    QString here() const { return program->currentAxis() + QLatin1Char(' ') + FindProgram::focus(); }

    std::unique_ptr<FindProgram> program;
    std::unique_ptr<MessageBoxWatcher> boxes;
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

QTEST_MAIN(FindFlowsTest)
#include "FindFlowsTest.moc"
