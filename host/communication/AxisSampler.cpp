#include "host/communication/AxisSampler.h"

#include "host/communication/ControllerCredentials.h"
#include "host/communication/GrpcLink.h"
#include "host/communication/Mailbox.h"
#include "protocol/AxisRefLayout.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <thread>

namespace proto = kestrun::protocol;

namespace {
using CredentialsPtr = std::shared_ptr<const ControllerConnection::Credentials>;
constexpr auto deadline = std::chrono::milliseconds(1000);
constexpr auto pauseAfterFailure = std::chrono::milliseconds(200);

/// What is to be read; changed by the main thread, read by the sampler's.
struct Order {
    CredentialsPtr credentials;
    QVector<int> axes;
    int periodMs = 1;

    bool isIdle() const { return !credentials || axes.isEmpty(); }
};

AxisSample sampleOf(int axisNo, double time, const std::string& bytes)
{
    AxisRef ref{};
    std::memcpy(&ref, bytes.data(), sizeof ref);
    return { axisNo, time, ref.setPosition, ref.setVelocity, ref.actualPosition, ref.actualVelocity };
}

QVector<AxisSample> samplesOf(const Order& order, const proto::CurvesReply& reply)
{
    QVector<AxisSample> samples;
    const int count = std::min(order.axes.size(), reply.status_size());
    for (int i = 0; i < count; ++i) {
        if (reply.status(i).size() == sizeof(AxisRef))
            samples.append(sampleOf(order.axes.at(i), static_cast<double>(reply.time_us()) / 1e6, reply.status(i)));
    }
    return samples;
}
} // namespace

struct AxisSampler::Private {
    void run();
    void readUntilChange(std::unique_lock<std::mutex>& lock, const Order& order);
    bool readOnce(proto::AxisController::Stub& stub, const Order& order);
    void change(const std::function<void(Order&)>& edit);

    AxisSampler* q = nullptr;
    QPointer<ControllerConnection> connection;
    Mailbox mailbox;
    std::mutex mutex;
    std::condition_variable changed;
    Order order;
    int orderNumber = 0;
    bool ending = false;
    std::thread thread;
};

void AxisSampler::Private::change(const std::function<void(Order&)>& edit)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        edit(order);
        ++orderNumber;
    }
    changed.notify_all();
}

void AxisSampler::Private::run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (!ending) {
        if (order.isIdle())
            changed.wait(lock);
        else
            readUntilChange(lock, Order(order));
    }
}

void AxisSampler::Private::readUntilChange(std::unique_lock<std::mutex>& lock, const Order& present)
{
    const int number = orderNumber;
    const auto isOver = [this, number] { return ending || orderNumber != number; };
    lock.unlock();
    const auto stub = proto::AxisController::NewStub(present.credentials->transport->makeChannel());
    auto next = std::chrono::steady_clock::now();
    lock.lock();
    while (!isOver()) {
        lock.unlock();
        const bool fine = readOnce(*stub, present);
        next = std::max(next + std::chrono::milliseconds(present.periodMs), std::chrono::steady_clock::now());
        lock.lock();
        changed.wait_until(lock, fine ? next : next + pauseAfterFailure, isOver);
    }
}

bool AxisSampler::Private::readOnce(proto::AxisController::Stub& stub, const Order& present)
{
    proto::CurvesRequest request;
    proto::CurvesReply reply;
    request.set_session(present.credentials->session);
    for (const int axisNo : present.axes)
        request.add_axes(axisNo);
    grpc::ClientContext context;
    context.set_deadline(std::chrono::system_clock::now() + deadline);
    if (!stub.ReadCurves(&context, request, &reply).ok() || reply.result() != 0)
        return false;
    const QVector<AxisSample> samples = samplesOf(present, reply);
    mailbox.post([this, samples] { emit q->sampled(samples); });
    return true;
}

AxisSampler::AxisSampler(ControllerConnection* connection, QObject* parent)
    : QObject(parent), d(std::make_shared<Private>())
{
    qRegisterMetaType<QVector<AxisSample>>();
    d->q = this;
    d->connection = connection;
    d->order.credentials = connection->credentials();
    const auto follow
        = [this] { d->change([this](Order& order) { order.credentials = d->connection->credentials(); }); };
    connect(connection, &ControllerConnection::opened, this, follow);
    connect(connection, &ControllerConnection::lost, this, follow);
    connect(connection, &ControllerConnection::closed, this, follow);
    connect(connection, &ControllerConnection::failed, this, follow);
    // It tells no end of its session then.
    connect(
        connection, &QObject::destroyed, this, [this] { d->change([](Order& order) { order.credentials.reset(); }); });
    d->thread = std::thread([this] { d->run(); });
}

AxisSampler::~AxisSampler()
{
    d->change([this](Order&) { d->ending = true; });
    d->thread.join();
}

void AxisSampler::setAxes(const QVector<int>& axes, int periodMs)
{
    d->change([&](Order& order) {
        order.axes = axes;
        order.periodMs = std::max(periodMs, 1);
    });
}
