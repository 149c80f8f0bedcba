#include "pages/HomePicture.h"

#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"

#include <QLocale>
#include <QRegExp>

namespace {

bool sameText(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// A language without pictures of its own gets the English ones, and only the light ones.
QString folder(const QString& language, bool light)
{
    if (sameText(language, QStringLiteral("zh_CN")))
        return light ? QStringLiteral("default/Homing_zh_CN") : QStringLiteral("dark/Homing_zh_CN");
    if (sameText(language, QStringLiteral("en_US")) && !light)
        return QStringLiteral("dark/Homing_en_US");
    return QStringLiteral("default/Homing_en_US");
}

} // namespace

namespace HomePicture {

int numberOfMode(const QString& word)
{
    QRegExp digits(QStringLiteral("(\\d+)"), Qt::CaseSensitive, QRegExp::RegExp);
    int number = -1;
    int from = 0;
    while ((from = digits.indexIn(word, from)) != -1) {
        number = digits.cap(0).toInt(nullptr, 10);
        from += digits.matchedLength();
    }
    return number;
}

QString path(int number)
{
    const auto* settings = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::settings());
    if (!settings)
        return {};
    const QString language = settings->value(Solution::ConfigKey::language(), QLocale::system().name()).toString();
    const QString theme = settings->value(Solution::ConfigKey::theme(), Solution::ThemeName::light()).toString();
    const bool light = sameText(theme, Solution::ThemeName::light());
    return QStringLiteral(":/images/%1/Homing_%2.png")
        .arg(folder(language, light))
        .arg(number, 0, 10, QLatin1Char(' '));
}

} // namespace HomePicture
