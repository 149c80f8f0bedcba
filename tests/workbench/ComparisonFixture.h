#pragma once

#include "tests/workbench/RunningProgram.h"
#include "workbench/ComparisonPanel.h"
#include "workbench/ProjectComparison.h"

#include <QTreeView>

#include <memory>

/// The whole program with a project Line of the axes Feed, Turn and Press. Base of the comparison's tests.
class ComparisonFixture {
protected:
    /// Around each test.
    void start()
    {
        program = std::make_unique<RunningProgram>();
        program->create(
            QStringLiteral("Line"), { QStringLiteral("Feed"), QStringLiteral("Turn"), QStringLiteral("Press") });
    }
    void stop() { program.reset(); }

    static QByteArray stateName(ComparedAxis::State state)
    {
        switch (state) {
        case ComparedAxis::Equal:
            return "equal";
        case ComparedAxis::Different:
            return "different";
        case ComparedAxis::OnlyHere:
            return "only here";
        case ComparedAxis::OnlyThere:
            break;
        }
        return "only there";
    }
    ProjectComparison& comparison() const { return program->workbench->comparison(); }
    bool compare(const QString& file) const { return program->workbench->comparisonFlows().compare(file); }
    QMap<QString, QByteArray> states() const
    {
        QMap<QString, QByteArray> states;
        for (const ComparedAxis& axis : comparison().axes())
            states.insert(axis.name, stateName(axis.state));
        return states;
    }
    ComparisonPanel& panel() const { return program->workbench->window().comparison(); }
    QTreeView* tree(const char* name) const { return panel().findChild<QTreeView*>(QLatin1String(name)); }
    QModelIndex cell(int row, int column) const
    {
        const QAbstractItemModel* model = tree("here")->model();
        return model->index(row, column, model->index(0, 0));
    }
    QString rootState() const { return tree("here")->model()->index(0, 1).data().toString(); }

    std::unique_ptr<RunningProgram> program;
};
