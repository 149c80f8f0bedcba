#pragma once

#include <QTreeWidget>

/// The sources of the project that do not parse, with the place of the fault.
class ProblemsPanel : public QTreeWidget {
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget* parent = nullptr);
    ~ProblemsPanel() override;

    /// Shows the problems of a project; an unknown or empty name shows none.
    void show(const QString& projectName);
    int count() const { return topLevelItemCount(); }

signals:
    /// The user wants to see the place: the source's name, line and column from 1.
    void placeChosen(const QString& source, int line, int column);
    void countChanged(int count);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    void choose(const QTreeWidgetItem* item);
};
