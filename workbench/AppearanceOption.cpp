#include "workbench/AppearanceOption.h"

#include "sdk/ServiceKeys.h"
#include "ui_AppearancePage.h"
#include "workbench/Language.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

class AppearancePage : public QWidget {
public:
    AppearancePage() { ui.setupUi(this); }

    Ui::AppearancePage ui;

protected:
    void changeEvent(QEvent* event) override
    {
        QWidget::changeEvent(event);
        if (event->type() == QEvent::LanguageChange)
            ui.retranslateUi(this);
    }
};

class AppearanceOption : public IOption {
public:
    explicit AppearanceOption(const AppearanceAccess& access) : m_access(access), m_page(new AppearancePage)
    {
        m_page->ui.theme->setItemData(0, Solution::ThemeName::light());
        m_page->ui.theme->setItemData(1, Solution::ThemeName::dark());
        const QVector<Language::Choice> languages = Language::choices();
        for (const Language::Choice& choice : languages)
            m_page->ui.language->addItem(choice.name, choice.locale);
        m_page->ui.theme->setCurrentIndex(m_access.theme() == Solution::ThemeName::light() ? 0 : 1);
        m_page->ui.language->setCurrentIndex(qMax(0, m_page->ui.language->findData(m_access.language())));
    }

    ~AppearanceOption() override
    {
        if (m_page && !m_page->parent())
            delete m_page;
    }

    QWidget* widget() override { return m_page; }

    void apply() override
    {
        m_access.setTheme(m_page->ui.theme->currentData().toString());
        m_access.setLanguage(m_page->ui.language->currentData().toString());
    }

private:
    AppearanceAccess m_access;
    QPointer<AppearancePage> m_page;
};

} // namespace

AppearanceOptionFactory::AppearanceOptionFactory(AppearanceAccess access) : m_access(std::move(access)) { }

AppearanceOptionFactory::~AppearanceOptionFactory() = default;

QString AppearanceOptionFactory::mimeType()
{
    return QStringLiteral("workbench.appearance");
}

QString AppearanceOptionFactory::title()
{
    return QCoreApplication::translate("AppearancePage", "Appearance");
}

IOption* AppearanceOptionFactory::createOption()
{
    return new AppearanceOption(m_access);
}
