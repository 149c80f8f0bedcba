#pragma once

#include "sdk/IObject.h"

#include <QIcon>

class QWidget;

/// Something that shows itself in a widget and under a name.
class KESTRUN_SDK_EXPORT IView : public IObject {
    Q_OBJECT

public:
    explicit IView(QObject* parent = nullptr);
    ~IView() override;

    /// The widget to show. The view keeps ownership, whoever becomes its parent meanwhile.
    virtual QWidget* widget() = 0;
    /// The title of the view as a user reads it.
    virtual QString displayName() = 0;
    /// An icon for the title; by default none.
    virtual QIcon icon();
};
