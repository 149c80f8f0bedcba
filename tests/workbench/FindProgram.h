#pragma once

#include "host/projectmodel/SourceModel.h"
#include "tests/workbench/RunningProgram.h"
#include "workbench/FindPanel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

/// The whole program, worked through its find panel.
class FindProgram : public RunningProgram {
public:
    FindPanel& panel() const { return workbench->window().find(); }
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return panel().findChild<Widget*>(QLatin1String(name));
    }
    EditorManager& editors() const { return workbench->editors(); }
    QString currentAxis() const
    {
        IEditor* editor = editors().currentEditor();
        return editor ? editor->displayName() : QString();
    }
    static QString focus()
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }

    /// Adds an axis whose positive limit has that pin.
    AxisTable* addAxis(const QString& name, const QString& pin) const
    {
        AxisTable* axis = project()->axisModel()->addAxisTable(name);
        axis->setProperty(QStringLiteral("PosLimitEnable"), QStringLiteral("TRUE"));
        axis->setProperty(QStringLiteral("PosLimitPin"), pin);
        workbench->workspace().showAnew();
        return axis;
    }
    void save() const
    {
        QString error;
        QVERIFY2(project()->save(&error), qPrintable(error));
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(&workbench->window(), Qt::Key(key), modifiers);
    }
    void search(const QString& what) const
    {
        child<QLineEdit>("text")->setText(what);
        QTest::mouseClick(child<QPushButton>("find"), Qt::LeftButton);
    }
    void findReferences(const QString& variable) const
    {
        child<QLineEdit>("variable")->setText(variable);
        QTest::mouseClick(child<QPushButton>("references"), Qt::LeftButton);
    }
    QStringList results() const
    {
        QStringList results;
        const auto* list = child<QTreeWidget>("results");
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            const QTreeWidgetItem* item = list->topLevelItem(row);
            results.append(QString(item->text(0) + QLatin1Char(' ') + item->text(1)));
        }
        return results;
    }
    QString status() const { return child<QLabel>("status")->text(); }
};
