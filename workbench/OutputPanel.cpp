#include "workbench/OutputPanel.h"

#include "host/components/PlainToolTip.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTime>

namespace {

constexpr int maximumLines = 5000;

enum Column { TimeColumn, OriginColumn, TextColumn };

QString symbolOf(LogLevel level)
{
    switch (level) {
    case LogError:
        return QStringLiteral("dialog-error");
    case LogWarning:
        return QStringLiteral("dialog-warning");
    case LogInfo:
        break;
    }
    return QStringLiteral("dialog-information");
}

} // namespace

OutputPanel::OutputPanel(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("outputPanel"));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setAllColumnsShowFocus(true);
    setFrameShape(NoFrame);
    setIconSize({ 16, 16 });
    header()->setStretchLastSection(true);
    retranslate();
    setColumnWidth(TimeColumn, 112);
    setColumnWidth(OriginColumn, 176);
    // New lines, a lower panel and a theme with higher rows alike move the end.
    QScrollBar* bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_atEnd = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar] {
        if (m_atEnd)
            bar->setValue(bar->maximum());
    });
}

OutputPanel::~OutputPanel() = default;

void OutputPanel::retranslate()
{
    setHeaderLabels({ tr("Time"), tr("Origin"), tr("Message") });
    setAccessibleName(tr("Output"));
}

void OutputPanel::addLine(LogLevel level, const QString& origin, const QString& text)
{
    const QString from = origin.isEmpty() ? tr("Workbench") : origin;
    auto* line = new QTreeWidgetItem(this, { QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), from, text });
    line->setIcon(TimeColumn, QIcon::fromTheme(symbolOf(level)));
    line->setToolTip(TextColumn, plainToolTip(text));
    if (topLevelItemCount() > maximumLines)
        delete takeTopLevelItem(0);
}

QStringList OutputPanel::lines() const
{
    QStringList lines;
    for (int row = 0; row < topLevelItemCount(); ++row)
        lines.append(topLevelItem(row)->text(TextColumn));
    return lines;
}

void OutputPanel::changeEvent(QEvent* event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void OutputPanel::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Copy)) {
        QTreeWidget::keyPressEvent(event);
        return;
    }
    QStringList chosen;
    const QList<QTreeWidgetItem*> items = selectedItems();
    for (const QTreeWidgetItem* item : items) {
        const QStringList columns{ item->text(TimeColumn), item->text(OriginColumn), item->text(TextColumn) };
        chosen.append(columns.join(QLatin1Char('\t')));
    }
    QGuiApplication::clipboard()->setText(chosen.join(QLatin1Char('\n')));
}
