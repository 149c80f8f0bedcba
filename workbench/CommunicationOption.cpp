#include "workbench/CommunicationOption.h"

#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"
#include "ui_CommunicationPage.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

namespace {

class CommunicationPage : public QWidget {
public:
    CommunicationPage()
    {
        ui.setupUi(this);
        // Its place stays when it hides, lest the fields jump.
        QSizePolicy policy = ui.warning->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        ui.warning->setSizePolicy(policy);
        connect(ui.monitorTime, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { judge(); });
        connect(ui.timeout, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { judge(); });
    }

    CommunicationTimes times() const { return { ui.monitorTime->value(), ui.timeout->value() }; }

    void setTimes(const CommunicationTimes& times)
    {
        ui.monitorTime->setValue(times.monitorTime);
        ui.timeout->setValue(times.timeout);
        judge();
    }

    Ui::CommunicationPage ui;

protected:
    void changeEvent(QEvent* event) override
    {
        QWidget::changeEvent(event);
        if (event->type() != QEvent::LanguageChange)
            return;
        ui.retranslateUi(this);
        judge();
    }

private:
    void judge()
    {
        ui.warning->setText(QCoreApplication::translate("CommunicationPage",
            "Twelve poll periods (%1 ms) do not stay below the time-out (%2 ms): the controller may leave debug mode "
            "while an axis is being watched.")
                                .arg(12LL * times().monitorTime)
                                .arg(times().timeout));
        ui.warning->setVisible(!times().isSound());
    }
};

class CommunicationOption : public IOption {
public:
    explicit CommunicationOption(IConfiguration& settings) : m_settings(settings), m_page(new CommunicationPage)
    {
        m_page->setTimes(CommunicationTimes::read(settings));
    }

    ~CommunicationOption() override
    {
        if (m_page && !m_page->parent())
            delete m_page;
    }

    QWidget* widget() override { return m_page; }

    void apply() override
    {
        const CommunicationTimes times = m_page->times();
        m_settings.setValue(Solution::ConfigKey::monitorTime(), times.monitorTime);
        m_settings.setValue(Solution::ConfigKey::communicationTimeout(), times.timeout);
    }

private:
    IConfiguration& m_settings;
    QPointer<CommunicationPage> m_page;
};

int positive(const QVariant& value, int otherwise)
{
    return value.toInt() < 1 ? otherwise : value.toInt();
}

} // namespace

CommunicationTimes CommunicationTimes::read(const IConfiguration& settings)
{
    const CommunicationTimes standard;
    return { positive(settings.value(Solution::ConfigKey::monitorTime(), QVariant()), standard.monitorTime),
        positive(settings.value(Solution::ConfigKey::communicationTimeout(), QVariant()), standard.timeout) };
}

CommunicationOptionFactory::CommunicationOptionFactory(IConfiguration& settings) : m_settings(settings) { }

CommunicationOptionFactory::~CommunicationOptionFactory() = default;

QString CommunicationOptionFactory::mimeType()
{
    return QStringLiteral("workbench.communication");
}

QString CommunicationOptionFactory::title()
{
    return QCoreApplication::translate("CommunicationPage", "Communication");
}

IOption* CommunicationOptionFactory::createOption()
{
    return new CommunicationOption(m_settings);
}
