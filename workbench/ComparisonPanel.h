#pragma once

#include "workbench/ProjectComparison.h"

#include <QStandardItemModel>
#include <QVector>
#include <QWidget>

#include <memory>

namespace Ui {
class ComparisonPanel;
}

/// The comparison of two projects: tree beside tree, first the axes, then what else makes up a project; and the keys
/// of the chosen axis with both values.
class ComparisonPanel : public QWidget {
    Q_OBJECT

public:
    explicit ComparisonPanel(QWidget* parent = nullptr);
    ~ComparisonPanel() override;

    /// Shows what a comparison has found, or that none is on. The comparison must live as long as the panel shows it;
    /// null shows none.
    void show(const ProjectComparison* comparison, const QString& projectName);
    /// A comparison can be begun.
    void setProjectOpen(bool open);

    /// What the panel says of a state, symbol first.
    static QString stateText(ComparedAxis::State state);

signals:
    void compareRequested();
    void stopRequested();
    /// The user wants to see the axis of the open project.
    void axisChosen(const ComparedAxis& axis);

protected:
    void changeEvent(QEvent* event) override;

private:
    void joinTrees();
    void fill();
    void fillTree();
    void select(const QString& title);
    void fillRow(QStandardItem* parent, const QString& here, ComparedAxis::State state, const QString& there);
    void fillValues();
    const ComparedAxis* axisAt(const QModelIndex& index) const;
    /// What the row is about; empty for the project's own row.
    QString titleOf(const QModelIndex& index) const;
    static QString partText(ComparedPart::Kind kind, const QString& value);

    std::unique_ptr<Ui::ComparisonPanel> m_ui;
    QStandardItemModel m_model;
    const ProjectComparison* m_comparison = nullptr;
    QString m_projectName;
    QVector<ComparedAxis> m_axes;
    QVector<ComparedPart> m_parts;
};
