// Arbitrary bytes through the RIS dump reader: a failure is an answer, a crash is a fault.
//
// The input is the dump; its length picks the block size (1 to 64 bytes, so that lines cross
// block ends) and whether -32768 is replaced, so plain dump files serve as seeds. Every table of
// the first schema is read the way RISDumpParse reads it.
#include "frame/failure.h"
#include "pds/risdumpreader.h"

#include <QBuffer>

#include <cstddef>
#include <cstdint>

namespace {

QByteArray FirstSchema(const QByteArray &dump, qsizetype blockSize, QList<QByteArray> *tables)
{
    QBuffer device;
    device.setData(dump);
    device.open(QIODevice::ReadOnly);
    fx::RISDumpReader reader(device, blockSize);
    QByteArray schema;
    QByteArrayView line;
    while (reader.ReadLine(line)) {
        const QByteArray name = fx::RISDumpReader::SchemaOfLine(line);
        if (schema.isEmpty())
            schema = name;
        else if (!name.isEmpty())
            break;
        const QByteArray table = fx::RISDumpReader::TableOfLine(line);
        if (!schema.isEmpty() && !table.isEmpty())
            tables->append(table);
    }
    return schema;
}

void ReadTable(const QByteArray &dump, qsizetype blockSize, bool replaceNull, const QByteArray &schema,
               const QByteArray &table)
{
    QBuffer device;
    device.setData(dump);
    device.open(QIODevice::ReadOnly);
    fx::RISDumpReader reader(device, blockSize);
    if (!reader.FindSchema(QString::fromLatin1(schema)) || !reader.FindTable(QString::fromLatin1(table)))
        return;
    try {
        const fx::RISDumpTable definition = reader.ReadTableHeader();
        QByteArray buffer;
        QByteArrayView rows;
        qsizetype written = 0;
        while (reader.ReadRows(rows))
            written += fx::RowsAsText(definition, rows, replaceNull, buffer).size();
        (void)written;
        (void)reader.EndOfTableFound();
    } catch (const fx::Failure &) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const qsizetype blockSize = 1 + qsizetype(size % 64);
    const bool replaceNull = (size / 64) % 2;
    const QByteArray dump(reinterpret_cast<const char *>(data), qsizetype(size));
    QList<QByteArray> tables;
    const QByteArray schema = FirstSchema(dump, blockSize, &tables);
    for (qsizetype i = 0; i < tables.size() && i < 4; ++i)
        ReadTable(dump, blockSize, replaceNull, schema, tables.at(i));
    return 0;
}
