#include "workbench/StartPage.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

StartPage::StartPage(QWidget* parent)
    : QWidget(parent), m_title(new QLabel(this)), m_hint(new QLabel(this)), m_new(new QPushButton(this)),
      m_open(new QPushButton(this)), m_recentTitle(new QLabel(this)), m_recent(new QListWidget(this))
{
    setObjectName(QStringLiteral("startPage"));
    setAttribute(Qt::WA_StyledBackground);
    m_title->setObjectName(QStringLiteral("startTitle"));
    m_hint->setObjectName(QStringLiteral("startHint"));
    m_hint->setWordWrap(true);
    m_new->setObjectName(QStringLiteral("startNew"));
    m_new->setProperty("styleType", QStringLiteral("sureButton"));
    m_open->setObjectName(QStringLiteral("startOpen"));
    m_recent->setObjectName(QStringLiteral("startRecent"));
    m_recentTitle->setObjectName(QStringLiteral("startRecentTitle"));
    m_new->setIcon(QIcon());
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_new);
    buttons->addWidget(m_open);
    buttons->addStretch();
    auto* column = new QVBoxLayout;
    column->setSpacing(12);
    column->addStretch(2);
    column->addWidget(m_title);
    column->addWidget(m_hint);
    column->addLayout(buttons);
    column->addSpacing(12);
    column->addWidget(m_recentTitle);
    column->addWidget(m_recent, 3);
    column->addStretch(1);
    auto* page = new QHBoxLayout(this);
    page->setContentsMargins(48, 24, 48, 24);
    page->addStretch(1);
    page->addLayout(column, 8);
    page->addStretch(1);
    connect(m_new, &QPushButton::clicked, this, &StartPage::newRequested);
    connect(m_open, &QPushButton::clicked, this, &StartPage::openRequested);
    connect(m_recent, &QListWidget::itemActivated, this,
        [this](const QListWidgetItem* item) { emit recentRequested(item->data(Qt::UserRole).toString()); });
    setProjectOpen(false);
}

StartPage::~StartPage() = default;

void StartPage::setProjectOpen(bool open)
{
    m_projectOpen = open;
    m_new->setVisible(!open);
    m_open->setVisible(!open);
    m_recent->setVisible(!open && m_recent->count() > 0);
    m_recentTitle->setVisible(m_recent->isVisibleTo(this));
    retranslate();
}

void StartPage::setRecent(const QStringList& files)
{
    m_recent->clear();
    for (const QString& file : files) {
        const QFileInfo info(file);
        auto* item = new QListWidgetItem(QIcon::fromTheme(QStringLiteral("document-open-recent")),
            QString(info.completeBaseName() + QLatin1Char('\n') + QDir::toNativeSeparators(info.absolutePath())),
            m_recent);
        item->setData(Qt::UserRole, file);
    }
    setProjectOpen(m_projectOpen);
}

void StartPage::retranslate()
{
    m_title->setText(m_projectOpen ? tr("Nothing is open") : tr("Welcome to Kestrun"));
    m_hint->setText(m_projectOpen ? tr("Double-click an axis or a source in the project tree to open it here. "
                                       "The context menu of a node shows what can be done with it.")
                                  : tr("Create a project for a controller, or open one that exists."));
    m_new->setText(tr("New project…"));
    m_open->setText(tr("Open project…"));
    m_recentTitle->setText(tr("Recent projects"));
    m_recent->setAccessibleName(m_recentTitle->text());
}

void StartPage::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}
