#include "tests/editor/BasicPageFixture.h"

#include <QJsonArray>

void BasicPageFixture::start()
{
    m_axes = 0;
    m_project = std::make_unique<TestProject>(QStringLiteral("NV3T_70Q12E"));
    m_controller = TestProject::description(QStringLiteral("NV3T_70Q12E"));
    putList("AxisVirtualInputDev", { "None", "Spare" });
    putList("AxisVirtualOutputDev", { "None", "Spare" });
    putList("AxisPulseInputDev", { "None", "Feedback" });
    putList("AxisPulseOutputDev", { "Pulse output 0", "Pulse output 1", "Pulse output 2" });
    putList("AxisEncoderInputDev", { "Encoder input 0", "Encoder input 1", "Encoder input 2" });
    putList("AxisEncoderOutputDev", { "None", "Spare" });
    putList("AxisEtherCATInputDev", { "Drive 0", "Encoder input 2", "Drive 2" });
    putList("AxisEtherCATOutputDev", { "Drive 0", "Drive 1", "Drive 2" });
    m_project->changeController(m_controller);
}

void BasicPageFixture::stop()
{
    m_view.reset();
    m_page = nullptr;
    m_axis = nullptr;
    m_project.reset();
}

void BasicPageFixture::putList(const char* name, std::initializer_list<const char*> entries)
{
    QJsonArray array;
    for (const char* entry : entries)
        array.append(QString::fromLatin1(entry));
    QJsonObject lists = m_controller.value(QStringLiteral("lists")).toObject();
    lists.insert(QString::fromLatin1(name), array);
    m_controller.insert(QStringLiteral("lists"), lists);
}

void BasicPageFixture::setList(const char* name, std::initializer_list<const char*> entries)
{
    putList(name, entries);
    m_project->changeController(m_controller);
}

void BasicPageFixture::setLimit(const char* type, int limit)
{
    QJsonObject limits = m_controller.value(QStringLiteral("limits")).toObject();
    limits.insert(QString::fromLatin1(type), limit);
    m_controller.insert(QStringLiteral("limits"), limits);
    m_project->changeController(m_controller);
}

AxisTable* BasicPageFixture::addAxis(const QString& type, const QString& input, const QString& output)
{
    AxisTable* added = m_project->addAxis(QStringLiteral("Axis%1").arg(++m_axes), type);
    added->setProperty(inputKey, input);
    added->setProperty(outputKey, output);
    return added;
}

void BasicPageFixture::makePage(AxisTable* axis)
{
    m_axis = axis;
    m_view = std::make_unique<PropertyEditorView>();
    for (const char* title :
        { "document setting", "model and param setting", "origin return setting", "online debug setting" })
        m_view->addTab(new QWidget, QString::fromLatin1(title));
    m_page = new BasicSetWidget(m_project->name(), axis->id(), m_view.get());
    m_view->addTab(m_page, QStringLiteral("basic setting"));
    m_view->setCurrentWidget(m_page);
}

bool BasicPageFixture::showPage()
{
    m_view->resize(937, 596);
    m_view->show();
    return QTest::qWaitForWindowActive(m_view.get());
}

QStringList BasicPageFixture::entriesOf(const QComboBox* box)
{
    QStringList entries;
    for (int index = 0; index < box->count(); ++index)
        entries.append(box->itemText(index));
    return entries;
}

QList<bool> BasicPageFixture::tabs() const
{
    return { m_view->isTabVisible(QStringLiteral("document setting")),
        m_view->isTabVisible(QStringLiteral("origin return setting")),
        m_view->isTabVisible(QStringLiteral("online debug setting")) };
}

void BasicPageFixture::setTabs(bool visible)
{
    for (const char* title : { "document setting", "origin return setting", "online debug setting" })
        m_view->setTabVisible(QString::fromLatin1(title), visible);
}
