#include "tests/support/PageLooks.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTest>
#include <QTranslator>

namespace {

/// A round that does not close ends here.
constexpr int longestRound = 100;

bool holdsText(const QWidget* widget)
{
    if (widget->objectName().startsWith(QLatin1String("qt_")))
        return false;
    if (const auto* const label = qobject_cast<const QLabel*>(widget))
        return !label->pixmap();
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QComboBox*>(widget)
        || qobject_cast<const QLineEdit*>(widget);
}

int widthOf(const QWidget* widget, const QString& text)
{
    return widget->fontMetrics().horizontalAdvance(text);
}

bool showsItsEntries(const QComboBox* box)
{
    QStyleOptionComboBox option;
    option.initFrom(box);
    const QRect field = box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
    for (int i = 0; i < box->count(); ++i)
        if (widthOf(box, box->itemText(i)) > field.width())
            return false;
    return true;
}

/// Where the text of a field stands, inside of its frame and padding.
QRect contentsOf(const QLineEdit* edit)
{
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.lineWidth = edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit);
    return edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit);
}

bool isWideEnough(const QWidget* widget, const QString& longestNumber)
{
    if (const auto* const box = qobject_cast<const QComboBox*>(widget))
        return showsItsEntries(box);
    if (const auto* const edit = qobject_cast<const QLineEdit*>(widget))
        return widthOf(edit, longestNumber) <= contentsOf(edit).width();
    return widget->width() >= widget->minimumSizeHint().width();
}

bool isHighEnough(const QWidget* widget)
{
    if (const auto* const edit = qobject_cast<const QLineEdit*>(widget))
        return edit->fontMetrics().height() <= contentsOf(edit).height();
    return widget->height() >= widget->minimumSizeHint().height();
}

} // namespace

WorkbenchLooks::WorkbenchLooks(const QString& sheet, const QString& language)
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("Noto Sans"), 10));
    if (!sheet.isEmpty()) {
        QFile file(QStringLiteral(KESTRUN_SOURCE_DIR "/workbench/themes/") + sheet);
        if (!file.open(QFile::ReadOnly))
            qFatal("no style sheet %s", qPrintable(file.fileName()));
        qApp->setStyleSheet(QString::fromUtf8(file.readAll()));
    }
    if (language != QLatin1String("en")) {
        m_translator = std::make_unique<QTranslator>();
        const QString file
            = QStringLiteral(KESTRUN_BUILD_DIR "/bin/plugins/motioncontrol.axis.plugin_%1.qm").arg(language);
        if (!m_translator->load(file))
            qFatal("no translations %s", qPrintable(file));
        QCoreApplication::installTranslator(m_translator.get());
    }
}

WorkbenchLooks::~WorkbenchLooks()
{
    if (!qApp->styleSheet().isEmpty())
        qApp->setStyleSheet(QString());
}

QStringList cutOffControls(const QWidget& page, const QString& longestNumber)
{
    QStringList wrong;
    const QList<QWidget*> widgets = page.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (!widget->isVisible() || !holdsText(widget))
            continue;
        if (!isWideEnough(widget, longestNumber))
            wrong.append(widget->objectName() + QStringLiteral(" is too narrow"));
        if (!isHighEnough(widget))
            wrong.append(widget->objectName() + QStringLiteral(" is too low"));
        if (!widget->parentWidget()->rect().contains(widget->geometry()))
            wrong.append(widget->objectName() + QStringLiteral(" sticks out"));
    }
    return wrong;
}

QStringList tabRound(QWidget* first)
{
    first->setFocus(Qt::TabFocusReason);
    QStringList names;
    do {
        names.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && names.size() < longestRound);
    return names;
}
