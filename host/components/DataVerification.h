#pragma once

#include "host/components/Export.h"
#include "host/languagecore/Types.h"

#include <QString>
#include <QVariant>

/// Checks on names, numbers and addresses. A value without data: callers may copy it. Main thread only.
class KESTRUN_COMPONENTS_EXPORT DataVerification {
public:
    static DataVerification& getInstance();

    /// An identifier of IEC 61131-3 (table 2): a letter or underscore, then letters, digits and single underscores,
    /// none at the end; at most 80 characters.
    bool isValidName(const QString& name) const;
    /// A keyword, elementary type or standard function, in any case.
    bool isKeyword(const QString& name, const QString& projectName) const;
    bool isGlobalVarTable(const QString& name, const QString& projectName) const;
    bool isPouOrFBOrFCName(const QString& name, const QString& projectName) const;
    bool isStructOrEnumName(const QString& name, const QString& projectName) const;
    bool isAxisName(const QString& name, const QString& projectName) const;
    bool isAxisGroupName(const QString& name, const QString& projectName) const;
    bool isTaskName(const QString& name, const QString& projectName) const;

    /// True when the value lies between the bounds, compared across variant types without loss. A value that is no
    /// number (nan) is refused, and so is an infinite one. The text is what the user typed; it is not changed. A
    /// refusal goes to the NumberRefusalNotifier.
    bool isValidNumber(QString& text, const QVariant& value, const QVariant& low, const QVariant& high,
        bool lowExcluded, bool highExcluded) const;

    /// A direct address such as "%IX100.0": area I, Q or M, size X, B, W, D or L, numbers in range. The flags allow
    /// bit addresses and wider ones. The text is not changed.
    bool isValidIecAddress(QString& text, bool allowBits, bool allowWords) const;
    /// True when a valid address has the width of the type: "BOOL" wants a bit.
    bool isValidAddrAndType(const QString& text, const QString& type) const;
    /// Compares with the style of the current project (cookie "Project.Name"); false without one.
    bool isProgramStyle(ac::ProgramStyle style) const;
};
