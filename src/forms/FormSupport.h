#pragma once
// Small helpers the form logic classes share.
#include "host/IDataObject.h"
#include "host/IReportObject.h"

namespace FormSupport {
// The shared service objects; a TdsError (object not set) when start-up has not run.
IDataObject &data();
IReportObject &report();
} // namespace FormSupport
