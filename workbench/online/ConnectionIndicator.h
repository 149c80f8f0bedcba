#pragma once

#include <QWidget>

class OnlineSession;
class QLabel;

/// The part of the status bar that tells of the connection: a symbol and a text of its own for every state.
class ConnectionIndicator : public QWidget {
    Q_OBJECT

public:
    explicit ConnectionIndicator(const OnlineSession& session, QWidget* parent = nullptr);
    ~ConnectionIndicator() override;

    QString text() const;
    /// Name of the symbol that is shown, in the icon theme.
    QString symbol() const { return m_symbolName; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void show();
    QString describe() const;
    QString describeOnline() const;

    const OnlineSession& m_session;
    QString m_symbolName;
    QLabel* m_symbol;
    QLabel* m_text;
};
