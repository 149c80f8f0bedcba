#include "sdk/IEditor.h"
#include "sdk/ServiceLocator.h"
#include "tests/workbench/ComparisonFixture.h"
#include "workbench/MessageBar.h"
#include "workbench/OutputPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QSet>
#include <QSignalSpy>
#include <QTableWidget>
#include <QtTest>

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool cookie()
{
    const auto* cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
    return cookies->value(QStringLiteral("IDE/ProjectCompration"), false).toBool();
}

} // namespace

/// A comparison from its beginning to its end, and its axes.
class ProjectComparisonTest : public QObject, private ComparisonFixture {
    Q_OBJECT

private slots:
    void init() { start(); }
    void cleanup() { stop(); }

    void axesArePairedByName();
    void namesPairInAnyCase();
    void valuesStandSideBySide();
    void theStateIsToldAndLeftInTheCookie();
    void editorsAreReadOnlyWhileItIsOn();
    void whileOnlineTheConnectionRulesTheEditors();
    void theOtherFileStaysAsItIs();
    void aFileOfTheSameNameCanBeCompared();
    void aFileOfAlmostTheSameNameCanBeCompared();
    void aRefusedFileIsNamedWithTheReason_data();
    void aRefusedFileIsNamedWithTheReason();
    void withoutAComparatorItDoesNotBegin();
    void changesOfTheProjectShow();
    void itEndsWithTheProject();
    void itFollowsTheProjectToAnotherFile();
    void theOtherFileCanBeOpenedAsTheProject();
    void aNewComparisonTakesThePlaceOfTheFormer();
    void treesStandBesideEachOther();
    void statesAreToldByText();
    void projectsAreEqualOnlyIfAllTheirAxesAre();
    void keysThatDifferStandInTheTable();
    void anAxisOpensFromTheTree_data();
    void anAxisOpensFromTheTree();
    void theActionsFollowTheState();
    void quittingWhileItIsOn();

private:
    /// Another project that has Feed changed, Turn equal, and Lift in place of Press.
    QString other() const;
};

QString ProjectComparisonTest::other() const
{
    return program->write(program->file(QStringLiteral("Other")),
        { QStringLiteral("Lift"), QStringLiteral("Turn"), QStringLiteral("Feed") }, [](AxisTable& axis) {
            if (axis.name() == QLatin1String("Feed"))
                axis.setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
        });
}

void ProjectComparisonTest::axesArePairedByName()
{
    QVERIFY(compare(other()));
    QCOMPARE(states(),
        (QMap<QString, QByteArray>{ { QStringLiteral("Feed"), "different" }, { QStringLiteral("Turn"), "equal" },
            { QStringLiteral("Press"), "only here" }, { QStringLiteral("Lift"), "only there" } }));
    QCOMPARE(comparison().axes().last().name, QStringLiteral("Lift"));
}

void ProjectComparisonTest::namesPairInAnyCase()
{
    QVERIFY(compare(program->write(program->file(QStringLiteral("Other")), { QStringLiteral("FEED") })));
    QCOMPARE(states().value(QStringLiteral("Feed")), QByteArray("different"));
    QVERIFY(!states().contains(QStringLiteral("FEED")));
    QCOMPARE(comparison().axes().first().name, QStringLiteral("Feed"));
    QCOMPARE(comparison().axes().first().thereName, QStringLiteral("FEED"));
    QCOMPARE(cell(0, 0).data().toString(), QStringLiteral("Feed"));
    QCOMPARE(cell(0, 2).data().toString(), QStringLiteral("FEED"));
}

void ProjectComparisonTest::valuesStandSideBySide()
{
    program->axis(QStringLiteral("Feed"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("55"));
    QVERIFY(compare(other()));
    int differing = 0;
    const QVector<ComparedValue> values = comparison().values(comparison().axes().first());
    QVERIFY(values.size() > 20);
    for (const ComparedValue& value : values) {
        if (!value.differs)
            continue;
        ++differing;
        QCOMPARE(value.key, QStringLiteral("MaxVel"));
        QCOMPARE(value.here, QStringLiteral("55"));
        QCOMPARE(value.there, QStringLiteral("77"));
    }
    QCOMPARE(differing, 1);
    QVERIFY2(comparison().values(comparison().axes().last()).isEmpty(), "an axis on one side has nothing to stand by");
}

void ProjectComparisonTest::theStateIsToldAndLeftInTheCookie()
{
    QVERIFY(!cookie());
    QVector<bool> told;
    QVector<bool> cookies;
    connect(&program->workbench->comparators(), &IComparatorMan::cmpStateChanged, this, [&](bool on) {
        told.append(on);
        cookies.append(cookie());
    });
    QVERIFY(compare(other()));
    QCOMPARE(told, QVector<bool>{ true });
    QVERIFY(cookie());
    QVERIFY(ProjectModelManager::instance()->projects().size() == 2);
    comparison().stop();
    QCOMPARE(told, (QVector<bool>{ true, false }));
    QCOMPARE(cookies, told);
    QVERIFY(!cookie());
    QCOMPARE(ProjectModelManager::instance()->projects(), QVector<ProjectModel*>{ program->project() });
    comparison().stop();
    QCOMPARE(told.size(), 2);
}

void ProjectComparisonTest::editorsAreReadOnlyWhileItIsOn()
{
    IEditor* before = program->openAxis(QStringLiteral("Feed"));
    auto* type = before->widget()->findChild<QComboBox*>(QStringLiteral("comboBoxAxisType"));
    QVERIFY(type->isEnabled());
    QVERIFY(compare(other()));
    QVERIFY(before->isReadOnly());
    QVERIFY(!type->isEnabled());
    IEditor* during = program->openAxis(QStringLiteral("Turn"));
    QVERIFY(during->isReadOnly());
    comparison().stop();
    QVERIFY(!before->isReadOnly());
    QVERIFY(!during->isReadOnly());
    QVERIFY(type->isEnabled());
}

void ProjectComparisonTest::whileOnlineTheConnectionRulesTheEditors()
{
    IEditor* editor = program->openAxis(QStringLiteral("Feed"));
    const auto* type = editor->widget()->findChild<QComboBox*>(QStringLiteral("comboBoxAxisType"));
    program->workbench->connection().setOnline(true, false);
    QVERIFY(!type->isEnabled());
    QVERIFY(compare(other()));
    QVERIFY(cookie());
    QVERIFY(!type->isEnabled());
    comparison().stop();
    QVERIFY(!cookie());
    // The end of a comparison gives nothing back that the connection has taken.
    QVERIFY(!type->isEnabled());
    program->workbench->connection().setOnline(false, false);
    QVERIFY(type->isEnabled());
    QVERIFY(!editor->isReadOnly());
}

void ProjectComparisonTest::theOtherFileStaysAsItIs()
{
    const QString file = other();
    const QByteArray before = contentsOf(file);
    const QStringList entries = QDir(program->directory.path()).entryList({ QStringLiteral("Other*") });
    QVERIFY(compare(file));
    QVERIFY(ProjectModelManager::instance()->projects().last()->isReadOnly());
    QCOMPARE(QDir(program->directory.path()).entryList({ QStringLiteral("Other*") }), entries);
    comparison().stop();
    QCOMPARE(contentsOf(file), before);
}

void ProjectComparisonTest::aFileOfTheSameNameCanBeCompared()
{
    QVERIFY(QDir(program->directory.path()).mkdir(QStringLiteral("old")));
    const QString file = program->directory.filePath(QStringLiteral("old/Line.kproj"));
    const QStringList axes{ QStringLiteral("Feed"), QStringLiteral("Turn"), QStringLiteral("Press") };
    QVERIFY(QFile::rename(program->write(program->file(QStringLiteral("Past")), axes), file));
    QVERIFY(compare(file));
    for (const QByteArray& state : states())
        QCOMPARE(state, QByteArray("equal"));
    QCOMPARE(states().size(), 3);
}

void ProjectComparisonTest::aFileOfAlmostTheSameNameCanBeCompared()
{
    const QString file = other();
    for (const char* name : { "_Other", "-Other", "Other_", "Other2" }) {
        program->create(QLatin1String(name), { QStringLiteral("Turn") });
        QVERIFY2(compare(file), name);
        QCOMPARE(states().value(QStringLiteral("Turn")), QByteArray("equal"));
    }
}

void ProjectComparisonTest::aRefusedFileIsNamedWithTheReason_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("a file that is not there") << QStringLiteral("Missing") << QByteArray();
    QTest::newRow("a file that is no project") << QStringLiteral("Strange") << QByteArray("no project at all");
    QTest::newRow("an empty file") << QStringLiteral("Empty") << QByteArray("");
    QTest::newRow("the project itself") << QStringLiteral("Line") << QByteArray();
}

void ProjectComparisonTest::aRefusedFileIsNamedWithTheReason()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, contents);
    if (!contents.isNull()) {
        QFile file(program->file(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
    QVERIFY(!compare(program->file(name)));
    const MessageBar& bar = program->workbench->window().messageBar();
    QVERIFY(bar.isVisible());
    QVERIFY2(bar.text().startsWith(QString(program->file(name) + QLatin1Char(':'))), qPrintable(bar.text()));
    QVERIFY2(bar.text().size() > program->file(name).size() + 10, "with a reason");
    QCOMPARE(program->workbench->window().output().lines().last(), bar.text());
    QVERIFY(!comparison().isOn());
    QVERIFY(!cookie());
}

void ProjectComparisonTest::withoutAComparatorItDoesNotBegin()
{
    const QString file = other();
    program->workbench->comparators().clear();
    QVERIFY(!compare(file));
    QVERIFY(program->workbench->window().messageBar().text().contains(QStringLiteral("no plug-in")));
    QCOMPARE(ProjectModelManager::instance()->projects().size(), 1);
}

void ProjectComparisonTest::changesOfTheProjectShow()
{
    QVERIFY(compare(other()));
    program->axis(QStringLiteral("Feed"))->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    QTRY_COMPARE(states().value(QStringLiteral("Feed")), QByteArray("equal"));
    AxisModel* axes = program->project()->axisModel();
    axes->renameAxisTable(program->axis(QStringLiteral("Press"))->id(), QStringLiteral("Lift"));
    QTRY_COMPARE(states().value(QStringLiteral("Lift")), QByteArray("equal"));
    axes->removeAxisTable(program->axis(QStringLiteral("Turn")));
    QTRY_COMPARE(states().value(QStringLiteral("Turn")), QByteArray("only there"));
    axes->addAxisTable(QStringLiteral("Saw"));
    QTRY_COMPARE(states().value(QStringLiteral("Saw")), QByteArray("only here"));
}

void ProjectComparisonTest::itEndsWithTheProject()
{
    QVERIFY(compare(other()));
    program->workbench->workspace().close();
    QVERIFY(!comparison().isOn());
    QVERIFY(!cookie());
    QVERIFY(ProjectModelManager::instance()->projects().isEmpty());
    QCOMPARE(tree("here")->model()->rowCount(), 0);
}

void ProjectComparisonTest::itFollowsTheProjectToAnotherFile()
{
    QVERIFY(compare(other()));
    QString error;
    QVERIFY(program->workbench->workspace().saveAs(program->file(QStringLiteral("Copy")), &error));
    QVERIFY(comparison().isOn());
    QCOMPARE(tree("here")->model()->index(0, 0).data().toString(), QStringLiteral("Copy"));
    QCOMPARE(states().value(QStringLiteral("Turn")), QByteArray("equal"));
}

void ProjectComparisonTest::theOtherFileCanBeOpenedAsTheProject()
{
    const QString file = other();
    QVERIFY(compare(file));
    QVERIFY(program->workbench->flows().open(file));
    QCOMPARE(program->project()->name(), QStringLiteral("Other"));
    QVERIFY(!program->project()->isReadOnly());
    QVERIFY(!comparison().isOn());
}

void ProjectComparisonTest::aNewComparisonTakesThePlaceOfTheFormer()
{
    QVERIFY(compare(other()));
    const QString third = program->write(program->file(QStringLiteral("Third")), { QStringLiteral("Feed") });
    QVERIFY(compare(third));
    QCOMPARE(comparison().otherFile(), third);
    QCOMPARE(states().value(QStringLiteral("Feed")), QByteArray("equal"));
    QVERIFY2(compare(third), "the same file can be read again");
    QCOMPARE(ProjectModelManager::instance()->projects().size(), 2);
}

void ProjectComparisonTest::treesStandBesideEachOther()
{
    QVERIFY(compare(other()));
    QVERIFY(panel().isVisible());
    QTreeView* here = tree("here");
    QTreeView* there = tree("there");
    QVERIFY(!here->isColumnHidden(0) && !here->isColumnHidden(1) && here->isColumnHidden(2));
    QVERIFY(there->isColumnHidden(0) && there->isColumnHidden(1) && !there->isColumnHidden(2));
    QCOMPARE(there->model()->index(0, 2).data().toString(), QStringLiteral("Other"));
    QCOMPARE(cell(0, 0).data().toString(), QStringLiteral("Feed"));
    QCOMPARE(cell(0, 2).data().toString(), QStringLiteral("Feed"));
    QCOMPARE(cell(2, 0).data().toString(), QStringLiteral("Press"));
    QCOMPARE(cell(2, 2).data().toString(), QStringLiteral("\u2014"));
    QCOMPARE(cell(3, 0).data().toString(), QStringLiteral("\u2014"));
    QCOMPARE(cell(3, 2).data().toString(), QStringLiteral("Lift"));
    QCOMPARE(here->visualRect(cell(1, 0)).top(), there->visualRect(cell(1, 2)).top());
    here->collapse(here->model()->index(0, 0));
    QVERIFY(!there->isExpanded(there->model()->index(0, 0)));
    there->expand(there->model()->index(0, 0));
    QVERIFY(here->isExpanded(here->model()->index(0, 0)));
    there->setCurrentIndex(cell(1, 2));
    QCOMPARE(here->currentIndex().row(), 1);
}

void ProjectComparisonTest::statesAreToldByText()
{
    QVERIFY(compare(other()));
    QSet<QString> texts;
    QSet<QChar> symbols;
    for (int row = 0; row < 4; ++row) {
        const QString text = cell(row, 1).data().toString();
        QVERIFY(text.size() > 3);
        texts.insert(text);
        symbols.insert(text.at(0));
    }
    QCOMPARE(texts.size(), 4);
    QCOMPARE(symbols.size(), 4);
    QCOMPARE(cell(0, 1).data().toString(), QStringLiteral("\u2260 Different"));
    QCOMPARE(cell(1, 1).data().toString(), QStringLiteral("= Equal"));
    QCOMPARE(cell(2, 1).data().toString(), QStringLiteral("\u2190 Only in this project"));
    QCOMPARE(cell(3, 1).data().toString(), QStringLiteral("\u2192 Only in the other project"));
}

void ProjectComparisonTest::projectsAreEqualOnlyIfAllTheirAxesAre()
{
    const auto state = [this] { return tree("here")->model()->index(0, 1).data().toString(); };
    QVERIFY(compare(other()));
    QCOMPARE(state(), QStringLiteral("\u2260 Different"));
    QVERIFY(compare(program->write(program->file(QStringLiteral("Same")),
        { QStringLiteral("Feed"), QStringLiteral("Turn"), QStringLiteral("Press") })));
    QCOMPARE(state(), QStringLiteral("= Equal"));
}

void ProjectComparisonTest::keysThatDifferStandInTheTable()
{
    QVERIFY(compare(other()));
    auto* table = panel().findChild<QTableWidget*>(QStringLiteral("values"));
    QCOMPARE(table->rowCount(), 0);
    tree("here")->setCurrentIndex(cell(0, 0));
    QCOMPARE(table->rowCount(), 1);
    QVERIFY(table->item(0, 0)->text().endsWith(QStringLiteral("MaxVel")));
    QVERIFY(table->item(0, 1)->text() != table->item(0, 2)->text());
    QCOMPARE(table->item(0, 2)->text(), QStringLiteral("77"));
    auto* box = panel().findChild<QCheckBox*>(QStringLiteral("differencesOnly"));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Space);
    QVERIFY(table->rowCount() > 20);
    tree("here")->setCurrentIndex(cell(2, 0));
    QCOMPARE(table->rowCount(), 0);
}

void ProjectComparisonTest::anAxisOpensFromTheTree_data()
{
    QTest::addColumn<QByteArray>("side");
    QTest::addColumn<int>("column");
    QTest::newRow("of this project") << QByteArray("here") << 0;
    QTest::newRow("of the other project") << QByteArray("there") << 2;
}

void ProjectComparisonTest::anAxisOpensFromTheTree()
{
    QFETCH(QByteArray, side);
    QFETCH(int, column);
    QVERIFY(compare(other()));
    QTreeView* view = tree(side);
    const auto activate = [&](int row) {
        view->setFocus();
        view->setCurrentIndex(cell(row, column));
        QTest::keyClick(view, Qt::Key_Return);
    };
    activate(1);
    QVERIFY(program->workbench->editors().currentEditor());
    QCOMPARE(program->workbench->editors().currentEditor()->nodePath(), program->axisPath(QStringLiteral("Turn")));
    // An axis that only the other project has, and what is no axis.
    activate(3);
    activate(4);
    QCOMPARE(program->workbench->editors().editors().size(), 1);
}

void ProjectComparisonTest::theActionsFollowTheState()
{
    QAction* stop = program->workbench->action(QStringLiteral("project.closeComparison"));
    auto* button = panel().findChild<QPushButton*>(QStringLiteral("stop"));
    QVERIFY(!stop->isEnabled() && !button->isEnabled());
    QVERIFY(compare(other()));
    QVERIFY(stop->isEnabled() && button->isEnabled());
    stop->trigger();
    QVERIFY(!comparison().isOn());
    QVERIFY(!stop->isEnabled() && !button->isEnabled());
    QVERIFY(compare(program->file(QStringLiteral("Other"))));
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!comparison().isOn());
    program->workbench->workspace().close();
    QVERIFY(!panel().findChild<QPushButton*>(QStringLiteral("compare"))->isEnabled());
    QVERIFY(!program->workbench->action(QStringLiteral("project.compare"))->isEnabled());
}

void ProjectComparisonTest::quittingWhileItIsOn()
{
    QVERIFY(compare(other()));
    program->workbench->shutDown();
    QVERIFY(ProjectModelManager::instance()->projects().isEmpty());
}

QTEST_MAIN(ProjectComparisonTest)
#include "ProjectComparisonTest.moc"
