#include "host/projectmodel/SourceModel.h"
#include "tests/workbench/ComparisonFixture.h"
#include "workbench/OutputPanel.h"

#include <QLabel>
#include <QTableWidget>

Q_DECLARE_METATYPE(std::function<void(ProjectModel&)>)

/// What a comparison says of the projects beside their axes.
class ProjectComparisonPartsTest : public QObject, private ComparisonFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void whatIsNoAxisIsComparedToo_data();
    void whatIsNoAxisIsComparedToo();
    void sourcesArePairedByName();
    void changesOfWhatIsNoAxisShow();
    void theRestOfTheProjectStandsBelowTheAxes();
    void namesWithMarkupReadAsTheyStand();

private:
    /// Another project with the same axes that has been changed.
    QString alike(const std::function<void(ProjectModel&)>& change) const;
    /// "controller equal" and so on, sources with their names.
    QStringList parts() const;
};

QString ProjectComparisonPartsTest::alike(const std::function<void(ProjectModel&)>& change) const
{
    const QString path = program->write(program->file(QStringLiteral("Alike")),
        { QStringLiteral("Feed"), QStringLiteral("Turn"), QStringLiteral("Press") });
    QString error;
    ProjectModel* project = ProjectModelManager::instance()->openProject(path, &error);
    if (!project)
        qFatal("%s", qPrintable(error));
    change(*project);
    if (!project->save(&error))
        qFatal("%s", qPrintable(error));
    ProjectModelManager::instance()->closeProject(project);
    return path;
}

QStringList ProjectComparisonPartsTest::parts() const
{
    QStringList parts;
    for (const ComparedPart& part : comparison().parts()) {
        const char* kinds[] = { "controller ", "style ", "cycle time ", "source " };
        const QString name = part.kind != ComparedPart::Source
            ? QString()
            : QString((part.here.isEmpty() ? part.there : part.here) + QLatin1Char(' '));
        parts.append(QString(QLatin1String(kinds[part.kind]) + name + QLatin1String(stateName(part.state))));
    }
    return parts;
}

void ProjectComparisonPartsTest::whatIsNoAxisIsComparedToo_data()
{
    using Change = std::function<void(ProjectModel&)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("different");
    QTest::newRow("nothing") << Change([](ProjectModel&) {}) << QString();
    QTest::newRow("the controller") << Change([](ProjectModel& project) {
        project.changeController(
            *ControllerCatalog(QStringLiteral(KESTRUN_CONTROLLER_DIR)).find(QStringLiteral("NV3T_70Q8")));
    }) << QStringLiteral("controller");
    QTest::newRow("the program style") << Change([](ProjectModel& project) {
        project.setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
    }) << QStringLiteral("style");
    QTest::newRow("the cycle time") << Change([](ProjectModel& project) {
        QString time = QStringLiteral("8000");
        project.axisModel()->setMotionTaskCfgCycleTime(time);
    }) << QStringLiteral("cycle time");
    QTest::newRow("a source") << Change([](ProjectModel& project) {
        project.sourceModel()->setSource(QStringLiteral("Main"), QStringLiteral("PROGRAM Main END_PROGRAM "));
    }) << QStringLiteral("source Main");
}

void ProjectComparisonPartsTest::whatIsNoAxisIsComparedToo()
{
    QFETCH(std::function<void(ProjectModel&)>, change);
    QFETCH(QString, different);
    const QString source = QStringLiteral("PROGRAM Main END_PROGRAM");
    program->project()->sourceModel()->setSource(QStringLiteral("Main"), source);
    QVERIFY(compare(alike([&](ProjectModel& project) {
        project.sourceModel()->setSource(QStringLiteral("Main"), source);
        change(project);
    })));
    QStringList expected;
    for (const char* part : { "controller", "style", "cycle time", "source Main" })
        expected.append(QString(QLatin1String(part)
            + (different == QLatin1String(part) ? QLatin1String(" different") : QLatin1String(" equal"))));
    QCOMPARE(parts(), expected);
    // The project's own row stands for all of it: the axes are equal in every case.
    QCOMPARE(states().values().count("equal"), 3);
    QCOMPARE(rootState(), different.isEmpty() ? QStringLiteral("= Equal") : QStringLiteral("\u2260 Different"));
}

void ProjectComparisonPartsTest::sourcesArePairedByName()
{
    program->project()->sourceModel()->setSource(QStringLiteral("Both"), QStringLiteral("(* 1 *)"));
    program->project()->sourceModel()->setSource(QStringLiteral("Here"), QString());
    QVERIFY(compare(alike([](ProjectModel& project) {
        project.sourceModel()->setSource(QStringLiteral("There"), QString());
        project.sourceModel()->setSource(QStringLiteral("Both"), QStringLiteral("(* 1 *)"));
    })));
    QCOMPARE(parts().mid(3),
        (QStringList{ QStringLiteral("source Both equal"), QStringLiteral("source Here only here"),
            QStringLiteral("source There only there") }));
    QCOMPARE(rootState(), QStringLiteral("\u2260 Different"));
}

void ProjectComparisonPartsTest::changesOfWhatIsNoAxisShow()
{
    QVERIFY(compare(alike([](ProjectModel&) {})));
    QCOMPARE(rootState(), QStringLiteral("= Equal"));
    const auto become = [this](const QString& part) { return parts().contains(part); };
    program->project()->sourceModel()->setSource(QStringLiteral("New"), QString());
    QTRY_VERIFY(become(QStringLiteral("source New only here")));
    QCOMPARE(rootState(), QStringLiteral("\u2260 Different"));
    program->project()->sourceModel()->removeSource(QStringLiteral("New"));
    QTRY_COMPARE(rootState(), QStringLiteral("= Equal"));
    QString time = QStringLiteral("8000");
    program->project()->axisModel()->setMotionTaskCfgCycleTime(time);
    QTRY_VERIFY(become(QStringLiteral("cycle time different")));
    const ControllerDescription controller
        = *ControllerCatalog(QStringLiteral(KESTRUN_CONTROLLER_DIR)).find(QStringLiteral("NV3T_70Q8E"));
    program->project()->changeController(controller);
    QTRY_VERIFY(become(QStringLiteral("controller different")));
}

void ProjectComparisonPartsTest::theRestOfTheProjectStandsBelowTheAxes()
{
    program->project()->sourceModel()->setSource(QStringLiteral("Main"), QString());
    QVERIFY(compare(alike([](ProjectModel& project) {
        project.setSetting(QStringLiteral("ProgramStyle"), QStringLiteral("1"));
        QString time = QStringLiteral("8000");
        project.axisModel()->setMotionTaskCfgCycleTime(time);
    })));
    QStringList rows;
    for (int row = 3; row < tree("here")->model()->rowCount(tree("here")->model()->index(0, 0)); ++row)
        rows.append((QStringList{ cell(row, 0).data().toString(), cell(row, 1).data().toString(),
                         cell(row, 2).data().toString() })
                        .join(QStringLiteral(" | ")));
    QString own = program->project()->axisModel()->getMotionTaskCfgCycleTime();
    own = own.isEmpty() ? QStringLiteral("\u2014") : QString(own + QStringLiteral(" \u00b5s"));
    QCOMPARE(rows,
        (QStringList{ QStringLiteral("Controller: NV3T_70Q12E | = Equal | Controller: NV3T_70Q12E"),
            QStringLiteral("Program style: variables and addresses | \u2260 Different | Program style: addresses only"),
            QStringLiteral("Cycle time: %1 | \u2260 Different | Cycle time: 8000 \u00b5s").arg(own),
            QStringLiteral("Source: Main | \u2190 Only in this project | \u2014") }));
    // A row that is no axis tells its state and stays chosen when the trees are filled anew.
    tree("here")->setCurrentIndex(cell(6, 0));
    const auto* state = panel().findChild<QLabel*>(QStringLiteral("axisState"));
    QCOMPARE(state->text(), QStringLiteral("Source: Main: \u2190 Only in this project"));
    comparison().refresh();
    QCOMPARE(tree("here")->currentIndex().row(), 6);
    QCOMPARE(panel().findChild<QTableWidget*>(QStringLiteral("values"))->rowCount(), 0);
}

void ProjectComparisonPartsTest::namesWithMarkupReadAsTheyStand()
{
    program->workbench->workspace().close();
    program->create(QStringLiteral("<i>Line"), { QStringLiteral("Feed") });
    QVERIFY(compare(program->write(program->file(QStringLiteral("<b>Other")), { QStringLiteral("Feed") })));
    const auto reads = [](const QString& tip, const QString& name) { return tip.contains(name.toHtmlEscaped()); };
    const QAbstractItemModel* model = tree("here")->model();
    QVERIFY(reads(model->index(0, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("<i>Line")));
    QVERIFY(reads(model->index(0, 2).data(Qt::ToolTipRole).toString(), QStringLiteral("<b>Other")));
    const OutputPanel& output = program->workbench->window().output();
    const QTreeWidgetItem* line = output.topLevelItem(output.topLevelItemCount() - 1);
    QVERIFY(line->text(2).contains(QStringLiteral("<b>Other")));
    QVERIFY(reads(line->toolTip(2), QStringLiteral("<b>Other")));
    program->openAxis(QStringLiteral("Feed"));
    QVERIFY(reads(program->workbench->editors().tabs()->tabToolTip(0), QStringLiteral("<i>Line")));
}

QTEST_MAIN(ProjectComparisonPartsTest)
#include "ProjectComparisonPartsTest.moc"
