#include "workbench/ProblemsPanel.h"

#include "host/languagecore/ACCore.h"
#include "host/languagecore/SafeAccore.h"

#include <QEvent>
#include <QHeaderView>

namespace {

enum Column { TextColumn, SourceColumn, LineColumn, ColumnColumn };

}

ProblemsPanel::ProblemsPanel(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("problemsPanel"));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setFrameShape(NoFrame);
    retranslate();
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(TextColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(SourceColumn, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(LineColumn, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(ColumnColumn, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { choose(item); });
}

ProblemsPanel::~ProblemsPanel() = default;

void ProblemsPanel::retranslate()
{
    setHeaderLabels({ tr("Problem"), tr("Source"), tr("Line"), tr("Column") });
    setAccessibleName(tr("Problems"));
}

void ProblemsPanel::show(const QString& projectName)
{
    clear();
    const SafeAccore core(projectName.toStdString(), false);
    if (core) {
        for (const ac::SourceProblem& problem : core->problems()) {
            auto* item = new QTreeWidgetItem(this,
                { QString::fromStdString(problem.text), QString::fromStdString(problem.source),
                    QString::number(problem.line), QString::number(problem.column) });
            item->setIcon(TextColumn, QIcon::fromTheme(QStringLiteral("dialog-error")));
            item->setTextAlignment(LineColumn, Qt::AlignRight | Qt::AlignVCenter);
            item->setTextAlignment(ColumnColumn, Qt::AlignRight | Qt::AlignVCenter);
        }
    }
    emit countChanged(count());
}

void ProblemsPanel::choose(const QTreeWidgetItem* item)
{
    emit placeChosen(item->text(SourceColumn), item->text(LineColumn).toInt(), item->text(ColumnColumn).toInt());
}

void ProblemsPanel::changeEvent(QEvent* event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}
