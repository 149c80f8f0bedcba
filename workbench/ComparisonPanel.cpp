#include "workbench/ComparisonPanel.h"

#include "host/components/PlainToolTip.h"
#include "ui_ComparisonPanel.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QScrollBar>

namespace {

enum Column { HereColumn, StateColumn, ThereColumn };

QStandardItem* cell(const QString& text)
{
    auto* item = new QStandardItem(text);
    item->setEditable(false);
    item->setToolTip(plainToolTip(text));
    return item;
}

/// Stands where a project lacks what the other one has.
QString absent()
{
    return QStringLiteral("\u2014");
}

} // namespace

ComparisonPanel::ComparisonPanel(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::ComparisonPanel>())
{
    m_ui->setupUi(this);
    joinTrees();
    m_ui->values->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_ui->values->verticalHeader()->setVisible(false);
    connect(m_ui->compare, &QPushButton::clicked, this, &ComparisonPanel::compareRequested);
    connect(m_ui->stop, &QPushButton::clicked, this, &ComparisonPanel::stopRequested);
    connect(m_ui->differencesOnly, &QCheckBox::toggled, this, &ComparisonPanel::fillValues);
    setProjectOpen(false);
    show(nullptr, QString());
}

ComparisonPanel::~ComparisonPanel() = default;

void ComparisonPanel::joinTrees()
{
    QTreeView* here = m_ui->here;
    QTreeView* there = m_ui->there;
    m_model.setColumnCount(3);
    for (QTreeView* view : { here, there }) {
        view->setModel(&m_model);
        view->setUniformRowHeights(true);
        view->setAllColumnsShowFocus(true);
        connect(view, &QTreeView::activated, this, [this](const QModelIndex& index) {
            if (const ComparedAxis* axis = axisAt(index))
                emit axisChosen(*axis);
        });
    }
    here->hideColumn(ThereColumn);
    here->header()->setStretchLastSection(false);
    here->header()->setSectionResizeMode(HereColumn, QHeaderView::Stretch);
    here->header()->setSectionResizeMode(StateColumn, QHeaderView::ResizeToContents);
    there->hideColumn(HereColumn);
    there->hideColumn(StateColumn);
    there->setTreePosition(ThereColumn);
    // Row stands beside row: both trees select, scroll and fold together.
    QItemSelectionModel* own = there->selectionModel();
    there->setSelectionModel(here->selectionModel());
    delete own;
    connect(here->selectionModel(), &QItemSelectionModel::currentChanged, this, &ComparisonPanel::fillValues);
    connect(here->verticalScrollBar(), &QScrollBar::valueChanged, there->verticalScrollBar(), &QScrollBar::setValue);
    connect(there->verticalScrollBar(), &QScrollBar::valueChanged, here->verticalScrollBar(), &QScrollBar::setValue);
    connect(here, &QTreeView::expanded, there, &QTreeView::expand);
    connect(there, &QTreeView::expanded, here, &QTreeView::expand);
    connect(here, &QTreeView::collapsed, there, &QTreeView::collapse);
    connect(there, &QTreeView::collapsed, here, &QTreeView::collapse);
}

QString ComparisonPanel::stateText(ComparedAxis::State state)
{
    switch (state) {
    case ComparedAxis::Equal:
        return tr("= Equal");
    case ComparedAxis::Different:
        return tr("\u2260 Different");
    case ComparedAxis::OnlyHere:
        return tr("\u2190 Only in this project");
    case ComparedAxis::OnlyThere:
        break;
    }
    return tr("\u2192 Only in the other project");
}

void ComparisonPanel::setProjectOpen(bool open)
{
    m_ui->compare->setEnabled(open);
}

void ComparisonPanel::show(const ProjectComparison* comparison, const QString& projectName)
{
    m_comparison = comparison && comparison->isOn() ? comparison : nullptr;
    m_projectName = projectName;
    fill();
}

void ComparisonPanel::fill()
{
    const QString selected = titleOf(m_ui->here->currentIndex());
    m_axes = m_comparison ? m_comparison->axes() : QVector<ComparedAxis>();
    m_parts = m_comparison ? m_comparison->parts() : QVector<ComparedPart>();
    m_model.removeRows(0, m_model.rowCount());
    m_ui->stop->setEnabled(m_comparison);
    m_ui->differencesOnly->setEnabled(m_comparison);
    const QString file = m_comparison ? m_comparison->otherFile() : QString();
    m_model.setHorizontalHeaderLabels({ tr("This project"), tr("State"), tr("Other project") });
    m_ui->title->setText(m_comparison
            ? QString(m_projectName + QStringLiteral(" \u2194 ") + QDir::toNativeSeparators(file))
            : tr("No comparison is on."));
    if (m_comparison) {
        fillTree();
        select(selected);
    }
    fillValues();
}

void ComparisonPanel::fillTree()
{
    fillRow(m_model.invisibleRootItem(), m_projectName,
        m_comparison->isEqual() ? ComparedAxis::Equal : ComparedAxis::Different,
        QFileInfo(m_comparison->otherFile()).completeBaseName());
    QStandardItem* root = m_model.item(0);
    for (const ComparedAxis& axis : qAsConst(m_axes))
        fillRow(root, axis.here ? axis.name : absent(), axis.state, axis.there ? axis.thereName : absent());
    for (const ComparedPart& part : qAsConst(m_parts))
        fillRow(root, partText(part.kind, part.here), part.state, partText(part.kind, part.there));
    m_ui->here->expandAll();
}

void ComparisonPanel::select(const QString& title)
{
    const QStandardItem* root = m_model.item(0);
    for (int row = 0; row < root->rowCount(); ++row) {
        const QModelIndex index = root->child(row)->index();
        if (!title.isEmpty() && titleOf(index) == title)
            m_ui->here->setCurrentIndex(index);
    }
}

QString ComparisonPanel::partText(ComparedPart::Kind kind, const QString& value)
{
    switch (kind) {
    case ComparedPart::Controller:
        return tr("Controller: %1").arg(value);
    case ComparedPart::ProgramStyle:
        return value == QLatin1String("1") ? tr("Program style: addresses only")
                                           : tr("Program style: variables and addresses");
    case ComparedPart::CycleTime:
        return tr("Cycle time: %1").arg(value.isEmpty() ? absent() : QString(value + QStringLiteral(" \u00b5s")));
    case ComparedPart::Source:
        break;
    }
    return value.isEmpty() ? absent() : tr("Source: %1").arg(value);
}

void ComparisonPanel::fillRow(
    QStandardItem* parent, const QString& here, ComparedAxis::State state, const QString& there)
{
    const QList<QStandardItem*> cells{ cell(here), cell(stateText(state)), cell(there) };
    // A symbol that comes from another font would make the rows of one tree taller than those beside them.
    const QFontMetrics metrics = fontMetrics();
    for (QStandardItem* each : cells)
        each->setSizeHint({ metrics.horizontalAdvance(each->text()) + 24, metrics.height() + 8 });
    parent->appendRow(cells);
}

const ComparedAxis* ComparisonPanel::axisAt(const QModelIndex& index) const
{
    const bool valid = index.isValid() && index.parent().isValid() && index.row() < m_axes.size();
    return valid ? &m_axes.at(index.row()) : nullptr;
}

QString ComparisonPanel::titleOf(const QModelIndex& index) const
{
    if (const ComparedAxis* axis = axisAt(index))
        return axis->name;
    const int row = index.row() - m_axes.size();
    if (!index.parent().isValid() || row < 0 || row >= m_parts.size())
        return {};
    const ComparedPart& part = m_parts.at(row);
    return partText(part.kind, part.here.isEmpty() ? part.there : part.here);
}

void ComparisonPanel::fillValues()
{
    QTableWidget* table = m_ui->values;
    table->setRowCount(0);
    table->setHorizontalHeaderLabels({ tr("Key"), tr("This project"), tr("Other project") });
    const QModelIndex current = m_ui->here->currentIndex();
    const ComparedAxis* axis = axisAt(current);
    const QString title = titleOf(current);
    const QString state = current.sibling(current.row(), StateColumn).data().toString();
    m_ui->axisState->setText(title.isEmpty() ? QString() : QString(title + QStringLiteral(": ") + state));
    if (!axis || !m_comparison)
        return;
    const QVector<ComparedValue> values = m_comparison->values(*axis);
    for (const ComparedValue& value : values) {
        if (!value.differs && m_ui->differencesOnly->isChecked())
            continue;
        const int row = table->rowCount();
        table->insertRow(row);
        const QString key = value.differs ? QString(QStringLiteral("\u2260 ") + value.key) : value.key;
        table->setItem(row, 0, new QTableWidgetItem(key));
        table->setItem(row, 1, new QTableWidgetItem(value.here));
        table->setItem(row, 2, new QTableWidgetItem(value.there));
    }
}

void ComparisonPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    m_ui->retranslateUi(this);
    fill();
}
