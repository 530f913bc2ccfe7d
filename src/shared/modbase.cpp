#include "shared/modbase.h"

#include "host/ErrorLog.h"
#include "host/ServiceRegistry.h"

#include <QCursor>
#include <QGuiApplication>
#include <climits>

TdsError::TdsError(long number, QString description, QString source)
    : m_number(number), m_description(std::move(description)), m_source(std::move(source)),
      m_what(m_description.toUtf8())
{
}

namespace modbase {

namespace {
struct Services {
    std::shared_ptr<IDataObject> data;
    std::shared_ptr<IReportObject> report;
    QString error;
};
Services &services()
{
    static Services s;
    return s;
}
QString &location()
{
    static QString l;
    return l;
}

// Object-variable-not-set, as the forms would meet it without their services.
[[noreturn]] void noObject(const char *what)
{
    throw TdsError(91, QStringLiteral("Object variable not set (%1)").arg(QLatin1String(what)));
}

IDataObject &db()
{
    if (!services().data)
        noObject(ProgId::DataObject);
    return *services().data;
}
} // namespace

bool Main()
{
    Services &s = services();
    if (s.data && s.report)
        return true;
    if (!s.data) {
        s.data = createObjectAs<IDataObject>(QString::fromLatin1(ProgId::DataObject));
        if (!s.data) {
            s.error = QStringLiteral("Cannot create the data object: \"%1\" is not registered.")
                          .arg(QLatin1String(ProgId::DataObject));
            return false;
        }
    }
    s.report = createObjectAs<IReportObject>(QString::fromLatin1(ProgId::ReportObject));
    if (!s.report) {
        s.error = QStringLiteral("Cannot create the report object: \"%1\" is not registered.")
                      .arg(QLatin1String(ProgId::ReportObject));
        return false;
    }
    s.error.clear();
    // Previews and filled templates go to the host's temporary folder.
    s.report->setTempFolder(s.data->vTmpPath());
    return true;
}

QString mainError()
{
    return services().error;
}

void resetForTests()
{
    services() = Services{};
}

IDataObject *dataObject()
{
    return services().data.get();
}

IReportObject *reportObject()
{
    return services().report.get();
}

IDataObject &data()
{
    return db();
}

IReportObject &report()
{
    if (!services().report)
        noObject(ProgId::ReportObject);
    return *services().report;
}

int GETPERIODCODEOTH()
{
    int code = 0;
    errorTrap(QStringLiteral("MODBASE"), QStringLiteral("GETPERIODCODEOTH"), [&] {
        IDataObject &d = db();
        const QString codeNo = d.TruncVarSQL(d.codeno());
        const QString year = d.TruncVarSQL(d.AsYear());
        // Max-plus-one is not atomic across processes: the primary key on Period_Code and
        // the unique (Code_No, AsYear) make a racing insert fail, and we look again.
        for (int attempt = 0; attempt < 20; ++attempt) {
            Recordset rs;
            if (!d.RecordsetQuery(rs, QStringLiteral("Select * From Period_Det_Oth Where Code_No='") + codeNo
                                          + QStringLiteral("' and AsYear='") + year + QStringLiteral("'"),
                                  d.cnnobj(), 2, 3, 1))
                throw TdsError(long(d.lastErrorNumber()), d.lastError(), QStringLiteral("ZeltBase.ClsData"));
            if (!rs.isBOF() && !rs.isEOF()) {
                code = rs.field(QStringLiteral("Period_Code")).toInt();
                rs.close();
                return;
            }
            rs.close();

            Recordset mx;
            if (!d.RecordsetQuery(mx, QStringLiteral("Select Max(Period_Code) From Period_Det_Oth"), d.cnnobj(), 2, 3, 1))
                throw TdsError(long(d.lastErrorNumber()), d.lastError(), QStringLiteral("ZeltBase.ClsData"));
            qint64 last = 0;
            if (!mx.isBOF() && !mx.isEOF() && !mx.field(0).isNull())
                last = mx.field(0).toLongLong();
            mx.close();
            if (last + 1 > INT_MAX)
                throw TdsError(6, QStringLiteral("Overflow"));
            const int next = int(last + 1);
            // A lost race is expected here and retried, so it is not an error for the log.
            if (d.ConQueryExpecting(QStringLiteral("Insert Into Period_Det_Oth Values(") + QString::number(next)
                                        + QStringLiteral(",'") + codeNo + QStringLiteral("','") + year
                                        + QStringLiteral("')"),
                                    1062)) {
                d.ConQuery(QStringLiteral("Flush Tables"));
                code = next;
                return;
            }
            if (d.lastErrorNumber() != 1062)   // anything but a lost race is a real failure
                throw TdsError(long(d.lastErrorNumber()), d.lastError(), QStringLiteral("ZeltBase.ClsData"));
        }
        throw TdsError(5, QStringLiteral("Could not allocate a period code"));
    });
    return code;
}

QString StateCodeFromName(const QString &name)
{
    // Order, spelling and codes as the TAN forms have always used them.
    static const std::pair<const char *, const char *> table[] = {
        {"ANDAMAN AND NICOBAR ISLANDS", "1"},
        {"ANDHRA PRADESH", "2"},
        {"ARUNACHAL PRADESH", "3"},
        {"ASSAM", "4"},
        {"BIHAR", "5"},
        {"CHANDIGARH", "6"},
        {"Chhattisgarh", "33"},
        {"DADRA & NAGAR HAVELI AND DAMAN & DIU", "7"},
        {"DAMAN & DIU", "8"},
        {"DELHI", "9"},
        {"GOA", "10"},
        {"GUJARAT", "11"},
        {"HARYANA", "12"},
        {"HIMACHAL PRADESH", "13"},
        {"JAMMU & KASHMIR", "14"},
        {"JHARKHAND", "35"},
        {"KARNATAKA", "15"},
        {"KERALA", "16"},
        {"LADAKH", "37"},
        {"LAKHSWADEEP", "17"},
        {"MADHYA PRADESH", "18"},
        {"MAHARASHTRA", "19"},
        {"MANIPUR", "20"},
        {"MEGHALAYA", "21"},
        {"MIZORAM", "22"},
        {"NAGALAND", "23"},
        {"ODISHA", "24"},
        {"PUDUCHERRY", "25"},
        {"PUNJAB", "26"},
        {"RAJASTHAN", "27"},
        {"SIKKIM", "28"},
        {"TAMILNADU", "29"},
        {"TELANGANA", "36"},
        {"TRIPURA", "30"},
        {"UTTAR PRADESH", "31"},
        {"UTTARAKHAND", "34"},
        {"WEST BENGAL", "32"},
    };
    for (const auto &[stateName, code] : table) {
        if (name == QLatin1String(stateName))
            return QString::fromLatin1(code);
    }
    return QString();
}

ErrorInfo &Err()
{
    static ErrorInfo e;
    return e;
}

void clearErr()
{
    Err() = ErrorInfo{};
}

void setErrLocation(const QString &module, const QString &procedure)
{
    location() = module + QLatin1Char('\t') + procedure;
}

QString errLocation()
{
    return location();
}

void LogError()
{
    const ErrorInfo &e = Err();
    if (e.number == 0)
        return;
    const QString folder = services().data ? services().data->ExePath() : QString();
    if (folder.isEmpty())
        return;
    ErrorLog::append(folder, e.number, e.description, e.source, location());
}

bool errorTrap(const QString &module, const QString &procedure, const std::function<void()> &body, QString *why)
{
    ErrorInfo caught;
    try {
        body();
        return true;
    } catch (const TdsError &e) {
        caught = {e.number() ? e.number() : 5, e.description(), e.source()};
    } catch (const std::exception &e) {
        caught = {5, QString::fromLocal8Bit(e.what()), QStringLiteral("TDSForms")};
    } catch (...) {
        caught = {5, QStringLiteral("Unexpected failure"), QStringLiteral("TDSForms")};
    }
    if (why)
        *why = caught.description;
    Err() = caught;
    setErrLocation(module, procedure);
    LogError();
    clearErr();
    return false;
}

void MULTISPCJS1(QVariantList &values, QList<qint16> &widths, QList<qint32> &alignments,
                 QStringList &firstTexts, QStringList &prefixes, bool tableRow,
                 QString border1, QString border2, QString border3, QString border4)
{
    errorTrap(QStringLiteral("MODBASE"), QStringLiteral("MULTISPCJS1"), [&] {
        IReportObject *report = reportObject();
        if (!report)
            noObject(ProgId::ReportObject);
        report->WriteToReport(values, widths, alignments, firstTexts, prefixes,
                              border1, border2, border3, border4, tableRow);
    });
}

void printCommand(const QString &module, const std::function<void()> &builder, const QString &documentName)
{
    // The hourglass goes back whatever the builder does.
    struct CursorGuard {
        bool set = false;
        CursorGuard()
        {
            if (qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
                QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
                set = true;
            }
        }
        ~CursorGuard()
        {
            if (set)
                QGuiApplication::restoreOverrideCursor();
        }
    };

    errorTrap(module, QStringLiteral("cmdshowrep_Click"), [&] {
        IDataObject &d = db();
        d.ShowFormInfo();
        CursorGuard cursor;
        if (d.ModePrint() > 1) {
            IReportObject *report = reportObject();
            if (!report)
                noObject(ProgId::ReportObject);
            report->setWinModeReport(d.ModePrint() == 2);
            report->NewReport();
            report->setDocumentName(documentName);
            builder();
            report->ShowReport();
        }
    });
}

} // namespace modbase
