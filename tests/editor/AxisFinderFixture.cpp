#include "tests/editor/AxisFinderFixture.h"

namespace {

QString word(bool on)
{
    return on ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}

} // namespace

void AxisFinderFixture::start()
{
    m_host = std::make_unique<TestHost>();
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_axis = m_project->addAxis(QStringLiteral("Feeder"));
    m_axis->setViewInfo(QStringLiteral("OriginReturnSetWidgetObjectName"), QStringLiteral("HomingPage"));
    m_axis->setViewInfo(QStringLiteral("LineEditPosObjectName"), positive);
    m_axis->setViewInfo(QStringLiteral("LineEditNegObjectName"), negative);
    m_axis->setViewInfo(QStringLiteral("LineEditOrgObjectName"), origin);
    setPins(QStringLiteral("Main.posStop"), QStringLiteral("Main.negStop"), QStringLiteral("Main.origin"));
    enable(true, true, true);
    m_finder = std::make_unique<AxisFinder>();
    QVERIFY(m_finder->bindNode(m_project->axisPath(m_axis->id())));
}

void AxisFinderFixture::stop()
{
    m_finder.reset();
    m_project.reset();
    m_host.reset();
}

void AxisFinderFixture::enable(bool positiveLimit, bool negativeLimit, bool originSignal)
{
    set(QStringLiteral("PosLimitEnable"), word(positiveLimit));
    set(QStringLiteral("NegsLimitEnable"), word(negativeLimit));
    set(QStringLiteral("OrgSignalEnable"), word(originSignal));
}

void AxisFinderFixture::setPins(const QString& positivePin, const QString& negativePin, const QString& originPin)
{
    set(QStringLiteral("PosLimitPin"), positivePin);
    set(QStringLiteral("NegLimitPin"), negativePin);
    set(QStringLiteral("OrgSignalPin"), originPin);
}

void AxisFinderFixture::waysToLoseTheRecord()
{
    QTest::addColumn<bool>("projectClosed");
    QTest::newRow("the project is closed") << true;
    QTest::newRow("the axis is gone") << false;
}

void AxisFinderFixture::loseRecord(bool projectClosed)
{
    if (projectClosed)
        m_project->close();
    else
        QVERIFY(m_project->axisModel()->removeAxisTable(m_axis));
}

QStringList AxisFinderFixture::visited()
{
    QStringList places;
    while (m_finder->findNext(QString()) && !m_finder->result().atEnd && places.size() < 10)
        places.append(m_finder->result().location.section(QLatin1Char('.'), 1));
    return places;
}
