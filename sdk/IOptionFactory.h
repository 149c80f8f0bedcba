#pragma once

#include "sdk/Export.h"

#include <QtGlobal>

#include <QString>

class IOption;

/// Makes a page of the options dialog.
class KESTRUN_SDK_EXPORT IOptionFactory {
public:
    IOptionFactory() = default;
    virtual ~IOptionFactory();
    Q_DISABLE_COPY(IOptionFactory)

    virtual QString mimeType() = 0;
    virtual QString title() = 0;
    /// A new page that the caller owns.
    virtual IOption* createOption() = 0;
};
