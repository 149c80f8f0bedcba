#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A line above the editors that tells of something which went wrong, without stopping the user, and offers at most
/// one thing to do about it.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    explicit MessageBar(QWidget* parent = nullptr);
    ~MessageBar() override;

    /// Shows a text in place of the last one. An empty label shows no button for an offer.
    void showMessage(const QString& text, const QString& offer = QString());
    QString text() const;

signals:
    void offerTaken();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    QLabel* m_symbol;
    QLabel* m_text;
    QPushButton* m_offer;
    QPushButton* m_close;
};
