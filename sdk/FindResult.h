#pragma once

#include "sdk/Export.h"

#include <QMetaType>
#include <QString>

/// One use of a variable, as finders and editors report it to the host's list of references.
struct FindResult {
    /// Editor type key of the object that holds the use.
    QString typeKey;
    /// Tree path of the object.
    QString nodePath;
    /// Name of the object as a user reads it.
    QString objectName;
    /// The text that names the variable.
    QString text;
    /// The text again, as it is to be shown.
    QString matchedText;
    /// IEC name of the data type, such as "BOOL".
    QString dataType;
    /// Where in the program the use stands; unused by objects that are no programs.
    QString section;
    /// How the variable is used (read, written); unused by objects that are no programs.
    QString access;
    /// The label of the control with the text appended, translated.
    QString label;
    /// The place, as IEditor::gotoLocation takes it.
    QString location;
    /// Kind of the result: -1 for none, 1 for a control of an editor.
    qint32 kind = -1;
};

Q_DECLARE_METATYPE(FindResult)
