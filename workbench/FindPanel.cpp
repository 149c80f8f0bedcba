#include "workbench/FindPanel.h"

#include "host/components/PlainToolTip.h"
#include "ui_FindPanel.h"

#include <QEvent>

#include <algorithm>

namespace {

/// Positions in the list of scopes, as the form has them.
enum Scope { WholeProject, ThisEditor };

/// 0 for two places, 1 for one whose text or control's name has changed, 2 for the same.
int likeness(const FoundPlace& a, const FoundPlace& b)
{
    if (a.nodePath != b.nodePath)
        return 0;
    return int(a.location == b.location) + int(a.label == b.label && a.text == b.text);
}

/// Where a place stands, -1 if nowhere; of places that are alike the last one in the direction counts.
int rowOf(const FoundPlace& place, const QVector<FoundPlace>& places, int direction)
{
    int found = -1;
    int best = 1;
    for (int i = 0; i < places.size(); ++i) {
        const int row = direction > 0 ? i : places.size() - 1 - i;
        const int alike = likeness(place, places.at(row));
        if (alike >= best) {
            found = row;
            best = alike;
        }
    }
    return found;
}

/// Where a step of that direction is to go on from, -1 for the list's beginning or end.
int keptRow(const QVector<FoundPlace>& former, int visited, const QVector<FoundPlace>& places, int direction)
{
    int kept = -1;
    for (int row = visited; kept < 0 && row >= 0 && row < former.size(); row -= direction)
        kept = rowOf(former.at(row), places, direction);
    return kept;
}

/// The same places in the same order, in whichever language.
bool areSameRows(const QVector<FoundPlace>& a, const QVector<FoundPlace>& b)
{
    const auto isSame = [](const FoundPlace& one, const FoundPlace& other) {
        return one.nodePath == other.nodePath && one.text == other.text;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

} // namespace

FindPanel::FindPanel(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::FindPanel>())
{
    m_ui->setupUi(this);
    m_ui->find->setEnabled(false);
    m_ui->references->setEnabled(false);
    m_ui->openUnsearched->hide();
    m_ui->results->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_ui->results->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    connect(m_ui->find, &QPushButton::clicked, this, &FindPanel::findRequested);
    connect(m_ui->text, &QLineEdit::returnPressed, m_ui->find, &QPushButton::click);
    connect(m_ui->references, &QPushButton::clicked, this, &FindPanel::referencesRequested);
    connect(m_ui->variable, &QLineEdit::returnPressed, m_ui->references, &QPushButton::click);
    connect(m_ui->openUnsearched, &QPushButton::clicked, this, &FindPanel::openUnsearchedRequested);
    connect(m_ui->text, &QLineEdit::textChanged, this, &FindPanel::noteChange);
    connect(m_ui->scope, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &FindPanel::noteChange);
    for (const QCheckBox* option : { m_ui->wholeWord, m_ui->caseSensitive, m_ui->backwards })
        connect(option, &QCheckBox::toggled, this, &FindPanel::noteChange);
    connect(
        m_ui->variable, &QLineEdit::textChanged, this, [this] { m_ui->references->setEnabled(!variable().isEmpty()); });
    connect(m_ui->results, &QTreeWidget::itemActivated, this,
        [this](QTreeWidgetItem* item) { choose(m_ui->results->indexOfTopLevelItem(item)); });
}

FindPanel::~FindPanel() = default;

void FindPanel::noteChange()
{
    m_upToDate = false;
    m_ui->find->setEnabled(!m_ui->text->text().isEmpty());
}

FindRequest FindPanel::request() const
{
    FindRequest request;
    request.text = m_ui->text->text();
    request.wholeWord = m_ui->wholeWord->isChecked();
    request.caseSensitive = m_ui->caseSensitive->isChecked();
    request.backwards = m_ui->backwards->isChecked();
    return request;
}

bool FindPanel::wholeProject() const
{
    return m_ui->scope->currentIndex() == WholeProject;
}

QString FindPanel::variable() const
{
    return m_ui->variable->text().trimmed();
}

void FindPanel::setVariable(const QString& path)
{
    m_ui->variable->setText(path);
}

bool FindPanel::isUpToDate() const
{
    return m_upToDate;
}

void FindPanel::editText()
{
    m_ui->text->setFocus(Qt::ShortcutFocusReason);
    m_ui->text->selectAll();
}

void FindPanel::editVariable()
{
    m_ui->variable->setFocus(Qt::ShortcutFocusReason);
    m_ui->variable->selectAll();
}

void FindPanel::show(const QVector<FoundPlace>& places, const QString& status)
{
    list(places, status);
    m_visited = -1;
    m_former.reset();
    m_upToDate = true;
}

void FindPanel::showAnew(const QVector<FoundPlace>& places, const QString& status, int direction)
{
    if (direction != 0)
        resume(direction);
    else if (!m_former)
        m_former = Former{ m_places, m_visited };
    m_visited = keptRow(m_places, m_visited, places, direction < 0 ? -1 : 1);
    list(places, status);
    m_ui->results->setCurrentItem(m_ui->results->topLevelItem(qMax(m_visited, 0)));
}

void FindPanel::resume(int direction)
{
    if (!m_former)
        return;
    // Labels in another language say nothing of which place is which, the order does.
    m_visited = areSameRows(m_former->places, m_places)
        ? m_former->visited
        : keptRow(m_former->places, m_former->visited, m_places, direction);
    m_former.reset();
}

void FindPanel::list(const QVector<FoundPlace>& places, const QString& status)
{
    m_places = places;
    m_ui->results->clear();
    for (const FoundPlace& place : places)
        new QTreeWidgetItem(m_ui->results, { place.objectName, place.label, place.text });
    m_ui->results->setCurrentItem(m_ui->results->topLevelItem(0));
    offerOpening(false);
    m_status = status;
    m_overtaken = false;
    showNote(QString());
}

void FindPanel::renameNodes(const std::function<QString(const QString& path)>& renamed)
{
    for (FoundPlace& place : m_places)
        place.nodePath = renamed(place.nodePath);
    if (!m_former)
        return;
    for (FoundPlace& place : m_former->places)
        place.nodePath = renamed(place.nodePath);
}

void FindPanel::offerOpening(bool offered)
{
    m_ui->openUnsearched->setVisible(offered);
}

void FindPanel::clear()
{
    show({}, QString());
    m_upToDate = false;
}

void FindPanel::showNote(const QString& note)
{
    m_note = note;
    showStatus();
}

void FindPanel::setOvertaken(bool overtaken)
{
    m_overtaken = overtaken;
    showStatus();
}

void FindPanel::showStatus()
{
    QStringList status{ m_note.isEmpty() ? m_status : m_note };
    if (m_overtaken && !m_status.isEmpty())
        status.append(tr("The project has changed since; F3 searches again."));
    const QString text = status.join(QLatin1Char(' '));
    m_ui->status->setText(text);
    m_ui->status->setToolTip(plainToolTip(text));
}

void FindPanel::step(int direction)
{
    const int count = m_places.size();
    if (count == 0)
        return;
    resume(direction);
    const int from = m_visited < 0 && direction < 0 ? 0 : m_visited;
    choose((from + direction + count) % count);
}

void FindPanel::correctVisited(const QString& location)
{
    if (m_visited >= 0)
        m_places[m_visited].location = location;
}

void FindPanel::choose(int row)
{
    m_visited = row;
    m_former.reset();
    m_ui->results->setCurrentItem(m_ui->results->topLevelItem(row));
    showNote(QString());
    const FoundPlace place = m_places.at(row);
    emit placeChosen(place);
}

void FindPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    m_ui->retranslateUi(this);
    emit languageChanged();
}
