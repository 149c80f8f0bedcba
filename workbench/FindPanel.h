#pragma once

#include "workbench/ProjectFind.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QTreeWidgetItem;

namespace Ui {
class FindPanel;
}

/// Asks what to find, and lists what was found.
class FindPanel : public QWidget {
    Q_OBJECT

public:
    explicit FindPanel(QWidget* parent = nullptr);
    ~FindPanel() override;

    /// What the user has entered.
    FindRequest request() const;
    bool wholeProject() const;
    QString variable() const;
    void setVariable(const QString& path);
    /// True when the list answers what is entered now.
    bool isUpToDate() const;

    /// Puts the focus on the text, or on the variable, ready to be typed over.
    void editText();
    void editVariable();

    /// Lists places; the text below them says what they are.
    void show(const QVector<FoundPlace>& places, const QString& status);
    /// Lists what the same search finds now. A step of that direction goes on from the place that was gone to last or,
    /// where that is gone, from the one that stood nearest on the way to it. Direction 0 leaves that to the step.
    void showAnew(const QVector<FoundPlace>& places, const QString& status, int direction);
    /// Gives the places the paths that their nodes have now.
    void renameNodes(const std::function<QString(const QString& path)>& renamed);
    /// Forgets what was found.
    void clear();
    /// Says something of the place that was gone to last, until the next one is gone to.
    void showNote(const QString& note);
    /// Says that the project is other than when the places were found; what is listed next takes that back.
    void setOvertaken(bool overtaken);
    /// Offers to open what the search has left out; what is shown next takes the offer back.
    void offerOpening(bool offered);
    const QVector<FoundPlace>& places() const { return m_places; }
    /// Gives the place that was gone to last the location that it has now.
    void correctVisited(const QString& location);
    /// Goes to the next (1) or the one before (-1), from the end on to the other end, as if the user had chosen it.
    void step(int direction);

signals:
    void findRequested();
    void referencesRequested();
    void openUnsearchedRequested();
    void placeChosen(const FoundPlace& place);
    /// The panel has changed its language; the list has not.
    void languageChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    void choose(int row);
    void noteChange();
    /// Goes on from a list that was only renewed for its language, now that the direction is known.
    void resume(int direction);
    void list(const QVector<FoundPlace>& places, const QString& status);
    void showStatus();

    std::unique_ptr<Ui::FindPanel> m_ui;
    QVector<FoundPlace> m_places;
    /// What is said of the places as a whole.
    QString m_status;
    /// What is said of the place that was gone to last, or empty.
    QString m_note;
    bool m_overtaken = false;
    /// The list before it was renewed for its language.
    struct Former {
        QVector<FoundPlace> places;
        int visited = -1;
    };
    std::optional<Former> m_former;
    /// Row of the place that was gone to last, -1 before the first.
    int m_visited = -1;
    bool m_upToDate = false;
};
