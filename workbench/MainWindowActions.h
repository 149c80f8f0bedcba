#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <vector>

/// One action of the main window. Texts are translated in the context "MainWindow".
struct ActionEntry {
    const char* name;
    const char* text;
    /// Name in the icon theme.
    const char* symbol;
    /// Only while a project is open.
    bool needsProject;
    QKeySequence::StandardKey standardKey;
    /// Used when there is no standard key.
    const char* key;

    QList<QKeySequence> shortcuts() const;
};

/// One menu with the names of its actions; a null name is a separator.
struct MenuEntry {
    const char* name;
    const char* title;
    std::vector<const char*> actions;
};

const std::vector<ActionEntry>& mainWindowActions();
const std::vector<MenuEntry>& mainMenus();
/// The names of the actions on the tool bar; a null name is a separator.
const std::vector<const char*>& mainToolBar();
QString translatedActionText(const char* text);
