#include "host/communication/ControllerAddress.h"

#include "host/communication/ConnectionTexts.h"

#include <QFileInfo>

namespace {
bool isLoopbackV4(const QString& host)
{
    const QStringList parts = host.split(QLatin1Char('.'));
    if (parts.size() != 4 || parts.first() != QLatin1String("127"))
        return false;
    for (const QString& part : parts) {
        bool fine = false;
        if (part.toUInt(&fine) > 255 || !fine)
            return false;
    }
    return true;
}
} // namespace

bool ControllerAddress::isLoopback() const
{
    return host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 || host == QLatin1String("::1")
        || isLoopbackV4(host);
}

bool ControllerAddress::usesTls() const
{
    return !authorityFile.isEmpty() || !certificateFile.isEmpty() || !keyFile.isEmpty();
}

QString ControllerAddress::text() const
{
    const QString name = host.contains(QLatin1Char(':')) ? QString(QLatin1Char('[') + host + QLatin1Char(']')) : host;
    return name + QLatin1Char(':') + QString::number(port);
}

QString ControllerAddress::objection() const
{
    if (host.isEmpty() || port == 0)
        return ConnectionTexts::tr("No controller address is given.");
    if (!usesTls()) {
        return isLoopback()
            ? QString()
            : ConnectionTexts::tr("Connecting to %1 needs mutual TLS. Make certificates with "
                                  "scripts/make-certificates and choose the three files in the options.")
                  .arg(text());
    }
    for (const QString& file : { authorityFile, certificateFile, keyFile }) {
        if (file.isEmpty())
            return ConnectionTexts::tr(
                "Mutual TLS needs an authority, a certificate and a key; one of them is not given.");
        if (!QFileInfo(file).isReadable())
            return ConnectionTexts::tr("The file %1 cannot be read.").arg(file);
    }
    return QString();
}

bool ControllerAddress::setHostAndPort(const QString& text, QString* error)
{
    const QString trimmed = text.trimmed();
    const int colon = trimmed.lastIndexOf(QLatin1Char(':'));
    QString name = trimmed.left(colon);
    const bool bracketed = name.startsWith(QLatin1Char('[')) && name.endsWith(QLatin1Char(']'));
    if (bracketed)
        name = name.mid(1, name.size() - 2);
    bool fine = false;
    const uint number = colon < 0 ? 0 : trimmed.midRef(colon + 1).toUInt(&fine);
    if (!fine || number == 0 || number > 65535 || name.isEmpty() || (!bracketed && name.contains(QLatin1Char(':')))) {
        *error = ConnectionTexts::tr("\"%1\" is no address; a host and a port such as 127.0.0.1:50700 are needed.")
                     .arg(trimmed);
        return false;
    }
    host = name;
    port = static_cast<quint16>(number);
    return true;
}
