#pragma once

#include "host/communication/ControllerAddress.h"
#include "host/communication/Export.h"

#include <QObject>
#include <QStringList>

#include <memory>

/// A soft controller of one's own: starts the program, hands it a fresh token through its standard input, learns its
/// address, and ends it with itself. The controller also ends by itself when this program dies. Main thread.
class KESTRUN_COMMUNICATION_EXPORT ControllerProcess : public QObject {
    Q_OBJECT

public:
    explicit ControllerProcess(QObject* parent = nullptr);
    /// Ends the controller, by force if it takes longer than a second.
    ~ControllerProcess() override;

    /// Path of the program beside this one, whether it is there or not.
    static QString defaultProgram();

    /// Starts the program on a free loopback port. Leads to ready() or failed(). Ends a controller that still runs.
    void start(const QString& program = defaultProgram(), const QStringList& arguments = QStringList());
    void stop();
    bool isRunning() const;
    qint64 processId() const;
    /// Where it answers, token included; valid from ready() on.
    ControllerAddress address() const;
    /// Sends a line to its standard input, such as "fault late-replies 200".
    void command(const QString& line);

signals:
    void ready();
    /// It could not be started, or ended before it was ready; the reason is what it said.
    void failed(const QString& reason);
    /// It has ended after it was ready, though nobody asked it to.
    void ended(const QString& reason);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
