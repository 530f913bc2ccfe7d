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
bool isAssessmentYear(const QString &year);
} // namespace cli
