#pragma once

#include "plugin/AxisTreeState.h"

/// Brings the axes of the current project into line with another controller: corrects the records, removes the axes
/// that cannot exist on it with their nodes, and refreshes open editors. Asks nothing, shows nothing, saves nothing and
/// leaves no undo entry. Main thread.
class ControllerChange {
public:
    explicit ControllerChange(const AxisTreeState& state);

    /// Does nothing when the project, its axes, the editor manager or the view is missing.
    void apply() const;

private:
    AxisTreeState m_state;
};
