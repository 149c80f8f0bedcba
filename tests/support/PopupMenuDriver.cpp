#include "tests/support/PopupMenuDriver.h"

#include <QMenu>
#include <QPointer>
#include <QtTest>

namespace {

PopupMenuDriver::Menu contentsOf(const QMenu& menu)
{
    PopupMenuDriver::Menu contents;
    contents.position = menu.pos();
    contents.hasParent = menu.parentWidget() != nullptr;
    const QList<QAction*> actions = menu.actions();
    for (const QAction* action : actions) {
        contents.entries.append(action->text());
        contents.allEnabled = contents.allEnabled && action->isEnabled();
        contents.anyShortcut = contents.anyShortcut || !action->shortcut().isEmpty();
    }
    return contents;
}

void clickEntry(QMenu* menu, const QString& text)
{
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        if (action->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
            return;
        }
    }
    qFatal("%s", qPrintable(QStringLiteral("the menu has no entry \"%1\"").arg(text)));
}

} // namespace

void PopupMenuDriver::choose(const QString& entry)
{
    m_choices.append(entry);
}

bool PopupMenuDriver::wants(QWidget* window) const
{
    return qobject_cast<QMenu*>(window) != nullptr;
}

void PopupMenuDriver::handle(QWidget* window)
{
    const QPointer<QMenu> menu(qobject_cast<QMenu*>(window));
    menus.append(contentsOf(*menu));
    if (!m_choices.isEmpty())
        clickEntry(menu, m_choices.takeFirst());
    if (menu)
        menu->close();
}
