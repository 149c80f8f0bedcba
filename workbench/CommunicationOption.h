#pragma once

#include "sdk/IOption.h"
#include "sdk/IOptionFactory.h"

class IConfiguration;

/// The two times of online work.
struct CommunicationTimes {
    /// Poll period in ms; what is stored below 1 stands for 100.
    int monitorTime = 100;
    /// Time in ms without a request after which the controller stops an axis; below 1 stands for 5000.
    int timeout = 5000;

    static CommunicationTimes read(const IConfiguration& settings);
    /// A dozen polls must fit into the time-out, or a lost reply already ends debug mode.
    bool isSound() const { return 12LL * monitorTime < timeout; }
};

/// Makes the page of the communication times.
class CommunicationOptionFactory : public IOptionFactory {
public:
    explicit CommunicationOptionFactory(IConfiguration& settings);
    ~CommunicationOptionFactory() override;

    QString mimeType() override;
    QString title() override;
    IOption* createOption() override;

private:
    IConfiguration& m_settings;
};
