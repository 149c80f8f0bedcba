#pragma once

#include "sdk/IOption.h"
#include "sdk/IOptionFactory.h"

#include <QPointer>
#include <QString>

#include <functional>

class QWidget;

/// What the page of theme and language shows, and what is done when it is applied.
struct AppearanceAccess {
    std::function<QString()> theme;
    std::function<void(const QString& theme)> setTheme;
    std::function<QString()> language;
    /// The user may decide to stay with the present language.
    std::function<void(const QString& locale)> setLanguage;
};

/// Makes the page of theme and language.
class AppearanceOptionFactory : public IOptionFactory {
public:
    explicit AppearanceOptionFactory(AppearanceAccess access);
    ~AppearanceOptionFactory() override;

    QString mimeType() override;
    QString title() override;
    IOption* createOption() override;

private:
    AppearanceAccess m_access;
};
