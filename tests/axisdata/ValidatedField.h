#pragma once

#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

/// Types a text into a field that held a number and presses Return: the field keeps the text and reports it once.
inline void typedTextIsReported(QLineEdit& field, const QString& text)
{
    field.setText(QStringLiteral("5"));
    field.show();
    QVERIFY(QTest::qWaitForWindowActive(&field));
    const QSignalSpy finished(&field, &QLineEdit::editingFinished);
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
    QTest::keyClick(&field, Qt::Key_Return);
    QCOMPARE(field.text(), text);
    QCOMPARE(finished.count(), 1);
}

/// Types into an empty field: what the validator refuses does not get in.
inline void typingShows(QLineEdit& field, const QString& typed, const QString& shown)
{
    QTest::keyClicks(&field, typed);
    QCOMPARE(field.text(), shown);
}
