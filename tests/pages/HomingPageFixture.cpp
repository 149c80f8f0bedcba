#include "tests/pages/HomingPageFixture.h"

void HomingPageFixture::eachSignal()
{
    QTest::addColumn<int>("row");
    QTest::newRow("positive limit") << 0;
    QTest::newRow("negative limit") << 1;
    QTest::newRow("origin") << 2;
}

void HomingPageFixture::start()
{
    Q_INIT_RESOURCE(axis_resources);
    m_host = std::make_unique<TestHost>();
    m_host->settings.setValue(Solution::ConfigKey::language(), QStringLiteral("en_US"));
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12"));
    m_project->addSource(QStringLiteral("Main"),
        QStringLiteral("PROGRAM Main\nVAR\n  flag : BOOL;\n  counter : INT;\nEND_VAR\nEND_PROGRAM\n"));
    m_host->cookies.setValue(Solution::ConfigKey::projectName(), m_project->name());
    m_axis = m_project->addAxis(QStringLiteral("Feeder"), QStringLiteral("Axis_Pulse"));
    m_boxes = std::make_unique<MessageBoxWatcher>();
}

void HomingPageFixture::stop()
{
    m_page.reset();
    m_boxes.reset();
    m_project.reset();
    m_host.reset();
}

void HomingPageFixture::makePage()
{
    m_page = std::make_unique<OriginReturnSetWidget>(m_project->name(), m_axis->id(), nullptr);
}

void HomingPageFixture::show()
{
    m_page->show();
    m_page->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
}

void HomingPageFixture::enter(const char* name, const QString& text)
{
    auto* field = control<QLineEdit>(name);
    field->setFocus();
    QTRY_VERIFY(field->hasFocus());
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Tab);
}
