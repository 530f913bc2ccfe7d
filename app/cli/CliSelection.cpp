#include "CliContext.h"

#include "host/IDataObject.h"

#include <QRegularExpression>

namespace cli {

bool isAssessmentYear(const QString &year)
{
    static const QRegularExpression re(QStringLiteral("^(\\d{4})-(\\d{2})$"));
    const auto m = re.match(year);
    return m.hasMatch() && (m.captured(1).toInt() + 1) % 100 == m.captured(2).toInt();
}

bool selectDeductorYear(IDataObject &data, const QString &code, const QString &year, QString *error)
{
    auto refuse = [error](const QString &why) {
        if (error)
            *error = why;
        return false;
    };
    const QString range = QStringLiteral("%1-%2 to %3-%4")
                              .arg(kFirstAssessmentYear)
                              .arg((kFirstAssessmentYear + 1) % 100, 2, 10, QLatin1Char('0'))
                              .arg(kLastAssessmentYear)
                              .arg((kLastAssessmentYear + 1) % 100, 2, 10, QLatin1Char('0'));
    if (!isAssessmentYear(year))
        return refuse(QStringLiteral("\"%1\" is not an assessment year; write it as 2025-26 (%2)").arg(year, range));
    const int first = year.left(4).toInt();
    if (first < kFirstAssessmentYear || first > kLastAssessmentYear)
        return refuse(QStringLiteral("%1 is not a possible assessment year; give one from %2").arg(year, range));
    if (code.trimmed().isEmpty())
        return refuse(QStringLiteral("the deductor code is empty; give the code of a deductor (such as DEMO01)"));

    Recordset rs;
    if (!data.RecordsetQuery(rs, QStringLiteral("Select Code_No From Main_Info Where Code_No=") + data.quoted(code),
                             data.cnnobj(), 3, 3, 1))
        return refuse(QStringLiteral("the deductors cannot be read: %1").arg(data.lastError()));
    if (rs.isBOF() || rs.isEOF())
        return refuse(QStringLiteral("unknown deductor %1; add it in the TDS Forms window first "
                                     "(or load the demo deductor DEMO01 with `tdsforms-cli demo`)")
                          .arg(code));
    // Code_No compares without case; the period codes belong to the code as stored.
    data.setCodeno(rs.text(0));
    data.setAsYear(year);
    return true;
}

} // namespace cli
