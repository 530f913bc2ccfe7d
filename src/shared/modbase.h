#pragma once
// Shared module of the forms: the two service objects, period codes, the state table,
// the error location and log, the report-row wrapper and the print command.
#include "host/IDataObject.h"
#include "host/IReportObject.h"

#include <QString>
#include <exception>
#include <functional>
#include <memory>

// A run-time failure raised inside a handler and caught by the error trap.
class TdsError : public std::exception
{
public:
    TdsError(long number, QString description, QString source = QStringLiteral("TDSForms"));
    const char *what() const noexcept override { return m_what.constData(); }
    long number() const { return m_number; }
    const QString &description() const { return m_description; }
    const QString &source() const { return m_source; }

private:
    long m_number;
    QString m_description;
    QString m_source;
    QByteArray m_what;
};

namespace modbase {

// Creates the data object, then the report object, once per process. False (and
// mainError() says which name is missing) when either is not registered.
bool Main();
QString mainError();
// For tests: forget the objects so the next Main() creates them again.
void resetForTests();

IDataObject *dataObject();     // null until Main() succeeded
IReportObject *reportObject();
// The same, or a TdsError (object variable not set) for the caller's error trap.
IDataObject &data();
IReportObject &report();

// Period_Code of the current deductor and year, allocated when missing; 0 on failure.
int GETPERIODCODEOTH();

// The state table of the TAN forms; "" when the name is not in it (exact match).
QString StateCodeFromName(const QString &name);

// The current error (0 = none), the error location, and the log writer.
struct ErrorInfo {
    long number = 0;
    QString description;
    QString source;
};
ErrorInfo &Err();
void clearErr();
void setErrLocation(const QString &module, const QString &procedure);
QString errLocation();
void LogError();

// Runs a handler under the error trap: any failure sets the location (module, tab,
// procedure), is logged, and is swallowed. Returns false when the handler failed.
// why, when given, receives the failure's description.
bool errorTrap(const QString &module, const QString &procedure, const std::function<void()> &body,
               QString *why = nullptr);

// Report row in the forms' argument order: the flag comes before the four border texts.
void MULTISPCJS1(QVariantList &values, QList<qint16> &widths, QList<qint32> &alignments,
                 QStringList &firstTexts, QStringList &prefixes, bool tableRow,
                 QString border1, QString border2, QString border3, QString border4);

// The print button: ShowFormInfo, hourglass; when ModePrint > 1 set WinModeReport,
// NewReport, run the builder, ShowReport; cursor restored whatever happens.
// documentName names a saved copy of the report ("Form15C_DEMO01_2024-25").
void printCommand(const QString &module, const std::function<void()> &builder,
                  const QString &documentName = QString());

} // namespace modbase
