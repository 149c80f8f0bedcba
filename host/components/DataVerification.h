#pragma once

#include "host/components/Export.h"
#include "host/languagecore/Types.h"

#include <QString>
#include <QVariant>

/// Checks on names, numbers and addresses. A value without data: callers may copy it. Main thread only.
///
/// The tests of kinds of names compare without regard to case and are false for a project that is not open.
class KESTRUN_COMPONENTS_EXPORT DataVerification {
public:
    static DataVerification& getInstance();

    /// An identifier of IEC 61131-3 (table 2): a letter or underscore, then letters, digits and single underscores,
    /// none at the end; ASCII only; at most 80 characters.
    bool isValidName(const QString& name) const;
    /// A keyword, elementary type or standard function, in any case. The project is not read.
    bool isKeyword(const QString& name, const QString& projectName) const;
    /// A named list of global variables.
    bool isGlobalVarTable(const QString& name, const QString& projectName) const;
    /// A program, function block or function, of the project or of the system library.
    bool isPouOrFBOrFCName(const QString& name, const QString& projectName) const;
    /// A structure, enumeration or other named type, of the project or of the system library.
    bool isStructOrEnumName(const QString& name, const QString& projectName) const;
    bool isAxisName(const QString& name, const QString& projectName) const;
    /// A variable of the type AXES_GROUP_REF, which is how a program declares a group of axes.
    bool isAxisGroupName(const QString& name, const QString& projectName) const;
    /// A TASK of a configuration.
    bool isTaskName(const QString& name, const QString& projectName) const;

    /// True when the value lies between the bounds, which belong to the range unless they are excluded. Numbers of any
    /// variant type compare by their exact value: an unsigned 4294967295 is above a signed 150, and no integer is
    /// rounded on its way to a double. A value that is no number is refused (nan, infinity, a variant that holds no
    /// number), and so is any value where a bound is nan or no number; an infinite bound bounds nothing. The text is
    /// what the user typed; it goes to the notifier with a refusal, and is neither read here nor changed. A refusal
    /// goes to the NumberRefusalNotifier.
    bool isValidNumber(QString& text, const QVariant& value, const QVariant& low, const QVariant& high,
        bool lowExcluded, bool highExcluded) const;

    /// A direct address: "%", area I, Q or M, size X, B, W, D or L, in any case, and a number from 0 to 2147483647.
    /// A bit (X) has the number of its byte, a point and the bit from 0 to 7, as in "%IX100.0"; the wider sizes have no
    /// point. Leading zeros are read over, blanks are refused. The flags allow bit addresses and wider ones. The text
    /// is not changed.
    bool isValidIecAddress(QString& text, bool allowBits, bool allowWords) const;
    /// True when a valid address has the width of the elementary type: "BOOL" wants a bit, "INT" a word. False for a
    /// type without a fixed width.
    bool isValidAddrAndType(const QString& text, const QString& type) const;
    /// Compares with the style of the current project (cookie "Project.Name"); false without one.
    bool isProgramStyle(ac::ProgramStyle style) const;
};
