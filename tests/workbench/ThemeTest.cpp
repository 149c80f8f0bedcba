#include "workbench/Theme.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>

namespace {

double channel(int value)
{
    const double c = value / 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * channel(color.red()) + 0.7152 * channel(color.green()) + 0.0722 * channel(color.blue());
}

double contrast(const QColor& a, const QColor& b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (qMax(la, lb) + 0.05) / (qMin(la, lb) + 0.05);
}

/// A page that takes its leave of everything before it goes, the style included.
class LeavingPage : public QWidget {
public:
    using QWidget::QWidget;
    ~LeavingPage() override { disconnect(); }
};

} // namespace

class ThemeTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { Theme::prepare(); }
    void textsCanBeRead_data();
    void textsCanBeRead();
    void disabledTextReadsAsDisabled_data();
    void disabledTextReadsAsDisabled();
    void theStyleSheetCoversTheStyleTypes_data();
    void theStyleSheetCoversTheStyleTypes();
    void redMeansDangerOnly_data();
    void redMeansDangerOnly();
    void theNameDecides_data();
    void theNameDecides();
    void symbolsFollowTheTheme();
    void aThemeCanBeChangedAfterPagesThatDisconnectThemselves();
};

static void themes()
{
    QTest::addColumn<bool>("light");
    QTest::addColumn<QString>("file");
    QTest::newRow("light") << true << QStringLiteral(":/workbench/themes/default.qss");
    QTest::newRow("dark") << false << QStringLiteral(":/workbench/themes/dark.qss");
}

void ThemeTest::textsCanBeRead_data()
{
    themes();
}

void ThemeTest::textsCanBeRead()
{
    QFETCH(bool, light);
    const QPalette palette = Theme::palette(light);
    const QVector<QPair<QPalette::ColorRole, QPalette::ColorRole>> pairs{ { QPalette::WindowText, QPalette::Window },
        { QPalette::Text, QPalette::Base }, { QPalette::Text, QPalette::AlternateBase },
        { QPalette::ButtonText, QPalette::Button }, { QPalette::HighlightedText, QPalette::Highlight },
        { QPalette::ToolTipText, QPalette::ToolTipBase }, { QPalette::Link, QPalette::Base } };
    for (const auto& pair : pairs)
        QVERIFY2(contrast(palette.color(pair.first), palette.color(pair.second)) >= 4.5,
            qPrintable(QString::number(pair.first)));
}

void ThemeTest::disabledTextReadsAsDisabled_data()
{
    themes();
}

void ThemeTest::disabledTextReadsAsDisabled()
{
    QFETCH(bool, light);
    const QPalette palette = Theme::palette(light);
    const QColor base = palette.color(QPalette::Disabled, QPalette::Window);
    const double enabled = contrast(palette.color(QPalette::Active, QPalette::Text), base);
    const double disabled = contrast(palette.color(QPalette::Disabled, QPalette::Text), base);
    QVERIFY(disabled < enabled / 2);
    QVERIFY(disabled > 2);
}

void ThemeTest::theStyleSheetCoversTheStyleTypes_data()
{
    themes();
}

void ThemeTest::theStyleSheetCoversTheStyleTypes()
{
    QFETCH(QString, file);
    QFile sheet(file);
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(sheet.readAll());
    for (const char* type : { "sureButton", "littleButton", "defaultButton", "commonTable", "stopButton" })
        QVERIFY2(text.contains(QStringLiteral("[styleType=\"%1\"]").arg(QLatin1String(type))), type);
    QVERIFY(text.contains(QStringLiteral("rgb(90,149,253)")));
    QRegularExpressionMatchIterator images = QRegularExpression(QStringLiteral("url\\(([^)]*)\\)")).globalMatch(text);
    while (images.hasNext()) {
        const QString image = images.next().captured(1);
        QVERIFY2(QFile::exists(image), qPrintable(image));
    }
}

void ThemeTest::redMeansDangerOnly_data()
{
    themes();
}

void ThemeTest::redMeansDangerOnly()
{
    QFETCH(QString, file);
    QFile sheet(file);
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    QRegularExpressionMatchIterator colors
        = QRegularExpression(QStringLiteral("#[0-9a-f]{6}")).globalMatch(QString::fromUtf8(sheet.readAll()));
    while (colors.hasNext()) {
        const QColor color(colors.next().captured());
        const bool reddish = color.hue() >= 0 && (color.hue() < 15 || color.hue() > 340);
        QVERIFY2(!reddish || color.saturation() < 60, qPrintable(color.name()));
    }
}

void ThemeTest::theNameDecides_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("light");
    QTest::newRow("default.qss is light") << QStringLiteral("default.qss") << true;
    QTest::newRow("dark.qss is dark") << QStringLiteral("dark.qss") << false;
    QTest::newRow("any other value is dark") << QStringLiteral("blue.qss") << false;
}

void ThemeTest::theNameDecides()
{
    QFETCH(QString, name);
    QFETCH(bool, light);
    Theme::apply(name);
    QCOMPARE(qApp->palette().color(QPalette::Window), Theme::palette(light).color(QPalette::Window));
    QVERIFY(!qApp->styleSheet().isEmpty());
}

void ThemeTest::symbolsFollowTheTheme()
{
    Theme::apply(QStringLiteral("default.qss"));
    const QIcon icon = QIcon::fromTheme(QStringLiteral("document-save"));
    QVERIFY(!icon.isNull());
    const QImage light = icon.pixmap(22).toImage();
    Theme::apply(QStringLiteral("dark.qss"));
    const QImage dark = QIcon::fromTheme(QStringLiteral("document-save")).pixmap(22).toImage();
    QVERIFY(!light.isNull() && light != dark);
}

void ThemeTest::aThemeCanBeChangedAfterPagesThatDisconnectThemselves()
{
    for (int i = 0; i < 20; ++i) {
        {
            QWidget window;
            auto* page = new LeavingPage(&window);
            new QPushButton(page);
            window.show();
            QCoreApplication::processEvents();
        }
        Theme::apply(i % 2 == 0 ? QStringLiteral("dark.qss") : QStringLiteral("default.qss"));
    }
}

QTEST_MAIN(ThemeTest)
#include "ThemeTest.moc"
