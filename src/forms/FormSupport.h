#pragma once
// Small helpers the form logic classes share.
#include "host/IDataObject.h"
#include "host/IReportObject.h"

namespace FormSupport {
// The shared service objects; a TdsError (object not set) when start-up has not run.
IDataObject &data();
IReportObject &report();
// The leading number of a text, as a year is read from "2024-25"; 0 when none.
int leadingNumber(const QString &text);
} // namespace FormSupport
