#pragma once

#include "host/projectmodel/DeviceDiagnosiInfo.h"

#include <functional>

class ControllerDescription;
class IConfiguration;

/// Texts of error codes from the description of the current project's controller, in the user's language; published
/// as "werkbay.DiagnosisInfo".
class DiagnosisTable : public DeviceDiagnosiInfo {
    Q_OBJECT

public:
    /// Gives the controller of the current project, or null.
    using Controller = std::function<const ControllerDescription*()>;

    DiagnosisTable(const IConfiguration& settings, Controller controller, QObject* parent = nullptr);
    ~DiagnosisTable() override;

    /// A code that the table lacks gives a text that names the code and the controller.
    ErrorInfo errorInfo(int errorClass, unsigned short code) override;

private:
    ErrorInfo unknown(unsigned short code, const ControllerDescription* controller) const;

    const IConfiguration& m_settings;
    Controller m_controller;
};
