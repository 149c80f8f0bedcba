#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QTranslator;
class QWidget;

/// The looks of the workbench while it lives: style, font, a style sheet and a language. Pages take up the language
/// when they are built. The Chinese texts come from the target "translations".
class WorkbenchLooks {
public:
    /// The sheet is "default.qss" or "dark.qss", or empty for none; the language "en" or "zh_CN".
    WorkbenchLooks(const QString& sheet, const QString& language);
    ~WorkbenchLooks();
    WorkbenchLooks(const WorkbenchLooks&) = delete;
    WorkbenchLooks& operator=(const WorkbenchLooks&) = delete;

private:
    std::unique_ptr<QTranslator> m_translator;
};

/// Visible labels, buttons, boxes and fields under a shown page that cannot show what they hold or stick out of their
/// parent, each with what is wrong. Fields have to show a number of the length given; boxes all of their entries.
QStringList cutOffControls(const QWidget& page, const QString& longestNumber);

/// Presses Tab from a control on until it has the focus again: the names of the controls on the way, it first.
QStringList tabRound(QWidget* first);
