#include "workbench/Theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QToolBar>
#include <QToolButton>
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
    void whatHasNoRoomInAToolBarHasAButton();
    void aThemeCanBeChangedAfterPagesThatDisconnectThemselves();
    void anActiveButtonCanBeRead_data();
    void anActiveButtonCanBeRead();
    void shownValuesCanBeRead_data();
    void shownValuesCanBeRead();
    void fixedSizesStay_data();
    void fixedSizesStay();
    void anEmptyBoxStandsOut_data();
    void anEmptyBoxStandsOut();
    void aDisabledPictureFadesIntoItsPage_data();
    void aDisabledPictureFadesIntoItsPage();
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

/// The strongest contrast of any pixel in the picture with the ground.
static double strongest(const QImage& image, const QColor& ground)
{
    double most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            most = qMax(most, contrast(image.pixelColor(x, y), ground));
    }
    return most;
}

/// Through every change of the theme.
void ThemeTest::whatHasNoRoomInAToolBarHasAButton()
{
    QToolBar bar;
    for (const char* symbol : { "document-new", "document-open", "document-save", "edit-undo", "edit-redo" })
        bar.addAction(QIcon::fromTheme(QLatin1String(symbol)), QString());
    bar.show();
    bar.resize(bar.minimumSizeHint());
    auto* more = bar.findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
    QVERIFY(more);
    QTRY_VERIFY(more->isVisible());
    for (const char* name : { "dark.qss", "default.qss", "dark.qss" }) {
        Theme::apply(QLatin1String(name));
        QCoreApplication::processEvents();
        const QImage shown = more->grab().toImage();
        QVERIFY2(strongest(shown, shown.pixelColor(0, 0)) > 3, name);
    }
}

void ThemeTest::anActiveButtonCanBeRead_data()
{
    themes();
}

void ThemeTest::anActiveButtonCanBeRead()
{
    QFETCH(QString, file);
    Theme::apply(file.section(QLatin1Char('/'), -1));
    QPushButton button(QStringLiteral("Enter debugging"));
    button.setProperty("styleType", QStringLiteral("defaultButton"));
    button.setStyleSheet(QStringLiteral("background-color: rgb(90,149,253)"));
    button.resize(120, 30);
    button.ensurePolished();
    QVERIFY(contrast(button.palette().color(QPalette::ButtonText), QColor(90, 149, 253)) >= 4.5);
    // What is painted, without the frame.
    const QImage image = button.grab(QRect(4, 4, 112, 22)).toImage();
    QCOMPARE(image.pixelColor(0, 0), QColor(90, 149, 253));
    const double most = strongest(image, QColor(90, 149, 253));
    QVERIFY2(most >= 4.5, qPrintable(QString::number(most)));
}

void ThemeTest::shownValuesCanBeRead_data()
{
    themes();
}

void ThemeTest::shownValuesCanBeRead()
{
    QFETCH(bool, light);
    QFETCH(QString, file);
    Theme::apply(file.section(QLatin1Char('/'), -1));
    QLineEdit field(QStringLiteral("StandStill"));
    field.setReadOnly(true);
    field.setEnabled(false);
    field.ensurePolished();
    const QColor ground = Theme::palette(light).color(QPalette::Window);
    QVERIFY(contrast(field.palette().color(QPalette::Disabled, QPalette::Text), ground) >= 4.5);
}

void ThemeTest::fixedSizesStay_data()
{
    themes();
}

void ThemeTest::fixedSizesStay()
{
    QFETCH(QString, file);
    Theme::apply(file.section(QLatin1Char('/'), -1));
    QPushButton button(QStringLiteral("Go"));
    button.setProperty("styleType", QStringLiteral("defaultButton"));
    button.setFixedSize(100, 40);
    button.show();
    QCOMPARE(button.minimumSize(), QSize(100, 40));
    QCOMPARE(button.maximumSize(), QSize(100, 40));
}

void ThemeTest::anEmptyBoxStandsOut_data()
{
    themes();
}

void ThemeTest::anEmptyBoxStandsOut()
{
    QFETCH(bool, light);
    QFETCH(QString, file);
    Theme::apply(file.section(QLatin1Char('/'), -1));
    QWidget window;
    QCheckBox box(&window);
    window.show();
    box.adjustSize();
    QVERIFY(strongest(box.grab().toImage(), Theme::palette(light).color(QPalette::Window)) >= (light ? 1.5 : 3.0));
    box.setChecked(true);
    QVERIFY(strongest(box.grab().toImage(), Theme::palette(light).color(QPalette::Window)) >= 4.5);
}

void ThemeTest::aDisabledPictureFadesIntoItsPage_data()
{
    themes();
}

void ThemeTest::aDisabledPictureFadesIntoItsPage()
{
    QFETCH(bool, light);
    Theme::apply(light ? QStringLiteral("default.qss") : QStringLiteral("dark.qss"));
    const QColor page = Theme::palette(light).color(QPalette::Window);
    QPixmap picture(40, 20);
    picture.fill(page);
    QWidget window;
    window.resize(60, 40);
    QLabel label(&window);
    label.setPixmap(picture);
    label.resize(40, 20);
    const auto shown = [&] { return window.grab().toImage().pixelColor(20, 10); };
    QCOMPARE(shown(), page);
    label.setEnabled(false);
    QVERIFY2(contrast(shown(), page) < 1.05, "a picture in the colour of the page stays so");
    picture.fill(Theme::palette(light).color(QPalette::Text));
    label.setPixmap(picture);
    QVERIFY2(contrast(shown(), page) > 1.5, "what stands out can still be seen");
    label.setEnabled(true);
    const double enabled = contrast(shown(), page);
    label.setEnabled(false);
    QVERIFY2(contrast(shown(), page) < enabled / 2, "but less than before");
    Theme::apply(QStringLiteral("default.qss"));
}

QTEST_MAIN(ThemeTest)
#include "ThemeTest.moc"
