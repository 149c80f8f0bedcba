#include "workbench/OptionsDialog.h"

#include "sdk/IOption.h"
#include "sdk/IOptionFactory.h"
#include "ui_OptionsDialog.h"

#include <QAbstractButton>
#include <QEvent>
#include <QPushButton>

OptionsDialog::OptionsDialog(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::OptionsDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    QPushButton* ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    ok->setProperty("styleType", QStringLiteral("sureButton"));
    ok->setDefault(true);
    connect(m_ui->pageList, &QListWidget::currentRowChanged, m_ui->pages, &QStackedWidget::setCurrentIndex);
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, [this] {
        apply();
        accept();
    });
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_ui->buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &OptionsDialog::apply);
}

OptionsDialog::~OptionsDialog()
{
    // The pages' widgets are children of this dialog by now; options hold no more than a pointer to them.
    m_pages.clear();
}

void OptionsDialog::addPage(IOptionFactory& factory)
{
    Page page{ &factory, std::unique_ptr<IOption>(factory.createOption()) };
    if (!page.option || !page.option->widget())
        return;
    m_ui->pages->addWidget(page.option->widget());
    m_ui->pageList->addItem(factory.title());
    m_pages.push_back(std::move(page));
    if (m_ui->pageList->currentRow() < 0)
        m_ui->pageList->setCurrentRow(0);
}

void OptionsDialog::showPage(const QString& mimeType)
{
    for (size_t i = 0; i < m_pages.size(); ++i) {
        if (m_pages[i].factory->mimeType() == mimeType)
            m_ui->pageList->setCurrentRow(static_cast<int>(i));
    }
}

void OptionsDialog::apply()
{
    for (const Page& page : m_pages) {
        page.option->apply();
        emit applied(page.factory->mimeType());
    }
}

void OptionsDialog::retranslate()
{
    m_ui->retranslateUi(this);
    for (size_t i = 0; i < m_pages.size(); ++i)
        m_ui->pageList->item(static_cast<int>(i))->setText(m_pages[i].factory->title());
}

void OptionsDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}
