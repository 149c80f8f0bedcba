#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "sdk/IEditor.h"
#include "tests/plugin/ControllerLists.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/MessageBoxWatcher.h"

#include <QComboBox>
#include <QDir>
#include <QtTest>

#include <algorithm>
#include <vector>

// While set, a list of all axes has empty places between them. The linker leads the calls of AxisModel::allAxisTables
// to the wrapper, since the model itself lists none.
static bool emptyPlaces = false;

extern "C" void __real__ZNK9AxisModel13allAxisTablesERSt6vectorIP9AxisTableSaIS2_EE(
    const AxisModel* model, std::vector<AxisTable*>& out);
extern "C" Q_DECL_EXPORT void __wrap__ZNK9AxisModel13allAxisTablesERSt6vectorIP9AxisTableSaIS2_EE(
    const AxisModel* model, std::vector<AxisTable*>& out)
{
    __real__ZNK9AxisModel13allAxisTablesERSt6vectorIP9AxisTableSaIS2_EE(model, out);
    for (size_t place = 0; emptyPlaces && place < out.size(); place += 2)
        out.insert(out.begin() + static_cast<std::ptrdiff_t>(place), nullptr);
}

namespace {

QString text(const char* words)
{
    return QString::fromLatin1(words);
}

/// The project on the former controller, with an axis of each kind in model and tree.
class Line : public PluginFixture {
public:
    Line()
    {
        project.changeController(ControllerLists::former());
        kept = addAxis(text("kept"), text("Axis_Pulse"));
        gone = addAxis(text("gone"), text("Axis_Pulse"));
        gone->setProperty(text("OutputDevice"), text("3"));
        encoder = addAxis(text("encoder"), text("Axis_Encoder"));
    }
    void change(int event = Solution::DataControllerChanged)
    {
        project.changeController(ControllerLists::latter());
        host.calls.clear();
        emit host.view.displayEvent(project.nodePath(), static_cast<Solution::DataEvent>(event), QVariant());
    }
    IEditor* open(const AxisTable* axis) { return host.editorManager.openEditor(pathOf(axis), text("AxisView")); }

    AxisTable* kept;
    AxisTable* gone;
    AxisTable* encoder;
};

/// Whether any combo box of the editor offers an entry.
bool offers(IEditor* editor, const QString& entry)
{
    const QList<QComboBox*> boxes = editor->widget()->findChildren<QComboBox*>();
    return std::any_of(
        boxes.begin(), boxes.end(), [&entry](const QComboBox* box) { return box->findText(entry) >= 0; });
}

/// An editor of another part of the host that stands under an axis's file name.
class ForeignEditor : public IEditor {
public:
    QWidget* widget() override { return nullptr; }
    QString displayName() override { return told(); }
    bool open(const QString&, const QString&) override { return tell(); }
    bool load() override { return tell(); }
    bool reload() override { return tell(); }
    bool save() override { return tell(); }
    bool saveAs() override { return tell(); }
    bool gotoLocation(const QString&) override { return tell(); }
    EditorLocation locationInfo() override { return {}; }
    bool findReferences(const QString&, QVector<FindResult>&) override { return tell(); }
    void setReadOnly(bool) override { tell(); }
    bool isReadOnly() override { return tell(); }
    bool isModified() override { return tell(); }
    QString nodePath() override { return told(); }
    QString typeKey() override { return told(); }
    QByteArray saveState() override { return {}; }
    bool restoreState(const QByteArray&) override { return tell(); }
    void activated() override { tell(); }
    IEditContext* currentContext() override { return nullptr; }

    int calls = 0;

private:
    bool tell() { return ++calls == 0; }
    QString told()
    {
        tell();
        return {};
    }
};

} // namespace

/// A change of controller as the tree, the editors and the undo stack see it.
class ControllerChangeTest : public QObject {
    Q_OBJECT

private slots:
    void axesThatCannotExistGoWithTheirNodes();
    void emptyPlacesInTheListAreSkipped();
    void nothingIsAskedToldStoredOrUndoable();
    void recordsAreVisitedInOrder();
    void otherEventsAreIgnored_data();
    void otherEventsAreIgnored();
    void axisNumbersAreRepaired();
    void virtualAxesBeyondTheLimitGoFromTheEnd();
    void openEditorIsRefreshed();
    void editorOfARemovedAxisStaysOpenUnrefreshed();
    void foreignEditorIsLeftAlone();
    void nothingHappensWithout_data();
    void nothingHappensWithout();
    void onlineDoesNotHoldItUp();
    void everyModelCanFollowEveryOther_data();
    void everyModelCanFollowEveryOther();
};

void ControllerChangeTest::axesThatCannotExistGoWithTheirNodes()
{
    Line line;
    line.encoder->setProperty(text("InputSignal"), text("1"));
    line.change();
    QCOMPARE(line.axisNames(), (QStringList{ text("kept"), text("encoder") }));
    QCOMPARE(line.shownAxes(), (QStringList{ text("kept"), text("encoder") }));
    QCOMPARE(line.encoder->property(text("OutputMethod"), QString()), text("2"));
    QCOMPARE(line.encoder->property(text("InputSignal"), QString()), text("2"));
}

void ControllerChangeTest::emptyPlacesInTheListAreSkipped()
{
    Line line;
    QVERIFY(line.open(line.kept));
    emptyPlaces = true;
    line.change();
    emptyPlaces = false;
    QCOMPARE(line.axisNames(), (QStringList{ text("kept"), text("encoder") }));
    QCOMPARE(line.shownAxes(), (QStringList{ text("kept"), text("encoder") }));
    QCOMPARE(line.host.calls.count(text("view.fileNameOf")), 3);
}

void ControllerChangeTest::nothingIsAskedToldStoredOrUndoable()
{
    Line line;
    line.project.save();
    line.encoder->setProperty(text("CompareOutputPin"), text("3"));
    line.project.save();
    MessageBoxWatcher boxes;
    line.change();
    QCOMPARE(boxes.count(), 0);
    QVERIFY(!line.host.viewHelper.stack.canUndo());
    QCOMPARE(line.host.calls.count(text("viewHelper.pushCommand")), 0);
    QVERIFY2(line.encoder->modified, "the corrections wait for a save");
    line.project.reopen();
    QCOMPARE(line.axisNames(), (QStringList{ text("kept"), text("gone"), text("encoder") }));
}

void ControllerChangeTest::recordsAreVisitedInOrder()
{
    Line line;
    line.logModel();
    line.change();
    QStringList expected{ text("application.manager(editor)") };
    for (const quint32 id : { 1u, 2u, 3u }) {
        const QString path = line.project.axisPath(id);
        expected += text("view.fileNameOf(AxisView, %1)").arg(id);
        expected += text("view.nodePathOfFile(%1, true)").arg(path);
        if (id == 2)
            expected += { text("model.removed(2)"), text("view.removeNode(%1, true)").arg(path) };
        else
            expected += text("editorManager.findEditor(%1, true)").arg(path);
    }
    QCOMPARE(line.host.calls.entries(), expected);
}

void ControllerChangeTest::otherEventsAreIgnored_data()
{
    QTest::addColumn<int>("event");
    for (const int event : { 0, 1, 2, 3, 5, 6 })
        QTest::addRow("event %d", event) << event;
}

void ControllerChangeTest::otherEventsAreIgnored()
{
    QFETCH(int, event);
    Line line;
    line.change(event);
    QCOMPARE(line.axisNames().size(), 3);
    QVERIFY(line.host.calls.entries().isEmpty());
}

void ControllerChangeTest::axisNumbersAreRepaired()
{
    Line line;
    const QString key = text("AxisNo");
    line.encoder->setProperty(key, line.kept->property(key, QString()));
    line.change();
    QVERIFY(line.encoder->property(key, QString()) != line.kept->property(key, QString()));
}

void ControllerChangeTest::virtualAxesBeyondTheLimitGoFromTheEnd()
{
    PluginFixture fixture(text("NV3T_70Q12"));
    for (int number = 0; number < 10; ++number)
        fixture.addAxis(text("axis%1").arg(number));
    fixture.project.changeController(text("NV3T_50Q4"));
    const int limit = fixture.project.axisModel()->getMaxAxisNumber().value(text("Virtual Axis"));
    QVERIFY(limit > 0 && limit < 10);
    emit fixture.host.view.displayEvent(QString(), Solution::DataControllerChanged, QVariant());
    QCOMPARE(fixture.axisNames().size(), limit);
    QCOMPARE(fixture.axisNames().last(), text("axis%1").arg(limit - 1));
    QCOMPARE(fixture.shownAxes(), fixture.axisNames());
}

void ControllerChangeTest::openEditorIsRefreshed()
{
    Line line;
    IEditor* editor = line.open(line.kept);
    QVERIFY(editor);
    QVERIFY(offers(editor, text("P2")));
    line.change();
    QVERIFY(!offers(editor, text("P2")));
    QVERIFY(offers(editor, text("P1")));
}

void ControllerChangeTest::editorOfARemovedAxisStaysOpenUnrefreshed()
{
    Line line;
    IEditor* editor = line.open(line.gone);
    line.change();
    QCOMPARE(line.host.editorManager.openFiles(), QStringList{ line.pathOf(line.gone) });
    QVERIFY(offers(editor, text("P3")));
}

void ControllerChangeTest::foreignEditorIsLeftAlone()
{
    Line line;
    auto* foreign = new ForeignEditor;
    line.host.editorManager.adoptEditor(line.pathOf(line.kept), foreign);
    line.change();
    QCOMPARE(foreign->calls, 0);
    QCOMPARE(line.host.editorManager.openFiles(), QStringList{ line.pathOf(line.kept) });
    QCOMPARE(line.axisNames(), (QStringList{ text("kept"), text("encoder") }));
}

void ControllerChangeTest::nothingHappensWithout_data()
{
    QTest::addColumn<QString>("missing");
    QTest::newRow("the tree") << "Solution.View";
    QTest::newRow("the editor manager") << "editor";
    QTest::newRow("the project") << "project";
}

void ControllerChangeTest::nothingHappensWithout()
{
    QFETCH(QString, missing);
    Line line;
    MessageBoxWatcher boxes;
    line.project.changeController(ControllerLists::latter());
    if (missing == text("project"))
        line.project.close();
    else
        line.host.withhold(missing);
    emit line.host.view.displayEvent(line.project.nodePath(), Solution::DataControllerChanged, QVariant());
    QCOMPARE(boxes.count(), 0);
    QCOMPARE(line.shownAxes().size(), 3);
    if (missing != text("project"))
        QCOMPARE(line.axisNames().size(), 3);
}

void ControllerChangeTest::onlineDoesNotHoldItUp()
{
    Line line;
    line.host.transfer.setOnline(true);
    line.change();
    QCOMPARE(line.axisNames().size(), 2);
}

void ControllerChangeTest::everyModelCanFollowEveryOther_data()
{
    QTest::addColumn<QString>("model");
    const QStringList files = QDir(text(KESTRUN_CONTROLLER_DIR)).entryList({ text("*.json") });
    for (const QString& file : files)
        QTest::newRow(qPrintable(file)) << file.section(QLatin1Char('.'), 0, 0);
}

void ControllerChangeTest::everyModelCanFollowEveryOther()
{
    QFETCH(QString, model);
    const QStringList files = QDir(text(KESTRUN_CONTROLLER_DIR)).entryList({ text("*.json") });
    QVERIFY(files.size() >= 13);
    PluginFixture fixture(model);
    for (const QString& file : files) {
        const QStringList types{ text("Axis_Virtual"), text("Axis_Pulse"), text("Axis_Encoder"),
            text("Axis_EtherCAT") };
        for (const QString& type : types) {
            const QString name = file.section(QLatin1Char('.'), 0, 0) + type;
            AxisTable* axis = fixture.addAxis(name, type);
            axis->setProperty(text("OutputMethod"), text("5"));
            axis->setProperty(text("InputSignal"), text("6"));
            axis->setProperty(text("PulseOutputMethod"), text("2"));
        }
        fixture.project.changeController(file.section(QLatin1Char('.'), 0, 0));
        emit fixture.host.view.displayEvent(QString(), Solution::DataControllerChanged, QVariant());
        QCOMPARE(fixture.shownAxes(), fixture.axisNames());
    }
}

QTEST_MAIN(ControllerChangeTest)
#include "ControllerChangeTest.moc"
