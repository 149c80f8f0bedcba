#include "workbench/NewProjectDialog.h"

#include "ui_NewProjectDialog.h"
#include "workbench/ControllerCatalog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>

NewProjectDialog::NewProjectDialog(const ControllerCatalog& catalog, const QString& folder, QWidget* parent)
    : QDialog(parent), m_catalog(catalog), m_ui(std::make_unique<Ui::NewProjectDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    QPushButton* ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    ok->setText(tr("Create"));
    ok->setProperty("styleType", QStringLiteral("sureButton"));
    ok->setDefault(true);
    m_ui->folder->setText(QDir::toNativeSeparators(folder));
    for (const ControllerDescription& controller : catalog.controllers())
        m_ui->controller->addItem(controller.model());
    connect(m_ui->name, &QLineEdit::textChanged, this, &NewProjectDialog::judge);
    connect(m_ui->folder, &QLineEdit::textChanged, this, &NewProjectDialog::judge);
    connect(m_ui->controller, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &NewProjectDialog::judge);
    connect(m_ui->browse, &QPushButton::clicked, this, &NewProjectDialog::chooseFolder);
    judge();
}

NewProjectDialog::~NewProjectDialog() = default;

void NewProjectDialog::chooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Folder of the project"), m_ui->folder->text());
    if (!folder.isEmpty())
        m_ui->folder->setText(QDir::toNativeSeparators(folder));
}

QString NewProjectDialog::filePath() const
{
    const QDir folder(QDir::fromNativeSeparators(m_ui->folder->text().trimmed()));
    const QString name = m_ui->name->text().trimmed();
    return folder.absoluteFilePath(name.endsWith(fileEnding()) ? name : QString(name + fileEnding()));
}

const ControllerDescription* NewProjectDialog::controller() const
{
    return m_catalog.find(m_ui->controller->currentText());
}

QString NewProjectDialog::objection() const
{
    const QString name = m_ui->name->text().trimmed();
    if (m_catalog.controllers().isEmpty())
        return tr("There is no controller description to make a project from.");
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
        return tr("The name must not contain \"/\" or \"\\\".");
    if (!QFileInfo(m_ui->folder->text().trimmed()).isDir())
        return tr("The folder does not exist.");
    if (!name.isEmpty() && QFileInfo::exists(filePath()))
        return tr("%1 already exists.").arg(QDir::toNativeSeparators(filePath()));
    return {};
}

void NewProjectDialog::judge()
{
    const QString reason = objection();
    m_ui->reason->setText(reason);
    m_ui->summary->setText(controller() ? summary(*controller()) : QString());
    m_ui->buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(reason.isEmpty() && !m_ui->name->text().trimmed().isEmpty());
}

QString NewProjectDialog::summary(const ControllerDescription& controller)
{
    const QMap<QString, unsigned char> limits = controller.limits();
    const QString total = QStringLiteral("MaxAxis");
    QStringList parts{ tr("Up to %1 axes").arg(limits.value(total)) };
    for (auto limit = limits.begin(); limit != limits.end(); ++limit) {
        if (limit.key() != total)
            parts.append(tr("%1: %2").arg(limit.key()).arg(*limit));
    }
    return parts.join(QStringLiteral("  \u00b7  "));
}
