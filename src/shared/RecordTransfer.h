#pragma once
// Records of a form moved in and out without a window: an import file, an export, a print
// to a file. The command line reaches a form's transfer through the form registry.
#include <QList>
#include <QString>

class IReportObject;
class JsonValue;

class RecordTransfer
{
public:
    virtual ~RecordTransfer() = default;

    // Reads the records of the deductor-year currently selected; false with *why.
    virtual bool open(QString *why) = 0;
    // One record of an import file, checked by the rules of typing and stored with its
    // details in one transaction. The serial stored, or 0 with *why (nothing stored).
    virtual int importRecord(const JsonValue &record, QString *why) = 0;
    // The serials stored, in order.
    virtual QList<int> serials() const = 0;
    // A stored record in the import file's shape, as the window shows it; the null value
    // with *why when it cannot be read.
    virtual JsonValue exportRecord(int serial, QString *why) = 0;
    // The printed record filled into the report object (not shown); false with *why.
    virtual bool render(int serial, IReportObject &report, QString *why) = 0;
};
