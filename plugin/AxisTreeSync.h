#pragma once

#include "plugin/AxisTreeState.h"

class QString;

/// Brings the tree back in step with the model after the undo stack has undone or redone a model command. Ends
/// silently where the view, the project or the record is missing. Main thread.
class AxisTreeSync {
public:
    explicit AxisTreeSync(const AxisTreeState& state);

    /// The arguments are those of Solution::ViewHelper::commandExecuted. Commands on other sub-models, and types that
    /// are not of sdk/ModelCommandType.h, leave the tree alone.
    void follow(const QString& type, const QString& subModel, const QString& path, const QString& param) const;

private:
    AxisTreeState m_state;
};
