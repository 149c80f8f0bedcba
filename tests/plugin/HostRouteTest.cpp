#include "host/projectmodel/AxisTable.h"
#include "sdk/ServiceLocator.h"
#include "tests/plugin/DialogInput.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/ModalDialogDriver.h"

#include <QDialog>
#include <QtTest>

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// Withdraws the published host for its scope.
class Withdrawn {
public:
    explicit Withdrawn(TestHost& host) : m_host(host) { Solution::publishApplication(nullptr); }
    ~Withdrawn() { Solution::publishApplication(&m_host); }
    Q_DISABLE_COPY(Withdrawn)

private:
    TestHost& m_host;
};

} // namespace

/// Which operations look for the host afresh and which use the host that the plug-in got to know as it came into
/// service. Told apart by a host that is not published any more.
class HostRouteTest : public QObject {
    Q_OBJECT

private slots:
    void nodeEventLooksAfresh();
    void nodeEventAsksWithAnEmptyFallback();
    void openedProjectLooksAfresh();
    void themeSwitchLooksAfresh();
    void renameUsesTheKnownHost();
    void undoneCommandUsesTheKnownHost();
    void controllerChangeUsesTheKnownHost();
};

void HostRouteTest::nodeEventLooksAfresh()
{
    PluginFixture fixture;
    const AxisTable* feed = fixture.addAxis(text("feed"));
    const AxisTable* lift = fixture.addAxis(text("lift"));
    fixture.send(fixture.pathOf(feed), Solution::NodeSelected);
    fixture.host.calls.clear();
    {
        const Withdrawn withdrawn(fixture.host);
        fixture.send(fixture.pathOf(lift), Solution::NodeSelected);
    }
    QVERIFY(fixture.host.calls.entries().isEmpty());
    ModalDialogDriver dialogs([](QDialog* dialog) { DialogInput::enter(dialog, text("turn")); });
    fixture.call("renameAxis");
    QVERIFY2(feed->name() == text("turn"), "the node that the host reported before is still the last one");
}

void HostRouteTest::nodeEventAsksWithAnEmptyFallback()
{
    PluginFixture fixture;
    fixture.host.view.lastFallback = text("nothing asked");
    fixture.send(fixture.project.unitPath(), Solution::NodeSelected);
    QCOMPARE(fixture.host.view.lastFallback.toString(), QString());
}

void HostRouteTest::openedProjectLooksAfresh()
{
    PluginFixture fixture;
    const Withdrawn withdrawn(fixture.host);
    emit fixture.host.view.projectOpened(
        fixture.project.nodePath(), PluginFixture::info(), Solution::LevelConfiguration);
    QVERIFY(fixture.host.calls.entries().isEmpty());
}

void HostRouteTest::themeSwitchLooksAfresh()
{
    PluginFixture fixture;
    const Withdrawn withdrawn(fixture.host);
    fixture.plugin->onApplyOption(QString());
    QVERIFY(fixture.host.calls.entries().isEmpty());
}

void HostRouteTest::renameUsesTheKnownHost()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
    fixture.send(fixture.pathOf(axis), Solution::NodeSelected);
    const Withdrawn withdrawn(fixture.host);
    ModalDialogDriver dialogs([](QDialog* dialog) { DialogInput::enter(dialog, text("lift")); });
    fixture.call("renameAxis");
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    QVERIFY(fixture.host.editorManager.openFiles().isEmpty());
    QVERIFY(fixture.host.viewHelper.stack.canUndo());
}

void HostRouteTest::undoneCommandUsesTheKnownHost()
{
    PluginFixture fixture;
    const AxisTable* axis = fixture.addAxis(text("feed"));
    fixture.host.editorManager.openEditor(fixture.pathOf(axis), text("AxisView"));
    const Withdrawn withdrawn(fixture.host);
    emit fixture.host.viewHelper.commandExecuted(text("PROJECT_MODEL_STACK_RENAME"), text("AxisModel"),
        QString::number(axis->id()), text("feed[*PROJECT_MODEL_STACK*]lift"));
    QCOMPARE(fixture.shownAxes(), QStringList{ text("lift") });
    QVERIFY(fixture.host.editorManager.openFiles().isEmpty());
}

void HostRouteTest::controllerChangeUsesTheKnownHost()
{
    PluginFixture fixture;
    AxisTable* axis = fixture.addAxis(text("feed"), text("Axis_Pulse"));
    axis->setProperty(text("OutputDevice"), text("99"));
    const Withdrawn withdrawn(fixture.host);
    emit fixture.host.view.displayEvent(fixture.project.nodePath(), Solution::DataControllerChanged, QVariant());
    QVERIFY(fixture.axisNames().isEmpty());
    QVERIFY(fixture.shownAxes().isEmpty());
}

QTEST_MAIN(HostRouteTest)
#include "HostRouteTest.moc"
