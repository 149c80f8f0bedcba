#pragma once

#include "sdk/Export.h"

#include <QtGlobal>

#include <QString>

class QWidget;

/// One page of the options dialog.
class KESTRUN_SDK_EXPORT IOption {
public:
    IOption() = default;
    virtual ~IOption();
    Q_DISABLE_COPY(IOption)

    /// The page; the dialog becomes its parent.
    virtual QWidget* widget() = 0;
    /// Takes the values of the page over.
    virtual void apply() = 0;
};
