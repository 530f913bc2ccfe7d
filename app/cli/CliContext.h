#pragma once
// What the commands of tdsforms-cli share: the global options and the start of services.
#include <QString>
#include <QTextStream>

class IDataObject;

namespace cli {
QTextStream &out();
QTextStream &err();
// Registers the services, runs the component start-up and connects to the database.
// Nothing (and a message on standard error) when that fails.
IDataObject *startServices();
// The shape of an assessment year: "YYYY-YY", the second year following the first.
bool isAssessmentYear(const QString &year);
// First years accepted: no TDS return goes back before 1950-51, and four-digit years with
// a two-digit tail stop making sense at 2099-00.
constexpr int kFirstAssessmentYear = 1950;
constexpr int kLastAssessmentYear = 2099;
// Checks the year (shape and range) and that the deductor is in Main_Info, then makes them
// the data object's current selection (the code as stored). False and *error otherwise.
bool selectDeductorYear(IDataObject &data, const QString &code, const QString &year, QString *error);
} // namespace cli
