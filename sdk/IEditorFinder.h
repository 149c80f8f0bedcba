#pragma once

#include "sdk/EditorLocation.h"
#include "sdk/Export.h"
#include "sdk/FindResult.h"

#include <QVector>

/// Flags of IEditorFinder::setFindFlags. Bits that are not named are ignored.
enum FindFlag { FindWholeWord = 2, FindCaseSensitive = 4, FindBackwards = 16 };

/// Searches the texts of one object. Order of use: bindNode, setFindFlags, setStartPosition, setEndPosition, then
/// findNext and result until result().atEnd. The caller owns the finder. Main thread only.
class KESTRUN_SDK_EXPORT IEditorFinder {
public:
    IEditorFinder() = default;
    virtual ~IEditorFinder();
    Q_DISABLE_COPY(IEditorFinder)

    virtual QString typeKey() = 0;
    virtual QString nodePath() = 0;
    /// Binds the finder to a node. False without a host.
    virtual bool bindNode(const QString& path) = 0;
    virtual void setFindFlags(int flags) = 0;
    /// The place where the user is in the current editor, or an empty text.
    virtual QString currentPosition() = 0;
    virtual QString optionText();
    virtual QString startPosition() = 0;
    /// Sets the place to start from; an empty text starts at the first one.
    virtual void setStartPosition(const QString& position) = 0;
    virtual QString endPosition() = 0;
    /// Sets the place to end before.
    virtual void setEndPosition(const QString& position) = 0;
    /// Looks for the text from the present place on. True: result() tells the hit or the end. False: unreadable.
    virtual bool findNext(const QString& text) = 0;
    virtual EditorLocation result() = 0;
    virtual bool optionCheckA() = 0;
    virtual bool optionCheckB() = 0;
    virtual bool optionCheckC() = 0;
    /// Appends the uses of the variable of that path.
    virtual bool findReferences(const QString& path, QVector<FindResult>& results) = 0;
    virtual bool optionCheckD();
    virtual bool optionCheckE();
};
