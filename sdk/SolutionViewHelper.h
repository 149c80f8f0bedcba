#pragma once

#include "sdk/Export.h"

#include <QObject>
#include <QString>

class QUndoCommand;

namespace Solution {

/// The undo stack of the current project. Main thread only.
class KESTRUN_SDK_EXPORT ViewHelper : public QObject {
    Q_OBJECT

public:
    explicit ViewHelper(QObject* parent = nullptr);
    ~ViewHelper() override;

    /// Takes ownership and pushes the command; the push calls its redo once.
    virtual void pushCommand(QUndoCommand* command) = 0;
    /// Opens a macro: what is pushed until endMacro undoes as one. A macro that stays empty leaves no entry.
    virtual void beginMacro() = 0;
    virtual void endMacro() = 0;

signals:
    /// A model command has been undone or redone by the stack. The type is one of the texts of ModelCommandType.
    void commandExecuted(QString type, QString subModel, QString path, QString param);
};

} // namespace Solution
