#include "host/components/CLineEdit.h"

#include "host/components/ProjectVariables.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QStringListModel>

CLineEdit::CLineEdit(QWidget* parent) : QLineEdit(parent) { }

CLineEdit::~CLineEdit() = default;

void CLineEdit::hideList()
{
    if (isListOpen())
        m_completer->popup()->hide();
}

void CLineEdit::setEnableComplete(bool enable)
{
    m_completeEnabled = enable;
    if (!enable) {
        hideList();
        // The line edit deletes a completer that is its child when it gets another one.
        m_completer = nullptr;
        m_completions = nullptr;
        setCompleter(nullptr);
    } else if (hasFocus()) {
        prepareCompletion();
    }
}

bool CLineEdit::isCompleteEnabled() const
{
    return m_completeEnabled;
}

void CLineEdit::setCompletions(const QStringList& texts)
{
    m_ownCompletions = true;
    m_texts = texts;
    if (m_completions != nullptr)
        m_completions->setStringList(m_texts);
}

void CLineEdit::focusInEvent(QFocusEvent* event)
{
    if (m_completeEnabled)
        prepareCompletion();
    QLineEdit::focusInEvent(event);
}

void CLineEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        finishEdit();
}

void CLineEdit::keyPressEvent(QKeyEvent* event)
{
    const bool finishes = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // A key that chooses from the list is used up by it, and closes no dialog around the field.
    const bool chooses = finishes && takeMarkedCompletion();
    const QPointer<CLineEdit> guard(this);
    QLineEdit::keyPressEvent(event);
    if (chooses)
        event->accept();
    if (finishes && guard)
        finishEdit();
}

void CLineEdit::finishEdit()
{
    if (m_emitting)
        return;
    // A slot may open a message box and the field may be gone when it closes.
    const QPointer<CLineEdit> guard(this);
    m_emitting = true;
    emit editFinished();
    if (guard)
        m_emitting = false;
}

void CLineEdit::prepareCompletion()
{
    if (!m_ownCompletions)
        m_texts = ProjectVariables::booleanPaths(ProjectVariables::currentProject());
    if (m_completer == nullptr) {
        m_completer = new QCompleter(this);
        m_completions = new QStringListModel(m_completer);
        m_completer->setModel(m_completions);
        m_completer->setCaseSensitivity(Qt::CaseInsensitive);
        m_completer->setFilterMode(Qt::MatchContains);
        setCompleter(m_completer);
    }
    m_completions->setStringList(m_texts);
}

bool CLineEdit::isListOpen() const
{
    return m_completer != nullptr && m_completer->popup()->isVisible();
}

bool CLineEdit::takeMarkedCompletion()
{
    if (!isListOpen())
        return false;
    const QModelIndex marked = m_completer->popup()->currentIndex();
    if (marked.isValid())
        setText(marked.data(m_completer->completionRole()).toString());
    m_completer->popup()->hide();
    return true;
}
