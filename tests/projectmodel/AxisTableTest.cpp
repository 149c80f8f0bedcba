#include "tests/projectmodel/ProjectFacts.h"
#include "tests/support/TestProject.h"

#include "sdk/AxisDefaults.h"

#include <QSignalSpy>
#include <QtTest>

class AxisTableTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void anAbsentKeyReadsAsTheFallback();
    void keysOutsideTheGroupsAreAccepted();
    void aChangedTextIsStoredInMemoryAndRaisesDataChanged();
    void anEqualTextChangesNothing();
    void anEmptyTextUnderANewKeyIsAChange();
    void viewInformationIsAMapOfItsOwn();
    void whatIsWrittenDuringPageBuildIsNoChangeOfTheUser();
    void whatIsWrittenDuringPageBuildIsStoredByTheSaveThatFollows();
    void aRecordIsNotModifiedAfterItsSave();
    void anotherRecordIsNotStoredByThisOnesSave();
    void loadReplacesTheContentsByWhatTheStoreHolds();
    void loadOfARecordThatWasNeverStoredChangesNothing();
    void loadKeepsNameAndNumbersOfTheModel();
    void savingARemovedRecordIsRefusedWithAMessage();
    void textsOfAnyKindComeBackAsTheyWere_data();
    void textsOfAnyKindComeBackAsTheyWere();
    void compareDataLeavesOutWhatDiffersByNature();

private:
    AxisTable* stored();

    std::unique_ptr<TestProject> m_project;
    AxisTable* m_axis = nullptr;
};

void AxisTableTest::init()
{
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"));
    QVERIFY(m_axis->save());
}

void AxisTableTest::cleanup()
{
    m_project.reset();
}

/// The record as another opening of the file finds it.
AxisTable* AxisTableTest::stored()
{
    const quint32 id = m_axis->id();
    m_project->reopen();
    return m_project->axisModel()->axisTable(id);
}

void AxisTableTest::anAbsentKeyReadsAsTheFallback()
{
    QCOMPARE(m_axis->property(QStringLiteral("NoSuchKey"), QString()), QString());
    QCOMPARE(m_axis->property(QStringLiteral("NoSuchKey"), QStringLiteral("0")), QStringLiteral("0"));
    QCOMPARE(m_axis->property(QStringLiteral("NoSuchKey"), QString()).toUInt(), 0u);
    QVERIFY(m_axis->property(QStringLiteral("NoSuchKey"), QString()).toUpper() != QLatin1String("FALSE"));
    QCOMPARE(m_axis->getViewInfo(QStringLiteral("NoSuchKey"), QStringLiteral("x")), QStringLiteral("x"));
}

void AxisTableTest::keysOutsideTheGroupsAreAccepted()
{
    QVERIFY(m_axis->setProperty(QStringLiteral("Row"), QStringLiteral("12")));
    QVERIFY(m_axis->save());
    QCOMPARE(stored()->property(QStringLiteral("Row"), QStringLiteral("0")), QStringLiteral("12"));
}

void AxisTableTest::aChangedTextIsStoredInMemoryAndRaisesDataChanged()
{
    QSignalSpy spy(m_axis, &ModelObject::dataChanged);
    QVERIFY(m_axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77")));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).value<ModelObject*>(), m_axis);
    QCOMPARE(spy.at(0).at(1).toString(), QStringLiteral("property"));
    QCOMPARE(spy.at(0).at(2).toString(), QStringLiteral("MaxVel"));
    QVERIFY(m_axis->modified);
    QVERIFY(m_project->model()->isModified());
    QCOMPARE(stored()->property(QStringLiteral("MaxVel"), QString()), AxisModeDefaults.value(QStringLiteral("MaxVel")));
}

void AxisTableTest::anEqualTextChangesNothing()
{
    QSignalSpy spy(m_axis, &ModelObject::dataChanged);
    QVERIFY(m_axis->setProperty(QStringLiteral("MaxVel"), m_axis->property(QStringLiteral("MaxVel"), QString())));
    m_axis->setViewInfo(QStringLiteral("A"), QStringLiteral("b"));
    m_axis->setViewInfo(QStringLiteral("A"), QStringLiteral("b"));
    QCOMPARE(spy.size(), 1);
    QVERIFY(m_axis->save());
    QVERIFY(m_axis->setProperty(QStringLiteral("MaxVel"), m_axis->property(QStringLiteral("MaxVel"), QString())));
    QVERIFY(!m_axis->modified);
}

void AxisTableTest::anEmptyTextUnderANewKeyIsAChange()
{
    m_axis->setProperty(QStringLiteral("Note"), QString());
    QVERIFY(m_axis->modified);
    QVERIFY(m_axis->save());
    QCOMPARE(stored()->property(QStringLiteral("Note"), QStringLiteral("absent")), QString());
}

void AxisTableTest::viewInformationIsAMapOfItsOwn()
{
    QSignalSpy spy(m_axis, &ModelObject::dataChanged);
    m_axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("lineEditPos"));
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(1).toString(), QStringLiteral("viewInfo"));
    QCOMPARE(spy.at(0).at(2).toString(), QStringLiteral("LineEditPosObjectName"));
    QCOMPARE(m_axis->property(QStringLiteral("LineEditPosObjectName"), QStringLiteral("none")), QStringLiteral("none"));
    QVERIFY(m_axis->save());
    const AxisTable* axis = stored();
    QCOMPARE(axis->getViewInfo(QStringLiteral("LineEditPosObjectName"), QString()), QStringLiteral("lineEditPos"));
    QCOMPARE(axis->property(QStringLiteral("LineEditPosObjectName"), QStringLiteral("none")), QStringLiteral("none"));
}

void AxisTableTest::whatIsWrittenDuringPageBuildIsNoChangeOfTheUser()
{
    QSignalSpy spy(m_axis, &ModelObject::dataChanged);
    m_axis->pageBuild = true;
    m_axis->setProperty(QStringLiteral("OutputDevice"), QStringLiteral("3"));
    m_axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), QStringLiteral("lineEditPos"));
    m_axis->pageBuild = false;
    QVERIFY(!m_axis->modified);
    QVERIFY(!m_project->model()->isModified());
    QCOMPARE(spy.size(), 2);
}

void AxisTableTest::whatIsWrittenDuringPageBuildIsStoredByTheSaveThatFollows()
{
    m_axis->pageBuild = true;
    m_axis->setProperty(QStringLiteral("OutputDevice"), QStringLiteral("3"));
    m_axis->pageBuild = false;
    QVERIFY(m_axis->save());
    QCOMPARE(stored()->property(QStringLiteral("OutputDevice"), QString()), QStringLiteral("3"));
}

void AxisTableTest::aRecordIsNotModifiedAfterItsSave()
{
    m_axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    QSignalSpy spy(m_project->model(), &ProjectModel::modifiedChanged);
    QVERIFY(m_axis->save());
    QVERIFY(!m_axis->modified);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toBool(), false);
}

void AxisTableTest::anotherRecordIsNotStoredByThisOnesSave()
{
    AxisTable* other = m_project->addAxis(QStringLiteral("Other"));
    QVERIFY(other->save());
    other->setProperty(QStringLiteral("MaxVel"), QStringLiteral("5000"));
    m_axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    QVERIFY(m_axis->save());
    QVERIFY(other->modified);
    QVERIFY(m_project->model()->isModified());
    const quint32 otherId = other->id();
    QCOMPARE(stored()->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
    QCOMPARE(m_project->axisModel()->axisTable(otherId)->property(QStringLiteral("MaxVel"), QString()),
        QStringLiteral("10"));
}

void AxisTableTest::loadReplacesTheContentsByWhatTheStoreHolds()
{
    m_axis->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    m_axis->setProperty(QStringLiteral("Extra"), QStringLiteral("x"));
    m_axis->setViewInfo(QStringLiteral("Extra"), QStringLiteral("y"));
    QSignalSpy spy(m_axis, &ModelObject::dataChanged);
    QVERIFY(m_axis->load());
    QCOMPARE(m_axis->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("10"));
    QCOMPARE(m_axis->property(QStringLiteral("Extra"), QStringLiteral("absent")), QStringLiteral("absent"));
    QCOMPARE(m_axis->getViewInfo(QStringLiteral("Extra"), QStringLiteral("absent")), QStringLiteral("absent"));
    QVERIFY(!m_axis->modified);
    QVERIFY(!m_project->model()->isModified());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(1).toString(), QStringLiteral("load"));
}

void AxisTableTest::loadOfARecordThatWasNeverStoredChangesNothing()
{
    AxisTable* fresh = m_project->addAxis(QStringLiteral("Fresh"));
    fresh->setProperty(QStringLiteral("MaxVel"), QStringLiteral("77"));
    QSignalSpy spy(fresh, &ModelObject::dataChanged);
    QVERIFY(!fresh->load());
    QCOMPARE(fresh->property(QStringLiteral("MaxVel"), QString()), QStringLiteral("77"));
    QVERIFY(fresh->modified);
    QCOMPARE(spy.size(), 0);
}

void AxisTableTest::loadKeepsNameAndNumbersOfTheModel()
{
    AxisTable* second = m_project->addAxis(QStringLiteral("Second"));
    QVERIFY(second->save());
    QCOMPARE(second->property(QStringLiteral("AxisNo"), QString()), QStringLiteral("1"));
    AxisModel* model = m_project->axisModel();
    QVERIFY(model->renameAxisTable(second->id(), QStringLiteral("Renamed")));
    QVERIFY(model->removeAxisTable(m_axis));
    QVERIFY(model->removeAxisTable(second));
    QVERIFY(model->putObjectBack(second));
    QVERIFY(second->load());
    QCOMPARE(second->name(), QStringLiteral("Renamed"));
    QCOMPARE(second->property(QStringLiteral("AxisNo"), QString()), QStringLiteral("0"));
    QVERIFY(m_project->model()->isModified());
}

void AxisTableTest::savingARemovedRecordIsRefusedWithAMessage()
{
    QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
    QSignalSpy spy(m_project->model(), &AbstractProjectModel::storeFailed);
    QVERIFY(!m_axis->save());
    QCOMPARE(spy.size(), 1);
    QVERIFY(spy.at(0).at(0).toString().contains(QLatin1String("Feeder")));
}

void AxisTableTest::textsOfAnyKindComeBackAsTheyWere_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QString& text, const QString& expected) {
        QTest::newRow(name) << text << expected;
    };
    const auto same = [&row](const char* name, const QString& text) { row(name, text, text); };
    same("a Chinese text", QStringLiteral("\u8f74\u4e00"));
    same("a character beyond the basic plane", QStringLiteral("\U0001F600"));
    same("quotation marks and semicolons", QStringLiteral("'; DROP TABLE axis; --\""));
    same("a text with a zero character in it", QString(QChar(0)) + QStringLiteral("after"));
    same("a zero character behind a character beyond the basic plane",
        QStringLiteral("\U0001F600") + QChar(0) + QStringLiteral("after"));
    same("a text of 100000 characters", QString(100000, QLatin1Char('x')));
    same("line ends and tabs", QStringLiteral("a\r\n\tb\n"));
    row("half a surrogate pair becomes a question mark", QString(QChar(0xd800)) + QLatin1Char('x'),
        QStringLiteral("?x"));
    row("a leading byte order mark is dropped", QString(QChar(QChar::ByteOrderMark)) + QLatin1Char('x'),
        QStringLiteral("x"));
    row("a null text is an empty one", QString(), QStringLiteral(""));
}

void AxisTableTest::textsOfAnyKindComeBackAsTheyWere()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    m_axis->setProperty(QStringLiteral("Note"), text);
    m_axis->setProperty(QStringLiteral("K") + expected.left(20), QStringLiteral("value"));
    m_axis->setViewInfo(QStringLiteral("Note"), text);
    QVERIFY(m_axis->save());
    QVERIFY(m_project->axisModel()->renameAxisTable(m_axis->id(), QStringLiteral("Name") + text.left(50)));
    m_project->save();
    const AxisTable* axis = stored();
    QCOMPARE(axis->property(QStringLiteral("Note"), QStringLiteral("absent")), expected);
    QCOMPARE(axis->property(QStringLiteral("K") + expected.left(20), QString()), QStringLiteral("value"));
    QCOMPARE(axis->getViewInfo(QStringLiteral("Note"), QStringLiteral("absent")), expected);
}

void AxisTableTest::compareDataLeavesOutWhatDiffersByNature()
{
    m_axis->setProperty(QStringLiteral("Row"), QStringLiteral("4"));
    m_axis->setViewInfo(QStringLiteral("View"), QStringLiteral("v"));
    const QMap<QString, QString> data = m_axis->getCompareData();
    for (const char* key : { "Row", "AxisID", "AxisNo", "Version", "View" })
        QVERIFY2(!data.contains(QLatin1String(key)), key);
    QCOMPARE(data.value(QStringLiteral("Name")), QStringLiteral("Feeder"));
    // 63 keys of the groups without AxisID, AxisNo and Version, and the name.
    QCOMPARE(data.size(), 61);
    QCOMPARE(data.value(QStringLiteral("MaxVel")), QStringLiteral("10"));
}

QTEST_GUILESS_MAIN(AxisTableTest)
#include "AxisTableTest.moc"
