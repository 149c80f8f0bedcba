#include "workbench/MainWindowActions.h"

#include <QCoreApplication>

QList<QKeySequence> ActionEntry::shortcuts() const
{
    if (standardKey == QKeySequence::UnknownKey)
        return { QKeySequence(QLatin1String(key)) };
    const QList<QKeySequence> bindings = QKeySequence::keyBindings(standardKey);
    return bindings.isEmpty() ? QList<QKeySequence>{ QKeySequence(QLatin1String(key)) } : bindings;
}

const std::vector<ActionEntry>& mainWindowActions()
{
    static const std::vector<ActionEntry> actions{
        { "file.new", QT_TRANSLATE_NOOP("MainWindow", "&New project…"), "document-new", false, QKeySequence::New, "" },
        { "file.open", QT_TRANSLATE_NOOP("MainWindow", "&Open project…"), "document-open", false, QKeySequence::Open,
            "" },
        { "file.save", QT_TRANSLATE_NOOP("MainWindow", "&Save"), "document-save", true, QKeySequence::Save, "" },
        { "file.saveAll", QT_TRANSLATE_NOOP("MainWindow", "Save a&ll"), "document-save-all", true,
            QKeySequence::UnknownKey, "Ctrl+Shift+S" },
        { "file.saveAs", QT_TRANSLATE_NOOP("MainWindow", "Save project &as…"), "document-save-as", true,
            QKeySequence::UnknownKey, "" },
        { "file.closeEditor", QT_TRANSLATE_NOOP("MainWindow", "Close &editor"), "document-close", false,
            QKeySequence::UnknownKey, "Ctrl+W" },
        { "file.closeProject", QT_TRANSLATE_NOOP("MainWindow", "&Close project"), "window-close", true,
            QKeySequence::UnknownKey, "" },
        { "file.quit", QT_TRANSLATE_NOOP("MainWindow", "&Quit"), "application-exit", false, QKeySequence::Quit,
            "Ctrl+Q" },
        { "edit.undo", QT_TRANSLATE_NOOP("MainWindow", "&Undo"), "edit-undo", false, QKeySequence::Undo, "" },
        { "edit.redo", QT_TRANSLATE_NOOP("MainWindow", "&Redo"), "edit-redo", false, QKeySequence::Redo, "" },
        { "edit.find", QT_TRANSLATE_NOOP("MainWindow", "&Find…"), "edit-find", true, QKeySequence::Find, "Ctrl+F" },
        { "edit.findNext", QT_TRANSLATE_NOOP("MainWindow", "Find &next"), "go-down-search", true,
            QKeySequence::FindNext, "F3" },
        { "edit.findPrevious", QT_TRANSLATE_NOOP("MainWindow", "Find &previous"), "go-up-search", true,
            QKeySequence::FindPrevious, "Shift+F3" },
        { "edit.findReferences", QT_TRANSLATE_NOOP("MainWindow", "Find re&ferences"), "edit-find-project", true,
            QKeySequence::UnknownKey, "Shift+F12" },
        { "project.compare", QT_TRANSLATE_NOOP("MainWindow", "Compare &with project…"), "vcs-diff", true,
            QKeySequence::UnknownKey, "" },
        { "project.closeComparison", QT_TRANSLATE_NOOP("MainWindow", "Close c&omparison"), "view-close", false,
            QKeySequence::UnknownKey, "" },
        { "project.controller", QT_TRANSLATE_NOOP("MainWindow", "&Change controller…"), "preferences-devices-cpu", true,
            QKeySequence::UnknownKey, "" },
        { "online.connect", QT_TRANSLATE_NOOP("MainWindow", "&Connect to the built-in controller"), "network-connect",
            true, QKeySequence::UnknownKey, "Ctrl+Shift+C" },
        { "online.connectTo", QT_TRANSLATE_NOOP("MainWindow", "Connect to an &address…"), "network-server", true,
            QKeySequence::UnknownKey, "" },
        { "online.disconnect", QT_TRANSLATE_NOOP("MainWindow", "&Disconnect"), "network-disconnect", false,
            QKeySequence::UnknownKey, "" },
        { "online.takeOver", QT_TRANSLATE_NOOP("MainWindow", "Compare and &take axes over…"), "edit-download", false,
            QKeySequence::UnknownKey, "" },
        { "online.stop", QT_TRANSLATE_NOOP("MainWindow", "&STOP all axes in debug mode"), "process-stop", false,
            QKeySequence::UnknownKey, "F9" },
        { "online.release", QT_TRANSLATE_NOOP("MainWindow", "&Release STOP"), "object-unlocked", false,
            QKeySequence::UnknownKey, "" },
        { "tools.options", QT_TRANSLATE_NOOP("MainWindow", "&Options…"), "configure", false, QKeySequence::UnknownKey,
            "Ctrl+," },
        { "tools.plugins", QT_TRANSLATE_NOOP("MainWindow", "&Plug-ins…"), "plugins", false, QKeySequence::UnknownKey,
            "" },
        { "help.about", QT_TRANSLATE_NOOP("MainWindow", "&About Kestrun"), "help-about", false,
            QKeySequence::UnknownKey, "" },
    };
    return actions;
}

const std::vector<MenuEntry>& mainMenus()
{
    static const std::vector<MenuEntry> menus{
        { "fileMenu", QT_TRANSLATE_NOOP("MainWindow", "&File"),
            { "file.new", "file.open", "file.recent", nullptr, "file.save", "file.saveAll", "file.saveAs", nullptr,
                "file.closeEditor", "file.closeProject", nullptr, "file.quit" } },
        { "editMenu", QT_TRANSLATE_NOOP("MainWindow", "&Edit"),
            { "edit.undo", "edit.redo", nullptr, "edit.find", "edit.findNext", "edit.findPrevious",
                "edit.findReferences" } },
        { "viewMenu", QT_TRANSLATE_NOOP("MainWindow", "&View"), {} },
        { "projectMenu", QT_TRANSLATE_NOOP("MainWindow", "&Project"),
            { "project.controller", nullptr, "project.compare", "project.closeComparison" } },
        { "onlineMenu", QT_TRANSLATE_NOOP("MainWindow", "&Online"),
            { "online.connect", "online.connectTo", "online.disconnect", nullptr, "online.takeOver", nullptr,
                "online.stop", "online.release" } },
        { "toolsMenu", QT_TRANSLATE_NOOP("MainWindow", "&Tools"), { "tools.options", "tools.plugins" } },
        { "helpMenu", QT_TRANSLATE_NOOP("MainWindow", "&Help"), { "help.about" } },
    };
    return menus;
}

const std::vector<const char*>& mainToolBar()
{
    static const std::vector<const char*> names{ "file.new", "file.open", "file.save", "file.saveAll", nullptr,
        "edit.undo", "edit.redo", nullptr, "project.controller", nullptr, "online.connect", "online.disconnect",
        nullptr, "tools.options" };
    return names;
}

QString translatedActionText(const char* text)
{
    return QCoreApplication::translate("MainWindow", text);
}
