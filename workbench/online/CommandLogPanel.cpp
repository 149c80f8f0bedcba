#include "workbench/online/CommandLogPanel.h"

#include "workbench/online/CommandLog.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QToolButton* makeButton(const QString& name, const QString& symbol, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setIcon(QIcon::fromTheme(symbol));
    button->setAutoRaise(true);
    return button;
}

} // namespace

CommandLogPanel::CommandLogPanel(CommandLog& log, QWidget* parent)
    : QWidget(parent), m_log(log), m_view(new QTreeView(this)),
      m_copy(makeButton(QStringLiteral("copyCommands"), QStringLiteral("edit-copy"), this)),
      m_clear(makeButton(QStringLiteral("clearCommands"), QStringLiteral("edit-clear-all"), this))
{
    setObjectName(QStringLiteral("commandLogPanel"));
    m_view->setObjectName(QStringLiteral("commandLog"));
    m_view->setModel(&log);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setAllColumnsShowFocus(true);
    m_view->setIconSize({ 16, 16 });
    m_view->header()->setStretchLastSection(false);
    m_view->header()->setSectionResizeMode(CommandLog::ArgumentsColumn, QHeaderView::Stretch);
    m_view->header()->setSectionResizeMode(CommandLog::AnswerColumn, QHeaderView::Stretch);
    m_view->setColumnWidth(CommandLog::TimeColumn, 112);
    m_view->setColumnWidth(CommandLog::AxisColumn, 120);
    m_view->setColumnWidth(CommandLog::CommandColumn, 144);
    m_view->setColumnWidth(CommandLog::DurationColumn, 120);
    m_view->installEventFilter(this);
    auto* buttons = new QVBoxLayout;
    buttons->setContentsMargins(4, 4, 4, 4);
    buttons->setSpacing(4);
    buttons->addWidget(m_copy);
    buttons->addWidget(m_clear);
    buttons->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(buttons);
    layout->addWidget(m_view, 1);
    connect(m_copy, &QToolButton::clicked, this, &CommandLogPanel::copy);
    connect(m_clear, &QToolButton::clicked, &m_log, &CommandLog::clear);
    connect(&m_log, &QAbstractItemModel::rowsAboutToBeInserted, this,
        [this] { m_atEnd = m_view->verticalScrollBar()->value() == m_view->verticalScrollBar()->maximum(); });
    connect(&m_log, &QAbstractItemModel::rowsInserted, this, &CommandLogPanel::follow);
    retranslate();
}

CommandLogPanel::~CommandLogPanel() = default;

void CommandLogPanel::follow()
{
    if (m_atEnd)
        m_view->scrollToBottom();
}

void CommandLogPanel::copy()
{
    QList<int> rows;
    const QModelIndexList chosen = m_view->selectionModel()->selectedRows();
    for (const QModelIndex& index : chosen)
        rows.append(index.row());
    for (int row = 0; chosen.isEmpty() && row < m_log.rowCount(); ++row)
        rows.append(row);
    std::sort(rows.begin(), rows.end());
    QGuiApplication::clipboard()->setText(m_log.text(rows));
}

void CommandLogPanel::retranslate()
{
    m_copy->setToolTip(tr("Copy the chosen lines, or all"));
    m_copy->setAccessibleName(tr("Copy the chosen lines, or all"));
    m_clear->setToolTip(tr("Clear"));
    m_clear->setAccessibleName(tr("Clear"));
    m_view->setAccessibleName(tr("Commands"));
    m_log.refresh();
}

void CommandLogPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

bool CommandLogPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        copy();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
