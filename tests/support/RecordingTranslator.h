#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTranslator>

/// Translates every text into "context|text" while it lives, so that a test sees which context a text was looked up in.
class RecordingTranslator : public QTranslator {
public:
    RecordingTranslator() { QCoreApplication::installTranslator(this); }
    ~RecordingTranslator() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char* context, const char* text, const char* comment, int number) const override
    {
        Q_UNUSED(comment)
        Q_UNUSED(number)
        return QString::fromUtf8(context) + QLatin1Char('|') + QString::fromUtf8(text);
    }
    bool isEmpty() const override { return false; }
};
