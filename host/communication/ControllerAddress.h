#pragma once

#include "host/communication/Export.h"

#include <QByteArray>
#include <QString>

/// Where a controller answers, and what proves that this client may use it. A value.
///
/// On loopback the token proves it. Any other host needs the three files of mutual TLS; with them loopback works
/// without a token as well.
struct KESTRUN_COMMUNICATION_EXPORT ControllerAddress {
    QString host;
    quint16 port = 0;
    QByteArray token;
    /// PEM files: the authority that both sides trust, the client's certificate and its key. Empty: no TLS.
    QString authorityFile;
    QString certificateFile;
    QString keyFile;

    /// True for 127.0.0.0/8, ::1 and "localhost".
    bool isLoopback() const;
    bool usesTls() const;
    /// "HOST:PORT", an IPv6 address in brackets.
    QString text() const;
    /// Why nobody may connect there as it stands, with what to do about it; empty if one may.
    QString objection() const;

    /// Reads "HOST:PORT" or "[ADDRESS]:PORT". False, with a text that says what is wrong, leaves host and port alone.
    bool setHostAndPort(const QString& text, QString* error);
};
