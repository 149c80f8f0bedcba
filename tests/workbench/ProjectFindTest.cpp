#include "workbench/ProjectFind.h"

#include "examples/SampleProject.h"
#include "sdk/IEditor.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/workbench/FindProgram.h"

#include <QComboBox>
#include <QtTest>

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

QStringList viewInfo(const AxisTable& axis)
{
    QStringList names;
    for (const char* key : { "OriginReturnSetWidgetObjectName", "LineEditPosObjectName", "LineEditNegObjectName",
             "LineEditOrgObjectName" })
        names.append(axis.getViewInfo(text(key), QString()));
    return names;
}

} // namespace

/// The search with the real finder of the axes.
class ProjectFindTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void axesThatWereNeverOpenedAreSearched();
    void theyAreSearchedWhateverTheirState_data();
    void theyAreSearchedWhateverTheirState();
    void onesAreToldOfWhileOnline();
    void theyOpenForTheSearchWhileOnline();
    void whileOnlineTheyAreSearchedByTheNamesOfAnother();
    void aReferenceLeadsIntoAnAxisThatWasNeverOpened();
    void theEditorIsSearchedFromTheClickedPin_data();
    void theEditorIsSearchedFromTheClickedPin();
    void withoutAnEditorThereIsNothingToSearch();
    void underAnotherNameTheListStaysThatOfTheProject_data();
    void underAnotherNameTheListStaysThatOfTheProject();
    void underAnotherNameItsEditorAndItsOfferAreTheSame();
    void anotherEditorIsSearchedByTheKeyToo();
    void theOfferIsOfTheSearchThatMadeIt_data();
    void theOfferIsOfTheSearchThatMadeIt();
    void theOfferOutlivesTheConnectionWithoutOpeningAnything();
    void theSampleIsSearchedAsItComes();

private:
    AxisTable* addAxis(const char* name, const char* pin) const { return program->addAxis(text(name), text(pin)); }
    /// Brings a stored axis into one of the states that theyAreSearchedWhateverTheirState names.
    void bring(AxisTable* axis, const QString& state);
    /// The project's file with its log.
    QByteArray fileContents() const;
    void goToFirst() const { program->press(Qt::Key_F3); }

    std::unique_ptr<FindProgram> program;
    std::unique_ptr<MessageBoxWatcher> boxes;
};

void ProjectFindTest::init()
{
    boxes = std::make_unique<MessageBoxWatcher>();
    program = std::make_unique<FindProgram>();
    program->create(text("Line"), {});
    program->project()->sourceModel()->setSource(
        text("Main"), text("PROGRAM Main\nVAR\n  stop, near, far : BOOL;\nEND_VAR\nEND_PROGRAM\n"));
}

void ProjectFindTest::cleanup()
{
    program.reset();
    const QStringList texts = boxes->texts();
    boxes.reset();
    QCOMPARE(texts, QStringList());
}

void ProjectFindTest::bring(AxisTable* axis, const QString& state)
{
    AxisModel* axes = program->project()->axisModel();
    if (state == text("changed")) {
        axis->setProperty(text("MaxVel"), text("55"));
    } else if (state == text("renamed")) {
        QVERIFY(axes->renameAxisTable(axis->id(), text("Saw")));
    } else if (state == text("removed and put back")) {
        QVERIFY(axes->removeAxisTable(axis));
        program->save();
        QVERIFY(axes->putObjectBack(axis));
    } else if (state == text("in a comparison")) {
        QVERIFY(program->workbench->comparisonFlows().compare(
            program->write(program->file(text("Other")), { text("Cut") })));
    }
    program->workbench->workspace().showAnew();
}

QByteArray ProjectFindTest::fileContents() const
{
    QByteArray contents;
    for (const char* end : { "", "-wal" }) {
        QFile file(QString(program->file(text("Line")) + text(end)));
        if (file.open(QIODevice::ReadOnly))
            contents += file.readAll();
    }
    return contents;
}

void ProjectFindTest::axesThatWereNeverOpenedAreSearched()
{
    AxisTable* axis = addAxis("Cut", "Main.stop");
    program->save();
    const QMap<QString, QString> before = axis->allProperties();
    QVERIFY(axis->getViewInfo(text("LineEditPosObjectName"), QString()).isEmpty());
    program->search(text("stop"));
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.stop") });
    QCOMPARE(program->status(), text("Places found: 1."));
    QVERIFY(!program->child<QPushButton>("openUnsearched")->isVisibleTo(&program->panel()));
    // Nothing has opened for it, and the axis is no other than before.
    QVERIFY(program->editors().editors().isEmpty());
    QVERIFY(!program->project()->isModified());
    QCOMPARE(axis->allProperties(), before);
    QVERIFY(axis->load());
    QCOMPARE(axis->allProperties(), before);
    goToFirst();
    QCOMPARE(program->currentAxis(), text("Cut"));
    QTRY_COMPARE(program->focus(), text("lineEditPos"));
}

void ProjectFindTest::theyAreSearchedWhateverTheirState_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : { "as stored", "changed", "renamed", "removed and put back", "in a comparison" })
        QTest::newRow(state) << text(state);
}

/// A search changes nothing, in memory or in the file, and says nothing but what it has found.
void ProjectFindTest::theyAreSearchedWhateverTheirState()
{
    QFETCH(QString, state);
    AxisTable* axis = addAxis("Cut", "Main.stop");
    // The pages correct what they find.
    axis->setProperty(text("AxisType"), text("Axis_Pulse"));
    axis->setProperty(text("OutputDevice"), text("99"));
    program->save();
    bring(axis, state);
    const QMap<QString, QString> before = axis->allProperties();
    const bool wasModified = axis->modified;
    const bool projectWasModified = program->project()->isModified();
    const QByteArray file = fileContents();
    const QSignalSpy failures(program->project(), &AbstractProjectModel::storeFailed);
    program->search(text("stop"));
    QCOMPARE(program->results(), QStringList{ QString(axis->name() + text(" Positive limit:Main.stop")) });
    QCOMPARE(program->status(), text("Places found: 1."));
    QCOMPARE(axis->allProperties(), before);
    QCOMPARE(axis->modified, wasModified);
    QCOMPARE(axis->pageBuild, false);
    QCOMPARE(program->project()->isModified(), projectWasModified);
    QCOMPARE(fileContents(), file);
    QVERIFY(failures.isEmpty());
}

void ProjectFindTest::onesAreToldOfWhileOnline()
{
    const AxisTable* axis = addAxis("Cut", "Main.stop");
    program->save();
    program->workbench->connection().setOnline(true, false);
    program->search(text("stop"));
    QCOMPARE(program->status(), text("Places found: 0. Never opened, so not searched: 1."));
    QVERIFY(axis->getViewInfo(text("LineEditPosObjectName"), QString()).isEmpty());
    program->workbench->connection().setOnline(false, false);
    program->search(text("stop"));
    QCOMPARE(program->status(), text("Places found: 1."));
}

void ProjectFindTest::whileOnlineTheyAreSearchedByTheNamesOfAnother()
{
    const AxisTable* cut = addAxis("Cut", "Main.near");
    const AxisTable* turn = addAxis("Turn", "Main.stop");
    program->save();
    program->openAxis(text("Cut"));
    program->workbench->connection().setOnline(true, false);
    program->search(text("stop"));
    QCOMPARE(program->results(), QStringList{ text("Turn Positive limit:Main.stop") });
    QCOMPARE(program->status(), text("Places found: 1."));
    QCOMPARE(viewInfo(*turn), viewInfo(*cut));
    QVERIFY(!program->project()->isModified());
    QCOMPARE(program->editors().editors().size(), 1);
    program->workbench->connection().setOnline(false, false);
    goToFirst();
    QCOMPARE(program->currentAxis(), text("Turn"));
    QTRY_COMPARE(program->focus(), text("lineEditPos"));
}

void ProjectFindTest::theyOpenForTheSearchWhileOnline()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->save();
    program->workbench->connection().setOnline(true, false);
    program->search(text("stop"));
    auto* button = program->child<QPushButton>("openUnsearched");
    QVERIFY(button->isVisibleTo(&program->panel()));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(program->results(),
        (QStringList{ text("Cut Positive limit:Main.stop"), text("Turn Positive limit:Main.stop") }));
    QCOMPARE(program->status(), text("Places found: 2."));
    QVERIFY(!button->isVisibleTo(&program->panel()));
    QCOMPARE(program->editors().editors().size(), 2);
    program->workbench->connection().setOnline(false, false);
}

void ProjectFindTest::aReferenceLeadsIntoAnAxisThatWasNeverOpened()
{
    AxisTable* axis = addAxis("Cut", "Main.far");
    axis->setProperty(text("OrgSignalEnable"), text("TRUE"));
    axis->setProperty(text("OrgSignalPin"), text("Main.stop"));
    program->findReferences(text("Main.stop"));
    QCOMPARE(program->results(), QStringList{ text("Cut Origin signal:Main.stop") });
    // The finder could not know the control when it was asked.
    QCOMPARE(program->panel().places().first().location, text(" . "));
    goToFirst();
    QCOMPARE(program->currentAxis(), text("Cut"));
    QTRY_COMPARE(program->focus(), text("lineEditOrg"));
}

void ProjectFindTest::theEditorIsSearchedFromTheClickedPin_data()
{
    QTest::addColumn<QString>("clicked");
    QTest::addColumn<QStringList>("found");
    const QString a = text("Cut Positive limit:Main.stop");
    const QString b = text("Cut Negative limit:Main.near");
    const QString c = text("Cut Origin signal:Main.far");
    QTest::newRow("the first") << text("lineEditPos") << QStringList{ a, b, c };
    QTest::newRow("the second") << text("lineEditNeg") << QStringList{ b, c, a };
    QTest::newRow("the last") << text("lineEditOrg") << QStringList{ c, a, b };
    QTest::newRow("a field that is no pin") << text("lineEdit_7") << QStringList{ a, b, c };
}

void ProjectFindTest::theEditorIsSearchedFromTheClickedPin()
{
    QFETCH(QString, clicked);
    QFETCH(QStringList, found);
    AxisTable* axis = addAxis("Cut", "Main.stop");
    axis->setProperty(text("AxisType"), text("Axis_Pulse"));
    for (const char* key : { "NegsLimitEnable", "OrgSignalEnable" })
        axis->setProperty(text(key), text("TRUE"));
    axis->setProperty(text("NegLimitPin"), text("Main.near"));
    axis->setProperty(text("OrgSignalPin"), text("Main.far"));
    IEditor* editor = program->openAxis(text("Cut"));
    QVERIFY(editor->gotoLocation(QString(text("OriginReturnSetWidget.") + clicked)));
    const auto* page = editor->widget()->findChild<QWidget*>(text("OriginReturnSetWidget"));
    QVERIFY(page);
    auto* field = page->findChild<QLineEdit*>(clicked);
    QVERIFY(field);
    QTRY_VERIFY(field->isVisible());
    QTest::mouseClick(field, Qt::LeftButton);
    program->child<QComboBox>("scope")->setCurrentIndex(1);
    program->search(text("main"));
    QCOMPARE(program->results(), found);
    QCOMPARE(program->status(), text("Places found: 3."));
}

void ProjectFindTest::withoutAnEditorThereIsNothingToSearch()
{
    addAxis("Cut", "Main.stop");
    program->save();
    QVERIFY(!program->editors().currentEditor());
    program->child<QComboBox>("scope")->setCurrentIndex(1);
    program->search(text("stop"));
    QVERIFY(program->results().isEmpty());
    QCOMPARE(program->status(), text("There is nothing here that can be searched."));
}

void ProjectFindTest::underAnotherNameTheListStaysThatOfTheProject_data()
{
    QTest::addColumn<bool>("uses");
    QTest::addColumn<QString>("text");
    QTest::newRow("of a text") << false << QStringLiteral("near");
    QTest::newRow("of uses, with another text searched before") << true << QStringLiteral("stop");
    QTest::newRow("of uses, without a text") << true << QString();
}

void ProjectFindTest::underAnotherNameTheListStaysThatOfTheProject()
{
    QFETCH(bool, uses);
    QFETCH(QString, text);
    for (const char* axis : { "Cut", "Saw", "Turn" })
        addAxis(axis, "Main.near");
    addAxis("Wind", "Main.stop");
    program->save();
    program->search(text);
    if (uses)
        program->findReferences(QStringLiteral("Main.near"));
    const QStringList before = program->results();
    const QString status = program->status();
    QCOMPARE(before.size(), 3);
    goToFirst();
    QString error;
    QVERIFY2(program->workbench->workspace().saveAs(program->file(QStringLiteral("Copy")), &error), qPrintable(error));
    QCOMPARE(program->results(), before);
    QCOMPARE(program->status(), status);
    goToFirst();
    QCOMPARE(program->currentAxis(), QStringLiteral("Saw"));
    QVERIFY(program->editors().currentEditor()->nodePath().startsWith(QStringLiteral("Copy.")));
    QTRY_COMPARE(program->focus(), QStringLiteral("lineEditPos"));
    // What has changed in it since is found under the new name too.
    program->axis(QStringLiteral("Turn"))->setProperty(QStringLiteral("PosLimitPin"), QStringLiteral("Main.far"));
    goToFirst();
    QCOMPARE(program->results(), before.mid(0, 2));
    QCOMPARE(program->currentAxis(), QStringLiteral("Cut"));
    // What only takes its nodes down and shows them again keeps the list.
    program->workbench->workspace().showAnew();
    QCOMPARE(program->results().size(), 2);
}

void ProjectFindTest::underAnotherNameItsEditorAndItsOfferAreTheSame()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->save();
    program->workbench->connection().setOnline(true, false);
    program->search(text("stop"));
    QString error;
    QVERIFY2(program->workbench->workspace().saveAs(program->file(text("Copy")), &error), qPrintable(error));
    QTest::mouseClick(program->child<QPushButton>("openUnsearched"), Qt::LeftButton);
    QCOMPARE(program->status(), text("Places found: 2."));
    program->workbench->connection().setOnline(false, false);
    program->editors().activateEditor(program->openAxis(text("Turn")));
    program->child<QComboBox>("scope")->setCurrentIndex(1);
    program->search(text("stop"));
    QCOMPARE(program->results(), QStringList{ text("Turn Positive limit:Main.stop") });
    QVERIFY2(program->workbench->workspace().saveAs(program->file(text("Third")), &error), qPrintable(error));
    program->axis(text("Turn"))->setProperty(text("PosLimitPin"), text("Main.stop2"));
    program->child<QLineEdit>("text")->clear();
    goToFirst();
    QCOMPARE(program->results(), QStringList{ text("Turn Positive limit:Main.stop2") });
}

void ProjectFindTest::anotherEditorIsSearchedByTheKeyToo()
{
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.stop");
    program->save();
    program->openAxis(text("Cut"));
    program->child<QComboBox>("scope")->setCurrentIndex(1);
    program->search(text("stop"));
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.stop") });
    program->openAxis(text("Turn"));
    goToFirst();
    QCOMPARE(program->results(), QStringList{ text("Turn Positive limit:Main.stop") });
    QCOMPARE(program->currentAxis(), text("Turn"));
    // A list of the whole project leads from editor to editor.
    program->child<QComboBox>("scope")->setCurrentIndex(0);
    goToFirst();
    QCOMPARE(program->results().size(), 2);
    QCOMPARE(program->currentAxis(), text("Cut"));
    goToFirst();
    QCOMPARE(program->currentAxis(), text("Turn"));
    QCOMPARE(program->results().size(), 2);
}

void ProjectFindTest::theOfferIsOfTheSearchThatMadeIt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("scope");
    QTest::newRow("the text is gone") << QString() << 0;
    QTest::newRow("another text stands there") << text("near") << 0;
    QTest::newRow("only one editor is chosen now") << text("stop") << 1;
}

void ProjectFindTest::theOfferIsOfTheSearchThatMadeIt()
{
    QFETCH(QString, text);
    QFETCH(int, scope);
    addAxis("Cut", "Main.stop");
    addAxis("Turn", "Main.near");
    program->save();
    program->workbench->connection().setOnline(true, false);
    program->search(QStringLiteral("stop"));
    program->child<QLineEdit>("text")->setText(text);
    program->child<QComboBox>("scope")->setCurrentIndex(scope);
    QTest::mouseClick(program->child<QPushButton>("openUnsearched"), Qt::LeftButton);
    QCOMPARE(program->results(), QStringList{ QStringLiteral("Cut Positive limit:Main.stop") });
    QCOMPARE(program->status(), QStringLiteral("Places found: 1."));
    QVERIFY(!program->panel().isUpToDate());
    program->workbench->connection().setOnline(false, false);
}

void ProjectFindTest::theOfferOutlivesTheConnectionWithoutOpeningAnything()
{
    addAxis("Cut", "Main.stop");
    program->save();
    program->workbench->connection().setOnline(true, false);
    program->search(text("stop"));
    program->workbench->connection().setOnline(false, false);
    QTest::mouseClick(program->child<QPushButton>("openUnsearched"), Qt::LeftButton);
    QCOMPARE(program->results(), QStringList{ text("Cut Positive limit:Main.stop") });
    QVERIFY(program->editors().editors().isEmpty());
}

void ProjectFindTest::theSampleIsSearchedAsItComes()
{
    QString error;
    const QString file = program->file(text("Sample"));
    QVERIFY2(makeSampleProject(
                 text(KESTRUN_SOURCE_DIR "/examples/packaging-line"), text(KESTRUN_CONTROLLER_DIR), file, &error),
        qPrintable(error));
    program->save();
    QVERIFY(program->workbench->flows().open(file));
    std::vector<AxisTable*> axes;
    program->project()->axisModel()->allAxisTables(axes);
    QVERIFY(!axes.empty());
    QMap<quint32, QStringList> before;
    for (const AxisTable* axis : axes)
        before.insert(axis->id(), viewInfo(*axis));
    program->workbench->connection().setOnline(true, false);
    program->search(text("limits"));
    QCOMPARE(program->status(), text("Places found: 3."));
    program->workbench->connection().setOnline(false, false);
    // What came with the sample is what the editor leaves.
    for (const AxisTable* axis : axes) {
        program->openAxis(axis->name());
        QCOMPARE(viewInfo(*axis), before.value(axis->id()));
    }
}

QTEST_MAIN(ProjectFindTest)
#include "ProjectFindTest.moc"
