#include "host/components/TypeAssistant.h"

#include "host/components/PlainToolTip.h"
#include "host/components/ProjectVariables.h"
#include "host/components/SureButton.h"
#include "host/languagecore/ACCore.h"
#include "host/languagecore/Symbol.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { PathColumn, TypeColumn, CommentColumn };

QTreeWidgetItem* makeItem(const ac::VariableInfo& variable)
{
    auto* item = new QTreeWidgetItem;
    item->setText(PathColumn, QString::fromStdString(variable.path));
    if (variable.type != nullptr)
        item->setText(TypeColumn, QString::fromStdString(variable.type->typeName()));
    const QString comment = QString::fromStdString(variable.comment).simplified();
    item->setText(CommentColumn, comment);
    item->setToolTip(CommentColumn, plainToolTip(comment));
    item->setToolTip(PathColumn, plainToolTip(item->text(PathColumn)));
    return item;
}

} // namespace

TypeAssistant::TypeAssistant(const QString& projectName, char mode, const QString& preset, QWidget* parent)
    : QDialog(parent), m_projectName(projectName), m_mode(mode), m_filter(new QLineEdit(this)),
      m_tree(new QTreeWidget(this)), m_count(new QLabel(this)), m_ok(makeSureButton(tr("OK"), "okButton", this))
{
    setObjectName(QStringLiteral("TypeAssistant"));
    setWindowTitle(m_mode == BooleanVariables ? tr("Choose a Boolean Variable") : tr("Choose a Variable"));
    buildForm();
    fill();
    filter(QString());
    select(preset);
    connect(m_filter, &QLineEdit::textChanged, this, &TypeAssistant::filter);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &TypeAssistant::updateState);
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, &TypeAssistant::accept);
    connect(m_ok, &QPushButton::clicked, this, &TypeAssistant::accept);
    m_filter->installEventFilter(this);
    m_filter->setFocus();
}

TypeAssistant::~TypeAssistant() = default;

void TypeAssistant::buildForm()
{
    m_filter->setObjectName(QStringLiteral("filterEdit"));
    m_filter->setAccessibleName(tr("Filter"));
    m_filter->setPlaceholderText(tr("Filter by path, type or comment"));
    m_filter->setClearButtonEnabled(true);

    m_tree->setObjectName(QStringLiteral("variableTree"));
    m_tree->setAccessibleName(tr("Variables"));
    m_tree->setHeaderLabels({ tr("Variable"), tr("Type"), tr("Comment") });
    m_tree->setRootIsDecorated(false);
    m_tree->setUniformRowHeights(true);
    m_tree->setAllColumnsShowFocus(true);
    m_tree->setAlternatingRowColors(true);
    m_tree->header()->resizeSection(PathColumn, 280);
    m_tree->header()->resizeSection(TypeColumn, 100);

    m_count->setObjectName(QStringLiteral("countLabel"));
    auto* cancel = makeSureButton(tr("Cancel"), "cancelButton", this);
    m_ok->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &TypeAssistant::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_count);
    bottom->addStretch();
    bottom->addWidget(m_ok);
    bottom->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_tree);
    layout->addLayout(bottom);
    resize(640, 480);
}

void TypeAssistant::fill()
{
    QList<QTreeWidgetItem*> items;
    ProjectVariables::forEach(m_projectName, [this, &items](const ac::VariableInfo& variable) {
        if (m_mode != BooleanVariables || ProjectVariables::isBooleanPath(variable))
            items.append(makeItem(variable));
    });
    m_tree->addTopLevelItems(items);
}

void TypeAssistant::filter(const QString& text)
{
    const QString wanted = text.trimmed();
    int shown = 0;
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = m_tree->topLevelItem(row);
        bool matches = false;
        for (const Column column : { PathColumn, TypeColumn, CommentColumn })
            matches = matches || item->text(column).contains(wanted, Qt::CaseInsensitive);
        item->setHidden(!matches);
        shown += matches ? 1 : 0;
    }
    m_count->setText(tr("%1 of %2 variables").arg(shown).arg(m_tree->topLevelItemCount()));
    QTreeWidgetItem* current = m_tree->currentItem();
    if (current == nullptr || current->isHidden())
        m_tree->setCurrentItem(firstShown());
    updateState();
}

void TypeAssistant::select(const QString& path)
{
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = m_tree->topLevelItem(row);
        if (item->text(PathColumn).compare(path, Qt::CaseInsensitive) == 0) {
            m_tree->setCurrentItem(item);
            m_tree->scrollToItem(item, QAbstractItemView::PositionAtCenter);
            return;
        }
    }
}

QTreeWidgetItem* TypeAssistant::firstShown() const
{
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row) {
        if (!m_tree->topLevelItem(row)->isHidden())
            return m_tree->topLevelItem(row);
    }
    return nullptr;
}

void TypeAssistant::updateState()
{
    const QTreeWidgetItem* current = m_tree->currentItem();
    m_ok->setEnabled(current != nullptr && !current->isHidden());
}

void TypeAssistant::accept()
{
    const QTreeWidgetItem* current = m_tree->currentItem();
    if (current == nullptr || current->isHidden())
        return;
    chosenTexts = QStringList{ current->text(PathColumn) };
    QDialog::accept();
}

bool TypeAssistant::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_filter && event->type() == QEvent::KeyPress && moveIntoList(*static_cast<QKeyEvent*>(event)))
        return true;
    return QDialog::eventFilter(watched, event);
}

bool TypeAssistant::moveIntoList(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Down || m_tree->currentItem() == nullptr)
        return false;
    m_tree->setFocus(Qt::TabFocusReason);
    return true;
}
