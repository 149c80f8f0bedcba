#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <string>

/// Sets of certificates in a temporary folder, made by the script that users make theirs with. A set is named; its
/// files are those of the script.
class Certificates {
public:
    /// False when the script has failed. With the name of another set, that set's authority signs this one too.
    bool make(const QString& set, const QStringList& names, const QString& authorityOf = {}) const
    {
        if (!authorityOf.isEmpty()) {
            QDir(m_directory.path()).mkpath(set);
            for (const QString& name : { QStringLiteral("authority.pem"), QStringLiteral("authority.key") })
                QFile::copy(file(authorityOf, name), file(set, name));
        }
        QStringList arguments = names;
        arguments.prepend(m_directory.filePath(set));
        return QProcess::execute(QStringLiteral(KESTRUN_SOURCE_DIR "/scripts/make-certificates"), arguments) == 0;
    }

    QString file(const QString& set, const QString& name) const
    {
        return m_directory.filePath(set + QLatin1Char('/') + name);
    }

    std::string text(const QString& set, const QString& name) const
    {
        QFile opened(file(set, name));
        return opened.open(QIODevice::ReadOnly) ? opened.readAll().toStdString() : std::string();
    }

    /// What a controller is started with to show the certificate of that set.
    QStringList controllerArguments(const QString& set) const
    {
        return { QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--tls-authority"),
            file(set, QStringLiteral("authority.pem")), QStringLiteral("--tls-certificate"),
            file(set, QStringLiteral("controller.pem")), QStringLiteral("--tls-key"),
            file(set, QStringLiteral("controller.key")) };
    }

private:
    QTemporaryDir m_directory;
};
