#include "workbench/Theme.h"

#include "sdk/ServiceKeys.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QToolTip>

// Resources of a static library have to be named, or the linker leaves them out; the macro wants the global scope.
static void initializeResources()
{
    Q_INIT_RESOURCE(workbench);
}

namespace {

struct Colors {
    QRgb window, base, alternate, text, faint, button, border, highlight, highlightedText, link, tip;
};

const Colors lightColors{ 0xfff3f5f8, 0xffffffff, 0xfff7f9fb, 0xff1f2733, 0xff8b95a3, 0xffffffff, 0xffc3cbd6,
    0xff5a95fd, 0xff0a1830, 0xff2360c4, 0xffffffff };
const Colors darkColors{ 0xff23272e, 0xff1b1f25, 0xff20242b, 0xffe3e7ed, 0xff727c8a, 0xff2d323b, 0xff474f5c, 0xff5a95fd,
    0xff0a1830, 0xff84b0ff, 0xff2d323b };

void setRole(QPalette& palette, QPalette::ColorRole role, QRgb color, QRgb disabled)
{
    palette.setColor(QPalette::Active, role, QColor::fromRgb(color));
    palette.setColor(QPalette::Inactive, role, QColor::fromRgb(color));
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(disabled));
}

/// Dims the symbols of what cannot be used. The style's own way leaves bright symbols on a dark ground as they are.
class DimmingStyle : public QProxyStyle {
public:
    DimmingStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) { }

    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap, const QStyleOption* option) const override
    {
        if (mode != QIcon::Disabled)
            return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
        QPixmap dimmed(pixmap.size());
        dimmed.setDevicePixelRatio(pixmap.devicePixelRatio());
        dimmed.fill(Qt::transparent);
        QPainter painter(&dimmed);
        painter.setOpacity(0.4);
        painter.drawPixmap(0, 0, pixmap);
        return dimmed;
    }
};

} // namespace

namespace Theme {

bool isLight(const QString& name)
{
    return name == Solution::ThemeName::light();
}

QPalette palette(bool light)
{
    const Colors& c = light ? lightColors : darkColors;
    QPalette palette;
    setRole(palette, QPalette::Window, c.window, c.window);
    setRole(palette, QPalette::Base, c.base, c.window);
    setRole(palette, QPalette::AlternateBase, c.alternate, c.window);
    setRole(palette, QPalette::Button, c.button, c.window);
    setRole(palette, QPalette::Mid, c.border, c.border);
    setRole(palette, QPalette::Dark, c.border, c.border);
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText })
        setRole(palette, role, c.text, c.faint);
    setRole(palette, QPalette::PlaceholderText, c.faint, c.faint);
    setRole(palette, QPalette::ToolTipBase, c.tip, c.tip);
    setRole(palette, QPalette::Highlight, c.highlight, c.border);
    setRole(palette, QPalette::HighlightedText, c.highlightedText, c.text);
    setRole(palette, QPalette::Link, c.link, c.faint);
    return palette;
}

void prepare()
{
    initializeResources();
    QApplication::setStyle(new DimmingStyle);
    QFont font(QStringLiteral("Noto Sans"), 10);
    QFont::insertSubstitutions(QStringLiteral("Noto Sans"),
        { QStringLiteral("Noto Sans CJK SC"), QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif") });
    font.setStyleHint(QFont::SansSerif);
    QApplication::setFont(font);
    QStringList paths = QIcon::themeSearchPaths();
    if (!paths.contains(QStringLiteral("/usr/share/icons")))
        paths.append(QStringLiteral("/usr/share/icons"));
    QIcon::setThemeSearchPaths(paths);
}

void apply(const QString& name)
{
    const bool light = isLight(name);
    QIcon::setThemeName(light ? QStringLiteral("breeze") : QStringLiteral("breeze-dark"));
    QApplication::setPalette(palette(light));
    QToolTip::setPalette(palette(light));
    QFile sheet(QString(
        QStringLiteral(":/workbench/themes/") + (light ? Solution::ThemeName::light() : Solution::ThemeName::dark())));
    if (!sheet.open(QIODevice::ReadOnly))
        return;
    // Without a sheet in between, the new one is put on every widget that the style remembers. The style learns of a
    // widget's end by a signal, and a page that disconnects itself from everything before it goes keeps it from that.
    qApp->setStyleSheet(QString());
    qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

} // namespace Theme
