#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "sdk/AxisDefaults.h"

#include <QSignalSpy>
#include <QtTest>

#include <functional>

using TakeName = std::function<AxisTable*(AxisModel*)>;
Q_DECLARE_METATYPE(TakeName)

class AxisModelTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aNewAxisHasTheDefaultsOfAllGroups();
    void aNameThatIsEmptyOrTakenIsRefused_data();
    void aNameThatIsEmptyOrTakenIsRefused();
    void idsCountFromOneAndFillGapsAfterReopening();
    void theIdOfARemovedAxisIsNotGivenAgainWhileTheProjectIsOpen();
    void axisNumbersAreTheLowestFreeOnes();
    void aRecordThatComesBackGetsTheLowestFreeNumberAndNobodyElsesChanges();
    void axesStandInTheOrderOfTheirRowsAfterOpening();
    void aRecordThatComesBackStandsAtItsOldPlace();
    void removalKeepsTheRecordAliveAndOutOfTheModel();
    void removingWhatIsNotInTheModelFails();
    void aRecordComesBackOnlyOnceAndOnlyUnderAFreeName();
    void renaming_data();
    void renaming();
    void aRenamedAxisIsStoredByItsOwnSave();
    void addingRemovingAndRenamingStayInMemoryUntilTheProjectIsSaved();
    void aRemovedAxisTakesAllItHasStoredWithIt();
    void aRemovedAndRestoredAxisIsStoredAgainAfterASaveBetween();
    void aStoredNameIsGivenUpWithTheSaveOfItsNewOwner_data();
    void aStoredNameIsGivenUpWithTheSaveOfItsNewOwner();
    void changesOfTheListAreAnnounced();
    void repairOfNumbers_data();
    void repairOfNumbers();
    void repairDoesNotMarkAnythingAsChanged();
    void theCycleTimeIsStoredWithTheProject();
    void anEmptyCycleTimeReadsEmpty();
    void whatTheControllerOffersIsReadThroughTheModel();
    void anUnknownListIsEmptyAndTheArgumentStays();
    void theFormerControllersListsStayUntilTheNextChange();
    void theFormerControllersListsAreStoredWithTheProject();

private:
    AxisModel* axes() const { return m_project->axisModel(); }
    AxisTable* add(const char* name) { return m_project->addAxis(QLatin1String(name)); }

    std::unique_ptr<TestProject> m_project;
};

void AxisModelTest::init()
{
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
}

void AxisModelTest::cleanup()
{
    m_project.reset();
}

void AxisModelTest::aNewAxisHasTheDefaultsOfAllGroups()
{
    const AxisTable* axis = axes()->addAxisTable(QStringLiteral("Feeder"));
    QVERIFY(axis);
    QVERIFY(axis->modified);
    int keys = 0;
    for (const AxisDefaultGroup* group :
        { &AxisBaseDefaults, &AxisUnitDefaults, &AxisModeDefaults, &AxisHomeDefaults }) {
        for (auto it = group->begin(); it != group->end(); ++it, ++keys)
            QCOMPARE(axis->property(it.key(), QStringLiteral("absent")), it.value());
    }
    QCOMPARE(keys, 63);
    QCOMPARE(axis->property(QStringLiteral("Row"), QStringLiteral("none")), QStringLiteral("none"));
    QCOMPARE(axis->objectId(), axis->id());
}

void AxisModelTest::aNameThatIsEmptyOrTakenIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("an empty name") << QString();
    QTest::newRow("the name of another axis") << QStringLiteral("Feeder");
    QTest::newRow("the name of another axis in other case") << QStringLiteral("fEEDER");
}

void AxisModelTest::aNameThatIsEmptyOrTakenIsRefused()
{
    QFETCH(QString, name);
    add("Feeder");
    QVERIFY(!axes()->addAxisTable(name));
    QCOMPARE(namesOf(axes()), QStringList{ QStringLiteral("Feeder") });
}

void AxisModelTest::idsCountFromOneAndFillGapsAfterReopening()
{
    QCOMPARE(add("A")->id(), 1u);
    AxisTable* second = add("B");
    QCOMPARE(second->id(), 2u);
    QCOMPARE(add("C")->id(), 3u);
    QVERIFY(axes()->removeAxisTable(second));
    m_project->save();
    m_project->reopen();
    QCOMPARE(add("D")->id(), 2u);
    QCOMPARE(add("E")->id(), 4u);
}

void AxisModelTest::theIdOfARemovedAxisIsNotGivenAgainWhileTheProjectIsOpen()
{
    AxisTable* first = add("A");
    QVERIFY(axes()->removeAxisTable(first));
    m_project->save();
    QCOMPARE(add("B")->id(), 2u);
    QVERIFY(axes()->putObjectBack(first));
    QCOMPARE(axes()->axisTable(1), first);
    QCOMPARE(axes()->axisTable(2)->name(), QStringLiteral("B"));
}

void AxisModelTest::axisNumbersAreTheLowestFreeOnes()
{
    add("A");
    AxisTable* second = add("B");
    add("C");
    QCOMPARE(valuesOf(axes(), QStringLiteral("AxisNo")).join(QLatin1Char(' ')), QStringLiteral("0 1 2"));
    QVERIFY(axes()->removeAxisTable(second));
    QCOMPARE(add("D")->property(QStringLiteral("AxisNo"), QString()), QStringLiteral("1"));
    QCOMPARE(valuesOf(axes(), QStringLiteral("AxisNo")).join(QLatin1Char(' ')), QStringLiteral("0 2 1"));
    QCOMPARE(valuesOf(axes(), QStringLiteral("AxisID")).join(QLatin1Char(' ')), QStringLiteral("0 2 1"));
}

void AxisModelTest::aRecordThatComesBackGetsTheLowestFreeNumberAndNobodyElsesChanges()
{
    AxisTable* first = add("A");
    AxisTable* second = add("B");
    add("C");
    QVERIFY(axes()->removeAxisTable(first));
    add("D");
    QVERIFY(axes()->removeAxisTable(second));
    QVERIFY(axes()->putObjectBack(first));
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("A C D"));
    QCOMPARE(valuesOf(axes(), QStringLiteral("AxisNo")).join(QLatin1Char(' ')), QStringLiteral("1 2 0"));
    QVERIFY(m_project->model()->isModified());
}

void AxisModelTest::axesStandInTheOrderOfTheirRowsAfterOpening()
{
    add("A")->setProperty(QStringLiteral("Row"), QStringLiteral("10"));
    add("B")->setProperty(QStringLiteral("Row"), QStringLiteral("2"));
    add("C");
    add("D")->setProperty(QStringLiteral("Row"), QStringLiteral("2"));
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("A B C D"));
    m_project->save();
    m_project->reopen();
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("C B D A"));
    add("E");
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("C B D A E"));
}

void AxisModelTest::aRecordThatComesBackStandsAtItsOldPlace()
{
    add("A");
    AxisTable* second = add("B");
    add("C");
    QVERIFY(axes()->takeObject(second));
    add("D");
    QVERIFY(axes()->putObjectBack(second));
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("A B C D"));
}

void AxisModelTest::removalKeepsTheRecordAliveAndOutOfTheModel()
{
    const QPointer<AxisTable> axis = add("A");
    axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    const quint32 id = axis->id();
    QVERIFY(axes()->removeAxisTable(axis));
    QVERIFY(!axes()->axisTable(id));
    QVERIFY(recordsOf(axes()).empty());
    QVERIFY(axis);
    QCOMPARE(axis->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
    m_project->close();
    QVERIFY(!axis);
}

void AxisModelTest::removingWhatIsNotInTheModelFails()
{
    AxisTable* axis = add("A");
    QVERIFY(!axes()->removeAxisTable(nullptr));
    QVERIFY(axes()->removeAxisTable(axis));
    QVERIFY(!axes()->removeAxisTable(axis));
    QVERIFY(!axes()->takeObject(nullptr));
    const TestProject other(QStringLiteral("NV3T_70Q12"), QStringLiteral("Other"));
    QVERIFY(!other.axisModel()->takeObject(axis));
}

void AxisModelTest::aRecordComesBackOnlyOnceAndOnlyUnderAFreeName()
{
    AxisTable* first = add("A");
    QVERIFY(!axes()->putObjectBack(first));
    QVERIFY(axes()->removeAxisTable(first));
    AxisTable* second = add("a");
    QVERIFY(!axes()->putObjectBack(first));
    QVERIFY(axes()->renameAxisTable(second->id(), QStringLiteral("B")));
    QVERIFY(axes()->putObjectBack(first));
    QVERIFY(!axes()->putObjectBack(first));
    QVERIFY(!axes()->putObjectBack(nullptr));
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("A B"));
}

void AxisModelTest::renaming_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("works");
    QTest::newRow("to a new name") << 1 << QStringLiteral("New") << true;
    QTest::newRow("to the same name in other case") << 1 << QStringLiteral("FEEDER") << true;
    QTest::newRow("to the same name") << 1 << QStringLiteral("Feeder") << true;
    QTest::newRow("to an empty name") << 1 << QString() << false;
    QTest::newRow("to another axis's name in other case") << 1 << QStringLiteral("OTHER") << false;
    QTest::newRow("of an axis that is not there") << 7 << QStringLiteral("New") << false;
}

void AxisModelTest::renaming()
{
    QFETCH(int, id);
    QFETCH(QString, name);
    QFETCH(bool, works);
    AxisTable* axis = add("Feeder");
    add("Other");
    m_project->save();
    QCOMPARE(axes()->renameAxisTable(static_cast<quint32>(id), name), works);
    QCOMPARE(axis->name(), works ? name : QStringLiteral("Feeder"));
    QVERIFY(!axis->modified);
    QCOMPARE(m_project->model()->isModified(), works && name != QLatin1String("Feeder"));
}

void AxisModelTest::aRenamedAxisIsStoredByItsOwnSave()
{
    AxisTable* axis = add("Feeder");
    m_project->save();
    QVERIFY(axes()->renameAxisTable(axis->id(), QStringLiteral("New")));
    QVERIFY(axis->save());
    QVERIFY(!m_project->model()->isModified());
    m_project->reopen();
    QCOMPARE(namesOf(axes()), QStringList{ QStringLiteral("New") });
}

void AxisModelTest::addingRemovingAndRenamingStayInMemoryUntilTheProjectIsSaved()
{
    AxisTable* first = add("A");
    AxisTable* second = add("B");
    m_project->save();
    QVERIFY(axes()->removeAxisTable(first));
    QVERIFY(axes()->renameAxisTable(second->id(), QStringLiteral("B2")));
    add("C");
    QVERIFY(m_project->model()->isModified());
    m_project->reopen();
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("A B"));

    QVERIFY(axes()->removeAxisTable(axes()->axisTable(1)));
    QVERIFY(axes()->renameAxisTable(2, QStringLiteral("B2")));
    add("C");
    m_project->save();
    QVERIFY(!m_project->model()->isModified());
    m_project->reopen();
    QCOMPARE(namesOf(axes()).join(QLatin1Char(' ')), QStringLiteral("B2 C"));
}

void AxisModelTest::aRemovedAxisTakesAllItHasStoredWithIt()
{
    AxisTable* first = add("A");
    first->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("lineEditPos"));
    QVERIFY(first->save());
    add("B");
    m_project->save();
    QVERIFY(axes()->removeAxisTable(first));
    m_project->save();
    m_project->reopen();
    QVERIFY(m_project->model());
    QCOMPARE(namesOf(axes()), QStringList{ QStringLiteral("B") });
    const AxisTable* next = add("C");
    QCOMPARE(next->id(), 1u);
    QCOMPARE(next->getViewInfo(QStringLiteral("LineEditPosObjectName"), QString()), QString());
}

void AxisModelTest::aRemovedAndRestoredAxisIsStoredAgainAfterASaveBetween()
{
    AxisTable* axis = add("A");
    axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    m_project->save();
    QVERIFY(axes()->removeAxisTable(axis));
    m_project->save();
    QVERIFY(axes()->putObjectBack(axis));
    QVERIFY(m_project->model()->isModified());
    m_project->save();
    m_project->reopen();
    QCOMPARE(axes()->axisTable(1)->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
    QCOMPARE(axes()->axisTable(1)->property(QStringLiteral("HomeMode"), QString()), QStringLiteral("Homing_1"));
}

void AxisModelTest::aStoredNameIsGivenUpWithTheSaveOfItsNewOwner_data()
{
    QTest::addColumn<TakeName>("takeName");
    QTest::addColumn<QStringList>("stored");

    QTest::newRow("a new axis takes the name of a removed one") << TakeName([](AxisModel* axes) {
        axes->removeAxisTable(axes->axisTable(1));
        return axes->addAxisTable(QStringLiteral("FEEDER"));
    }) << QStringList{ QStringLiteral("FEEDER"), QStringLiteral("Knife") };
    QTest::newRow("a new axis takes the name of a renamed one") << TakeName([](AxisModel* axes) {
        axes->renameAxisTable(1, QStringLiteral("Winder"));
        return axes->addAxisTable(QStringLiteral("Feeder"));
    }) << QStringList{ QStringLiteral("Feeder"), QStringLiteral("Knife"), QStringLiteral("Winder") };
    QTest::newRow("two axes change names by way of a third") << TakeName([](AxisModel* axes) {
        axes->renameAxisTable(1, QStringLiteral("Between"));
        axes->renameAxisTable(2, QStringLiteral("Feeder"));
        axes->renameAxisTable(1, QStringLiteral("Knife"));
        return axes->axisTable(2);
    }) << QStringList{ QStringLiteral("Feeder"), QStringLiteral("Knife") };
}

void AxisModelTest::aStoredNameIsGivenUpWithTheSaveOfItsNewOwner()
{
    QFETCH(TakeName, takeName);
    QFETCH(QStringList, stored);
    add("Feeder");
    add("Knife");
    m_project->save();
    axes()->axisTable(1)->setProperty(QStringLiteral("HomeSpeed"), QStringLiteral("77"));

    QVERIFY(takeName(axes())->save());

    // Closing without a save is what a crash leaves.
    m_project->reopen();
    std::vector<AxisTable*> tables;
    axes()->allAxisTables(tables);
    QStringList names;
    for (const AxisTable* each : tables) {
        names.append(each->name());
        QVERIFY(each->property(QStringLiteral("HomeSpeed"), QString()) != QStringLiteral("77"));
    }
    names.sort();
    QCOMPARE(names, stored);
}

void AxisModelTest::changesOfTheListAreAnnounced()
{
    QSignalSpy added(axes(), &AxisModel::axisAdded);
    QSignalSpy removed(axes(), &AxisModel::axisRemoved);
    QSignalSpy renamed(axes(), &AxisModel::axisRenamed);
    AxisTable* axis = add("A");
    QCOMPARE(added.size(), 1);
    axes()->renameAxisTable(axis->id(), QStringLiteral("B"));
    axes()->renameAxisTable(axis->id(), QStringLiteral("B"));
    QCOMPARE(renamed.size(), 1);
    axes()->removeAxisTable(axis);
    QCOMPARE(removed.size(), 1);
    QCOMPARE(removed.at(0).at(0).toUInt(), axis->id());
    axes()->putObjectBack(axis);
    QCOMPARE(added.size(), 2);
    QCOMPARE(added.at(1).at(0).toUInt(), axis->id());
}

void AxisModelTest::repairOfNumbers_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("sound numbers stay, whatever their order") << "5 0 39"
                                                              << "5 0 39";
    QTest::newRow("a doubled number is given anew to the later record") << "2 2 0"
                                                                        << "2 1 0";
    QTest::newRow("an empty text is missing") << " 1 0"
                                              << "2 1 0";
    QTest::newRow("a text that is no number is missing") << "x 1 0"
                                                         << "2 1 0";
    QTest::newRow("a negative number is out of range") << "-1 1 0"
                                                       << "2 1 0";
    QTest::newRow("a number that the controller does not have is out of range") << "40 1 2"
                                                                                << "0 1 2";
    QTest::newRow("all are missing") << "x y z"
                                     << "0 1 2";
}

void AxisModelTest::repairOfNumbers()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const QStringList numbers = before.split(QLatin1Char(' '));
    for (int i = 0; i < numbers.size(); ++i) {
        AxisTable* axis = m_project->addAxis(QStringLiteral("A%1").arg(i));
        axis->setProperty(QStringLiteral("AxisNo"), numbers.at(i));
        axis->setProperty(QStringLiteral("AxisID"), numbers.at(i));
    }
    axes()->updateDeviceAxisInfo();
    QCOMPARE(valuesOf(axes(), QStringLiteral("AxisNo")).join(QLatin1Char(' ')), after);
    QCOMPARE(valuesOf(axes(), QStringLiteral("AxisID")).join(QLatin1Char(' ')), after);
}

void AxisModelTest::repairDoesNotMarkAnythingAsChanged()
{
    AxisTable* first = add("A");
    AxisTable* second = add("B");
    second->setProperty(QStringLiteral("AxisNo"), QStringLiteral("0"));
    m_project->save();
    m_project->reopen();
    QVERIFY(!m_project->model()->isModified());
    axes()->updateDeviceAxisInfo();
    first = axes()->axisTable(1);
    second = axes()->axisTable(2);
    QCOMPARE(second->property(QStringLiteral("AxisNo"), QString()), QStringLiteral("1"));
    QVERIFY(!first->modified && !second->modified);
    QVERIFY(!m_project->model()->isModified());
    QVERIFY(second->save());
    m_project->reopen();
    QCOMPARE(axes()->axisTable(2)->property(QStringLiteral("AxisNo"), QString()), QStringLiteral("1"));
}

void AxisModelTest::theCycleTimeIsStoredWithTheProject()
{
    QSignalSpy spy(axes(), &AxisModel::cycleTimeChanged);
    QString text = QStringLiteral("750");
    axes()->setMotionTaskCfgCycleTime(text);
    axes()->setMotionTaskCfgCycleTime(text);
    QCOMPARE(spy.size(), 1);
    QVERIFY(m_project->model()->isModified());
    m_project->save();
    m_project->reopen();
    QCOMPARE(axes()->getMotionTaskCfgCycleTime(), QStringLiteral("750"));
    text = QStringLiteral("500");
    axes()->setMotionTaskCfgCycleTime(text);
    m_project->reopen();
    QCOMPARE(axes()->getMotionTaskCfgCycleTime(), QStringLiteral("750"));
}

void AxisModelTest::anEmptyCycleTimeReadsEmpty()
{
    QVERIFY(axes()->getMotionTaskCfgCycleTime().isEmpty());
    QString text;
    axes()->setMotionTaskCfgCycleTime(text);
    QVERIFY(!m_project->model()->isModified());
}

void AxisModelTest::whatTheControllerOffersIsReadThroughTheModel()
{
    const ControllerDescription controller = shippedController(QStringLiteral("NV3T_70Q12"));
    QString group = QStringLiteral("AxisPulseOutputDev");
    QCOMPARE(axes()->getAxisBaseSettingList(group).size(), 12);
    QCOMPARE(axes()->getAxisBaseSettingList(group), controller.list(group));
    QCOMPARE(axes()->getDeviceName(), QStringLiteral("NV3T_70Q12"));
    QCOMPARE(axes()->getMaxAxisNumber(), controller.limits());
    QCOMPARE(axes()->getAxisTypeNameMap(), controller.axisTypeNames());
    QCOMPARE(axes()->getAxisTypeNameMap().size(), 4);
    QCOMPARE(axes()->getInputPointMap(), controller.inputPoints());
    QCOMPARE(axes()->getAxisStateMap(), controller.stateTexts());
    QCOMPARE(axes()->getAxisStateMap().size(), 8);
}

void AxisModelTest::anUnknownListIsEmptyAndTheArgumentStays()
{
    QString group = QStringLiteral("NoSuchList");
    QVERIFY(axes()->getAxisBaseSettingList(group).isEmpty());
    QVERIFY(axes()->getPreAxisBaseSettingList(group).isEmpty());
    QCOMPARE(group, QStringLiteral("NoSuchList"));
}

void AxisModelTest::theFormerControllersListsStayUntilTheNextChange()
{
    QString group = QStringLiteral("PulseEncodeMode");
    QVERIFY(axes()->getPreAxisBaseSettingList(group).isEmpty());
    m_project->changeController(QStringLiteral("NV2_H48Q8E"));
    QCOMPARE(axes()->getDeviceName(), QStringLiteral("NV2_H48Q8E"));
    QCOMPARE(axes()->getPreAxisBaseSettingList(group), shippedController(QStringLiteral("NV3T_70Q12")).list(group));
    m_project->changeController(QStringLiteral("KM1_M16"));
    QCOMPARE(axes()->getPreAxisBaseSettingList(group), shippedController(QStringLiteral("NV2_H48Q8E")).list(group));
    QCOMPARE(axes()->getAxisBaseSettingList(group), shippedController(QStringLiteral("KM1_M16")).list(group));
}

void AxisModelTest::theFormerControllersListsAreStoredWithTheProject()
{
    m_project->changeController(QStringLiteral("NV2_H48Q8E"));
    m_project->reopen();
    QCOMPARE(axes()->getDeviceName(), QStringLiteral("NV3T_70Q12"));
    m_project->changeController(QStringLiteral("NV2_H48Q8E"));
    m_project->save();
    m_project->reopen();
    QString group = QStringLiteral("PulseEncodeMode");
    QCOMPARE(axes()->getDeviceName(), QStringLiteral("NV2_H48Q8E"));
    QCOMPARE(axes()->getPreAxisBaseSettingList(group), shippedController(QStringLiteral("NV3T_70Q12")).list(group));
}

QTEST_GUILESS_MAIN(AxisModelTest)
#include "AxisModelTest.moc"
