#pragma once

#include <QFrame>
#include <QPointer>

class QLabel;
class QLineEdit;
class QTimer;
struct NumberRefusal;

/// Says beside a field, without stopping the user, why its number was not taken.
///
/// Number checks run when a field has lost the focus, also when nothing was typed in it. The bubble follows the focus
/// through the whole application and says nothing of a field that the user only passed through.
class RefusalBubble : public QFrame {
    Q_OBJECT

public:
    explicit RefusalBubble(QWidget* window);
    ~RefusalBubble() override;

    /// What the bubble says of a refusal. Of a number of hundreds of digits only the ends are named, so that the range
    /// stays in sight.
    static QString textOf(const NumberRefusal& refusal);

signals:
    /// A number that the user typed has been refused; the text names value and range.
    void refused(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void enter(QLineEdit* field);
    void onRefused(const NumberRefusal& refusal);
    void showAt(const QLineEdit& field, const QString& text);
    void fitInto(const QWidget& window);

    QLabel* m_symbol;
    QLabel* m_text;
    QTimer* m_lifetime;
    QPointer<QLineEdit> m_field;
    bool m_touched = false;
};
