#pragma once

#include "tests/editor/UnitPage.h"
#include "tests/support/NumberTyping.h"

/// The fields of the unit page that show the text of their key, as a test of its own knows them.
struct UnitPageField {
    const char* name;
    const char* key;
    /// A real from 0.01 to 9999999, or else a whole number from 1 to 2147483647.
    bool real;
};

inline const UnitPageField unitPageFields[] = {
    { "lineEdit_2", "UnUseGearValue", true },
    { "lineEdit_3", "UseGearValue", true },
    { "lineEdit_4", "GearRatioMolecule", false },
    { "lineEdit_5", "GearRatioParent", false },
};

/// Types into a field of the page and leaves it for the first check box.
inline void typeAndLeave(UnitPage& page, const char* name, const QString& text)
{
    NumberTyping::replace(page.edit(name), text);
    page.button("checkBox_Reverse")->setFocus(Qt::TabFocusReason);
}
