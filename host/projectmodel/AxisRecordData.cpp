#include "host/projectmodel/AxisRecordData.h"

#include "host/projectmodel/RecordChecksum.h"

qint64 checksumOf(const AxisRecordData& record, int schemaVersion)
{
    RecordChecksum sum;
    sum.add(record.id).add(record.name).add(record.properties);
    if (schemaVersion >= 2)
        sum.add(record.viewInfo);
    return sum.value();
}
