#include "host/projectmodel/AxisTrial.h"

#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "host/projectmodel/ProjectModel.h"
#include "tests/support/TestProject.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

const QString speed = QStringLiteral("MaxVel");
const QString control = QStringLiteral("LineEditPosObjectName");

} // namespace

class AxisTrialTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_project.reset(); }
    void propertiesComeBack();
    void nobodyIsTold();
    void saveStoresNothing();
    void viewInformationStaysAndGoesWithTheNextSave();
    void theFlagsOfTheRecordStay_data();
    void theFlagsOfTheRecordStay();
    void aRecordThatGoesFirstIsSurvived();

private:
    std::unique_ptr<TestProject> m_project;
    AxisTable* m_axis = nullptr;
};

void AxisTrialTest::init()
{
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"));
    QVERIFY(m_axis->save());
}

void AxisTrialTest::propertiesComeBack()
{
    const QMap<QString, QString> before = m_axis->allProperties();
    {
        const AxisTrial trial(*m_axis);
        m_axis->setProperty(speed, QStringLiteral("55"));
        m_axis->setProperty(QStringLiteral("New"), QStringLiteral("x"));
        QCOMPARE(m_axis->property(speed, QString()), QStringLiteral("55"));
    }
    QCOMPARE(m_axis->allProperties(), before);
    m_axis->setProperty(speed, QStringLiteral("56"));
    QVERIFY(m_axis->modified);
}

void AxisTrialTest::nobodyIsTold()
{
    const QSignalSpy changes(m_axis, &ModelObject::dataChanged);
    const QSignalSpy modifications(m_project->model(), &ProjectModel::modifiedChanged);
    {
        const AxisTrial trial(*m_axis);
        m_axis->setProperty(speed, QStringLiteral("55"));
        m_axis->setViewInfo(control, QStringLiteral("edit"));
        m_axis->save();
    }
    QVERIFY(changes.isEmpty());
    QVERIFY(modifications.isEmpty());
    QVERIFY(!m_project->model()->isModified());
}

void AxisTrialTest::saveStoresNothing()
{
    const quint32 id = m_axis->id();
    {
        const AxisTrial trial(*m_axis);
        m_axis->setProperty(speed, QStringLiteral("55"));
        QVERIFY(m_axis->save());
    }
    m_project->reopen();
    QVERIFY(m_project->axisModel()->axisTable(id)->property(speed, QString()) != QStringLiteral("55"));
}

void AxisTrialTest::viewInformationStaysAndGoesWithTheNextSave()
{
    const quint32 id = m_axis->id();
    {
        const AxisTrial trial(*m_axis);
        m_axis->setViewInfo(control, QStringLiteral("edit"));
    }
    QCOMPARE(m_axis->getViewInfo(control, QString()), QStringLiteral("edit"));
    QVERIFY(m_axis->save());
    m_project->reopen();
    QCOMPARE(m_project->axisModel()->axisTable(id)->getViewInfo(control, QString()), QStringLiteral("edit"));
}

void AxisTrialTest::theFlagsOfTheRecordStay_data()
{
    QTest::addColumn<bool>("modified");
    QTest::addColumn<bool>("pageBuild");
    QTest::newRow("of an unchanged one") << false << false;
    QTest::newRow("of a changed one") << true << false;
    QTest::newRow("of one that is being built") << false << true;
}

void AxisTrialTest::theFlagsOfTheRecordStay()
{
    QFETCH(bool, modified);
    QFETCH(bool, pageBuild);
    m_axis->modified = modified;
    m_axis->pageBuild = pageBuild;
    {
        const AxisTrial trial(*m_axis);
        m_axis->pageBuild = !pageBuild;
        m_axis->setProperty(speed, QStringLiteral("55"));
        m_axis->save();
    }
    QCOMPARE(m_axis->modified, modified);
    QCOMPARE(m_axis->pageBuild, pageBuild);
}

void AxisTrialTest::aRecordThatGoesFirstIsSurvived()
{
    const auto trial = std::make_unique<AxisTrial>(*m_axis);
    m_project.reset();
}

QTEST_GUILESS_MAIN(AxisTrialTest)
#include "AxisTrialTest.moc"
