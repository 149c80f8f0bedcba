#pragma once

#include "host/components/Export.h"

#include <QDialog>
#include <QString>
#include <QStringList>

class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

/// The variable picker: the project's variables by path, with type and comment, and a filter field. A modal dialog.
/// From the filter field the arrow keys move through the list and Return chooses.
class KESTRUN_COMPONENTS_EXPORT TypeAssistant : public QDialog {
    Q_OBJECT

public:
    /// Modes of the picker.
    enum Mode : char {
        AllVariables = 1,
        /// Boolean variables with a path of two segments at least.
        BooleanVariables = 2
    };

    /// The preset is the path to start on, or empty. A mode that is not known lists all variables.
    TypeAssistant(const QString& projectName, char mode, const QString& preset, QWidget* parent);
    ~TypeAssistant() override;

    /// The chosen paths after exec has returned Accepted; empty when none was chosen.
    QStringList chosenTexts;

    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildForm();
    void fill();
    void filter(const QString& text);
    void select(const QString& path);
    void updateState();
    bool moveIntoList(const QKeyEvent& event);
    QTreeWidgetItem* firstShown() const;

    QString m_projectName;
    char m_mode;
    QLineEdit* m_filter;
    QTreeWidget* m_tree;
    QLabel* m_count;
    QPushButton* m_ok;
};
