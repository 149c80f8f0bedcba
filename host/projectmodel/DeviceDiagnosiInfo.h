#pragma once

#include "host/projectmodel/Export.h"

#include <QObject>
#include <QString>

/// What the diagnosis table knows of one code.
struct ErrorInfo {
    /// Short name of the error.
    QString name;
    /// The text for the user.
    QString text;
    /// What to do about it.
    QString remedy;
};

/// Texts of a controller's error codes, published under "werkbay.DiagnosisInfo". Main thread only.
class KESTRUN_PROJECTMODEL_EXPORT DeviceDiagnosiInfo : public QObject {
    Q_OBJECT

public:
    explicit DeviceDiagnosiInfo(QObject* parent = nullptr);
    ~DeviceDiagnosiInfo() override;

    /// The entry of a class of codes (11: axis debugging) and a code. An unknown code gives a text that names it.
    virtual ErrorInfo errorInfo(int errorClass, unsigned short code) = 0;
};
