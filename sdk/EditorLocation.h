#pragma once

#include "sdk/Export.h"

#include <QMetaType>
#include <QString>
#include <QVariant>

/// A place inside an editor that a search has looked at.
struct EditorLocation {
    /// Text that stands at the place.
    QString text;
    /// Text to show for the hit.
    QString matchedText;
    /// The place, as IEditor::gotoLocation takes it: page object name, ".", control object name.
    QString location;
    /// The label of the control with the text appended, translated.
    QString label;
    /// Data of the editor's own.
    QVariant data;
    /// True: no place, the search has come to its end. False: a place.
    bool atEnd = true;
};

Q_DECLARE_METATYPE(EditorLocation)
