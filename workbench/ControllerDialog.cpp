#include "workbench/ControllerDialog.h"

#include "ui_ControllerDialog.h"
#include "workbench/ControllerCatalog.h"
#include "workbench/NewProjectDialog.h"

#include <QPushButton>

ControllerDialog::ControllerDialog(const ControllerCatalog& catalog, const QString& present, QWidget* parent)
    : QDialog(parent), m_catalog(catalog), m_present(present), m_ui(std::make_unique<Ui::ControllerDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->present->setText(tr("Present controller: %1").arg(present));
    QPushButton* ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    ok->setText(tr("Change"));
    ok->setProperty("styleType", QStringLiteral("sureButton"));
    ok->setDefault(true);
    for (const ControllerDescription& controller : catalog.controllers()) {
        m_ui->models->addItem(controller.model());
        if (controller.model() == present)
            m_ui->models->setCurrentRow(m_ui->models->count() - 1);
    }
    connect(m_ui->models, &QListWidget::currentRowChanged, this, &ControllerDialog::judge);
    judge();
}

ControllerDialog::~ControllerDialog() = default;

const ControllerDescription* ControllerDialog::controller() const
{
    const QListWidgetItem* item = m_ui->models->currentItem();
    return item ? m_catalog.find(item->text()) : nullptr;
}

void ControllerDialog::judge()
{
    const ControllerDescription* chosen = controller();
    m_ui->summary->setText(chosen ? NewProjectDialog::summary(*chosen) : QString());
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(chosen && chosen->model() != m_present);
}
