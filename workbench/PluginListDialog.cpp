#include "workbench/PluginListDialog.h"

#include "ui_PluginListDialog.h"
#include "workbench/PluginManager.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>

namespace {

enum Column { NameColumn, VersionColumn, ProviderColumn, OrderColumn, StateColumn };
enum Role { DetailsRole = Qt::UserRole, PackageRole };

QString stateText(const PluginEntry& entry)
{
    switch (entry.state) {
    case PluginEntry::InService:
        return PluginListDialog::tr("In service");
    case PluginEntry::SwitchedOff:
        return PluginListDialog::tr("Switched off");
    case PluginEntry::Loaded:
        return PluginListDialog::tr("Loaded");
    case PluginEntry::Failed:
        break;
    }
    return PluginListDialog::tr("Failed");
}

QString detailsOf(const PluginEntry& entry, const QString& language)
{
    QStringList lines;
    if (!entry.reason.isEmpty())
        lines.append(entry.reason);
    const QString description = PluginPackage::inLanguage(entry.package.description, language);
    if (!description.isEmpty())
        lines.append(description);
    QStringList needs;
    for (auto need = entry.package.dependencies.begin(); need != entry.package.dependencies.end(); ++need)
        needs.append(QString(need.key() + QLatin1Char(' ') + *need));
    if (!needs.isEmpty())
        lines.append(PluginListDialog::tr("Needs: %1").arg(needs.join(QLatin1String(", "))));
    if (entry.package.forceLoad)
        lines.append(PluginListDialog::tr("Always loaded; it cannot be switched off."));
    lines.append(QDir::toNativeSeparators(entry.fileName));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

PluginListDialog::PluginListDialog(
    const PluginManager& plugins, const QString& language, const QStringList& switchedOff, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::PluginListDialog>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    QPushButton* ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    ok->setProperty("styleType", QStringLiteral("sureButton"));
    ok->setDefault(true);
    fill(plugins, language, switchedOff);
    m_ui->list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_ui->list->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    connect(m_ui->list, &QTreeWidget::currentItemChanged, this, &PluginListDialog::showDetails);
    m_ui->list->setCurrentItem(m_ui->list->topLevelItem(0));
    showDetails();
}

PluginListDialog::~PluginListDialog() = default;

void PluginListDialog::fill(const PluginManager& plugins, const QString& language, const QStringList& switchedOff)
{
    for (const PluginEntry& entry : plugins.entries()) {
        const QString name = entry.package.name.isEmpty() ? QFileInfo(entry.fileName).fileName() : entry.package.name;
        auto* item = new QTreeWidgetItem(m_ui->list,
            { name, entry.package.version, PluginPackage::inLanguage(entry.package.provider, language),
                entry.order > 0 ? QString::number(entry.order) : QString(), stateText(entry) });
        item->setTextAlignment(OrderColumn, Qt::AlignRight | Qt::AlignVCenter);
        item->setData(NameColumn, DetailsRole, detailsOf(entry, language));
        item->setData(NameColumn, PackageRole, entry.package.name);
        item->setIcon(StateColumn,
            QIcon::fromTheme(entry.state == PluginEntry::Failed ? QStringLiteral("dialog-error")
                    : entry.state == PluginEntry::InService     ? QStringLiteral("dialog-ok-apply")
                                                                : QStringLiteral("media-playback-pause")));
        if (entry.package.name.isEmpty() || entry.package.forceLoad)
            continue;
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(NameColumn, switchedOff.contains(entry.package.name) ? Qt::Unchecked : Qt::Checked);
    }
}

void PluginListDialog::showDetails()
{
    const QTreeWidgetItem* item = m_ui->list->currentItem();
    m_ui->details->setText(
        item ? item->data(NameColumn, DetailsRole).toString() : tr("There is no plug-in in the plug-in folder."));
}

QStringList PluginListDialog::switchedOff() const
{
    QStringList names;
    for (int row = 0; row < m_ui->list->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = m_ui->list->topLevelItem(row);
        const bool checkable = item->data(NameColumn, Qt::CheckStateRole).isValid();
        if (checkable && item->checkState(NameColumn) == Qt::Unchecked)
            names.append(item->data(NameColumn, PackageRole).toString());
    }
    return names;
}
