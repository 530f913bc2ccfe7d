#pragma once
// Forms 15G and 15H of October 2015 in and out of files: {"serial", "declarant", "payer",
// "income"}, the two slot arrays in slot order and the income details as rows of their four
// data cells.
#include "declarations/Oct15Form.h"
#include "shared/RecordFormTransfer.h"

class Oct15Transfer : public RecordFormTransfer
{
public:
    explicit Oct15Transfer(bool form15H);

    int importRecord(const JsonValue &record, QString *why) override;
    JsonValue exportRecord(int serial, QString *why) override;
    bool render(int serial, IReportObject &report, QString *why) override;

private:
    Oct15Form m_form;
};
