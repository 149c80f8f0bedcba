#pragma once

#include "sdk/Export.h"

#include <QtGlobal>

/// Undo, redo and clipboard of whatever has the focus in an editor. Owned by the editor's view.
class KESTRUN_SDK_EXPORT IEditContext {
public:
    IEditContext() = default;
    virtual ~IEditContext();
    Q_DISABLE_COPY(IEditContext)

    virtual bool canUndo() const = 0;
    virtual bool canRedo() const = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;
};
