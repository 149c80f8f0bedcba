#pragma once

#include "host/projectmodel/DeviceDiagnosiInfo.h"

#include <QHash>

class CallLog;

/// Diagnosis texts that the test sets; any other code reads "name CODE", "text CODE", "remedy CODE"
/// in class 11, that of axis debugging.
class TestDiagnosisInfo : public DeviceDiagnosiInfo {
    Q_OBJECT

public:
    explicit TestDiagnosisInfo(CallLog& log);
    ~TestDiagnosisInfo() override;

    ErrorInfo errorInfo(int errorClass, unsigned short code) override;

    QHash<unsigned short, ErrorInfo> infos;

private:
    CallLog& m_log;
};
