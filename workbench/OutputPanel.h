#pragma once

#include "sdk/ILogger.h"

#include <QTreeWidget>

/// The lines that program, project and plug-ins write, with the time. The newest stands at the end.
class OutputPanel : public QTreeWidget {
    Q_OBJECT

public:
    explicit OutputPanel(QWidget* parent = nullptr);
    ~OutputPanel() override;

    void addLine(LogLevel level, const QString& origin, const QString& text);
    /// The texts of all lines.
    QStringList lines() const;

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void retranslate();

    /// The newest line is in sight, and is to stay so.
    bool m_atEnd = true;
};
