#pragma once

#include "sdk/MotionControlDebug.h"
#include "sdk/Transaction.h"

#include <QVector>

/// A debug service that notes what is asked of it and hands out transactions that do nothing.
class RecordingDebug : public MotionControlDebug {
    Q_OBJECT

public:
    struct Request {
        int code = -1;
        QVariant param;
        QObject* receiver = nullptr;

        template <typename Param>
        Param as() const
        {
            return param.value<Param>();
        }
    };

    Transaction* createTransaction(int code, QVariant param, QObject* receiver) override
    {
        requests.append({ code, param, receiver });
        return failing ? nullptr : new Transaction;
    }

    QVector<int> codes() const
    {
        QVector<int> all;
        for (const Request& request : requests)
            all.append(request.code);
        return all;
    }

    QVector<Request> requests;
    /// True: as if memory were short.
    bool failing = false;
};
