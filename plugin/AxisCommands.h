#pragma once

#include "plugin/AxisTreeState.h"

class AxisModel;
class AxisTable;
class QString;

namespace Solution {
class View;
}

/// The commands of the tree's menus: each changes the axes and the tree together and leaves an undo entry. They ask
/// the user by modal dialogs, tell what went wrong by a message, and end silently where the host, a service, the
/// project or the record is missing. Main thread.
class AxisCommands {
public:
    explicit AxisCommands(const AxisTreeState& state);

    /// Asks for a name, adds an axis with its node below the current one, and opens its editor.
    void addNew();
    /// Asks, then deletes the axis of the current node.
    void deleteCurrent();
    /// Asks, then deletes all axes below the current node as one undo entry.
    void deleteAll();
    /// Asks for another name for the axis of the current node and closes its editor.
    void renameCurrent();

private:
    void add(const QString& name, IApplication* application, Solution::View* view) const;
    void showNew(AxisTable& axis, AxisModel& model, IApplication* application, Solution::View& view) const;
    void rename(
        AxisTable& axis, AxisModel& model, Solution::View& view, const QString& oldName, const QString& newName) const;

    AxisTreeState m_state;
};
